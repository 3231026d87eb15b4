// One deal as the solver sees it: the four hands and what is worked out about each suit alone.
//
// A search plays the same few suits over and over in every order. Whatever depends on one suit and
// on which of its cards are still in play is therefore computed once a deal, and a node of the
// search only reads it. `suit_analysis.cpp` fills the tables.
//
// Most subsets of a suit are the same to the game: it does not matter which ranks are left, only
// which hands hold them from the highest down. So each subset is given the number of its order of
// holders, and the tables have one line an order. Of 8192 subsets there are about a thousand
// orders, few enough for the second-level cache.
//
// A deal is never written during a search, so solvers of several trumps may share one.
#pragma once

#include "cards/hands.h"

#include <cstdint>
#include <iosfwd>

namespace trikon {

/// What a side can cash in one suit by itself, a given player of it leading the first round.
struct SuitTricks {
    /// For the ordering of leads: 256 for each trick more than with the partner on lead.
    std::int16_t leadScore;
    /// The ranks that must stay as they are for the tricks to be there: all from some card upward.
    std::uint16_t winners;
    /// Rounds won one after the other from the first on, whatever the opponents play.
    std::int8_t tricks;
    /// Rounds that this takes. Only won rounds are played, so it equals `tricks`.
    std::int8_t extra;
    /// The hand that is on lead afterwards: the player or his partner.
    PlayerNumber leader;

    bool operator==(const SuitTricks&) const = default;
};

/// The same as the tables keep it: for all subsets in which the same hands hold the cards in order.
struct CashedTricks {
    std::int8_t tricks;
    /// Tricks more than with the partner on lead.
    std::int8_t moreThanPartner;
    /// How many of the highest cards must stay as they are.
    std::uint8_t depth;
    /// The hand that is on lead afterwards.
    std::uint8_t leader;
};

/// Takes 1.5 megabytes: never on the stack. Nothing is valid before `setHands` or `initHelpers`.
class Deal : public Hands {
public:
    /// Takes over the hands and works out the tables.
    void setHands(const Hands& hands);
    /// Works out the tables of the present hands; to be called after any change of a hand.
    void initHelpers();
    /// Empties both sides' cards. The tables stay: they are read only for cards that are held.
    void clearHelpers();
    /// Empties the hands and both sides' cards.
    void clear();

    // The readers of `Hands` that work out the tables of what they read, once it is complete. They
    // throw as those do; both sides' cards are then empty.

    /// Reads one hand; the tables are worked out with the last.
    std::istream& readNextPlayer(std::istream& in, const char* order, bool completeLast,
                                 bool lineBounded);
    std::istream& readAllPlayers(std::istream& in, const char* order, bool completeLast,
                                 bool lineBounded);
    std::istream& readMixedDirectionHands(std::istream& in, bool completeLast, bool retryFirst);
    std::istream& readAllHandsFromPBNLike(std::istream& in);
    PlayerNumber readFromBBOLIN(const char* text);
    PlayerNumber readFromBBOLIN(std::istream& in);

    /// The cards of `player` and his partner as dealt. The player may be one too high, as that of
    /// the opponents is asked for as `player + 1`.
    CardsConfiguration sideCards(int player) const { return sides[player & 3]; }
    /// The one who was dealt the card, which must be somebody's.
    PlayerNumber holderOf(int suitNumber, std::uint16_t card) const;

    /// The subsets of a suit that put the same hands first, second, third... have one name.
    ///
    /// Going down from the highest card of `suit`, each is replaced by the highest card below the
    /// one before that was dealt to the same hand. `suit` must have been dealt.
    std::uint16_t suitChain(int suitNumber, std::uint16_t suit) const
    {
        return subsets[suitNumber][suit].chain;
    }
    /// The cards of `suit` that can fall in `rounds` (0 to 12) rounds when all play from the top.
    std::uint16_t topRounds(int suitNumber, std::uint16_t suit, int rounds) const;
    /// What the side of `player` cashes in `suit`, the cards of the suit in play.
    SuitTricks suitTricks(int player, int suitNumber, std::uint16_t suit) const;

    /// The number of the order in which the hands hold the cards of `suit`, 0 for no cards.
    std::uint16_t order(int suitNumber, std::uint16_t suit) const
    {
        return subsets[suitNumber][suit].order;
    }
    /// The order of what can fall in `rounds` (0 to 12) rounds, as `topRounds`.
    std::uint16_t topRoundsOrder(int suitNumber, std::uint16_t order, int rounds) const
    {
        return tops[suitNumber][order][rounds];
    }
    /// What the side of `player` cashes in the suit.
    const CashedTricks& cashedTricks(int player, int suitNumber, std::uint16_t order) const
    {
        return cashed[suitNumber][order][player];
    }
    /// The name of a whole position's ranks: `suitChain` of each suit of `inPlay`.
    CardsConfiguration pattern(CardsConfiguration inPlay) const;

private:
    friend class SuitAnalysis;

    // Indexed by player rather than by side, which saves the search a division.
    CardsConfiguration sides[playersCount];
    struct Subset {
        std::uint16_t chain;
        std::uint16_t order;
    };
    Subset subsets[suitsCount][holdingsOfSuit];
    // Indexed by order. There are never as many as subsets, but the bound is simple, and memory
    // that is not used is not touched.
    std::uint16_t tops[suitsCount][holdingsOfSuit][ranksOfSuit];
    CashedTricks cashed[suitsCount][holdingsOfSuit][playersCount];
};

/// Reads N, E and S of 13 cards each, or four hands of any length, over line ends.
std::istream& operator>>(std::istream& in, Deal& deal);

// --- inline definitions ---

inline PlayerNumber Deal::holderOf(int suitNumber, std::uint16_t card) const
{
    const int first = (sides[North].suit(suitNumber) & card) != 0 ? North : East;
    return static_cast<PlayerNumber>(((*this)[first].suit(suitNumber) & card) != 0 ? first
                                                                                   : first + 2);
}

inline CardsConfiguration Deal::pattern(CardsConfiguration inPlay) const
{
    CardsConfiguration names;
    for (int suitNumber = 0; suitNumber < suitsCount; ++suitNumber) {
        names |= std::uint64_t{suitChain(suitNumber, inPlay.suit(suitNumber))} << (16 * suitNumber);
    }
    return names;
}

}  // namespace trikon
