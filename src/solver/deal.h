// One deal as the solver sees it: the four hands and what is worked out about each suit alone.
//
// A search plays the same few suits over and over in every order. Whatever depends on one suit and
// on which of its cards are still in play is therefore worked out once, and a node of the search
// only reads it. What the subsets are called, which cards can fall and which trumps nobody can beat
// is known for all of them from the start (`suit_analysis.cpp`). What a side can cash takes more
// work and is asked for about one subset in twelve, so it is played out when it is first asked for
// (`suit_play_out.cpp`).
//
// Most subsets of a suit are the same to the game: it does not matter which ranks are left, only
// which hands hold them from the highest down. So each subset is given the number of its order of
// holders, and the tables have one line an order. Of 8192 subsets there are about two thousand
// orders, few enough for the second-level cache.
//
// Solvers of several trumps may share a deal, on several threads too: its hands stay as they are
// during a search, and what was played out is kept in atomic words, which say the same whoever
// wrote them and when.
#pragma once

#include "cards/hands.h"

#include <atomic>
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
///
/// One word, which may be written while others read it.
class CashedTricks {
public:
    constexpr CashedTricks(int tricks, int depth, int leader)
        : bits(static_cast<std::uint32_t>((tricks & 0xff) | depth << 16 | leader << 24))
    {
    }

    constexpr int tricks() const { return static_cast<std::int8_t>(bits); }
    /// Tricks more than with the partner on lead.
    constexpr int moreThanPartner() const { return static_cast<std::int8_t>(bits >> 8); }
    /// How many of the highest cards must stay as they are.
    constexpr int depth() const { return static_cast<int>(bits >> 16 & 15); }
    /// The tricks with the better hand of the side on lead.
    constexpr int best() const { return static_cast<int>(bits >> 20 & 15); }
    /// The hand that is on lead afterwards.
    constexpr int leader() const { return static_cast<int>(bits >> 24); }

    /// With `moreThanPartner` and `best`, which are 0 until then.
    constexpr CashedTricks comparedWith(CashedTricks partners) const
    {
        const int more = tricks() - partners.tricks();
        const int best = more > 0 ? tricks() : partners.tricks();
        return CashedTricks(bits | static_cast<std::uint32_t>((more & 0xff) << 8 | best << 20));
    }

    /// What `word` told.
    explicit constexpr CashedTricks(std::uint32_t word) : bits(word) {}
    constexpr std::uint32_t word() const { return bits; }

private:
    std::uint32_t bits;
};

/// A side's trumps that win a trick each, whoever leads and whatever is played.
struct SureTrumps {
    std::uint8_t tricks;
    /// How many of the highest trumps must stay as they are.
    std::uint8_t depth;
};

/// Takes 1.8 megabytes: never on the stack. Nothing is valid before `setHands` or `initHelpers`.
class Deal : public Hands {
public:
    /// Takes over the hands and works out the tables that need no play.
    void setHands(const Hands& hands);
    /// The same with the present hands; to be called after any change of a hand.
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
    /// What the side of `player` cashes in the suit. The first to ask waits for the play-out.
    CashedTricks cashedTricks(int player, int suitNumber, std::uint16_t order) const
    {
        const CashedTricks known(
            std::atomic_ref(cashed[suitNumber][order][player]).load(std::memory_order_relaxed));
        if (known.tricks() == notPlayedOut) [[unlikely]] {
            return playOut(player, suitNumber, order);
        }
        return known;
    }
    /// What the side of `player`, on lead or not, wins in any case with the suit as trumps.
    SureTrumps sureTrumps(int player, int suitNumber, std::uint16_t order) const
    {
        return trumps[suitNumber][order][player & 1];
    }
    /// How promising it is for `player` to lead the suit, by the strength of the four holdings.
    /// Those of the order's highest cards stand for all; what can be cashed is left out of account.
    int leadWeight(int player, int suitNumber, std::uint16_t order) const
    {
        return leadWeights[suitNumber][order][player];
    }
    /// The name of a whole position's ranks: `suitChain` of each suit of `inPlay`.
    CardsConfiguration pattern(CardsConfiguration inPlay) const;

private:
    friend class SuitAnalysis;
    friend class SuitPlayOut;

    // The tricks of a record that is not known.
    static constexpr int notPlayedOut = -1;

    // Fills in the records of the player and of his partner.
    CashedTricks playOut(int player, int suitNumber, std::uint16_t order) const;

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
    std::uint16_t chains[suitsCount][holdingsOfSuit];
    SureTrumps trumps[suitsCount][holdingsOfSuit][2];
    std::int16_t leadWeights[suitsCount][holdingsOfSuit][playersCount];
    // Written by whoever asks first, and therefore only read and written as atomics: the records,
    // and what `suit_play_out.cpp` found for them, 0 for nothing yet.
    mutable std::uint32_t cashed[suitsCount][holdingsOfSuit][playersCount];
    mutable std::uint16_t runs[suitsCount][holdingsOfSuit][playersCount];
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
