// A whole run: the workers and what they share, from the scripts to the last line printed.
#pragma once

#include "app/configuration.h"

namespace trikon {

/// Makes the deals that the configuration asks for and prints them, the totals and the summary.
///
/// The script's `conf` is read into the configuration first. Answers the status with which the
/// program shall end; throws what goes wrong.
int run(Configuration& configuration);

}  // namespace trikon
