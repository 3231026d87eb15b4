// Playing cards, taking them back, and whose turn it is.
#include "solver/interactive_dd_solver.h"

namespace trikon {

void InteractiveDDSolver::reset()
{
    played.clear();
    DDSolver::reset();
}

PlayerNumber InteractiveDDSolver::holderOf(OneCardInSuit card) const
{
    return deal->holderOf(card.suit, card.card);
}

PlayerNumber InteractiveDDSolver::playerToPlay() const
{
    if (played.empty()) {
        return firstLeader;
    }
    if (!played.isAtLead()) {
        return nextPlayer(playerWhoPlayLastCard());
    }
    const Trick last = played.lastTrick(trump);
    return holderOf({last.winningSuit, last.winningCard});
}

PlayerNumber InteractiveDDSolver::playerWhoPlayLastCard() const { return holderOf(played.last()); }

std::uint16_t InteractiveDDSolver::cardsPossibleToPlay(std::uint8_t suit) const
{
    const CardsConfiguration hand = candidates(false);
    const bool mustFollow = !played.isAtLead() && hand.suit(trickOnTable().ledSuit) != 0;
    return mustFollow && suit != trickOnTable().ledSuit ? 0 : hand.suit(suit);
}

bool InteractiveDDSolver::playCard(std::uint8_t suit, std::uint16_t card, bool anyPlayer)
{
    const OneCardInSuit chosen{suit, card};
    if (!situation.cards.has(chosen) || (!anyPlayer && !(*deal)[playerToPlay()].has(chosen))) {
        return false;
    }
    playCardFast(suit, card);
    return true;
}

void InteractiveDDSolver::playCardFast(std::uint8_t suit, std::uint16_t card)
{
    const OneCardInSuit chosen{suit, card};
    situation.cards.remove(chosen);
    situation.counts = situation.counts - countOf(holderOf(chosen), suit);
    --situation.cardsCount;
    played.add(chosen);
}

bool InteractiveDDSolver::tryPlayCard(int suit, std::uint16_t card, bool anyPlayer)
{
    return tryDeduceCardDetails(suit, card, anyPlayer) &&
           playCard(static_cast<std::uint8_t>(suit), card, anyPlayer);
}

CardsConfiguration InteractiveDDSolver::candidates(bool anyPlayer) const
{
    const bool everybody = anyPlayer && played.isAtLead();
    return everybody ? situation.cards
                     : CardsConfiguration(situation.cards & (*deal)[playerToPlay()]);
}

bool InteractiveDDSolver::tryDeduceCardDetails(int& suit, std::uint16_t& card, bool anyPlayer) const
{
    const CardsConfiguration hand = candidates(anyPlayer);
    if (suit < 0 && !played.isAtLead() && hand.suit(trickOnTable().ledSuit) != 0) {
        suit = trickOnTable().ledSuit;
    }
    if (suit < 0) {
        int fitting = 0;
        for (int suitNumber = 0; suitNumber < suitsCount; ++suitNumber) {
            if ((hand.suit(suitNumber) & (card == 0 ? fullSuit : card)) != 0) {
                suit = suitNumber;
                ++fitting;
            }
        }
        if (fitting != 1) {
            suit = -1;
            return false;
        }
    }
    if (card == 0) {
        const unsigned holding = hand.suit(suit);
        card = static_cast<std::uint16_t>(holding & -holding);
    }
    return card != 0;
}

void InteractiveDDSolver::unplay()
{
    const OneCardInSuit card = played.last();
    situation.cards.add(card);
    situation.counts = situation.counts + countOf(holderOf(card), card.suit);
    ++situation.cardsCount;
    played.removeLast();
}

bool InteractiveDDSolver::unplayLastCard() { return unplayLastCards(1); }

bool InteractiveDDSolver::unplayLastCards(int n)
{
    for (; n > 0; --n) {
        if (played.empty()) {
            return false;
        }
        unplay();
    }
    return true;
}

bool InteractiveDDSolver::unplayLastTrick()
{
    return !played.empty() && unplayLastCards(played.count() - played.beginOfLastTrick());
}

bool InteractiveDDSolver::canTake(std::int8_t tricks)
{
    return solveCanTake(tricks, playerToPlay(), trickOnTable());
}

std::int8_t InteractiveDDSolver::getTricksToTake()
{
    return solveTricksToTake(playerToPlay(), trickOnTable(), -1);
}

Move* InteractiveDDSolver::analizeAll(Move* begin, Move* end)
{
    return analizeAll(playerToPlay(), trickOnTable(), begin, end);
}

void InteractiveDDSolver::analizeAll(std::array<unsigned, trumpsCount>& tricks)
{
    OneCardInSuit onTable[3];
    analizeAllSuits(playerToPlay(), played.getLastTrickCardsInPlayOrder(onTable), tricks);
}

Move* InteractiveDDSolver::approxAll(std::int8_t target, Move* begin, Move* end)
{
    return approxAll(target, playerToPlay(), trickOnTable(), begin, end, false);
}

std::int8_t* InteractiveDDSolver::getTricksTakers(std::int8_t* takers) const
{
    return played.getTricksTakers(takers, trump, *deal);
}

OneCardInSuit* InteractiveDDSolver::getLastTrickCards(OneCardInSuit* cards) const
{
    OneCardInSuit onTable[3];
    played.getLastTrickCardsInPlayOrder(onTable);
    for (int place = 0; place < played.count() % 4; ++place) {
        cards[holderOf(onTable[place])] = onTable[place];
    }
    return cards;
}

}  // namespace trikon
