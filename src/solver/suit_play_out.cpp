// What a side can cash in one suit by itself.
//
// The suit is played out alone, one side attacking: each round the leader chooses a card, the next
// opponent the card that hurts most, the partner the best answer, the last opponent his lowest. A
// run of rounds goes on as long as the attackers win. The lead stays with the hand that won, and it
// matters where it is at the end, since that hand goes on with another suit. So each play-out has
// two results: the most rounds after which the first leader is on lead, and after which his partner
// is.
//
// All of this is a matter of who holds the cards from the highest down, so it is done once for each
// order of holders, on the highest cards that have it (`Deal::suitChain`). A search asks about one
// record in twelve: hence nothing is played out before somebody asks for it, or for a longer order
// that comes down to it. Whoever asks first writes the result into the tables. Two threads may do
// so at the same time; both write the same, and nothing else depends on when it is seen.
#include "solver/deal.h"
#include "solver/suit_masks.h"

#include <algorithm>
#include <atomic>
#include <cstdint>

namespace trikon {

namespace {

// A run of rounds as one number: how many, and on how many of the suit's highest cards it depends.
//
// Of two runs the better is the greater number: the longer one, or the one that depends on less.
using Run = int;

constexpr Run oneRound = 16;
constexpr Run depthPart = oneRound - 1;

constexpr Run runOf(int rounds, int depth) { return rounds * oneRound + depthPart - depth; }
constexpr int roundsOf(Run run) { return run / oneRound; }
constexpr int depthOf(Run run) { return depthPart - (run & depthPart); }

// No run ends in that hand. No other run is as bad.
constexpr Run unreachable = 0;

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

// The best runs by the hand that is on lead afterwards.
struct Runs {
    Run toLeader;
    Run toPartner;

    void improveTo(const Runs& other)
    {
        toLeader = std::max(toLeader, other.toLeader);
        toPartner = std::max(toPartner, other.toPartner);
    }
    void worsenTo(const Runs& other)
    {
        toLeader = worseOf(toLeader, other.toLeader);
        toPartner = worseOf(toPartner, other.toPartner);
    }
    bool none() const { return (toLeader | toPartner) == unreachable; }
};

// A run of no rounds leaves the lead where it is.
constexpr Runs noRounds{runOf(0, 0), unreachable};
constexpr Runs noRuns{unreachable, unreachable};

}  // namespace

// Plays out the orders of one suit.
class SuitPlayOut {
public:
    SuitPlayOut(const Deal& deal, int suitNumber) : deal(deal), suitNumber(suitNumber) {}

    /// The record, which is then known for the player and for his partner.
    CashedTricks recordBoth(int player, std::uint16_t order) const;

private:
    // The cards of one subset in the four hands, seen from the leader.
    struct Holdings {
        std::uint16_t leader, left, partner, right;

        std::uint16_t all() const
        {
            return static_cast<std::uint16_t>(leader | left | partner | right);
        }
    };

    CashedTricks record(int player, std::uint16_t order) const;
    Runs runs(int leader, std::uint16_t order) const;
    Runs playOut(int leader, std::uint16_t suit) const;
    Runs afterLead(int leader, const Holdings& holdings, std::uint16_t lead) const;
    Runs afterAnswer(int leader, const Holdings& holdings, std::uint16_t lead,
                     std::uint16_t answer) const;
    Runs afterRound(int leader, const Holdings& holdings, std::uint16_t lead, std::uint16_t answer,
                    std::uint16_t card) const;

    const Deal& deal;
    int suitNumber;
};

CashedTricks Deal::playOut(int player, int suitNumber, std::uint16_t order) const
{
    return SuitPlayOut(*this, suitNumber).recordBoth(player, order);
}

CashedTricks SuitPlayOut::recordBoth(int player, std::uint16_t order) const
{
    const CashedTricks own = record(player, order);
    const CashedTricks partners = record(player ^ 2, order);
    const auto keep = [&](int of, CashedTricks known) {
        std::atomic_ref(deal.cashed[suitNumber][order][of])
            .store(known.word(), std::memory_order_relaxed);
        return known;
    };
    keep(player ^ 2, partners.comparedWith(own));
    return keep(player, own.comparedWith(partners));
}

// A suit is cashed beside others, and a hand that is short there must discard from this one. The
// tricks are safe only if they need no more cards of any hand than there are rounds: then the
// others are spare. So the record is that of the top cards for that many rounds, cut again until
// nothing is spare.
CashedTricks SuitPlayOut::record(int player, std::uint16_t order) const
{
    const Runs ends = runs(player, order);
    const bool toPartner = roundsOf(ends.toPartner) > roundsOf(ends.toLeader);
    const Run run = toPartner ? ends.toPartner : ends.toLeader;
    const int rounds = roundsOf(run);
    const std::uint16_t needed =
        rounds < ranksOfSuit ? deal.topRoundsOrder(suitNumber, order, rounds) : order;
    if (needed != order) {
        const CashedTricks ofNeeded = record(player, needed);
        const std::uint16_t suit = deal.chains[suitNumber][order];
        const std::uint16_t kept = deal.topRounds(suitNumber, suit, rounds);
        return {ofNeeded.tricks(), depthWithin(suit, kept, ofNeeded.depth()), ofNeeded.leader()};
    }
    return {rounds, depthOf(run), toPartner ? player ^ 2 : player};
}

// Both runs are kept in one word, which is never 0, for a side may always stay without a round.
Runs SuitPlayOut::runs(int leader, std::uint16_t order) const
{
    const std::atomic_ref kept(deal.runs[suitNumber][order][leader]);
    const std::uint16_t known = kept.load(std::memory_order_relaxed);
    if (known != 0) {
        return {known & 0xff, known >> 8};
    }
    const Runs best = playOut(leader, deal.chains[suitNumber][order]);
    kept.store(static_cast<std::uint16_t>(best.toLeader | best.toPartner << 8),
               std::memory_order_relaxed);
    return best;
}

Runs SuitPlayOut::playOut(int leader, std::uint16_t suit) const
{
    const auto held = [&](int place) {
        return static_cast<std::uint16_t>(suit & deal[(leader + place) & 3].suit(suitNumber));
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
            best.improveTo(afterLead(leader, holdings, lead));
        }
    }
    return best;
}

Runs SuitPlayOut::afterLead(int leader, const Holdings& holdings, std::uint16_t lead) const
{
    int answers = holdings.left;
    Runs worst = afterAnswer(leader, holdings, lead, lowestCard(holdings.left));
    for (answers &= answers - 1; answers != 0; answers &= answers - 1) {
        const auto answer = lowestCard(static_cast<std::uint16_t>(answers));
        worst.worsenTo(afterAnswer(leader, holdings, lead, answer));
    }
    return worst;
}

// The partner's best. With no card that wins the round there are no runs at all: the lead has
// failed against this answer, and that is its worst.
Runs SuitPlayOut::afterAnswer(int leader, const Holdings& holdings, std::uint16_t lead,
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
        best.improveTo(afterRound(leader, holdings, lead, answer, card));
    }
    return best;
}

// The last opponent plays his lowest, and `lead` or the partner's `card` (0 if void) wins.
Runs SuitPlayOut::afterRound(int leader, const Holdings& holdings, std::uint16_t lead,
                             std::uint16_t answer, std::uint16_t card) const
{
    const std::uint16_t suit = holdings.all();
    const unsigned fallen = lead | answer | card | lowestCard(holdings.right);
    const auto left = static_cast<std::uint16_t>(suit ^ fallen);
    const bool partnerWins = card > lead;
    const Runs rest = runs(partnerWins ? leader ^ 2 : leader, deal.order(suitNumber, left));
    // Which of two cards wins decides where the lead is, be it between partners only.
    const int depth = fallen == lead ? 0 : _count_bits13[suit & ranksFrom(std::max(card, lead))];
    const auto withThisRound = [&](Run run) {
        return run == unreachable ? unreachable
                                  : runOf(roundsOf(run) + 1,
                                          std::max(depth, depthWithin(suit, left, depthOf(run))));
    };
    const Runs further{withThisRound(rest.toLeader), withThisRound(rest.toPartner)};
    return partnerWins ? Runs{further.toPartner, further.toLeader} : further;
}

}  // namespace trikon
