// The start-up fill of the tables over the holdings of one suit.
#include "cards/bit_tables.h"

#include <bit>

namespace trikon {

std::int8_t _count_bits13[holdingsOfSuit];
std::uint16_t _highest_bit13[holdingsOfSuit];
std::uint16_t _highest_mask[holdingsOfSuit][ranksOfSuit + 1];

namespace {

// Every rank from the lowest card of the (not empty) holding upward.
std::uint16_t ranksFromLowest(unsigned holding)
{
    return static_cast<std::uint16_t>(-(holding & -holding) & fullSuit);
}

// Static storage is zero before any initialiser runs, whichever file's comes first.
bool filled;

}  // namespace

void _count13_init()
{
    for (unsigned holding = 0; holding < holdingsOfSuit; ++holding) {
        _count_bits13[holding] = static_cast<std::int8_t>(std::popcount(holding));
    }
}

void _highest_bit13_init()
{
    for (unsigned holding = 0; holding < holdingsOfSuit; ++holding) {
        _highest_bit13[holding] = static_cast<std::uint16_t>(std::bit_floor(holding));
    }
}

void _highest_mask_init()
{
    for (unsigned holding = 1; holding < holdingsOfSuit; ++holding) {
        unsigned top = holding;
        // From the whole holding down, one low card less at each step.
        for (int k = ranksOfSuit; k >= 1; --k) {
            while (_count_bits13[top] > k) {
                top &= top - 1;
            }
            _highest_mask[holding][k] = ranksFromLowest(top);
        }
    }
}

__Inicializer__::__Inicializer__()
{
    if (filled) {
        return;
    }
    _count13_init();
    _highest_bit13_init();
    _highest_mask_init();
    filled = true;
}

}  // namespace trikon
