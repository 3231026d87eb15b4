// Ranks, suits and single cards as characters, and back.
//
// Every reader and writer of cards goes through these functions, so the characters here are the
// whole card alphabet: "23456789TJQKA", "CDHS", the four suit symbols, "-" for a void and "10".
#pragma once

#include <cstdint>
#include <string>

namespace trikon {

/// The card mask of one rank character in either case, 0 for any other; '1' is no rank.
std::uint16_t charToSuitCard(char rank);

/// Reads one rank at `text`, also "10", and moves `text` behind it; 0 and no move without one.
std::uint16_t parseRankOfCard(const char*& text);

/// The rank character of a one-bit mask, the ten as 'T'.
char cardToChar(std::uint16_t card);

/// The rank of a one-bit mask, the ten as "10".
std::string cardToStr10(std::uint16_t card);

/// Writes the ranks from the highest down without a terminator; answers the end of what it wrote.
///
/// At most 13 characters. A void is "-" with `dashIfEmpty`, nothing without.
char* suitToStrEnd(std::uint16_t suit, char* out, bool dashIfEmpty);

/// As `suitToStrEnd` with a terminating zero byte, so `out` has at least 14 bytes; answers `out`.
const char* suitToStr(std::uint16_t suit, char* out, bool dashIfEmpty);
std::string suitToStr(std::uint16_t suit, bool dashIfEmpty);

/// The holding written in the whole of `text`: ranks without separators, "10" allowed.
///
/// A void is the empty text or one that starts with '-' or '='; what follows these is ignored.
/// Throws unexpected_character for what is no rank and card_already_in_use for a rank read twice or
/// held in `forbidden`, with the text and the position from 1.
std::uint16_t strToSuit(const char* text, std::uint16_t forbidden);

/// The suit symbol in UTF-8, three bytes.
const char* suitNumberToUTF8(std::uint8_t suitNumber);

}  // namespace trikon
