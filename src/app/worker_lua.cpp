// The script functions that need the worker: statistics and remarks of the current deal.
//
// A Lua error jumps over C++ destructors, so each function reads its arguments first and then works
// in a block that turns exceptions into errors once its objects are gone.
#include "app/worker.h"
#include "lua/lua_error.h"

namespace trikon {

namespace {

Worker& workerOf(lua_State* state)
{
    return *static_cast<Worker*>(lua_touserdata(state, lua_upvalueindex(1)));
}

// Replaces every argument by its text, as Lua's tostring gives it.
void turnArgumentsIntoText(lua_State* state)
{
    for (int argument = lua_gettop(state); argument > 0; --argument) {
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

void Worker::luaAddFunctionUsingWorker(lua_CFunction function, const char* name)
{
    lua_pushlightuserdata(luaState(), this);
    lua_pushcclosure(luaState(), function, 1);
    lua_setglobal(luaState(), name);
}

void Worker::luaopen_Worker()
{
    luaAddFunctionUsingWorker(trikon::count, "count");
    luaAddFunctionUsingWorker(remark, "remark");
    luaAddFunctionUsingWorker(note, "note");
}

}  // namespace trikon
