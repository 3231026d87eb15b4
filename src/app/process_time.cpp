// The best clock that works is asked, down to the poorest.
#include "app/process_time.h"

#include <ctime>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/times.h>
#include <unistd.h>

namespace trikon {

double getCPUTime()
{
    timespec now{};
    if (clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now) == 0) {
        return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
    }
    rusage usage{};
    if (getrusage(RUSAGE_SELF, &usage) == 0) {
        return static_cast<double>(usage.ru_utime.tv_sec) +
               static_cast<double>(usage.ru_utime.tv_usec) / 1e6;
    }
    tms ticks{};
    if (times(&ticks) != static_cast<clock_t>(-1)) {
        return static_cast<double>(ticks.tms_utime) / static_cast<double>(sysconf(_SC_CLK_TCK));
    }
    const clock_t clocks = clock();
    return clocks == static_cast<clock_t>(-1) ? -1.0 : static_cast<double>(clocks) / 1e6;
}

double getRealTime()
{
    timespec now{};
    if (clock_gettime(CLOCK_MONOTONIC_RAW, &now) == 0) {
        return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
    }
    timeval today{};
    gettimeofday(&today, nullptr);
    return static_cast<double>(today.tv_sec) + static_cast<double>(today.tv_usec) / 1e6;
}

}  // namespace trikon
