// Who wins a trick, and whether the winner's rank was ever compared.
#include "solver/trick.h"

#include "support/endings.h"
#include "support/literals.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

namespace trikon {

TEST(Trick, IsWonByTheHighestTrumpOrElseByTheHighestCardOfTheSuitLed)
{
    struct Case {
        Trump trump;
        const char* hands;  // one card each, North leads
        std::int8_t count;
        const char* trick;
    };
    const Case cases[] = {
        {NoTrump, "2... ... ... ...", 0, ".."},
        {NoTrump, "2... ... ... ...", 1, "S..2S"},
        {NoTrump, "T... 9... J... Q...", 4, "S..QS!"},
        {NoTrump, "T... 9... 8... .A..", 4, "S..TS!"},
        {NoTrump, "2... .A.. ..A. ...A", 4, "S..2S"},  // nobody followed
        {Hearts, "A... .2.. K... Q...", 4, "S..2H"},   // one ruff
        {Hearts, "A... .3.. .2.. K...", 4, "S..3H!"},  // a lower trump on a ruff
        {Hearts, "A... .3.. .5.. ..A.", 4, "S..5H!"},  // an over-ruff
        {Hearts, ".3.. .5.. A... .2..", 4, "H..5H!"},
        {Hearts, ".3.. A... A... A...", 4, "H..3H"},
        {Clubs, "A... .3.. K... ...", 3, "S..AS!"},
    };
    const auto deal = std::make_unique<Deal>();
    for (const Case& example : cases) {
        const Hands hands = handsOf(example.hands);
        static_cast<Hands&>(*deal) = hands;
        const Trick trick(example.trump, *deal, fullDeck, example.count, North);
        std::ostringstream out;
        out << trick;
        EXPECT_EQ(out.str(), example.trick) << example.hands;
    }
}

TEST(Trick, TakesOnlyTheCardsGivenAndStartsWithTheLeader)
{
    const auto deal = std::make_unique<Deal>();
    static_cast<Hands&>(*deal) = handsOf("AK... QJ... T9... 87...");
    const Trick trick(NoTrump, *deal, hand("KJT8..."), 3, East);
    Trick same(Spades, hand("J...").suit(Spades));
    same.add(NoTrump, hand("T..."));
    same.add(NoTrump, Spades, hand("8...").suit(Spades));
    EXPECT_EQ(trick, same);
    EXPECT_EQ(Trick(NoTrump, *deal, {}, 0, East), Trick());
}

}  // namespace trikon
