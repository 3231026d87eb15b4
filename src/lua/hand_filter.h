// A deal filter given as text: the body of a Lua function of the four hands.
//
// The stand-alone form of a filter, for callers that have a Lua state and four hands. The body is a
// sequence of statements ("return N:hcp() >= 20") over the parameters N, E, S and W. Beside it, the
// form for a state whose globals are the hands, where the text may also be an expression.
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

/// Defines the global function `name` without parameters from an expression or a body.
///
/// `text` is tried as an expression, whose values the function returns, and then as a body. Throws
/// std::invalid_argument with Lua's message when neither compiles; `origin` is named in it, and in
/// errors of the function, with the line of the text. The stack is as before in any case.
void register_function_of_text(lua_State* state, const char* name, std::string_view text,
                               std::string_view origin);

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
