// Questions of scripts about a deal: declarer's tricks, lines of play, and the solvers kept for it.
#include "lua/script_solver.h"

#include "support/literals.h"

#include <gtest/gtest.h>

namespace trikon {

namespace {

// Four cards each. In no trump West's clubs run when he leads; with spades as trumps North ruffs.
const Hands deal = hands("AK.2.3.", "54..24.", "76.A.5.", "2.3..AK");

TEST(ScriptSolver, TricksAreThoseOfDeclarersSideWhoeverIsToPlay)
{
    ScriptSolver solver;
    const auto tricks = [&](PlayerNumber declarer, const char* commands) {
        return solver.tricks(deal, declarer, NoTrump, commands);
    };
    EXPECT_EQ(tricks(South, nullptr), 2) << "West cashes two clubs and must then give up the lead";
    EXPECT_EQ(tricks(South, "CA"), 2);
    EXPECT_EQ(tricks(South, "CA H2 D2 S6"), 2) << "the trick that West won is the defenders'";
    EXPECT_EQ(tricks(South, "S2 SK S4 S6"), 4) << "a spade lead gives all tricks away";
    EXPECT_EQ(tricks(North, "D4"), 4) << "with East on lead the clubs are never cashed";
    EXPECT_EQ(tricks(South, "S2 SK S4 S6 ua"), 2);
    EXPECT_EQ(tricks(South, "CA x CK"), std::nullopt) << "what East discards is not told";
}

TEST(ScriptSolver, OneSolverATrumpAndOneDealServeAllQuestions)
{
    ScriptSolver solver;
    const InteractiveDDSolver* const hearts = solver.getSolver(deal, North, Hearts, "S4");
    EXPECT_EQ(solver.getSolver(deal, East, Hearts, nullptr), hearts);
    EXPECT_EQ(hearts->playerToPlay(), South) << "the card of the first question is taken back";
    const InteractiveDDSolver* const clubs = solver.getSolver(deal, North, Clubs, nullptr);
    EXPECT_EQ(clubs->getDeal(), hearts->getDeal()) << "the deal is prepared once";

    solver.tricks(deal, North, Hearts, nullptr);
    const std::uint64_t nodes = hearts->nodesSearched();
    solver.tricks(deal, North, Hearts, nullptr);
    EXPECT_LE(hearts->nodesSearched(), nodes + 4) << "what was proved is found again";

    const std::weak_ptr<const Deal> kept = hearts->getDeal();
    solver.clear();
    EXPECT_TRUE(kept.expired()) << "nothing outlives its deal";
}

}  // namespace

}  // namespace trikon
