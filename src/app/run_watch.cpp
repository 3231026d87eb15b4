// Waiting for the next event, stopping, giving up.
#include "app/run_watch.h"

#include "app/configuration.h"
#include "app/process_time.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>
#include <utility>

namespace trikon {

RunWatch::RunWatch(std::optional<double> timeLimit, std::atomic<unsigned long>& dealNumber,
                   std::function<int()> finish)
    : timeOver(timeLimit), dealNumber(dealNumber), finish(std::move(finish))
{
    if (timeOver) {
        *timeOver += getRealTime();
    }
    thread = std::thread(&RunWatch::watch, this);
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
        }
    }
}

void RunWatch::stop(Reason reason)
{
    stopReason = reason;
    stopTime = getRealTime();
    firstNotDealt = dealNumber.fetch_or(Configuration::noDeal);
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
    return timeOver ? std::max(0.0, *timeOver - now) : never;
}

}  // namespace trikon
