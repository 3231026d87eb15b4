// Whole deals from text: hand after hand, as a diagram, from PBN and from LIN.
//
// All but LIN put the reader of one hand to use and pass it the cards that are given already, so a
// card that is given twice is reported where it stands for the second time.
#include "cards/card_text.h"
#include "cards/hands.h"
#include "cards/parser_error.h"
#include "cards/translation.h"

#include <cctype>
#include <istream>

namespace trikon {

namespace {

constexpr const char* clockwiseFrom[playersCount] = {"NESW", "ESWN", "SWNE", "WNES"};
constexpr int noSuit = -1;

// One hand in dot form or plain form.
CardsConfiguration readHand(std::istream& in, CardsConfiguration forbidden, bool lineBounded)
{
    CardsConfiguration hand;
    hand.readDealHand(in, forbidden, true, lineBounded, false);
    return hand;
}

void ensureLength(int expected, CardsConfiguration hand)
{
    if (hand.count() != expected) {
        throw bad_suit_len("", -1, static_cast<std::uint8_t>(expected),
                           static_cast<std::uint8_t>(hand.count()));
    }
}

std::string requiredWord(std::istream& in)
{
    std::string word;
    if (!(in >> word)) {
        throw unexpected_end("", -1);
    }
    return word;
}

// The first hand of a diagram; with `retry` whatever comes before it is passed over.
CardsConfiguration readFirstHand(std::istream& in, bool retry)
{
    while (true) {
        try {
            return readHand(in, CardsConfiguration(), false);
        } catch (const parser_error&) {
            if (!retry || !in.good()) {
                throw;
            }
        }
    }
}

// The hands of two players side by side, suit by suit.
class SideBySideReader {
public:
    SideBySideReader(std::istream& in, CardsConfiguration used) : in(in), used(used) {}

    void read(CardsConfiguration& left, CardsConfiguration& right)
    {
        for (int suitNumber = Spades; suitNumber >= Clubs; --suitNumber) {
            readSuit(left, suitNumber);
            readSuit(right, suitNumber);
        }
    }

private:
    void readSuit(CardsConfiguration& hand, int suitNumber)
    {
        std::string word = requiredWord(in);
        if (isFirstWord) {
            hasMarkers = word.size() == 1 && charToSuitCard(word[0]) == 0 && word[0] != '-';
            isFirstWord = false;
        }
        if (hasMarkers) {
            word = requiredWord(in);  // a marker is not looked at, only the holding behind it
        }
        hand.setSuit(suitNumber, strToSuit(word.c_str(), used.suit(suitNumber)));
        used.setSuit(suitNumber, used.suit(suitNumber) | hand.suit(suitNumber));
    }

    std::istream& in;
    CardsConfiguration used;
    bool isFirstWord = true;
    bool hasMarkers = false;
};

[[noreturn]] void throwNotReceived(const std::string& expected, int received)
{
    // A byte of a longer UTF-8 character is no character by itself.
    const bool showsReceived = std::isprint(received) != 0;
    throw no_expected_exprassion(
        expected, showsReceived ? std::string(1, static_cast<char>(received)) : "", "", -1);
}

// Reads "N:" and answers the player.
PlayerNumber readFirstPlayer(std::istream& in)
{
    const int letter = read_non_white_char(in);
    if (letter == std::istream::traits_type::eof()) {
        throw unexpected_end("", -1);
    }
    const PlayerNumber player = charToPlayer(static_cast<char>(letter));
    if (player == NoPlayer) {
        throwNotReceived(translate("player name (N, E, S or W)"), letter);
    }
    const int colon = in.get();
    if (colon == std::istream::traits_type::eof()) {
        throw unexpected_end("", -1);
    }
    if (colon != ':') {
        throwNotReceived(":", colon);
    }
    return player;
}

// Adds the cards of a LIN text from `at` on to the hands.
void readLinHands(Hands& hands, const std::string& text, std::size_t at)
{
    int player = South;
    int suitNumber = noSuit;  // kept across the comma
    for (; at < text.size(); ++at) {
        const int position = static_cast<int>(at) + 1;
        if (const std::uint16_t rank = charToSuitCard(text[at]); rank != 0) {
            if (suitNumber == noSuit) {
                throw parser_error_msg(text.c_str(), position, translate("unknown card suit"));
            }
            const OneCardInSuit card{static_cast<std::uint8_t>(suitNumber), rank};
            if (hands.allCards().has(card)) {
                throw card_already_in_use(text.c_str(), position, rank);
            }
            hands[player].add(card);
        } else if (const int suit = charToSuitNumber(text[at]); suit >= 0) {
            suitNumber = suit;
        } else if (text[at] == ',') {
            player = (player + 1) & 3;
        } else {
            throw unexpected_character(text.c_str(), position, text[at]);
        }
    }
}

PlayerNumber readLin(Hands& hands, const std::string& text)
{
    PlayerNumber dealer = NoPlayer;
    if (!text.empty() && text[0] >= '1' && text[0] <= '4') {
        dealer = static_cast<PlayerNumber>((text[0] + 1) & 3);  // '1' is South
    }
    hands.clear();
    readLinHands(hands, text, dealer == NoPlayer ? 0 : 1);
    hands.tryDeterminateRestCards();
    if (!hands.handsHaveEqualLengths()) {
        throw parser_error_msg(
            text.c_str(), -1,
            translate("not an distribiution where each player has as muny cards as others"));
    }
    return dealer;
}

}  // namespace

int Hands::readNextPlayer(std::istream& in, const char* order, bool completeLast, bool lineBounded)
{
    int place = 0;
    while (place < playersCount && !(*this)[charToPlayer(order[place])].empty()) {
        ++place;
    }
    if (place == playersCount) {
        return -1;
    }
    const CardsConfiguration hand = readHand(in, allCards(), lineBounded);
    if (place > 0) {
        ensureLength((*this)[charToPlayer(order[place - 1])].count(), hand);
    }
    (*this)[charToPlayer(order[place])] = hand;
    const bool isThird = place == playersCount - 2;
    return isThird && completeLast && tryDeterminateRestCards() ? place + 1 : place;
}

std::istream& Hands::readAllPlayers(std::istream& in, const char* order, bool completeLast,
                                    bool lineBounded)
{
    clear();
    while (nextPlayerToRead(order) != NoPlayer) {
        readNextPlayer(in, order, completeLast, lineBounded);
    }
    return in;
}

std::istream& Hands::readMixedDirectionHands(std::istream& in, bool completeLast, bool retryFirst)
{
    clear();
    hands[North] = readFirstHand(in, retryFirst);
    const int length = hands[North].count();
    SideBySideReader(in, hands[North]).read(hands[West], hands[East]);
    ensureLength(length, hands[West]);
    ensureLength(length, hands[East]);
    if (!completeLast || !tryDeterminateRestCards()) {
        hands[South] = readHand(in, allCards(), false);
    }
    return in;
}

std::istream& Hands::readFromPBN(std::istream& in)
{
    clear();
    PlayerNumber player = readFirstPlayer(in);
    for (int turn = 0; turn < playersCount; ++turn, player = nextPlayer(player)) {
        if (const std::string word = requiredWord(in); word != "-") {
            (*this)[player].readDotStr(word, allCards());
        }
    }
    return in;
}

std::istream& Hands::readAllHandsFromPBNLike(std::istream& in)
{
    const PlayerNumber first = readFirstPlayer(in);
    return readAllPlayers(in, clockwiseFrom[first], true, false);
}

PlayerNumber Hands::readFromBBOLIN(const char* text) { return readLin(*this, text); }

PlayerNumber Hands::readFromBBOLIN(std::istream& in) { return readLin(*this, requiredWord(in)); }

}  // namespace trikon
