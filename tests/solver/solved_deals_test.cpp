// Whole deals and plays whose results an independent solver has worked out.
#include "cards/card_text.h"
#include "solver/dd_solver.h"
#include "support/endings.h"
#include "support/playing_solver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <sstream>
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

// The tricks of declarer's side when all play their best after the given cards.
int tricksAfterPlay(PlayingSolver& solver, PlayerNumber declarer, const std::string& cards)
{
    int won = 0;
    std::istringstream words(cards);
    for (std::string word; words >> word;) {
        solver.play(
            {static_cast<std::uint8_t>(charToSuitNumber(word[0])), charToSuitCard(word[1])});
        won += solver.onTable.empty() && ((solver.player ^ declarer) & 1) == 0 ? 1 : 0;
    }
    const std::int8_t tricks = solver.solveTricksToTake(solver.player, solver.trick, -1);
    const bool declarersSide = ((solver.player ^ declarer) & 1) == 0;
    return won + (declarersSide ? tricks : solver.tricksLeft() - tricks);
}

}  // namespace

TEST(SolvedDeals, RandomDealsFirstHalf) { expectFile("tables.txt", 0, 2); }

TEST(SolvedDeals, RandomDealsSecondHalf) { expectFile("tables.txt", 1, 2); }

TEST(SolvedDeals, WildDealsFirstHalf) { expectFile("freaks.txt", 0, 2); }

TEST(SolvedDeals, WildDealsSecondHalf) { expectFile("freaks.txt", 1, 2); }

TEST(SolvedDeals, PositionsInPlay)
{
    std::ifstream file(TAMREL_TEST_DATA "positions.txt");
    int left = effort(300);
    for (std::string line; left-- > 0 && std::getline(file, line);) {
        std::istringstream fields(line.substr(2));
        std::array<std::string, 5> field;
        for (std::string& text : field) {
            std::getline(fields, text, '|');
        }
        const auto solver = std::make_unique<PlayingSolver>();
        const PlayerNumber declarer = charToPlayer(field[1][0]);
        solver->start(handsOf(field[0]), charToTrump(field[2][0]), nextPlayer(declarer));
        EXPECT_EQ(tricksAfterPlay(*solver, declarer, field[3]), std::stoi(field[4])) << line;
    }
    EXPECT_LE(left, 0) << "too few positions";
}

}  // namespace trikon
