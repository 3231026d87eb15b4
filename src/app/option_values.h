// Values of options that the command-line library reads too leniently on its own.
#pragma once

#include "app/configuration.h"
#include "app/whole_number.h"

#include <tclap/ArgTraits.h>

#include <charconv>
#include <cstdint>
#include <istream>
#include <limits>
#include <optional>
#include <string>
#include <system_error>

namespace trikon {

// A number that is read from digits alone; the stream's own reader would let "-1" wrap round.
template <std::uint64_t most>
struct WholeNumber {
    using ValueCategory = TCLAP::ValueLike;
    std::uint64_t value = 0;
};
using DealNumber = WholeNumber<Configuration::noDeal - 1>;
using Seed = WholeNumber<std::numeric_limits<std::uint64_t>::max()>;

template <std::uint64_t most>
std::istream& operator>>(std::istream& in, WholeNumber<most>& number)
{
    std::string digits;
    in >> digits;
    const std::optional<std::uint64_t> value = wholeNumber(digits);
    if (!value || *value > most) {
        in.setstate(std::ios::failbit);
    } else {
        number.value = *value;
    }
    return in;
}

// How many deals to print: a number, or "all" for no bound of this kind.
struct DealsCount {
    using ValueCategory = TCLAP::ValueLike;
    static constexpr std::uint64_t most = std::numeric_limits<std::uint32_t>::max();
    WholeNumber<most> number;
    bool all = false;
};

inline std::istream& operator>>(std::istream& in, DealsCount& count)
{
    count.all = (in >> std::ws).peek() == 'a';
    if (!count.all) {
        return in >> count.number;
    }
    std::string word;
    if (in >> word; word != "all") {
        in.setstate(std::ios::failbit);
    }
    return in;
}

struct Seconds {
    using ValueCategory = TCLAP::ValueLike;
    double value = 0;
};

inline std::istream& operator>>(std::istream& in, Seconds& seconds)
{
    std::string text;
    in >> text;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, seconds.value);
    if (error != std::errc() || stop != end || !(seconds.value >= 0)) {
        in.setstate(std::ios::failbit);
    }
    return in;
}

}  // namespace trikon
