// What is decided without playing a card out.
//
// The last trick goes to the highest trump left, or else to the highest card of the suit led.
// Before that, the side on lead may simply cash what `Deal::suitTricks` promises, suit after suit;
// the hand in which one suit's run ends goes on with the next. Trumps are cashed first, or kept for
// the end when more of them win there (`Deal::sureTrumps`). The other side cashes too, when it is
// sure to win the trick led to. All report on which ranks they rely.
#pragma once

#include "solver/dd_solver.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

namespace trikon {

/// Counts the tricks that the side on lead can cash, with the trump `T` (4 for none).
template <int T>
class QuickTricks {
    static_assert(Clubs <= T && T <= NoTrump);

public:
    /// The tricks of `player`'s side, `player` on lead, with `rounds` tricks still to be played.
    std::uint8_t operator()(PlayerNumber player, const Deal& deal, const CardsConfiguration& inPlay,
                            const std::int8_t& rounds);

    /// The tricks of the side of `second`, who is to play to a lead of `ledSuit`; 0 if the side may
    /// lose this one.
    ///
    /// The side wins the trick just as if it had led to it, whichever card of the suit was led:
    /// that card counts as still in the leader's hand in `inPlay`, and its trick in `rounds`.
    std::uint8_t afterLead(PlayerNumber second, const Deal& deal, const CardsConfiguration& inPlay,
                           int ledSuit, const std::int8_t& rounds);

    /// False only if neither count reaches `target` for the side of `player`, whoever of it begins.
    ///
    /// Much faster than a count, and seldom wrong at no trump.
    static bool mayCash(int target, PlayerNumber player, const Deal& deal,
                        const Situation& situation);

    /// The `SuitTricks::winners` that the last count used; a suit that gave nothing is empty.
    ///
    /// Worked out on demand: few counts are high enough for anybody to ask.
    CardsConfiguration winners() const;

private:
    // A suit as it was cashed: how many rounds of it counted, and on how many of the highest cards
    // of these rounds the tricks stand.
    struct Cashed {
        int rounds = ranksOfSuit;
        int depth = 0;
    };

    void start(int player, const Deal& deal, const CardsConfiguration& inPlay, std::int8_t rounds);
    // The suits whose bits are set.
    void cashSuits(unsigned suits);
    // Inlined by force: with the suit known, both are a few look-ups.
    [[gnu::always_inline]] inline void cashSuit(int suitNumber, int mostRounds);
    [[gnu::always_inline]] inline void cash(int suitNumber, std::uint16_t order,
                                            CashedTricks record, int rounds);
    void take(int suitNumber, CashedTricks record, int rounds);
    // Answers how many rounds of trumps are drawn.
    int drawOrKeepTrumps();
    int trumpsOfLongerHand() const;
    // The side suits whose bits are set, when that many rounds are drawn.
    void cashBeside(unsigned suits, int drawn);

    static constexpr unsigned allSuits = (1U << suitsCount) - 1;

    const Deal* deal = nullptr;
    CardsConfiguration inPlay;
    std::array<Cashed, suitsCount> cashed;
    int onLead = NoPlayer;
    int tricks = 0;
    int roundsLeft = 0;
};

// --- inline definitions ---

template <int T>
void QuickTricks<T>::start(int player, const Deal& deal, const CardsConfiguration& inPlay,
                           std::int8_t rounds)
{
    this->deal = &deal;
    this->inPlay = inPlay;
    onLead = player;
    tricks = 0;
    roundsLeft = static_cast<std::uint8_t>(rounds);
}

template <int T>
std::uint8_t QuickTricks<T>::operator()(PlayerNumber player, const Deal& deal,
                                        const CardsConfiguration& inPlay, const std::int8_t& rounds)
{
    start(player, deal, inPlay, rounds);
    if constexpr (T == NoTrump) {
        cashSuits(allSuits);
    } else {
        const int drawn = drawOrKeepTrumps();
        cashBeside(allSuits ^ (1U << T), drawn);
    }
    return static_cast<std::uint8_t>(tricks);
}

// Trumps that are sure to win need not be drawn. They come last, so the side suits have the rounds
// in which neither hand has to play one.
template <int T>
int QuickTricks<T>::drawOrKeepTrumps()
{
    const std::uint16_t order = deal->order(T & 3, inPlay.suit(T & 3));
    const CashedTricks drawn = deal->cashedTricks(onLead, T & 3, order);
    const SureTrumps kept = deal->sureTrumps(onLead, T & 3, order);
    if (drawn.tricks() >= kept.tricks) {
        take(T & 3, drawn, ranksOfSuit);
        return drawn.tricks();
    }
    tricks += kept.tricks;
    roundsLeft -= trumpsOfLongerHand();
    cashed[T & 3] = {ranksOfSuit, kept.depth};
    return 0;
}

template <int T>
int QuickTricks<T>::trumpsOfLongerHand() const
{
    const auto trumpsOf = [&](int player) {
        return CardsConfiguration(inPlay & (*deal)[player]).countInSuit(T & 3);
    };
    return std::max(trumpsOf(onLead), trumpsOf(onLead ^ 2));
}

template <int T>
void QuickTricks<T>::cashBeside(unsigned suits, int drawn)
{
    // An opponent who keeps a trump ruffs as soon as he is void. The others follow for ever.
    const auto followSet = [&](int opponent) {
        const CardsConfiguration held = inPlay & (*deal)[opponent & 3];
        return drawn < held.countInSuit(T & 3) ? held : CardsConfiguration(fullDeck);
    };
    const CardsConfiguration left = followSet(onLead + 1);
    const CardsConfiguration right = followSet(onLead + 3);
    for (int place = 1; place < suitsCount; ++place) {
        const int suitNumber = (T + place) & 3;
        if ((suits >> suitNumber & 1) != 0) {
            cashSuit(suitNumber,
                     std::min(left.countInSuit(suitNumber), right.countInSuit(suitNumber)));
        }
    }
}

// The hand with the better run of the suit plays as if it led: what an opponent has played before
// it is one of the cards that the run has an answer to, and so is what comes after. So the suit is
// cashed first, no longer than both opponents follow while they have trumps, and the rest as
// always.
template <int T>
std::uint8_t QuickTricks<T>::afterLead(PlayerNumber second, const Deal& deal,
                                       const CardsConfiguration& inPlay, int ledSuit,
                                       const std::int8_t& rounds)
{
    const std::uint16_t order = deal.order(ledSuit, inPlay.suit(ledSuit));
    const int own = deal.cashedTricks(second, ledSuit, order).tricks();
    const int partners = deal.cashedTricks(partner(second), ledSuit, order).tricks();
    if (own == 0 && partners == 0) {
        return 0;
    }
    start(own >= partners ? second : partner(second), deal, inPlay, rounds);
    if constexpr (T == NoTrump) {
        cashSuit(ledSuit, ranksOfSuit);
        cashSuits(allSuits ^ (1U << ledSuit));
    } else if (ledSuit == T) {
        cashSuit(ledSuit, ranksOfSuit);
        cashBeside(allSuits ^ (1U << T), tricks);
    } else {
        // A hand with nothing but trumps would ruff.
        const int roundsOfTrumps = trumpsOfLongerHand();
        roundsLeft -= roundsOfTrumps;
        cashBeside(1U << ledSuit, 0);
        roundsLeft += roundsOfTrumps;
        if (tricks == 0) {
            return 0;
        }
        const int drawn = drawOrKeepTrumps();
        cashBeside(allSuits ^ (1U << T) ^ (1U << ledSuit), drawn);
    }
    return static_cast<std::uint8_t>(tricks);
}

// First what keeps the lead, which costs nothing; then the suit with most tricks that passes it on,
// and again what keeps it there.
template <int T>
void QuickTricks<T>::cashSuits(unsigned suits)
{
    std::array<std::uint16_t, suitsCount> orders;
    for (unsigned left = suits; left != 0; left &= left - 1) {
        const int suitNumber = std::countr_zero(left);
        orders[static_cast<unsigned>(suitNumber)] =
            deal->order(suitNumber, inPlay.suit(suitNumber));
    }
    while (suits != 0) {
        int toPartner = 0;
        CashedTricks most{0, 0, 0};
        for (unsigned left = suits; left != 0; left &= left - 1) {
            const int suitNumber = std::countr_zero(left);
            const CashedTricks record =
                deal->cashedTricks(onLead, suitNumber, orders[static_cast<unsigned>(suitNumber)]);
            if (record.tricks() == 0) {
                continue;
            }
            if (record.leader() == onLead) {
                cash(suitNumber, orders[static_cast<unsigned>(suitNumber)], record, ranksOfSuit);
                suits ^= 1U << suitNumber;
            } else if (record.tricks() > most.tricks()) {
                toPartner = suitNumber;
                most = record;
            }
        }
        if (most.tricks() == 0) {
            return;
        }
        cash(toPartner, orders[static_cast<unsigned>(toPartner)], most, ranksOfSuit);
        suits ^= 1U << toPartner;
    }
}

// At most `mostRounds` rounds.
template <int T>
void QuickTricks<T>::cashSuit(int suitNumber, int mostRounds)
{
    const std::uint16_t order = deal->order(suitNumber, inPlay.suit(suitNumber));
    CashedTricks record = deal->cashedTricks(onLead, suitNumber, order);
    int rounds = ranksOfSuit;
    if (T != NoTrump && suitNumber != T && record.tricks() > mostRounds) {
        rounds = mostRounds;
        record =
            deal->cashedTricks(onLead, suitNumber, deal->topRoundsOrder(suitNumber, order, rounds));
    }
    cash(suitNumber, order, record, rounds);
}

// The record of these rounds, or of fewer if no more are left.
template <int T>
void QuickTricks<T>::cash(int suitNumber, std::uint16_t order, CashedTricks record, int rounds)
{
    if (roundsLeft < record.tricks()) {
        rounds = roundsLeft;
        record =
            deal->cashedTricks(onLead, suitNumber, deal->topRoundsOrder(suitNumber, order, rounds));
    }
    take(suitNumber, record, rounds);
}

template <int T>
void QuickTricks<T>::take(int suitNumber, CashedTricks record, int rounds)
{
    tricks += record.tricks();
    roundsLeft -= record.tricks();
    cashed[static_cast<unsigned>(suitNumber)] = {rounds, record.depth()};
    onLead = record.leader();
}

// The best that either hand of the side can do in each suit, with all the trumps drawn that it may
// draw.
template <int T>
inline bool QuickTricks<T>::mayCash(int target, PlayerNumber player, const Deal& deal,
                                    const Situation& situation)
{
    const auto orderOf = [&](int suitNumber) {
        return deal.order(suitNumber, situation.cards.suit(suitNumber));
    };
    const auto bestOf = [&](int suitNumber) {
        return deal.cashedTricks(player, suitNumber, orderOf(suitNumber)).best();
    };
    if constexpr (T == NoTrump) {
        return bestOf(Clubs) + bestOf(Diamonds) + bestOf(Hearts) + bestOf(Spades) >= target;
    } else {
        const int drawn = bestOf(T);
        // In how many rounds of each suit an opponent follows or has no trump, four bits each.
        const auto followed = [&](int opponent) {
            const auto lengths = static_cast<unsigned>(situation.counts >> (16 * (opponent & 3)));
            return drawn < static_cast<int>(lengths >> (4 * T) & 15) ? lengths : ~0U;
        };
        const unsigned left = followed(player + 1);
        const unsigned right = followed(player + 3);
        int most = std::max(drawn, int{deal.sureTrumps(player, T, orderOf(T)).tricks});
        for (int place = 1; place < suitsCount; ++place) {
            const int suitNumber = (T + place) & 3;
            most += std::min({bestOf(suitNumber), static_cast<int>(left >> (4 * suitNumber) & 15),
                              static_cast<int>(right >> (4 * suitNumber) & 15)});
        }
        return most >= target;
    }
}

template <int T>
CardsConfiguration QuickTricks<T>::winners() const
{
    CardsConfiguration used;
    for (int suitNumber = 0; suitNumber < suitsCount; ++suitNumber) {
        const auto [rounds, depth] = cashed[static_cast<unsigned>(suitNumber)];
        std::uint16_t suit = inPlay.suit(suitNumber);
        if (rounds < ranksOfSuit) {
            suit = deal->topRounds(suitNumber, suit, rounds);
        }
        used.setSuit(suitNumber, _highest_mask[suit][depth]);
    }
    return used;
}

template <int suit>
bool DDSolver::hasHighestInSuit(PlayerNumber player, CardsConfiguration& relevant) const
{
    static_assert(Clubs <= suit && suit <= Spades);
    const std::uint16_t inPlay = situation.cards.suit(suit);
    const std::uint16_t highest = _highest_bit13[inPlay];
    if (inPlay != highest) {  // the only card of its suit wins whatever its rank
        relevant |= onlySuit(suit, ranksFrom(highest));
    }
    return (deal->sideCards(player).suit(suit) & highest) != 0;
}

template <int T>
bool DDSolver::searchLastTrick(PlayerNumber leader, CardsConfiguration& relevant) const
{
    static_assert(Clubs <= T && T <= NoTrump);
    if constexpr (T != NoTrump) {
        return situation.cards.suit(T) != 0 ? hasHighestInSuit<T>(leader, relevant)
                                            : searchLastTrick<NoTrump>(leader, relevant);
    } else {
        switch (firstSuit(situation.cards & (*deal)[leader])) {
        case Clubs: return hasHighestInSuit<Clubs>(leader, relevant);
        case Diamonds: return hasHighestInSuit<Diamonds>(leader, relevant);
        case Hearts: return hasHighestInSuit<Hearts>(leader, relevant);
        default: return hasHighestInSuit<Spades>(leader, relevant);
        }
    }
}

}  // namespace trikon
