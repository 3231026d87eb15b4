// Start-up, run, summary, exit status.
//
// The calling thread runs a worker itself; the others are asynchronous tasks. All of them stop when
// the print queue needs no more deals, and any error, wherever it arises, makes it need no more.
#include "app/configuration.h"
#include "app/output.h"
#include "app/print_queue.h"
#include "app/process_time.h"
#include "app/worker.h"
#include "cards/translation.h"
#include "dealer/random_source.h"

#include <atomic>
#include <chrono>
#include <clocale>
#include <csignal>
#include <cstdint>
#include <exception>
#include <future>
#include <iomanip>
#include <iostream>
#include <libintl.h>
#include <list>
#include <mutex>
#include <optional>
#include <random>
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

// A seed that no other worker of this run has and no other run is likely to have.
unsigned long workerSeed(int index)
{
    std::random_device device("default");
    const auto now = std::chrono::duration_cast<std::chrono::nanoseconds>(
        std::chrono::system_clock::now().time_since_epoch());
    return device() + static_cast<unsigned long>(now.count()) + static_cast<unsigned long>(index);
}

// The error that came first, whichever thread it came from; later ones follow from it.
class FirstError {
public:
    void keep(std::exception_ptr error)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (first == nullptr) {
            first = std::move(error);
        }
    }
    void rethrow() const
    {
        if (first != nullptr) {
            std::rethrow_exception(first);
        }
    }

private:
    std::mutex mutex;
    std::exception_ptr first;
};

void runWorker(Worker& worker, FirstError& error)
{
    try {
        worker();
    } catch (...) {
        error.keep(std::current_exception());
    }
}

// The number of the next deal, on a cache line of its own: all workers write it.
struct alignas(64) DealNumber {
    std::atomic<unsigned long> next{0};
};

// Ends the other workers' search when this scope is left before it is over.
struct StopWorkers {
    PrintQueue& printQueue;
    ~StopWorkers() { printQueue.terminateWork(); }
};

void printSummary(unsigned long dealt, double processorTime, int threads)
{
    std::cout << gettext("Number of hands dealt:") << ' ' << dealt << ". "
              << gettext("CPU time usage [sec]:") << ' ' << std::fixed << std::setprecision(2)
              << processorTime / threads << " (x" << threads << ' '
              << ngettext("thread", "threads", static_cast<unsigned long>(threads)) << ")."
              << std::endl;
    std::cout << std::defaultfloat << std::setprecision(6);
    ensureOutputIsWritten();
}

// Makes the deals that the configuration asks for and prints them, the totals and the summary.
void run(Configuration& configuration)
{
    RandomSource::Configuration fixedCards{Hands()};
    DealNumber dealNumber;
    PrintQueue printQueue;
    const int mainIndex = configuration.threadsCount;
    std::optional<Worker> mainWorker;
    const auto loadScripts = [&] {
        mainWorker.emplace(configuration, fixedCards, dealNumber.next, printQueue,
                           workerSeed(mainIndex));
    };
    loadScripts();
    const std::optional<std::uint64_t> seedOfOptions = configuration.seed;
    configuration.load_from_lua_conf(mainWorker->luaState());
    if (configuration.seed != seedOfOptions) {
        loadScripts();  // what scripts draw while they are loaded depends on the seed
    }
    printQueue.configure(configuration.handsCount, configuration.printFunction,
                         configuration.showStatistics, configuration.showRemarks);
    fixedCards.setInitial(configuration.fixedHands);

    const double start = getCPUTime();
    FirstError error;
    std::list<Worker> workers;
    std::list<std::future<void>> futures;
    const StopWorkers stopWorkers{printQueue};
    for (int index = 0; index < configuration.threadsCount - 1; ++index) {
        Worker& worker = workers.emplace_back(configuration, fixedCards, dealNumber.next,
                                              printQueue, workerSeed(index));
        futures.push_back(std::async(runWorker, std::ref(worker), std::ref(error)));
    }
    runWorker(*mainWorker, error);
    for (std::future<void>& future : futures) {
        future.get();
    }
    error.rethrow();
    printQueue.printAll();
    std::cout << printQueue.totalStatistics();
    // A run that can be repeated leaves out what the threads dealt in vain.
    const unsigned long dealt =
        configuration.seed ? printQueue.endOfNumbers() : dealNumber.next.load();
    printSummary(dealt, getCPUTime() - start, configuration.threadsCount);
}

}  // namespace

}  // namespace trikon

int main(int argc, char** argv)
{
    trikon::useTranslations(argc > 0 ? argv[0] : nullptr);
    // A closed pipe is seen as an error of the stream, so that the run ends in an orderly way.
    std::signal(SIGPIPE, SIG_IGN);
    try {
        trikon::Configuration configuration;
        if (!configuration.process_cmdl(argc, argv)) {
            return 1;
        }
        trikon::run(configuration);
        return 0;
    } catch (const trikon::OutputClosed&) {
        // Whoever closed it knows.
    } catch (const std::exception& error) {
        std::cerr << error.what() << std::endl;
    } catch (...) {
        std::cerr << gettext("unexpected error") << std::endl;
    }
    return 1;
}
