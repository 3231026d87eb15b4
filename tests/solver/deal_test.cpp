// The single-suit tables: each rule against a slow reading of it, the play-out on known holdings.
#include "solver/deal.h"

#include "solver/suit_masks.h"
#include "support/endings.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace trikon {

namespace {

Hands randomDeal(std::mt19937_64& random)
{
    return randomEnding(random, cardsOfHand, EndingKind::anyCards);
}

// Who holds the cards of a suit, from the highest down: "NNEW".
std::string owners(const Deal& deal, int suitNumber, unsigned suit)
{
    std::string text;
    for (int rank = ranksOfSuit - 1; rank >= 0; --rank) {
        const auto card = static_cast<std::uint16_t>(suit & (1u << rank));
        if (card != 0) {
            text += playerToChar(deal.holderOf(suitNumber, card));
        }
    }
    return text;
}

// The highest cards of each hand, taken one by one.
unsigned slowTopRounds(const Deal& deal, int suitNumber, unsigned suit, int rounds)
{
    unsigned cards = 0;
    for (int player = 0; player < playersCount; ++player) {
        unsigned holding = suit & deal[player].suit(suitNumber);
        for (int count = 0; count < rounds; ++count) {
            cards |= _highest_bit13[holding];
            holding &= ~unsigned{_highest_bit13[holding]};
        }
    }
    return cards;
}

// The names of the suit's subsets are the same exactly where the order of the holders is.
void expectChains(const Deal& deal, int suitNumber)
{
    std::map<std::string, std::uint16_t> names;
    for (unsigned suit = 0; suit < holdingsOfSuit; ++suit) {
        const std::uint16_t name = deal.suitChain(suitNumber, static_cast<std::uint16_t>(suit));
        const std::string order = owners(deal, suitNumber, suit);
        ASSERT_EQ(owners(deal, suitNumber, name), order);
        ASSERT_EQ(names.emplace(order, name).first->second, name) << order;
    }
}

// All that the tables say about one subset of a suit.
std::string tablesOf(const Deal& deal, int suitNumber, std::uint16_t suit)
{
    std::string text = str_contat(deal.suitChain(suitNumber, suit));
    for (int rounds = 0; rounds < ranksOfSuit; ++rounds) {
        text += str_contat(' ', deal.topRounds(suitNumber, suit, rounds));
    }
    for (int player = 0; player < playersCount; ++player) {
        const SuitTricks record = deal.suitTricks(player, suitNumber, suit);
        text += str_contat(" | ", int{record.tricks}, ' ', int{record.extra}, ' ', record.leader,
                           ' ', record.winners, ' ', record.leadScore);
    }
    return text;
}

// The tables of all subsets, asked for from the least up, or else from the whole suit down.
std::vector<std::string> tablesOf(const Deal& deal, bool fromTheLeast)
{
    std::vector<std::string> tables(std::size_t{suitsCount} * holdingsOfSuit);
    for (unsigned count = 0; count < tables.size(); ++count) {
        const unsigned place =
            fromTheLeast ? count : static_cast<unsigned>(tables.size()) - 1 - count;
        const int suitNumber = static_cast<int>(place / holdingsOfSuit);
        const std::uint16_t dealt = deal.allCards().suit(suitNumber);
        tables[place] =
            tablesOf(deal, suitNumber, static_cast<std::uint16_t>(place % holdingsOfSuit & dealt));
    }
    return tables;
}

}  // namespace

TEST(Deal, ChainsNameTheOrderOfTheHolders)
{
    std::mt19937_64 random(5);
    const auto deal = std::make_unique<Deal>();
    for (int round = 0; round < 5; ++round) {
        deal->setHands(randomDeal(random));
        for (int suitNumber = 0; suitNumber < suitsCount; ++suitNumber) {
            expectChains(*deal, suitNumber);
        }
    }
}

TEST(Deal, TopRoundsAreTheHighestCardsOfEachHand)
{
    std::mt19937_64 random(6);
    const auto deal = std::make_unique<Deal>();
    deal->setHands(randomDeal(random));
    for (unsigned suit = 0; suit < holdingsOfSuit; ++suit) {
        for (int rounds = 0; rounds < ranksOfSuit; ++rounds) {
            ASSERT_EQ(deal->topRounds(Hearts, static_cast<std::uint16_t>(suit), rounds),
                      slowTopRounds(*deal, Hearts, suit, rounds))
                << suit << ", " << rounds;
        }
    }
}

TEST(Deal, CountsWhatASideCashesInOneSuit)
{
    struct Case {
        const char* hands;  // spades only; North leads
        int tricks;
        PlayerNumber leader;
        int partnersTricks;
        const char* winners;  // the lowest rank that matters, nothing if none does
    };
    const Case cases[] = {
        {"A... 2... 3... 4...", 1, North, 1, "A..."},
        {"3... 2... A... 4...", 1, South, 1, "A..."},
        {"3... A... 2... 4...", 0, North, 0, "..."},
        {"... 2... A... 3...", 0, North, 1, "..."},
        {"7... ... ... ...", 1, North, 0, "..."},
        {"AKQ... 987... 432... JT6...", 3, North, 3, "Q..."},
        {"AKQ... 987... 432... JT65...", 3, North, 3, "Q..."},
        {"A2... 98... K3... 65...", 2, North, 2, "K..."},
        {"Q... 98... AK... 65...", 2, South, 2, "K..."},   // an overtake
        {"A... 98... KQ... 65...", 1, North, 1, "A..."},   // blocked
        {"32... K4... AQ... 65...", 2, South, 1, "Q..."},  // a finesse over the left
        {"32... 65... AQ... K4...", 1, South, 1, "A..."},
        {"AQ... K4... 32... 65...", 1, North, 1, "A..."},
        {"432... KQ5... AJT... 876...", 1, South, 1, "A..."},
        {"AJ2... KT3... 987... Q54...", 1, North, 1, "A..."},
        {"A... ... 2... ...", 1, North, 1, "A..."},  // which partner wins matters
    };
    const auto deal = std::make_unique<Deal>();
    for (const Case& example : cases) {
        deal->setHands(handsOf(example.hands));
        const std::uint16_t suit = deal->allCards().suit(Spades);
        const SuitTricks record = deal->suitTricks(North, Spades, suit);
        const std::uint16_t winners = readWholeHand(example.winners).suit(Spades);
        const SuitTricks expected{
            static_cast<std::int16_t>(256 * (example.tricks - example.partnersTricks)),
            static_cast<std::uint16_t>(ranksFrom(winners) & fullSuit),
            static_cast<std::int8_t>(example.tricks), static_cast<std::int8_t>(example.tricks),
            example.leader};
        EXPECT_EQ(record, expected) << example.hands;
    }
}

TEST(Deal, ASecondDealLeavesNothingOfTheFirst)
{
    std::mt19937_64 random(7);
    const auto used = std::make_unique<Deal>();
    used->setHands(randomDeal(random));
    tablesOf(*used, true);
    const Hands second = randomEnding(random, 5, EndingKind::twoSuits);
    used->setHands(second);
    const auto fresh = std::make_unique<Deal>();
    fresh->setHands(second);
    EXPECT_EQ(tablesOf(*used, true), tablesOf(*fresh, true));
}

TEST(Deal, SaysTheSameInWhateverOrderItIsAskedAndByHowManyAtOnce)
{
    std::mt19937_64 random(8);
    const Hands hands = randomDeal(random);
    const auto alone = std::make_unique<Deal>();
    alone->setHands(hands);
    const std::vector<std::string> expected = tablesOf(*alone, true);
    const auto shared = std::make_unique<Deal>();
    shared->setHands(hands);
    std::vector<std::string> upward;
    std::vector<std::string> downward;
    std::thread other([&] { upward = tablesOf(*shared, true); });
    downward = tablesOf(*shared, false);
    other.join();
    EXPECT_EQ(upward, expected);
    EXPECT_EQ(downward, expected);
}

TEST(Deal, ClearsItsSidesAloneOrWithItsHands)
{
    const auto deal = std::make_unique<Deal>();
    const Hands hands = handsOf("AK... ... .AK.. ...");
    deal->setHands(hands);
    EXPECT_EQ(deal->sideCards(South), hands[North] | hands[South]);
    EXPECT_EQ(deal->sideCards(West + 1), hands[North] | hands[South]);
    EXPECT_TRUE(deal->sideCards(West).empty());
    deal->clearHelpers();
    EXPECT_TRUE(deal->sideCards(North).empty());
    EXPECT_EQ((*deal)[North], hands[North]);
    deal->clear();
    EXPECT_TRUE(deal->allCards().empty());
}

}  // namespace trikon
