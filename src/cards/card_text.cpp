// Characters of ranks, suits, players and trumps, and the text of one suit.
#include "cards/card_text.h"

#include "cards/cards_configuration.h"
#include "cards/parser_error.h"
#include "cards/players_and_trumps.h"

#include <array>
#include <ostream>
#include <string_view>

namespace trikon {

namespace {

constexpr std::string_view rankLetters = "23456789TJQKA";
constexpr std::string_view suitLetters = "CDHS";
constexpr std::string_view playerLetters = "NESW";

// A value per letter of the alphabet from `First` to `Last`, upper case, and from the lower case of
// `First` on; `nothing` for the letters and other characters between that mean nothing.
template <class Value, char First, char Last>
class LetterTable {
public:
    constexpr LetterTable(std::string_view letters, Value firstValue, Value nothing, auto next)
        : nothing(nothing)
    {
        values.fill(nothing);
        Value value = firstValue;
        for (const char letter : letters) {
            values[static_cast<unsigned>(letter - First)] = value;
            values[static_cast<unsigned>(letter - First + ('a' - 'A'))] = value;
            value = next(value);
        }
    }

    constexpr Value operator[](char letter) const
    {
        const int offset = letter - First;
        return offset < 0 || offset >= size ? nothing : values[static_cast<unsigned>(offset)];
    }

private:
    static constexpr int size = Last - First + 1 + ('a' - 'A');
    std::array<Value, size> values{};
    Value nothing;
};

constexpr auto oneMore = [](int value) { return value + 1; };
constexpr auto oneRankUp = [](std::uint16_t card) { return static_cast<std::uint16_t>(card << 1); };

constexpr LetterTable<int, 'C', 'S'> suitOfLetter(suitLetters, 0, -1, oneMore);
constexpr LetterTable<int, 'E', 'W'> playerOfLetter(playerLetters, 0, -1, oneMore);
constexpr LetterTable<std::uint16_t, 'A', 'T'> cardOfLetter("TJQKA", 0x0100, 0, oneRankUp);

}  // namespace

PlayerNumber charToPlayer(char letter) { return static_cast<PlayerNumber>(playerOfLetter[letter]); }

char playerToChar(PlayerNumber player) { return playerLetters[static_cast<unsigned>(player)]; }

int charToSuitNumber(char letter) { return suitOfLetter[letter]; }

char suitNumberToChar(std::uint8_t suitNumber) { return suitLetters[suitNumber]; }

Trump charToTrump(char letter)
{
    return letter == 'N' || letter == 'n' ? NoTrump : static_cast<Trump>(suitOfLetter[letter]);
}

std::uint16_t charToSuitCard(char rank)
{
    if (rank >= '2' && rank <= '9') {
        return static_cast<std::uint16_t>(1 << (rank - '2'));
    }
    return cardOfLetter[rank];
}

std::uint16_t parseRankOfCard(const char*& text)
{
    if (text[0] == '1' && text[1] == '0') {
        text += 2;
        return charToSuitCard('T');
    }
    const std::uint16_t card = charToSuitCard(*text);
    text += card != 0 ? 1 : 0;
    return card;
}

char cardToChar(std::uint16_t card)
{
    // As many ranks as there are bits below the card.
    return rankLetters[static_cast<unsigned>(_count_bits13[card - 1])];
}

std::string cardToStr10(std::uint16_t card)
{
    const char rank = cardToChar(card);
    return rank == 'T' ? "10" : std::string(1, rank);
}

char* suitToStrEnd(std::uint16_t suit, char* out, bool dashIfEmpty)
{
    if (suit == 0 && dashIfEmpty) {
        *out++ = '-';
    }
    while (suit != 0) {
        const std::uint16_t highest = _highest_bit13[suit];
        *out++ = cardToChar(highest);
        suit ^= highest;
    }
    return out;
}

const char* suitToStr(std::uint16_t suit, char* out, bool dashIfEmpty)
{
    *suitToStrEnd(suit, out, dashIfEmpty) = '\0';
    return out;
}

std::string suitToStr(std::uint16_t suit, bool dashIfEmpty)
{
    char ranks[ranksOfSuit];
    return {ranks, suitToStrEnd(suit, ranks, dashIfEmpty)};
}

std::uint16_t strToSuit(const char* text, std::uint16_t forbidden)
{
    if (*text == '-' || *text == '=') {
        return 0;
    }
    std::uint16_t suit = 0;
    for (const char* at = text; *at != '\0';) {
        const int position = static_cast<int>(at - text) + 1;
        const char character = *at;
        const std::uint16_t card = parseRankOfCard(at);
        if (card == 0) {
            throw unexpected_character(text, position, character);
        }
        if (((suit | forbidden) & card) != 0) {
            throw card_already_in_use(text, position, card);
        }
        suit |= card;
    }
    return suit;
}

const char* suitNumberToUTF8(std::uint8_t suitNumber)
{
    static constexpr const char* symbols[] = {"\u2663", "\u2666", "\u2665", "\u2660"};
    return symbols[suitNumber];
}

std::string OneCardInSuit::str() const { return {suitNumberToChar(suit), cardToChar(card)}; }

std::string OneCardInSuit::strUTF8() const
{
    return suitNumberToUTF8(suit) + std::string(1, cardToChar(card));
}

void OneCardInSuit::printUTF8(std::ostream& out) { out << strUTF8(); }

std::ostream& operator<<(std::ostream& out, OneCardInSuit card)
{
    return out << suitNumberToChar(card.suit) << cardToChar(card.card);
}

}  // namespace trikon
