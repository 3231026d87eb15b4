// The order of leads, and those that are left out.
#include "solver/leads.h"

#include "support/endings.h"

#include <gtest/gtest.h>

#include <gmock/gmock.h>
#include <memory>
#include <string>

namespace trikon {

namespace {

std::string groupOf(const MoveFast& lead)
{
    EXPECT_EQ(lead.card, lowestCard(lead.equivalents));
    return CardsConfiguration(onlySuit(lead.suit, lead.equivalents)).str_prefixed();
}

// The groups that are still to be led: "SAK" for ace and king of spades.
std::string rest(Leads leads)
{
    std::string groups;
    while (leads.next()) {
        groups += str_contat(groups.empty() ? "" : " ", groupOf(leads.present()));
    }
    return groups;
}

constexpr OneCardInSuit none{Clubs, 0};
constexpr OneCardInSuit three{Spades, 1 << 1};
constexpr OneCardInSuit eight{Spades, 1 << 6};
constexpr OneCardInSuit jack{Spades, 1 << 9};
constexpr OneCardInSuit ace{Spades, 1 << 12};

// North is long in spades, of which queen and jack are one group, and has the ace of hearts.
class LeadsOfNorth : public testing::Test {
protected:
    LeadsOfNorth()
    {
        deal->setHands(handsOf("AQJ83.A2.. KT.K54.32. 97.Q76.54. 65.JT9.76."));
        situation = Situation(deal->allCards(), *deal);
    }
    void rememberBest(OneCardInSuit card)
    {
        memory->best[North][card.suit][situation.cards.suit(card.suit)] = card.card;
    }
    // With `asked` as the present one.
    Leads leadsFrom(OneCardInSuit asked) const
    {
        Leads leads(situation, *deal, memory->best, North, asked);
        EXPECT_TRUE(leads.next());
        EXPECT_EQ(leads.present().suit, asked.suit);
        EXPECT_NE(leads.present().equivalents & asked.card, 0);
        return leads;
    }
    std::string all(OneCardInSuit asked) const
    {
        return rest(Leads(situation, *deal, memory->best, North, asked));
    }

    struct Memory {
        BestLeads best{};
    };
    std::unique_ptr<Deal> deal = std::make_unique<Deal>();
    std::unique_ptr<Memory> memory = std::make_unique<Memory>();
    Situation situation;
};

}  // namespace

TEST_F(LeadsOfNorth, BeginWithTheOneAskedForAndItsSuitThenTheBestThenTheHighest)
{
    EXPECT_THAT(all(none), testing::AnyOf("SA S3 S8 SQJ HA H2", "HA H2 SA S3 S8 SQJ"));
    EXPECT_EQ(all(jack), "SQJ SA S3 S8 HA H2");
    rememberBest(eight);
    EXPECT_EQ(all(jack), "SQJ S8 SA S3 HA H2");
    EXPECT_EQ(all(eight), "S8 SA S3 SQJ HA H2");
    // North does not have it, but its suit comes first.
    EXPECT_EQ(all({Hearts, 1 << 3}), "HA H2 S8 SA S3 SQJ");
}

TEST_F(LeadsOfNorth, LeaveOutWhatFailsAlike)
{
    const CardsConfiguration fromQueen = coverOf(readWholeHand("Q..."));
    // What is left when `failed` has failed for these reasons.
    const auto restAfter = [&](OneCardInSuit failed, CardsConfiguration reasons) {
        Leads leads = leadsFrom(failed);
        leads.leaveOutAlike(reasons);
        return rest(leads);
    };
    EXPECT_EQ(restAfter(three, fromQueen),
              "SA SQJ HA H2");  // nor does the rank of the eight matter
    EXPECT_EQ(restAfter(ace, fromQueen), "SQJ S3 S8 HA H2");
    EXPECT_EQ(restAfter(ace, {}), "HA H2");
    Leads leads = leadsFrom(ace);
    leads.leaveOutSuit();
    EXPECT_EQ(rest(leads), "HA H2");
}

}  // namespace trikon
