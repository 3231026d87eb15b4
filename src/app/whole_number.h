// Whole numbers as users write them: digits and nothing else.
#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace trikon {

/// The number that `digits` spell; none for anything but digits, or for more than 64 bits.
inline std::optional<std::uint64_t> wholeNumber(std::string_view digits)
{
    std::uint64_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

}  // namespace trikon
