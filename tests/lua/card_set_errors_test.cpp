// What scripts are told when they use a card set wrongly, word for word.
#include "cards/hands.h"
#include "lua/card_set.h"
#include "support/lua_state.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace trikon {

namespace {

// trump(value) -> number, as functions that allow no trump read it
int trumpOf(lua_State* state)
{
    lua_pushinteger(state, luaCheckTrump(state, 1, true));
    return 1;
}

// size(set) -> number, as functions outside the type read a set
int sizeOf(lua_State* state)
{
    lua_pushinteger(state, checkCardSet(state, 1)->count());
    return 1;
}

class CardSetErrors : public testing::Test {
protected:
    CardSetErrors() : state(newLuaState())
    {
        luaL_openlibs(state.get());
        luaopen_CardSet(state.get());
        lua_register(state.get(), "trump", trumpOf);
        lua_register(state.get(), "size", sizeOf);
        run(state.get(), "N, E = C.new'AKQ2.JT9.876.543', C.new'.AK.T98765432.32'");
    }

    LuaState state;
};

// A script that fails, and the message behind "error: ".
using Failures = std::vector<std::pair<std::string, std::string>>;

const Failures argumentFailures = {
    {"C.hcp(nil)", "test:1: bad argument #1 to 'hcp' (C expected, got nil)"},
    {"C.hcp(N, 'N')", "test:1: bad argument #2 to 'hcp' (C expected, got string)"},
    {"C.S(N, {})", "test:1: bad argument #2 to 'S' (C expected, got table)"},
    {"C.balanced(io.stdout)", "test:1: bad argument #1 to 'balanced' (C expected, got userdata)"},
    {"C.cards()", "test:1: bad argument #1 to 'cards' (C expected, got no value)"},
    {"C.union(N, true)", "test:1: bad argument #2 to 'union' (C expected, got boolean)"},
    {"C.get(1)", "test:1: bad argument #1 to 'get' (C expected, got number)"},
    {"C.points()", "test:1: bad argument #1 to 'points' (C expected, got no value)"},
    {"N:points(1, {})", "test:1: bad argument #2 to 'points' (number expected, got table)"},
    {"C.shape()", "test:1: bad argument #1 to 'shape' (C expected, got no value)"},
    {"C.pattern(print)", "test:1: bad argument #1 to 'pattern' (C expected, got function)"},
    {"C.nt(15, 17)", "test:1: bad argument #1 to 'nt' (C expected, got number)"},
    {"N:nt(15)", "test:1: bad argument #2 to 'nt' (number expected, got no value)"},
    {"N:nt('x', 'y')", "test:1: bad argument #2 to 'nt' (number expected, got string)"},
    {"N:hcp_in_range('x', 1)",
     "test:1: bad argument #1 to 'hcp_in_range' (number expected, got string)"},
    {"N + 1", "test:1: bad argument #2 to '__add' (C expected, got number)"},
    {"1 - N", "test:1: bad argument #1 to '__sub' (C expected, got number)"},
    {"N < 1", "test:1: bad argument #2 to '__lt' (C expected, got number)"},
    {"1 <= N", "test:1: bad argument #1 to '__le' (C expected, got number)"},
    {"debug.getmetatable(N).__eq(N)",
     "test:1: bad argument #2 to '__eq' (C expected, got no value)"},
    {"debug.getmetatable(N).__unm(1)",
     "test:1: bad argument #1 to '__unm' (C expected, got number)"},
    {"debug.getmetatable(N).__len(1)",
     "test:1: bad argument #1 to '__len' (C expected, got number)"},
    {"debug.getmetatable(N).__tostring(1)",
     "test:1: bad argument #1 to '__tostring' (C expected, got number)"},
    {"C.hcp(debug.setmetatable({}, debug.getmetatable(N)))",
     "test:1: bad argument #1 to 'hcp' (C expected, got table)"},
    {"size(nil)", "test:1: bad argument #1 to 'size' (C expected, got nil)"},
};

const std::string suitNames = R"((expected name of a suit: "S", "H", "D" or "C" expected, got )";
const std::string trumpNames =
    R"((expected name of a trump: "NT", "S", "H", "D" or "C" expected, got )";

const Failures suitFailures = {
    {"N('NT')", "test:1: bad argument #2 to 'N' " + suitNames + "string)"},
    {"N:get(0, {})", "test:1: bad argument #2 to 'get' " + suitNames + "table)"},
    {"N:get('N')", "test:1: bad argument #1 to 'get' " + suitNames + "string)"},
    {"trump(5)", "test:1: bad argument #1 to 'trump' " + trumpNames + "number)"},
    {"trump('TN')", "test:1: bad argument #1 to 'trump' " + trumpNames + "string)"},
    {"trump('ST')", "test:1: bad argument #1 to 'trump' " + trumpNames + "string)"},
    {"trump('')", "test:1: bad argument #1 to 'trump' " + trumpNames + "string)"},
    {"trump()", "test:1: bad argument #1 to 'trump' " + trumpNames + "no value)"},
};

const Failures otherFailures = {
    {"N:shape(print, 1)",
     "test:1: too many arguments for `shape' function, expected 1 or 2, but got 3"},
    {"C.pattern(1, 2, 3, 4)",
     "test:1: too many arguments for `pattern' function, expected 1 or 2, but got 4"},
    {"N:shape(nil)", "attempt to call a nil value"},
    {"N:pattern('x')", "attempt to call a string value"},
    {"N:shape(function() error('mine', 0) end)", "mine"},
    {"C.new()", "test:1: bad argument #1 to 'new' (value expected)"},
    {"C.new'AKX.JT9.876.5432'",
     "Error in \"AKX.JT9.876.5432\" at position 3: unexpected character \"X\""},
    {"C.new'AKQ.JT9.876.5432 7'",
     "Error in \"AKQ.JT9.876.5432 7\" at position 18: \"7\" is left over after the hand."},
    {"C.new'SAA'",
     "Error in \"AA\" at position 2: card \"A\" is already in use (in other hand or earlier in "
     "this hand)"},
    {"C.new(C.union())", "Error: Unexpected end."},
    {"C.new(5)", "Error: Unexpected end."},
    {"C.new(nil)", "Error in \"nil\" at position 1: unexpected character \"n\""},
    {"C.new(setmetatable({}, {__tostring = function() return {} end}))",
     "test:1: '__tostring' must return a string"},
    {"C.new(setmetatable({}, {__tostring = function() error('mine', 0) end}))", "mine"},
};

void expectFailures(lua_State* state, const Failures& failures)
{
    for (const auto& [script, message] : failures) {
        EXPECT_EQ(run(state, "return " + script), "error: " + message) << script;
        EXPECT_EQ(lua_gettop(state), 0) << script;
    }
}

TEST_F(CardSetErrors, WrongArguments) { expectFailures(state.get(), argumentFailures); }

TEST_F(CardSetErrors, WrongSuitsAndTrumps) { expectFailures(state.get(), suitFailures); }

TEST_F(CardSetErrors, WrongCountsCallsAndTexts) { expectFailures(state.get(), otherFailures); }

TEST_F(CardSetErrors, TrumpsAndSetsAreReadByOtherFunctionsToo)
{
    EXPECT_EQ(run(state.get(), "return trump'c', trump'D', trump'h', trump'S'"), "0, 1, 2, 3");
    EXPECT_EQ(run(state.get(), "return trump'N', trump'n', trump'NT', trump'nT'"), "4, 4, 4, 4");
    EXPECT_EQ(run(state.get(), "return size(N)"), "13");
}

// An object that an error jumps over leaks, which the leak sanitizer reports.
TEST_F(CardSetErrors, AThousandErrorsLeaveNothingBehind)
{
#ifdef __SANITIZE_THREAD__
    // The thread sanitizer never takes off its stack the frames that a long jump skips, and has
    // room for some ten thousand. What leaks, the address sanitizer finds.
    const int times = 100;
#else
    const int times = 1000;
#endif
    for (const Failures& failures : {argumentFailures, suitFailures, otherFailures}) {
        for (const auto& [script, message] : failures) {
            const std::string repeated = str_contat(
                "local function failing() return ", script, " end\nlocal text for i = 1, ", times,
                " do text = select(2, pcall(failing)) end return text");
            EXPECT_EQ(run(state.get(), repeated), message) << script;
        }
    }
    EXPECT_EQ(lua_gettop(state.get()), 0);
}

}  // namespace

}  // namespace trikon
