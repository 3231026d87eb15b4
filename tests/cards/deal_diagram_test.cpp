// The four-hand diagram in letters; a transcript shows it in symbols.
#include "cards/situation.h"
#include "support/literals.h"

#include <gtest/gtest.h>

namespace trikon {

namespace {

const Hands deal =
    hands("AKQ.JT9.876.5432", "JT9.3.AKQJT.JT98", "42.AKQ.5432.AKQ7", "87653.876542.9.6");

TEST(DealDiagram, HandsStandInACrossAndAlign)
{
    EXPECT_EQ(deal.toString(),
              "          S AKQ\n"
              "          H JT9\n"
              "          D 876\n"
              "          C 5432\n"
              "S 87653           S JT9\n"
              "H 876542          H 3\n"
              "D 9               D AKQJT\n"
              "C 6               C JT98\n"
              "          S 42\n"
              "          H AKQ\n"
              "          D 5432\n"
              "          C AKQ7\n");
}

TEST(DealDiagram, OnlyCardsInPlayAreShownAndVoidsAreDashes)
{
    const Situation position(hand("AK..8.") | hand("J.3..8") | hand("42...A") | hand(".8..6"),
                             deal);
    EXPECT_EQ(position.cardsCount, 11);
    const Move analysis[] = {{0x1000, Spades, 2}, {0x0040, Diamonds, 3}, {0x0800, Spades, 2}};
    EXPECT_EQ(position.getFormatedString(deal, analysis),
              "     S AK\n"
              "     H -\n"
              "     D 8\n"
              "     C -\n"
              "S -        S J\n"
              "H 8        H 3\n"
              "D -        D -\n"
              "C 6        C 8\n"
              "     S 42\n"
              "     H -\n"
              "     D -\n"
              "     C A\n"
              "3: D8\n"
              "2: SA SK\n");
}

}  // namespace

}  // namespace trikon
