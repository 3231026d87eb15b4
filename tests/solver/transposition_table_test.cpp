// The rules by which bounds are matched, improved and widened.
#include "solver/transposition_table.h"

#include "support/literals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace trikon {

namespace {

// Only the number of cards matters to a node.
Situation withTricksLeft(int tricks)
{
    Situation situation;
    situation.cardsCount = 4 * tricks;
    return situation;
}

class TableNode : public testing::Test {
protected:
    int check(const char* pattern, std::int8_t target)
    {
        relevant = 0;
        return node.check(hand(pattern), situation, target, relevant);
    }
    void lower(const char* pattern, const char* ranks, std::int8_t bound)
    {
        CardsConfiguration cards = hand(pattern);
        node.update_lower_bound(cards, situation, coverOf(hand(ranks)), bound);
        EXPECT_EQ(cards, hand(pattern) & coverOf(hand(ranks)));
    }
    void upper(const char* pattern, const char* ranks, std::int8_t bound)
    {
        CardsConfiguration cards = hand(pattern);
        node.update_upper_bound(cards, coverOf(hand(ranks)), bound);
        EXPECT_EQ(cards, hand(pattern) & coverOf(hand(ranks)));
    }
    std::string entries() const
    {
        std::string text;
        for (const TranspositionTable::Entry& entry : node.entries()) {
            text += str_contat(text.empty() ? "" : " ", entry.pattern(), ':', int{entry.lower()},
                               '-', int{entry.upper()});
        }
        return text;
    }

    TranspositionTable::Node node;
    Situation situation = withTricksLeft(7);
    std::uint64_t relevant = 0;
};

}  // namespace

TEST_F(TableNode, DecidesTargetsOutsideItsBounds)
{
    EXPECT_EQ(check("AKQ...", 3), -1);
    lower("AK2...", "K...", 3);
    upper("AK2...", "K...", 5);
    EXPECT_EQ(entries(), "AK...:3-5");
    EXPECT_EQ(check("AK9...", 3), 3);
    EXPECT_EQ(check("AK9...", 6), 5);
    EXPECT_EQ(relevant, coverOf(hand("K...")));
    EXPECT_EQ(check("AK9...", 4), -1);
    EXPECT_EQ(check("AK9...", 5), -1);
    EXPECT_EQ(relevant, 0u);
}

TEST_F(TableNode, MatchesOnTheRanksFromTheLowestRelevantCardUpward)
{
    lower("AQ4.A..", "Q...", 2);
    EXPECT_EQ(check("AQ93.K.Q.J", 2), 2);
    EXPECT_EQ(check("AKQ.A..", 2), -1);  // a card in the gap
    EXPECT_EQ(check("A4.A..", 2), -1);
    lower("AQ4.A..", "...", 1);  // no rank matters at all
    EXPECT_EQ(check("J.T.9.8", 1), 1);
}

TEST_F(TableNode, NeverWeakensABound)
{
    lower("AK...", "K...", 3);
    lower("AK...", "K...", 2);
    upper("AK...", "K...", 5);
    upper("AK...", "K...", 6);
    EXPECT_EQ(entries(), "AK...:3-5");
    lower("AK...", "K...", 4);
    EXPECT_EQ(entries(), "AK...:4-5");
}

TEST_F(TableNode, WidensAnEntryWhoseOtherBoundSaysNothing)
{
    lower("AKQ...", "Q...", 3);
    lower("AKQ...", "A...", 4);
    EXPECT_EQ(entries(), "A...:4-7");
    node = {};
    lower("AKQ...", "Q...", 3);
    upper("AKQ...", "Q...", 5);
    lower("AKQ...", "A...", 4);  // the upper bound still needs the queen
    EXPECT_EQ(entries(), "AKQ...:4-5 A...:4-7");
    node = {};
    upper("AKQ...", "Q...", 5);
    upper("AKQ...", "A...", 4);
    EXPECT_EQ(entries(), "A...:0-4");
    node = {};
    upper("AKQ...", "Q...", 3);
    upper("AKQ...", "A...", 4);  // says less than the narrow entry
    EXPECT_EQ(entries(), "AKQ...:0-3 A...:0-4");
    lower("AKQ...", "Q...", 2);
    upper("AKQ...", "K...", 2);
    EXPECT_EQ(entries(), "AKQ...:2-2 A...:0-4 AK...:0-2");
}

TEST_F(TableNode, FindsEachOfManyEntriesAndMovesItOnePlaceEachTime)
{
    // Twelve entries that exclude each other, and their order as it should be.
    std::vector<std::string> expected;
    for (const char* suit : {"A...", "K...", "Q..."}) {
        for (const char* others : {".A..", ".K..", ".Q..", ".J.."}) {
            const CardsConfiguration cards = hand(suit) | hand(others);
            lower(cards.str(false).c_str(), "2.2..",
                  static_cast<std::int8_t>(expected.size() % 7 + 1));
            expected.push_back(str_contat(cards, ':', (expected.size() % 7 + 1), "-7"));
        }
    }
    std::mt19937 random(3);
    for (int question = 0; question < 300; ++question) {
        const std::size_t place = random() % expected.size();
        const std::string pattern = expected[place].substr(0, expected[place].find(':'));
        const int bound = expected[place][pattern.size() + 1] - '0';
        ASSERT_EQ(check(pattern.c_str(), 1), bound);
        if (place + 1 < expected.size()) {
            std::swap(expected[place], expected[place + 1]);
        }
        std::string text;
        for (const std::string& entry : expected) {
            text += str_contat(text.empty() ? "" : " ", entry);
        }
        ASSERT_EQ(entries(), text);
    }
    EXPECT_EQ(check("J.A..", 1), -1);
}

TEST(TableEntry, KeepsPatternAndBoundsApart)
{
    for (const CardsConfiguration pattern : {hand("..."), hand("AK2..2.A"), {fullDeck}}) {
        for (std::int8_t lower = 0; lower <= 13; ++lower) {
            for (std::int8_t upper = 0; upper <= 13; ++upper) {
                const TranspositionTable::Entry entry(pattern, lower, upper);
                ASSERT_EQ(entry.pattern(), pattern);
                ASSERT_EQ(entry.lower(), lower);
                ASSERT_EQ(entry.upper(), upper);
            }
        }
    }
}

TEST(TranspositionTable, FindsEachOfManyNodesWhereItWas)
{
    const auto table = std::make_unique<TranspositionTable>();
    std::vector<TranspositionTable::Node*> made;
    for (int round = 0; round < 2; ++round) {
        for (std::uint64_t number = 0; number < 30000; ++number) {
            for (const PlayerNumber leader : {North, East, South, West}) {
                made.push_back(&table->node(leader, TrickCountConfiguration(number)));
            }
        }
    }
    EXPECT_EQ(table->nodesCount(), made.size() / 2);
    EXPECT_TRUE(std::equal(made.begin(), made.begin() + 120000, made.begin() + 120000));
    EXPECT_EQ(std::set(made.begin(), made.end()).size(), made.size() / 2);
    table->clear();
    EXPECT_TRUE(table->node(North, TrickCountConfiguration(7)).entries().empty());
    EXPECT_EQ(table->nodesCount(), 1u);
}

TEST(TranspositionTable, TellsNodesApartWhoseHashesHaveTheSameUpperHalf)
{
    constexpr std::uint64_t multiplier = 0x9e3779b97f4a7c15;  // of the hash
    std::uint64_t inverse = multiplier;
    for (int bits = 3; bits < 64; bits *= 2) {
        inverse *= 2 - multiplier * inverse;
    }
    ASSERT_EQ(multiplier * inverse, 1u);
    const auto table = std::make_unique<TranspositionTable>();
    const auto nodeOf = [&](std::uint64_t product) {
        return &table->node(East, TrickCountConfiguration((product | 7ULL << 61) * inverse));
    };
    std::vector<TranspositionTable::Node*> made;
    for (std::uint64_t product = 0; product < 5; ++product) {
        made.push_back(nodeOf(product));
    }
    for (std::uint64_t product = 5; product-- > 0;) {
        EXPECT_EQ(nodeOf(product), made[product]);
    }
    EXPECT_EQ(table->nodesCount(), made.size());
}

TEST(TranspositionTable, ForgetsThePositionsWithFewCardsAndFindsTheOthers)
{
    const auto table = std::make_unique<TranspositionTable>();
    const auto forAll = [](auto function) {
        for (std::uint16_t number = 0; number < 30000; ++number) {
            for (const PlayerNumber leader : {North, East, South, West}) {
                function(leader, TrickCountConfiguration(number), number);
            }
        }
    };
    std::size_t kept = 0;
    forAll([&](PlayerNumber leader, TrickCountConfiguration counts, std::uint16_t number) {
        table->node(leader, counts).bestMove = {static_cast<std::uint8_t>(leader), number};
        kept += counts.sum() > 20 ? 1 : 0;
    });
    table->clear_most(20);
    EXPECT_EQ(table->nodesCount(), kept);
    forAll([&](PlayerNumber leader, TrickCountConfiguration counts, std::uint16_t number) {
        if (counts.sum() > 20) {
            const OneCardInSuit found = table->node(leader, counts).bestMove;
            ASSERT_EQ(found.suit, leader);
            ASSERT_EQ(found.card, number);
        }
    });
    EXPECT_EQ(table->nodesCount(), kept);
}

}  // namespace trikon
