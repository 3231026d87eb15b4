// A card played in the search, and put back at the end of its scope.
#pragma once

#include "cards/situation.h"

#include <cstdint>

namespace trikon {

/// Takes a card out of play for as long as the object lives.
///
/// `situation` is changed in place; the card must be in play and `player`'s. Cards are put back in
/// the opposite order, so that the objects nest.
class CardOnTable {
public:
    CardOnTable(Situation& situation, PlayerNumber player, OneCardInSuit card)
        : situation(situation), card(card), count(countOf(player, card.suit))
    {
        situation.cards ^= this->card;
        situation.counts = situation.counts - count;
        --situation.cardsCount;
    }
    ~CardOnTable()
    {
        situation.cards ^= card;
        situation.counts = situation.counts + count;
        ++situation.cardsCount;
    }
    CardOnTable(const CardOnTable&) = delete;
    CardOnTable& operator=(const CardOnTable&) = delete;

private:
    Situation& situation;
    CardsConfiguration card;
    std::uint64_t count;
};

}  // namespace trikon
