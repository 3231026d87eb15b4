// What a run says of itself at its end.
#pragma once

#include "app/configuration.h"
#include "app/counters.h"

namespace trikon {

/// What became of a run.
struct RunReport {
    unsigned long dealt = 0;
    /// Deals printed, of those asked for.
    std::uint32_t found = 0;
    /// Seconds that all threads took together.
    double processorTime = 0;
    int threads = 1;
    /// Deals that were given up when the run was stopped.
    unsigned long givenUp = 0;
};

/// Prints the totals and the summary line on standard output.
///
/// Throws when they cannot be written.
void printTotals(const NamedCounters& totals, const RunReport& report);

/// Tells the exception being handled on standard error and answers the status to end with.
int tellCurrentError();

/// Says on standard error that a run ended before it had found what was asked for.
void tellStopped(const Configuration& configuration, const RunReport& report);

}  // namespace trikon
