// Counts per player and suit, and the four-hand diagram of a position.
//
// West's column is as wide as its longest suit, North and South begin behind it and East begins
// behind their longest suit, so nothing overlaps and every hand is aligned:
//
//             S AKQ
//             H JT9
//     S 53            S JT9
//     H AK8642        H 3
//             S 7642
//             H Q
#include "cards/card_text.h"
#include "cards/situation.h"

#include <algorithm>
#include <langinfo.h>
#include <map>
#include <ostream>
#include <sstream>

namespace trikon {

namespace {

// The width of a column: the suit's name, a blank, and the longest holding ("-" for a void).
int columnWidth(CardsConfiguration hand) { return 2 + std::max<int>(1, hand.longestSuitLength()); }

bool localeHasSuitSymbols() { return std::string(nl_langinfo(CODESET)) == "UTF-8"; }

// "S AKQ", the name as a letter or a symbol. Either is one character wide on the screen.
std::string holdingText(CardsConfiguration hand, std::uint8_t suitNumber, bool symbols)
{
    const std::string name =
        symbols ? suitNumberToUTF8(suitNumber) : std::string(1, suitNumberToChar(suitNumber));
    return name + ' ' + suitToStr(hand.suit(suitNumber), true);
}

std::string blanks(int count) { return std::string(static_cast<unsigned>(count), ' '); }

void printHand(std::ostream& out, CardsConfiguration hand, int indent, bool symbols)
{
    for (int suitNumber = Spades; suitNumber >= Clubs; --suitNumber) {
        out << blanks(indent) << holdingText(hand, static_cast<std::uint8_t>(suitNumber), symbols)
            << '\n';
    }
}

void printSideBySide(std::ostream& out, CardsConfiguration west, CardsConfiguration east,
                     int eastIndent, bool symbols)
{
    for (int suitNumber = Spades; suitNumber >= Clubs; --suitNumber) {
        const auto suit = static_cast<std::uint8_t>(suitNumber);
        const int westWidth = 2 + std::max(1, west.countInSuit(suitNumber));
        out << holdingText(west, suit, symbols) << blanks(eastIndent - westWidth)
            << holdingText(east, suit, symbols) << '\n';
    }
}

void printAnalysis(std::ostream& out, std::span<const Move> analysis, bool symbols)
{
    std::map<std::int32_t, std::string, std::greater<>> cardsOfValue;
    for (const Move& move : analysis) {
        const OneCardInSuit card{move.suit, move.card};
        cardsOfValue[move.value] += ' ' + (symbols ? card.strUTF8() : card.str());
    }
    for (const auto& [value, cards] : cardsOfValue) {
        out << value << ':' << cards << '\n';
    }
}

}  // namespace

TrickCountConfiguration::TrickCountConfiguration(CardsConfiguration set,
                                                 const CardsConfiguration* hands)
{
    for (int player = West; player >= North; --player) {
        for (int suitNumber = Spades; suitNumber >= Clubs; --suitNumber) {
            const unsigned suit = set.suit(suitNumber) & hands[player].suit(suitNumber);
            counts = counts << 4 | static_cast<unsigned>(_count_bits13[suit]);
        }
    }
}

int TrickCountConfiguration::sum() const
{
    // Each nibble then counts a suit over all players; a suit's 13 cards fit in four bits.
    const std::uint64_t suits = (counts & 0xffff) + (counts >> 16 & 0xffff) +
                                (counts >> 32 & 0xffff) + (counts >> 48 & 0xffff);
    return static_cast<int>((suits & 15) + (suits >> 4 & 15) + (suits >> 8 & 15) +
                            (suits >> 12 & 15));
}

Situation::Situation(CardsConfiguration cards, const Hands& hands)
    : cards(cards), counts(cards, hands.data()), cardsCount(cards.count())
{
}

std::ostream& Situation::printFormated(std::ostream& out, const Hands& hands,
                                       std::span<const Move> analysis) const
{
    const auto shown = [&](PlayerNumber player) {
        return CardsConfiguration(hands[player] & cards);
    };
    const int gap = 2;
    const int indent = columnWidth(shown(West)) + gap;
    const int eastIndent =
        indent + std::max(columnWidth(shown(North)), columnWidth(shown(South))) + gap;
    const bool symbols = localeHasSuitSymbols();
    printHand(out, shown(North), indent, symbols);
    printSideBySide(out, shown(West), shown(East), eastIndent, symbols);
    printHand(out, shown(South), indent, symbols);
    printAnalysis(out, analysis, symbols);
    return out;
}

std::string Situation::getFormatedString(const Hands& hands, std::span<const Move> analysis) const
{
    std::ostringstream out;
    printFormated(out, hands, analysis);
    return out.str();
}

}  // namespace trikon
