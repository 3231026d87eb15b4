// The forms in which one hand is read, and what is said of bad ones.
#include "cards/cards_configuration.h"
#include "support/literals.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace trikon {

namespace {

struct Switches {
    bool dots = true;
    bool lineBounded = false;
    bool prePost = true;
};

// The hand in dot form, or the error's text; behind "|" what the reader left.
std::string readHand(const std::string& text, Switches switches, CardsConfiguration forbidden = {})
{
    std::istringstream in(text);
    CardsConfiguration read;
    std::string error = errorOf([&] {
        read.readDealHand(in, forbidden, switches.dots, switches.lineBounded, switches.prePost);
    });
    if (error != "no error") {
        return error;
    }
    in.clear();
    return read.str(false) + '|' + std::string(std::istreambuf_iterator<char>(in), {});
}

TEST(HandReaders, EveryFormGivesTheSameHand)
{
    const Switches all;
    for (const char* text :
         {"AKQ.JT9.876.5432", "akq.j109.876.5432", "AKQ JT9 876 5432", "S AKQ H JT9 D 876 C 5432",
          "SAKQ HJT9 D876 C5432", "C5432 AKs h9 HJT 876D SQ", " \n AKQ\n JT9 876\t5432"}) {
        EXPECT_EQ(readHand(text, all), "AKQ.JT9.876.5432|") << text;
    }
    EXPECT_EQ(readHand("...AKQJT98765432", all), "...AKQJT98765432|");
    EXPECT_EQ(readHand("- = AKQ - ", all), "..AKQ.| ");
    EXPECT_EQ(readHand("-.=.AKQ.", all), "..AKQ.|");
    EXPECT_EQ(readHand("AKQS", all), "AKQ...|");
    EXPECT_EQ(readHand("x AKQ - JT9 ? 876 - 5432 rest", all), "AKQ.JT9.876.5432| rest")
        << "whatever stands in a marker's place is skipped";
}

TEST(HandReaders, SwitchesTurnFormsOff)
{
    EXPECT_EQ(readHand("AKQ.JT9.876.5432", {.dots = false}),
              "Error in \"AKQ.JT9.876.5432\" at position 4: unexpected character \".\"");
    EXPECT_EQ(readHand("SAKQ HJT9", {.prePost = false}),
              "Error in \"SAKQ\" at position 1: unexpected character \"S\"");
}

TEST(HandReaders, ALineEndEndsAWordAndAnEmptyLineIsAnEmptyWord)
{
    const Switches lines{.lineBounded = true};
    EXPECT_EQ(readHand("SAK HQ \n\nSJ", lines), "AK.Q..|SJ") << "an empty line ends the hand";
    EXPECT_EQ(readHand("AK\n\nQ\nJ rest", lines), "AK..Q.J|rest") << "and is a void in plain form";

    std::istringstream in("ab  cd\n\n ef");
    std::string token;
    std::vector<std::string> tokens;
    while (CardsConfiguration::read_line_by_line(in, token)) {
        tokens.push_back(token);
    }
    EXPECT_EQ(tokens, (std::vector<std::string>{"ab", "cd", "", "ef"}));
}

TEST(HandReaders, ABadHandIsReportedWithItsTextAndPlace)
{
    const Switches all;
    const CardsConfiguration heartKing = hand(".K..");
    const std::string used = " is already in use (in other hand or earlier in this hand)";
    const std::pair<const char*, std::string> cases[] = {
        {"", "Error: Unexpected end."},
        {"AKQ JT9 876", "Error: Unexpected end."},
        {"x AKQ -", "Error: Unexpected end."},
        {"SAK SK", "Error in \"K\" at position 1: card \"K\"" + used},
        {"SA AK", "Error in \"AK\": Can't parse suit name."},
        {"SAKX", "Error in \"AKX\" at position 3: unexpected character \"X\""},
        {"HQK", "Error in \"QK\" at position 2: card \"K\"" + used},
        // A dot form that fails is read again in plain form, so this is what is said of it.
        {"A.KK..", "Error in \"A.KK..\" at position 2: unexpected character \".\""},
        {"A.K.2.3.4", "Error in \"A.K.2.3.4\" at position 2: unexpected character \".\""},
    };
    for (const auto& [text, message] : cases) {
        EXPECT_EQ(readHand(text, all, heartKing), message) << text;
    }
    EXPECT_EQ(errorOf([] { hand("AK.Q.J"); }), "Error: not received expected expression \".\"");
    EXPECT_EQ(errorOf([] { hand("AK.QXX.J.2"); }),
              "Error in \"QXX\" at position 2: unexpected character \"X\"");
}

TEST(HandReaders, GiveBackWhatTheWritersWrote)
{
    std::mt19937_64 engine(16);
    for (int round = 0; round < 4000; ++round) {
        CardsConfiguration cards = fullDeck;
        for (int thinned = 0; thinned <= round % 6; ++thinned) {
            cards &= engine();
        }
        for (const std::string& text : {cards.str(false), cards.str(true), cards.str_prefixed()}) {
            if (!text.empty()) {  // the empty set has no suit to name
                EXPECT_EQ(readWholeHand(text), cards) << text;
            }
        }
    }
}

TEST(HandReaders, TextBehindAWholeHandIsNamed)
{
    EXPECT_EQ(readWholeHand(" AKQ.JT9.876.5432 \n"), hand("AKQ.JT9.876.5432"));
    EXPECT_EQ(errorOf([] { readWholeHand("AK.Q.J.2 and more"); }),
              "Error in \"AK.Q.J.2 and more\" at position 10: \"and more\" is left over after the "
              "hand.");
    EXPECT_EQ(errorOf([] { readWholeHand(std::string("SAK\0Q", 5)); }),
              "Error in \"SAK\" at position 4: unexpected character");
}

}  // namespace

}  // namespace trikon
