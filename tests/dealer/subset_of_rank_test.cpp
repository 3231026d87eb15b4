#include "dealer/subset_of_rank.h"

#include "dealer/plain_subset.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>

namespace trikon {
namespace {

CardsConfiguration subset(CardsConfiguration set, std::uint64_t rank, int k, int n)
{
    CardsConfiguration result;
    cardsSubset(result, set, rank, static_cast<std::int8_t>(k), static_cast<std::int8_t>(n));
    return result;
}

TEST(SubsetOfRank, RankZeroIsTheHighestCardsAndTheLastRankTheLowest)
{
    const CardsConfiguration three = readWholeHand("...432");
    EXPECT_EQ(subset(three, 0, 2, 3), readWholeHand("...43"));
    EXPECT_EQ(subset(three, 1, 2, 3), readWholeHand("...42"));
    EXPECT_EQ(subset(three, 2, 2, 3), readWholeHand("...32"));
}

TEST(SubsetOfRank, CardsAlreadyInTheResultStay)
{
    CardsConfiguration result = readWholeHand("A...");
    cardsSubset(result, readWholeHand("...432"), 0, 1, 3);
    EXPECT_EQ(result, readWholeHand("A...4"));
}

TEST(SubsetOfRank, EverySubsetOfASmallSetIsThatOfThePlainWalk)
{
    const CardsConfiguration cards = readWholeHand("A92.K3.QJ4.T75");
    for (int n = 0; n <= cards.count(); ++n) {
        const CardsConfiguration set = plainSubset(cards, 0, n);
        for (int k = 0; k <= n; ++k) {
            for (std::uint64_t rank = 0; rank < binomial(n, k); ++rank) {
                ASSERT_EQ(subset(set, rank, k, n), plainSubset(set, rank, k))
                    << "rank " << rank << " of " << k << " of " << n;
            }
        }
    }
}

TEST(SubsetOfRank, RandomSubsetsOfRandomSetsAreThoseOfThePlainWalk)
{
    std::mt19937_64 engine(5);
    for (int round = 0; round < 20000; ++round) {
        const CardsConfiguration set = round % 10 == 0 ? fullDeck : engine() & fullDeck;
        const int n = set.count();
        const int k = static_cast<int>(engine() % static_cast<unsigned>(std::min(n, 26) + 1));
        const std::uint64_t last = binomial(n, k) - 1;
        for (const std::uint64_t rank : {std::uint64_t{0}, engine() % (last + 1), last}) {
            ASSERT_EQ(subset(set, rank, k, n), plainSubset(set, rank, k))
                << "rank " << rank << " of " << k << " of " << set;
        }
    }
}

}  // namespace
}  // namespace trikon
