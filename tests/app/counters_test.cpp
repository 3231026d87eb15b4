// The printed forms of counters, their sums beyond plain floating point, and their limit.
#include "app/counters.h"

#include "support/literals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <vector>

namespace trikon {

namespace {

Counter counterOf(const std::vector<double>& values)
{
    Counter counter;
    for (const double value : values) {
        counter.add(value);
    }
    return counter;
}

// Not-a-number has a sign that depends on the machine, and prints with it.
template <class Printed>
std::string textOf(const Printed& printed, int digits = 6)
{
    std::ostringstream out;
    out.precision(digits);
    out << printed;
    std::string text = out.str();
    while (text.find("-nan") != std::string::npos) {
        text.erase(text.find("-nan"), 1);
    }
    return text;
}

// 2^32 - 1 values.
Counter fullCounter()
{
    Counter full;
    Counter powerOfTwo = counterOf({1});
    for (int bit = 0; bit < 32; ++bit) {
        full.add(powerOfTwo);
        if (bit < 31) {
            powerOfTwo.add(Counter(powerOfTwo));
        }
    }
    return full;
}

TEST(Counter, LongFormCutsTheSumsToWholeNumbersForDeviations)
{
    const struct {
        std::vector<double> values;
        const char* text;
    } cases[] = {
        {{}, "no values\n"},
        {{2, 4, 6}, "12 / 3 = 4   min: 2  max: 6  sdev: 1.63299 est. 2\n"},
        {{3}, "3 / 1 = 3   min: 3  max: 3  sdev: 0 est. nan\n"},
        {{1.5}, "1.5 / 1 = 1.5   min: 1.5  max: 1.5  sdev: 0.707107 est. inf\n"},
        {{-2}, "-2 / 1 = -2   min: -2  max: -2  sdev: 2 est. inf\n"},
        {{3, -1}, "2 / 2 = 1   min: -1  max: 3  sdev: 2 est. 2.82843\n"},
        {{2.5, 3}, "5.5 / 2 = 2.75   min: 2.5  max: 3  sdev: 0.790569 est. 1.11803\n"},
        {{0.5, 0.5}, "1 / 2 = 0.5   min: 0.5  max: 0.5  sdev: nan est. nan\n"},
        {{1e20, 3e20},
         "4e+20 / 2 = 2e+20   min: 1e+20  max: 3e+20  sdev: 1e+20 est. 1.41421e+20\n"},
    };
    for (const auto& [values, text] : cases) {
        EXPECT_EQ(textOf(counterOf(values)), text);
    }
}

TEST(Counter, SmallValuesAreNotLostBesideALargeSum)
{
    // Neighbouring numbers of this size differ by two, so a plain sum would stay where it began.
    Counter added = counterOf({1e16});
    Counter merged = counterOf({1e16});
    Counter squares = counterOf({1e8});
    for (int times = 0; times < 10; ++times) {
        added.add(1);
        merged.add(counterOf({1}));
        squares.add(counterOf({1}));
    }
    EXPECT_EQ(textOf(added, 17).substr(0, 22), "10000000000000010 / 11");
    EXPECT_EQ(textOf(merged, 17).substr(0, 22), "10000000000000010 / 11");
    // The variance times 11 is the sum of squares, 10^16 + 10, less (10^8 + 10)^2 / 11.
    EXPECT_DOUBLE_EQ(squares.stddev(),
                     std::sqrt((1e16 + 10 - 100000010.0 * 100000010.0 / 11) / 11));
}

TEST(Counter, AFullCounterRefusesAndKeepsItsValues)
{
    const std::string refusal = "More than 4294967295 values are counted under one name.";
    Counter full = fullCounter();
    EXPECT_EQ(full.count(), 4294967295U);
    const std::string before = textOf(full);
    EXPECT_EQ(errorOf([&] { full.add(9); }), refusal);
    EXPECT_EQ(errorOf([&] { full.add(counterOf({9})); }), refusal);
    EXPECT_EQ(textOf(full), before);
    full.add(Counter());
    Counter one = counterOf({9});
    EXPECT_EQ(errorOf([&] { one.add(full); }), refusal);
    EXPECT_EQ(textOf(one), textOf(counterOf({9})));
}

}  // namespace

}  // namespace trikon
