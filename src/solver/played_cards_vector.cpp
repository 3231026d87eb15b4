// Tricks rebuilt from the history of cards.
#include "solver/played_cards_vector.h"

#include <algorithm>
#include <ostream>

namespace trikon {

namespace {

PlayerNumber holderOf(OneCardInSuit card, const Hands& hands)
{
    int player = North;
    while (player < West && !hands[player].has(card)) {
        ++player;
    }
    return static_cast<PlayerNumber>(player);
}

}  // namespace

Trick PlayedCardsVector::trick(Trump trump, int first, int end) const
{
    if (first >= end) {
        return {};
    }
    const auto lead = cards.begin() + first;
    Trick trick(lead->suit, lead->card);
    std::for_each(lead + 1, cards.begin() + end,
                  [&](OneCardInSuit card) { trick.add(trump, card.suit, card.card); });
    return trick;
}

Trick PlayedCardsVector::NthTrick(Trump trump, std::int8_t n) const
{
    return trick(trump, 4 * n, std::min(4 * n + 4, count()));
}

std::int8_t PlayedCardsVector::whenPlayed(OneCardInSuit card) const
{
    const auto found = std::find(cards.rbegin(), cards.rend(), card);
    return static_cast<std::int8_t>(cards.rend() - found - 1);
}

std::int8_t* PlayedCardsVector::getTricksTakers(std::int8_t* takers, Trump trump,
                                                const Hands& hands) const
{
    std::fill_n(takers, playersCount, std::int8_t{0});
    for (int end = 4; end <= count(); end += 4) {
        const Trick won = trick(trump, end - 4, end);
        ++takers[holderOf({won.winningSuit, won.winningCard}, hands)];
    }
    return takers;
}

OneCardInSuit* PlayedCardsVector::getLastTrickCardsInPlayOrder(OneCardInSuit* out) const
{
    std::copy_n(cards.rbegin(), count() % 4, out);
    return out;
}

std::ostream& operator<<(std::ostream& out, const PlayedCardsVector& played)
{
    for (int place = 0; place < played.count(); ++place) {
        out << (place == 0 ? "" : place % 4 == 0 ? "|" : " ");
        out << played.cards[static_cast<std::size_t>(place)];
    }
    return out;
}

}  // namespace trikon
