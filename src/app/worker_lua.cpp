// The script functions that need the worker: statistics and remarks of the current deal.
//
// A Lua error jumps over C++ destructors, so each function reads its arguments first and then works
// in a block that turns exceptions into errors once its objects are gone.
#include "app/worker.h"
#include "lua/lua_error.h"

namespace trikon {

namespace {

Worker& workerOf(lua_State* L)
{
    return *static_cast<Worker*>(lua_touserdata(L, lua_upvalueindex(1)));
}

// Replaces every argument by its text, as Lua's tostring gives it.
void turnArgumentsIntoText(lua_State* L)
{
    for (int argument = lua_gettop(L); argument > 0; --argument) {
        pushTextOf(L, argument);
        lua_replace(L, argument);
    }
}

// A boolean counts as 1 or 0.
double numberOf(lua_State* L, int argument)
{
    return lua_isboolean(L, argument) ? lua_toboolean(L, argument) : lua_tonumber(L, argument);
}

// count(name, value, ...); nil values are left out
int count(lua_State* L)
{
    luaL_checkany(L, 1);
    const int last = lua_gettop(L);
    for (int argument = 2; argument <= last; ++argument) {
        if (!lua_isnil(L, argument) && !lua_isboolean(L, argument)) {
            luaL_checknumber(L, argument);
        }
    }
    const std::string_view name = pushTextOf(L, 1);
    raiseWhatThrows(L, [L, name, last] {
        const std::string counterName(name);
        for (int argument = 2; argument <= last; ++argument) {
            if (!lua_isnil(L, argument)) {
                workerOf(L).count(counterName, numberOf(L, argument));
            }
        }
    });
    return 0;
}

int addRemark(lua_State* L, bool separate)
{
    turnArgumentsIntoText(L);
    raiseWhatThrows(L, [L, separate] { workerOf(L).add_remark(L, separate); });
    return 0;
}

// remark(value, ...)
int remark(lua_State* L) { return addRemark(L, false); }

// note(value, ...): as remark, with blanks between the values
int note(lua_State* L) { return addRemark(L, true); }

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
