// Processor and wall-clock time of the whole process.
#pragma once

namespace trikon {

/// Seconds of processor time that the process has used; -1 if the system cannot tell.
double getCPUTime();

/// Seconds on a clock that only runs forward; only differences mean something.
double getRealTime();

}  // namespace trikon
