// Letters of players, suits, trumps and ranks, and the text of one suit.
#include "cards/card_text.h"

#include "cards/cards_configuration.h"
#include "cards/parser_error.h"
#include "support/literals.h"

#include <gtest/gtest.h>

#include <sstream>

namespace trikon {

namespace {

// The place of `letter` in `upper` or `lower`, -1 if in neither.
int placeIn(const std::string& upper, const std::string& lower, char letter)
{
    const std::size_t place = std::min(upper.find(letter), lower.find(letter));
    return place == std::string::npos ? -1 : static_cast<int>(place);
}

TEST(CardText, EveryCharacterIsALetterOfItsAlphabetOrNothing)
{
    for (int code = -128; code < 128; ++code) {
        const char letter = static_cast<char>(code);
        const int suit = placeIn("CDHS", "cdhs", letter);
        const int rank = placeIn("23456789TJQKA", "23456789tjqka", letter);
        EXPECT_EQ(charToPlayer(letter), placeIn("NESW", "nesw", letter)) << code;
        EXPECT_EQ(charToSuitNumber(letter), suit) << code;
        EXPECT_EQ(charToTrump(letter), letter == 'N' || letter == 'n' ? NoTrump : suit) << code;
        EXPECT_EQ(charToSuitCard(letter), rank < 0 ? 0 : 1 << rank) << code;
        if (rank >= 0) {
            const auto card = static_cast<std::uint16_t>(1 << rank);
            EXPECT_EQ(cardToChar(card), std::toupper(letter));
            EXPECT_EQ(cardToStr10(card), rank == 8 ? "10" : std::string(1, cardToChar(card)));
        }
    }
}

TEST(CardText, ARankIsReadAndTheTextMovedBehindIt)
{
    for (const auto& [text, card, read] : {std::tuple{"10S", 0x0100, 2}, std::tuple{"1", 0, 0},
                                           std::tuple{"t9", 0x0100, 1}, std::tuple{"", 0, 0}}) {
        const char* at = text;
        EXPECT_EQ(parseRankOfCard(at), card) << text;
        EXPECT_EQ(at - text, read) << text;
    }
}

TEST(CardText, AHoldingIsReadToTheEndOfItsText)
{
    EXPECT_EQ(strToSuit("AKQJT98765432", 0), 0x1fff);
    EXPECT_EQ(strToSuit("A10", 0), 0x1100);
    EXPECT_EQ(strToSuit("akq", 0), 0x1c00);
    for (const char* nothing : {"", "-", "=", "-AK"}) {
        EXPECT_EQ(strToSuit(nothing, 0x1fff), 0) << nothing;
    }
}

TEST(CardText, ABadHoldingIsReportedAtItsPlace)
{
    const std::string used = " is already in use (in other hand or earlier in this hand)";
    const std::tuple<const char*, std::uint16_t, std::string> cases[] = {
        {"AKA", 0, "Error in \"AKA\" at position 3: card \"A\"" + used},
        {"AK", 0x1000, "Error in \"AK\" at position 1: card \"A\"" + used},
        {"9T10", 0, "Error in \"9T10\" at position 3: card \"T\"" + used},
        {"A1", 0, "Error in \"A1\" at position 2: unexpected character \"1\""},
        {"A K", 0, "Error in \"A K\" at position 2: unexpected character \" \""},
        {"A\xc3\x84", 0, "Error in \"A\xc3\x84\" at position 2: unexpected character"},
    };
    for (const auto& [text, forbidden, message] : cases) {
        EXPECT_EQ(errorOf([&text = text, &used = forbidden] { strToSuit(text, used); }), message);
    }
}

TEST(CardText, SuitsAndCardsAreWrittenFromTheHighestDown)
{
    EXPECT_EQ(suitToStr(0x1101, true), "AT2");
    EXPECT_EQ(suitToStr(0, true), "-");
    EXPECT_EQ(suitToStr(0, false), "");
    char text[14];
    EXPECT_STREQ(suitToStr(0x1fff, text, true), "AKQJT98765432");

    OneCardInSuit card{Hearts, 0x0100};
    std::ostringstream out;
    out << card << ' ';
    card.printUTF8(out);
    EXPECT_EQ(out.str(), "HT \u2665T");
    EXPECT_EQ(card.str(), "HT");
}

}  // namespace

}  // namespace trikon
