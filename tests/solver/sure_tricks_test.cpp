// The last trick, and the count of tricks to cash as a promise about every position it covers.
#include "solver/sure_tricks.h"

#include "support/endings.h"
#include "support/reference_solver.h"

#include <gtest/gtest.h>

#include <gmock/gmock.h>
#include <memory>
#include <type_traits>

namespace trikon {

namespace {

struct Count {
    int tricks;
    CardsConfiguration winners;
};

struct TrumpTricks {
    int tricks;
    std::uint16_t ranks;
};

TrumpTricks sureTrumps(Trump trump, PlayerNumber player, const Deal& deal)
{
    const std::uint16_t trumps = deal.allCards().suit(trump);
    const SureTrumps sure = deal.sureTrumps(player, trump, deal.order(trump, trumps));
    return {sure.tricks, _highest_mask[trumps][sure.depth]};
}

// Calls `function` with the trump as a constant.
template <class Function>
auto withTrump(Trump trump, Function function)
{
    switch (trump) {
    case Clubs: return function(std::integral_constant<int, Clubs>());
    case Diamonds: return function(std::integral_constant<int, Diamonds>());
    case Hearts: return function(std::integral_constant<int, Hearts>());
    case Spades: return function(std::integral_constant<int, Spades>());
    default: return function(std::integral_constant<int, NoTrump>());
    }
}

Count count(Trump trump, PlayerNumber leader, const Deal& deal)
{
    return withTrump(trump, [&](auto constant) -> Count {
        QuickTricks<constant> quickTricks;
        const CardsConfiguration inPlay = deal.allCards();
        const int tricks =
            quickTricks(leader, deal, inPlay, static_cast<std::int8_t>(inPlay.count() / 4));
        return {tricks, quickTricks.winners()};
    });
}

// The same for the side of `second` after a lead of the suit.
Count countAfterLead(Trump trump, PlayerNumber second, int suit, const Deal& deal)
{
    return withTrump(trump, [&](auto constant) -> Count {
        QuickTricks<constant> quickTricks;
        const CardsConfiguration inPlay = deal.allCards();
        const int tricks = quickTricks.afterLead(second, deal, inPlay, suit,
                                                 static_cast<std::int8_t>(inPlay.count() / 4));
        return {tricks, quickTricks.winners()};
    });
}

bool mayCash(int target, Trump trump, PlayerNumber player, const Deal& deal)
{
    const Situation situation(deal.allCards(), deal);
    return withTrump(trump, [&](auto constant) {
        return QuickTricks<constant>::mayCash(target, player, deal, situation);
    });
}

std::unique_ptr<Deal> dealOf(const Hands& hands)
{
    auto deal = std::make_unique<Deal>();
    deal->setHands(hands);
    return deal;
}

// The tricks counted can be taken, whatever is dealt to the hands outside the winners' ranks.
void expectPromiseKept(std::mt19937_64& random, const Hands& hands, Trump trump,
                       PlayerNumber leader)
{
    const auto deal = dealOf(hands);
    const Count sure = count(trump, leader, *deal);
    ASSERT_TRUE(mayCash(sure.tricks, trump, leader, *deal)) << describe(hands, trump, leader);
    SCOPED_TRACE(str_contat(sure.tricks, " in ", describe(hands, trump, leader), " on ",
                            CardsConfiguration(coverOf(sure.winners) & fullDeck)));
    ASSERT_TRUE(referenceCanTake(hands, trump, leader, sure.tricks));
    for (int round = 0; sure.tricks > 0 && round < 3; ++round) {
        const Hands other = shuffledOutside(random, hands, coverOf(sure.winners));
        ASSERT_TRUE(referenceCanTake(other, trump, leader, sure.tricks))
            << "not in " << describe(other, trump, leader);
    }
}

// North and South take so many tricks, whichever card of the suit West leads.
void expectTakenAfterLeads(const Hands& hands, Trump trump, int suit, int tricks)
{
    for (unsigned cards = hands[West].suit(suit); cards != 0; cards &= cards - 1) {
        const OneCardInSuit lead{static_cast<std::uint8_t>(suit),
                                 lowestCard(static_cast<std::uint16_t>(cards))};
        Hands left = hands;
        left[West].remove(lead);
        ASSERT_TRUE(referenceCanTake(left, trump, North, tricks, {&lead, 1}))
            << tricks << " in " << describe(hands, trump, West);
    }
}

}  // namespace

TEST(LastTrick, GoesToTheHighestTrumpOrElseToTheHighestCardOfTheSuitLed)
{
    struct Case {
        Trump trump;
        const char* hands;
        bool northWins;
        const char* relevant;  // the lowest rank that matters, nothing if none does
    };
    const Case cases[] = {
        {NoTrump, "2... .A.. ..A. ...A", true, "..."},
        {NoTrump, "2... 3... ..A. ...A", false, "3..."},
        {NoTrump, "2... 3... 4... ...A", true, "4..."},
        {Hearts, "A... .2.. K... Q...", false, "..."},
        {Hearts, "A... .2.. .3.. Q...", true, ".3.."},
        {Hearts, "2... 3... K... ...A", true, "K..."},
    };
    const auto solver = std::make_unique<DDSolver>();
    for (const Case& example : cases) {
        solver->setHands(handsOf(example.hands));
        CardsConfiguration relevant;
        const bool wins = example.trump == Hearts
                              ? solver->searchLastTrick<Hearts>(North, relevant)
                              : solver->searchLastTrick<NoTrump>(North, relevant);
        EXPECT_EQ(wins, example.northWins) << example.hands;
        EXPECT_EQ(relevant, coverOf(readWholeHand(example.relevant))) << example.hands;
    }
}

TEST(QuickTricks, CountSuitAfterSuitFromTheHandOnLead)
{
    struct Case {
        Trump trump;
        const char* hands;  // North leads
        int tricks;
    };
    const Case cases[] = {
        {NoTrump, "AK.A..2 ...AKQJ 32..32. ..AKQJ.", 3},
        {NoTrump, "32.2.. 98..5. AK.A.. 76...3", 3},     // over to South in hearts
        {NoTrump, "32.2.. AK..A. 54.A.. QJ...A", 1},     // spades are the opponents'
        {Spades, "A.AK.. 2..32. 3..54. 4.987..", 3},     // the trump is drawn
        {Spades, "A.AKQ.. 32.2.2. 4..543. 65.93..", 2},  // East follows to one heart, then ruffs
        {Spades, ".AK..2 ...543 2..AK. ..987.", 3},      // nobody can ruff, the trump comes last
        {Spades, "32.AK.. AJ.93.. 54.2.2. KQ.54..", 2},  // no sure trump, and nobody ruffs a heart
    };
    for (const Case& example : cases) {
        const auto deal = dealOf(handsOf(example.hands));
        EXPECT_EQ(count(example.trump, North, *deal).tricks, example.tricks) << example.hands;
    }
}

TEST(QuickTricks, CountNoMoreRoundsThanAreLeft)
{
    const auto deal = dealOf(handsOf("AKQ.A.. 432..2. 765.2.. JT9...2"));
    EXPECT_EQ(count(NoTrump, North, *deal).tricks, 4);
    QuickTricks<NoTrump> quickTricks;
    EXPECT_EQ(quickTricks(North, *deal, deal->allCards(), 2), 2);
    EXPECT_EQ(quickTricks.winners(), readWholeHand("A.A.."));
}

// Found by comparing counts with searches. In each, a plausible way of counting goes one too far.
TEST(QuickTricks, DoNotCountTooMuch)
{
    struct Case {
        Trump trump;
        PlayerNumber leader;
        const char* hands;
        int truth;
    };
    const Case cases[] = {
        // A run that ends in the other hand is not one that ends here.
        {Hearts, West, "T7..K4. .KQ3.T. .T9.76. A3.64..", 3},
        // Two clubs cost North a heart that the run in hearts needs.
        {NoTrump, South, ".AJT72.. ...J7542 .94..AQ8 .K865..3", 4},
        {Spades, South, ".AJT72.. ...J7542 .94..AQ8 .K865..3", 4},
    };
    for (const Case& example : cases) {
        const Hands hands = handsOf(example.hands);
        EXPECT_EQ(referenceTricks(hands, example.trump, example.leader), example.truth);
        EXPECT_LE(count(example.trump, example.leader, *dealOf(hands)).tricks, example.truth)
            << example.hands;
    }
}

TEST(QuickTricks, RelyOnWhichPartnerWins)
{
    // The same lengths and the same top cards. Only in the first is the ten of hearts dropped where
    // it does not block, so a count of three has to stand on the low hearts.
    const Hands three = handsOf("J.953.. T53.T.. .A874.. A2.KQ..");
    const Hands two = handsOf("5.Q85.. T32.7.. .AT94.. AJ.K3..");
    EXPECT_EQ(referenceTricks(three, NoTrump, West), 3);
    EXPECT_EQ(referenceTricks(two, NoTrump, West), 2);
    const Count sure = count(NoTrump, West, *dealOf(three));
    EXPECT_TRUE(sure.tricks <= 2 || !agree(three, two, coverOf(sure.winners)));
}

TEST(QuickTricks, HoldWhateverTheOtherCardsAre)
{
    std::mt19937_64 random(11);
    forRandomEndings(random, {{2, 400}, {3, 400}, {4, 400}, {5, 60}}, [&](const Hands& hands) {
        for (const Trump trump : {Clubs, Diamonds, Hearts, Spades, NoTrump}) {
            for (const PlayerNumber leader : {North, East, South, West}) {
                expectPromiseKept(random, hands, trump, leader);
            }
        }
    });
}

// Whichever card of the suit is led, and whatever is dealt to the hands outside the winners' ranks.
TEST(QuickTricks, AreCashedAfterALeadThatTheSecondHandsSideWins)
{
    std::mt19937_64 random(13);
    int counted[trumpsCount] = {};
    const auto expectKept = [&](const Hands& hands, Trump trump, int suit) {
        const auto deal = dealOf(hands);
        const Count sure = countAfterLead(trump, North, suit, *deal);
        counted[trump] += sure.tricks;
        ASSERT_TRUE(mayCash(sure.tricks, trump, North, *deal)) << describe(hands, trump, West);
        if (sure.tricks > 0) {
            const CardsConfiguration relevant = coverOf(sure.winners);
            expectTakenAfterLeads(hands, trump, suit, sure.tricks);
            expectTakenAfterLeads(shuffledOutside(random, hands, relevant), trump, suit,
                                  sure.tricks);
        }
    };
    forRandomEndings(random, {{2, 400}, {3, 800}, {4, 600}, {5, 100}}, [&](const Hands& hands) {
        for (const Trump trump : {Clubs, Diamonds, Hearts, Spades, NoTrump}) {
            for (int suit = Clubs; suit <= Spades; ++suit) {
                if (hands[West].suit(suit) != 0) {
                    expectKept(hands, trump, suit);
                }
            }
        }
    });
    EXPECT_THAT(counted, testing::Each(testing::Gt(100)));
}

TEST(SureTrumps, AreTopsNoMoreThanTheLongerHandHasOrWhatNobodyCanBeat)
{
    struct Case {
        const char* hands;  // spades are trumps
        int tricks;         // North's and South's
        const char* lowest;
    };
    const Case cases[] = {
        {"AK... Q2... 43... 65...", 2, "K..."},
        {"AK... QT... J3... 65...", 2, "K..."},  // the jack is below the queen
        {"A.2.. 3.4.. K.3.. 5.5..", 1, "A..."},  // both tops may have to fall together
        {"A2... 3.4.. K.3.. 5.5..", 2, "K..."},  // North can spare the two
        {"K2... A.4.. Q.3.. 5.5..", 0, "..."},
        {"KQ... A2... 43... 65...", 1, "Q..."},  // the ace beats one of them
        {"QJ2... A3.2.. 4.54.. K.65..", 0, "..."},
        {"QJT... A2.2.. 4.54.. K.65..", 1, "T..."},
        {"A.2.. 3.4.. QJ... K.5..", 1, "A..."},
        {"A.2.3. 43.4.. QJT... K.65..", 2, "T..."},  // more than the ace
        {"32... .42.. 4.3.. .53..", 2, "..."},  // all the trumps there are, whatever their ranks
    };
    for (const Case& example : cases) {
        const TrumpTricks sure = sureTrumps(Spades, South, *dealOf(handsOf(example.hands)));
        EXPECT_EQ(sure.tricks, example.tricks) << example.hands;
        EXPECT_EQ(sure.ranks, coverOf(readWholeHand(example.lowest)).suit(Spades) & fullSuit)
            << example.hands;
    }
}

TEST(SureTrumps, AreNotLostWhoeverLeadsAndWhateverTheOtherCardsAre)
{
    std::mt19937_64 random(12);
    forRandomEndings(random, {{2, 400}, {3, 400}, {4, 400}, {5, 60}}, [&](const Hands& hands) {
        const auto deal = dealOf(hands);
        for (const Trump trump : {Clubs, Diamonds, Hearts, Spades}) {
            for (const PlayerNumber leader : {North, East, South, West}) {
                const TrumpTricks sure = sureTrumps(trump, nextPlayer(leader), *deal);
                const int most = hands[leader].count() - sure.tricks;
                const Hands other = shuffledOutside(random, hands, onlySuit(trump, sure.ranks));
                ASSERT_FALSE(referenceCanTake(hands, trump, leader, most + 1))
                    << describe(hands, trump, leader);
                ASSERT_FALSE(referenceCanTake(other, trump, leader, most + 1))
                    << describe(other, trump, leader) << " from " << describe(hands, trump, leader);
            }
        }
    });
}

}  // namespace trikon
