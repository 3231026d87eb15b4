// Waiting for the next event, stopping, giving up.
#include "app/run_watch.h"

#include "app/configuration.h"
#include "app/process_time.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <unistd.h>
#include <utility>

namespace trikon {

RunWatch::RunWatch(std::optional<double> timeLimit, std::atomic<unsigned long>& dealNumber,
                   Progress& progress, FirstError& error, std::function<int()> finish)
    : timeOver(timeLimit),
      dealNumber(dealNumber),
      progress(progress),
      error(error),
      finish(std::move(finish))
{
    if (timeOver) {
        *timeOver += getRealTime();
    }
    thread = std::thread(&RunWatch::watch, this);
    // The workers, which may be deep in a script, are not interrupted.
    signals.keepFromThisThread();
}

RunWatch::~RunWatch()
{
    isOver = true;
    signals.wake();
    if (thread.joinable()) {
        thread.join();
    }
}

void RunWatch::end()
{
    while (isFinishing.exchange(true)) {
        pause();  // the watch ends the process
    }
    isOver = true;
    signals.wake();
    thread.join();
}

void RunWatch::watch()
{
    while (!isOver) {
        signals.wait(secondsToNextEvent(getRealTime()));
        const double now = getRealTime();
        if (stopReason != NotStopped) {
            if (now >= stopTime + patience && !isOver && !isFinishing.exchange(true)) {
                giveUp();
            }
        } else if (signals.caught() != 0) {
            stop(Signal);
        } else if (timeOver && now >= *timeOver) {
            stop(TimeOver);
        } else if (now >= progress.nextReport()) {
            printOrKeepError([&] { progress.report(now); });
        }
    }
}

void RunWatch::stop(Reason reason)
{
    stopReason = reason;
    stopTime = getRealTime();
    firstNotDealt = dealNumber.fetch_or(Configuration::noDeal);
    printOrKeepError([this] { progress.end(); });
}

void RunWatch::printOrKeepError(const std::function<void()>& print)
{
    try {
        print();
    } catch (...) {
        error.keep(std::current_exception());
    }
}

void RunWatch::giveUp()
{
    const int status = finish();
    std::fflush(stdout);
    // Workers are still running, so nothing they use may be destroyed.
    std::_Exit(status);
}

double RunWatch::secondsToNextEvent(double now) const
{
    constexpr double never = -1;
    if (stopReason != NotStopped) {
        return isFinishing ? never : std::max(0.0, stopTime + patience - now);
    }
    const double next = std::fmin(progress.nextReport(), timeOver.value_or(progress.nextReport()));
    return std::isinf(next) ? never : std::max(0.0, next - now);
}

}  // namespace trikon
