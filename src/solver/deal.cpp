// What of a deal is not a matter of single suits: its hands and its two sides.
#include "solver/deal.h"

#include <algorithm>

namespace trikon {

void Deal::setHands(const Hands& hands)
{
    static_cast<Hands&>(*this) = hands;
    initHelpers();
}

void Deal::clearHelpers() { std::fill_n(sides, playersCount, CardsConfiguration{}); }

void Deal::clear()
{
    Hands::clear();
    clearHelpers();
}

}  // namespace trikon
