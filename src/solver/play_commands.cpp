// The small language in which cards are played and taken back: "HK x 3 ut".
//
// A word that begins with a rank, an "x" or a suit is a card; the rank is tried first. All other
// words are commands, which begin with "u" (undo).
#include "cards/card_text.h"
#include "cards/parser_error.h"
#include "cards/translation.h"
#include "solver/interactive_dd_solver.h"

#include <istream>
#include <sstream>

namespace trikon {

namespace {

constexpr bool isLetter(char character, char lowerCase)
{
    return character == lowerCase || character == lowerCase - ('a' - 'A');
}

// Reads a suit letter at `text` and moves behind it; -1 and no move if there is none.
int parseSuit(const char*& text)
{
    const int suit = charToSuitNumber(*text);
    text += suit >= 0 ? 1 : 0;
    return suit;
}

}  // namespace

std::ostream& cant_play_card::print_to_stream(std::ostream& out) const
{
    return print_err(out) << translate("can't play chosen card");
}

const char* tryParseMove(const char* text, std::uint16_t& card, int& suit)
{
    card = parseRankOfCard(text);
    if (card != 0) {
        suit = parseSuit(text);
        return text;
    }
    if (isLetter(*text, 'x')) {
        suit = parseSuit(++text);
        return text;
    }
    suit = parseSuit(text);
    if (suit < 0) {
        return nullptr;
    }
    card = parseRankOfCard(text);
    return card == 0 && isLetter(*text, 'x') ? text + 1 : text;
}

void InteractiveDDSolver::doCommands(std::istream& in, bool anyPlayer)
{
    std::string word;
    while (in >> word) {
        doCommand(word, anyPlayer);
    }
}

void InteractiveDDSolver::doCommands(const char* text, bool anyPlayer)
{
    std::istringstream in(text);
    doCommands(in, anyPlayer);
}

void InteractiveDDSolver::doCommand(const std::string& word, bool anyPlayer)
{
    std::uint16_t card = 0;
    int suit = -1;
    const char* const end = tryParseMove(word.c_str(), card, suit);
    if (end == nullptr) {
        takeBack(word);
        return;
    }
    if (*end != '\0') {
        throw unexpected_character(word.c_str(), static_cast<int>(end - word.c_str()) + 1, *end);
    }
    if (!tryPlayCard(suit, card, anyPlayer)) {
        throw cant_play_card(word.c_str(), -1);
    }
}

void InteractiveDDSolver::takeBack(const std::string& word)
{
    if (!isLetter(word[0], 'u')) {
        throw parser_error_msg(word.c_str(), -1, translate("unrecognized command"));
    }
    const bool takesTrick = word.size() > 1 && isLetter(word[1], 't');
    const bool takesAll = word.size() > 1 && isLetter(word[1], 'a');
    if ((takesTrick || takesAll) && word.size() > 2) {
        throw unexpected_character(word.c_str(), 3, word[2]);
    }
    if (takesTrick) {
        unplayLastTrick();
    } else if (takesAll) {
        unplayLastCards(played.count());
    } else if (word.size() == 1) {
        unplayLastCard();
    }
    // Any other word that begins with "u" is skipped: "undo" does nothing.
}

}  // namespace trikon
