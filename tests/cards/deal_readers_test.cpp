// The forms in which whole deals are read, what is said of bad ones, and that the readers give back
// what the writers wrote.
#include "cards/hands.h"
#include "cards/parser_error.h"
#include "support/literals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace trikon {

namespace {

const char* const north = "AKQ.JT9.876.5432";
const char* const east = "JT9.3.AKQJT.JT98";
const char* const south = "42.AKQ.5432.AKQ7";
const char* const west = "87653.876542.9.6";
const Hands deal = hands(north, east, south, west);

enum class Form { inTurn, lines, diagram, diagramInText, pbn, pbnLike, lin };

void read(Hands& hands, std::istream& in, Form form)
{
    switch (form) {
    case Form::inTurn: hands.readAllPlayers(in, "NESW", true, false); break;
    case Form::lines: hands.readAllPlayers(in, "NESW", true, true); break;
    case Form::diagram: hands.readMixedDirectionHands(in, true, false); break;
    case Form::diagramInText: hands.readMixedDirectionHands(in, true, true); break;
    case Form::pbn: hands.readFromPBN(in); break;
    case Form::pbnLike: hands.readAllHandsFromPBNLike(in); break;
    case Form::lin: hands.readFromBBOLIN(in); break;
    }
}

// The deal as PBN with "|" and what the reader left, or the error's text.
std::string readDeal(Form form, const std::string& text)
{
    std::istringstream in(text);
    Hands hands = deal;  // what was there before does not matter
    std::string error = errorOf([&] { read(hands, in, form); });
    if (error != "no error") {
        return error;
    }
    in.clear();
    return hands.toPBNString(North, fullDeck) + '|' +
           std::string(std::istreambuf_iterator<char>(in), {});
}

TEST(DealReaders, EveryFormGivesTheSameDeal)
{
    const std::string three = str_contat(north, ' ', east, ' ', south);
    const std::string all = three + ' ' + west;
    const std::string pbn = str_contat("N:", all, '|');
    const std::pair<Form, std::string> cases[] = {
        {Form::inTurn, three},
        {Form::inTurn, "AKQ J109 876 5432 S JT9 H 3 D AKQJT C JT98\n" + std::string(south)},
        {Form::lines, "AKQ JT9 876 5432\n" + std::string(east) + "\n42 AKQ 5432 AKQ7\n"},
        {Form::diagram, std::string(north) + "\n87653 JT9\n876542 3\n9 AKQJT\n6 JT98"},
        {Form::diagram, "AKQ JT9 876 5432  x 87653 x JT9  x 876542 x 3  - 9 A AKQJT  x 6 x JT98"},
        {Form::diagramInText,
         "Board 7, love all: " + std::string(north) + " 87653 JT9 876542 3 9 AKQJT 6 JT98"},
        {Form::pbn, " \n N:" + all},
        {Form::pbn, str_contat("s:", south, "\n", west, "\t", north, "  ", east)},
        {Form::pbnLike, "N:" + three},
        {Form::pbnLike, str_contat("w: ", west, ' ', north, " JT9 3 AKQJT JT98")},
        {Form::lin, "S42HAKQD5432CAKQ7,S87653H876542D9C6,SAKQHJT9D876C5432"},
        {Form::lin, "4s24haqkd2354c7akq,c6d9h876542s87653,sakqhjt9d876c5432,c89tjh3dtjqkas9tj"},
        {Form::lin, "1,C6D9H876542S87653,SAKQHJT9D876C5432,C89TJH3DTJQKAS9TJ"},
    };
    for (const auto& [form, text] : cases) {
        EXPECT_EQ(readDeal(form, text), pbn) << text;
    }
}

TEST(DealReaders, SomeDealsAreIncompleteOrLeaveTextBehind)
{
    const std::string ending = "A... K... Q... J...";
    const std::tuple<Form, std::string, std::string> cases[] = {
        {Form::inTurn, ending + " 10...", "N:A... K... Q... J...| 10..."},
        {Form::inTurn, "... - - - - " + ending, "N:A... K... Q... J...|"},
        {Form::diagram, "A... J K - - - - - - Q...", "N:A... K... Q... J...|"},
        {Form::diagram, "A... J K - - - - - - QT9... rest", "N:A... K... QT9... J...| rest"},
        {Form::diagram, "A... - J 2 - - - - - Q...", "N:A... J... Q... .2..|"},
        // "=" is no marker of the first hand, but one of West's.
        {Form::diagram, "= A = = = K = Q = - = - = - = - = - = - J - - -",
         "N:.A.. Q... J... K...|"},
        {Form::pbn, "N:- - - -", "N:... ... ... ...|"},
        {Form::pbn, "E:A... - KQ... -.2.-. rest", "N:.2.. A... ... KQ...| rest"},
        {Form::pbnLike, "E:" + ending, "N:J... A... K... Q...|"},
        {Form::lin, "SA,K,Q,HJ rest", "N:Q... .J.. A... K...| rest"},
        {Form::lin, "SA,K,Q,J,,,,", "N:Q... J... A... K...|"},
        {Form::lin, "2", "N:... ... ... ...|"},
    };
    for (const auto& [form, text, expected] : cases) {
        EXPECT_EQ(readDeal(form, text), expected) << text;
    }
}

TEST(DealReaders, ABadDealIsReportedWithItsTextAndPlace)
{
    const std::string used = " is already in use (in other hand or earlier in this hand)";
    const std::string end = "Error: Unexpected end.";
    const std::string noPlayer =
        "Error: not received expected expression \"player name (N, E, S or W)\"";
    const std::string lengths =
        ": not an distribiution where each player has as muny cards as others";
    const std::string n = north;
    const std::tuple<Form, std::string, std::string> cases[] = {
        {Form::inTurn, "", end},
        {Form::inTurn, "- - - -", end},
        {Form::inTurn, n + ' ' + east, end},
        {Form::inTurn, n + " J.3.AKQJT.JT98", "Error: Bad suit length: expected: 13 received: 11"},
        {Form::inTurn, "A... K... ...", "Error: Bad suit length: expected: 1 received: 0"},
        {Form::inTurn, n + " JQ 3 AKQJT JT98", "Error in \"JQ\" at position 2: card \"Q\"" + used},
        {Form::inTurn, "SA HK DQ CJ", "Error in \"SA\" at position 1: unexpected character \"S\""},
        {Form::lines, "- - - A\n\n\n\nA\n", "Error in \"A\" at position 1: card \"A\"" + used},
        {Form::diagram, "", end},
        {Form::diagram, "AK... J Q", end},
        {Form::diagram, "A... S", end},
        {Form::diagram, "A... S K H", end},
        {Form::diagram, "A... J - Q - - - - -", "Error: Bad suit length: expected: 1 received: 2"},
        {Form::diagram, "A... J - - - - - - -", "Error: Bad suit length: expected: 1 received: 0"},
        {Form::diagram, "A... J K - - - - - -", end},
        {Form::diagram, "A... KA", "Error in \"KA\" at position 2: card \"A\"" + used},
        {Form::diagram, "A... K QK", "Error in \"QK\" at position 2: card \"K\"" + used},
        {Form::diagram, "A... J K - - - - - - J - - -",
         "Error in \"J\" at position 1: card \"J\"" + used},
        {Form::diagram, "Board 7", "Error in \"Board\" at position 1: unexpected character \"B\""},
        {Form::diagramInText, "Board 7, love all",
         "Error in \"all\" at position 2: unexpected character \"l\""},
        {Form::diagramInText, " \n", end},
        {Form::pbn, "", end},
        {Form::pbn, " N", end},
        {Form::pbn, "X:", noPlayer + ", received: \"X\""},
        {Form::pbn, "\xc3\x9c:", noPlayer},
        {Form::pbn, "N A... K... Q... J...",
         "Error: not received expected expression \":\", received: \" \""},
        {Form::pbn, "N:A... K... Q...", end},
        {Form::pbn, "N:A... AKQJ T9 2", "Error: not received expected expression \".\""},
        {Form::pbn, "N:A... KA... - -", "Error in \"KA\" at position 2: card \"A\"" + used},
        {Form::pbn, "N:A..K.x - - -", "Error in \"x\" at position 1: unexpected character \"x\""},
        {Form::pbnLike, "", end},
        {Form::pbnLike, "7", noPlayer + ", received: \"7\""},
        {Form::pbnLike, "S\n", "Error: not received expected expression \":\""},
        {Form::pbnLike, "S:A... K... Q...", end},
        {Form::lin, " \n", end},
        {Form::lin, "AKQ", "Error in \"AKQ\" at position 1: unknown card suit"},
        {Form::lin, "3A", "Error in \"3A\" at position 2: unknown card suit"},
        {Form::lin, "5SA", "Error in \"5SA\" at position 1: unknown card suit"},
        {Form::lin, "3S10", "Error in \"3S10\" at position 3: unexpected character \"1\""},
        {Form::lin, "SA,HKSKA", "Error in \"SA,HKSKA\" at position 8: card \"A\"" + used},
        {Form::lin, "SAHKHK", "Error in \"SAHKHK\" at position 6: card \"K\"" + used},
        {Form::lin, std::string("SA\0K", 4), "Error in \"SA\" at position 3: unexpected character"},
        {Form::lin, "SA,K,Q", "Error in \"SA,K,Q\"" + lengths},
        // 39 cards, but 14 with South.
        {Form::lin, "SAKQJT98765432HA,HKQJT98765432,DAKQJT98765432",
         "Error in \"SAKQJT98765432HA,HKQJT98765432,DAKQJT98765432\"" + lengths},
    };
    for (const auto& [form, text, message] : cases) {
        EXPECT_EQ(readDeal(form, text), message) << text;
    }
}

TEST(DealReaders, HandsAreReadOneAtATime)
{
    std::istringstream in(str_contat(south, '\n', west, '\n', north, "\nrest"));
    Hands hands;
    EXPECT_EQ(hands.readNextPlayer(in, "SWNE", false, true), 0);
    EXPECT_EQ(hands.readNextPlayer(in, "SWNE", true, true), 1);
    EXPECT_EQ(hands.readNextPlayer(in, "SWNE", true, true), 3) << "the third gives the fourth";
    EXPECT_EQ(hands, deal);
    EXPECT_EQ(hands.readNextPlayer(in, "SWNE", true, true), -1);
    std::string rest;
    in >> rest;
    EXPECT_EQ(rest, "rest");

    in = std::istringstream(std::string(north) + " JT9 - - - - - - -");
    hands[North] = hands[East] = {};
    EXPECT_EQ(hands.readNextPlayer(in, "SWNE", false, false), 2) << "as asked, not completed";
    EXPECT_EQ(hands[East], hand("..."));
    EXPECT_EQ(errorOf([&] { hands.readNextPlayer(in, "SWNE", false, false); }),
              "Error: Bad suit length: expected: 13 received: 3");

    // The hand before counts, not the first.
    in = std::istringstream("JT - - -");
    hands = trikon::hands("K...", "AQ...", "...", "...");
    EXPECT_EQ(hands.readNextPlayer(in, "NESW", true, false), 2);

    // A card that somebody later in the order holds is taken, too.
    in = std::istringstream("A - - -");
    hands = trikon::hands("K...", "...", "A...", "...");
    EXPECT_THROW(hands.readNextPlayer(in, "NESW", true, false), card_already_in_use);
}

TEST(DealReaders, ADigitNamesTheDealer)
{
    Hands hands;
    EXPECT_EQ(hands.readFromBBOLIN("1SA,K,Q,J"), South);
    EXPECT_EQ(hands.readFromBBOLIN("2SA,K,Q,J"), West);
    EXPECT_EQ(hands.readFromBBOLIN("3SA,K,Q,J"), North);
    EXPECT_EQ(hands.readFromBBOLIN("4SA,K,Q,J"), East);
    EXPECT_EQ(hands.readFromBBOLIN("SA,K,Q,J"), NoPlayer);
    EXPECT_EQ(hands, trikon::hands("Q...", "J...", "A...", "K..."));
}

// --- what is written is read back ---

// Four random hands of so many cards.
Hands randomDeal(std::mt19937& engine, int cardsEach)
{
    std::vector<OneCardInSuit> deck;
    deck.reserve(cardsOfDeck);
    for (int index = 0; index < cardsOfDeck; ++index) {
        deck.push_back(
            {static_cast<std::uint8_t>(index & 3), static_cast<std::uint16_t>(1 << (index >> 2))});
    }
    std::shuffle(deck.begin(), deck.end(), engine);
    Hands hands;
    for (int index = 0; index < playersCount * cardsEach; ++index) {
        hands[index & 3].add(deck[static_cast<unsigned>(index)]);
    }
    return hands;
}

// The hands in LIN, South first; the last is left out if it can be.
std::string toLin(const Hands& hands)
{
    std::string text;
    for (const PlayerNumber player : {South, West, North, East}) {
        if (player != East || hands[East].count() < cardsOfHand) {
            text.append(player == South ? "" : ",").append(hands[player].str_prefixed());
        }
    }
    text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
    return text;
}

constexpr const char* orders[] = {"NESW", "ESWN", "SWNE", "WNES"};

// The hands in the order, a line each and as words with "-" for a void if not in dot form.
std::string toLines(const Hands& hands, int first, bool dots)
{
    std::string text;
    for (int turn = 0; turn < playersCount; ++turn) {
        std::string line = hands[(first + turn) & 3].str(!dots);
        if (!dots) {
            std::replace(line.begin(), line.end(), '.', ' ');
        }
        text += line + '\n';
    }
    return text;
}

template <class Action>
Hands readBack(const std::string& text, Action action)
{
    std::istringstream in(text);
    Hands hands;
    EXPECT_EQ(errorOf([&] { action(hands, in); }), "no error") << text;
    return hands;
}

void expectRoundTrips(const Hands& hands, int first, bool flag)
{
    const auto player = static_cast<PlayerNumber>(first);
    const std::string pbn = hands.toPBNString(player, fullDeck);
    const std::string lines = toLines(hands, first, flag);
    const auto inTurn = [&](Hands& back, std::istream& in) {
        back.readAllPlayers(in, orders[first], flag, (first & 1) != 0);
    };
    const auto asDiagram = [&](Hands& back, std::istream& in) {
        back.readMixedDirectionHands(in, flag, (first & 1) != 0);
    };
    EXPECT_EQ(readBack(pbn, [](Hands& back, auto& in) { back.readFromPBN(in); }), hands) << pbn;
    EXPECT_EQ(readBack(pbn, [](Hands& back, auto& in) { back.readAllHandsFromPBNLike(in); }), hands)
        << pbn;
    EXPECT_EQ(readBack(toLin(hands), [](Hands& back, auto& in) { back.readFromBBOLIN(in); }), hands)
        << toLin(hands);
    EXPECT_EQ(readBack(lines, inTurn), hands) << lines;
    EXPECT_EQ(readBack(hands.toString(), asDiagram), hands) << hands.toString();
}

TEST(DealReaders, GiveBackWhatTheWritersWrote)
{
    std::mt19937 engine(16);
    for (int round = 0; round < 5200; ++round) {
        expectRoundTrips(randomDeal(engine, 1 + round % cardsOfHand), round & 3, (round & 4) != 0);
        ASSERT_FALSE(HasFailure()) << "round " << round;
    }
}

TEST(DealReaders, GiveBackPbnOfHandsOfDifferentLengths)
{
    std::mt19937 engine(17);
    for (int round = 0; round < 2000; ++round) {
        const Hands whole = randomDeal(engine, cardsOfHand);
        const CardsConfiguration shown = randomDeal(engine, 1 + round % 12).allCards();
        Hands expected;
        for (int player = North; player <= West; ++player) {
            expected[player] = whole[player] & shown;
        }
        const std::string pbn = whole.toPBNString(static_cast<PlayerNumber>(round & 3), shown);
        EXPECT_EQ(readBack(pbn, [](Hands& back, auto& in) { back.readFromPBN(in); }), expected)
            << pbn;
    }
}

}  // namespace

}  // namespace trikon
