// A set of cards as one 64-bit word, and a single card.
//
// Suit s (0 clubs, 1 diamonds, 2 hearts, 3 spades) lies in bits 16 s to 16 s + 12, bit k of a suit
// is the rank "23456789TJQKA"[k]; the three bits above each suit are always clear. A `suit` is one
// such field taken alone, a `card` a field with one bit. The word converts to and from the class
// freely, so sets are joined and cut with |, & and ^.
#pragma once

#include "cards/bit_tables.h"
#include "cards/players_and_trumps.h"

#include <bit>
#include <cstdint>
#include <iosfwd>
#include <string>

namespace trikon {

constexpr std::uint64_t fullDeck = 0x1fff1fff1fff1fff;
constexpr int cardsOfHand = 13;
constexpr int cardsOfDeck = 52;

/// One card: the number of its suit and its rank as a one-bit mask.
struct OneCardInSuit {
    std::uint8_t suit;
    std::uint16_t card;

    bool operator==(const OneCardInSuit&) const = default;

    /// Suit letter and rank: "SA", "HT", "C2".
    std::string str() const;
    /// Suit symbol and rank.
    std::string strUTF8() const;
    void printUTF8(std::ostream& out);
};

class CardsConfiguration {
public:
    constexpr CardsConfiguration() = default;
    constexpr CardsConfiguration(std::uint64_t cards) : cards(cards) {}
    constexpr CardsConfiguration(OneCardInSuit card)
        : cards(std::uint64_t{card.card} << (16 * card.suit))
    {
    }

    constexpr operator std::uint64_t() const { return cards; }

    constexpr bool empty() const { return cards == 0; }
    constexpr int count() const { return std::popcount(cards); }
    constexpr std::uint16_t suit(int suitNumber) const
    {
        return static_cast<std::uint16_t>(cards >> (16 * suitNumber));
    }
    int countInSuit(int suitNumber) const { return _count_bits13[suit(suitNumber)]; }
    std::uint16_t highestCard(int suitNumber) const { return _highest_bit13[suit(suitNumber)]; }
    constexpr bool has(OneCardInSuit card) const { return (suit(card.suit) & card.card) != 0; }
    /// The largest of the four suit lengths.
    std::uint8_t longestSuitLength() const;

    constexpr void setSuit(int suitNumber, std::uint16_t suit);
    constexpr void add(OneCardInSuit card) { cards |= CardsConfiguration(card).cards; }
    constexpr void remove(OneCardInSuit card) { cards &= ~CardsConfiguration(card).cards; }
    constexpr CardsConfiguration& operator|=(CardsConfiguration other);
    constexpr CardsConfiguration& operator&=(CardsConfiguration other);
    constexpr CardsConfiguration& operator^=(CardsConfiguration other);

    /// The set in dot form, spades first: "AKQ..T.5432", or "AKQ.-.T.5432" with `dashIfEmpty`.
    std::string str(bool dashIfEmpty) const;
    /// The suits held, each behind its letter: "SAKQ DT C5432"; nothing for the empty set.
    std::string str_prefixed() const;

    /// Stores the next word of a hand, as `std::istream >> std::string` does; false without one.
    using TokenReader = bool (*)(std::istream& in, std::string& token);

    /// A token reader that stays within the current line.
    ///
    /// The line feed ends the word before it, or is an empty word of its own; nothing behind it is
    /// read. At the end of input the answer is whether a word was found.
    static bool read_line_by_line(std::istream& in, std::string& token);

    /// Reads the dot form ("AKQ.JT9.876.5432"), a suit without cards written as nothing or "-".
    ///
    /// Throws no_expected_exprassion when a dot is missing, and what `strToSuit` throws for a suit,
    /// with the position within that suit.
    void readDotStr(const std::string& text, const CardsConfiguration& forbidden);

    /// Reads one hand in any of its forms, drawing words from `read`.
    ///
    /// With `prePostAllowed`: words with a suit letter in front or behind ("SAKQ HJT9", "AKQS"), up
    /// to the last word. With `dotsAllowed`: the dot form in one word. Otherwise four words, spades
    /// first, "-" for a void, each behind a word that marks its suit if the first word is such a
    /// marker ("S AKQ H JT9 D 876 C 5432"). Nothing behind the last suit is read.
    ///
    /// A card of `forbidden`, or one read twice, is an error. Throws the parser_error family, and
    /// leaves the set partly written.
    void readDealHandExt(TokenReader read, std::istream& in, CardsConfiguration forbidden,
                         bool dotsAllowed, bool prePostAllowed);

    /// `readDealHandExt` with words that end at white space, within the line if `lineBounded`.
    void readDealHand(std::istream& in, const CardsConfiguration& forbidden, bool dotsAllowed,
                      bool lineBounded, bool prePostAllowed);
    void readDealHand(const std::string& text, const CardsConfiguration& forbidden,
                      bool dotsAllowed, bool lineBounded, bool prePostAllowed);

private:
    std::uint64_t cards = 0;
};

/// The hand that is the whole of `text`, in any form; as `readDealHand` with dots and suit letters.
///
/// Throws parser_error_msg with the position of the first character left over behind the hand.
CardsConfiguration readWholeHand(const std::string& text);

/// The next character that is not white space, or the stream's end value.
int read_non_white_char(std::istream& in);

/// Adds one suit written with its letter in front or behind to `hand` and to `forbidden`.
///
/// Throws parser_error_msg when `token` names no suit, and what `strToSuit` throws for the cards.
void parse_pre_post_fix_suit(const std::string& token, CardsConfiguration& hand,
                             CardsConfiguration& forbidden);

/// The dot form, voids as nothing.
std::ostream& operator<<(std::ostream& out, const CardsConfiguration& cards);
/// As `OneCardInSuit::str`.
std::ostream& operator<<(std::ostream& out, OneCardInSuit card);

// --- inline definitions ---

inline std::uint8_t CardsConfiguration::longestSuitLength() const
{
    int longest = 0;
    for (int suitNumber = 0; suitNumber < suitsCount; ++suitNumber) {
        longest = countInSuit(suitNumber) > longest ? countInSuit(suitNumber) : longest;
    }
    return static_cast<std::uint8_t>(longest);
}

constexpr void CardsConfiguration::setSuit(int suitNumber, std::uint16_t suit)
{
    cards &= ~(std::uint64_t{0xffff} << (16 * suitNumber));
    cards |= std::uint64_t{suit} << (16 * suitNumber);
}

constexpr CardsConfiguration& CardsConfiguration::operator|=(CardsConfiguration other)
{
    cards |= other.cards;
    return *this;
}

constexpr CardsConfiguration& CardsConfiguration::operator&=(CardsConfiguration other)
{
    cards &= other.cards;
    return *this;
}

constexpr CardsConfiguration& CardsConfiguration::operator^=(CardsConfiguration other)
{
    cards ^= other.cards;
    return *this;
}

}  // namespace trikon
