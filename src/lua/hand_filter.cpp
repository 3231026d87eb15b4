// Compiling a filter's body and calling it.
#include "lua/hand_filter.h"

#include "lua/card_set.h"
#include "lua/lua_error.h"

#include <stdexcept>
#include <string>

namespace trikon {

namespace {

// Calls `filter` with the hands at the light userdata; runs protected, because reading the global
// and making the sets may raise errors as the filter itself may.
int callFilter(lua_State* state)
{
    const auto& hands = *static_cast<const Hands*>(lua_touserdata(state, 1));
    lua_getglobal(state, "filter");
    for (int player = North; player <= West; ++player) {
        pushCardSet(state, hands[player]);
    }
    lua_call(state, playersCount, 1);
    return 1;
}

double verdict(lua_State* state)
{
    return lua_isboolean(state, -1) ? lua_toboolean(state, -1) : lua_tonumber(state, -1);
}

}  // namespace

void register_hand_filter_function(lua_State* state, std::string_view body)
{
    // A body that ends in a line comment hides this "end" and does not compile.
    std::string text = "function filter(N, E, S, W) ";
    text.append(body).append(" end");
    if (luaL_loadbuffer(state, text.data(), text.size(), text.c_str()) != LUA_OK ||
        lua_pcall(state, 0, 0, 0) != LUA_OK) {
        velka::throw_exception_from_lua<std::invalid_argument>(state);
    }
}

void init_lua_and_register_hand_filter_function(lua_State* state, std::string_view body)
{
    luaL_openlibs(state);
    luaopen_CardSet(state);
    register_hand_filter_function(state, body);
}

void register_function_of_text(lua_State* state, const char* name, std::string_view text,
                               std::string_view origin)
{
    const StackGuard restoresStack(state, lua_gettop(state));
    const std::string chunkName = std::string("=").append(origin);
    const auto compiles = [&](std::string_view chunk) {
        return luaL_loadbuffer(state, chunk.data(), chunk.size(), chunkName.c_str()) == LUA_OK;
    };
    // Of the two errors, the one for what the text was meant to be helps.
    const bool isMeantAsBody = text.find("return") != std::string_view::npos;
    if (!compiles(std::string("return ").append(text)) && !compiles(text)) {
        lua_pushvalue(state, isMeantAsBody ? -1 : -2);
        velka::throw_exception_from_lua<std::invalid_argument>(state);
    }
    lua_setglobal(state, name);
}

double call_hand_filter_function(lua_State* state, const CardsConfiguration& north,
                                 const CardsConfiguration& east, const CardsConfiguration& south,
                                 const CardsConfiguration& west)
{
    return call_hand_filter_function(state, Hands(north, east, south, west));
}

double call_hand_filter_function(lua_State* state, const Hands& hands)
{
    const StackGuard emptiesTheStack(state, 0);
    lua_pushcfunction(state, callFilter);
    lua_pushlightuserdata(state, const_cast<Hands*>(&hands));
    if (lua_pcall(state, 1, 1, 0) != LUA_OK) {
        velka::throw_exception_from_lua<std::runtime_error>(state);
    }
    return verdict(state);
}

}  // namespace trikon
