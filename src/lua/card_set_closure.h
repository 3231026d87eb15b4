// What the methods and metamethods of `CardSet` share: arguments in, results out.
//
// A filter calls them millions of times a second. Each of them is therefore a closure that carries
// the metatable as its first upvalue, so that an argument is recognised and a result is marked
// without looking for the metatable in the registry by its name. These helpers work only in such a
// closure; everything else uses card_set.h.
#pragma once

#include "cards/cards_configuration.h"

#include <lua.hpp>

#include <new>

namespace trikon {

constexpr const char* cardSetName = "C";
constexpr int cardSetMethodsCount = 31;
constexpr int metatableUpvalue = lua_upvalueindex(1);

/// The methods by name, closed by an empty entry.
extern const luaL_Reg cardSetMethods[cardSetMethodsCount + 1];

/// Raises "C expected, got ..." for the argument at `index`.
[[noreturn]] void raiseNotACardSet(lua_State* state, int index);

/// The set at `index`; raises as `raiseNotACardSet` for any other value.
inline CardsConfiguration cardSetArgument(lua_State* state, int index)
{
    const void* const value = lua_touserdata(state, index);
    if (value != nullptr && lua_getmetatable(state, index) != 0) {
        const bool isCardSet = lua_rawequal(state, -1, metatableUpvalue) != 0;
        lua_pop(state, 1);
        if (isCardSet) {
            return *static_cast<const CardsConfiguration*>(value);
        }
    }
    raiseNotACardSet(state, index);
}

inline void pushResult(lua_State* state, int number) { lua_pushnumber(state, number); }

inline void pushResult(lua_State* state, bool answer) { lua_pushboolean(state, answer ? 1 : 0); }

inline void pushResult(lua_State* state, CardsConfiguration cards)
{
    new (lua_newuserdata(state, sizeof cards)) CardsConfiguration(cards);
    lua_pushvalue(state, metatableUpvalue);
    lua_setmetatable(state, -2);
}

}  // namespace trikon
