// SIGINT and SIGTERM as something that a thread can wait for.
//
// The first signal is noted and wakes whoever waits; a second one ends the process at once, unless
// it comes so soon after that both are one request. A signal that the program was started to
// ignore, as in the background of a shell script, stays ignored.
#pragma once

#include <csignal>
#include <utility>
#include <vector>

namespace trikon {

/// Catches the signals while it lives. Only one may live at a time.
class SignalWatch {
public:
    /// Throws std::system_error when the system grants no descriptor.
    SignalWatch();
    ~SignalWatch();
    SignalWatch(const SignalWatch&) = delete;
    SignalWatch& operator=(const SignalWatch&) = delete;

    /// Waits until a signal comes, `wake` is called or so many seconds have passed.
    ///
    /// What came before the call ends it too. Less than 0 seconds stands for no bound.
    void wait(double seconds) const;
    /// Ends the present wait, or the next one, of another thread.
    void wake() const;
    /// Leaves the signals to threads that run already; this one, and those it starts, get none.
    ///
    /// Called by the thread that made the object and will destroy it, which gets them again then.
    void keepFromThisThread();
    /// The number of the signal that came, 0 if none did.
    int caught() const;

private:
    int descriptor;
    std::vector<std::pair<int, struct sigaction>> previous;
    sigset_t maskBefore{};
    bool areKept = false;
};

}  // namespace trikon
