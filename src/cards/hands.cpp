// The checks of a whole deal and the completion of its missing hand.
#include "cards/hands.h"

#include "cards/situation.h"
#include "cards/translation.h"

#include <ostream>
#include <stdexcept>

namespace trikon {

namespace {

[[noreturn]] void throwDifferentLengths(PlayerNumber one, PlayerNumber other)
{
    throw std::runtime_error(
        translate("Different numbers of cards in hands, for example in %1% and %2%.",
                  {std::string(1, playerToChar(one)), std::string(1, playerToChar(other))}));
}

}  // namespace

PlayerNumber Hands::nextPlayerToRead(const char* order) const
{
    for (int place = 0; place < playersCount; ++place) {
        const PlayerNumber player = charToPlayer(order[place]);
        if ((*this)[player].empty()) {
            return player;
        }
    }
    return NoPlayer;
}

bool Hands::handsHaveEqualLengths() const
{
    const int length = hands[North].count();
    return hands[East].count() == length && hands[South].count() == length &&
           hands[West].count() == length;
}

void Hands::ensureEqualLengths() const
{
    if (hands[North].count() != hands[East].count()) {
        throwDifferentLengths(North, East);
    }
    if (hands[East].count() != hands[South].count()) {
        throwDifferentLengths(East, South);
    }
    if (hands[East].count() != hands[West].count()) {
        throwDifferentLengths(South, West);
    }
}

void Hands::ensureIsValid() const
{
    for (int player = 0; player < playersCount; ++player) {
        if ((*this)[player].count() > cardsOfHand) {
            throw std::runtime_error(
                translate("Player %1% has more than 13 cards.",
                          {std::string(1, playerToChar(static_cast<PlayerNumber>(player)))}));
        }
    }
    CardsConfiguration seen;
    CardsConfiguration repeated;
    for (const CardsConfiguration hand : hands) {
        repeated |= seen & hand;
        seen |= hand;
    }
    if (!repeated.empty()) {
        throw std::runtime_error(
            translate("The following cards are in more than one hand: %1%", {repeated.str(false)}));
    }
}

bool Hands::tryDeterminateRestCards()
{
    CardsConfiguration* missing = nullptr;
    for (CardsConfiguration& hand : hands) {
        if (hand.empty() && missing == nullptr) {
            missing = &hand;
        } else if (hand.count() != cardsOfHand) {
            return false;  // a second empty hand, too
        }
    }
    if (missing == nullptr) {
        return false;
    }
    *missing = fullDeck & ~allCards();
    return true;
}

std::string Hands::toString() const
{
    return Situation(allCards(), *this).getFormatedString(*this);
}

std::ostream& operator<<(std::ostream& out, const Hands& hands)
{
    return Situation(hands.allCards(), hands).printFormated(out, hands);
}

}  // namespace trikon
