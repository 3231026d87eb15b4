// The leads of a hand, worked out one by one: in many nodes of a search the first one decides, and
// whole suits are left out.
#pragma once

#include "cards/situation.h"
#include "solver/deal.h"
#include "solver/move_generation.h"
#include "solver/move_ordering.h"
#include "solver/suit_masks.h"

#include <array>
#include <cstdint>
#include <utility>

namespace trikon {

/// The group of cards that last succeeded as a lead, by player, suit and the suit's cards in play.
using BestLeads = std::uint16_t[playersCount][suitsCount][holdingsOfSuit];

/// The leads of a player who holds a card.
///
/// First comes the lead asked for, if the player has it. Then suit by suit, those of most weight
/// first: the group that last succeeded, the highest one, and the others upward.
class Leads {
public:
    /// `asked` is the lead asked for, its card 0 for none. All references must outlive the object.
    Leads(const Situation& situation, const Deal& deal, const BestLeads& bestLeads,
          PlayerNumber player, OneCardInSuit asked);

    const MoveFast& present() const { return move; }
    /// Goes on to the next lead, at the beginning to the first one; false if none is left.
    bool next();
    /// Leaves out all further leads of the present suit.
    void leaveOutSuit() { candidates &= ~onlySuit(move.suit, fullSuit); }
    /// Leaves out leads that fail as the present one has failed, for these `reasons`.
    void leaveOutAlike(CardsConfiguration reasons) { candidates &= candidatesAfter(move, reasons); }

private:
    // How much the suit of the lead asked for weighs more than the others.
    static constexpr int rememberedSuitWeight = 250;

    void orderSuits();
    void enter(std::uint8_t next);
    std::uint16_t nextGroup();

    const Situation& situation;
    const Deal& deal;
    const BestLeads& bestLeads;
    CardsConfiguration mine;
    CardsConfiguration candidates = fullDeck;
    PlayerNumber player;
    // The lead asked for, which is the first one if the player has it.
    OneCardInSuit asked;
    std::uint16_t first = 0;
    enum Stage : std::uint8_t { AtStart, BeforeSuits, AmongSuits } stage = AtStart;
    // The suits that are still to come, the next one last.
    std::array<std::uint8_t, suitsCount> suits;
    unsigned suitsLeft = 0;
    // Of the present suit: the cards of the leads that are still to come, what keeps them apart,
    // the group that goes before the others, and whether the highest one does.
    std::uint8_t suit = 0;
    unsigned left = 0;
    unsigned separators = 0;
    std::uint16_t best = 0;
    bool isHighestNext = false;
    MoveFast move{};
};

// --- inline definitions ---

inline Leads::Leads(const Situation& situation, const Deal& deal, const BestLeads& bestLeads,
                    PlayerNumber player, OneCardInSuit asked)
    : situation(situation),
      deal(deal),
      bestLeads(bestLeads),
      mine(situation.cards & deal[player]),
      player(player),
      asked(asked)
{
    const unsigned held = mine.suit(asked.suit);
    if ((held & asked.card) != 0) {
        first = groupOf(asked.card, held, situation.cards.suit(asked.suit) ^ held);
    }
}

inline bool Leads::next()
{
    if (stage == AtStart) {
        stage = BeforeSuits;
        if (first != 0) {
            move = {lowestCard(first), first, asked.suit};
            return true;
        }
    }
    if (stage == BeforeSuits) {
        stage = AmongSuits;
        orderSuits();
    }
    for (;;) {
        while ((left & candidates.suit(suit)) == 0) {
            if (suitsLeft == 0) {
                return false;
            }
            enter(suits[--suitsLeft]);
        }
        const std::uint16_t group = nextGroup();
        left ^= group;
        if ((group & candidates.suit(suit)) != 0) {
            move = {lowestCard(group), group, suit};
            return true;
        }
    }
}

inline void Leads::orderSuits()
{
    std::array<int, suitsCount> weights;
    for (std::uint8_t held = 0; held < suitsCount; ++held) {
        if ((mine.suit(held) & candidates.suit(held)) == 0) {
            continue;
        }
        int weight = leadWeight(situation, deal, player, held);
        weight += asked.card != 0 && asked.suit == held ? rememberedSuitWeight : 0;
        unsigned place = suitsLeft++;
        for (; place > 0 && weights[place - 1] >= weight; --place) {
            suits[place] = suits[place - 1];
            weights[place] = weights[place - 1];
        }
        suits[place] = held;
        weights[place] = weight;
    }
}

inline void Leads::enter(std::uint8_t next)
{
    suit = next;
    const std::uint16_t inPlay = situation.cards.suit(suit);
    left = mine.suit(suit);
    separators = inPlay ^ left;
    left ^= suit == asked.suit ? first : 0U;
    best = static_cast<std::uint16_t>(bestLeads[player][suit][inPlay] & left);
    isHighestNext = true;
}

inline std::uint16_t Leads::nextGroup()
{
    if (best != 0) {
        return std::exchange(best, std::uint16_t{0});
    }
    const bool isHighest = std::exchange(isHighestNext, false);
    return isHighest ? groupOf(_highest_bit13[left], left, separators)
                     : lowestGroup(left, separators);
}

}  // namespace trikon
