// The strength tables, entry by entry.
#include "solver/move_ordering.h"

#include <gtest/gtest.h>

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

}  // namespace trikon
