// How long one deal takes, and which part of it the engine's words are.
//
// Timings vary with what else the machine does: read the medians of --benchmark_repetitions=9.
#include "cards/hands.h"
#include "dealer/random_source.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>

namespace trikon {
namespace {

constexpr std::uint64_t seed = 1;

void dealAround(benchmark::State& state, const Hands& fixed)
{
    const RandomSource::Configuration configuration(fixed);
    RandomSource source(configuration, seed);
    CardsConfiguration north;
    CardsConfiguration east;
    CardsConfiguration south;
    CardsConfiguration west;
    for (auto _ : state) {
        source.deal(north, east, south, west);
        benchmark::DoNotOptimize(north);
        benchmark::DoNotOptimize(east);
        benchmark::DoNotOptimize(south);
        benchmark::DoNotOptimize(west);
    }
    state.SetItemsProcessed(state.iterations());
}

void wholeDeck(benchmark::State& state) { dealAround(state, Hands()); }
BENCHMARK(wholeDeck);

void northFixed(benchmark::State& state)
{
    dealAround(state, Hands(readWholeHand("AKQ.JT98.765.432"), {}, {}, {}));
}
BENCHMARK(northFixed);

void threeWordsOfTheEngine(benchmark::State& state)
{
    std::mt19937_64 engine(seed);
    for (auto _ : state) {
        benchmark::DoNotOptimize(engine());
        benchmark::DoNotOptimize(engine());
        benchmark::DoNotOptimize(engine());
    }
}
BENCHMARK(threeWordsOfTheEngine);

}  // namespace
}  // namespace trikon
