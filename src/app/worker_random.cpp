// `math.random` of a repeatable run.
//
// Lua's own generator is one for the whole process, so what it gives depends on how the threads
// run. Here the numbers come from the engine of the deal in hand; `math.randomseed` does nothing.
#include "app/worker.h"
#include "dealer/random_source.h"

#include <cmath>

namespace trikon {

namespace {

// math.random([m [, n]]): a fraction from 0 to below 1, or a whole number from 1 to m or m to n
int random(lua_State* state)
{
    Worker& worker = *static_cast<Worker*>(lua_touserdata(state, lua_upvalueindex(1)));
    const int arguments = lua_gettop(state);
    if (arguments > 2) {
        return luaL_error(state, "wrong number of arguments");
    }
    const double lowest = arguments == 2 ? luaL_checknumber(state, 1) : 1;
    const double highest = arguments > 0 ? luaL_checknumber(state, arguments) : 1;
    luaL_argcheck(state, lowest <= highest, arguments, "interval is empty");
    const double draw = unitDraw(worker.engineOfDeal());
    if (arguments == 0) {
        lua_pushnumber(state, draw);
    } else {
        lua_pushnumber(state, std::floor(draw * (highest - lowest + 1)) + lowest);
    }
    return 1;
}

}  // namespace

void Worker::replaceRandom()
{
    lua_getglobal(luaState(), "math");
    lua_pushlightuserdata(luaState(), this);
    lua_pushcclosure(luaState(), random, 1);
    lua_setfield(luaState(), -2, "random");
    lua_pop(luaState(), 1);
}

}  // namespace trikon
