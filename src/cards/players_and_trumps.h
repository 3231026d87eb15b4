// The four seats at the table and the five denominations, with their letters.
//
// Both are plain integers with fixed values, because tables and hands are indexed by them and
// scripts and play commands write them. A letter that names nothing gives -1.
#pragma once

#include <cstdint>

namespace trikon {

enum PlayerNumber : std::int32_t { NoPlayer = -1, North = 0, East = 1, South = 2, West = 3 };

/// A trump below `NoTrump` is the number of its suit.
enum Trump : std::int32_t {
    BadTrump = -1,
    Clubs = 0,
    Diamonds = 1,
    Hearts = 2,
    Spades = 3,
    NoTrump = 4
};

constexpr int playersCount = 4;
constexpr int suitsCount = 4;

/// The player on the left, who plays after `player`.
constexpr PlayerNumber nextPlayer(PlayerNumber player)
{
    return static_cast<PlayerNumber>((player + 1) & 3);
}

constexpr PlayerNumber partner(PlayerNumber player)
{
    return static_cast<PlayerNumber>((player + 2) & 3);
}

/// 'N', 'E', 'S' or 'W' in either case, else `NoPlayer`.
PlayerNumber charToPlayer(char letter);

/// `player` must be one of the four seats.
char playerToChar(PlayerNumber player);

/// 'C', 'D', 'H' or 'S' in either case gives 0 to 3, anything else -1.
int charToSuitNumber(char letter);

char suitNumberToChar(std::uint8_t suitNumber);

/// As `charToSuitNumber`, and 'N' in either case for no trump; so 'S' is spades here.
Trump charToTrump(char letter);

}  // namespace trikon
