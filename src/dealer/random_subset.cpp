// The part of random subsets that does not depend on the engine.
#include "dealer/random_subset.h"

#include <bit>

namespace trikon {

OneCardInSuit onlyCard(CardsConfiguration set)
{
    const int suitNumber = std::countr_zero(std::uint64_t{set}) / 16;
    return {static_cast<std::uint8_t>(suitNumber), set.suit(suitNumber)};
}

}  // namespace trikon
