// Whether what was printed has reached standard output.
#pragma once

#include <stdexcept>

namespace trikon {

/// Nobody reads standard output any more (`tamrel ... | head`): the run ends without a message.
class OutputClosed : public std::runtime_error {
public:
    OutputClosed() : std::runtime_error("standard output is closed") {}
};

/// Makes the process fail, at its end, if what it printed last could not be written.
///
/// For what is printed where nothing checks: the usage and the version.
void checkOutputAtExit();

/// Throws when something printed so far could not be written: OutputClosed for a closed pipe, else
/// std::runtime_error with the system's reason, for example a full disk.
void ensureOutputIsWritten();

}  // namespace trikon
