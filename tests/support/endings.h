// Random endings that find faults, hands written as text, and how much of it all to run.
#pragma once

#include "cards/hands.h"
#include "cards/players_and_trumps.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace trikon {

/// How the cards of an ending are drawn.
enum class EndingKind {
    anyCards,
    twoSuits,
    threeSuits,
    topRanks,     // no gaps, and all suits of equal length
    oneSuitHand,  // one hand has nearly nothing but one suit
};

constexpr EndingKind allEndingKinds[] = {EndingKind::anyCards, EndingKind::twoSuits,
                                         EndingKind::threeSuits, EndingKind::topRanks,
                                         EndingKind::oneSuitHand};

/// Four hands of `length` cards each; at most 6, but 13 of any cards.
Hands randomEnding(std::mt19937_64& random, int length, EndingKind kind);

/// The hands with the cards outside `relevant` redistributed, suit lengths kept.
Hands shuffledOutside(std::mt19937_64& random, const Hands& hands, CardsConfiguration relevant);

/// Whether two positions with equal suit lengths in all hands are the same on the relevant ranks of
/// the first: the same hands hold the top cards of each suit in the same order.
bool agree(const Hands& hands, const Hands& others, CardsConfiguration relevant);

/// Four hands from North on with blanks between them: "A2..K.3 ...".
Hands handsOf(const std::string& text);

/// A failure's deal: the four hands, the trump and the player.
std::string describe(const Hands& hands, Trump trump, PlayerNumber player);

/// `count` scaled to how thorough this run is to be, at least 1.
///
/// The environment variable TAMREL_TEST_EFFORT gives per cent: 100 is the ordinary run, 5 that of
/// debug and sanitizer builds, and 10000 takes an hour.
int effort(int count);

/// How many endings of each kind to try, before `effort`.
struct EndingCount {
    int length;
    int endings;
};

/// Calls `check` with random endings until a fatal failure, each length in each kind in turn.
template <class Check>
void forRandomEndings(std::mt19937_64& random, std::initializer_list<EndingCount> counts,
                      const Check& check)
{
    for (const EndingCount& count : counts) {
        for (int number = effort(count.endings) * static_cast<int>(std::size(allEndingKinds));
             number > 0 && !testing::Test::HasFatalFailure(); --number) {
            const auto kind =
                allEndingKinds[static_cast<unsigned>(number) % std::size(allEndingKinds)];
            check(randomEnding(random, count.length, kind));
        }
    }
}

/// One line of the deals under tests/data: the hands and the 20 results behind them.
struct SolvedDeal {
    Hands hands;
    /// By trump, spades down to clubs and then no trump; four declarers each, from North on.
    std::vector<int> tricks;
};

/// The deals of a file under tests/data.
std::vector<SolvedDeal> solvedDeals(const std::string& fileName);

}  // namespace trikon
