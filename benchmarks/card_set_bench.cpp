// What one call of a filter costs, by the methods that it uses.
//
// Each benchmark is one protected call of a Lua function on hands that change from call to call, as
// in the loop that deals. Subtract the first line, a function that asks nothing.
#include "lua/card_set.h"

#include <benchmark/benchmark.h>
#include <lua.hpp>

#include <cstddef>
#include <string>

namespace trikon {

namespace {

const char* const bodies[] = {
    "return false",
    "return N:hcp() >= 20",
    "return S:nt(15, 17)",
    "return S:balanced()",
    "return S:S()",
    "return #S",
    "return N + S",
    "return S('s')",
    "return S:points(4, 3, 2, 1, 0.5)",
    "return S:shape(function(s, h, d, c) return s == 4 and h == 3 end)",
    "return S:pattern(function(a, b, c, d) return a == 4 and b == 4 end)",
    "return N:hcp() >= 10 and #S:S() >= 4",
    "for card in S:cards() do end return false",
};

void callFilter(benchmark::State& benchmarkState, const char* body)
{
    const char* const texts[] = {"AKQ2.JT9.876.543", "T98.AKQ2.Q43.A72", "A2.2.AKQJT.98765",
                                 "KJ43.A876.K2.QT4"};
    CardsConfiguration hands[4];
    for (std::size_t index = 0; index < 4; ++index) {
        hands[index] = readWholeHand(texts[index]);
    }
    lua_State* const state = luaL_newstate();
    luaL_openlibs(state);
    luaopen_CardSet(state);
    CardsConfiguration* const north = pushCardSet(state);
    lua_setglobal(state, "N");
    CardsConfiguration* const south = pushCardSet(state);
    lua_setglobal(state, "S");
    luaL_loadstring(state, body);
    std::size_t deal = 0;
    for (auto iteration : benchmarkState) {
        static_cast<void>(iteration);
        *north = hands[deal % 4];
        *south = hands[(deal + 1) % 4];
        ++deal;
        lua_pushvalue(state, -1);
        if (lua_pcall(state, 0, 1, 0) != LUA_OK) {
            benchmarkState.SkipWithError(lua_tostring(state, -1));
        }
        benchmark::DoNotOptimize(lua_toboolean(state, -1));
        lua_pop(state, 1);
    }
    lua_close(state);
}

}  // namespace

}  // namespace trikon

int main(int argc, char** argv)
{
    for (const char* body : trikon::bodies) {
        benchmark::RegisterBenchmark(body, trikon::callFilter, body);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
