// A thread that watches a run: it tells how the run gets on, and ends it when its time is over or a
// signal comes.
//
// To stop, it sets the top bit of the counter of deals: no number that a worker takes from then on
// is a deal, while every number taken before is dealt to its end, so what is printed has no gap.
// Deals that take longer than a second from then on, a long search or a script that never returns,
// are given up: the watch itself then finishes the run and ends the process.
#pragma once

#include "app/first_error.h"
#include "app/progress.h"
#include "app/signals.h"

#include <atomic>
#include <functional>
#include <optional>
#include <thread>

namespace trikon {

class RunWatch {
public:
    /// What ended a run early.
    enum Reason : int { NotStopped, TimeOver, Signal };

    /// Begins to watch. `finish` prints what there is and answers the status of the process; it is
    /// called when deals in hand are given up, while workers may still be running.
    ///
    /// Throws std::system_error when there is no thread to be had.
    RunWatch(std::optional<double> timeLimit, std::atomic<unsigned long>& dealNumber,
             Progress& progress, FirstError& error, std::function<int()> finish);
    ~RunWatch();
    RunWatch(const RunWatch&) = delete;
    RunWatch& operator=(const RunWatch&) = delete;

    /// Ends the watching, because the workers are done.
    ///
    /// Does not return when the watch is finishing the run by then.
    void end();

    // What follows is settled once `end` has returned, and in `finish`.

    Reason reason() const { return stopReason; }
    /// The signal that came, 0 for none.
    int signal() const { return signals.caught(); }
    /// The number up to which deals were given out; only for a run that was stopped.
    unsigned long endOfDeals() const { return firstNotDealt; }

private:
    void watch();
    void stop(Reason reason);
    // Deals may be printed when something is told, and that may fail.
    void printOrKeepError(const std::function<void()>& print);
    [[noreturn]] void giveUp();
    double secondsToNextEvent(double now) const;

    static constexpr double patience = 1;  // seconds for the deals in hand

    std::optional<double> timeOver;
    std::atomic<unsigned long>& dealNumber;
    Progress& progress;
    FirstError& error;
    std::function<int()> finish;
    SignalWatch signals;
    // Written by the watching thread only, and read by others once that has ended.
    Reason stopReason = NotStopped;
    unsigned long firstNotDealt = 0;
    double stopTime = 0;
    // Set by whoever finishes the run, the watch or its owner.
    std::atomic<bool> isFinishing{false};
    std::atomic<bool> isOver{false};
    std::thread thread;
};

}  // namespace trikon
