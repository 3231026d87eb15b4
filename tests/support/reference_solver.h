// The measure of the solver: a plain search that knows nothing but the rules of play.
//
// No table, no sure tricks, no equivalent cards, no order of moves: every legal card is tried, and
// a player stops only when his side has what it wanted. Slow, and short enough to be seen right.
#pragma once

#include "cards/hands.h"
#include "cards/players_and_trumps.h"

#include <span>

namespace trikon {

/// Whether the side of `player`, who is to play, can take `target` of the tricks still to play.
///
/// `played` are the cards of the current trick, the lead first; `hands` hold the others.
bool referenceCanTake(const Hands& hands, Trump trump, PlayerNumber player, int target,
                      std::span<const OneCardInSuit> played = {});

/// The tricks that the side of `player`, who is to play, takes of those still to play.
int referenceTricks(const Hands& hands, Trump trump, PlayerNumber player,
                    std::span<const OneCardInSuit> played = {});

}  // namespace trikon
