// The subsets of k of n cards, numbered, and how the subset of a number is found.
//
// The number is the subset's rank, from 0 up to C(n, k). The cards are looked at from the lowest
// up: with m cards above it, the subsets without the lowest card have the ranks below C(m, k),
// those with it the ranks from there. One card at a time, the processor would often guess wrongly
// whether the card is taken. So two cards are looked at together: how many of three bounds the rank
// has reached tells, without a branch, which of the two are taken.
//
// This walk (`SubsetWalk`) finds places in the set and needs only the rank for it, so the walks for
// all hands of a deal can run side by side. `cardsAtPlaces` then turns places into cards.
#pragma once

#include "cards/cards_configuration.h"

#include <array>
#include <cstdint>

namespace trikon {

/// More than half of the deck is never chosen.
constexpr int mostCardsChosen = cardsOfDeck / 2;
constexpr int mostPairs = cardsOfDeck / 2;

/// `Newton[n][k]` is the binomial coefficient C(n, k), 0 where k > n.
extern std::uint64_t Newton[cardsOfDeck + 1][mostCardsChosen + 1];

/// The lowest ranks at which none, the upper, the lower and both of a pair of cards are taken.
///
/// The index has bit 1 for the lower card, which is looked at first, and bit 0 for the upper.
using PairBounds = std::array<std::uint64_t, 4>;

/// Element `p * pairBoundsRow + k`: `k` cards are wanted of a pair and the `p` - 1 pairs above it.
constexpr int pairBoundsRow = mostCardsChosen + 1;
extern PairBounds pairBounds[(mostPairs + 1) * pairBoundsRow];

/// Fills `Newton`.
void dealer_init();
/// Reads `Newton`, which must be filled.
void pairBounds_init();

/// Fills both tables when the first object of this class is made; later ones do nothing.
///
/// Every file that includes this header holds one, so the tables are ready before any static
/// initialiser of that file that comes later.
class DealerInitializer {
public:
    DealerInitializer();
};

static const DealerInitializer dealerTablesInitializer;

/// Adds to `result` the subset of `k` of the `n` cards of `set` that has `rank`, below C(n, k).
///
/// Rank 0 is the k highest cards, the last rank the k lowest.
void cardsSubset(CardsConfiguration& result, CardsConfiguration set, std::uint64_t rank,
                 std::int8_t k, std::int8_t n);

/// The steps that a `SubsetWalk` over `n` places takes.
constexpr int pairsOf(int n) { return (n + 1) / 2; }

/// Finds the places of the subset that has a rank among those of `k` of `n` places.
class SubsetWalk {
public:
    /// An odd `n` gets one more place at the low end, which no rank below C(n, k) takes.
    SubsetWalk(std::uint64_t rank, std::int8_t k, std::int8_t n)
        : rank(rank), bounds(&pairBounds[pairsOf(n) * pairBoundsRow + k])
    {
    }

    /// Takes what the subset has of the next two places; to be called `pairsOf(n)` times.
    void step();
    /// After the last step, bit m is set when the place with m places above it is taken.
    std::uint64_t places() const { return taken; }

private:
    std::uint64_t rank;
    const PairBounds* bounds;
    std::uint64_t taken = 0;
};

/// The cards of `set` at `places`; bit m stands for the card with m cards of the set above it.
CardsConfiguration cardsAtPlaces(CardsConfiguration set, std::uint64_t places);

// --- inline definitions ---

inline void SubsetWalk::step()
{
    const PairBounds& bound = *bounds;
    const std::uint64_t any = rank >= bound[1];
    const std::uint64_t lower = rank >= bound[2];
    const std::uint64_t both = rank >= bound[3];
    const std::uint64_t choice = any + lower + both;
    rank -= bound[choice];
    taken = 4 * taken + choice;
    // One pair fewer, and as many cards fewer as were taken.
    bounds -= pairBoundsRow + any + both;
}

}  // namespace trikon
