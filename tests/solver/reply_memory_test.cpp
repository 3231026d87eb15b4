// The memory of replies: what it keeps apart, and that it is gone after a reset.
#include "solver/reply_memory.h"

#include "cards/hands.h"
#include "solver/dd_solver.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <set>

namespace trikon {

namespace {

constexpr std::uint16_t deuce = 1;
constexpr std::uint16_t ten = 1 << 8;
constexpr std::uint16_t ace = 1 << 12;

}  // namespace

TEST(ReplyMemory, TellsTheLastCardOfTheSameChoice)
{
    const auto memory = std::make_unique<ReplyMemory>();
    const std::uint32_t choice = ReplyMemory::choice(1, East, ace | ten, Trick(Hearts, 1 << 9));
    EXPECT_EQ(memory->card(choice), 0);
    for (const std::uint16_t card : {ace, deuce, ten}) {
        memory->remember(choice, card);
        EXPECT_EQ(memory->card(choice), card);
    }
    memory->clear();
    EXPECT_EQ(memory->card(choice), 0);
}

TEST(ReplyMemory, KeepsChoicesApartThatDifferInOneThing)
{
    std::set<std::uint32_t> choices{0};
    unsigned count = 1;
    for (const int position : {1, 2}) {
        for (const PlayerNumber player : {North, East, South, West}) {
            for (std::uint8_t suit = Clubs; suit <= Spades; ++suit) {
                for (const std::uint16_t toBeat : {deuce, ten, ace}) {
                    for (const std::uint16_t inPlay : {deuce, ten, fullSuit}) {
                        choices.insert(
                            ReplyMemory::choice(position, player, inPlay, Trick(suit, toBeat)));
                        ++count;
                    }
                }
            }
        }
    }
    EXPECT_EQ(choices.size(), count);
}

// Far more choices than there are places, all of the same hand's suit.
TEST(ReplyMemory, NeverAnswersForAnotherChoice)
{
    const auto memory = std::make_unique<ReplyMemory>();
    const auto choiceOf = [](std::uint16_t inPlay, int toBeat) {
        return ReplyMemory::choice(2, West, inPlay,
                                   Trick(Spades, static_cast<std::uint16_t>(1U << toBeat)));
    };
    const auto cardFor = [](std::uint16_t inPlay, int toBeat) {
        return static_cast<std::uint16_t>(1U << (inPlay + toBeat) % ranksOfSuit);
    };
    for (std::uint16_t inPlay = 1; inPlay < holdingsOfSuit; ++inPlay) {
        for (int toBeat = 0; toBeat < ranksOfSuit; ++toBeat) {
            memory->remember(choiceOf(inPlay, toBeat), cardFor(inPlay, toBeat));
        }
    }
    int known = 0;
    for (std::uint16_t inPlay = 1; inPlay < holdingsOfSuit; ++inPlay) {
        for (int toBeat = 0; toBeat < ranksOfSuit; ++toBeat) {
            const std::uint16_t card = memory->card(choiceOf(inPlay, toBeat));
            if (card != 0) {
                ASSERT_EQ(card, cardFor(inPlay, toBeat)) << inPlay << ' ' << toBeat;
                ++known;
            }
        }
    }
    EXPECT_GT(known, 10000);
}

TEST(ReplyMemory, IsEmptiedWithWhatWasProved)
{
    const auto solver = std::make_unique<DDSolver>();
    Hands hands;
    const char* const texts[] = {"KQ3.Q8.Q54.QJT42", "JT.9653.9762.A83", "864.J742.AJ83.96",
                                 "A9752.AKT.KT.K75"};
    for (int player = 0; player < playersCount; ++player) {
        hands[player] = readWholeHand(texts[player]);
    }
    solver->setHands(hands);
    const auto nodesOfAnswer = [&] {
        const std::uint64_t before = solver->nodesSearched();
        solver->solveTricksToTake(North, Trick(), -1);
        return solver->nodesSearched() - before;
    };
    const std::uint64_t first = nodesOfAnswer();
    solver->reset();
    EXPECT_EQ(nodesOfAnswer(), first);
}

}  // namespace trikon
