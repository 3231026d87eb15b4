// The lines at the end of a run.
#include "app/run_report.h"

#include "app/output.h"
#include "cards/translation.h"

#include <iomanip>
#include <iostream>
#include <libintl.h>
#include <string>

namespace trikon {

void printTotals(const NamedCounters& totals, const RunReport& report)
{
    std::cout << totals << gettext("Number of hands dealt:") << ' ' << report.dealt << ". "
              << gettext("CPU time usage [sec]:") << ' ' << std::fixed << std::setprecision(2)
              << report.processorTime / report.threads << " (x" << report.threads << ' '
              << ngettext("thread", "threads", static_cast<unsigned long>(report.threads)) << ")."
              << std::endl;
    std::cout << std::defaultfloat << std::setprecision(6);
    ensureOutputIsWritten();
}

void tellStopped(const Configuration& configuration, const RunReport& report)
{
    const std::string found = std::to_string(report.found);
    const std::string dealt = std::to_string(report.dealt);
    std::cerr << (configuration.findAll
                      ? translate("stopped: %1% deals found in %2%", {found, dealt})
                      : translate("stopped: %1% of %2% deals found in %3%",
                                  {found, std::to_string(configuration.handsCount), dealt}))
              << std::endl;
}

int tellCurrentError()
{
    try {
        throw;
    } catch (const OutputClosed&) {
        // Whoever closed it knows.
    } catch (const std::exception& error) {
        std::cerr << error.what() << std::endl;
    } catch (...) {
        std::cerr << gettext("unexpected error") << std::endl;
    }
    return 1;
}

}  // namespace trikon
