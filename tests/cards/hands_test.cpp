// Four hands: checks, completion, and their one-line texts.
#include "cards/hands.h"

#include "cards/situation.h"
#include "support/literals.h"

#include <gtest/gtest.h>

#include <sstream>

namespace trikon {

namespace {

const char* const spades = "AKQJT98765432...";
const char* const hearts = ".AKQJT98765432..";
const char* const diamonds = "..AKQJT98765432.";
const char* const clubs = "...AKQJT98765432";

TEST(Hands, TheFirstEmptyHandOfAnOrderIsNext)
{
    Hands deal;
    EXPECT_EQ(deal.nextPlayerToRead("SWNE"), South);
    deal[North] = hand("A...");
    deal[East] = hand("K...");
    EXPECT_EQ(deal.nextPlayerToRead("NESW"), South);
    EXPECT_EQ(hands(spades, hearts, diamonds, clubs).nextPlayerToRead("NESW"), NoPlayer);
}

TEST(Hands, ThreeFullHandsGiveTheFourth)
{
    const Hands whole = hands(spades, hearts, diamonds, clubs);
    for (int player = North; player <= West; ++player) {
        Hands deal = whole;
        deal[player] = {};
        EXPECT_TRUE(deal.tryDeterminateRestCards());
        EXPECT_EQ(deal, whole);
        EXPECT_FALSE(deal.tryDeterminateRestCards()) << "nothing is missing";

        deal[player] = {};
        deal[(player + 1) & 3] ^= hand("A.A.A.A") & deal[(player + 1) & 3];  // 12 cards
        const Hands before = deal;
        EXPECT_FALSE(deal.tryDeterminateRestCards());
        EXPECT_EQ(deal, before);
    }
    Hands two = hands(spades, hearts, "...", "...");
    EXPECT_FALSE(two.tryDeterminateRestCards());
}

TEST(Hands, OverlapAndTooManyCardsAreReported)
{
    const std::tuple<Hands, const char*> cases[] = {
        {Hands(), "no error"},
        {hands(spades, hearts, diamonds, clubs), "no error"},
        {hands("AK...", "K...", "...", "..K."),
         "The following cards are in more than one hand: K..."},
        {hands("A...", "..K.", "A...", "A..K."),
         "The following cards are in more than one hand: A..K."},
        {hands("A...", "AKQJT98765432.A..", "...", "..."), "Player E has more than 13 cards."},
    };
    for (const auto& [deal, message] : cases) {
        EXPECT_EQ(errorOf([&deal = deal] { deal.ensureIsValid(); }), message);
    }
}

TEST(Hands, TheFirstPairOfDifferentLengthIsNamed)
{
    const std::string begin = "Different numbers of cards in hands, for example in ";
    EXPECT_EQ(errorOf([] { Hands().ensureEqualLengths(); }), "no error");
    EXPECT_EQ(errorOf([] { hands("A...", "2...", "3...", "...").ensureEqualLengths(); }),
              begin + "S and W.");
    EXPECT_EQ(errorOf([] { hands("A...", "...", "3...", "4...").ensureEqualLengths(); }),
              begin + "N and E.");
    EXPECT_EQ(errorOf([] { hands("...", "...", "3...", "4...").ensureEqualLengths(); }),
              begin + "E and S.");
    EXPECT_TRUE(Hands().handsHaveEqualLengths());
    EXPECT_FALSE(hands("A...", "K...", "Q...", "...").handsHaveEqualLengths());
}

TEST(Hands, AHandIsWrittenInDotFormAndWithSuitLetters)
{
    const CardsConfiguration cards = hand("AKQ..T.5432");
    std::ostringstream out;
    out << cards;
    out << ' ' << CardsConfiguration(0xf000000000000000);  // spare bits and the ace of spades
    EXPECT_EQ(out.str(), "AKQ..T.5432 A...");
    EXPECT_EQ(cards.str(true), "AKQ.-.T.5432");
    EXPECT_EQ(cards.str_prefixed(), "SAKQ DT C5432");
    EXPECT_EQ(CardsConfiguration().str(true), "-.-.-.-");
    EXPECT_EQ(CardsConfiguration().str_prefixed(), "");
    EXPECT_EQ(CardsConfiguration(fullDeck).str(false),
              "AKQJT98765432.AKQJT98765432.AKQJT98765432.AKQJT98765432");
    EXPECT_EQ(CardsConfiguration().longestSuitLength(), 0);
    EXPECT_EQ(hand("AK.Q432.J2.").longestSuitLength(), 4);
}

TEST(Hands, PbnStartsWithAnyPlayerAndShowsTheCardsOfTheMask)
{
    const Hands deal = hands("AK...", ".QJ..", "..T9.", "...87");
    EXPECT_EQ(deal.toPBNString(East, fullDeck), "E:.QJ.. ..T9. ...87 AK...");
    EXPECT_EQ(deal.toPBNString(North, hand("A.J.T9.")), "N:A... .J.. ..T9. ...");
}

TEST(Hands, CountsOfASetArePackedByPlayerAndSuit)
{
    const Hands deal = hands("AK..2.", ".QJ..", "..T9.", "...87");
    const TrickCountConfiguration counts(hand("A.QJ.T92.7"), deal.data());
    EXPECT_EQ(counts, 0x0001'0020'0200'1010U);
    EXPECT_EQ(counts.sum(), 7);
    EXPECT_EQ(
        TrickCountConfiguration(fullDeck, hands(spades, hearts, diamonds, clubs).data()).sum(), 52);
}

}  // namespace

}  // namespace trikon
