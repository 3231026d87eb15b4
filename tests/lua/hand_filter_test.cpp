// Filters given as text: what they answer, and what is thrown for bad ones.
#include "lua/hand_filter.h"

#include "support/literals.h"
#include "support/lua_state.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace trikon {

namespace {

const Hands deal =
    hands("AKQJ.AKQ.432.432", "T98.JT9.AKQ.AKQJ", "765.876.JT98.T98", "432.5432.765.765");

// The text of the `E` that `action` throws; any other exception fails the test.
template <class E, class Action>
std::string textOf(Action action)
{
    try {
        action();
    } catch (const E& error) {
        return error.what();
    }
    return "no error";
}

double verdictOf(const char* body)
{
    const LuaState state = newLuaState();
    init_lua_and_register_hand_filter_function(state.get(), body);
    EXPECT_EQ(lua_gettop(state.get()), 0);
    const double verdict = call_hand_filter_function(state.get(), deal);
    EXPECT_EQ(lua_gettop(state.get()), 0);
    return verdict;
}

TEST(HandFilter, VerdictIsABooleanOrANumber)
{
    struct {
        const char* body;
        double verdict;
    } const cases[] = {
        {"return N:hcp() >= 19", 1},
        {"return N:hcp() >= 20", 0},
        {"return 0.25", 0.25},
        {"return -3, 7", -3},
        {"return '0x10'", 16},
        {"return 'many'", 0},
        {"return nil", 0},
        {"return {}", 0},
        {"return N", 0},
        {"", 0},
        {"local points = 0 for _, hand in ipairs{N, E, S, W} do points = points * 100 + hand:hcp() "
         "end return points",
         19'20'01'00},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(verdictOf(each.body), each.verdict) << each.body;
    }
}

TEST(HandFilter, FourHandsGiveTheSameCallAndAreCopies)
{
    const LuaState state = newLuaState();
    init_lua_and_register_hand_filter_function(
        state.get(), "kept = kept or {} kept[#kept + 1] = S return kept[1]:hcp() == S:hcp()");
    EXPECT_EQ(call_hand_filter_function(state.get(), deal[0], deal[1], deal[2], deal[3]), 1);
    EXPECT_EQ(call_hand_filter_function(state.get(), deal[0], deal[1], deal[3], deal[2]), 0);
}

TEST(HandFilter, BadTextIsAnInvalidArgumentAndDefinesNothing)
{
    const LuaState state = newLuaState();
    luaL_openlibs(state.get());
    const auto messageOf = [&](const char* body) {
        return textOf<std::invalid_argument>(
            [&] { register_hand_filter_function(state.get(), body); });
    };
    const std::string opening = "[string \"function filter(N, E, S, W) ";
    EXPECT_EQ(messageOf("return N:hcp("),
              opening + "return N:hcp( end...\"]:1: unexpected symbol near 'end'");
    EXPECT_EQ(messageOf("return 1 -- one"),
              opening + "return 1 -- one e...\"]:1: 'end' expected near <eof>");
    EXPECT_EQ(run(state.get(), "return filter"), "nil");
    run(state.get(), "setmetatable(_G, {__newindex = function() error({}) end})");
    EXPECT_EQ(messageOf(""), "(error object is a table value)");
    EXPECT_EQ(lua_gettop(state.get()), 0);
}

TEST(HandFilter, ABodyLongerThanAnyTextIsALengthError)
{
    const LuaState state = newLuaState();
    // The characters are never read: the length alone is too much.
    const std::string_view endless("", std::string().max_size());
    EXPECT_EQ(
        textOf<std::length_error>([&] { register_hand_filter_function(state.get(), endless); }),
        "basic_string::append");
}

TEST(HandFilter, AFailingFilterIsARuntimeErrorAndLeavesTheStackEmpty)
{
    const LuaState state = newLuaState();
    init_lua_and_register_hand_filter_function(state.get(), "");
    const auto messageOf = [&](const char* body) {
        register_hand_filter_function(state.get(), body);
        lua_pushliteral(state.get(), "left by the caller");
        return textOf<std::runtime_error>([&] { call_hand_filter_function(state.get(), deal); });
    };
    EXPECT_EQ(messageOf("error('mine', 0)"), "mine");
    EXPECT_EQ(messageOf("return N:hcp(5)"),
              "[string \"function filter(N, E, S, W) return N:hcp(5) e...\"]:1: bad argument #1 to "
              "'hcp' (C expected, got number)");
    for (int round = 0; round < 1000; ++round) {
        EXPECT_EQ(messageOf("error({})"), "(error object is a table value)");
    }
    EXPECT_EQ(lua_gettop(state.get()), 0);
    register_hand_filter_function(state.get(), "return 7");
    EXPECT_EQ(call_hand_filter_function(state.get(), deal), 7) << "the state remains usable";
}

TEST(HandFilter, AMissingFilterIsARuntimeError)
{
    const LuaState state = newLuaState();
    luaL_openlibs(state.get());
    const auto message = [&] {
        return textOf<std::runtime_error>([&] { call_hand_filter_function(state.get(), deal); });
    };
    EXPECT_EQ(message(), "attempt to call a nil value");
    EXPECT_EQ(lua_gettop(state.get()), 0);
    run(state.get(), "setmetatable(_G, {__index = function() error('no such global', 0) end})");
    EXPECT_EQ(message(), "no such global");
    EXPECT_EQ(lua_gettop(state.get()), 0);
}

}  // namespace

}  // namespace trikon
