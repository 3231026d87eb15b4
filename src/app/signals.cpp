// A handler may do little more than write: an event descriptor wakes the thread that waits.
#include "app/signals.h"

#include <atomic>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>

namespace trikon {

namespace {

// The signal that was caught first, and when, in one word so that both are known at once.
struct Caught {
    std::int32_t signal = 0;
    std::uint32_t milliseconds = 0;
};

// A request to stop may arrive as two signals: to the process and to its group.
constexpr std::int32_t sameRequest = 100;  // milliseconds

std::atomic<Caught> firstCaught{Caught{}};
std::atomic<int> wakeDescriptor{-1};
static_assert(std::atomic<Caught>::is_always_lock_free && std::atomic<int>::is_always_lock_free,
              "a signal handler uses them");

// The difference of two such times, taken as signed, is right also where they passed the largest
// number, or were noted in the other order by two threads.
std::uint32_t monotonicMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint32_t>(now.tv_sec * 1000 + now.tv_nsec / 1000000);
}

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
    const int savedError = errno;
    const Caught now{signal, monotonicMilliseconds()};
    Caught first;
    if (firstCaught.compare_exchange_strong(first, now)) {
        signalEvent(wakeDescriptor);
    } else if (static_cast<std::int32_t>(now.milliseconds - first.milliseconds) > sameRequest) {
        _exit(128 + signal);
    }
    errno = savedError;
}

}  // namespace

SignalWatch::SignalWatch() : descriptor(openEvents())
{
    firstCaught = Caught{};
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

int SignalWatch::caught() const { return firstCaught.load().signal; }

}  // namespace trikon
