// The five ways in which an accepted deal is written to standard output.
//
// A format writes the cards alone. Its line state tells the print queue where the deal's statistics
// and remarks belong: behind the cards on the same line, or below them.
#pragma once

#include "cards/hands.h"

#include <cstdint>
#include <string>

namespace trikon {

/// What a format leaves behind on standard output.
enum LineState : std::uint8_t {
    NothingWritten = 0,
    LineOpen = 1,   ///< One line without its end of line.
    BlockEnded = 2  ///< A block whose last line is ended.
};

using PrintFormat = LineState (*)(const Hands& hands);

LineState print_none(const Hands& hands);
/// The four-hand diagram.
LineState print_full(const Hands& hands);
/// The hands in dot form, North to West, on one line.
LineState print_NESW(const Hands& hands);
/// The deal in PBN with North first.
LineState print_PBN(const Hands& hands);
/// North above, West and East in a line, South below, each in dot form.
LineState print_short(const Hands& hands);

/// The format called `name`: "none", "full", "NESW", "PBN" or "short", letter by letter.
///
/// Throws std::runtime_error that quotes any other name.
PrintFormat str_to_print_f(const std::string& name);

}  // namespace trikon
