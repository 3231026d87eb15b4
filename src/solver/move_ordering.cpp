// The start-up fill of the strength tables.
#include "solver/move_ordering.h"

namespace trikon {

std::int32_t strength_with_count[holdingsOfSuit];
std::int32_t strength_oponent[holdingsOfSuit];

namespace {

constexpr int pointsPerCard = 5;
constexpr int voidOpponentStrength = 500;

// Fills both tables when its one object is made, before main.
class __MTInicializer__ {
public:
    __MTInicializer__();
};

__MTInicializer__::__MTInicializer__()
{
    // Whichever file is initialised first, the tables that this reads are filled.
    const __Inicializer__ cardTablesFirst;
    strength_with_count[0] = 0;
    strength_oponent[0] = voidOpponentStrength;
    for (unsigned suit = 1; suit < holdingsOfSuit; ++suit) {
        const unsigned high = _highest_bit13[suit];
        const std::int8_t rankIndex = _count_bits13[high - 1];
        strength_with_count[suit] = rankIndex + pointsPerCard + strength_with_count[suit ^ high];
        strength_oponent[suit] = strength_with_count[suit];
    }
}

const __MTInicializer__ strengthTablesInicializer;

}  // namespace

}  // namespace trikon
