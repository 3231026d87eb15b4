// The road of a deal through one worker.
#include "app/worker.h"

#include "cards/translation.h"
#include "lua/card_set.h"
#include "lua/hand_filter.h"
#include "lua/lua_error.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <new>
#include <stdexcept>
#include <string_view>

namespace trikon {

namespace {

// What scripts draw while they are loaded comes from here.
constexpr unsigned long numberOfNoDeal = std::numeric_limits<unsigned long>::max();

// Lua calls this for an error outside of a protected call, which is only left for want of memory,
// and would then abort.
int endWithPanic(lua_State* state)
{
    std::cerr << errorText(state) << std::endl;
    std::_Exit(1);
}

}  // namespace

Worker::Worker(const Configuration& configuration, RandomSource::Configuration& fixedCards,
               std::atomic<unsigned long>& dealNumber, PrintQueue& printQueue, unsigned long seed)
    : configuration(configuration),
      fixedCards(fixedCards),
      randomSource(fixedCards, seed),
      dealEngine(configuration.seed.value_or(0), numberOfNoDeal),
      printQueue(printQueue),
      numbers(dealNumber, printQueue),
      state(luaL_newstate())
{
    if (state == nullptr) {
        throw std::bad_alloc();
    }
    lua_atpanic(luaState(), endWithPanic);
    configure();
}

void Worker::configure()
{
    if (configuration.hasScript()) {
        luaL_openlibs(luaState());
        luaopen_CardSet(luaState());
        luaopen_Worker();
        if (configuration.seed) {
            replaceRandom();
        }
        for (const std::string& fileName : configuration.scriptFileNames) {
            runScript(fileName);
        }
        if (configuration.filter) {
            register_function_of_text(luaState(), "filter", *configuration.filter, "--filter");
        }
        if (configuration.stats) {
            register_function_of_text(luaState(), "stats", *configuration.stats, "--stats");
        }
    }
    createHands();
}

int Worker::loadScript(const std::string& fileName)
{
    const CollectorPause pause(luaState());
    const auto readOnce = configuration.textsReadOnce.find(fileName);
    if (readOnce == configuration.textsReadOnce.end()) {
        return luaL_loadfile(luaState(), fileName.c_str());
    }
    std::string_view text = readOnce->second;
    if (text.starts_with('#')) {
        // As in a file, a first line that names an interpreter is none of the script's.
        text.remove_prefix(std::min(text.find('\n'), text.size()));
    }
    const bool isStandardInput = fileName == Configuration::standardInput;
    const std::string chunkName = isStandardInput ? "=stdin" : '@' + fileName;
    return luaL_loadbuffer(luaState(), text.data(), text.size(), chunkName.c_str());
}

void Worker::runScript(const std::string& fileName)
{
    if (loadScript(fileName) != LUA_OK || lua_pcall(luaState(), 0, 0, 0) != LUA_OK) {
        throw std::runtime_error(translate("Error while executing script from file \"%1%\":\n%2%",
                                           {fileName, errorText(luaState())}));
    }
}

void Worker::createHands()
{
    static constexpr const char* names[playersCount] = {"N", "E", "S", "W"};
    lua_State* const lua = luaState();
    const CollectorPause pause(lua);
    lua_pushstring(lua, "filter");
    filterName = luaL_ref(lua, LUA_REGISTRYINDEX);
    lua_pushstring(lua, "stats");
    statsName = luaL_ref(lua, LUA_REGISTRYINDEX);
    lua_pushglobaltable(lua);
    for (int player = North; player <= West; ++player) {
        hands[player] = pushCardSet(lua, CardsConfiguration());
        // A script may give the global another value; the registry keeps the hand alive.
        lua_pushvalue(lua, -1);
        luaL_ref(lua, LUA_REGISTRYINDEX);
        lua_pushstring(lua, names[player]);
        lua_insert(lua, -2);
        lua_rawset(lua, -3);
    }
    lua_settop(lua, 0);
}

void Worker::operator()()
{
    if (configuration.threadsCount > 1) {
        numbers.shareWithOthers();
    }
    try {
        // Deals that were accepted behind the numbers still held here wait for them.
        while (dealOnce() || numbers.isTakenNeeded()) {
        }
    } catch (...) {
        clearSolvers();
        printQueue.terminateWork();
        throw;
    }
    clearSolvers();
}

bool Worker::dealOnce()
{
    const unsigned long number = numbers.next();
    if (number >= configuration.endOfDeals) {
        numbers.report();
        return false;
    }
    dealHands(number);
    if (!filter()) {
        return numbers.drop(number);
    }
    numbers.report();
    if (!printQueue.accept(number)) {
        return false;
    }
    stats();
    return printQueue.setDetails(number, currentDeal(), counters, remarks);
}

void Worker::dealHands(unsigned long number)
{
    // A filter may have counted and remarked on a deal that was then dropped.
    counters.clear();
    remarks.clear();
    clearSolvers();
    if (configuration.seed) {
        dealEngine = SeededEngine(*configuration.seed, number);
        fixedCards.deal(*hands[North], *hands[East], *hands[South], *hands[West], dealEngine);
    } else {
        randomSource.deal(*hands[North], *hands[East], *hands[South], *hands[West]);
    }
}

double Worker::drawChance()
{
    return configuration.seed ? unitDraw(dealEngine) : unitDraw(randomSource.engine());
}

Hands Worker::currentDeal() const
{
    if (hands[North] == nullptr) {
        throw std::runtime_error(translate("no deal yet"));
    }
    return {*hands[North], *hands[East], *hands[South], *hands[West]};
}

bool Worker::filter()
{
    lua_State* const lua = luaState();
    lua_settop(lua, 0);
    if (!pushScriptFunction(filterName)) {
        return true;
    }
    if (lua_pcall(lua, 0, 1, 0) != LUA_OK) {
        throw_lua_exception();
    }
    if (lua_isboolean(lua, -1)) {
        return lua_toboolean(lua, -1) != 0;
    }
    int isNumber = 0;
    const double probability = lua_tonumberx(lua, -1, &isNumber);
    return isNumber != 0 && probability > drawChance();
}

void Worker::stats() const
{
    lua_State* const lua = luaState();
    lua_settop(lua, 0);
    if (pushScriptFunction(statsName) && lua_pcall(lua, 0, 0, 0) != LUA_OK) {
        throw_lua_exception();
    }
}

bool Worker::pushScriptFunction(int name) const
{
    // No call protects the reading, so it does nothing that may raise an error: no metamethod is
    // asked, and nothing is allocated, which might run finalisers of the script.
    lua_State* const lua = luaState();
    lua_pushglobaltable(lua);
    lua_rawgeti(lua, LUA_REGISTRYINDEX, name);
    lua_rawget(lua, -2);
    return lua_isfunction(lua, -1);
}

void Worker::throw_lua_exception() const
{
    printQueue.terminateWork();
    velka::throw_exception_from_lua<std::runtime_error>(luaState());
}

}  // namespace trikon
