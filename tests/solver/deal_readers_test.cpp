// Every way to read a deal for the solver prepares its tables, and a deal that fails none.
#include "solver/deal.h"
#include "support/endings.h"
#include "support/literals.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

namespace trikon {

namespace {

constexpr const char* three = "AKQ.JT9.876.5432 JT9.3.AKQJT.JT98 42.AKQ.5432.AKQ7";
constexpr const char* earlier = "A... K... Q... J...";

struct Reader {
    PlayerNumber (*read)(Deal& deal, std::istream& in);
    std::string good;
    std::string bad;
    PlayerNumber dealer = NoPlayer;
};

const Reader readers[] = {
    {[](Deal& deal, std::istream& in) { return in >> deal, NoPlayer; }, three,
     "AKQ... JT9... 87... "},
    {[](Deal& deal, std::istream& in) {
         return deal.readAllPlayers(in, "NESW", true, true), NoPlayer;
     },
     three, "AKQ... JT9... 876..."},
    {[](Deal& deal, std::istream& in) {
         return deal.readMixedDirectionHands(in, true, false), NoPlayer;
     },
     "AKQ.JT9.876.5432 87653 JT9 876542 3 9 AKQJT 6 JT98", "AK... JT Q9 - - - - - - 876"},
    {[](Deal& deal, std::istream& in) { return deal.readAllHandsFromPBNLike(in), NoPlayer; },
     std::string("N:") + three, "N:AK... QJ... T9... 87x..."},
    {[](Deal& deal, std::istream& in) { return deal.readFromBBOLIN(in); },
     "3S42HAKQD5432CAKQ7,S87653H876542D9C6,SAKQHJT9D876C5432", "3SAKQ,JT9,876,54", North},
    {[](Deal& deal, std::istream& in) {
         std::string word;
         in >> word;
         return deal.readFromBBOLIN(word.c_str());
     },
     "4S42HAKQD5432CAKQ7,S87653H876542D9C6,SAKQHJT9D876C5432", "4SAKQ,JT9,876,54", East},
};

// Whether sides and tables are those that `setHands` prepares, as far as a whole suit shows it.
bool isPrepared(const Deal& deal)
{
    const auto expected = std::make_unique<Deal>();
    expected->setHands(deal);
    bool same = deal.pattern(deal.allCards()) == expected->pattern(deal.allCards());
    for (int player = 0; player < playersCount; ++player) {
        same = same && deal.sideCards(player) == expected->sideCards(player);
        for (int suitNumber = 0; suitNumber < suitsCount; ++suitNumber) {
            const std::uint16_t suit = deal.allCards().suit(suitNumber);
            same = same && deal.suitTricks(player, suitNumber, suit) ==
                               expected->suitTricks(player, suitNumber, suit);
        }
    }
    return same;
}

bool sidesAreEmpty(const Deal& deal)
{
    return deal.sideCards(North).empty() && deal.sideCards(East).empty();
}

}  // namespace

TEST(SolverDealReaders, PrepareTheTablesOfACompleteDeal)
{
    const auto deal = std::make_unique<Deal>();
    for (const Reader& reader : readers) {
        deal->setHands(handsOf(earlier));
        std::istringstream in(reader.good);
        EXPECT_EQ(reader.read(*deal, in), reader.dealer) << reader.good;
        EXPECT_EQ(deal->toPBNString(North, fullDeck), str_contat("N:", three, " 87653.876542.9.6"));
        EXPECT_TRUE(isPrepared(*deal)) << reader.good;
    }
}

TEST(SolverDealReaders, LeaveNothingPreparedForADealThatFails)
{
    const auto deal = std::make_unique<Deal>();
    for (const Reader& reader : readers) {
        deal->setHands(handsOf(earlier));
        std::istringstream in(reader.bad);
        EXPECT_NE(errorOf([&] { reader.read(*deal, in); }), "no error") << reader.bad;
        EXPECT_TRUE(sidesAreEmpty(*deal)) << reader.bad;
    }
}

TEST(SolverDealReaders, PrepareTheTablesWithTheLastHand)
{
    const auto deal = std::make_unique<Deal>();
    deal->clear();
    std::istringstream in(earlier);
    for (int place = 0; place < playersCount; ++place) {
        EXPECT_TRUE(sidesAreEmpty(*deal)) << place;
        deal->readNextPlayer(in, "ESWN", true, false);
    }
    EXPECT_EQ(deal->nextPlayerToRead("ESWN"), NoPlayer);
    EXPECT_TRUE(isPrepared(*deal));
    deal->clearHelpers();
    deal->readNextPlayer(in, "ESWN", true, false);
    EXPECT_TRUE(sidesAreEmpty(*deal)) << "nothing was read, so nothing is worked out";
}

}  // namespace trikon
