// A whole deal as data: four hands, one card set a seat.
//
// A hand may hold any number of cards, so that fixed cards, end positions and deals being read are
// `Hands` too; the checks here are asked for by whoever needs them.
#pragma once

#include "cards/cards_configuration.h"
#include "cards/players_and_trumps.h"

#include <array>
#include <cstdint>
#include <iosfwd>
#include <sstream>
#include <string>

namespace trikon {

class Hands {
public:
    Hands() = default;
    Hands(CardsConfiguration north, CardsConfiguration east, CardsConfiguration south,
          CardsConfiguration west)
        : hands{north, east, south, west}
    {
    }

    CardsConfiguration operator[](int player) const { return hands[static_cast<unsigned>(player)]; }
    CardsConfiguration& operator[](int player) { return hands[static_cast<unsigned>(player)]; }
    /// The four hands in the order N, E, S, W.
    const CardsConfiguration* data() const { return hands.data(); }
    /// The cards of all four hands.
    CardsConfiguration allCards() const { return hands[0] | hands[1] | hands[2] | hands[3]; }
    bool operator==(const Hands&) const = default;

    /// The first player of `order` ("NESW") who holds no card, `NoPlayer` when all four hold some.
    PlayerNumber nextPlayerToRead(const char* order) const;
    bool handsHaveEqualLengths() const;
    /// Throws std::runtime_error that names two hands of different lengths.
    void ensureEqualLengths() const;
    /// Throws std::runtime_error when a hand holds more than 13 cards or a card is in two hands.
    void ensureIsValid() const;

    void clear() { hands = {}; }
    /// Gives the one empty hand what three hands of 13 cards leave; false and no change otherwise.
    ///
    /// The three are not compared: if they share cards, the fourth gets more than 13.
    bool tryDeterminateRestCards();

    /// The deal as a diagram, as the stream output prints it.
    std::string toString() const;
    /// The deal in PBN, for example "N:AK.. ...": from `first` on clockwise, only the cards of
    /// `mask`.
    std::ostream& writeToPBN(std::ostream& out, PlayerNumber first, std::uint64_t mask) const;
    std::string toPBNString(PlayerNumber first, std::uint64_t mask) const;

private:
    std::array<CardsConfiguration, playersCount> hands;
};

/// Prints the four-hand diagram, which ends with an end of line.
std::ostream& operator<<(std::ostream& out, const Hands& hands);

/// The arguments one after the other, each as its stream output writes it.
template <class... Arguments>
std::string str_contat(const Arguments&... arguments)
{
    std::ostringstream out;
    (out << ... << arguments);
    return out.str();
}

}  // namespace trikon
