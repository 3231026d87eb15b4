// C++ exceptions as Lua errors, and Lua errors as C++ exceptions.
#include "lua/lua_error.h"

#include "support/literals.h"
#include "support/lua_state.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace trikon {

namespace {

// fail(kind) throws what its argument names.
int fail(lua_State* state)
{
    const int kind = static_cast<int>(luaL_checkinteger(state, 1));
    raiseWhatThrows(state, [&] {
        const std::string text(1000, 'x');
        if (kind == 1) {
            throw std::runtime_error("wrong");
        }
        if (kind == 2) {
            throw std::runtime_error(text);
        }
        if (kind == 3) {
            throw 3;
        }
    });
    lua_pushliteral(state, "done");
    return 1;
}

// The text that `pushTextOf` finds for the argument.
int textOf(lua_State* state)
{
    const std::string_view text = pushTextOf(state, 1);
    lua_pushinteger(state, static_cast<lua_Integer>(text.size()));
    return 2;
}

// Gives no more memory while its flag is set; Lua relies on a block being made smaller at any time.
void* allocate(void* noMemory, void* block, std::size_t oldSize, std::size_t size)
{
    if (size == 0) {
        std::free(block);
        return nullptr;
    }
    const bool grows = block == nullptr || size > oldSize;
    return grows && *static_cast<bool*>(noMemory) ? nullptr : std::realloc(block, size);
}

TEST(LuaError, ExceptionsBecomeErrorsWithTheirTextAndWithoutPosition)
{
    const LuaState state = newLuaState();
    luaL_openlibs(state.get());
    lua_register(state.get(), "fail", fail);
    EXPECT_EQ(run(state.get(), "return fail(0)"), "done");
    EXPECT_EQ(run(state.get(), "return fail(1)"), "error: wrong");
    EXPECT_EQ(run(state.get(), "return fail(2)"), "error: " + std::string(1000, 'x'));
    EXPECT_EQ(run(state.get(), "return fail(3)"), "error: unknown error");
    EXPECT_EQ(run(state.get(),
                  "for i = 1, 1000 do pcall(fail, 1 + i % 3) end return select(2, pcall(fail, 1))"),
              "wrong");
    EXPECT_EQ(lua_gettop(state.get()), 0);
}

TEST(LuaError, WithoutMemoryForTheTextTheErrorIsLuasOwn)
{
    bool noMemory = false;
    const LuaState state(lua_newstate(allocate, &noMemory));
    // The first call makes what Lua needs for calls, so that the second lacks only the text.
    for (const char* text : {"wrong", "not enough memory"}) {
        lua_pushcfunction(state.get(), fail);
        lua_pushinteger(state.get(), noMemory ? 2 : 1);
        EXPECT_EQ(lua_pcall(state.get(), 1, 0, 0), LUA_ERRRUN);
        EXPECT_STREQ(lua_tostring(state.get(), -1), text);
        lua_settop(state.get(), 0);
        noMemory = true;
    }
}

TEST(LuaError, ErrorValuesAsExceptions)
{
    struct {
        const char* script;
        const char* text;
    } const cases[] = {
        {"error('mine', 0)", "mine"},
        {"error('mine')", "test:1: mine"},
        {"error(42, 0)", "42"},
        {"error({})", "(error object is a table value)"},
        {"error()", "(error object is a nil value)"},
        {"error(true)", "(error object is a boolean value)"},
        {"error(print)", "(error object is a function value)"},
        {"error(setmetatable({}, {__tostring = function() return 'text' end}))",
         "(error object is a table value)"},
    };
    const LuaState state = newLuaState();
    luaL_openlibs(state.get());
    lua_pushliteral(state.get(), "below");
    for (const auto& each : cases) {
        const std::string script = each.script;
        luaL_loadbuffer(state.get(), script.data(), script.size(), "=test");
        ASSERT_EQ(lua_pcall(state.get(), 0, 0, 0), LUA_ERRRUN);
        EXPECT_EQ(
            errorOf([&] { velka::throw_exception_from_lua<std::runtime_error>(state.get()); }),
            each.text)
            << each.script;
        EXPECT_STREQ(lua_tostring(state.get(), -1), "below") << each.script;
        EXPECT_EQ(lua_gettop(state.get()), 1) << each.script;
    }
}

TEST(LuaError, TextOfAnyValueAsToStringGivesIt)
{
    const LuaState state = newLuaState();
    luaL_openlibs(state.get());
    lua_register(state.get(), "text", textOf);
    EXPECT_EQ(run(state.get(), "return text'a\\0b' == 'a\\0b', text'a\\0b'"),
              std::string("true, a\0b, 3", 12));
    EXPECT_EQ(run(state.get(), "return text(1.5)"), "1.5, 3");
    EXPECT_EQ(run(state.get(), "return text(nil)"), "nil, 3");
    EXPECT_EQ(run(state.get(),
                  "return text(setmetatable({}, {__tostring = function() return 'mine' end}))"),
              "mine, 4");
    EXPECT_EQ(run(state.get(), "return text(setmetatable({}, {__tostring = function() end}))"),
              "error: test:1: '__tostring' must return a string");
}

}  // namespace

}  // namespace trikon
