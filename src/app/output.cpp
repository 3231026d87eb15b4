// The stream says that writing failed, the system why.
#include "app/output.h"

#include "cards/translation.h"

#include <cerrno>
#include <cstring>
#include <iostream>

namespace trikon {

void ensureOutputIsWritten()
{
    if (std::cout) {
        return;
    }
    if (errno == EPIPE) {
        throw OutputClosed();
    }
    // The write that failed was the last call that could set errno: the stream does nothing after
    // it.
    throw std::runtime_error(
        errno == 0 ? translate("Can't write to standard output.")
                   : translate("Can't write to standard output: %1%.", {std::strerror(errno)}));
}

}  // namespace trikon
