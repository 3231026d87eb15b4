// When to tell, what to tell, and the line on the terminal.
#include "app/progress.h"

#include "app/process_time.h"
#include "cards/translation.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>
#include <unistd.h>

namespace trikon {

namespace {

// Seconds from the start of the run, and between two reports.
constexpr double firstLine = 1;
constexpr double hintAfter = 5;
constexpr double pauseOnTerminal = 0.5;
constexpr double manyLines = 10;
constexpr double never = std::numeric_limits<double>::infinity();

// 3725 seconds are "1:02:05".
std::string clockText(double seconds)
{
    const long whole = std::lround(std::min(seconds, 1e9));
    const auto twoDigits = [](long number) { return str_contat(number < 10 ? "0" : "", number); };
    const std::string minutes = whole < 3600
                                    ? std::to_string(whole / 60)
                                    : str_contat(whole / 3600, ':', twoDigits(whole / 60 % 60));
    return str_contat(minutes, ':', twoDigits(whole % 60));
}

}  // namespace

Progress::Progress(const Configuration& configuration, const std::atomic<unsigned long>& dealNumber,
                   PrintQueue& printQueue)
    : configuration(configuration),
      dealNumber(dealNumber),
      printQueue(printQueue),
      isTerminal(isatty(STDERR_FILENO) == 1),
      start(getRealTime()),
      nextLine(isShown() ? start + firstLine : never),
      nextHint(configuration.hasScript() ? start + hintAfter : never)
{
    if (isTerminal) {
        printQueue.beforePrinting([this] { wipe(); });
    }
    if (configuration.verbose && configuration.seed) {
        std::cerr << translate("seed: %1%", {std::to_string(*configuration.seed)}) << std::endl;
    }
}

double Progress::nextReport() const { return std::min(nextLine, nextHint); }

void Progress::report(double now)
{
    const double elapsed = now - start;
    std::string hint;
    if (now >= nextHint) {
        nextHint = never;
        const unsigned long dealt = dealNumber - configuration.firstDeal;
        if (printQueue.accepted() == 0) {
            hint = translate("filter accepted 0 of %1% deals; does it return a value?",
                             {std::to_string(dealt)});
        }
    }
    std::string line;
    if (now >= nextLine) {
        nextLine = now + (isTerminal            ? pauseOnTerminal
                          : elapsed < manyLines ? firstLine
                                                : manyLines);
        line = text(elapsed);
    }
    printQueue.whileNotPrinting([&] {
        if (!hint.empty()) {
            wipe();
            std::cerr << hint << std::endl;
        }
        if (!line.empty()) {
            show(line);
        }
    });
}

void Progress::end()
{
    nextLine = never;
    nextHint = never;
    printQueue.whileNotPrinting([this] { wipe(); });
}

void Progress::wipe()
{
    if (isOnScreen) {
        std::cerr << "\r\033[K" << std::flush;
        isOnScreen = false;
    }
}

void Progress::show(const std::string& line)
{
    if (isTerminal) {
        std::cerr << '\r' << line << "\033[K" << std::flush;
        isOnScreen = true;
    } else {
        std::cerr << line << std::endl;
    }
}

std::string Progress::text(double elapsed) const
{
    const unsigned long dealt = dealNumber - configuration.firstDeal;
    const std::string rate = std::to_string(std::lround(static_cast<double>(dealt) / elapsed));
    const std::string accepted = std::to_string(printQueue.accepted());
    std::string line = configuration.findAll
                           ? translate("%1% dealt, %2% accepted, %3% a second",
                                       {std::to_string(dealt), accepted, rate})
                           : translate("%1% dealt, %2% of %3% accepted, %4% a second",
                                       {std::to_string(dealt), accepted,
                                        std::to_string(configuration.handsCount), rate});
    if (const auto left = secondsLeft(elapsed, static_cast<double>(dealt))) {
        line += translate(", %1% left", {clockText(*left)});
    }
    return line;
}

std::optional<double> Progress::secondsLeft(double elapsed, double dealt) const
{
    double left = never;
    const double accepted = printQueue.accepted();
    if (!configuration.findAll && accepted > 0) {
        left = elapsed / accepted * (configuration.handsCount - accepted);
    }
    if (configuration.endOfDeals != Configuration::noDeal && dealt > 0) {
        const auto most = static_cast<double>(configuration.endOfDeals - configuration.firstDeal);
        left = std::min(left, elapsed / dealt * (most - dealt));
    }
    if (configuration.timeLimit) {
        left = std::min(left, *configuration.timeLimit - elapsed);
    }
    return left == never ? std::nullopt : std::optional(std::max(0.0, left));
}

}  // namespace trikon
