// Card sets as scripts see them: every method and operator, by what a script gets from it.
#include "lua/card_set.h"

#include "support/literals.h"
#include "support/lua_state.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace trikon {

namespace {

struct Case {
    const char* expression;
    const char* results;
};

std::string judgement(CardsConfiguration hand)
{
    const bool semiBalanced = CardsSet_semibalanced(hand);
    if (CardsSet_balanced(hand)) {
        return semiBalanced ? "both" : "balanced";
    }
    return semiBalanced ? "semi-balanced" : "neither";
}

class CardSet : public testing::Test {
protected:
    CardSet() : state(newLuaState())
    {
        luaL_openlibs(state.get());
        luaopen_CardSet(state.get());
        run(state.get(),
            "N, E, none = C.new'AKQ2.JT9.876.543', C.new'.AK.T98765432.32', C.new'...'"
            "many, zeros = {}, {} for i = 1, 4000 do many[i], zeros[i] = N, 0 end");
    }

    std::string results(const std::string& expression)
    {
        return run(state.get(), "return " + expression);
    }

    void expectAll(const std::vector<Case>& cases)
    {
        for (const Case& each : cases) {
            EXPECT_EQ(results(each.expression), each.results) << each.expression;
        }
    }

    LuaState state;
};

TEST_F(CardSet, LibraryLeavesTheStackEmptyAndItsMetatableHidden)
{
    EXPECT_EQ(lua_gettop(state.get()), 0);
    expectAll({
        {"getmetatable(N) == C, debug.getmetatable(N).__index == C", "true, true"},
        {"(pcall(setmetatable, N, {}))", "false"},
    });
}

TEST_F(CardSet, NumbersOfEachArgument)
{
    expectAll({
        {"C.count()", ""},
        {"C.hcp()", ""},
        {"N:count()", "13"},
        {"C.count(N, E, none)", "13, 13, 0"},
        {"C.cardsCount(E, N:S())", "13, 4"},
        {"C.spades(N, E)", "4, 0"},
        {"C.Scount(N, E)", "4, 0"},
        {"C.hearts(N, E)", "3, 2"},
        {"C.HCount(N, E)", "3, 2"},
        {"C.diamonds(N, E)", "3, 9"},
        {"C.DCount(N, E)", "3, 9"},
        {"C.clubs(N, E)", "3, 2"},
        {"C.CCount(N, E)", "3, 2"},
        {"C.hcp(N, E, none, C.product())", "10, 7, 0, 40"},
        {"C.miltons(E, N)", "7, 10"},
        {"C.controls(N, E, none, C.product())", "3, 3, 0, 12"},
        {"C.new'..AKQJ.':hcp()", "10"},
        {"C.new'..AKQJ.':controls()", "3"},
        {"#{C.count(table.unpack(many))}", "4000"},
    });
}

TEST_F(CardSet, PointsWeighTheRanksFromTheAceDown)
{
    expectAll({
        {"N:points()", "0"},
        {"N:points(4, 3, 2, 1)", "10"},
        {"E:points('0.5', 0.25)", "0.75"},
        {"N:points(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1)", "1"},
        {"C.product():points(1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 100, 100, 100)", "52"},
    });
}

TEST_F(CardSet, SuitsOfEachArgument)
{
    expectAll({
        {"C.S(N, E)", "SAKQ2, "},
        {"C.H(N, E)", "HJT9, HAK"},
        {"C.D(N, E)", "D876, DT98765432"},
        {"C.C(N, E)", "C543, C32"},
        {"C.S()", ""},
        {"N:H():count()", "3"},
    });
}

TEST_F(CardSet, SelectionByPositionAndBySuit)
{
    expectAll({
        {"N(0)", "C3"},
        {"N(-1)", "SA"},
        {"N(3)", "D6"},
        {"N(12) == N(-1), N(-13) == N(0)", "true, true"},
        {"#N(13), #N(-14), #N(1e300), #N(-1e300), #none(0), #none(-1)", "0, 0, 0, 0, 0, 0"},
        {"N(1.7), N(-0.7), N('2')", "C4, C3, C5"},
        {"N('s'), N('S'), N('h'), N('D'), N('c')", "SAKQ2, SAKQ2, HJT9, D876, C543"},
        {"#E('S')", "0"},
        {"N:get('S', 0, 'C')", "SAKQ2, C3, C543"},
        {"N:get()", ""},
        {"N()", ""},
        {"select('#', N:get(table.unpack(zeros)))", "4000"},
    });
}

TEST_F(CardSet, AlgebraOfSets)
{
    expectAll({
        {"#C.union(), #C.product(), #C.xor()", "0, 52, 0"},
        {"C.union(N:S(), N:H(), E:H())", "SAKQ2 HAKJT9"},
        {"C.product(N, N:D() + E, E)", "D876 C3"},
        {"C.xor(N, N)", ""},
        {"C.xor(N, N, E)", "HAK DT98765432 C32"},
        {"N:S() + N:H()", "SAKQ2 HJT9"},
        {"N * E", "D876 C3"},
        {"N:C() ^ E:C()", "C542"},
        {"N - E", "SAKQ2 HJT9 C54"},
        {"#-N, N * -N == none, N + -N == C.product()", "39, true, true"},
        {"#-none, #-C.product()", "52, 0"},
        {"C.complement(N, -E, none) == -N, select(2, C.complement(N, -E)) == E, select('#', "
         "C.complement(N, E, N))",
         "true, true, 3"},
        {"C.complement(-N)", "SAKQ2 HJT9 D876 C543"},
        {"#N, #none", "13, 0"},
    });
}

TEST_F(CardSet, ComparisonIsInclusion)
{
    expectAll({
        {"N == C.new(N), N == E, N ~= E, N == 1", "true, false, true, false"},
        {"N < N, N <= N, N >= N, N > N", "false, true, true, false"},
        {"N:S() < N, N:S() <= N, N > N:S(), N < N:S()", "true, true, true, false"},
        {"N < E, E < N, N <= E, E <= N", "false, false, false, false"},
        {"none < N, none <= none, none < none", "true, true, false"},
    });
}

TEST_F(CardSet, IterationGoesFromTheLowestClubToTheHighestSpade)
{
    expectAll({
        {"(function() local t = {} for c in N:cards() do t[#t + 1] = tostring(c) end"
         " return table.concat(t, ' ') end)()",
         "C3 C4 C5 D6 D7 D8 H9 HT HJ S2 SQ SK SA"},
        {"none:cards()()", ""},
        {"(function() local next = N:S():cards() return next(), next(), next(), next(), next() "
         "end)()",
         "S2, SQ, SK, SA"},
    });
}

TEST_F(CardSet, ShapeAndPatternGiveLengthsOrCallAFunction)
{
    expectAll({
        {"N:shape()", "4, 3, 3, 3"},
        {"E:shape()", "0, 2, 9, 2"},
        {"E:pattern()", "9, 2, 2, 0"},
        {"none:pattern()", "0, 0, 0, 0"},
        {"E:shape(function(s, h, d, c) return c, d, h, s, 'all' end)", "2, 9, 2, 0, all"},
        {"E:shape(function() end)", ""},
        {"N:pattern(function(a, b, c, d) return a * 1000 + b * 100 + c * 10 + d end)", "4333"},
        {"E:pattern(setmetatable({}, {__call = function(self, a) return a end}))", "9"},
    });
}

TEST_F(CardSet, BalancedLeavesOutFiveCardMajorsAndTwoDoubletons)
{
    struct {
        const char* judgement;
        std::vector<const char*> hands;
    } const cases[] = {
        {"both",
         {"5432.432.432.432", "5432.5432.432.32", "432.432.32.65432", "432.32.65432.432",
          "32.32.32.32"}},
        {"semi-balanced",
         {"65432.432.432.32", "432.65432.432.32", "32.5432.65432.32", "65432.5432.32.32",
          "32.32.432.765432", "32.432.765432.32"}},
        {"neither",
         {"765432.432.32.32", "32.765432.432.32", "32.32.32.8765432", "32.32.8765432.32",
          "5432.5432.5432.2", "5432.5432.2.5432", "5432.2.5432.5432", "2.5432.5432.5432", "..."}},
    };
    for (const auto& each : cases) {
        for (const char* text : each.hands) {
            EXPECT_EQ(judgement(hand(text)), each.judgement) << text;
        }
    }
    expectAll({{"C.balanced(N, E, N)", "true, false, true"},
               {"C.semiBalanced(E, N)", "false, true"},
               {"C.balanced()", ""}});
}

TEST_F(CardSet, RangesIncludeBothEnds)
{
    expectAll({
        {"N:hcp_in_range(10, 10), N:hcp_in_range(11, 12), N:hcp_in_range(8, 9)",
         "true, false, false"},
        {"N:hcp_in_range(9.5, '10.5'), N:hcp_in_range(12, 8), N:hcp_in_range(0/0, 40)",
         "true, false, false"},
        {"N:nt(10, 10), N:nt(11, 12), N:nt(8, 9)", "true, false, false"},
        {"E:nt(0, 40), E:hcp_in_range(7, 7)", "false, true"},
    });
}

TEST_F(CardSet, NewReadsEveryFormOfAHandAndItsOwnText)
{
    expectAll({
        {"C.new'SAKQ HJT9'", "SAKQ HJT9"},
        {"C.new'AKQ JT9 - 10'", "SAKQ HJT9 CT"},
        {"C.new(N) == N, C.new(E) == E", "true, true"},
        {"C.new(setmetatable({}, {__tostring = function() return '2..A.' end}))", "S2 DA"},
        {"tostring(none) == ''", "true"},
        {"C.new'...' == C.union()", "true"},
    });
}

TEST(CardSetWithoutLibrary, NewSetsArePlainAndEmpty)
{
    const LuaState state = newLuaState();
    EXPECT_TRUE(pushCardSet(state.get())->empty());
    *pushCardSet(state.get(), hand("A...")) |= hand("K...");
    EXPECT_EQ(lua_gettop(state.get()), 2);
    EXPECT_EQ(lua_getmetatable(state.get(), -1), 0);
    EXPECT_EQ(*static_cast<CardsConfiguration*>(lua_touserdata(state.get(), -1)), hand("AK..."));
}

}  // namespace

}  // namespace trikon
