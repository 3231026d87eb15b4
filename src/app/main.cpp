// Start-up, run, exit status.
#include "app/configuration.h"
#include "app/output.h"
#include "app/run.h"
#include "app/run_report.h"
#include "app/summary.h"

#include <clocale>
#include <csignal>
#include <libintl.h>
#include <string>

namespace trikon {

namespace {

// Messages come from the catalogues in i18n/ beside the program.
void useTranslations(const char* programPath)
{
    const std::string path = programPath == nullptr ? "" : programPath;
    const std::string directory = path.substr(0, path.find_last_of("\\/:") + 1);
    std::setlocale(LC_ALL, "");
    // Scripts and output write numbers the same everywhere.
    std::setlocale(LC_NUMERIC, "C");
    bindtextdomain("tamrel", (directory + "i18n").c_str());
    textdomain("tamrel");
}

}  // namespace

}  // namespace trikon

int main(int argc, char** argv)
{
    trikon::useTranslations(argc > 0 ? argv[0] : nullptr);
    // A closed pipe is seen as an error of the stream, so that the run ends in an orderly way.
    std::signal(SIGPIPE, SIG_IGN);
    trikon::checkOutputAtExit();
    try {
        trikon::Configuration configuration;
        if (!configuration.process_cmdl(argc, argv)) {
            return 1;
        }
        if (configuration.merge) {
            trikon::mergeSummaries(configuration.scriptFileNames);
            return 0;
        }
        return trikon::run(configuration);
    } catch (...) {
        return trikon::tellCurrentError();
    }
}
