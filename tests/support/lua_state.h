// A Lua state for tests: closes itself, and runs a script as one question with a text as answer.
#pragma once

#include <lua.hpp>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace trikon {

struct LuaCloser {
    void operator()(lua_State* state) const { lua_close(state); }
};

using LuaState = std::unique_ptr<lua_State, LuaCloser>;

/// An empty state without libraries.
inline LuaState newLuaState() { return LuaState(luaL_newstate()); }

/// What `script` returns, each value by `tostring`, with ", " between; or "error: " and what it is.
///
/// The script is named "test" in messages. The stack is as before.
inline std::string run(lua_State* state, std::string_view script)
{
    const int height = lua_gettop(state);
    const bool failed = luaL_loadbuffer(state, script.data(), script.size(), "=test") != LUA_OK ||
                        lua_pcall(state, 0, LUA_MULTRET, 0) != LUA_OK;
    std::string text = failed ? "error: " : "";
    const int end = lua_gettop(state);
    for (int index = height + 1; index <= end; ++index) {
        std::size_t length = 0;
        const char* const value = luaL_tolstring(state, index, &length);
        text.append(index == height + 1 ? "" : ", ").append(value, length);
        lua_pop(state, 1);
    }
    lua_settop(state, height);
    return text;
}

}  // namespace trikon
