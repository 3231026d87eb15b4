// The orders in which the hands may hold the cards of one suit, and what their subsets are called.
//
// The orders are listed by their number of cards. Each comes from one with a card less, and so does
// all that is said about it; no card is played here (`suit_play_out.cpp` does that when it is asked
// for), and only what needs no play is written into the records.
#include "solver/deal.h"
#include "solver/move_ordering.h"
#include "solver/suit_masks.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace trikon {

namespace {

// The orders of a whole suit when the hands hold its cards by turns; more there cannot be.
constexpr std::size_t mostOrders = 5968;

}  // namespace

// Fills the tables of one suit.
class SuitAnalysis {
public:
    SuitAnalysis(Deal& deal, int suitNumber);

    void analyse();

private:
    // A hand's cards: their number and strength, and as trumps how many cannot be beaten, the
    // lowest of these by its place in the order, and the opponents' cards that may still beat a
    // lower one.
    struct Holding {
        std::uint8_t count;
        std::uint8_t sure;
        std::uint8_t lowest;
        std::uint8_t toBeat;
        std::int16_t strength;
    };
    // An order of holders: the name of its subsets, and the names with one card more below, by the
    // hand of that card (invalid where the hand has none left).
    struct Order {
        Deal::Subset name;
        std::array<Deal::Subset, playersCount> longer;
        std::array<Holding, playersCount> holdings;
        std::array<std::uint8_t, 2> tops;  // of each side: its highest cards above all others
    };

    void listOrders();
    void addOrder(std::size_t shorter, unsigned player, std::uint16_t card);
    static void addCard(Order& order, unsigned player, std::uint16_t card);
    static SureTrumps sureTrumps(const Order& order, unsigned side);
    void weighLeads(const Order& order);
    void nameSubsets();
    void clearRecords();

    Deal& deal;
    int suitNumber;
    std::array<std::uint16_t, playersCount> dealt{};
    std::vector<Order> orders;
};

SuitAnalysis::SuitAnalysis(Deal& deal, int suitNumber) : deal(deal), suitNumber(suitNumber)
{
    for (int player = 0; player < playersCount; ++player) {
        dealt[static_cast<unsigned>(player)] = deal[player].suit(suitNumber);
    }
}

void SuitAnalysis::analyse()
{
    listOrders();
    nameSubsets();
    clearRecords();
}

// The order without cards, and then from each order those with one card more. A further card is the
// highest that its hand has below the others, which makes each order's cards the highest.
void SuitAnalysis::listOrders()
{
    orders.reserve(mostOrders);
    orders.push_back({});
    weighLeads(orders[0]);
    std::fill_n(deal.trumps[suitNumber][0], 2, SureTrumps{0, 0});
    std::fill_n(deal.tops[suitNumber][0], ranksOfSuit, std::uint16_t{0});
    for (std::size_t order = 0; order < orders.size(); ++order) {
        const std::uint16_t suit = orders[order].name.chain;
        const int below = suit == 0 ? fullSuit : lowestCard(suit) - 1;
        for (unsigned player = 0; player < playersCount; ++player) {
            const std::uint16_t next = _highest_bit13[dealt[player] & below];
            if (next != 0) {
                addOrder(order, player, next);
            }
        }
    }
}

// What can fall in so many rounds is what can fall of the shorter order, and `card` with it from
// that round on in which its hand has nothing higher left.
void SuitAnalysis::addOrder(std::size_t shorter, unsigned player, std::uint16_t card)
{
    const std::uint16_t suit = orders[shorter].name.chain;
    const auto added = static_cast<std::uint16_t>(orders.size());
    orders[shorter].longer[player] = {static_cast<std::uint16_t>(suit | card), added};
    orders.push_back(
        {orders[shorter].longer[player], {}, orders[shorter].holdings, orders[shorter].tops});
    addCard(orders[added], player, card);
    for (unsigned side = 0; side < 2; ++side) {
        deal.trumps[suitNumber][added][side] = sureTrumps(orders[added], side);
    }
    weighLeads(orders[added]);
    const std::uint16_t* const shorterTops = deal.tops[suitNumber][shorter];
    std::uint16_t* const tops = deal.tops[suitNumber][added];
    const std::int8_t held = _count_bits13[suit & dealt[player]];
    std::fill_n(tops, ranksOfSuit, added);
    for (int rounds = 0; rounds < ranksOfSuit; ++rounds) {
        const std::uint16_t top = shorterTops[rounds];
        if (rounds <= held) {
            tops[rounds] = top;
        } else if (top != shorter) {
            tops[rounds] = orders[top].longer[player].order;
        } else {
            break;
        }
    }
}

// The lowest card of all, in the hand of `player`. As trumps, each is played to a trick of its own,
// and an opponent's higher one can beat but one of them. The higher trumps of both opponents and
// the hand's own are paired from the highest down; what finds no opponent wins.
void SuitAnalysis::addCard(Order& order, unsigned player, std::uint16_t card)
{
    Holding& own = order.holdings[player];
    Holding& left = order.holdings[(player + 1) & 3];
    Holding& right = order.holdings[(player + 3) & 3];
    ++own.count;
    own.strength = static_cast<std::int16_t>(own.strength + strength_with_count[card]);
    if (own.toBeat != 0) {
        --own.toBeat;
    } else {
        ++own.sure;
        own.lowest = static_cast<std::uint8_t>(own.count + order.holdings[player ^ 2].count +
                                               left.count + right.count);
    }
    ++left.toBeat;
    ++right.toBeat;
    if (left.count + right.count == 0) {
        ++order.tops[player & 1];
    }
}

// The better of the two hands, which depends on less if they are equal, or the top trumps of both.
// Of these two may have to fall together where each hand has nothing else left: hence no more than
// the longer hand has, which can spare a low trump under each top of the partner.
SureTrumps SuitAnalysis::sureTrumps(const Order& order, unsigned side)
{
    const Holding& first = order.holdings[side];
    const Holding& second = order.holdings[side + 2];
    const std::uint8_t longer = std::max(first.count, second.count);
    if (order.holdings[side ^ 1].count + order.holdings[side ^ 3].count == 0) {
        return {longer, 0};
    }
    const std::uint8_t tops = std::min(order.tops[side], longer);
    const bool secondIsBetter =
        second.sure > first.sure || (second.sure == first.sure && second.lowest < first.lowest);
    const Holding& better = secondIsBetter ? second : first;
    return better.sure > tops ? SureTrumps{better.sure, better.lowest} : SureTrumps{tops, tops};
}

// A suit is good to lead where one's own side outweighs the opponent who plays after each of its
// hands.
void SuitAnalysis::weighLeads(const Order& order)
{
    const auto own = [&](unsigned player) { return order.holdings[player & 3].strength; };
    const auto opponents = [&](unsigned player) {
        const Holding& holding = order.holdings[player & 3];
        return holding.count != 0 ? int{holding.strength} : strength_oponent[0];
    };
    for (unsigned player = 0; player < playersCount; ++player) {
        deal.leadWeights[suitNumber][order.name.order][player] =
            static_cast<std::int16_t>(5 * (own(player + 2) - opponents(player + 3)) +
                                      4 * (own(player) - opponents(player + 1)));
    }
}

// Every subset from the one without its lowest card, which has its name already: the subsets whose
// lowest card is the ace come first, those that go down to the two last.
void SuitAnalysis::nameSubsets()
{
    Deal::Subset* const subsets = deal.subsets[suitNumber];
    subsets[0] = orders[0].name;
    unsigned higher = 0;
    for (unsigned card = _highest_bit13[fullSuit]; card != 0; card >>= 1) {
        for (unsigned player = 0; player < playersCount; ++player) {
            if ((dealt[player] & card) == 0) {
                continue;
            }
            // The subtraction carries through the ranks not dealt.
            unsigned subset = 0;
            do {
                subsets[subset | card] = orders[subsets[subset].order].longer[player];
                subset = (subset - higher) & higher;
            } while (subset != 0);
            higher |= card;
        }
    }
}

// Nothing is played out yet. But a side without the highest card wins no round.
void SuitAnalysis::clearRecords()
{
    for (std::size_t order = 0; order < orders.size(); ++order) {
        const std::uint16_t suit = orders[order].name.chain;
        deal.chains[suitNumber][order] = suit;
        for (int player = 0; player < playersCount; ++player) {
            const bool loses = (suit & deal.sides[player].suit(suitNumber)) <= suit / 2;
            deal.cashed[suitNumber][order][player] =
                CashedTricks(loses ? 0 : Deal::notPlayedOut, 0, player).word();
        }
    }
    std::fill_n(deal.runs[suitNumber][0], orders.size() * playersCount, std::uint16_t{0});
}

void Deal::initHelpers()
{
    for (int player = 0; player < playersCount; ++player) {
        sides[player] = (*this)[player] | (*this)[(player + 2) & 3];
    }
    for (int suitNumber = 0; suitNumber < suitsCount; ++suitNumber) {
        SuitAnalysis(*this, suitNumber).analyse();
    }
}

}  // namespace trikon
