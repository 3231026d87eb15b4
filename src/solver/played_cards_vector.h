// The cards played so far, in order, and the tricks that they make.
//
// Tricks are not stored: trick k (from 0) is always the cards at 4 k to 4 k + 3.
#pragma once

#include "cards/cards_configuration.h"
#include "cards/hands.h"
#include "solver/trick.h"

#include <cstdint>
#include <iosfwd>
#include <vector>

namespace trikon {

class PlayedCardsVector {
public:
    bool empty() const { return cards.empty(); }
    int count() const { return static_cast<int>(cards.size()); }
    OneCardInSuit last() const { return cards.back(); }
    /// Where the last trick begins, complete or not; 0 without cards.
    int beginOfLastTrick() const { return empty() ? 0 : (count() - 1) & ~3; }
    /// Whether the next card is a lead.
    bool isAtLead() const { return count() % 4 == 0; }

    void add(OneCardInSuit card) { cards.push_back(card); }
    void removeLast() { cards.pop_back(); }
    void clear() { cards.clear(); }

    /// The trick made of the cards from `first` to before `end`; empty if there are none.
    Trick trick(Trump trump, int first, int end) const;
    /// The trick on the table; empty at a lead.
    Trick currentTrick(Trump trump) const { return trick(trump, count() & ~3, count()); }
    /// The trick that holds the last card played.
    Trick lastTrick(Trump trump) const { return trick(trump, beginOfLastTrick(), count()); }
    /// Trick n from 0, complete or not; empty if it has not begun.
    Trick NthTrick(Trump trump, std::int8_t n) const;

    /// The place of a card in the history, from 0; -1 if it was not played.
    std::int8_t whenPlayed(OneCardInSuit card) const;
    /// Counts the complete tricks that each player won, by `PlayerNumber`; answers `takers`.
    std::int8_t* getTricksTakers(std::int8_t* takers, Trump trump, const Hands& hands) const;
    /// Writes the up to three cards on the table, the most recent first; answers `out`.
    OneCardInSuit* getLastTrickCardsInPlayOrder(OneCardInSuit* out) const;

    /// Writes the cards with "|" between tricks: "SA S3 S2 SK|HQ".
    friend std::ostream& operator<<(std::ostream& out, const PlayedCardsVector& played);

private:
    std::vector<OneCardInSuit> cards;
};

}  // namespace trikon
