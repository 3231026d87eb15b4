// A stream of complete random deals around fixed cards.
//
// `RandomSource::Configuration` holds the fixed cards and what follows from them; it is written
// before the workers start and only read afterwards. Each worker has a `RandomSource`, which pairs
// it with an engine of its own. North, East and South each draw one rank and choose from what the
// hands before them left; West takes the rest without a draw.
#pragma once

#include "cards/hands.h"
#include "dealer/random_subset.h"

#include <cstdint>
#include <random>

namespace trikon {

class RandomSource {
public:
    class Configuration;

    /// The configuration must outlive the source.
    inline RandomSource(const Configuration& configuration, std::uint64_t seed);

    /// Writes the next deal.
    inline void deal(CardsConfiguration& north, CardsConfiguration& east, CardsConfiguration& south,
                     CardsConfiguration& west);

    /// For whatever else the worker draws; the deals that follow depend on it.
    std::mt19937_64& engine() { return randomEngine; }

private:
    const Configuration& configuration;
    std::mt19937_64 randomEngine;
};

class RandomSource::Configuration {
public:
    explicit Configuration(const Hands& fixed) { setInitial(fixed); }

    CardsConfiguration freeCards() const { return free; }

    /// Takes the cards that each hand holds in every deal: at most 13, and no card twice.
    void setInitial(const Hands& fixed);

    /// Writes one deal: the fixed cards, and a uniformly random arrangement of all others.
    ///
    /// Draws three ranks, also when a hand needs no card.
    template <class Engine>
    void deal(Hands& out, Engine& engine) const;
    template <class Engine>
    void deal(CardsConfiguration& north, CardsConfiguration& east, CardsConfiguration& south,
              CardsConfiguration& west, Engine& engine) const;

private:
    Hands initial;
    CardsConfiguration free;
    std::int8_t freeCardsCount = 0;
    std::int8_t cardsForNorth = 0;
    std::int8_t afterNorth = 0;
    std::int8_t cardsForEast = 0;
    std::int8_t afterEast = 0;
    // West needs no number: he takes what South leaves.
    std::int8_t cardsForSouth = 0;
};

/// A random number in [0, 1), from one word of the engine and rarely more.
template <class Engine>
double unitDraw(Engine& engine);

// --- inline definitions ---

inline RandomSource::RandomSource(const Configuration& configuration, std::uint64_t seed)
    : configuration(configuration), randomEngine(seed)
{
}

inline void RandomSource::deal(CardsConfiguration& north, CardsConfiguration& east,
                               CardsConfiguration& south, CardsConfiguration& west)
{
    configuration.deal(north, east, south, west, randomEngine);
}

template <class Engine>
void RandomSource::Configuration::deal(Hands& out, Engine& engine) const
{
    deal(out[North], out[East], out[South], out[West], engine);
}

template <class Engine>
void RandomSource::Configuration::deal(CardsConfiguration& north, CardsConfiguration& east,
                                       CardsConfiguration& south, CardsConfiguration& west,
                                       Engine& engine) const
{
    SubsetWalk northWalk(uniformRank(engine, cardsForNorth, freeCardsCount), cardsForNorth,
                         freeCardsCount);
    SubsetWalk eastWalk(uniformRank(engine, cardsForEast, afterNorth), cardsForEast, afterNorth);
    SubsetWalk southWalk(uniformRank(engine, cardsForSouth, afterEast), cardsForSouth, afterEast);
    // A step waits for the one before it in its own walk only: side by side, the walks overlap.
    int pairs = pairsOf(freeCardsCount);
    for (; pairs > pairsOf(afterNorth); --pairs) {
        northWalk.step();
    }
    for (; pairs > pairsOf(afterEast); --pairs) {
        northWalk.step();
        eastWalk.step();
    }
    for (; pairs > 0; --pairs) {
        northWalk.step();
        eastWalk.step();
        southWalk.step();
    }
    CardsConfiguration rest = free;
    const CardsConfiguration toNorth = cardsAtPlaces(rest, northWalk.places());
    rest ^= toNorth;
    const CardsConfiguration toEast = cardsAtPlaces(rest, eastWalk.places());
    rest ^= toEast;
    const CardsConfiguration toSouth = cardsAtPlaces(rest, southWalk.places());
    rest ^= toSouth;
    north = initial[North] | toNorth;
    east = initial[East] | toEast;
    south = initial[South] | toSouth;
    west = initial[West] | rest;
}

template <class Engine>
double unitDraw(Engine& engine)
{
    double draw = 1.0;
    // The words closest to 2^64 are rounded up to 1.
    while (draw >= 1.0) {
        draw = static_cast<double>(engine()) * 0x1p-64;
    }
    return draw;
}

}  // namespace trikon
