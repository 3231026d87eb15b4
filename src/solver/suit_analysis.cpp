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

// The hand that is on lead at the end of a run, seen from the one who led its first round.
enum End { withLeader, withPartner };

// No run ends in that hand. Low enough to lose every comparison; nothing is ever added to it.
constexpr std::int8_t unreachable = -100;

// The longest runs by the hand on lead at their end, with the ranks on which each depends.
struct Runs {
    // A run of no rounds always leaves the lead where it is.
    std::int8_t rounds[2] = {0, unreachable};
    std::uint16_t winners[2] = {0, 0};
};

constexpr Runs noRuns{{unreachable, unreachable}, {0, 0}};

// The attackers choose: the longer run, and of equal ones the one that depends on less.
void takeBetter(Runs& best, const Runs& choice)
{
    for (const End end : {withLeader, withPartner}) {
        if (choice.rounds[end] > best.rounds[end]) {
            best.rounds[end] = choice.rounds[end];
            best.winners[end] = choice.winners[end];
        } else if (choice.rounds[end] == best.rounds[end]) {
            best.winners[end] &= choice.winners[end];
        }
    }
}

// The opponent chooses: the shorter run. The attackers must be ready for every answer, so the
// ranks of all of them count.
void takeWorse(Runs& worst, const Runs& answer)
{
    for (const End end : {withLeader, withPartner}) {
        worst.rounds[end] = std::min(worst.rounds[end], answer.rounds[end]);
        worst.winners[end] |= answer.winners[end];
    }
}

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
    runs[0].fill(Runs{});
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

void SuitAnalysis::listTopRounds(int suitNumber, std::uint16_t suit)
{
    std::uint16_t* const tops = deal.tops[suitNumber][suit];
    tops[0] = 0;
    for (int rounds = 1; rounds < ranksOfSuit; ++rounds) {
        unsigned cards = 0;
        for (const std::uint16_t hand : dealt) {
            const unsigned holding = suit & hand;
            cards |= holding & _highest_mask[holding][rounds];
        }
        tops[rounds] = static_cast<std::uint16_t>(cards);
        if (cards == suit) {
            std::fill(tops + rounds, tops + ranksOfSuit, suit);
            return;
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
    Runs best;
    for (int leads = holdings.leader; leads != 0; leads &= leads - 1) {
        const auto lead = lowestCard(static_cast<std::uint16_t>(leads));
        if ((lead | holdings.partner) > opponents) {
            takeBetter(best, afterLead(leader, holdings, lead));
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
        takeWorse(worst, afterAnswer(leader, holdings, lead, answer));
    }
    return worst;
}

// The partner's best. With no card that wins the round there are no runs at all: the lead has
// failed against this answer, and that is its worst.
Runs SuitAnalysis::afterAnswer(int leader, const Holdings& holdings, std::uint16_t lead,
                               std::uint16_t answer) const
{
    const int toBeat = answer | holdings.right;
    const std::uint16_t fourth = lowestCard(holdings.right);
    const unsigned suit = holdings.leader | holdings.left | holdings.partner | holdings.right;
    Runs best = noRuns;
    const auto tryCard = [&](std::uint16_t card) {
        const unsigned fallen = lead | answer | card | fourth;
        const bool partnerWins = card > lead;
        // Which of two cards wins decides where the lead is, be it between partners only.
        const unsigned winners = fallen == lead ? 0u : ranksFrom(std::max(card, lead)) & fullSuit;
        const int winner = partnerWins ? (leader + 2) & 3 : leader;
        const Runs& rest = runs[suit ^ fallen][static_cast<unsigned>(winner)];
        Runs run = noRuns;
        for (const End end : {withLeader, withPartner}) {
            const int restEnd = partnerWins ? 1 - end : end;
            if (rest.rounds[restEnd] != unreachable) {
                run.rounds[end] = static_cast<std::int8_t>(rest.rounds[restEnd] + 1);
                run.winners[end] = static_cast<std::uint16_t>(rest.winners[restEnd] | winners);
            }
        }
        takeBetter(best, run);
    };
    int cards = holdings.partner;
    if (toBeat > lead) {
        cards &= ranksAbove(static_cast<std::uint16_t>(toBeat));
    } else if (cards == 0) {
        tryCard(0);
    }
    for (; cards != 0; cards &= cards - 1) {
        tryCard(lowestCard(static_cast<std::uint16_t>(cards)));
    }
    return best;
}

// A suit is cashed beside others, and a hand that is short there must discard from this one. The
// tricks are safe only if they need no more cards of any hand than there are rounds: then the
// others are spare. So the record is that of the top cards for that many rounds, cut again until
// nothing is spare.
SuitTricks SuitAnalysis::record(int suitNumber, int player, std::uint16_t suit) const
{
    const Runs& run = runs[suit][static_cast<unsigned>(player)];
    const End end = run.rounds[withPartner] > run.rounds[withLeader] ? withPartner : withLeader;
    const std::int8_t rounds = run.rounds[end];
    const std::uint16_t needed =
        rounds < ranksOfSuit ? deal.topRounds(suitNumber, suit, rounds) : suit;
    if (needed != suit) {
        return deal.records[player][suitNumber][needed];
    }
    const int last = end == withPartner ? (player + 2) & 3 : player;
    return {0, run.winners[end], rounds, rounds, static_cast<PlayerNumber>(last)};
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
