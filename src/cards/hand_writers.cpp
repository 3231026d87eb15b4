// A hand and a deal as text: the dot form, the form with suit letters, the PBN line.
#include "cards/card_text.h"
#include "cards/cards_configuration.h"
#include "cards/hands.h"

#include <ostream>
#include <sstream>
#include <string_view>

namespace trikon {

namespace {

// Three dots, and thirteen cards or four dashes at most for a hand; 52 ranks if somebody holds all.
constexpr int longestDotForm = cardsOfDeck + 3;

// Writes the dot form without a terminator and answers its end.
char* writeDotForm(CardsConfiguration cards, char* out, bool dashIfEmpty)
{
    for (int suitNumber = Spades; suitNumber >= Clubs; --suitNumber) {
        // The spare bits of a mask are no cards.
        out = suitToStrEnd(cards.suit(suitNumber) & fullSuit, out, dashIfEmpty);
        if (suitNumber != Clubs) {
            *out++ = '.';
        }
    }
    return out;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const CardsConfiguration& cards)
{
    char text[longestDotForm];
    return out << std::string_view(text, writeDotForm(cards, text, false));
}

std::string CardsConfiguration::str(bool dashIfEmpty) const
{
    char text[longestDotForm];
    return {text, writeDotForm(*this, text, dashIfEmpty)};
}

std::string CardsConfiguration::str_prefixed() const
{
    std::string text;
    for (int suitNumber = Spades; suitNumber >= Clubs; --suitNumber) {
        if (suit(suitNumber) == 0) {
            continue;
        }
        text += text.empty() ? "" : " ";
        text += suitNumberToChar(static_cast<std::uint8_t>(suitNumber));
        text += suitToStr(suit(suitNumber), false);
    }
    return text;
}

std::ostream& Hands::writeToPBN(std::ostream& out, PlayerNumber first, std::uint64_t mask) const
{
    out << playerToChar(first) << ':';
    for (int turn = 0; turn < playersCount; ++turn) {
        const CardsConfiguration shown = (*this)[(first + turn) & 3] & mask;
        out << (turn == 0 ? "" : " ") << shown;
    }
    return out;
}

std::string Hands::toPBNString(PlayerNumber first, std::uint64_t mask) const
{
    std::ostringstream out;
    writeToPBN(out, first, mask);
    return out.str();
}

}  // namespace trikon
