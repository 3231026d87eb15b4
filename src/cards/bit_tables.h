// Three look-up tables over the 8192 holdings of one suit.
//
// A holding is a 13-bit mask, bit 0 the two, bit 12 the ace. Counting a holding, finding its
// highest card and finding its k highest cards are each one read, because the solver asks at every
// node. The tables are filled once, before main, and only read afterwards.
#pragma once

#include <cstdint>

namespace trikon {

constexpr int holdingsOfSuit = 8192;
constexpr int ranksOfSuit = 13;
constexpr std::uint16_t fullSuit = 0x1fff;

/// `_count_bits13[v]` is the number of cards of the holding `v`, 0 to 13.
extern std::int8_t _count_bits13[holdingsOfSuit];

/// `_highest_bit13[v]` is the highest card of the holding `v` as a one-bit mask, 0 for a void.
extern std::uint16_t _highest_bit13[holdingsOfSuit];

/// `_highest_mask[v][k]` holds every rank from the k-th highest card of `v` upward, gaps included.
///
/// Column 0 and row 0 are empty. From k = the number of cards of `v` on, every rank from the lowest
/// card of `v` upward. The k highest cards of `v` itself are thus `v & _highest_mask[v][k]`.
extern std::uint16_t _highest_mask[holdingsOfSuit][ranksOfSuit + 1];

void _count13_init();
void _highest_bit13_init();
/// Reads `_count_bits13`, which must be filled.
void _highest_mask_init();

/// Fills the three tables when the first object of this class is made; later ones do nothing.
///
/// Every file that includes this header holds one, so the tables are ready before any static
/// initialiser of that file that comes later.
class __Inicializer__ {
public:
    __Inicializer__();
};

static const __Inicializer__ cardTablesInicializer;

}  // namespace trikon
