// The subset of a rank found one card at a time, and an engine that gives the words it is told to.
//
// The walk is the definition of the ranks; the tests hold the fast one against it.
#pragma once

#include "cards/cards_configuration.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace trikon {

/// C(n, k) by multiplication, without a table.
inline std::uint64_t binomial(int n, int k)
{
    if (k < 0 || k > n) {
        return 0;
    }
    std::uint64_t coefficient = 1;
    for (int i = 0; i < k; ++i) {
        coefficient = coefficient * static_cast<unsigned>(n - i) / static_cast<unsigned>(i + 1);
    }
    return coefficient;
}

inline CardsConfiguration plainSubset(CardsConfiguration set, std::uint64_t rank, int k)
{
    CardsConfiguration subset;
    while (k > 0) {
        const CardsConfiguration lowest = set & -std::uint64_t{set};
        set ^= lowest;
        const std::uint64_t without = binomial(set.count(), k);
        if (rank >= without) {
            rank -= without;
            subset |= lowest;
            --k;
        }
    }
    return subset;
}

/// A list of words in the shape of an engine; it throws when they run out.
class ListedWords {
public:
    using result_type = std::uint64_t;
    static constexpr result_type min() { return 0; }
    static constexpr result_type max() { return std::numeric_limits<result_type>::max(); }

    explicit ListedWords(std::vector<std::uint64_t> words) : words(std::move(words)) {}
    result_type operator()() { return words.at(drawn++); }
    std::size_t wordsDrawn() const { return drawn; }

private:
    std::vector<std::uint64_t> words;
    std::size_t drawn = 0;
};

}  // namespace trikon
