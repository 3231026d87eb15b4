// The moves of a hand, cards of equal effect merged into one.
//
// Two cards of a hand are equivalent when no card still to be played by another hand, and not the
// card that wins the trick, lies between them. A group is named by its lowest card. Moves come in
// the order in which they are worth trying. Lists are written straight behind each other into an
// array of the caller's; `out` is left just past the last one.
#pragma once

#include "cards/situation.h"
#include "solver/deal.h"
#include "solver/move_ordering.h"
#include "solver/suit_masks.h"
#include "solver/trick.h"

#include <boost/container/static_vector.hpp>

#include <algorithm>
#include <array>
#include <cstdint>

namespace trikon {

struct MoveFast {
    /// The lowest card of the group.
    std::uint16_t card;
    /// All cards of the group.
    std::uint16_t equivalents;
    std::uint8_t suit;
};

/// All moves of a hand at most.
using MoveList = boost::container::static_vector<MoveFast, cardsOfHand>;

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

/// The group of `cards` with `card` in it.
inline std::uint16_t groupOf(std::uint16_t card, unsigned cards, unsigned separators)
{
    const auto below = static_cast<std::uint16_t>(separators & (card - 1U));
    return lowestGroup(cards & ranksAbove(below), separators);
}

/// Widens the relevance of a failed move. Only one card of its group was tried; the others fail
/// alike as long as none of them is told from it.
inline void coverWholeGroup(CardsConfiguration& relevant, const MoveFast& move)
{
    const std::uint16_t ranks = relevant.suit(move.suit);
    if ((ranks & move.equivalents) != 0 && (ranks & move.card) == 0) {
        relevant |= onlySuit(move.suit, ranksFrom(move.card));
    }
}

/// The cards that may do better than `failed`, which has failed for these `reasons`.
///
/// If the rank of its card is not among them, neither does that of any other card of the suit
/// outside matter: they would fail as it did.
inline CardsConfiguration candidatesAfter(const MoveFast& failed, CardsConfiguration reasons)
{
    const bool rankMatters = (reasons.suit(failed.suit) & failed.card) != 0;
    return rankMatters ? fullDeck : reasons | ~onlySuit(failed.suit, fullSuit);
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
    bool hasChoice() const { return group != left; }
    /// Makes the move whose lowest card is `card` the first one.
    void startWith(std::uint16_t card) { group = lowestGroup(left & ranksFrom(card), separators); }
    MoveFast present() const
    {
        const auto cards = static_cast<std::uint16_t>(group);
        return {lowestCard(cards), cards, suit};
    }
    /// Goes on to the next move after the present one has failed; false if none is left.
    ///
    /// `reasons` are the ranks that its failure depends on; what fails alike is left out.
    bool nextAfter(CardsConfiguration reasons);

private:
    FollowingMoves(std::uint8_t suit, unsigned mine, unsigned separators)
        : left(mine), separators(separators), group(lowestGroup(mine, separators)), suit(suit)
    {
    }

    unsigned left;
    unsigned separators;
    unsigned group;
    // The cheapest card that is sure to win, if it comes before lower ones.
    unsigned cheapest = 0;
    unsigned candidates = fullSuit;
    std::uint8_t suit;
};

/// The moves of a player who cannot follow suit, worked out one by one: the lowest group of each
/// suit, then the others.
class VoidMoves {
public:
    /// The moves of `player` as the card at `position` (1 to 3), an over-ruff before the others
    /// unless the partner is winning, then suit by suit, those of most weight first.
    template <int position, int trump>
    static VoidMoves of(const Situation& situation, const Deal& deal, PlayerNumber player,
                        const Trick& trick);

    /// The moves of `hand`, suit by suit.
    VoidMoves(CardsConfiguration hand, CardsConfiguration separators,
              const std::array<std::uint8_t, 3>& suits)
        : left(hand),
          separators(separators),
          order((unsigned{suits[0]} | unsigned{suits[1]} << 2 | unsigned{suits[2]} << 4) * 65)
    {
    }

    MoveFast present() const { return move; }
    /// Goes on to the next move, at the beginning to the first one; false if none is left.
    bool next();
    /// As `FollowingMoves::nextAfter`.
    bool nextAfter(CardsConfiguration reasons);

private:
    // Makes the lowest group of `cards` the present move.
    void take(std::uint8_t suit, std::uint16_t cards);

    CardsConfiguration left;
    CardsConfiguration separators;
    CardsConfiguration candidates = fullDeck;
    // The order of the suits twice over, two bits each.
    unsigned order;
    unsigned place = 0;
    MoveFast move{};
};

/// Three suits in descending order of their weights (0 or more), equal ones as given.
std::array<std::uint8_t, 3> suitsByWeight(const std::array<std::uint8_t, 3>& suits,
                                          const std::array<int, 3>& weights);

// The same moves as lists.

/// All moves of a `FollowingMoves` or `VoidMoves` from the present one on.
template <class Moves>
MoveList listed(Moves moves)
{
    MoveList list;
    do {
        list.push_back(moves.present());
    } while (moves.nextAfter(fullDeck));
    return list;
}

/// The moves of a player who cannot follow suit. `hand` is empty in the three suits afterwards.
void generateVoid(MoveFast*& out, CardsConfiguration& hand, const CardsConfiguration& separators,
                  std::uint8_t s1, std::uint8_t s2, std::uint8_t s3);
/// `generateVoid` with the suits as `suitsByWeight`.
void generateVoidOptimal(MoveFast*& out, CardsConfiguration& hand,
                         const CardsConfiguration& separators, std::uint8_t a, std::uint8_t b,
                         std::uint8_t c, int wa, int wb, int wc);
/// The moves of a player who can follow suit.
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
        return {suit, mine, inPlay ^ mine};
    }
    FollowingMoves moves(suit, mine, (inPlay ^ mine) | trick.winningCard);
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
            moves.group = moves.cheapest;
        }
    }
    return moves;
}

inline bool FollowingMoves::nextAfter(CardsConfiguration reasons)
{
    const unsigned ranks = reasons.suit(suit);
    if ((ranks & present().card) == 0) {
        candidates &= ranks;
    }
    do {
        left ^= group;
        if ((left & candidates) == 0) {
            return false;
        }
        group = (left & cheapest) != 0 ? cheapest : lowestGroup(left, separators);
    } while ((group & candidates) == 0);
    return true;
}

template <int position, int trump>
inline VoidMoves VoidMoves::of(const Situation& situation, const Deal& deal, PlayerNumber player,
                               const Trick& trick)
{
    // The longest suit can spare a card.
    const auto lengths = static_cast<unsigned>(situation.counts >> (16 * player));
    const int ruffing = ruffWeight<trump, position>(situation, deal, player, trick);
    std::array<std::uint8_t, 3> suits;
    std::array<int, 3> weights;
    for (unsigned place = 0; place < 3; ++place) {
        suits[place] = static_cast<std::uint8_t>((trick.ledSuit + place + 1) & 3);
        weights[place] = static_cast<int>(lengths >> (4 * suits[place]) & 15) +
                         (suits[place] == trump ? ruffing : 0);
    }
    const CardsConfiguration hand = situation.cards & deal[player];
    VoidMoves moves(hand, situation.cards ^ hand, suitsByWeight(suits, weights));
    if (trump != NoTrump && trick.winningSuit != trick.ledSuit) {
        // A trump above the one that has ruffed is not the same as one below it.
        moves.separators.add({trump, trick.winningCard});
        const std::uint16_t higher = hand.suit(trump) & ranksAbove(trick.winningCard);
        if (higher != 0 && !partnerIsWinning(deal, player, trick)) {
            moves.take(trump, higher);
            return moves;
        }
    }
    moves.next();
    return moves;
}

inline void VoidMoves::take(std::uint8_t suit, std::uint16_t cards)
{
    const std::uint16_t group = lowestGroup(cards, separators.suit(suit));
    left ^= onlySuit(suit, group);
    move = {lowestCard(group), group, suit};
}

inline bool VoidMoves::nextAfter(CardsConfiguration reasons)
{
    candidates &= candidatesAfter(move, reasons);
    return next();
}

inline bool VoidMoves::next()
{
    while ((left & candidates) != 0) {
        const auto suit = static_cast<std::uint8_t>(order >> (2 * place) & 3);
        const std::uint16_t cards = left.suit(suit);
        const std::uint16_t wanted = candidates.suit(suit);
        const bool isOut = (cards & wanted) == 0;
        place += isOut || place < 3 ? 1 : 0;
        if (!isOut) {
            take(suit, cards);
            if ((move.equivalents & wanted) != 0) {
                return true;
            }
        }
    }
    return false;
}

inline std::array<std::uint8_t, 3> suitsByWeight(const std::array<std::uint8_t, 3>& suits,
                                                 const std::array<int, 3>& weights)
{
    // Each suit behind its weight and its place is one number, and numbers are sorted without
    // branches.
    const int first = weights[0] << 4 | 2 << 2 | suits[0];
    const int second = weights[1] << 4 | 1 << 2 | suits[1];
    const int third = weights[2] << 4 | suits[2];
    const int high = std::max(first, second);
    const int low = std::min(first, second);
    const int middle = std::max(low, third);
    const auto suitOf = [](int number) { return static_cast<std::uint8_t>(number & 3); };
    return {suitOf(std::max(high, middle)), suitOf(std::min(high, middle)),
            suitOf(std::min(low, third))};
}

inline void generateVoid(MoveFast*& out, CardsConfiguration& hand,
                         const CardsConfiguration& separators, std::uint8_t s1, std::uint8_t s2,
                         std::uint8_t s3)
{
    const CardsConfiguration suits =
        onlySuit(s1, fullSuit) | onlySuit(s2, fullSuit) | onlySuit(s3, fullSuit);
    VoidMoves moves(hand & suits, separators, {s1, s2, s3});
    while (moves.next()) {
        *out++ = moves.present();
    }
    hand &= ~suits;
}

inline void generateVoidOptimal(MoveFast*& out, CardsConfiguration& hand,
                                const CardsConfiguration& separators, std::uint8_t a,
                                std::uint8_t b, std::uint8_t c, int wa, int wb, int wc)
{
    const auto suits = suitsByWeight({a, b, c}, {wa, wb, wc});
    generateVoid(out, hand, separators, suits[0], suits[1], suits[2]);
}

template <int position, int trump>
MoveFast* InTrickMovesGenNonVoid<position, trump>::g(MoveFast* out, const Situation& situation,
                                                     const Deal& deal, const PlayerNumber& player,
                                                     const Trick& trick)
{
    const MoveList moves = listed(FollowingMoves::of<position>(situation, deal, player, trick));
    return std::copy(moves.begin(), moves.end(), out);
}

}  // namespace trikon
