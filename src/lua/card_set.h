// `CardSet`: the Lua value by which scripts see a hand, a holding, a card or any other card set.
//
// It is a full userdata that holds one `CardsConfiguration`, with the metatable that the registry
// knows as "C". The global "C" is the table of methods. No method changes a set: each result is a
// new value. The functions here raise Lua errors, so see lua_error.h for how to call them.
#pragma once

#include "cards/cards_configuration.h"
#include "cards/players_and_trumps.h"

#include <lua.hpp>

#include <cstdint>

namespace trikon {

/// Registers the type and its methods; to be called once a state, behind the standard libraries.
void luaopen_CardSet(lua_State* state);

/// The set at `index`; raises "C expected, got ..." for any other value.
CardsConfiguration* checkCardSet(lua_State* state, int index);

/// Pushes a new set, empty if not said otherwise, and answers where its value lies.
///
/// In a state without `luaopen_CardSet` the new userdata has no metatable.
CardsConfiguration* pushCardSet(lua_State* state);
CardsConfiguration* pushCardSet(lua_State* state, std::uint64_t cards);

/// The suit named at `index` by "S", "H", "D" or "C", with `allowNoTrump` also "N" or "NT".
///
/// Either case. Raises an argument error that lists the names for any other value.
Trump luaCheckTrump(lua_State* state, int index, bool allowNoTrump);

/// Majors of 2 to 4 cards, minors of 2 to 5, and not exactly two doubletons.
///
/// So of 13 cards 4-3-3-3, 4-4-3-2 and 5-3-3-2 with a five-card minor; a five-card major never.
bool CardsSet_balanced(CardsConfiguration cards);

/// Majors of 2 to 5 cards, minors of 2 to 6.
bool CardsSet_semibalanced(CardsConfiguration cards);

}  // namespace trikon
