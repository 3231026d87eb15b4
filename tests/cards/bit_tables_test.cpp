// Every entry of the tables over suit holdings against a slow loop over ranks.
#include "cards/bit_tables.h"

#include <gtest/gtest.h>

namespace trikon {

namespace {

TEST(BitTables, EveryEntryIsWhatALoopOverTheRanksFinds)
{
    for (int holding = 0; holding < holdingsOfSuit; ++holding) {
        int count = 0;
        int ranksDown = 0;
        int highest = 0;
        ASSERT_EQ(_highest_mask[holding][0], 0) << holding;
        for (int rank = 12; rank >= 0; --rank) {
            ranksDown |= 1 << rank;
            if ((holding & 1 << rank) != 0) {
                highest = count == 0 ? 1 << rank : highest;
                ++count;
                ASSERT_EQ(_highest_mask[holding][count], ranksDown) << holding << ' ' << count;
            }
        }
        ASSERT_EQ(_count_bits13[holding], count);
        ASSERT_EQ(_highest_bit13[holding], highest);
        // Asking for more cards than there are gives the ranks down to the lowest.
        for (int k = count + 1; k <= 13; ++k) {
            ASSERT_EQ(_highest_mask[holding][k], _highest_mask[holding][count]) << holding;
        }
    }
}

}  // namespace

}  // namespace trikon
