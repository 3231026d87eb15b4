// The calling thread runs a worker itself; the others are asynchronous tasks. All of them stop when
// the print queue needs no more deals or the numbers of the deals have come to their end, and any
// error, wherever it arises, makes the queue need no more.
//
// A run that is stopped is finished here as well, by the watching thread if workers do not return.
#include "app/run.h"

#include "app/first_error.h"
#include "app/print_queue.h"
#include "app/process_time.h"
#include "app/progress.h"
#include "app/run_report.h"
#include "app/run_watch.h"
#include "app/summary.h"
#include "app/worker.h"
#include "cards/translation.h"
#include "dealer/random_source.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <list>
#include <optional>
#include <random>
#include <stdexcept>
#include <system_error>

namespace trikon {

namespace {

// A seed that no other worker of this run has and no other run is likely to have.
unsigned long workerSeed(int index)
{
    std::random_device device("default");
    const auto now = std::chrono::duration_cast<std::chrono::nanoseconds>(
        std::chrono::system_clock::now().time_since_epoch());
    return device() + static_cast<unsigned long>(now.count()) + static_cast<unsigned long>(index);
}

void runWorker(Worker& worker, FirstError& error)
{
    try {
        worker();
    } catch (...) {
        error.keep(std::current_exception());
    }
}

// Ends the other workers' search when this scope is left by an exception.
struct StopWorkers {
    PrintQueue& printQueue;
    bool isArmed = true;
    ~StopWorkers()
    {
        if (isArmed) {
            printQueue.terminateWork();
        }
    }
};

class Run {
public:
    explicit Run(Configuration& configuration) : configuration(configuration) {}

    int operator()();

private:
    void loadScripts();
    void prepare();
    void work();
    int giveUp();
    // Prints the rest and answers the status of the process.
    int finish();
    RunReport report();
    RunWatch::Reason stopReason() const;

    Configuration& configuration;
    RandomSource::Configuration fixedCards{Hands()};
    PrintQueue printQueue;
    // The worker of the calling thread.
    std::optional<Worker> mainWorker;
    double start = 0;
    FirstError error;
    std::optional<Progress> progress;
    std::optional<RunWatch> watch;
};

int Run::operator()()
{
    prepare();
    start = getCPUTime();
    progress.emplace(configuration, printQueue.dealNumber(), printQueue);
    try {
        watch.emplace(configuration.timeLimit, printQueue.dealNumber(), *progress, error,
                      [this] { return giveUp(); });
    } catch (const std::system_error&) {
        // Without a thread for it the run goes on unwatched, unless it would never end.
        if (configuration.timeLimit) {
            throw;
        }
    }
    work();
    if (watch) {
        watch->end();
    }
    return finish();
}

int Run::giveUp()
{
    try {
        return finish();
    } catch (...) {
        return tellCurrentError();
    }
}

int Run::finish()
{
    error.rethrow();
    const RunReport found = report();
    progress->wipe();
    printTotals(printQueue.totalStatistics(), found);
    if (configuration.summaryFileName) {
        writeSummary(*configuration.summaryFileName, configuration, found,
                     printQueue.totalStatistics());
    }
    const auto reason = stopReason();
    if (found.found == configuration.handsCount) {
        return 0;
    }
    // With all deals asked for, a bound is how the run is meant to end.
    if (!configuration.findAll || reason == RunWatch::Signal) {
        tellStopped(configuration, found);
    }
    return reason == RunWatch::Signal ? 128 + watch->signal() : 0;
}

void Run::loadScripts()
{
    mainWorker.emplace(configuration, fixedCards, printQueue.dealNumber(), printQueue,
                       workerSeed(configuration.threadsCount));
}

void Run::prepare()
{
    loadScripts();
    const std::optional<std::uint64_t> seedOfOptions = configuration.seed;
    configuration.load_from_lua_conf(mainWorker->luaState());
    if (configuration.firstDeal != 0 && !configuration.seed) {
        throw std::runtime_error(translate("--first needs a seed (--seed or conf.seed)."));
    }
    if (configuration.seed != seedOfOptions) {
        loadScripts();  // what scripts draw while they are loaded depends on the seed
    }
    if (configuration.summaryFileName) {
        prepareSummary(*configuration.summaryFileName);
    }
    printQueue.configure(configuration.handsCount, configuration.printFunction,
                         configuration.showStatistics, configuration.showRemarks);
    printQueue.startAt(configuration.firstDeal);
    fixedCards.setInitial(configuration.fixedHands);
}

void Run::work()
{
    std::list<Worker> workers;
    std::list<std::future<void>> futures;
    StopWorkers stopWorkers{printQueue};
    for (int index = 0; index < configuration.threadsCount - 1; ++index) {
        Worker& worker = workers.emplace_back(configuration, fixedCards, printQueue.dealNumber(),
                                              printQueue, workerSeed(index));
        futures.push_back(std::async(runWorker, std::ref(worker), std::ref(error)));
    }
    runWorker(*mainWorker, error);
    for (std::future<void>& future : futures) {
        future.get();
    }
    stopWorkers.isArmed = false;
    error.rethrow();
}

RunWatch::Reason Run::stopReason() const { return watch ? watch->reason() : RunWatch::NotStopped; }

RunReport Run::report()
{
    const unsigned long taken =
        stopReason() == RunWatch::NotStopped ? printQueue.dealNumber().load() : watch->endOfDeals();
    unsigned long end = std::min(taken, configuration.endOfDeals);
    const unsigned long givenUp = printQueue.close(end);
    const std::uint32_t found = printQueue.found();
    // A run that can be repeated leaves out what the threads dealt in vain.
    if (configuration.seed && found == configuration.handsCount) {
        end = printQueue.endOfPrinted();
    }
    return {end - configuration.firstDeal, found, getCPUTime() - start, configuration.threadsCount,
            givenUp};
}

}  // namespace

int run(Configuration& configuration) { return Run(configuration)(); }

}  // namespace trikon
