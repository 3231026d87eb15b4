// The tables of binomial coefficients, and the subset of a rank.
#include "dealer/subset_of_rank.h"

#include <algorithm>

namespace trikon {

std::uint64_t Newton[cardsOfDeck + 1][mostCardsChosen + 1];
PairBounds pairBounds[(mostPairs + 1) * pairBoundsRow];

namespace {

using FourCardsTable = std::array<std::array<std::uint8_t, 16>, 16>;

// `[four][places]`: the cards of `four` (one bit each) at `places`, place 0 the highest of them.
constexpr FourCardsTable listCardsAtPlaces()
{
    FourCardsTable table{};
    for (unsigned four = 0; four < 16; ++four) {
        for (unsigned places = 0; places < 16; ++places) {
            unsigned placesLeft = places;
            for (unsigned card = 8; card != 0; card >>= 1) {
                if ((four & card) != 0) {
                    table[four][places] |= static_cast<std::uint8_t>(card * (placesLeft & 1));
                    placesLeft >>= 1;
                }
            }
        }
    }
    return table;
}

constexpr FourCardsTable cardsOfFour = listCardsAtPlaces();
constexpr std::uint8_t countOfFour[16] = {0, 1, 1, 2, 1, 2, 2, 3, 1, 2, 2, 3, 2, 3, 3, 4};

// Static storage is zero before any initialiser runs, whichever file's comes first.
bool filled;

}  // namespace

void dealer_init()
{
    for (auto& row : Newton) {
        row[0] = 1;
    }
    for (int n = 0; n <= mostCardsChosen; ++n) {
        Newton[n][n] = 1;
    }
    for (int n = 1; n < cardsOfDeck; ++n) {
        for (int k = 1; k <= std::min(n, mostCardsChosen); ++k) {
            Newton[n + 1][k] = Newton[n][k - 1] + Newton[n][k];
        }
    }
}

void pairBounds_init()
{
    for (int pairs = 1; pairs <= mostPairs; ++pairs) {
        const std::uint64_t* aboveLower = Newton[2 * pairs - 1];
        const std::uint64_t* aboveUpper = Newton[2 * pairs - 2];
        for (int k = 0; k <= mostCardsChosen; ++k) {
            const std::uint64_t lower = aboveLower[k];
            const std::uint64_t both = lower + (k > 0 ? aboveUpper[k - 1] : 0);
            pairBounds[pairs * pairBoundsRow + k] = {0, aboveUpper[k], lower, both};
        }
    }
}

DealerInitializer::DealerInitializer()
{
    if (filled) {
        return;
    }
    dealer_init();
    pairBounds_init();
    filled = true;
}

void cardsSubset(CardsConfiguration& result, CardsConfiguration set, std::uint64_t rank,
                 std::int8_t k, std::int8_t n)
{
    SubsetWalk walk(rank, k, n);
    for (int pairs = pairsOf(n); pairs > 0; --pairs) {
        walk.step();
    }
    result |= cardsAtPlaces(set, walk.places());
}

CardsConfiguration cardsAtPlaces(CardsConfiguration set, std::uint64_t places)
{
    std::uint64_t cards = 0;
    for (int shift = 60; shift >= 0; shift -= 4) {
        const std::uint64_t four = set >> shift & 15;
        cards |= std::uint64_t{cardsOfFour[four][places & 15]} << shift;
        places >>= countOfFour[four];
    }
    return cards;
}

}  // namespace trikon
