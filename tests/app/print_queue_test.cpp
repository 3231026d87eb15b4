// The order of printing, what tells workers to stop, the placement of remarks, failing output.
#include "app/print_queue.h"

#include "support/captured_output.h"
#include "support/literals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <gmock/gmock.h>
#include <random>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

namespace trikon {

namespace {

using testing::ElementsAre;

// A deal that carries its number, and the format that prints it; hands are never all empty.
Hands dealOf(unsigned long n) { return {n + 1, 0, 0, 0}; }

LineState printNumber(const Hands& hands)
{
    std::cout << std::uint64_t{hands[North]} - 1;
    return LineOpen;
}

class PrintQueueStory : public testing::Test {
protected:
    void start(std::uint32_t needed) { queue.configure(needed, printNumber, true, true); }

    // Plays a story such as "n7+ a7+ r8- d7-": is 7 needed, accept 7, reject 8, deliver 7; + and -
    // are the answers expected.
    void play(const std::string& story)
    {
        std::istringstream steps(story);
        std::string answers;
        for (std::string step; steps >> step;) {
            step.back() = ask(step.front(), std::stoul(step.substr(1))) ? '+' : '-';
            answers += (answers.empty() ? "" : " ") + step;
        }
        EXPECT_EQ(answers, story);
    }

    bool ask(char question, unsigned long n)
    {
        switch (question) {
        case 'n': return queue.nr_is_needed(n);
        case 'a': return queue.accept(n);
        case 'r': return queue.drop(n);
        default: return queue.setDetails(n, dealOf(n), statistics, remarks);
        }
    }

    CapturedOutput output;
    PrintQueue queue;
    NamedCounters statistics;
    std::string remarks;
};

TEST_F(PrintQueueStory, ASingleWorkerIsStoppedByItsLastNeededDeal)
{
    start(3);
    play("n9+ a0+ d0+ r1+ a2+ d2+");
    EXPECT_EQ(output.text(), "0\n2\n");
    play("n9+ a3+ n3+ n4- d3-");
    EXPECT_EQ(output.text(), "0\n2\n3\n");
    play("a4- r4- n0- n4-");
}

TEST_F(PrintQueueStory, TenDealsAreNeededUnlessConfiguredAndNoneStopsAtOnce)
{
    play("a0+ a1+ a2+ a3+ a4+ a5+ a6+ a7+ a8+ a9+ a10-");
    start(0);
    play("r0- a0- n0-");
}

TEST_F(PrintQueueStory, NothingBehindAPendingDealIsPrinted)
{
    start(100);
    play("r2+ r1+ r0+ r4+ r3+ a5+ a8+ d8+ a7+ d7+ a6+ d6+ r9+ a11+ d11+");
    EXPECT_EQ(output.text(), "");
    play("d5+");
    EXPECT_EQ(output.text(), "5\n6\n7\n8\n");
    play("r10+");
    EXPECT_EQ(output.text(), "5\n6\n7\n8\n11\n");
}

TEST_F(PrintQueueStory, ClosingPrintsWhatIsReadyBehindUnfinishedDeals)
{
    start(100);
    play("a0+ d0+ a2+ d2+ a3+ r4+ a6+ d6+ r70+ r71+ r73+");
    // Not reported: 1, 5, 7 to 69, 72 and, though accepted, 3.
    EXPECT_EQ(queue.close(74), 1 + 1 + 63 + 1 + 1);
    EXPECT_EQ(output.text(), "0\n2\n6\n");
    EXPECT_EQ(queue.found(), 3U);
    EXPECT_EQ(queue.endOfPrinted(), 7U);
    play("d3- a1- r5- n1-");
}

TEST_F(PrintQueueStory, TheFirstNumberMayBeAnyOne)
{
    queue.startAt(1000);
    start(2);
    EXPECT_EQ(queue.endOfPrinted(), 1000U);
    play("a1001+ d1001+ r1000+ r1002+ a1004+ r1003- d1004-");
    EXPECT_EQ(output.text(), "1001\n1004\n");
    EXPECT_EQ(queue.endOfPrinted(), 1005U);
    EXPECT_EQ(queue.close(1005), 0U);
}

TEST_F(PrintQueueStory, RejectedNumbersArePassedInWhateverOrderTheyCome)
{
    constexpr unsigned long end = 64UL * 200;
    std::mt19937_64 engine(7);
    std::vector<std::pair<unsigned long, std::uint64_t>> reports;
    std::vector<unsigned long> accepted;
    start(end);
    for (unsigned long first = 0; first < end; first += 64) {
        // Long runs and single numbers far from each other, now and then all of a burst; most
        // reported together.
        const std::uint64_t half = engine();
        const std::uint64_t dense = half | engine();
        const std::uint64_t sparse = half & engine() & engine() & engine();
        const std::uint64_t rejected = first % 640 == 0   ? ~std::uint64_t{0}
                                       : first % 128 == 0 ? dense
                                                          : sparse;
        const std::uint64_t together = engine() | engine();
        reports.emplace_back(first, rejected & together);
        for (unsigned long place = 0; place < 64; ++place) {
            const unsigned long n = first + place;
            if ((rejected >> place & 1) == 0) {
                accepted.push_back(n);
                play(str_contat('a', n, "+ d", n, '+'));
            } else if ((together >> place & 1) == 0) {
                reports.emplace_back(n, 1);
            }
        }
    }
    std::shuffle(reports.begin(), reports.end(), engine);
    for (const auto& [first, rejected] : reports) {
        EXPECT_TRUE(queue.drop(first, rejected));
    }
    std::string expected;
    for (const unsigned long n : accepted) {
        expected += str_contat(n, '\n');
    }
    EXPECT_EQ(output.text(), expected);
    EXPECT_EQ(queue.close(end), 0U);
}

TEST_F(PrintQueueStory, NumbersBehindTheLastNeededDealStopTheirWorkers)
{
    start(2);
    play("a10+ n1000+ a20+ n20+ n21- a30- r21-");
    // A rejection in front of the last deal is kept, but its worker has nothing more to find.
    play("r19- r90- a5+ n10+ n11- r11- d20- d10-");
    play("r0- r1- r2- r3- r4- r6- r7- r8- r9-");
    EXPECT_EQ(output.text(), "");
    play("d5-");
    EXPECT_EQ(output.text(), "5\n10\n");
}

TEST_F(PrintQueueStory, AfterTerminationNothingIsTakenOrPrinted)
{
    start(5);
    play("a0+ a1+ d1+");
    queue.terminateWork();
    statistics["a"].add(1);
    remarks = "kept";
    play("d0- a2- r2- n0-");
    EXPECT_FALSE(statistics.empty());
    EXPECT_EQ(remarks, "kept");
    queue.printAll();
    EXPECT_EQ(output.text(), "");
}

// What a queue prints for one deal with statistics and remarks, or without either.
std::string printedDeal(LineState state, bool held, bool statisticsShown, bool remarksShown)
{
    const CapturedOutput output;
    PrintQueue queue;
    const auto format = [state](const Hands&) {
        std::cout << (state == LineOpen ? "deal" : state == BlockEnded ? "deal\n" : "");
        return state;
    };
    queue.configure(1, format, statisticsShown, remarksShown);
    NamedCounters statistics;
    std::string remarks;
    if (held) {
        statistics["a"].add(2);
        statistics["b"].add(5);
        remarks = "note";
    }
    queue.accept(0);
    queue.setDetails(0, dealOf(0), statistics, remarks);
    EXPECT_TRUE(statistics.empty() && remarks.empty()) << "the queue takes both";
    EXPECT_EQ(queue.totalStatistics().empty(), !held) << "totals hold what is not shown, too";
    return output.text();
}

TEST(PrintQueue, StatisticsAndRemarksFollowTheFormat)
{
    // Without either, with both hidden, only statistics, only remarks, both.
    const auto forms = [](LineState state) {
        return std::vector<std::string>{
            printedDeal(state, false, true, true), printedDeal(state, true, false, false),
            printedDeal(state, true, true, false), printedDeal(state, true, false, true),
            printedDeal(state, true, true, true)};
    };
    EXPECT_THAT(forms(NothingWritten),
                ElementsAre("", "", "a=2, b=5\n", "note\n", "a=2, b=5   note\n"));
    EXPECT_THAT(forms(LineOpen), ElementsAre("deal\n", "deal\n", "deal   a=2, b=5\n",
                                             "deal   note\n", "deal   a=2, b=5   note\n"));
    EXPECT_THAT(forms(BlockEnded), ElementsAre("deal\n\n", "deal\n\n", "deal\na=2, b=5\n\n",
                                               "deal\nnote\n\n", "deal\na=2, b=5\nnote\n\n"));
}

TEST_F(PrintQueueStory, FailingToPrintStopsAllWorkersAndLeavesTheQueueUsable)
{
    const auto breakOutput = [](int error) {
        return [error](const Hands&) {
            std::cout.setstate(std::ios::badbit);
            errno = error != 0 ? error : errno;
            return LineOpen;
        };
    };
    const PrintQueue::PrintFunction throwing = [](const Hands&) -> LineState {
        throw std::runtime_error("no format");
    };
    const std::pair<PrintQueue::PrintFunction, const char*> cases[] = {
        {breakOutput(0), "Can't write to standard output."},
        {breakOutput(ENOSPC), "Can't write to standard output: No space left on device."},
        {throwing, "no format"},
    };
    unsigned long n = 0;
    for (const auto& [format, message] : cases) {
        queue.configure(9, format, true, true);
        play(str_contat('a', n, "+ a", n + 1, "+ a", n + 2, "+ d", n + 1, '+'));
        errno = EACCES;  // of some earlier call, no reason to be told
        EXPECT_EQ(errorOf([&] { ask('d', n); }), message);
        play(str_contat('d', n + 2, "- r", n + 2, "- a", n + 3, '-'));
        const CapturedOutput whole;
        n += 2;
        start(1);
        play(str_contat('a', n, "+ d", n, '-'));
        EXPECT_EQ(whole.text(), str_contat(n, '\n'));
        ++n;
    }
}

TEST_F(PrintQueueStory, TheThreadThatPrintsServesThoseWhoComeMeanwhile)
{
    const auto printWhileOthersReport = [this](const Hands& hands) {
        if (hands == dealOf(0)) {
            std::thread([this] { play("r2+ d1+ a3+ d3+ n1000+"); }).join();
            EXPECT_EQ(output.text(), "");
        }
        return printNumber(hands);
    };
    queue.configure(9, printWhileOthersReport, true, true);
    play("a0+ a1+ d0+");
    EXPECT_EQ(output.text(), "0\n1\n3\n");
}

}  // namespace

}  // namespace trikon
