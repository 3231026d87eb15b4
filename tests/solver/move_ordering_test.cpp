// The strength tables, entry by entry, and the weights of leads that are made of them.
#include "solver/move_ordering.h"

#include "support/endings.h"

#include <gtest/gtest.h>

#include <memory>

namespace trikon {

TEST(MoveOrdering, StrengthIsRankAndFivePointsACard)
{
    for (unsigned suit = 0; suit < holdingsOfSuit; ++suit) {
        int strength = 0;
        for (int rank = 0; rank < ranksOfSuit; ++rank) {
            strength += (suit >> rank & 1) != 0 ? rank + 5 : 0;
        }
        ASSERT_EQ(strength_with_count[suit], strength) << suit;
        ASSERT_EQ(strength_oponent[suit], suit == 0 ? 500 : strength) << suit;
    }
    EXPECT_EQ(strength_with_count[fullSuit], 143);
}

TEST(MoveOrdering, LeadsAreWeighedByTheHoldingsOnBothSides)
{
    const auto deal = std::make_unique<Deal>();
    deal->setHands(handsOf("32.5.. K4.2.. AQ.3.. T8.4.."));
    const std::uint16_t spades = deal->allCards().suit(Spades);
    const auto weight = [&](std::uint16_t suit) {
        return deal->leadWeight(North, Spades, deal->order(Spades, suit));
    };
    // Holdings in the order North, East, South, West: 11, 23, 32 and 24.
    EXPECT_EQ(weight(spades), 5 * (32 - 24) + 4 * (11 - 23));
    const auto withoutWest = static_cast<std::uint16_t>(spades & ~(*deal)[West].suit(Spades));
    EXPECT_EQ(weight(withoutWest), 5 * (32 - 500) + 4 * (11 - 23));
}

}  // namespace trikon
