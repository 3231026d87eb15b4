// The queue that all workers share: it prints accepted deals in the order of their numbers.
//
// Workers take deal numbers in order but finish the deals out of order. A deal is printed once
// every number before it is printed or rejected, so what is printed are the first accepted numbers,
// however the threads ran. As soon as enough deals are certain, the answers end the workers.
//
// Two mutexes. The content mutex guards the bookkeeping and is held for some nanoseconds; the
// output mutex belongs to the one thread that prints, which holds no content mutex while it writes.
// Who holds the content mutex only tries the output mutex, so the two cannot lock each other out:
// he who finds it taken leaves his deal to the printing thread, which looks again before it leaves.
#pragma once

#include "app/counters.h"
#include "app/deal_formats.h"
#include "app/interval_set.h"
#include "cards/hands.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <pthread.h>
#include <string>
#include <utility>

namespace trikon {

class PrintQueue {
public:
    /// The most numbers that one call reports.
    static constexpr int burstSize = 64;

    using PrintFunction = std::function<LineState(const Hands&)>;

    /// An accepted deal. It is ready to be printed once its hands hold cards.
    struct Item {
        Hands hands;
        NamedCounters statistics;
        std::string remarks;
    };

    /// Says how many deals to print, and how; before any worker runs.
    void configure(std::uint32_t deals, PrintFunction function, bool statisticsShown,
                   bool remarksShown);

    /// Makes `n` the number of the first deal; before any worker runs, 0 without this call.
    void startAt(unsigned long n);

    /// The number of the next deal, for the workers to take theirs from.
    ///
    /// It is kept here because a worker takes a number right after it has reported the one before:
    /// both then cost one transfer of the cache line that they share.
    std::atomic<unsigned long>& dealNumber() { return nextToDeal; }

    /// Whether deal `n` can still be among those printed.
    bool nr_is_needed(unsigned long n) const;
    /// Has `function` called each time before deals are printed, by the thread that prints.
    ///
    /// To be set before any worker runs.
    void beforePrinting(std::function<void()> function) { prePrint = std::move(function); }
    /// Calls `function` with the output to itself, or not at all when deals are being printed.
    ///
    /// Throws what printing throws: deals that have become ready meanwhile are printed.
    void whileNotPrinting(const std::function<void()>& function);

    /// Whether no deal is needed any more. Asks for no lock, and may answer a moment late.
    bool isOver() const { return over.load(std::memory_order_relaxed); }
    /// The number of deals accepted so far, printed or not.
    std::uint32_t accepted() const;
    /// The number of deals printed.
    std::uint32_t found() const;
    /// The number behind the last deal printed, or the first number of all.
    unsigned long endOfPrinted() const;
    /// The statistics of all deals printed, shown or not; for when no worker runs any more.
    const NamedCounters& totalStatistics() const { return totals; }

    // A worker reports each of its numbers once, by `drop`, or by `accept` and then `setDetails`.
    // The answers say whether it shall go on. `drop` and `setDetails` print what has become
    // printable, and throw what printing throws; all workers are then told to stop.

    /// Deal `n` passed the filter.
    bool accept(unsigned long n);
    /// Deal `n` was rejected.
    bool drop(unsigned long n) { return drop(n, 1); }
    /// Each deal `n` + k was rejected for which bit k of `rejected` is set.
    ///
    /// Leaves the same as a call for each, but takes the lock once. The answer is the last one's.
    bool drop(unsigned long n, std::uint64_t rejected);
    /// Delivers what is to be printed for deal `n`; statistics and remarks are taken, left empty.
    ///
    /// Takes nothing when the deal is needed no more.
    bool setDetails(unsigned long n, const Hands& hands, NamedCounters& statistics,
                    std::string& remarks);

    /// Forgets all deals not yet being printed and tells every worker to stop.
    void terminateWork();
    /// Prints what is printable; for when no worker runs any more.
    void printAll();
    /// Prints every deal that is ready, in order, though deals before it may be unfinished.
    ///
    /// Then forgets the others and tells every worker to stop, as `terminateWork` does. Answers how
    /// many of the numbers before `end` were not reported to their end. Waits for a thread that
    /// prints; workers may be running.
    unsigned long close(unsigned long end);

private:
    static constexpr int cacheLine = 64;
    // A POSIX mutex that the standard lock guards can hold.
    class Mutex {
    public:
        explicit Mutex(int kind);
        ~Mutex() { pthread_mutex_destroy(&mutex); }
        Mutex(const Mutex&) = delete;
        Mutex& operator=(const Mutex&) = delete;

        void lock() { pthread_mutex_lock(&mutex); }
        void unlock() { pthread_mutex_unlock(&mutex); }
        bool try_lock() { return pthread_mutex_trylock(&mutex) == 0; }

    private:
        pthread_mutex_t mutex;
    };
    using Lock = std::unique_lock<Mutex>;
    using Items = std::map<unsigned long, Item>;

    // These expect the content mutex; the first is handed it.
    bool tryPrintAndUnlockContent(Lock content);
    bool moreNeeded() const { return needed > items.size(); }
    // Those from `first` to before `end`.
    void recordDropped(unsigned long first, unsigned long end);
    // Passes the rejected numbers in front and answers whether the next deal is ready.
    bool advanceToPrintable();
    Items takeBatch();
    void forgetAll();
    // These expect the output mutex.
    void print(const Items& batch);
    void print(const Item& item);

    // The content mutex guards what follows up to the output mutex, but for `nextToDeal`. With one
    // thread, rejected deals and the numbers taken change the first line alone.
    alignas(cacheLine) mutable Mutex contentMutex{PTHREAD_MUTEX_ADAPTIVE_NP};
    unsigned long nextNumber = 0;  // the number to be printed or skipped next
    std::uint32_t needed = 10;     // deals still to be printed, 0 to stop
    std::atomic<unsigned long> nextToDeal{0};
    alignas(cacheLine) Items items;      // accepted, not printed, at most `needed`
    IntervalSet<unsigned long> dropped;  // rejected numbers that are not passed yet
    unsigned long behindLast = 0;        // the number behind the last deal printed
    std::uint32_t printed = 0;           // deals printed or being printed

    // Read by all workers and written once.
    alignas(cacheLine) std::atomic<bool> over{false};

    // The output mutex guards the totals and standard output.
    Mutex outputMutex{PTHREAD_MUTEX_DEFAULT};
    NamedCounters totals;

    // Written before any worker runs, only read afterwards.
    PrintFunction printFunction;
    std::function<void()> prePrint;
    bool showStatistics = true;
    bool showRemarks = true;
};

}  // namespace trikon
