// A deal's hands and two sides, and the tables of `suit_analysis.cpp` told in cards.
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

std::uint16_t Deal::topRounds(int suitNumber, std::uint16_t suit, int rounds) const
{
    unsigned cards = 0;
    for (int player = 0; player < playersCount; ++player) {
        const unsigned held = suit & (*this)[player].suit(suitNumber);
        cards |= held & _highest_mask[held][rounds];
    }
    return static_cast<std::uint16_t>(cards);
}

SuitTricks Deal::suitTricks(int player, int suitNumber, std::uint16_t suit) const
{
    const CashedTricks known = cashedTricks(player, suitNumber, order(suitNumber, suit));
    const auto tricks = static_cast<std::int8_t>(known.tricks());
    return {static_cast<std::int16_t>(known.moreThanPartner() * 256),
            _highest_mask[suit][known.depth()], tricks, tricks,
            static_cast<PlayerNumber>(known.leader())};
}

}  // namespace trikon
