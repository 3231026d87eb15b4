// Playing and taking back cards: whose turn it is, what may be played, and what the solver then
// says.
#include "solver/interactive_dd_solver.h"

#include "support/literals.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

namespace trikon {

namespace {

// Three cards each; West leads. Hearts are trumps where a test needs some.
std::unique_ptr<InteractiveDDSolver> solverOfEnding(Trump trump = NoTrump)
{
    auto solver = std::make_unique<InteractiveDDSolver>();
    solver->setHands(hands("AK.2..", "54..2.", "76.A..", "QJ...K"));
    solver->set_trump_suit(trump);
    solver->setFirstLeader(West);
    return solver;
}

std::string historyOf(const InteractiveDDSolver& solver)
{
    std::ostringstream out;
    out << solver.playedCards();
    return out.str();
}

TEST(InteractiveDDSolver, TheTurnPassesClockwiseAndToTheWinnerOfATrick)
{
    const auto solver = solverOfEnding(Hearts);
    EXPECT_EQ(solver->playerToPlay(), West);
    EXPECT_FALSE(solver->unplayLastTrick());
    EXPECT_FALSE(solver->unplayLastCard());

    solver->doCommands("SQ SK S4", false);
    EXPECT_EQ(solver->playerToPlay(), South);
    EXPECT_EQ(solver->playerWhoPlayLastCard(), East);
    solver->doCommands("S6", false);
    EXPECT_EQ(solver->playerToPlay(), North);
    solver->doCommands("SA S5 S7 SJ H2 D2", false);
    EXPECT_EQ(historyOf(*solver), "SQ SK S4 S6|SA S5 S7 SJ|H2 D2");
    EXPECT_EQ(solver->getSituation().cardsCount, 2);
    EXPECT_EQ(solver->playerToPlay(), South);
}

TEST(InteractiveDDSolver, TakingBackRestoresThePosition)
{
    const auto solver = solverOfEnding();
    const Situation before = solver->getSituation();
    solver->doCommands("SQ SK S4 S6 SA S5", false);
    EXPECT_TRUE(solver->unplayLastTrick());
    EXPECT_EQ(historyOf(*solver), "SQ SK S4 S6") << "only what was played of the second trick";
    EXPECT_TRUE(solver->unplayLastTrick());
    EXPECT_EQ(historyOf(*solver), "") << "a whole trick at once";

    solver->doCommands("SQ SK", false);
    EXPECT_TRUE(solver->unplayLastCards(0));
    EXPECT_FALSE(solver->unplayLastCards(3));
    EXPECT_EQ(solver->getSituation().cards, before.cards);
    EXPECT_EQ(solver->getSituation().counts, before.counts);
    EXPECT_EQ(solver->getSituation().cardsCount, before.cardsCount);
}

TEST(InteractiveDDSolver, OnlyCardsInPlayOfTheRightHandArePlayed)
{
    const auto solver = solverOfEnding();
    EXPECT_FALSE(solver->playCard(Spades, 0x1000, false)) << "North's ace, but West leads";
    EXPECT_TRUE(solver->playCard(Spades, 0x1000, true)) << "anybody may lead";
    EXPECT_FALSE(solver->playCard(Spades, 0x1000, true)) << "played already";
    EXPECT_EQ(solver->playerToPlay(), East);
    EXPECT_EQ(solver->cardsPossibleToPlay(Diamonds), 0) << "a spade must be followed";
    EXPECT_EQ(solver->cardsPossibleToPlay(Spades), 0x000c);
    solver->doCommands("S4 S6", false);
    solver->doCommands("CK", false);
    EXPECT_EQ(historyOf(*solver), "SA S4 S6 CK") << "a revoke is the caller's affair";
}

TEST(InteractiveDDSolver, WhatACardLeavesOutIsDeduced)
{
    // Each line: the commands, and the history that they leave.
    const std::pair<const char*, const char*> cases[] = {
        {"sq", "SQ"},
        {"QS", "SQ"},
        {"S", "SJ"},
        {"Sx", "SJ"},
        {"xS", "SJ"},
        {"Q", "SQ"},
        {"SQ x", "SQ SK"},
        {"SQ K x 7", "SQ SK S4 S7"},
        {"SQ x x x S x", "SQ SK S4 S6|SA S5"},
        {"CK S", "CK SK"},
        {"CK 2", "CK H2"},
        {"CK 2 2", "CK H2 D2"},
        {"SJ S S S u", "SJ SK S4"},
        {"SJ S S S ut", ""},
        {"SJ S S S A UT", "SJ SK S4 S6"},
        {"SJ S S ua SQ", "SQ"},
        {"ua u ut", ""},
        {"SJ undo up", "SJ"},
        {" SJ \n SA\tS4 ", "SJ SA S4"},
        {"", ""},
    };
    for (const auto& [commands, history] : cases) {
        const auto solver = solverOfEnding();
        solver->doCommands(commands, false);
        EXPECT_EQ(historyOf(*solver), history) << commands;
    }
}

TEST(InteractiveDDSolver, TheTenIsWrittenInEitherWay)
{
    std::uint16_t card = 0;
    int suit = 0;
    for (const char* word : {"10S", "S10", "Ts", "st"}) {
        EXPECT_EQ(tryParseMove(word, card, suit), word + std::string(word).size());
        EXPECT_EQ(card, 0x0100) << word;
        EXPECT_EQ(suit, Spades) << word;
    }
    EXPECT_EQ(tryParseMove("", card, suit), nullptr);
    EXPECT_EQ(tryParseMove("1", card, suit), nullptr);
}

TEST(InteractiveDDSolver, ABadCommandIsReportedAndWhatWasPlayedStays)
{
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"SQ SKx", "Error in \"SKx\" at position 3: unexpected character \"x\"", "SQ"},
        {"hello", "Error in \"hello\" at position 2: unexpected character \"e\"", ""},
        {"play", "Error in \"play\": unrecognized command", ""},
        {"utx", "Error in \"utx\" at position 3: unexpected character \"x\"", ""},
        {"uaa", "Error in \"uaa\" at position 3: unexpected character \"a\"", ""},
        {"SA", "Error in \"SA\": can't play chosen card", ""},
        {"SQ SQ", "Error in \"SQ\": can't play chosen card", "SQ"},
        {"x", "Error in \"x\": can't play chosen card", ""},
        {"SQ 9", "Error in \"9\": can't play chosen card", "SQ"},
        {"D", "Error in \"D\": can't play chosen card", ""},
        {"CK x", "Error in \"x\": can't play chosen card", "CK"},
        {"CK K x", "Error in \"x\": can't play chosen card", "CK SK"},
    };
    for (const auto& [commands, message, history] : cases) {
        const auto solver = solverOfEnding();
        EXPECT_EQ(errorOf([&, text = commands] { solver->doCommands(text, false); }), message);
        EXPECT_EQ(historyOf(*solver), history) << commands;
    }
}

TEST(InteractiveDDSolver, QuestionsAreAboutThePositionReached)
{
    const auto solver = solverOfEnding();
    EXPECT_EQ(solver->getTricksToTake(), 1) << "West takes the king of clubs or nothing but that";
    EXPECT_TRUE(solver->canTake(1));
    EXPECT_FALSE(solver->canTake(2));

    solver->doCommands("SQ SA S4 S6", false);
    EXPECT_EQ(solver->getTricksToTake(), 2);
    Move moves[] = {solver->generateMove(Spades, 0x0800), solver->generateMove(Hearts, 0x0001)};
    EXPECT_EQ(solver->analizeAll(moves, moves + 2), moves);
    EXPECT_EQ(moves[0].value, 2);
    EXPECT_EQ(moves[1].value, 2);
    solver->approxAll(2, moves, moves + 2);
    EXPECT_GE(moves[0].value, 2);

    std::int8_t takers[4];
    solver->getTricksTakers(takers);
    EXPECT_EQ(takers[North], 1);
    EXPECT_EQ(takers[East] + takers[South] + takers[West], 0);
}

TEST(PlayedCardsVector, TricksAreRebuiltFromTheHistory)
{
    PlayedCardsVector played;
    EXPECT_EQ(played.currentTrick(NoTrump), Trick());
    for (const OneCardInSuit card :
         {OneCardInSuit{Spades, 0x400}, OneCardInSuit{Spades, 0x800}, OneCardInSuit{Hearts, 0x001},
          OneCardInSuit{Spades, 0x010}, OneCardInSuit{Clubs, 0x1000}}) {
        played.add(card);
    }
    EXPECT_EQ(played.NthTrick(NoTrump, 0).winningCard, 0x800);
    EXPECT_EQ(played.NthTrick(Hearts, 0).winningSuit, Hearts);
    EXPECT_EQ(played.NthTrick(Hearts, 2), Trick());
    EXPECT_EQ(played.lastTrick(Hearts), Trick(Clubs, 0x1000));
    EXPECT_EQ(played.whenPlayed({Hearts, 0x001}), 2);
    EXPECT_EQ(played.whenPlayed({Hearts, 0x002}), -1);
    OneCardInSuit onTable[3];
    EXPECT_EQ(played.getLastTrickCardsInPlayOrder(onTable)[0], (OneCardInSuit{Clubs, 0x1000}));
}

}  // namespace

}  // namespace trikon
