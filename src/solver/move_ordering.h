// Which suit to try first, and when to win. The order of moves decides how fast an answer is found,
// never which one.
//
// A holding is worth its ranks and five points a card. It is a good suit to lead where one's own
// side outweighs the opponent who plays after each of its hands; a void opponent, who may ruff or
// discard, counts as very strong.
#pragma once

#include "cards/bit_tables.h"
#include "cards/situation.h"
#include "solver/deal.h"
#include "solver/trick.h"

#include <cstdint>

namespace trikon {

/// The sum of (rank index + 5) over the cards of the holding; 0 for a void.
extern std::int32_t strength_with_count[holdingsOfSuit];

/// The same for an opponent's holding; 500 for a void.
extern std::int32_t strength_oponent[holdingsOfSuit];

/// How promising it is for `player` to lead the suit: `Deal::leadWeight` and the `leadScore`.
int leadWeight(const Situation& situation, const Deal& deal, PlayerNumber player, int suitNumber);

/// Whether the card that wins the trick so far is the partner's.
bool partnerIsWinning(const Deal& deal, PlayerNumber player, const Trick& trick);

/// Whether the partner wins the trick without the help of `player`, who plays card `pos`.
///
/// A ruff by an opponent still to play is left out of account.
template <int pos>
bool partnerWillWin(const Situation& situation, const Deal& deal, PlayerNumber player,
                    const Trick& trick);

/// What the trumps of `player`, who cannot follow the led suit as card `pos`, weigh beside the
/// lengths of the suits: a ruff comes first if it can win and the partner is not sure to.
template <int trump, int pos>
int ruffWeight(const Situation& situation, const Deal& deal, PlayerNumber player,
               const Trick& trick);

// --- inline definitions ---

inline int leadWeight(const Situation& situation, const Deal& deal, PlayerNumber player,
                      int suitNumber)
{
    const std::uint16_t order = deal.order(suitNumber, situation.cards.suit(suitNumber));
    return deal.leadWeight(player, suitNumber, order) +
           256 * deal.cashedTricks(player, suitNumber, order).moreThanPartner();
}

inline bool partnerIsWinning(const Deal& deal, PlayerNumber player, const Trick& trick)
{
    return (deal[partner(player)].suit(trick.winningSuit) & trick.winningCard) != 0;
}

template <int pos>
bool partnerWillWin(const Situation& situation, const Deal& deal, PlayerNumber player,
                    const Trick& trick)
{
    static_assert(1 <= pos && pos <= 3);
    const auto held = [&](PlayerNumber of) {
        return CardsConfiguration(situation.cards & deal[of]).suit(trick.ledSuit);
    };
    if constexpr (pos == 1) {
        return held(partner(player)) > (held(nextPlayer(player)) | trick.winningCard);
    } else if constexpr (pos == 2) {
        return partnerIsWinning(deal, player, trick) &&
               (trick.winningSuit != trick.ledSuit || trick.winningCard > held(nextPlayer(player)));
    } else {
        return partnerIsWinning(deal, player, trick);
    }
}

template <int trump, int pos>
inline int ruffWeight(const Situation& situation, const Deal& deal, PlayerNumber player,
                      const Trick& trick)
{
    if constexpr (trump == NoTrump) {
        return 0;
    } else {
        const unsigned trumps = CardsConfiguration(situation.cards & deal[player]).suit(trump);
        const unsigned toBeat = trick.winningSuit == trump ? trick.winningCard : 0;
        return trumps > toBeat && !partnerWillWin<pos>(situation, deal, player, trick) ? 100 : 0;
    }
}

}  // namespace trikon
