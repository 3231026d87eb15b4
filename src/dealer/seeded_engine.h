// The engine of a run that can be repeated: a small one for each deal, started from the run's seed
// and the deal's number.
//
// A deal then depends on nothing but these two, whichever thread makes it and whatever was drawn
// for the deals before. The engine is SplitMix64, published by G. L. Steele, D. Lea and C. H. Flood
// ("Fast Splittable Pseudorandom Number Generators", OOPSLA 2014): a counter that grows by a
// constant, and a function that mixes its bits. Starting it for a deal takes some nanoseconds.
#pragma once

#include <cstdint>
#include <limits>

namespace trikon {

/// Gives 64-bit words over their full range; meets what the standard library asks of an engine.
class SeededEngine {
public:
    using result_type = std::uint64_t;

    /// The words of a seed and a number are the same for ever.
    SeededEngine(std::uint64_t seed, std::uint64_t number)
        : state(mixed(mixed(seed + step) + step * (number + 1)))
    {
    }

    static constexpr result_type min() { return 0; }
    static constexpr result_type max() { return std::numeric_limits<result_type>::max(); }

    result_type operator()() { return mixed(state += step); }

private:
    // 2^64 divided by the golden ratio, made odd.
    static constexpr std::uint64_t step = 0x9e3779b97f4a7c15;

    static constexpr std::uint64_t mixed(std::uint64_t word)
    {
        word = (word ^ (word >> 30)) * 0xbf58476d1ce4e5b9;
        word = (word ^ (word >> 27)) * 0x94d049bb133111eb;
        return word ^ (word >> 31);
    }

    // Mixed, not counted on from one number to the next: else one deal's second word would be the
    // next deal's first.
    std::uint64_t state;
};

}  // namespace trikon
