#include "dealer/seeded_engine.h"

#include <gtest/gtest.h>

#include <cstdint>

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

}  // namespace
}  // namespace trikon
