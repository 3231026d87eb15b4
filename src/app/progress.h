// What a run tells of itself on standard error while it goes on.
//
// On a terminal it is one line that is written over again and again, and wiped before anything else
// is printed. Elsewhere lines are written, and only when asked for. A filter that accepts nothing
// for some seconds is probably wrong, which is worth a hint in any case.
//
// The line is written and wiped with the print queue's output to itself, so it never mixes with
// deals that go to the same terminal.
#pragma once

#include "app/configuration.h"
#include "app/print_queue.h"

#include <atomic>
#include <optional>
#include <string>

namespace trikon {

class Progress {
public:
    /// Before any worker runs. All arguments must outlive it.
    Progress(const Configuration& configuration, const std::atomic<unsigned long>& dealNumber,
             PrintQueue& printQueue);
    ~Progress() { wipe(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // The following are for the watching thread. Times are those of getRealTime.

    /// When there will be something to tell; infinity for never.
    double nextReport() const;
    /// Tells what is due at `now`. Throws what printing deals throws.
    void report(double now);
    /// Ends all reports.
    void end();

    /// Takes the line off the terminal; for when nothing else prints.
    void wipe();

private:
    bool isShown() const { return isTerminal || configuration.verbose; }
    std::string text(double elapsed) const;
    std::optional<double> secondsLeft(double elapsed, double dealt) const;
    void show(const std::string& line);

    const Configuration& configuration;
    const std::atomic<unsigned long>& dealNumber;
    PrintQueue& printQueue;
    bool isTerminal;
    double start;
    double nextLine;
    double nextHint;
    // Guarded by the output of the print queue.
    bool isOnScreen = false;
};

}  // namespace trikon
