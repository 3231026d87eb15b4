// The questions that callers ask, each against playing the cards out by the plain search.
#include "solver/dd_solver.h"

#include "support/endings.h"
#include "support/playing_solver.h"
#include "support/reference_solver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>

namespace trikon {

namespace {

class CountingSolver : public DDSolver {
public:
    void reset() override
    {
        ++resets;
        DDSolver::reset();
    }
    int resets = 0;
};

constexpr PlayerNumber allPlayers[] = {North, East, South, West};

std::vector<Move> movesOf(const PlayingSolver& solver)
{
    std::vector<Move> moves;
    for (const OneCardInSuit card : solver.legalCards()) {
        moves.push_back({card.card, card.suit, -7});
    }
    return moves;
}

const Move* firstOfTheBest(const std::vector<Move>& moves)
{
    return &*std::max_element(moves.begin(), moves.end(), [](const Move& one, const Move& other) {
        return one.value < other.value;
    });
}

// The tricks of the side to play, by the plain search, once it has played `card`.
int tricksAfter(PlayingSolver& solver, OneCardInSuit card)
{
    const PlayerNumber player = solver.player;
    const int before = solver.tricksLeft();
    solver.play(card);
    const bool trickComplete = solver.onTable.empty();
    const bool sameSide = ((solver.player ^ player) & 1) == 0;
    const int next =
        referenceTricks(solver.handsLeft(), solver.getTrump(), solver.player, solver.onTable);
    solver.takeBack();
    if (!trickComplete) {
        return before - next;
    }
    return sameSide ? next + 1 : before - 1 - next;
}

// The cards that take most, by the plain search.
CardsConfiguration bestCards(PlayingSolver& solver)
{
    CardsConfiguration best;
    int most = -1;
    for (const OneCardInSuit card : solver.legalCards()) {
        const int tricks = tricksAfter(solver, card);
        if (tricks > most) {
            most = tricks;
            best = {};
        }
        best |= tricks == most ? CardsConfiguration(card) : CardsConfiguration();
    }
    return best;
}

// A proved count that reaches the target, or a limit below it.
void expectBound(int value, int target, int truth)
{
    EXPECT_EQ(value >= target, truth >= target);
    EXPECT_TRUE(value >= target ? value <= truth : value >= truth) << value << ", " << truth;
}

class DDSolverTest : public testing::Test {
protected:
    // A random ending with `cardsPlayed` cards played from it.
    void startAt(int cardsPlayed, int length = 3)
    {
        const EndingKind kind = allEndingKinds[random() % std::size(allEndingKinds)];
        solver = std::make_unique<PlayingSolver>();
        solver->start(randomEnding(random, length, kind), static_cast<Trump>(random() % 5),
                      allPlayers[random() % 4]);
        for (int count = 0; count < cardsPlayed; ++count) {
            solver->playRandomCard(random);
        }
    }

    std::mt19937_64 random{99};
    std::unique_ptr<PlayingSolver> solver = std::make_unique<PlayingSolver>();
};

}  // namespace

TEST_F(DDSolverTest, StartsWithAnEmptyDealAtNoTrump)
{
    EXPECT_EQ(solver->getTrump(), NoTrump);
    EXPECT_EQ(solver->getSituation().cardsCount, 0);
    EXPECT_EQ(solver->solveTricksToTake(North, Trick(), -1), 0);
}

TEST_F(DDSolverTest, ForgetsOnlyWhenTheTrumpChanges)
{
    const auto counting = std::make_unique<CountingSolver>();
    counting->setHands(randomEnding(random, 6, EndingKind::topRanks));
    counting->set_trump_suit(Hearts);
    const int resets = counting->resets;
    counting->solveTricksToTake(North, Trick(), -1);
    const std::size_t known = counting->getTable().nodesCount();
    EXPECT_GT(known, 0u);
    counting->set_trump_suit(Hearts);
    EXPECT_EQ(counting->resets, resets);
    EXPECT_EQ(counting->getTable().nodesCount(), known);
    counting->set_trump_suit(Spades);
    EXPECT_EQ(counting->resets, resets + 1);
    EXPECT_EQ(counting->getTrump(), Spades);
    EXPECT_EQ(counting->getTable().nodesCount(), 0u);
}

TEST_F(DDSolverTest, SolvesAPartOfADealThatItShares)
{
    for (int round = 0; round < 20; ++round) {
        startAt(4 * (round % 3), 4);
        const auto other = std::make_unique<DDSolver>();
        other->set_trump_suit(solver->getTrump());
        other->setDeal(solver->getDeal());
        EXPECT_EQ(other->getDeal(), solver->getDeal());
        other->resetToSituation(solver->getSituation().cards);
        EXPECT_EQ(other->getSituation().counts, solver->getSituation().counts);
        const Hands left = solver->handsLeft();
        EXPECT_EQ(other->solveTricksToTake(solver->player, Trick(), -1),
                  referenceTricks(left, solver->getTrump(), solver->player));
    }
}

TEST_F(DDSolverTest, AnyGuessGivesTheSameCount)
{
    for (int cardsPlayed = 0; cardsPlayed < 8; ++cardsPlayed) {
        startAt(cardsPlayed);
        const int truth = referenceTricks(solver->handsLeft(), solver->getTrump(), solver->player,
                                          solver->onTable);
        for (std::int8_t guess = -1; guess < 6; ++guess) {
            EXPECT_EQ(solver->solveTricksToTake(solver->player, solver->trick, guess), truth);
        }
    }
}

TEST_F(DDSolverTest, AnalysesEachCardAndAnswersTheFirstOfTheBest)
{
    for (int round = 0; round < effort(120); ++round) {
        startAt(round % 12);
        std::vector<Move> moves = movesOf(*solver);
        std::reverse(moves.begin(), moves.end());
        Move* const end = moves.data() + moves.size();
        const Move* const best =
            solver->analizeAll(solver->player, solver->trick, moves.data(), end);
        for (const Move& move : moves) {
            EXPECT_EQ(move.value, tricksAfter(*solver, {move.suit, move.card}));
        }
        EXPECT_EQ(best, firstOfTheBest(moves));
        EXPECT_EQ(solver->analizeAll(solver->player, solver->trick, end, end), end);
    }
}

TEST_F(DDSolverTest, ApproximatesEachCardAgainstATarget)
{
    for (int round = 0; round < effort(400); ++round) {
        startAt(round % 12);
        std::vector<Move> moves = movesOf(*solver);
        const auto target =
            static_cast<std::int8_t>(random() % static_cast<unsigned>(solver->tricksLeft() + 2));
        Move* const end = moves.data() + moves.size();
        const Move* const best =
            solver->approxAll(target, solver->player, solver->trick, moves.data(), end, false);
        EXPECT_EQ(best, firstOfTheBest(moves));
        std::vector<int> truths;
        for (const Move& move : moves) {
            truths.push_back(tricksAfter(*solver, {move.suit, move.card}));
            expectBound(move.value, target, truths.back());
        }
        EXPECT_EQ(solver->winLooseAll(target, solver->player, solver->trick, moves.data(), end),
                  best);
        for (std::size_t number = 0; number < moves.size(); ++number) {
            EXPECT_EQ(moves[number].value, truths[number] >= target ? 1 : 0);
        }
    }
}

TEST_F(DDSolverTest, StopsAtTheFirstCardThatReachesTheTarget)
{
    solver->start(handsOf("2.AK.. 3..AK. A..32. 4.32.."), NoTrump, North);
    std::vector<Move> moves{{1, Spades, -7}, {1 << 12, Hearts, -7}, {1 << 11, Hearts, -7}};
    Move* const end = moves.data() + moves.size();
    // Once South has won the spade he has only diamonds to lead; both hearts win all three.
    EXPECT_EQ(solver->approxAll(3, North, Trick(), moves.data(), end, true), &moves[1]);
    EXPECT_LT(moves[0].value, 3);
    EXPECT_EQ(moves[1].value, 3);
    EXPECT_EQ(moves[2].value, -7);
    const std::uint64_t nodes = solver->nodesSearched();
    moves[0].value = -7;
    moves[1].value = -7;
    EXPECT_EQ(solver->approxAll(0, North, Trick(), moves.data(), end, true), moves.data());
    EXPECT_EQ(moves[0].value, 0);
    EXPECT_EQ(moves[1].value, -7);
    EXPECT_EQ(solver->nodesSearched(), nodes);
    EXPECT_EQ(solver->approxAll(3, North, Trick(), end, end, true), end);
}

TEST_F(DDSolverTest, AnalysesEveryTrumpInMidTrick)
{
    for (int round = 0; round < effort(60); ++round) {
        startAt(round % 12);
        const Trump trump = solver->getTrump();
        std::vector<OneCardInSuit> lastFirst(solver->onTable.rbegin(), solver->onTable.rend());
        std::array<unsigned, trumpsCount> tricks{};
        solver->analizeAllSuits(solver->player, lastFirst.data(), tricks);
        for (unsigned other = Clubs; other <= NoTrump; ++other) {
            EXPECT_EQ(tricks[other], static_cast<unsigned>(referenceTricks(
                                         solver->handsLeft(), static_cast<Trump>(other),
                                         solver->player, solver->onTable)));
        }
        EXPECT_EQ(solver->getTrump(), trump);
        EXPECT_EQ(solver->getTable().nodesCount(), 0u);
    }
}

TEST_F(DDSolverTest, NamesTheBestCardsAlongAPlay)
{
    for (int round = 0; round < effort(60); ++round) {
        startAt(0);
        const PlayerNumber leader = solver->player;
        std::vector<OneCardInSuit> play;
        std::vector<CardsConfiguration> expected{bestCards(*solver)};
        for (int left = static_cast<int>(random() % 13); left > 0; --left) {
            const std::vector<OneCardInSuit> legal = solver->legalCards();
            play.push_back(legal[random() % legal.size()]);
            solver->play(play.back());
            expected.push_back(bestCards(*solver));
        }
        while (solver->canTakeBack()) {
            solver->takeBack();
        }
        EXPECT_EQ(solver->allBest(leader, play), expected);
    }
}

}  // namespace trikon
