// A handler may do little more than write: an event descriptor carries the news to the waiting
// thread.
#include "app/signals.h"

#include <atomic>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>

namespace trikon {

namespace {

std::atomic<int> caughtSignal{0};
std::atomic<int> wakeDescriptor{-1};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler uses it");

void signalEvent(int descriptor)
{
    const std::uint64_t one = 1;
    // Fails only when as many events are waiting as there can be, and then nothing is lost.
    [[maybe_unused]] const ssize_t written = write(descriptor, &one, sizeof one);
}

int openEvents()
{
    const int opened = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    // Not in the place of a standard stream that is closed: what is printed would end up here.
    const int descriptor = opened < 0 ? opened : fcntl(opened, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category());
    }
    close(opened);
    return descriptor;
}

extern "C" void noteSignal(int signal)
{
    int none = 0;
    if (!caughtSignal.compare_exchange_strong(none, signal)) {
        _exit(128 + signal);
    }
    const int savedError = errno;
    signalEvent(wakeDescriptor);
    errno = savedError;
}

}  // namespace

SignalWatch::SignalWatch() : descriptor(openEvents())
{
    caughtSignal = 0;
    wakeDescriptor = descriptor;
    struct sigaction action = {};
    action.sa_handler = noteSignal;
    // What a thread is writing goes on as if nothing had happened.
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGINT, SIGTERM}) {
        struct sigaction before = {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) {
            sigaction(signal, &action, nullptr);
            previous.emplace_back(signal, before);
        }
    }
}

SignalWatch::~SignalWatch()
{
    if (areKept) {
        pthread_sigmask(SIG_SETMASK, &maskBefore, nullptr);
    }
    for (const auto& [signal, before] : previous) {
        sigaction(signal, &before, nullptr);
    }
    wakeDescriptor = -1;
    close(descriptor);
}

void SignalWatch::keepFromThisThread()
{
    sigset_t watched;
    sigemptyset(&watched);
    sigaddset(&watched, SIGINT);
    sigaddset(&watched, SIGTERM);
    areKept = pthread_sigmask(SIG_BLOCK, &watched, &maskBefore) == 0;
}

void SignalWatch::wait(double seconds) const
{
    pollfd event{descriptor, POLLIN, 0};
    constexpr double longest = 1e6;  // seconds, far within an int of milliseconds
    const int milliseconds =
        seconds < 0 ? -1 : static_cast<int>(std::ceil(std::fmin(seconds, longest) * 1000));
    if (poll(&event, 1, milliseconds) > 0) {
        std::uint64_t events = 0;
        [[maybe_unused]] const ssize_t taken = read(descriptor, &events, sizeof events);
    }
}

void SignalWatch::wake() const { signalEvent(descriptor); }

int SignalWatch::caught() const { return caughtSignal; }

}  // namespace trikon
