// Numbers taken one by one or several at once, and what the queue learns of them.
#include "app/deal_numbers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <thread>
#include <vector>

namespace trikon {

namespace {

// Whether the filter of these tests accepts a deal: one in `every`, at no regular distance.
bool isAccepted(unsigned long number, unsigned long every)
{
    return (number * 0x9e3779b97f4a7c15U >> 40) % every == 0;
}

// Hands that tell a number by their cards.
Hands handsFor(unsigned long number)
{
    Hands hands;
    hands[North] = CardsConfiguration(number << 16 & fullDeck) | CardsConfiguration(1);
    return hands;
}

// Deals as a worker does.
void work(PrintQueue& queue, unsigned long every)
{
    DealNumbers numbers(queue.dealNumber(), queue);
    numbers.shareWithOthers();
    const auto dealOnce = [&] {
        const unsigned long number = numbers.next();
        if (!isAccepted(number, every)) {
            return numbers.drop(number);
        }
        numbers.report();
        NamedCounters counters;
        std::string remarks;
        counters["number"].add(static_cast<double>(number));
        return queue.accept(number) &&
               queue.setDetails(number, handsFor(number), counters, remarks);
    };
    while (dealOnce() || numbers.isTakenNeeded()) {
    }
}

}  // namespace

TEST(DealNumbers, AreTakenOneByOneByWhoIsAlone)
{
    PrintQueue queue;
    DealNumbers numbers(queue.dealNumber(), queue);
    for (unsigned long number = 0; number < 1000; ++number) {
        EXPECT_EQ(numbers.next(), number);
        EXPECT_EQ(queue.dealNumber(), number + 1);
        EXPECT_TRUE(numbers.drop(number));
    }
    EXPECT_EQ(queue.close(1000), 0u);
}

TEST(DealNumbers, AreHeldInASmallNumberAndAllReportedInTheEnd)
{
    PrintQueue queue;
    DealNumbers numbers(queue.dealNumber(), queue);
    numbers.shareWithOthers();
    unsigned long mostHeld = 0;
    for (unsigned long number = 0; number < 20000; ++number) {
        EXPECT_EQ(numbers.next(), number);
        const unsigned long held = queue.dealNumber() - number - 1;
        EXPECT_LE(held, number / 64);
        mostHeld = std::max(mostHeld, held);
        EXPECT_TRUE(numbers.drop(number));
    }
    EXPECT_GT(mostHeld, 0u);
    numbers.report();
    EXPECT_EQ(queue.close(20000), 0u);
}

TEST(DealNumbers, PrintTheSameDealsHoweverManyTakeThem)
{
    for (const unsigned long every : {1UL, 2UL, 7UL, 50UL}) {
        for (const std::uint32_t needed : {1U, 400U, 4000U}) {
            std::vector<std::uint64_t> printed;
            PrintQueue queue;
            queue.configure(
                needed,
                [&](const Hands& hands) {
                    printed.push_back(hands[North]);
                    return NothingWritten;
                },
                false, false);
            std::vector<std::thread> threads;
            threads.reserve(4);
            for (int count = 0; count < 4; ++count) {
                threads.emplace_back([&] { work(queue, every); });
            }
            for (std::thread& thread : threads) {
                thread.join();
            }
            // No last call to print: whoever finds the output taken is served by who holds it.
            std::vector<std::uint64_t> expected;
            NamedCounters totals;
            for (unsigned long number = 0; expected.size() < needed; ++number) {
                if (isAccepted(number, every)) {
                    expected.push_back(handsFor(number)[North]);
                    totals["number"].add(static_cast<double>(number));
                }
            }
            ASSERT_EQ(printed, expected) << needed << " of one in " << every;
            ASSERT_EQ(str_contat(queue.totalStatistics()), str_contat(totals));
        }
    }
}

}  // namespace trikon
