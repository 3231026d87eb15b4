// Which card of the suit led last worked for the second and the third hand of a trick.
//
// Who follows suit meets the same choice over and over: the same cards of the suit in play and the
// same card to beat, while the other suits differ. What succeeded last is tried first the next
// time. Whether the choice is the same matters: remembered without the card to beat, the memory
// costs more than it saves.
//
// A choice has one place, and a newer one with the same place takes it over: the memory is small
// enough to stay in the cache and to be emptied often.
#pragma once

#include "cards/players_and_trumps.h"
#include "solver/trick.h"

#include <array>
#include <bit>
#include <cstdint>

namespace trikon {

class ReplyMemory {
public:
    /// A choice among the cards of the led suit, as one number that is not 0.
    ///
    /// The player is `position` 1 or 2 of the trick and holds cards of the suit, of which `inPlay`
    /// are still in the hands. No card of the trick may be a ruff.
    static std::uint32_t choice(int position, PlayerNumber player, std::uint16_t inPlay,
                                const Trick& trick);

    /// The card that last succeeded, 0 if none is known.
    std::uint16_t card(std::uint32_t choice) const;
    /// Remembers the card.
    void remember(std::uint32_t choice, std::uint16_t card);
    /// Forgets everything.
    void clear() { places.fill(0); }

private:
    static constexpr int placeBits = 14;

    // Neighbouring choices are spread over all places.
    static std::uint32_t placeOf(std::uint32_t choice)
    {
        return choice * 2654435769U >> (32 - placeBits);
    }

    // The choice and, in the four lowest bits, the rank of the card; 0 when empty.
    std::array<std::uint32_t, 1U << placeBits> places{};
};

// --- inline definitions ---

inline std::uint32_t ReplyMemory::choice(int position, PlayerNumber player, std::uint16_t inPlay,
                                         const Trick& trick)
{
    const int toBeat = std::countr_zero(trick.winningCard);
    const int seat = (position - 1) << 4 | player << 2 | trick.ledSuit;
    return static_cast<std::uint32_t>((seat << 4 | toBeat) << 13 | inPlay);
}

inline std::uint16_t ReplyMemory::card(std::uint32_t choice) const
{
    const std::uint32_t entry = places[placeOf(choice)];
    return entry >> 4 == choice ? static_cast<std::uint16_t>(1U << (entry & 15)) : std::uint16_t{0};
}

inline void ReplyMemory::remember(std::uint32_t choice, std::uint16_t card)
{
    places[placeOf(choice)] = choice << 4 | static_cast<std::uint32_t>(std::countr_zero(card));
}

}  // namespace trikon
