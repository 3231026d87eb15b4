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
    // A hand's cards as trumps: how many cannot be beaten, the lowest of them by its place in the
    // order, and the opponents' cards that may still beat a lower one.
    struct Trumps {
        std::uint8_t sure;
        std::uint8_t lowest;
        std::uint8_t toBeat;
    };
    // An order of holders: the name of its subsets, and the names with one card more below, by the
    // hand of that card (invalid where the hand has none left).
    struct Order {
        Deal::Subset name;
        std::array<Deal::Subset, playersCount> longer;
        std::array<Trumps, playersCount> trumps;
    };

    void listOrders();
    void addOrder(std::size_t shorter, unsigned player, std::uint16_t card);
    void countTrumps(const Order& shorter, unsigned player, Order& added);
    void weighLeads(const Order& order);
    SureTrumps sureTrumps(const Order& order, unsigned side) const;
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
    orders.push_back({orders[shorter].longer[player], {}, {}});
    countTrumps(orders[shorter], player, orders[added]);
    weighLeads(orders[added]);
    const std::uint16_t* const shorterTops = deal.tops[suitNumber][shorter];
    std::uint16_t* const tops = deal.tops[suitNumber][added];
    const int held = _count_bits13[suit & dealt[player]];
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

// Each trump is played to a trick of its own, and an opponent's higher trump can beat but one of
// them. The higher trumps of both opponents and the hand's own are paired from the highest down;
// what finds no opponent wins. `player` holds the lowest card added.
void SuitAnalysis::countTrumps(const Order& shorter, unsigned player, Order& added)
{
    const int cards = _count_bits13[added.name.chain];
    added.trumps = shorter.trumps;
    Trumps& own = added.trumps[player];
    if (own.toBeat != 0) {
        --own.toBeat;
    } else {
        ++own.sure;
        own.lowest = static_cast<std::uint8_t>(cards);
    }
    ++added.trumps[(player + 1) & 3].toBeat;
    ++added.trumps[(player + 3) & 3].toBeat;
    for (unsigned side = 0; side < 2; ++side) {
        deal.trumps[suitNumber][added.name.order][side] = sureTrumps(added, side);
    }
}

// The better of the two hands, or the top trumps of both. Of these two may have to fall together
// where each hand has nothing else left: hence no more than the longer hand has, which can spare a
// low trump under each top of the partner.
SureTrumps SuitAnalysis::sureTrumps(const Order& order, unsigned side) const
{
    const std::uint16_t suit = order.name.chain;
    const auto own = static_cast<std::uint16_t>(suit & deal.sides[side].suit(suitNumber));
    const auto others = static_cast<std::uint16_t>(suit ^ own);
    const int first = _count_bits13[own & dealt[side]];
    const int longer = std::max<int>(first, _count_bits13[own] - first);
    if (others == 0) {
        return {static_cast<std::uint8_t>(longer), 0};
    }
    const int tops = std::min<int>(_count_bits13[own & ranksAbove(others)], longer);
    SureTrumps best{static_cast<std::uint8_t>(tops), static_cast<std::uint8_t>(tops)};
    for (const Trumps& hand : {order.trumps[side], order.trumps[side + 2]}) {
        if (hand.sure > best.tricks) {
            best = {hand.sure, hand.lowest};
        }
    }
    return best;
}

// A suit is good to lead where one's own side outweighs the opponent who plays after each of its
// hands.
void SuitAnalysis::weighLeads(const Order& order)
{
    std::array<int, playersCount> own;
    std::array<int, playersCount> opponents;
    for (unsigned player = 0; player < playersCount; ++player) {
        const unsigned held = order.name.chain & dealt[player];
        own[player] = strength_with_count[held];
        opponents[player] = strength_oponent[held];
    }
    for (unsigned player = 0; player < playersCount; ++player) {
        deal.leadWeights[suitNumber][order.name.order][player] =
            static_cast<std::int16_t>(5 * (own[player ^ 2] - opponents[(player + 3) & 3]) +
                                      4 * (own[player] - opponents[(player + 1) & 3]));
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
