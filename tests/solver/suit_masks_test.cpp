// The widening and carrying over of relevance, against loops over single ranks.
#include "solver/suit_masks.h"

#include "support/literals.h"

#include <gtest/gtest.h>

#include <random>

namespace trikon {

namespace {

// A bit counts when a card of its suit lies at or below it.
CardsConfiguration slowCover(CardsConfiguration cards)
{
    std::uint64_t cover = 0;
    for (int bit = 0; bit < 64; ++bit) {
        const std::uint64_t suitUpToBit =
            (std::uint64_t{2} << bit) - (std::uint64_t{1} << (bit & 48));
        cover |= (cards & suitUpToBit) != 0 ? std::uint64_t{1} << bit : 0;
    }
    return cover;
}

}  // namespace

TEST(SuitMasks, CoverReachesFromTheLowestCardThroughTheSpareBits)
{
    EXPECT_EQ(coverOf(hand("Q.2..A")),
              onlySuit(Spades, 0xfc00) | onlySuit(Hearts, 0xffff) | onlySuit(Clubs, 0xf000));
    std::mt19937_64 random(1);
    for (int round = 0; round < 1000; ++round) {
        const CardsConfiguration cards = random() & random() & random() & fullDeck;
        ASSERT_EQ(coverOf(cards), slowCover(cards)) << cards;
    }
}

TEST(SuitMasks, RanksFromAreTheCoverOfOneSuit)
{
    for (unsigned suit = 0; suit < holdingsOfSuit; ++suit) {
        ASSERT_EQ(ranksFrom(static_cast<std::uint16_t>(suit)), slowCover(suit).suit(Clubs));
    }
}

TEST(SuitMasks, RanksAboveAVoidAreAll)
{
    EXPECT_EQ(ranksAbove(0), 0x1fff);
    EXPECT_EQ(ranksAbove(hand("...J43").suit(Clubs)), hand("...AKQ").suit(Clubs));
    EXPECT_EQ(ranksAbove(hand("...A2").suit(Clubs)), 0);
}

TEST(SuitMasks, TransformMaskTakesAsManyTopCardsAsTwoSetsShare)
{
    struct Case {
        const char *a, *b, *c, *result;
    };
    const Case cases[] = {
        {"AKQ.A..32", "A3.K..32", "T98.Q.J.A54", "T...A5"},
        {"AKQ...", "AKQJ...", "54...", "54..."},       // more than there are
        {"AKQ.AKQ..", "JT9.J8..", "AKQ.AKQ..", "..."}  // nothing shared
    };
    for (const Case& example : cases) {
        EXPECT_EQ(transformMask(hand(example.a), hand(example.b), hand(example.c)),
                  hand(example.result))
            << example.a;
    }
}

TEST(SuitMasks, RelevanceCarriedOverKeepsTheGaps)
{
    const CardsConfiguration relevant = coverOf(hand("Q..."));
    EXPECT_EQ(transformRelevance(relevant, hand("K9..."), hand("J5...")), hand("AKQJ..."));
    EXPECT_EQ(transformRelevance(relevant, hand("AK..."), hand("K4...")), hand("AKQJT987654..."));
}

}  // namespace trikon
