// Texts of the reading errors that no reader gives so far; the others are in the readers' tests.
#include "cards/parser_error.h"

#include <gtest/gtest.h>

namespace trikon {

namespace {

TEST(ParserError, TheHeadHoldsWhatIsKnownOfTheText)
{
    EXPECT_STREQ(parser_error("", -1).what(), "Error: ");
    EXPECT_STREQ(parser_error("xy", 0).what(), "Error in \"xy\" at position 0: ");
    EXPECT_STREQ(unexpected_character("a\nb", 2, '\n').what(),
                 "Error in \"a\nb\" at position 2: unexpected character");
    EXPECT_STREQ(no_expected_exprassion(":", "x", "Nx", 2).what(),
                 "Error in \"Nx\" at position 2: not received expected expression \":\", received: "
                 "\"x\"");
    EXPECT_STREQ(card_error("T", 1, 0x0100).what(),
                 "Error in \"T\" at position 1: bad card  \"T\"");
}

TEST(ParserError, ACopyAndItsOriginalSayTheSame)
{
    const unexpected_character error("K?", 2, '?');
    const char* text = error.what();
    EXPECT_EQ(error.what(), text) << "the line is formatted once";
    EXPECT_STREQ(unexpected_character(error).what(), text);
}

}  // namespace

}  // namespace trikon
