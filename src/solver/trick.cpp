// Tricks made from a set of cards, and tricks as text.
#include "solver/trick.h"

#include "cards/card_text.h"

#include <ostream>

namespace trikon {

Trick::Trick(Trump trump, const Deal& deal, CardsConfiguration cards, std::int8_t count,
             PlayerNumber first)
{
    PlayerNumber player = first;
    for (int place = 0; place < count; ++place, player = nextPlayer(player)) {
        const CardsConfiguration card = cards & deal[player];
        if (place == 0) {
            *this = Trick(firstSuit(card), card.suit(firstSuit(card)));
        } else {
            add(trump, card);
        }
    }
}

std::ostream& operator<<(std::ostream& out, const Trick& trick)
{
    if (trick.winningCard == 0) {
        return out << "..";
    }
    out << suitNumberToChar(trick.ledSuit) << ".." << cardToChar(trick.winningCard)
        << suitNumberToChar(trick.winningSuit);
    return trick.followed != 0 ? out << '!' : out;
}

}  // namespace trikon
