// The numbers of a worker's deals: taken from the counter that all share, and reported as rejected.
//
// The counter and the bookkeeping of the print queue lie on one cache line, which takes longer to
// come from another processor than a quick deal takes. So while its deals are quick, a worker
// takes a burst of numbers at once and reports together those it rejects. What it holds is little:
// no more than a 64th of what it has dealt, and only as long as all of that takes microseconds, for
// other workers' deals with higher numbers must wait for it.
#pragma once

#include "app/print_queue.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <utility>

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
    bool isTakenNeeded() const { return place < length && queue.nr_is_needed(first + place); }

private:
    using Clock = std::chrono::steady_clock;

    static constexpr unsigned long longest = PrintQueue::burstSize;
    static constexpr unsigned long dealtForEach = 64;
    static constexpr std::chrono::microseconds quick{100};

    void adaptLength();

    std::atomic<unsigned long>& counter;
    PrintQueue& queue;
    unsigned long most = 1;
    unsigned long dealt = 0;
    // The burst: `length` numbers from `first` on, of which those from `place` on are to be dealt.
    unsigned long first = 0;
    unsigned long length = 1;
    unsigned long place = 1;
    Clock::time_point start;
    std::uint64_t rejected = 0;  // bit k: deal `first` + k was, which is still to be reported
};

// --- inline definitions ---

inline unsigned long DealNumbers::next()
{
    if (place == length) {
        if (most > 1) {
            adaptLength();
        }
        first = counter.fetch_add(length, std::memory_order_relaxed);
        place = 0;
        dealt += length;
    }
    return first + place++;
}

inline bool DealNumbers::drop(unsigned long n)
{
    rejected |= std::uint64_t{1} << (n - first);
    return (place < length && !queue.isOver()) || report();
}

inline bool DealNumbers::report()
{
    return rejected == 0 || queue.drop(first, std::exchange(rejected, 0));
}

// Twice as many after quick deals, half as many after others.
inline void DealNumbers::adaptLength()
{
    const Clock::time_point now = Clock::now();
    const unsigned long wanted = now - start < quick ? 2 * length : length / 2;
    length = std::max<unsigned long>(std::min({wanted, most, dealt / dealtForEach}), 1);
    start = now;
}

}  // namespace trikon
