// How the errors of the text readers write themselves.
//
// The sentences are translated; the quotes and blanks around their values are the same everywhere.
#include "cards/parser_error.h"

#include "cards/card_text.h"
#include "cards/translation.h"

#include <cctype>
#include <ostream>
#include <sstream>

namespace trikon {

const char* parser_error::what() const noexcept
{
    try {
        if (message.empty()) {
            std::ostringstream out;
            print_to_stream(out);
            message = out.str();
        }
        return message.c_str();
    } catch (...) {
        return "Error";  // no memory for the line
    }
}

std::ostream& parser_error::print_err(std::ostream& out) const
{
    out << translate("Error");
    if (!text.empty()) {
        out << translate(" in ") << '"' << text << '"';
    }
    if (position >= 0) {
        out << translate(" at position ") << position;
    }
    return out << ": ";
}

std::ostream& parser_error::print_to_stream(std::ostream& out) const { return print_err(out); }

std::ostream& parser_error_msg::print_to_stream(std::ostream& out) const
{
    return print_err(out) << message;
}

std::ostream& bad_suit_len::print_to_stream(std::ostream& out) const
{
    return print_err(out) << translate("Bad suit length: expected: %1% received: %2%",
                                       {std::to_string(expected), std::to_string(received)});
}

std::ostream& unexpected_end::print_to_stream(std::ostream& out) const
{
    return print_err(out) << translate("Unexpected end.");
}

std::ostream& unexpected_character::print_to_stream(std::ostream& out) const
{
    print_err(out) << translate("unexpected character");
    // A byte of a longer UTF-8 character is negative and no character by itself.
    if (std::isprint(static_cast<unsigned char>(character)) != 0) {
        out << " \"" << character << '"';
    }
    return out;
}

std::ostream& no_expected_exprassion::print_to_stream(std::ostream& out) const
{
    print_err(out) << translate("not received expected expression \"%1%\"", {expected});
    if (!received.empty()) {
        out << translate(", received: \"%1%\"", {received});
    }
    return out;
}

std::ostream& card_error::print_to_stream(std::ostream& out) const
{
    // Two blanks stand before the quote; scripts may already look for them.
    return print_err(out) << translate("bad card ") << " \"" << cardToChar(card) << '"';
}

std::ostream& card_already_in_use::print_to_stream(std::ostream& out) const
{
    return print_err(out) << translate(
               "card \"%1%\" is already in use (in other hand or earlier in this hand)",
               {std::string(1, cardToChar(card))});
}

}  // namespace trikon
