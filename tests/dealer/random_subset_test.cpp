#include "dealer/random_subset.h"

#include "dealer/plain_subset.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <vector>

namespace trikon {
namespace {

constexpr std::uint64_t highestWord = ListedWords::max();

TEST(UniformRank, EachRankHasEquallyManyWordsAndTheRestIsDrawnAgain)
{
    constexpr std::uint64_t third = highestWord / 3;
    constexpr std::uint64_t half = highestWord / 2;
    struct Case {
        std::int8_t k, n;
        std::vector<std::uint64_t> words;
        std::uint64_t rank;
    };
    const Case cases[] = {
        {1, 3, {third - 1}, 0},
        {1, 3, {third}, 1},
        {1, 3, {highestWord - 1}, 2},
        {1, 3, {highestWord, 0}, 0},
        {1, 2, {half - 1}, 0},
        {1, 2, {half}, 1},
        {1, 2, {highestWord - 1, highestWord, highestWord - 2}, 1},
        {0, 13, {highestWord - 1}, 0},
        {0, 0, {highestWord, 7}, 0},
        {26, 52, {0x123456789abcdef0}, 0x123456789abcdef0 / (highestWord / 495918532948104)},
        {5, 3, {1234567}, 1234567},  // nothing to choose from: the word itself
    };
    for (const Case& c : cases) {
        ListedWords engine(c.words);
        EXPECT_EQ(uniformRank(engine, c.k, c.n), c.rank) << int{c.k} << " of " << int{c.n};
        EXPECT_EQ(engine.wordsDrawn(), c.words.size()) << int{c.k} << " of " << int{c.n};
    }
}

TEST(RandomSubset, OneCardIsTheHighestForTheLowestWord)
{
    const CardsConfiguration set = readWholeHand("2.A..T3");
    const char* const expected[] = {"S2", "HA", "CT", "C3"};
    for (unsigned rank = 0; rank < 4; ++rank) {
        ListedWords engine({rank * (highestWord / 4)});
        EXPECT_EQ(randCard(set, engine, 4).str(), expected[rank]);
    }
}

// North and South share what the first draw takes, East and West what the second takes.
TEST(RandomSubset, FourHandsArePairsThatAreThenSplit)
{
    for (int k = 1; k <= cardsOfHand; ++k) {
        std::mt19937_64 engine(static_cast<unsigned>(k));
        std::mt19937_64 sameEngine = engine;
        std::array<CardsConfiguration, playersCount> hands{fullDeck, fullDeck, fullDeck, fullDeck};
        rand4Hands(hands, engine, static_cast<std::int8_t>(k));

        const auto draw = [&](CardsConfiguration set, int wanted) {
            const int n = set.count();
            return plainSubset(set, sameEngine() / (highestWord / binomial(n, wanted)), wanted);
        };
        const CardsConfiguration northSouth = draw(fullDeck, 2 * k);
        const CardsConfiguration rest = fullDeck ^ northSouth;
        const CardsConfiguration eastWest = k == cardsOfHand ? rest : draw(rest, 2 * k);
        const CardsConfiguration north = draw(northSouth, k);
        const CardsConfiguration east = draw(eastWest, k);
        const std::array<CardsConfiguration, playersCount> expected{north, east, northSouth ^ north,
                                                                    eastWest ^ east};
        EXPECT_EQ(hands, expected) << k;
        EXPECT_EQ(engine, sameEngine) << k;
    }
}

}  // namespace
}  // namespace trikon
