// One thread's pipeline: deal, ask the script's filter, let its stats look, hand the deal on.
//
// A worker owns its Lua state, its random engines and the statistics and remarks of the deal in
// hand. It shares the counter of deal numbers and the print queue with the other workers, and
// nothing else.
#pragma once

#include "app/configuration.h"
#include "app/counters.h"
#include "app/deal_numbers.h"
#include "app/print_queue.h"
#include "cards/hands.h"
#include "dealer/random_source.h"
#include "dealer/seeded_engine.h"
#include "lua/script_solver.h"

#include <lua.hpp>

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace trikon {

class Worker {
public:
    /// Loads the scripts of the configuration into a Lua state of its own.
    ///
    /// Throws std::runtime_error with Lua's message when a script cannot be loaded or run.
    /// `dealNumber` gives out the numbers of the deals; `seed` starts the random engine, which a
    /// configuration with a seed of its own leaves unused. All references must outlive the worker.
    Worker(const Configuration& configuration, RandomSource::Configuration& fixedCards,
           std::atomic<unsigned long>& dealNumber, PrintQueue& printQueue, unsigned long seed);
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// Deals until the print queue needs no more deals.
    ///
    /// Throws what the script or the output throws, after having the print queue stop all workers.
    void operator()();

    lua_State* luaState() const { return state.get(); }

    /// Where chances are drawn from in a repeatable run: scripts' `math.random` and `filter`'s
    /// probability. Begins anew with each deal.
    SeededEngine& engineOfDeal() { return dealEngine; }
    /// Adds `value` to the current deal's counter of that name.
    void count(const std::string& name, double value);
    /// Adds the text arguments of a script's call to the current deal's remarks, on a new line.
    ///
    /// The arguments are Lua strings at 1 to the top; `separate` puts a blank between them.
    void add_remark(lua_State* callingState, bool separate);

    // The double-dummy questions of scripts; `commands` is null where a script gave none. The deal
    // in hand must be there: std::runtime_error while the scripts are being loaded.

    std::optional<int> tricks(PlayerNumber declarer, Trump trump, const char* commands);
    std::optional<bool> canTake(std::int64_t n, PlayerNumber declarer, Trump trump,
                                const char* commands);
    /// The player named at `index` by a letter or by the hand itself; raises a Lua argument error.
    PlayerNumber luaCheckPlayerNr(lua_State* callingState, int index) const;

private:
    struct CloseState {
        void operator()(lua_State* opened) const { lua_close(opened); }
    };

    void configure();
    int loadScript(const std::string& fileName);
    void runScript(const std::string& fileName);
    void createHands();
    // Registers the script functions that need the worker.
    void luaopen_Worker();
    // Makes `math.random` draw from the engine of the deal.
    void replaceRandom();
    void luaAddFunctionUsingWorker(lua_CFunction function, const char* name);
    void luaAddCardSetMethodUsingWorker(lua_CFunction function, const char* name);

    // Deals once and reports the deal; false when no more deals are needed.
    bool dealOnce();
    void dealHands(unsigned long number);
    double drawChance();
    Hands currentDeal() const;
    void clearSolvers() { solver.clear(); }
    bool filter();
    void stats() const;
    bool pushScriptFunction(int name) const;
    [[noreturn]] void throw_lua_exception() const;

    const Configuration& configuration;
    const RandomSource::Configuration& fixedCards;
    RandomSource randomSource;
    SeededEngine dealEngine;
    PrintQueue& printQueue;
    DealNumbers numbers;
    // The hands that the script sees as N, E, S, W: objects of Lua, which its registry keeps alive.
    CardsConfiguration* hands[playersCount] = {};
    ScriptSolver solver;
    NamedCounters counters;
    std::string remarks;
    // Last, so that it is closed first: finalisers of a script may still call the functions above.
    std::unique_ptr<lua_State, CloseState> state;
    // Where the registry keeps the names "filter" and "stats".
    int filterName = LUA_NOREF;
    int statsName = LUA_NOREF;
};

}  // namespace trikon
