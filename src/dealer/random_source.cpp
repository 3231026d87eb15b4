// What follows from the fixed cards.
#include "dealer/random_source.h"

#include <cassert>

namespace trikon {

void RandomSource::Configuration::setInitial(const Hands& fixed)
{
    const auto need = [&](PlayerNumber player) {
        return static_cast<std::int8_t>(cardsOfHand - fixed[player].count());
    };
    initial = fixed;
    free = fullDeck & ~fixed.allCards();
    freeCardsCount = static_cast<std::int8_t>(free.count());
    cardsForNorth = need(North);
    afterNorth = static_cast<std::int8_t>(freeCardsCount - cardsForNorth);
    cardsForEast = need(East);
    afterEast = static_cast<std::int8_t>(afterNorth - cardsForEast);
    cardsForSouth = need(South);
    // Also false when a card is in two hands or West has too many.
    assert(cardsForNorth >= 0 && cardsForEast >= 0 && cardsForSouth >= 0 &&
           afterEast - cardsForSouth == need(West) && need(West) >= 0);
}

}  // namespace trikon
