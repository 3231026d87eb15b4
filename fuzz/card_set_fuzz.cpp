// `C.new` as a script calls it.
#include "cards/cards_configuration.h"
#include "fuzz_target.h"
#include "lua/card_set.h"
#include "lua/lua_error.h"

#include <lua.hpp>

#include <memory>

namespace {

using namespace trikon;

struct LuaCloser {
    void operator()(lua_State* state) const { lua_close(state); }
};

using LuaState = std::unique_ptr<lua_State, LuaCloser>;

LuaState newState()
{
    LuaState state(luaL_newstate());
    luaL_openlibs(state.get());
    luaopen_CardSet(state.get());
    return state;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const LuaState owner = newState();
    lua_State* const state = owner.get();
    const std::string text = textOf(data, size);
    CardsConfiguration expected;
    const bool isHand = readsWell([&] { expected = readWholeHand(text); });

    const StackGuard emptiesTheStack(state, 0);
    lua_getglobal(state, "C");
    lua_getfield(state, -1, "new");
    lua_pushlstring(state, text.data(), text.size());
    if (lua_pcall(state, 1, 1, 0) == LUA_OK) {
        require(isHand && *checkCardSet(state, -1) == expected, "the set is the hand of the text");
    } else {
        require(!isHand && errorText(state).starts_with("Error"), "the error is the reader's");
    }
    return 0;
}
