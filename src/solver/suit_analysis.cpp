// What a side can cash in one suit by itself, for every subset of the suit.
//
// The suit is played out alone, one side attacking: each round the leader chooses a card, the next
// opponent the card that hurts most, the partner the best answer, the last opponent his lowest. A
// run of rounds goes on as long as the attackers win. The lead stays with the hand that won, and it
// matters where it is at the end, since that hand goes on with another suit. So each play-out has
// two results: the most rounds after which the first leader is on lead, and after which his partner
// is.
//
// All of this is a matter of who holds the cards from the highest down, so it is done once for each
// order of holders, on the highest cards that have it (`Deal::suitChain`). The orders are listed by
// their number of cards, and a round only looks up the results of the shorter order that is left.
#include "solver/deal.h"
#include "solver/suit_masks.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace trikon {

namespace {

// A run of rounds as one number: how many, and on how many of the suit's highest cards it depends.
//
// Of two runs the better is the greater number: the longer one, or the one that depends on less.
using Run = std::int32_t;

constexpr Run oneRound = 16;
constexpr Run depthPart = oneRound - 1;

constexpr Run runOf(int rounds, int depth) { return rounds * oneRound + depthPart - depth; }
constexpr int roundsOf(Run run) { return run >> 4; }
constexpr int depthOf(Run run) { return depthPart - (run & depthPart); }

// No run ends in that hand. It stays negative whatever number of rounds is put before it.
constexpr Run unreachable = runOf(-100, 0);

// How many of `suit`'s highest cards reach down to card number `depth` of its part `subset`.
int depthWithin(unsigned suit, unsigned subset, int depth)
{
    return _count_bits13[suit & _highest_mask[subset][depth]];
}

// An opponent chooses between them: the shorter run. The attackers must be ready for either answer,
// so they depend on the cards of both.
constexpr Run worseOf(Run run, Run other)
{
    return (std::min(run, other) & ~depthPart) | std::min(run & depthPart, other & depthPart);
}

// The orders of a whole suit when the hands hold its cards by turns; more there cannot be.
constexpr std::size_t mostOrders = 5968;

// The best runs by the hand that is on lead afterwards.
struct Runs {
    Run toLeader;
    Run toPartner;
};

// A run of no rounds leaves the lead where it is.
constexpr Runs noRounds{runOf(0, 0), unreachable};
constexpr Runs noRuns{unreachable, unreachable};

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
    // The cards of one subset in the four hands, seen from the leader.
    struct Holdings {
        std::uint16_t leader, left, partner, right;
    };

    void listOrders();
    void addOrder(std::size_t shorter, unsigned player, std::uint16_t card);
    void nameSubsets();
    Runs playOut(int leader, std::uint16_t suit) const;
    Runs afterLead(int leader, const Holdings& holdings, std::uint16_t lead) const;
    Runs afterAnswer(int leader, const Holdings& holdings, std::uint16_t lead,
                     std::uint16_t answer) const;
    Runs afterRound(int leader, const Holdings& holdings, std::uint16_t lead, std::uint16_t answer,
                    std::uint16_t card) const;
    CashedTricks record(int player, std::size_t order) const;

    Deal& deal;
    int suitNumber;
    std::array<std::uint16_t, playersCount> dealt{};
    std::vector<Order> orders;
    std::vector<std::array<Runs, playersCount>> runs;
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
    runs.resize(orders.size());
    for (std::size_t order = 0; order < orders.size(); ++order) {
        CashedTricks* const records = deal.cashed[suitNumber][order];
        for (int player = 0; player < playersCount; ++player) {
            runs[order][static_cast<unsigned>(player)] = playOut(player, orders[order].name.chain);
            records[player] = record(player, order);
        }
        for (int player = 0; player < playersCount; ++player) {
            records[player].moreThanPartner =
                static_cast<std::int8_t>(records[player].tricks - records[player ^ 2].tricks);
        }
    }
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
    std::fill_n(tops, ranksOfSuit, added);
    int rounds = _count_bits13[suit & dealt[player]] + 1;
    std::copy_n(shorterTops, rounds, tops);
    for (; rounds < ranksOfSuit && shorterTops[rounds] != shorter; ++rounds) {
        tops[rounds] = orders[shorterTops[rounds]].longer[player].order;
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

Runs SuitAnalysis::playOut(int leader, std::uint16_t suit) const
{
    const auto held = [&](int place) {
        return static_cast<std::uint16_t>(suit & dealt[static_cast<unsigned>(leader + place) & 3]);
    };
    const Holdings holdings{held(0), held(1), held(2), held(3)};
    const int opponents = holdings.left | holdings.right;
    Runs best = noRounds;
    if ((holdings.leader | holdings.partner) < opponents) {
        return best;
    }
    for (int leads = holdings.leader; leads != 0; leads &= leads - 1) {
        const auto lead = lowestCard(static_cast<std::uint16_t>(leads));
        if ((lead | holdings.partner) > opponents) {
            const Runs run = afterLead(leader, holdings, lead);
            best.toLeader = std::max(best.toLeader, run.toLeader);
            best.toPartner = std::max(best.toPartner, run.toPartner);
        }
    }
    return best;
}

Runs SuitAnalysis::afterLead(int leader, const Holdings& holdings, std::uint16_t lead) const
{
    int answers = holdings.left;
    Runs worst = afterAnswer(leader, holdings, lead, lowestCard(holdings.left));
    for (answers &= answers - 1; answers != 0; answers &= answers - 1) {
        const auto answer = lowestCard(static_cast<std::uint16_t>(answers));
        const Runs run = afterAnswer(leader, holdings, lead, answer);
        worst.toLeader = worseOf(worst.toLeader, run.toLeader);
        worst.toPartner = worseOf(worst.toPartner, run.toPartner);
    }
    return worst;
}

// The partner's best. With no card that wins the round there are no runs at all: the lead has
// failed against this answer, and that is its worst.
Runs SuitAnalysis::afterAnswer(int leader, const Holdings& holdings, std::uint16_t lead,
                               std::uint16_t answer) const
{
    const int toBeat = answer | holdings.right;
    Runs best = noRuns;
    int cards = holdings.partner;
    if (toBeat > lead) {
        cards &= ranksAbove(static_cast<std::uint16_t>(toBeat));
    } else if (cards == 0) {
        best = afterRound(leader, holdings, lead, answer, 0);
    }
    for (; cards != 0; cards &= cards - 1) {
        const auto card = lowestCard(static_cast<std::uint16_t>(cards));
        const Runs run = afterRound(leader, holdings, lead, answer, card);
        best.toLeader = std::max(best.toLeader, run.toLeader);
        best.toPartner = std::max(best.toPartner, run.toPartner);
    }
    return best;
}

// The last opponent plays his lowest, and `lead` or the partner's `card` (0 if void) wins.
Runs SuitAnalysis::afterRound(int leader, const Holdings& holdings, std::uint16_t lead,
                              std::uint16_t answer, std::uint16_t card) const
{
    const unsigned suit = holdings.leader | holdings.left | holdings.partner | holdings.right;
    const unsigned fallen = lead | answer | card | lowestCard(holdings.right);
    const auto left = static_cast<std::uint16_t>(suit ^ fallen);
    const std::array<Runs, playersCount>& rest = runs[deal.order(suitNumber, left)];
    // Which of two cards wins decides where the lead is, be it between partners only.
    const int depth = fallen == lead ? 0 : _count_bits13[suit & ranksFrom(std::max(card, lead))];
    const auto withThisRound = [&](Run run) {
        return runOf(roundsOf(run) + 1, std::max(depth, depthWithin(suit, left, depthOf(run))));
    };
    if (card > lead) {
        const Runs& further = rest[static_cast<unsigned>(leader) ^ 2];
        return {withThisRound(further.toPartner), withThisRound(further.toLeader)};
    }
    const Runs& further = rest[static_cast<unsigned>(leader)];
    return {withThisRound(further.toLeader), withThisRound(further.toPartner)};
}

// A suit is cashed beside others, and a hand that is short there must discard from this one. The
// tricks are safe only if they need no more cards of any hand than there are rounds: then the
// others are spare. So the record is that of the top cards for that many rounds, cut again until
// nothing is spare.
CashedTricks SuitAnalysis::record(int player, std::size_t order) const
{
    const Runs& ends = runs[order][static_cast<unsigned>(player)];
    const bool toPartner = roundsOf(ends.toPartner) > roundsOf(ends.toLeader);
    const Run run = toPartner ? ends.toPartner : ends.toLeader;
    const int rounds = roundsOf(run);
    const std::size_t needed =
        rounds < ranksOfSuit
            ? deal.topRoundsOrder(suitNumber, static_cast<std::uint16_t>(order), rounds)
            : order;
    if (needed != order) {
        CashedTricks ofNeeded = deal.cashed[suitNumber][needed][player];
        if (ofNeeded.depth != 0) {
            const std::uint16_t suit = orders[order].name.chain;
            ofNeeded.depth = static_cast<std::uint8_t>(
                depthWithin(suit, deal.topRounds(suitNumber, suit, rounds), ofNeeded.depth));
        }
        return ofNeeded;
    }
    return {static_cast<std::int8_t>(rounds), 0, static_cast<std::uint8_t>(depthOf(run)),
            static_cast<std::uint8_t>(toPartner ? player ^ 2 : player)};
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
