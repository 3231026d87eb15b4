// What each format writes and the line state it answers.
#include "app/deal_formats.h"

#include "support/captured_output.h"
#include "support/literals.h"

#include <gtest/gtest.h>

namespace trikon {

namespace {

TEST(DealFormats, EachWritesTheDealAndAnswersItsLineState)
{
    const Hands deal =
        hands("AKQ.JT9.876.5432", "JT9..AKQJT.AKJT9", "5432.AKQ.5432.Q8", "876.8765432.9.76");
    const struct {
        const char* name;
        std::string text;
        LineState state;
    } cases[] = {
        {"none", "", NothingWritten},
        {"full", deal.toString(), BlockEnded},
        {"NESW", "AKQ.JT9.876.5432 JT9..AKQJT.AKJT9 5432.AKQ.5432.Q8 876.8765432.9.76", LineOpen},
        {"PBN", "N:AKQ.JT9.876.5432 JT9..AKQJT.AKJT9 5432.AKQ.5432.Q8 876.8765432.9.76", LineOpen},
        {"short",
         "           AKQ.JT9.876.5432\n"
         "876.8765432.9.76      JT9..AKQJT.AKJT9\n"
         "           5432.AKQ.5432.Q8\n",
         BlockEnded},
    };
    for (const auto& [name, text, state] : cases) {
        const CapturedOutput output;
        EXPECT_EQ(str_to_print_f(name)(deal), state) << name;
        EXPECT_EQ(output.text(), text) << name;
    }
}

TEST(DealFormats, AnyOtherNameIsQuotedInTheError)
{
    for (const std::string name : {"nesw", "pbn", "None", "FULL", "short ", "", "100%1%"}) {
        EXPECT_EQ(errorOf([&] { str_to_print_f(name); }),
                  '"' + name + "\" is not valid name of print format.");
    }
}

}  // namespace

}  // namespace trikon
