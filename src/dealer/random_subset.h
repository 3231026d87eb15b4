// Uniformly random subsets of a set of cards, each from a single draw of the engine.
//
// A rank is drawn uniformly, and the subset of that rank is the result (`subset_of_rank.h`). The
// standard library's own distributions differ from one compiler to the next, so the rule that turns
// words of the engine into ranks is written out here. It fixes the deals of a seed, as does the
// order of the draws: neither may ever change.
#pragma once

#include "cards/cards_configuration.h"
#include "dealer/subset_of_rank.h"

#include <array>
#include <cstdint>
#include <limits>

namespace trikon {

/// A uniformly random number in [0, C(n, k)), from one word of the engine and rarely more.
///
/// The engine must give 64-bit words over their full range. A word is drawn even when there is but
/// one number to choose, so that fixed cards do not shift the draws that follow.
template <class Engine>
std::uint64_t uniformRank(Engine& engine, std::int8_t k, std::int8_t n);

/// Adds to `result` a random choice of `k` of the `n` cards of `set`.
template <class Engine>
void randCardsSubset(CardsConfiguration& result, CardsConfiguration set, Engine& engine,
                     std::int8_t k, std::int8_t n);

/// Splits the 2 `k` cards of `set` at random into two hands of `k`.
template <class Engine>
void rand2Hands(CardsConfiguration& first, CardsConfiguration& second, CardsConfiguration set,
                Engine& engine, std::int8_t k);

/// One random card of the `n` cards of `set`.
template <class Engine>
OneCardInSuit randCard(CardsConfiguration set, Engine& engine, std::int8_t n);

/// Deals four random hands of `k` cards (1 to 13) from the full deck.
///
/// The cards of North and South are drawn together, then those of East and West; both are split.
template <class Engine>
void rand4Hands(std::array<CardsConfiguration, playersCount>& hands, Engine& engine, std::int8_t k);

/// The card of a set that holds just one.
OneCardInSuit onlyCard(CardsConfiguration set);

// --- inline definitions ---

template <class Engine>
std::uint64_t uniformRank(Engine& engine, std::int8_t k, std::int8_t n)
{
    constexpr std::uint64_t highestWord = std::numeric_limits<std::uint64_t>::max();
    static_assert(Engine::min() == 0 && Engine::max() == highestWord);
    const std::uint64_t count = Newton[n][k];
    if (count == 0) {
        return engine();  // no rank to choose; only where more cards are wanted than there are
    }
    // Each rank gets equally many words; the few at the top that are left over are drawn again.
    const std::uint64_t wordsOfRank = highestWord / count;
    std::uint64_t word = engine();
    while (word >= count * wordsOfRank) {
        word = engine();
    }
    return word / wordsOfRank;
}

template <class Engine>
void randCardsSubset(CardsConfiguration& result, CardsConfiguration set, Engine& engine,
                     std::int8_t k, std::int8_t n)
{
    cardsSubset(result, set, uniformRank(engine, k, n), k, n);
}

template <class Engine>
void rand2Hands(CardsConfiguration& first, CardsConfiguration& second, CardsConfiguration set,
                Engine& engine, std::int8_t k)
{
    first = 0;
    randCardsSubset(first, set, engine, k, static_cast<std::int8_t>(2 * k));
    second = set ^ first;
}

template <class Engine>
OneCardInSuit randCard(CardsConfiguration set, Engine& engine, std::int8_t n)
{
    CardsConfiguration card;
    randCardsSubset(card, set, engine, 1, n);
    return onlyCard(card);
}

template <class Engine>
void rand4Hands(std::array<CardsConfiguration, playersCount>& hands, Engine& engine, std::int8_t k)
{
    const auto cardsOfPair = static_cast<std::int8_t>(2 * k);
    CardsConfiguration northSouth;
    randCardsSubset(northSouth, fullDeck, engine, cardsOfPair, cardsOfDeck);
    CardsConfiguration eastWest = fullDeck ^ northSouth;
    // With 13 cards a hand East and West have no choice left, and no word is drawn for it.
    if (k != cardsOfHand) {
        const CardsConfiguration pool = eastWest;
        eastWest = 0;
        randCardsSubset(eastWest, pool, engine, cardsOfPair,
                        static_cast<std::int8_t>(cardsOfDeck - cardsOfPair));
    }
    rand2Hands(hands[North], hands[South], northSouth, engine, k);
    rand2Hands(hands[East], hands[West], eastWest, engine, k);
}

}  // namespace trikon
