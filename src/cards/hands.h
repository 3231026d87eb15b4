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
    /// The deal in PBN ("N:AK.. ..."), from `first` on clockwise and only with the cards of `mask`.
    std::ostream& writeToPBN(std::ostream& out, PlayerNumber first, std::uint64_t mask) const;
    std::string toPBNString(PlayerNumber first, std::uint64_t mask) const;

    // The readers below throw the parser_error family; the deal is then partly filled and
    // worthless. An `order` names the four players once each ("ESWN").

    /// Reads the hand of the first player of `order` who holds no card; answers his place, 0 to 3.
    ///
    /// The hand is in dot form or plain form, within the line if `lineBounded`; a card that
    /// somebody holds is an error. It must be as long as the hand before it in the order, else
    /// bad_suit_len. With `completeLast` the third hand of 13 cards gives the fourth, and the
    /// answer is 3. Answers -1 and reads nothing when all four hold cards.
    int readNextPlayer(std::istream& in, const char* order, bool completeLast, bool lineBounded);

    /// Reads the hands of all players of `order` in turn, as `readNextPlayer` does.
    ///
    /// Hands without cards in front of the first one are passed over.
    std::istream& readAllPlayers(std::istream& in, const char* order, bool completeLast,
                                 bool lineBounded);

    /// Reads a diagram: North; then West and East side by side, suit by suit; then South.
    ///
    /// Each holding may stand behind a word that marks its suit, as `toString` writes it with
    /// letters. With `completeLast` three hands of 13 cards give South's, and what stands in his
    /// place is left unread. With `retryFirst` words in front of North's hand are passed over.
    ///
    /// West and East must be as long as North, else bad_suit_len; South's length is not looked at.
    std::istream& readMixedDirectionHands(std::istream& in, bool completeLast, bool retryFirst);

    /// Reads what `writeToPBN` writes: a player, ":", four hands in dot form, "-" for an empty one.
    ///
    /// Neither lengths nor completeness are looked at.
    std::istream& readFromPBN(std::istream& in);

    /// Reads a player, ":" and from him on clockwise three hands of 13 cards or four of any length.
    std::istream& readAllHandsFromPBNLike(std::istream& in);

    /// Reads the deal of a LIN file ("3SAKQHJT9D876C5432,..."): S, W, N, E, of equal lengths.
    ///
    /// One of them may be left out if the others are complete. Answers the dealer, whom a digit in
    /// front names (1 is South, 2 West, 3 North, 4 East); `NoPlayer` without one.
    PlayerNumber readFromBBOLIN(const char* text);
    /// Reads the next word of the stream.
    PlayerNumber readFromBBOLIN(std::istream& in);

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
