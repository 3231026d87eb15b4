// Whole deals whose results an independent solver has worked out. Positions in play are asked of
// the finished program.
#include "solver/dd_solver.h"
#include "support/endings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

namespace trikon {

namespace {

void expectAllTricks(DDSolver& solver, const SolvedDeal& deal)
{
    solver.setHands(deal.hands);
    auto tricks = deal.tricks.begin();
    for (const Trump trump : {Spades, Hearts, Diamonds, Clubs, NoTrump}) {
        solver.set_trump_suit(trump);
        for (const PlayerNumber declarer : {North, East, South, West}) {
            const std::int8_t defence = solver.solveTricksToTake(nextPlayer(declarer), Trick(), -1);
            EXPECT_EQ(cardsOfHand - defence, *tricks++) << describe(deal.hands, trump, declarer);
        }
    }
}

void expectFile(const std::string& fileName, unsigned part, unsigned parts)
{
    const std::vector<SolvedDeal> deals = solvedDeals(fileName);
    const auto solver = std::make_unique<DDSolver>();
    const std::size_t count = std::min<std::size_t>(
        deals.size(), static_cast<std::size_t>(effort(static_cast<int>(deals.size()))));
    for (std::size_t number = part; number < count; number += parts) {
        expectAllTricks(*solver, deals[number]);
    }
}

}  // namespace

TEST(SolvedDeals, RandomDealsFirstHalf) { expectFile("tables.txt", 0, 2); }

TEST(SolvedDeals, RandomDealsSecondHalf) { expectFile("tables.txt", 1, 2); }

TEST(SolvedDeals, WildDealsFirstHalf) { expectFile("freaks.txt", 0, 2); }

TEST(SolvedDeals, WildDealsSecondHalf) { expectFile("freaks.txt", 1, 2); }

}  // namespace trikon
