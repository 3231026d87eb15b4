// The formats by name, and what each writes.
#include "app/deal_formats.h"

#include "cards/translation.h"

#include <iostream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace trikon {

PrintFormat str_to_print_f(const std::string& name)
{
    static constexpr std::pair<std::string_view, PrintFormat> formats[] = {
        {"none", print_none}, {"full", print_full},   {"NESW", print_NESW},
        {"PBN", print_PBN},   {"short", print_short},
    };
    for (const auto& [formatName, format] : formats) {
        if (formatName == name) {
            return format;
        }
    }
    throw std::runtime_error(translate("\"%1%\" is not valid name of print format.", {name}));
}

LineState print_none(const Hands&) { return NothingWritten; }

LineState print_full(const Hands& hands)
{
    std::cout << hands;
    return BlockEnded;
}

LineState print_NESW(const Hands& hands)
{
    std::cout << hands[North] << ' ' << hands[East] << ' ' << hands[South] << ' ' << hands[West];
    return LineOpen;
}

LineState print_PBN(const Hands& hands)
{
    hands.writeToPBN(std::cout, North, fullDeck);
    return LineOpen;
}

LineState print_short(const Hands& hands)
{
    // East follows West after six blanks whatever West's length: programs that read this format
    // split the line at its blanks.
    constexpr std::string_view indent = "           ";
    constexpr std::string_view gap = "      ";
    std::cout << indent << hands[North] << '\n'
              << hands[West] << gap << hands[East] << '\n'
              << indent << hands[South] << '\n';
    return BlockEnded;
}

}  // namespace trikon
