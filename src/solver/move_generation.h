// The moves of a hand, cards of equal effect merged into one.
//
// Two cards of a hand are equivalent when no card still to be played by another hand, and not the
// card that wins the trick, lies between them. The group is played as its lowest card. Moves are
// written straight behind each other into an array of the caller's, in the order in which they are
// worth trying; `out` is left just past the last one.
#pragma once

#include "cards/situation.h"
#include "solver/deal.h"
#include "solver/move_ordering.h"
#include "solver/suit_masks.h"
#include "solver/trick.h"

#include <cstdint>
#include <utility>

namespace trikon {

struct MoveFast {
    /// The lowest card of the group, the one that is played.
    std::uint16_t card;
    /// All cards of the group.
    std::uint16_t equivalents;
    std::uint8_t suit;
};

/// The lowest group of `cards`, a part of one hand's suit that is not empty.
///
/// `separators` are the cards of the suit that keep cards of this hand apart.
inline std::uint16_t lowestGroup(std::uint16_t cards, std::uint16_t separators)
{
    // Up to the first separator above the lowest card, all are equal.
    const int low = lowestCard(cards);
    const int above = separators & -(low << 1);
    const int end = above == 0 ? fullSuit + 1 : above & -above;
    return static_cast<std::uint16_t>(cards & (end - 1));
}

/// Writes the lowest group of `cards` and takes it out of them.
inline void generateLowestGroup(std::uint8_t suit, MoveFast*& out, std::uint16_t& cards,
                                std::uint16_t separators)
{
    const std::uint16_t group = lowestGroup(cards, separators);
    *out++ = {lowestCard(cards), group, suit};
    cards ^= group;
}

/// All groups of `cards`, the lowest first. `cards` is empty afterwards.
inline void generateMovesInOneSuit(std::uint8_t suit, MoveFast*& out, std::uint16_t& cards,
                                   std::uint16_t separators)
{
    while (cards != 0) {
        generateLowestGroup(suit, out, cards, separators);
    }
}

/// The moves of a player who cannot follow suit: the lowest group of each suit, then the others.
///
/// `hand` is empty in the three suits afterwards.
inline void generateVoid(MoveFast*& out, CardsConfiguration& hand,
                         const CardsConfiguration& separators, std::uint8_t s1, std::uint8_t s2,
                         std::uint8_t s3)
{
    const std::uint8_t suits[] = {s1, s2, s3};
    for (const std::uint8_t suit : suits) {
        std::uint16_t cards = hand.suit(suit);
        if (cards != 0) {
            generateLowestGroup(suit, out, cards, separators.suit(suit));
            hand.setSuit(suit, cards);
        }
    }
    for (const std::uint8_t suit : suits) {
        std::uint16_t cards = hand.suit(suit);
        generateMovesInOneSuit(suit, out, cards, separators.suit(suit));
        hand.setSuit(suit, 0);
    }
}

/// `generateVoid` with the suits in descending order of their weights, equal ones as given.
inline void generateVoidOptimal(MoveFast*& out, CardsConfiguration& hand,
                                const CardsConfiguration& separators, std::uint8_t a,
                                std::uint8_t b, std::uint8_t c, int wa, int wb, int wc)
{
    const auto order = [](std::uint8_t& first, std::uint8_t& second, int& weight, int& other) {
        if (weight < other) {
            std::swap(first, second);
            std::swap(weight, other);
        }
    };
    order(a, b, wa, wb);
    order(b, c, wb, wc);
    order(a, b, wa, wb);
    generateVoid(out, hand, separators, a, b, c);
}

/// The moves of a player who can follow the led suit, as the card at `position` (1 to 3).
template <int position, int trump>
struct InTrickMovesGenNonVoid {
    static_assert(1 <= position && position <= 3);
    static_assert(Clubs <= trump && trump <= NoTrump);

    /// Writes the moves of `player` from `out` on and answers their end.
    static MoveFast* g(MoveFast* out, const Situation& situation, const Deal& deal,
                       const PlayerNumber& player, const Trick& trick);

private:
    // The ranks that a card must have to win the trick for certain. The cards still to come from
    // the opponents are all that can beat it, unless they are void and ruff.
    static std::uint16_t safeRanks(const Situation& situation, const Deal& deal,
                                   PlayerNumber player, const Trick& trick);
};

// --- inline definitions ---

template <int position, int trump>
std::uint16_t InTrickMovesGenNonVoid<position, trump>::safeRanks(const Situation& situation,
                                                                 const Deal& deal,
                                                                 PlayerNumber player,
                                                                 const Trick& trick)
{
    std::uint16_t ranks = ranksAbove(trick.winningCard);
    if constexpr (position < 3) {
        const CardsConfiguration next = situation.cards & deal[nextPlayer(player)];
        ranks &= ranksAbove(next.suit(trick.ledSuit));
    }
    return ranks;
}

template <int position, int trump>
MoveFast* InTrickMovesGenNonVoid<position, trump>::g(MoveFast* out, const Situation& situation,
                                                     const Deal& deal, const PlayerNumber& player,
                                                     const Trick& trick)
{
    const std::uint8_t suit = trick.ledSuit;
    const std::uint16_t inPlay = situation.cards.suit(suit);
    auto mine = static_cast<std::uint16_t>(deal[player].suit(suit) & inPlay);
    auto separators = static_cast<std::uint16_t>(inPlay ^ mine);
    if (trick.winningSuit == suit) {
        separators |= trick.winningCard;
        auto winning = static_cast<std::uint16_t>(mine & safeRanks(situation, deal, player, trick));
        if (winning != 0 && !partnerWillWin<position>(situation, deal, player, trick)) {
            // The cheapest card that wins, then the cards that leave the trick, then the rest.
            mine ^= winning;
            generateLowestGroup(suit, out, winning, separators);
            generateMovesInOneSuit(suit, out, mine, separators);
            mine = winning;
        }
    }
    generateMovesInOneSuit(suit, out, mine, separators);
    return out;
}

}  // namespace trikon
