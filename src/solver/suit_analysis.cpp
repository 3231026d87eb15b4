// What a side can cash in one suit by itself, for every subset of the suit.
//
// The suit is played out alone, one side attacking: each round the leader chooses a card, the next
// opponent the card that hurts most, the partner the best answer, the last opponent his lowest. A
// run of rounds goes on as long as the attackers win. The lead stays with the hand that won, and it
// matters where it is at the end, since that hand goes on with another suit. So each play-out has
// two results: the most rounds after which the first leader is on lead, and after which his partner
// is.
//
// The subsets are taken in increasing order, and what is left after a round is a smaller number, so
// every round only looks up the results of the rest.
#include "solver/deal.h"
#include "solver/suit_masks.h"

#include <algorithm>
#include <array>
#include <vector>

namespace trikon {

namespace {

// A run of rounds as one number: how many, and on which ranks it depends, all from some card up.
//
// Of two runs the better is the greater number: the longer one, or the one that depends on less.
using Run = std::int32_t;

constexpr int ranksBits = 14;
constexpr Run oneRound = 1 << ranksBits;
constexpr Run ranksPart = oneRound - 1;

constexpr Run runOf(int rounds, unsigned winners)
{
    return rounds * oneRound + (fullSuit - static_cast<int>(winners));
}
constexpr int roundsOf(Run run) { return run >> ranksBits; }
constexpr std::uint16_t winnersOf(Run run)
{
    return static_cast<std::uint16_t>(fullSuit - (run & ranksPart));
}

// No run ends in that hand. It stays negative whatever number of rounds is put before it.
constexpr Run unreachable = runOf(-100, 0);

// One more round won before the run, on the ranks of `winners`.
constexpr Run withRoundBefore(Run run, unsigned winners)
{
    const Run ranks = std::min(run & ranksPart, fullSuit - static_cast<Run>(winners));
    return ((run & ~ranksPart) | ranks) + oneRound;
}

// An opponent chooses between them: the shorter run. The attackers must be ready for either answer,
// so the ranks of both count.
constexpr Run worseOf(Run run, Run other)
{
    return (std::min(run, other) & ~ranksPart) | std::min(run & ranksPart, other & ranksPart);
}

// The best runs by the hand that is on lead afterwards.
struct Runs {
    Run toLeader;
    Run toPartner;
};

// A run of no rounds leaves the lead where it is.
constexpr Runs noRounds{runOf(0, 0), unreachable};
constexpr Runs noRuns{unreachable, unreachable};

}  // namespace

// Fills the tables of one suit after the other.
class SuitAnalysis {
public:
    explicit SuitAnalysis(Deal& deal) : deal(deal), runs(holdingsOfSuit) {}

    void analyse(int suitNumber);

private:
    // The cards of one subset in the four hands, seen from the leader.
    struct Holdings {
        std::uint16_t leader, left, partner, right;
    };

    void chain(int suitNumber, std::uint16_t suit);
    void listTopRounds(int suitNumber, std::uint16_t suit);
    Runs playOut(int leader, std::uint16_t suit) const;
    Runs afterLead(int leader, const Holdings& holdings, std::uint16_t lead) const;
    Runs afterAnswer(int leader, const Holdings& holdings, std::uint16_t lead,
                     std::uint16_t answer) const;
    Runs afterRound(int leader, const Holdings& holdings, std::uint16_t lead, std::uint16_t answer,
                    std::uint16_t card) const;
    SuitTricks record(int suitNumber, int player, std::uint16_t suit) const;

    Deal& deal;
    std::array<std::uint16_t, playersCount> dealt{};
    std::vector<std::array<Runs, playersCount>> runs;
};

void SuitAnalysis::analyse(int suitNumber)
{
    std::uint16_t all = 0;
    for (int player = 0; player < playersCount; ++player) {
        dealt[static_cast<unsigned>(player)] = deal[player].suit(suitNumber);
        all |= deal[player].suit(suitNumber);
    }
    deal.chains[suitNumber][0] = 0;
    std::fill_n(deal.tops[suitNumber][0], ranksOfSuit, std::uint16_t{0});
    for (int player = 0; player < playersCount; ++player) {
        deal.records[player][suitNumber][0] = {0, 0, 0, 0, static_cast<PlayerNumber>(player)};
    }
    runs[0].fill(noRounds);
    // The subsets of `all` in increasing order: the subtraction carries through the ranks not
    // dealt.
    for (unsigned subset = -unsigned{all} & all; subset != 0; subset = (subset - all) & all) {
        const auto suit = static_cast<std::uint16_t>(subset);
        chain(suitNumber, suit);
        listTopRounds(suitNumber, suit);
        for (int player = 0; player < playersCount; ++player) {
            runs[subset][static_cast<unsigned>(player)] = playOut(player, suit);
            deal.records[player][suitNumber][suit] = record(suitNumber, player, suit);
        }
        for (int player = 0; player < playersCount; ++player) {
            SuitTricks& own = deal.records[player][suitNumber][suit];
            const SuitTricks& partners = deal.records[(player + 2) & 3][suitNumber][suit];
            own.leadScore = static_cast<std::int16_t>((own.tricks - partners.tricks) * 256);
        }
    }
}

void SuitAnalysis::chain(int suitNumber, std::uint16_t suit)
{
    const std::uint16_t low = lowestCard(suit);
    const std::uint16_t above = deal.chains[suitNumber][suit ^ low];
    const std::uint16_t holding = deal[deal.holderOf(suitNumber, low)].suit(suitNumber);
    const int below = above == 0 ? fullSuit : lowestCard(above) - 1;
    deal.chains[suitNumber][suit] =
        static_cast<std::uint16_t>(above | _highest_bit13[holding & below]);
}

// The lowest card of the subset is the last one of its hand to fall; the others fall as without it.
void SuitAnalysis::listTopRounds(int suitNumber, std::uint16_t suit)
{
    const std::uint16_t low = lowestCard(suit);
    const std::uint16_t* const without = deal.tops[suitNumber][suit ^ low];
    std::uint16_t* const tops = deal.tops[suitNumber][suit];
    const unsigned holding = deal[deal.holderOf(suitNumber, low)].suit(suitNumber) & suit;
    const std::int8_t lastRound = _count_bits13[holding];
    for (int rounds = 0; rounds < ranksOfSuit; ++rounds) {
        tops[rounds] = static_cast<std::uint16_t>(without[rounds] | (rounds < lastRound ? 0 : low));
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
    const std::array<Runs, playersCount>& rest = runs[suit ^ fallen];
    // Which of two cards wins decides where the lead is, be it between partners only.
    const unsigned winners = fallen == lead ? 0u : ranksFrom(std::max(card, lead)) & fullSuit;
    if (card > lead) {
        const Runs& further = rest[static_cast<unsigned>(leader + 2) & 3];
        return {withRoundBefore(further.toPartner, winners),
                withRoundBefore(further.toLeader, winners)};
    }
    const Runs& further = rest[static_cast<unsigned>(leader)];
    return {withRoundBefore(further.toLeader, winners),
            withRoundBefore(further.toPartner, winners)};
}

// A suit is cashed beside others, and a hand that is short there must discard from this one. The
// tricks are safe only if they need no more cards of any hand than there are rounds: then the
// others are spare. So the record is that of the top cards for that many rounds, cut again until
// nothing is spare.
SuitTricks SuitAnalysis::record(int suitNumber, int player, std::uint16_t suit) const
{
    const Runs& ends = runs[suit][static_cast<unsigned>(player)];
    const bool toPartner = roundsOf(ends.toPartner) > roundsOf(ends.toLeader);
    const Run run = toPartner ? ends.toPartner : ends.toLeader;
    const int rounds = roundsOf(run);
    const std::uint16_t needed =
        rounds < ranksOfSuit ? deal.topRounds(suitNumber, suit, rounds) : suit;
    if (needed != suit) {
        return deal.records[player][suitNumber][needed];
    }
    const auto tricks = static_cast<std::int8_t>(rounds);
    const int last = toPartner ? (player + 2) & 3 : player;
    return {0, winnersOf(run), tricks, tricks, static_cast<PlayerNumber>(last)};
}

void Deal::initHelpers()
{
    for (int player = 0; player < playersCount; ++player) {
        sides[player] = (*this)[player] | (*this)[(player + 2) & 3];
    }
    SuitAnalysis analysis(*this);
    for (int suitNumber = 0; suitNumber < suitsCount; ++suitNumber) {
        analysis.analyse(suitNumber);
    }
}

}  // namespace trikon
