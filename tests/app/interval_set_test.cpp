// Numbers merged into intervals, against a plain set of numbers.
#include "app/interval_set.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <random>
#include <set>
#include <string>

namespace trikon {

namespace {

using Numbers = IntervalSet<unsigned long>;

std::string textOf(const Numbers& numbers)
{
    std::string text;
    for (const auto& [start, end] : numbers.all()) {
        text += '[' + std::to_string(start) + ' ' + std::to_string(end) + ']';
    }
    return text;
}

Numbers numbersOf(std::initializer_list<unsigned long> list)
{
    Numbers numbers;
    for (const unsigned long number : list) {
        numbers.insert(number, number);
    }
    return numbers;
}

TEST(IntervalSet, OnlyAnIntervalThatStartsAtTheNumberIsPassed)
{
    Numbers numbers = numbersOf({5, 6, 7, 10});
    EXPECT_EQ(numbers.passFirst(4), 4U);
    EXPECT_EQ(numbers.passFirst(6), 6U);
    EXPECT_EQ(numbers.passFirst(10), 10U);
    EXPECT_EQ(textOf(numbers), "[5 7][10 10]");
    EXPECT_EQ(numbers.passFirst(5), 8U);
    EXPECT_EQ(textOf(numbers), "[10 10]");
    EXPECT_EQ(numbers.passFirst(10), 11U);
    EXPECT_EQ(numbers.passFirst(11), 11U);
}

TEST(IntervalSet, IntervalsThatStartAfterANumberAreErased)
{
    for (const auto& [last, left] : {std::pair<unsigned long, const char*>{4, ""},
                                     {5, "[5 7]"},
                                     {6, "[5 7]"},
                                     {9, "[5 7]"},
                                     {10, "[5 7][10 10]"}}) {
        Numbers numbers = numbersOf({5, 6, 7, 10});
        numbers.eraseStartingAfter(last);
        EXPECT_EQ(textOf(numbers), left) << last;
    }
}

TEST(IntervalSet, ShuffledRunsGiveTheRunsOfTheirSet)
{
    std::mt19937 engine(1);
    std::set<unsigned long> model;
    Numbers numbers;
    for (int step = 0; step < 400; ++step) {
        const unsigned long first = engine() % 2000;
        const unsigned long last = first + (engine() % 4 == 0 ? engine() % 30 : 0);
        for (unsigned long number = first; number <= last; ++number) {
            model.insert(number);
        }
        numbers.insert(first, last);
        std::string runs;
        for (const unsigned long start : model) {
            if (model.contains(start - 1)) {
                continue;
            }
            unsigned long end = start;
            while (model.contains(end + 1)) {
                ++end;
            }
            runs += '[' + std::to_string(start) + ' ' + std::to_string(end) + ']';
        }
        ASSERT_EQ(textOf(numbers), runs) << "after inserting " << first << " to " << last;
    }
}

}  // namespace

}  // namespace trikon
