// The type `CardSet`: its userdata, its metamethods and its registration.
#include "lua/card_set.h"

#include "lua/card_set_closure.h"
#include "lua/lua_error.h"

#include <cstdlib>

namespace trikon {

namespace {

// Four suits of 13 ranks, each behind its letter, with three blanks.
constexpr int longestPrefixedForm = 4 * 14 + 3;

bool isSubset(CardsConfiguration inner, CardsConfiguration outer)
{
    return (inner & ~std::uint64_t{outer}) == 0;
}

// tostring(set) -> text
int setToString(lua_State* state)
{
    const CardsConfiguration set = cardSetArgument(state, 1);
    char text[longestPrefixedForm];
    std::size_t length = 0;
    raiseWhatThrows(state, [&] { length = set.str_prefixed().copy(text, sizeof text); });
    lua_pushlstring(state, text, length);
    return 1;
}

// a - b -> the cards of a that are not in b
int setDifference(lua_State* state)
{
    const CardsConfiguration set = cardSetArgument(state, 1);
    pushResult(state, CardsConfiguration(set & ~std::uint64_t{cardSetArgument(state, 2)}));
    return 1;
}

// -a -> the rest of the deck; Lua passes the operand twice
int setNegation(lua_State* state)
{
    pushResult(state, CardsConfiguration(fullDeck & ~std::uint64_t{cardSetArgument(state, 1)}));
    return 1;
}

// a == b -> boolean
int setsAreEqual(lua_State* state)
{
    const CardsConfiguration set = cardSetArgument(state, 1);
    pushResult(state, set == cardSetArgument(state, 2));
    return 1;
}

// a < b -> whether a is a proper subset of b
int isProperSubset(lua_State* state)
{
    const CardsConfiguration inner = cardSetArgument(state, 1);
    const CardsConfiguration outer = cardSetArgument(state, 2);
    pushResult(state, inner != outer && isSubset(inner, outer));
    return 1;
}

// a <= b -> whether a is a subset of b
int isSubsetOrEqual(lua_State* state)
{
    const CardsConfiguration inner = cardSetArgument(state, 1);
    pushResult(state, isSubset(inner, cardSetArgument(state, 2)));
    return 1;
}

// #a -> number of cards; Lua passes the operand twice
int setLength(lua_State* state)
{
    pushResult(state, cardSetArgument(state, 1).count());
    return 1;
}

constexpr luaL_Reg ownMetamethods[] = {
    {"__tostring", setToString}, {"__sub", setDifference}, {"__unm", setNegation},
    {"__eq", setsAreEqual},      {"__lt", isProperSubset}, {"__le", isSubsetOrEqual},
    {"__len", setLength},        {nullptr, nullptr},
};

// The operators that are methods too.
constexpr struct {
    const char* metamethod;
    const char* method;
} sharedMetamethods[] = {
    {"__add", "union"}, {"__mul", "product"}, {"__pow", "xor"}, {"__call", "get"}};

// Both tables lie on top of the stack, the metatable above the methods; they stay there.
void registerFunctions(lua_State* state)
{
    const int metatable = lua_gettop(state);
    const int methods = metatable - 1;
    lua_pushvalue(state, methods);
    lua_pushvalue(state, metatable);
    luaL_setfuncs(state, cardSetMethods, 1);
    lua_pop(state, 1);
    lua_pushvalue(state, metatable);
    luaL_setfuncs(state, ownMetamethods, 1);
    for (const auto& shared : sharedMetamethods) {
        lua_getfield(state, methods, shared.method);
        lua_setfield(state, metatable, shared.metamethod);
    }
}

}  // namespace

void luaopen_CardSet(lua_State* state)
{
    lua_createtable(state, 0, cardSetMethodsCount);
    luaL_newmetatable(state, cardSetName);
    registerFunctions(state);
    // A script that asks for the metatable gets the methods, and it cannot set another one.
    for (const char* field : {"__index", "__metatable"}) {
        lua_pushvalue(state, -2);
        lua_setfield(state, -2, field);
    }
    lua_pop(state, 1);
    lua_setglobal(state, cardSetName);
}

CardsConfiguration* checkCardSet(lua_State* state, int index)
{
    return static_cast<CardsConfiguration*>(luaL_checkudata(state, index, cardSetName));
}

CardsConfiguration* pushCardSet(lua_State* state) { return pushCardSet(state, 0); }

CardsConfiguration* pushCardSet(lua_State* state, std::uint64_t cards)
{
    auto* const set =
        new (lua_newuserdata(state, sizeof(CardsConfiguration))) CardsConfiguration(cards);
    luaL_setmetatable(state, cardSetName);
    return set;
}

Trump luaCheckTrump(lua_State* state, int index, bool allowNoTrump)
{
    // Asked for first, because reading a number as text makes it a string.
    const char* const typeName = luaL_typename(state, index);
    std::size_t length = 0;
    const char* const text = lua_tolstring(state, index, &length);
    const bool isLetter = text != nullptr && length == 1;
    const bool isNT = text != nullptr && length == 2 && (text[1] == 'T' || text[1] == 't');
    const Trump trump = isLetter || isNT ? charToTrump(text[0]) : BadTrump;
    if (trump == NoTrump ? allowNoTrump : trump != BadTrump && isLetter) {
        return trump;
    }
    luaL_argerror(
        state, index,
        lua_pushfstring(state, "%s expected, got %s",
                        allowNoTrump ? R"(expected name of a trump: "NT", "S", "H", "D" or "C")"
                                     : R"(expected name of a suit: "S", "H", "D" or "C")",
                        typeName));
    return BadTrump;  // not reached
}

[[noreturn]] void raiseNotACardSet(lua_State* state, int index)
{
    luaL_argerror(
        state, index,
        lua_pushfstring(state, "%s expected, got %s", cardSetName, luaL_typename(state, index)));
    std::abort();  // not reached: Lua does not declare that an error never returns
}

}  // namespace trikon
