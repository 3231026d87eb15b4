// Bit operations on a suit, and the two on four suits at once that carry relevance around.
//
// Relevance says on which cards an answer depends: in each suit nothing, or every rank from some
// card upward, held or not. It is a raw mask: the three bits above the ace may be set as well, so
// it is cut with cards before it is counted or used as an index.
#pragma once

#include "cards/cards_configuration.h"

#include <cstdint>

namespace trikon {

/// The lowest card of `suit`, 0 for a void.
constexpr std::uint16_t lowestCard(std::uint16_t suit)
{
    return static_cast<std::uint16_t>(suit & -suit);
}

/// Every rank from the lowest card of `suit` upward and the three bits above them; 0 for a void.
constexpr std::uint16_t ranksFrom(std::uint16_t suit)
{
    return static_cast<std::uint16_t>(suit | -suit);
}

/// The ranks higher than every card of `suit`; all ranks for a void.
inline std::uint16_t ranksAbove(std::uint16_t suit)
{
    const int lowestAbove = suit == 0 ? 1 : _highest_bit13[suit] << 1;
    return static_cast<std::uint16_t>(fullSuit & -lowestAbove);
}

/// A set with nothing but `suit` in it.
constexpr CardsConfiguration onlySuit(int suitNumber, std::uint16_t suit)
{
    return std::uint64_t{suit} << (16 * suitNumber);
}

/// `ranksFrom` of each suit: the ranks on which a set of top cards stands.
constexpr CardsConfiguration coverOf(CardsConfiguration cards)
{
    // The sixteen-bit negations are done side by side. Each top bit is kept apart, so that no lane
    // borrows from the next.
    constexpr std::uint64_t topBits = 0x8000800080008000;
    const std::uint64_t word = cards;
    return ((topBits - (word & ~topBits)) ^ (~word & topBits)) | word;
}

/// In each suit every rank from the k-th highest card of `to` upward, k being the number of cards
/// of `from` that are relevant.
///
/// Down to the lowest card of `to` where k exceeds their number.
inline CardsConfiguration transformRelevance(CardsConfiguration relevant, CardsConfiguration from,
                                             CardsConfiguration to)
{
    const CardsConfiguration common = relevant & from;
    std::uint64_t ranks = 0;
    for (int suitNumber = 0; suitNumber < suitsCount; ++suitNumber) {
        const std::int8_t count = _count_bits13[common.suit(suitNumber)];
        ranks |= onlySuit(suitNumber, _highest_mask[to.suit(suitNumber)][count]);
    }
    return ranks;
}

/// In each suit the k highest cards of `c`, k being the number of cards that `a` and `b` share.
///
/// All cards of `c` where k exceeds their number. `b` and `c` are card sets, `a` may be relevance.
inline CardsConfiguration transformMask(CardsConfiguration a, CardsConfiguration b,
                                        CardsConfiguration c)
{
    return transformRelevance(a, b, c) & c;
}

}  // namespace trikon
