// The search against the plain one: its answers, and what it says they depend on.
//
// The ordinary run asks for the 20 results of 20,050 endings. For a run of an hour or so, which
// sees a hundred times as many (a larger number makes it longer):
//
//     export TAMREL_TEST_EFFORT=10000
//     build/release/tests/solver/solver_tests --gtest_filter='Search.*:QuickTricks.*:SureTrumps.*'
#include "solver/dd_solver.h"
#include "support/endings.h"
#include "support/playing_solver.h"
#include "support/reference_solver.h"

#include <gtest/gtest.h>

#include <memory>

namespace trikon {

namespace {

constexpr Trump allTrumps[] = {Clubs, Diamonds, Hearts, Spades, NoTrump};
constexpr PlayerNumber allPlayers[] = {North, East, South, West};

void expectAllResults(DDSolver& solver, const Hands& hands)
{
    solver.setHands(hands);
    for (const Trump trump : allTrumps) {
        solver.set_trump_suit(trump);
        for (const PlayerNumber leader : allPlayers) {
            ASSERT_EQ(solver.solveTricksToTake(leader, Trick(), -1),
                      referenceTricks(hands, trump, leader))
                << describe(hands, trump, leader);
        }
    }
}

// In every other ending moves are tried by turns from the start, and with very little patience.
void varyTurns(PlayingSolver& solver, std::mt19937_64& random)
{
    const bool byTurns = random() % 2 == 0;
    solver.turns = byTurns ? PlayingSolver::Turns{2, 1 + random() % 20, 1 + random() % 4}
                           : PlayingSolver::Turns{};
}

// Whether the bound that a search gave is right in `hands`.
void expectBound(const Hands& hands, Trump trump, PlayerNumber leader, int target, int bound)
{
    if (bound >= target) {
        ASSERT_TRUE(referenceCanTake(hands, trump, leader, bound))
            << "at least " << bound << " in " << describe(hands, trump, leader);
    } else {
        ASSERT_FALSE(referenceCanTake(hands, trump, leader, bound + 1))
            << "at most " << bound << " in " << describe(hands, trump, leader);
    }
}

// Whatever is dealt to the hands outside the relevance that comes with a bound.
void expectRelevanceIsEnough(PlayingSolver& solver, std::mt19937_64& random, PlayerNumber leader)
{
    const Hands hands = solver.handsLeft();
    for (int target = 1; target <= solver.tricksLeft(); ++target) {
        CardsConfiguration relevant;
        const std::int8_t bound =
            solver.searchStartTrick(static_cast<std::int8_t>(target), leader, relevant);
        for (int round = 0; round < 2; ++round) {
            SCOPED_TRACE(str_contat("from ", describe(hands, solver.getTrump(), leader),
                                    ", target ", target, ", relevant ",
                                    CardsConfiguration(relevant & fullDeck)));
            expectBound(shuffledOutside(random, hands, relevant), solver.getTrump(), leader, target,
                        bound);
        }
    }
}

// One step to or fro, so that what was proved before serves again.
void playOrTakeBack(PlayingSolver& solver, std::mt19937_64& random)
{
    const bool canPlay = solver.getSituation().cardsCount > 4;
    if (canPlay && (!solver.canTakeBack() || random() % 3 != 0)) {
        solver.playRandomCard(random);
    } else {
        solver.takeBack();
    }
}

void expectRightInMidTrick(PlayingSolver& solver, std::mt19937_64& random)
{
    const Hands left = solver.handsLeft();
    const int truth = referenceTricks(left, solver.getTrump(), solver.player, solver.onTable);
    const auto targets = static_cast<unsigned>(solver.tricksLeft()) + 3;  // from -1 to one too many
    const auto target = static_cast<std::int8_t>(static_cast<int>(random() % targets) - 1);
    SCOPED_TRACE(str_contat(describe(left, solver.getTrump(), solver.player), " to ", solver.trick,
                            ", target ", int{target}));
    ASSERT_EQ(solver.solveCanTake(target, solver.player, solver.trick), truth >= target);
    ASSERT_EQ(solver.solveTricksToTake(solver.player, solver.trick, target), truth);
}

class Search : public testing::Test {
protected:
    std::mt19937_64 random{2024};
    std::unique_ptr<PlayingSolver> solver = std::make_unique<PlayingSolver>();
};

}  // namespace

TEST_F(Search, AgreesWithThePlainOneOnSmallEndings)
{
    forRandomEndings(random, {{2, 1400}, {3, 1800}, {4, 750}, {5, 60}}, [&](const Hands& hands) {
        varyTurns(*solver, random);
        expectAllResults(*solver, hands);
    });
}

TEST_F(Search, IsRightWhateverTheIrrelevantCardsAre)
{
    forRandomEndings(random, {{3, 1000}, {4, 600}, {5, 60}}, [&](const Hands& hands) {
        varyTurns(*solver, random);
        solver->start(hands, allTrumps[random() % 5], North);
        for (const PlayerNumber leader : allPlayers) {
            expectRelevanceIsEnough(*solver, random, leader);
        }
    });
}

TEST_F(Search, IsRightInMidTrickWithAWarmTable)
{
    forRandomEndings(random, {{4, 60}}, [&](const Hands& hands) {
        solver = std::make_unique<PlayingSolver>();
        varyTurns(*solver, random);
        solver->start(hands, allTrumps[random() % 5], allPlayers[random() % 4]);
        for (int step = 0; step < 30 && !HasFatalFailure(); ++step) {
            playOrTakeBack(*solver, random);
            expectRightInMidTrick(*solver, random);
        }
    });
}

TEST_F(Search, KnowsThePlaysThatBooksName)
{
    struct Case {
        const char* play;
        Trump trump;
        PlayerNumber leader;
        const char* hands;
        int tricks;
    };
    const Case cases[] = {
        {"squeeze", NoTrump, South, "AJ.K.. ..987. 2..5.A KQ.A..", 3},
        {"squeeze of the wrong opponent", NoTrump, South, "AJ.K.. KQ.A.. 2..5.A ..987.", 2},
        {"throw-in", NoTrump, South, "...432 ..432. AQ.2.. K3.K..", 2},
        {"throw-in with an exit", NoTrump, South, "...432 .K.43. AQ.2.. K3..2.", 1},
        {"trump coup", Spades, North, "..32. KJ... AQ... ...32", 2},
        {"trump coup without an entry", Spades, South, "..32. KJ... AQ... ...32", 1},
        {"blocked suit", NoTrump, North, "A..2. 98... KQ... ..AK.", 1},
        {"suit not blocked", NoTrump, North, "A2... 98... KQ... ..AK.", 2},
        {"overtake", NoTrump, North, "Q..2. 98... AK... ..AK.", 2},
    };
    for (const Case& example : cases) {
        const Hands hands = handsOf(example.hands);
        EXPECT_EQ(referenceTricks(hands, example.trump, example.leader), example.tricks)
            << example.play;
        solver->start(hands, example.trump, example.leader);
        EXPECT_EQ(solver->solveTricksToTake(example.leader, Trick(), -1), example.tricks)
            << example.play;
    }
}

// Of equivalent cards only the lowest is tried. In the first position the others fail with it; in
// the second a lower card has taken the place of one of them, and East takes everything.
TEST_F(Search, TellsACardFromTheUntriedOnesOfItsGroup)
{
    const Hands fails = handsOf("..QJ8.7 ...K986 ..AKT.Q ..97.JT");
    const Hands succeeds = handsOf("..QJT.7 ...KT86 ..AK7.Q ..98.J9");
    EXPECT_EQ(referenceTricks(fails, Hearts, East), 2);
    EXPECT_EQ(referenceTricks(succeeds, Hearts, East), 4);
    solver->start(fails, Hearts, East);
    CardsConfiguration relevant;
    EXPECT_LT(solver->searchStartTrick(4, East, relevant), 4);
    EXPECT_FALSE(agree(fails, succeeds, relevant));
}

TEST_F(Search, AnswersWhatIsClearWithoutTheTable)
{
    const Hands hands = handsOf("AK.A..2 ...AKQJ 32..32. ..AKQJ.");
    solver->start(hands, NoTrump, North);
    CardsConfiguration relevant;
    EXPECT_EQ(solver->searchStartTrick(0, North, relevant), 0);
    EXPECT_EQ(solver->searchStartTrick(-1, North, relevant), 0);
    EXPECT_EQ(solver->searchStartTrick(5, North, relevant), 4);
    EXPECT_EQ(relevant, 0u);
    EXPECT_EQ(solver->nodesSearched(), 0u);
    EXPECT_EQ(solver->searchStartTrick(3, North, relevant), 3);  // aces and the king
    EXPECT_EQ(solver->getTable().nodesCount(), 0u);
    EXPECT_EQ(solver->searchStartTrick(4, North, relevant), 3);
    EXPECT_NE(solver->getTable().nodesCount(), 0u);
}

}  // namespace trikon
