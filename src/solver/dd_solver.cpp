// From yes/no searches to the answers that callers want.
#include "solver/dd_solver.h"

#include "solver/card_on_table.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace trikon {

namespace {

std::shared_ptr<const Deal> emptyDeal()
{
    static const std::shared_ptr<const Deal> deal = [] {
        auto newDeal = std::make_shared<Deal>();
        newDeal->initHelpers();
        return newDeal;
    }();
    return deal;
}

// How many cards of the current trick have been played.
int positionInTrick(const Situation& situation) { return -situation.cardsCount & 3; }

// The tricks still to play, the current one included.
std::int8_t tricksLeft(const Situation& situation)
{
    return static_cast<std::int8_t>((situation.cardsCount + 3) / 4);
}

}  // namespace

// One card played for as long as the object lives, and the question about it passed on to whoever
// plays next. A count is turned into one of that player's side, and its answer turned back.
class DDSolver::AfterCard {
public:
    AfterCard(DDSolver& solver, PlayerNumber player, const Trick& before, OneCardInSuit card)
        : trick(before),
          next(nextPlayer(player)),
          tricks((solver.situation.cardsCount + 2) / 4),
          played(solver.situation, player, card)
    {
        const int position = positionInTrick(solver.situation);
        if (position == 1) {
            trick = Trick(card.suit, card.card);
        } else {
            trick.add(solver.trump, card.suit, card.card);
        }
        if (position == 0) {
            next = solver.deal->holderOf(trick.winningSuit, trick.winningCard);
            sameSide = ((next ^ player) & 1) == 0;
        }
    }

    /// What `next` must reach, or keep the first player's side from, when that needs `target`.
    std::int8_t targetOfNext(int target) const
    {
        return static_cast<std::int8_t>(sameSide ? target - 1 : tricks - target + 1);
    }
    /// What `next` takes when the first player's side takes `count`.
    std::int8_t tricksOfNext(int count) const
    {
        return static_cast<std::int8_t>(sameSide ? count - 1 : tricks - count);
    }
    /// What the first player's side takes, this trick included, when `next` takes `count`.
    std::int32_t ownTricks(int count) const { return sameSide ? count + 1 : tricks - count; }

    Trick trick;
    PlayerNumber next;

private:
    // To be shared between the sides from here on: a trick that the first player's own side has
    // just won is counted apart.
    int tricks;
    bool sameSide = false;
    CardOnTable played;
};

DDSolver::DDSolver() : deal(emptyDeal()) { resetToSituation({}); }

void DDSolver::reset() { resetToSituation(deal->sideCards(North) | deal->sideCards(East)); }

void DDSolver::setHands(const Hands& hands)
{
    auto newDeal = std::make_shared_for_overwrite<Deal>();
    newDeal->setHands(hands);
    setDeal(std::move(newDeal));
}

void DDSolver::setDeal(std::shared_ptr<const Deal> newDeal)
{
    deal = std::move(newDeal);
    reset();
}

void DDSolver::resetToSituation(CardsConfiguration inPlay)
{
    situation = Situation(inPlay, *deal);
    forgetProofs();
}

void DDSolver::set_trump_suit(Trump newTrump)
{
    if (newTrump != trump) {
        trump = newTrump;
        reset();
    }
}

// Setting the deal and then the trump asks for it twice, the second time with nothing to forget.
void DDSolver::forgetProofs()
{
    if (nodes == nodesForgotten) {
        return;
    }
    nodesForgotten = nodes;
    table.clear();
    std::fill_n(&bestLeads[0][0][0], playersCount * suitsCount * holdingsOfSuit, std::uint16_t{0});
    replies.clear();
}

bool DDSolver::solveCanTake(std::int8_t target, PlayerNumber player, const Trick& trick)
{
    return tricksToTakeApprox(target, player, trick) >= target;
}

std::int8_t DDSolver::tricksToTakeApprox(std::int8_t target, PlayerNumber player,
                                         const Trick& trick)
{
    CardsConfiguration relevant;
    const int position = positionInTrick(situation);
    return position == 0 ? searchStartTrick(target, player, relevant)
                         : searchInTrick(position, target, player, relevant, trick);
}

std::int8_t DDSolver::solveTricksToTake(PlayerNumber player, const Trick& trick, std::int8_t guess)
{
    std::int8_t atLeast = 0;
    std::int8_t atMost = tricksLeft(situation);
    auto probe = guess >= 0 ? guess : static_cast<std::int8_t>((atMost + 1) / 2);
    while (atLeast < atMost) {
        // What is proved already need not be asked again.
        probe = std::max<std::int8_t>(probe, static_cast<std::int8_t>(atLeast + 1));
        const std::int8_t result = tricksToTakeApprox(probe, player, trick);
        (result < probe ? atMost : atLeast) = result;
        probe = result;
    }
    return atLeast;
}

Move* DDSolver::analizeAll(PlayerNumber player, const Trick& trick, Move* begin, Move* end)
{
    Move* best = begin;
    std::int8_t guess = -1;
    for (Move* move = begin; move != end; ++move) {
        const AfterCard after(*this, player, trick, {move->suit, move->card});
        if (move != begin) {
            // The cards of a hand are mostly worth the same, so each starts from the one before.
            guess = after.tricksOfNext((move - 1)->value);
        }
        const std::int8_t tricks = solveTricksToTake(after.next, after.trick, guess);
        move->value = after.ownTricks(tricks);
        best = move->value > best->value ? move : best;
    }
    return best;
}

Move* DDSolver::approxAll(std::int8_t target, PlayerNumber player, const Trick& trick, Move* begin,
                          Move* end, bool stopEarly)
{
    Move* best = begin;
    for (Move* move = begin; move != end; ++move) {
        if (target == 0) {
            move->value = 0;
        } else {
            const AfterCard after(*this, player, trick, {move->suit, move->card});
            move->value = after.ownTricks(
                tricksToTakeApprox(after.targetOfNext(target), after.next, after.trick));
        }
        best = move->value > best->value ? move : best;
        if (stopEarly && move->value >= target) {
            break;
        }
    }
    return best;
}

Move* DDSolver::winLooseAll(std::int8_t target, PlayerNumber player, const Trick& trick,
                            Move* begin, Move* end)
{
    Move* const best = approxAll(target, player, trick, begin, end, false);
    std::for_each(begin, end, [&](Move& move) { move.value = move.value >= target ? 1 : 0; });
    return best;
}

void DDSolver::analizeAllSuits(PlayerNumber player, const OneCardInSuit* trickCards,
                               std::array<unsigned, trumpsCount>& tricks)
{
    const Trump before = trump;
    for (unsigned number = Clubs; number <= NoTrump; ++number) {
        // Not by `set_trump_suit`: the cards played so far stay played.
        trump = static_cast<Trump>(number);
        forgetProofs();
        Trick trick;
        for (int place = positionInTrick(situation) - 1; place >= 0; --place) {
            const OneCardInSuit card = trickCards[place];
            if (place == positionInTrick(situation) - 1) {
                trick = Trick(card.suit, card.card);
            } else {
                trick.add(trump, card.suit, card.card);
            }
        }
        tricks[number] = static_cast<std::uint8_t>(solveTricksToTake(player, trick, -1));
    }
    trump = before;
    forgetProofs();
}

std::vector<CardsConfiguration> DDSolver::allBest(PlayerNumber leader,
                                                  std::span<const OneCardInSuit> play)
{
    std::vector<CardsConfiguration> best(play.size() + 1);
    collectBest(leader, Trick(), play, best.data());
    return best;
}

// From the last position back to the first: the end of a play is cheap, and what is proved there
// serves the positions before.
void DDSolver::collectBest(PlayerNumber player, const Trick& trick,
                           std::span<const OneCardInSuit> play, CardsConfiguration* best)
{
    if (!play.empty()) {
        assert(legalCards(player, trick).has(play.front()));
        const AfterCard after(*this, player, trick, play.front());
        collectBest(after.next, after.trick, play.subspan(1), best + 1);
    }
    *best = bestCards(player, trick);
}

CardsConfiguration DDSolver::bestCards(PlayerNumber player, const Trick& trick)
{
    std::array<Move, cardsOfHand> moves;
    Move* end = moves.data();
    const CardsConfiguration legal = legalCards(player, trick);
    for (std::uint8_t suit = 0; suit < suitsCount; ++suit) {
        for (unsigned cards = legal.suit(suit); cards != 0; cards &= cards - 1) {
            *end++ = {lowestCard(static_cast<std::uint16_t>(cards)), suit, 0};
        }
    }
    const Move* const first = analizeAll(player, trick, moves.data(), end);
    CardsConfiguration best;
    for (const Move* move = first; move != end; ++move) {
        if (move->value == first->value) {
            best.add({move->suit, move->card});
        }
    }
    return best;
}

CardsConfiguration DDSolver::legalCards(PlayerNumber player, const Trick& trick) const
{
    const CardsConfiguration mine = situation.cards & (*deal)[player];
    const bool mustFollow = positionInTrick(situation) != 0 && mine.suit(trick.ledSuit) != 0;
    return mustFollow ? onlySuit(trick.ledSuit, mine.suit(trick.ledSuit)) : mine;
}

}  // namespace trikon
