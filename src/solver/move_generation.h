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

/// The lowest group of `cards`, a part of one hand's suit.
///
/// `separators` are the cards of the suit that keep cards of this hand apart.
constexpr std::uint16_t lowestGroup(unsigned cards, unsigned separators)
{
    // Added to the ranks that do not separate, the lowest card is carried up to the first that
    // does.
    const unsigned free = ~separators;
    return static_cast<std::uint16_t>(cards & ((free + (cards & -cards)) ^ free));
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

/// The moves of a player who can follow the led suit, worked out one by one: in most nodes of a
/// search the first one decides.
///
/// First comes the move that is asked for, if one is. Then the cheapest card that is sure to win,
/// unless the partner wins without it. Then the others, the lowest first.
class FollowingMoves {
public:
    /// The moves of `player` as the card at `position` (1 to 3).
    template <int position>
    static FollowingMoves of(const Situation& situation, const Deal& deal, PlayerNumber player,
                             const Trick& trick);

    /// Whether the present move is not the only one left.
    bool hasChoice() const { return present != left; }
    /// Makes the move whose lowest card is `card` the first one.
    void startWith(std::uint16_t card)
    {
        present = lowestGroup(left & ranksFrom(card), separators);
    }
    /// The cards of the present move.
    std::uint16_t group() const { return static_cast<std::uint16_t>(present); }
    /// Goes on to the next move with a card among `candidates`; false if none is left.
    bool next(std::uint16_t candidates);

private:
    FollowingMoves(unsigned mine, unsigned separators)
        : left(mine), separators(separators), present(lowestGroup(mine, separators))
    {
    }

    unsigned left;
    unsigned separators;
    unsigned present;
    // The cheapest card that is sure to win, if it comes before lower ones.
    unsigned cheapest = 0;
};

/// The same as a list.
template <int position, int trump>
struct InTrickMovesGenNonVoid {
    static_assert(Clubs <= trump && trump <= NoTrump);

    /// Writes the moves of `player` from `out` on and answers their end.
    static MoveFast* g(MoveFast* out, const Situation& situation, const Deal& deal,
                       const PlayerNumber& player, const Trick& trick);
};

// --- inline definitions ---

template <int position>
inline FollowingMoves FollowingMoves::of(const Situation& situation, const Deal& deal,
                                         PlayerNumber player, const Trick& trick)
{
    static_assert(1 <= position && position <= 3);
    const std::uint8_t suit = trick.ledSuit;
    const unsigned inPlay = situation.cards.suit(suit);
    const unsigned mine = deal[player].suit(suit) & inPlay;
    if (trick.winningSuit != suit) {
        return {mine, inPlay ^ mine};
    }
    FollowingMoves moves(mine, (inPlay ^ mine) | trick.winningCard);
    if (moves.hasChoice()) {
        // The cards still to come from the opponents are all that can beat a card, unless they are
        // void and ruff.
        unsigned toBeat = trick.winningCard;
        if constexpr (position < 3) {
            toBeat |= deal[nextPlayer(player)].suit(suit) & inPlay;
        }
        if (mine > toBeat && !partnerWillWin<position>(situation, deal, player, trick)) {
            moves.cheapest = lowestGroup(mine & ranksAbove(static_cast<std::uint16_t>(toBeat)),
                                         moves.separators);
            moves.present = moves.cheapest;
        }
    }
    return moves;
}

inline bool FollowingMoves::next(std::uint16_t candidates)
{
    do {
        left ^= present;
        if ((left & candidates) == 0) {
            return false;
        }
        present = (left & cheapest) != 0 ? cheapest : lowestGroup(left, separators);
    } while ((present & candidates) == 0);
    return true;
}

template <int position, int trump>
MoveFast* InTrickMovesGenNonVoid<position, trump>::g(MoveFast* out, const Situation& situation,
                                                     const Deal& deal, const PlayerNumber& player,
                                                     const Trick& trick)
{
    FollowingMoves moves = FollowingMoves::of<position>(situation, deal, player, trick);
    do {
        *out++ = {lowestCard(moves.group()), moves.group(), trick.ledSuit};
    } while (moves.next(fullSuit));
    return out;
}

}  // namespace trikon
