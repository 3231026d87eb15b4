// A deal filter given as text: the body of a Lua function of the four hands.
//
// The stand-alone form of a filter, for callers that have a Lua state and four hands. The body is a
// sequence of statements ("return N:hcp() >= 20") over the parameters N, E, S and W.
#pragma once

#include "cards/hands.h"

#include <lua.hpp>

#include <string_view>

namespace trikon {

/// Defines the global function `filter(N, E, S, W)` with this body.
///
/// Throws std::invalid_argument with Lua's message when the text does not compile or cannot be
/// stored. The stack is as before in any case. `luaopen_CardSet` must have been called.
void register_hand_filter_function(lua_State* state, std::string_view body);

/// The same for a new state: opens the standard libraries and `CardSet` first.
void init_lua_and_register_hand_filter_function(lua_State* state, std::string_view body);

/// What `filter` answers for the four hands: 1 for true, 0 for false, or its number.
///
/// Text that Lua reads as a number counts as that number, anything else as 0. The function gets
/// copies that it may keep. Throws std::runtime_error with Lua's message when it raises an error or
/// cannot be called. Leaves the stack empty in any case.
double call_hand_filter_function(lua_State* state, const CardsConfiguration& north,
                                 const CardsConfiguration& east, const CardsConfiguration& south,
                                 const CardsConfiguration& west);
double call_hand_filter_function(lua_State* state, const Hands& hands);

}  // namespace trikon
