#include "dealer/seeded_engine.h"

#include "dealer/random_source.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>

namespace trikon {
namespace {

constexpr std::uint64_t step = 0x9e3779b97f4a7c15;

// The published function on its own, and what was published for the state 1234567.
std::uint64_t nextOfSplitMix(std::uint64_t& state)
{
    std::uint64_t word = state += step;
    word = (word ^ (word >> 30)) * 0xbf58476d1ce4e5b9;
    word = (word ^ (word >> 27)) * 0x94d049bb133111eb;
    return word ^ (word >> 31);
}

TEST(SeededEngine, CountsAsSplitMix64DoesFromAWordOfSplitMix64)
{
    std::uint64_t known = 1234567;
    EXPECT_EQ(nextOfSplitMix(known), 6457827717110365317U);
    EXPECT_EQ(nextOfSplitMix(known), 3203168211198807973U);

    std::uint64_t seed = 7;
    std::uint64_t starts = nextOfSplitMix(seed);
    for (std::uint64_t number = 0; number < 5; ++number) {
        std::uint64_t state = nextOfSplitMix(starts);
        SeededEngine engine(7, number);
        for (int word = 0; word < 5; ++word) {
            EXPECT_EQ(engine(), nextOfSplitMix(state));
        }
    }
}

TEST(SeededEngine, NeighbouringSeedsAndDealsShareNoWord)
{
    std::set<std::uint64_t> words;
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
        for (std::uint64_t number = 0; number < 200; ++number) {
            SeededEngine engine(seed, number);
            for (int word = 0; word < 5; ++word) {
                words.insert(engine());
            }
        }
    }
    EXPECT_EQ(words.size(), 20U * 200 * 5);
}

// The deals of a seed are a promise to everybody who has noted one down.
TEST(SeededEngine, TheDealsOfASeedNeverChange)
{
    const RandomSource::Configuration nothingFixed{Hands()};
    const auto dealt = [&](std::uint64_t seed, std::uint64_t number) {
        SeededEngine engine(seed, number);
        Hands hands;
        nothingFixed.deal(hands, engine);
        return hands.toPBNString(North, fullDeck);
    };
    EXPECT_EQ(dealt(1, 0), "N:T3.64.AJT98.9753 Q97.AKQ83.42.642 KJ82.JT52.5.AKJT A654.97.KQ763.Q8");
    EXPECT_EQ(dealt(1, 1), "N:8752.Q2.AQ987.73 AQT63.JT.J32.Q94 K94.4.T654.AJ865 J.AK987653.K.KT2");
    EXPECT_EQ(dealt(18446744073709551615U, 1000000),
              "N:KQT.K5.K876.AJ84 7642.JT843.32.53 A3.A972.QJ9.T972 J985.Q6.AT54.KQ6");
}

}  // namespace
}  // namespace trikon
