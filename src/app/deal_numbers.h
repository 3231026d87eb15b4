// The numbers of a worker's deals: taken from the counter that all share, and reported as rejected.
//
// The counter and the bookkeeping of the print queue lie on one cache line, which takes longer to
// come from another processor than a quick deal takes. So while its deals are quick, a worker
// takes several numbers at once and reports them together, each still by itself. What it holds is
// little: no more than a 64th of what it has dealt, and only as long as all of that takes
// microseconds, for other workers' deals with higher numbers must wait for it.
#pragma once

#include "app/print_queue.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>

namespace trikon {

class DealNumbers {
public:
    /// `counter` gives out the numbers, `queue` is told of those rejected.
    DealNumbers(std::atomic<unsigned long>& counter, PrintQueue& queue)
        : counter(counter), queue(queue)
    {
    }

    /// Lets other workers take numbers as well; without this call they are taken one by one.
    void shareWithOthers() { most = longest; }

    /// The number of the next deal.
    unsigned long next();
    /// Reports deal `n` as rejected, perhaps later; false when no further deal is needed.
    bool drop(unsigned long n);
    /// Reports what is still to be reported, as before an accepted deal; false as with `drop`,
    /// though the accepted one may yet be needed.
    bool report();
    /// Whether a number that is taken already is still needed, though no further one is.
    bool isTakenNeeded() const { return place < length && queue.nr_is_needed(taken[place]); }

private:
    using Clock = std::chrono::steady_clock;

    static constexpr std::size_t longest = 32;
    static constexpr std::size_t dealtForEach = 64;
    static constexpr std::chrono::microseconds quick{20};

    void adaptLength();

    std::atomic<unsigned long>& counter;
    PrintQueue& queue;
    std::size_t most = 1;
    std::size_t dealt = 0;
    // The numbers taken last, of which those from `place` on are still to be dealt.
    std::array<unsigned long, longest> taken{};
    std::size_t length = 1;
    std::size_t place = 1;
    Clock::time_point start;
    // Those rejected and not reported.
    std::array<unsigned long, longest> rejected{};
    std::size_t unreported = 0;
};

// --- inline definitions ---

inline unsigned long DealNumbers::next()
{
    if (place == length) {
        if (most > 1) {
            adaptLength();
        }
        for (std::size_t number = 0; number < length; ++number) {
            taken[number] = counter.fetch_add(1, std::memory_order_relaxed);
        }
        place = 0;
        dealt += length;
    }
    return taken[place++];
}

inline bool DealNumbers::drop(unsigned long n)
{
    rejected[unreported++] = n;
    return (place < length && !queue.isOver()) || report();
}

inline bool DealNumbers::report()
{
    bool isNeeded = true;
    for (std::size_t number = 0; number < unreported; ++number) {
        isNeeded = queue.drop(rejected[number]) && isNeeded;
    }
    unreported = 0;
    return isNeeded;
}

// Twice as many after quick deals, half as many after others.
inline void DealNumbers::adaptLength()
{
    const Clock::time_point now = Clock::now();
    const std::size_t wanted = now - start < quick ? 2 * length : length / 2;
    length = std::max<std::size_t>(std::min({wanted, most, dealt / dealtForEach}), 1);
    start = now;
}

}  // namespace trikon
