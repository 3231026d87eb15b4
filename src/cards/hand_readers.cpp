// One hand from text: words, dot form, plain form, suit letters in front or behind.
//
// The forms are tried in a fixed order, and a failing dot form is read again in plain form. So what
// a user is told about a bad dot form is what is wrong with it as plain text.
#include "cards/card_text.h"
#include "cards/cards_configuration.h"
#include "cards/parser_error.h"
#include "cards/translation.h"

#include <cctype>
#include <istream>
#include <sstream>

namespace trikon {

namespace {

bool isWhite(int character) { return std::isspace(character) != 0; }

bool readWord(std::istream& in, std::string& token) { return static_cast<bool>(in >> token); }

std::string requiredToken(CardsConfiguration::TokenReader read, std::istream& in)
{
    std::string token;
    if (!read(in, token)) {
        throw unexpected_end("", -1);
    }
    return token;
}

bool isPrePostFixSuit(const std::string& token)
{
    return token.size() >= 2 &&
           (charToSuitNumber(token.front()) >= 0 || charToSuitNumber(token.back()) >= 0);
}

// A lone character that cannot be a holding stands for the suit behind it.
bool isSuitMarker(const std::string& token)
{
    return token.size() == 1 && charToSuitCard(token[0]) == 0 && token[0] != '-' && token[0] != '=';
}

// Reads suits with their letters from `token` on, until no word is left. An empty word, as an empty
// line gives it, ends the hand.
CardsConfiguration readSuitsWithLetters(CardsConfiguration::TokenReader read, std::istream& in,
                                        std::string token, CardsConfiguration forbidden)
{
    CardsConfiguration hand;
    do {
        parse_pre_post_fix_suit(token, hand, forbidden);
    } while (read(in, token) && !token.empty());
    return hand;
}

// Reads one suit a word, spades first, the first word being `token`.
void readPlainForm(CardsConfiguration& hand, CardsConfiguration::TokenReader read, std::istream& in,
                   std::string token, const CardsConfiguration& forbidden)
{
    const bool hasMarkers = isSuitMarker(token);
    for (int suitNumber = Spades; suitNumber >= Clubs; --suitNumber) {
        if (suitNumber != Spades) {
            token = requiredToken(read, in);
        }
        if (hasMarkers) {
            token =
                requiredToken(read, in);  // a marker is not looked at, only the holding behind it
        }
        hand.setSuit(suitNumber, strToSuit(token.c_str(), forbidden.suit(suitNumber)));
    }
}

}  // namespace

int read_non_white_char(std::istream& in)
{
    int character = in.get();
    while (character != std::istream::traits_type::eof() && isWhite(character)) {
        character = in.get();
    }
    return character;
}

bool CardsConfiguration::read_line_by_line(std::istream& in, std::string& token)
{
    token.clear();
    bool afterWhite = true;
    while (true) {
        const int character = in.get();
        if (character == std::istream::traits_type::eof()) {
            return !token.empty();
        }
        if (character == '\n') {
            return true;
        }
        if (isWhite(character)) {
            afterWhite = true;
            continue;
        }
        if (afterWhite && !token.empty()) {
            in.unget();  // the first character of the next word
            return true;
        }
        afterWhite = false;
        token += static_cast<char>(character);
    }
}

void CardsConfiguration::readDotStr(const std::string& text, const CardsConfiguration& forbidden)
{
    std::string pieces[suitsCount];
    std::size_t begin = 0;
    for (int suitNumber = Spades; suitNumber > Clubs; --suitNumber) {
        const std::size_t dot = text.find('.', begin);
        if (dot == std::string::npos) {
            throw no_expected_exprassion(".", "", "", -1);
        }
        pieces[suitNumber] = text.substr(begin, dot - begin);
        begin = dot + 1;
    }
    pieces[Clubs] = text.substr(begin);
    for (int suitNumber = Spades; suitNumber >= Clubs; --suitNumber) {
        setSuit(suitNumber, strToSuit(pieces[suitNumber].c_str(), forbidden.suit(suitNumber)));
    }
}

void parse_pre_post_fix_suit(const std::string& token, CardsConfiguration& hand,
                             CardsConfiguration& forbidden)
{
    int suitNumber = token.empty() ? -1 : charToSuitNumber(token.front());
    std::string holding;
    if (suitNumber >= 0) {
        holding = token.substr(1);
    } else {
        suitNumber = token.empty() ? -1 : charToSuitNumber(token.back());
        if (suitNumber < 0) {
            throw parser_error_msg(token.c_str(), -1, translate("Can't parse suit name."));
        }
        holding = token.substr(0, token.size() - 1);
    }
    const std::uint16_t suit = strToSuit(holding.c_str(), forbidden.suit(suitNumber));
    hand.setSuit(suitNumber, hand.suit(suitNumber) | suit);
    forbidden.setSuit(suitNumber, forbidden.suit(suitNumber) | suit);
}

void CardsConfiguration::readDealHandExt(TokenReader read, std::istream& in,
                                         CardsConfiguration forbidden, bool dotsAllowed,
                                         bool prePostAllowed)
{
    const std::string first = requiredToken(read, in);
    if (prePostAllowed && isPrePostFixSuit(first)) {
        *this = readSuitsWithLetters(read, in, first, forbidden);
        return;
    }
    if (dotsAllowed) {
        try {
            readDotStr(first, forbidden);
            return;
        } catch (const parser_error&) {
            // The word is read again below, as the first suit of the plain form.
        }
    }
    readPlainForm(*this, read, in, first, forbidden);
}

void CardsConfiguration::readDealHand(std::istream& in, const CardsConfiguration& forbidden,
                                      bool dotsAllowed, bool lineBounded, bool prePostAllowed)
{
    readDealHandExt(lineBounded ? read_line_by_line : readWord, in, forbidden, dotsAllowed,
                    prePostAllowed);
}

void CardsConfiguration::readDealHand(const std::string& text, const CardsConfiguration& forbidden,
                                      bool dotsAllowed, bool lineBounded, bool prePostAllowed)
{
    std::istringstream in(text);
    readDealHand(in, forbidden, dotsAllowed, lineBounded, prePostAllowed);
}

CardsConfiguration readWholeHand(const std::string& text)
{
    // The readers below take a zero byte, which a script's text may hold, for the end of a word.
    if (const std::size_t zero = text.find('\0'); zero != std::string::npos) {
        throw unexpected_character(text.c_str(), static_cast<int>(zero) + 1, '\0');
    }
    std::istringstream in(text);
    CardsConfiguration hand;
    hand.readDealHand(in, CardsConfiguration(), true, false, true);
    if (read_non_white_char(in) != std::istream::traits_type::eof()) {
        const auto begin = static_cast<std::size_t>(in.tellg()) - 1;
        throw parser_error_msg(
            text.c_str(), static_cast<int>(begin) + 1,
            translate("\"%1%\" is left over after the hand.", {text.substr(begin)}));
    }
    return hand;
}

}  // namespace trikon
