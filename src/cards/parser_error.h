// The errors of all text readers: what was being read, where, and what is wrong with it.
//
// Each formats itself into one line: `Error in "AKA" at position 3: card "A" is already in use
// ...`. Positions count from 1; -1 means none. The text may be empty when it is not known.
#pragma once

#include <cstdint>
#include <exception>
#include <iosfwd>
#include <string>

namespace trikon {

class parser_error : public std::exception {
public:
    /// Copies `text`, which must not be null.
    parser_error(const char* text, int position) : position(position), text(text) {}

    /// The whole line, formatted at the first call and kept; so one error belongs to one thread.
    const char* what() const noexcept override;
    /// Writes the head that all errors share, up to the colon and the blank behind it.
    std::ostream& print_err(std::ostream& out) const;
    /// Writes the head and what the class has to say.
    virtual std::ostream& print_to_stream(std::ostream& out) const;

private:
    std::int32_t position;
    std::string text;
    mutable std::string message;
};

class parser_error_msg : public parser_error {
public:
    parser_error_msg(const char* text, int position, const std::string& message)
        : parser_error(text, position), message(message)
    {
    }
    std::ostream& print_to_stream(std::ostream& out) const override;

private:
    std::string message;
};

/// A hand of another length than the hands before it.
class bad_suit_len : public parser_error {
public:
    bad_suit_len(const char* text, int position, std::uint8_t expected, std::uint8_t received)
        : parser_error(text, position), expected(expected), received(received)
    {
    }
    std::ostream& print_to_stream(std::ostream& out) const override;

private:
    std::uint8_t expected;
    std::uint8_t received;
};

class unexpected_end : public parser_error {
public:
    using parser_error::parser_error;
    std::ostream& print_to_stream(std::ostream& out) const override;
};

class unexpected_character : public parser_error {
public:
    unexpected_character(const char* text, int position, char character)
        : parser_error(text, position), character(character)
    {
    }
    std::ostream& print_to_stream(std::ostream& out) const override;

private:
    char character;
};

class no_expected_exprassion : public parser_error {
public:
    no_expected_exprassion(const std::string& expected, const std::string& received,
                           const char* text, int position)
        : parser_error(text, position), expected(expected), received(received)
    {
    }
    std::ostream& print_to_stream(std::ostream& out) const override;

private:
    std::string expected;
    std::string received;
};

/// An error about one card; only its rank is shown, the suit follows from text and position.
class card_error : public parser_error {
public:
    card_error(const char* text, int position, std::uint16_t card)
        : parser_error(text, position), card(card)
    {
    }
    std::ostream& print_to_stream(std::ostream& out) const override;

protected:
    std::uint16_t card;
};

class card_already_in_use : public card_error {
public:
    using card_error::card_error;
    std::ostream& print_to_stream(std::ostream& out) const override;
};

}  // namespace trikon
