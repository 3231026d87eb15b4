// The result of a run as a file that programs read, and the merging of such files.
//
// The file is JSON. It holds all that a counter holds, the rounding terms of its sums included, so
// the parts of a job merge into what one run would have counted.
#pragma once

#include "app/configuration.h"
#include "app/counters.h"
#include "app/run_report.h"

#include <string>
#include <vector>

namespace trikon {

/// Makes the file, or empties it, so that what is wrong with it shows before a long run.
///
/// Throws std::runtime_error when it cannot be written.
void prepareSummary(const std::string& fileName);
/// Writes the file. Throws std::runtime_error when it cannot be written.
void writeSummary(const std::string& fileName, const Configuration& configuration,
                  const RunReport& report, const NamedCounters& totals);

/// Prints the totals and the summary line of all files together on standard output.
///
/// Throws std::runtime_error for a file that cannot be read, and when the files are not of one job
/// or hold the same deals twice.
void mergeSummaries(const std::vector<std::string>& fileNames);

}  // namespace trikon
