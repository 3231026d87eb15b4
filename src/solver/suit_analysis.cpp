// The orders in which the hands may hold the cards of one suit, and what their subsets are called.
//
// The orders are listed by their number of cards. Each comes from one with a card less, and so does
// all that is said about it; no card is played here (`suit_play_out.cpp` does that when it is asked
// for), and only what needs no play is written into the records.
#include "solver/deal.h"
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
    // An order of holders: the name of its subsets, and the names with one card more below, by the
    // hand of that card (invalid where the hand has none left).
    struct Order {
        Deal::Subset name;
        std::array<Deal::Subset, playersCount> longer;
    };

    void listOrders();
    void addOrder(std::size_t shorter, unsigned player, std::uint16_t card);
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
    orders.push_back({orders[shorter].longer[player], {}});
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
