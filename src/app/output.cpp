// The stream says that writing failed, the system why.
#include "app/output.h"

#include "cards/translation.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>

namespace trikon {

namespace {

// Whether somebody was told, or need not be.
bool failureIsKnown = false;

void failIfOutputIsLost()
{
    if (failureIsKnown) {
        return;
    }
    try {
        std::cout.flush();
        ensureOutputIsWritten();
    } catch (const OutputClosed&) {
        std::_Exit(1);
    } catch (const std::exception& error) {
        std::cerr << error.what() << std::endl;
        std::_Exit(1);
    }
}

}  // namespace

void checkOutputAtExit() { std::atexit(failIfOutputIsLost); }

void ensureOutputIsWritten()
{
    if (std::cout) {
        return;
    }
    failureIsKnown = true;
    if (errno == EPIPE) {
        throw OutputClosed();
    }
    // The write that failed was the last call that could set errno: the stream made no other.
    throw std::runtime_error(
        errno == 0 ? translate("Can't write to standard output.")
                   : translate("Can't write to standard output: %1%.", {std::strerror(errno)}));
}

}  // namespace trikon
