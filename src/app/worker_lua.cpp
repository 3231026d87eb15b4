// The script functions that need the worker: statistics and remarks of the current deal, and what
// the solver says of it.
//
// A Lua error jumps over C++ destructors, so each function reads its arguments first and then works
// in a block that turns exceptions into errors once its objects are gone.
#include "app/worker.h"
#include "lua/card_set.h"
#include "lua/lua_error.h"

#include <algorithm>
#include <iterator>

namespace trikon {

namespace {

Worker& workerOf(lua_State* state)
{
    return *static_cast<Worker*>(lua_touserdata(state, lua_upvalueindex(1)));
}

// Replaces every argument by its text, as Lua's tostring gives it.
void turnArgumentsIntoText(lua_State* state)
{
    const int last = lua_gettop(state);
    for (int argument = 1; argument <= last; ++argument) {
        pushTextOf(state, argument);
        lua_replace(state, argument);
    }
}

// A boolean counts as 1 or 0.
double numberOf(lua_State* state, int argument)
{
    return lua_isboolean(state, argument) ? lua_toboolean(state, argument)
                                          : lua_tonumber(state, argument);
}

// count(name, value, ...); nil values are left out
int count(lua_State* state)
{
    luaL_checkany(state, 1);
    const int last = lua_gettop(state);
    for (int argument = 2; argument <= last; ++argument) {
        if (!lua_isnil(state, argument) && !lua_isboolean(state, argument)) {
            luaL_checknumber(state, argument);
        }
    }
    const std::string_view name = pushTextOf(state, 1);
    raiseWhatThrows(state, [state, name, last] {
        const std::string counterName(name);
        for (int argument = 2; argument <= last; ++argument) {
            if (!lua_isnil(state, argument)) {
                workerOf(state).count(counterName, numberOf(state, argument));
            }
        }
    });
    return 0;
}

int addRemark(lua_State* state, bool separate)
{
    turnArgumentsIntoText(state);
    raiseWhatThrows(state, [state, separate] { workerOf(state).add_remark(state, separate); });
    return 0;
}

// remark(value, ...)
int remark(lua_State* state) { return addRemark(state, false); }

// note(value, ...): as remark, with blanks between the values
int note(lua_State* state) { return addRemark(state, true); }

// The declarer, trump and commands of a call that begin at an argument; null commands for none.
struct Contract {
    PlayerNumber declarer;
    Trump trump;
    const char* commands;
};

// The text of the commands stays on the stack.
Contract getSolverLua(lua_State* state, int first)
{
    const PlayerNumber declarer = workerOf(state).luaCheckPlayerNr(state, first);
    const Trump trump = luaCheckTrump(state, first + 1, true);
    if (lua_gettop(state) <= first + 1) {
        return {declarer, trump, nullptr};
    }
    const std::string_view commands = pushTextOf(state, first + 2);
    luaL_argcheck(state, commands.find('\0') == std::string_view::npos, first + 2,
                  "zero byte in the commands");
    return {declarer, trump, commands.data()};
}

// tricks(player, trump [, commands]) -> number, or nil when a card cannot be played
int tricks(lua_State* state)
{
    const Contract contract = getSolverLua(state, 1);
    int found = -1;
    raiseWhatThrows(state, [&] {
        found = workerOf(state)
                    .tricks(contract.declarer, contract.trump, contract.commands)
                    .value_or(found);
    });
    if (found < 0) {
        lua_pushnil(state);
    } else {
        lua_pushinteger(state, found);
    }
    return 1;
}

// cantake(n, player, trump [, commands]) -> boolean, or nil when a card cannot be played
int cantake(lua_State* state)
{
    // No deal has tricks beyond these numbers, and an infinite one has no integer.
    const double asked = luaL_checknumber(state, 1);
    const int n = !(asked > -1) ? -1 : static_cast<int>(std::min(asked, 14.0));
    const Contract contract = getSolverLua(state, 2);
    enum { Unknown, No, Yes } answer = Unknown;
    raiseWhatThrows(state, [&] {
        const std::optional<bool> can =
            workerOf(state).canTake(n, contract.declarer, contract.trump, contract.commands);
        answer = !can ? Unknown : *can ? Yes : No;
    });
    if (answer == Unknown) {
        lua_pushnil(state);
    } else {
        lua_pushboolean(state, answer == Yes ? 1 : 0);
    }
    return 1;
}

}  // namespace

void Worker::count(const std::string& name, double value) { counters[name].add(value); }

void Worker::add_remark(lua_State* callingState, bool separate)
{
    const int last = lua_gettop(callingState);
    if (last == 0) {
        return;
    }
    if (!remarks.empty() && remarks.back() != '\n') {
        remarks += '\n';
    }
    for (int argument = 1; argument <= last; ++argument) {
        std::size_t length = 0;
        const char* const text = lua_tolstring(callingState, argument, &length);
        remarks.append(text, length);
        if (separate && argument < last) {
            remarks += ' ';
        }
    }
}

std::optional<int> Worker::tricks(PlayerNumber declarer, Trump trump, const char* commands)
{
    return solver.tricks(currentDeal(), declarer, trump, commands);
}

std::optional<bool> Worker::canTake(std::int64_t n, PlayerNumber declarer, Trump trump,
                                    const char* commands)
{
    return solver.canTake(n, currentDeal(), declarer, trump, commands);
}

PlayerNumber Worker::luaCheckPlayerNr(lua_State* callingState, int index) const
{
    PlayerNumber player = NoPlayer;
    if (const void* const value = lua_touserdata(callingState, index)) {
        // A copy of a hand is no player: it must be the hand itself.
        const auto* const found = std::find(std::begin(hands), std::end(hands), value);
        player = found == std::end(hands) ? NoPlayer
                                          : static_cast<PlayerNumber>(found - std::begin(hands));
    } else if (lua_type(callingState, index) == LUA_TSTRING) {
        std::size_t length = 0;
        const char* const name = lua_tolstring(callingState, index, &length);
        player = length == 1 ? charToPlayer(*name) : NoPlayer;
    }
    if (player == NoPlayer) {
        luaL_argerror(
            callingState, index,
            lua_pushfstring(callingState, "%s expected, got %s", "name of player: N, E, S or W",
                            luaL_typename(callingState, index)));
    }
    return player;
}

void Worker::luaAddFunctionUsingWorker(lua_CFunction function, const char* name)
{
    lua_pushlightuserdata(luaState(), this);
    lua_pushcclosure(luaState(), function, 1);
    lua_setglobal(luaState(), name);
}

void Worker::luaAddCardSetMethodUsingWorker(lua_CFunction function, const char* name)
{
    lua_getglobal(luaState(), "C");
    lua_pushlightuserdata(luaState(), this);
    lua_pushcclosure(luaState(), function, 1);
    lua_setfield(luaState(), -2, name);
    lua_pop(luaState(), 1);
}

void Worker::luaopen_Worker()
{
    luaAddFunctionUsingWorker(trikon::count, "count");
    luaAddFunctionUsingWorker(trikon::tricks, "tricks");
    luaAddCardSetMethodUsingWorker(trikon::tricks, "tricks");
    luaAddFunctionUsingWorker(cantake, "cantake");
    luaAddCardSetMethodUsingWorker(cantake, "cantake");
    luaAddFunctionUsingWorker(remark, "remark");
    luaAddFunctionUsingWorker(note, "note");
}

}  // namespace trikon
