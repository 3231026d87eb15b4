// A position as card counts per player and suit, and its diagram.
//
// The counts, together with who holds the top cards, are what the solver keeps its results under;
// the diagram printer takes the same position description.
#pragma once

#include "cards/cards_configuration.h"
#include "cards/hands.h"

#include <cstdint>
#include <iosfwd>
#include <span>
#include <string>

namespace trikon {

/// Sixteen 4-bit counts of a card set: bits 16 p + 4 s to 16 p + 4 s + 3 count player p's suit s.
class TrickCountConfiguration {
public:
    constexpr TrickCountConfiguration() = default;
    constexpr TrickCountConfiguration(std::uint64_t counts) : counts(counts) {}
    /// Counts the cards of `set` in each of the four `hands` N, E, S, W.
    TrickCountConfiguration(CardsConfiguration set, const CardsConfiguration* hands);

    constexpr operator std::uint64_t() const { return counts; }

    /// The number of cards counted.
    int sum() const;

private:
    std::uint64_t counts = 0;
};

/// What one card of the player's suit adds to the counts.
constexpr std::uint64_t countOf(PlayerNumber player, std::uint8_t suit)
{
    return std::uint64_t{1} << (16 * player + 4 * suit);
}

/// A card that may be played and what an analysis found for it: tricks, or 1 for a win, else 0.
struct Move {
    std::uint16_t card;
    std::uint8_t suit;
    std::int32_t value;
};

/// The cards still in play, in the three shapes in which they are asked for.
struct Situation {
    CardsConfiguration cards;
    TrickCountConfiguration counts;
    /// Divided by four: the tricks left.
    std::int32_t cardsCount = 0;

    Situation() = default;
    /// The position in which the players hold what `cards` leaves of `hands`.
    Situation(CardsConfiguration cards, const Hands& hands);

    /// Writes the diagram of `hands`: North above, West and East side by side, South below.
    ///
    /// Suit symbols are used where the locale's character set is UTF-8, else the letters S H D C.
    /// With an `analysis`, a line per value found follows, the best first: "9: SK HA".
    std::ostream& printFormated(std::ostream& out, const Hands& hands,
                                std::span<const Move> analysis = {}) const;
    std::string getFormatedString(const Hands& hands, std::span<const Move> analysis = {}) const;
};

}  // namespace trikon
