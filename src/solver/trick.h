// The cards on the table, reduced to what decides the trick: the card that wins so far.
//
// `followed` tells whether that card has been compared with another of its suit. As long as it has
// not, it wins whatever its rank, and the answer of a search does not depend on the rank.
#pragma once

#include "solver/deal.h"

#include <cstdint>
#include <iosfwd>

namespace trikon {

struct Trick {
    std::uint16_t winningCard = 0;
    /// Differs from `ledSuit` once the trick is ruffed.
    std::uint8_t winningSuit = 0;
    std::uint8_t ledSuit = 0;
    /// 1 once a further card of `winningSuit`, higher or lower, has fallen on its first.
    std::uint8_t followed = 0;

    /// No card on the table.
    constexpr Trick() = default;
    /// A card led.
    constexpr Trick(std::uint8_t suit, std::uint16_t card)
        : winningCard(card), winningSuit(suit), ledSuit(suit)
    {
    }
    /// The `count` cards of `cards`, one from the hand of each player from `first` on.
    Trick(Trump trump, const Deal& deal, CardsConfiguration cards, std::int8_t count,
          PlayerNumber first);

    constexpr void add(Trump trump, std::uint8_t suit, std::uint16_t card);
    /// As above; the card is the set's only one.
    constexpr void add(Trump trump, CardsConfiguration card);

    bool operator==(const Trick&) const = default;
};

/// The suit led, "..", the winning card, and "!" when it is `followed`: "H..AS!"; ".." if no card.
std::ostream& operator<<(std::ostream& out, const Trick& trick);

// --- inline definitions ---

/// The first suit of a set that is not empty, 3 for the empty set.
constexpr std::uint8_t firstSuit(CardsConfiguration cards)
{
    std::uint8_t suitNumber = 0;
    while (suitNumber < suitsCount - 1 && cards.suit(suitNumber) == 0) {
        ++suitNumber;
    }
    return suitNumber;
}

constexpr void Trick::add(Trump trump, std::uint8_t suit, std::uint16_t card)
{
    if (suit == winningSuit) {
        winningCard = card > winningCard ? card : winningCard;
        followed = 1;
    } else if (suit == trump) {  // never at no trump, whose number is that of no suit
        winningSuit = suit;
        winningCard = card;
        followed = 0;
    }
}

constexpr void Trick::add(Trump trump, CardsConfiguration card)
{
    add(trump, firstSuit(card), card.suit(firstSuit(card)));
}

}  // namespace trikon
