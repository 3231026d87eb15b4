// Deals are uniform: suit lengths and high-card points occur as often as they should.
//
// Each hand, and each two hands taken together, hold a uniformly random subset of the free cards,
// so what is to be expected follows from binomial coefficients. Single hands alone would not show
// that one depends on another. The chi-square bound is such that a fair dealer would miss it with
// one seed in a million.
#include "dealer/plain_subset.h"
#include "dealer/random_source.h"
#include "dealer/seeded_engine.h"

#include <boost/math/distributions/chi_squared.hpp>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace trikon {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int dealsDrawn = 50'000;
#else
constexpr int dealsDrawn = 1'000'000;
#endif

// Every chi-square of this file is one of this many chances to fail.
constexpr int chiSquares = 42;
constexpr double significance = 1e-6 / chiSquares;

constexpr std::uint64_t acesMask = 0x1000100010001000;

int highCardPoints(CardsConfiguration cards)
{
    int points = 0;
    for (int honour = 0; honour < 4; ++honour) {
        points += (4 - honour) * CardsConfiguration(cards & (acesMask >> honour)).count();
    }
    return points;
}

// The four suit lengths as one number.
unsigned suitLengths(CardsConfiguration cards)
{
    unsigned lengths = 0;
    for (int suitNumber = 0; suitNumber < suitsCount; ++suitNumber) {
        lengths = 16 * lengths + static_cast<unsigned>(cards.countInSuit(suitNumber));
    }
    return lengths;
}

// Calls `found(taken, ways)` for each way to take `wanted` cards from groups of the given sizes.
using Found = std::function<void(const std::vector<int>& taken, double ways)>;
void forEachSplit(const std::vector<int>& sizes, int wanted, std::vector<int>& taken, double ways,
                  const Found& found)
{
    if (taken.size() == sizes.size()) {
        if (wanted == 0) {
            found(taken, ways);
        }
        return;
    }
    const int size = sizes[taken.size()];
    for (int count = 0; count <= size && count <= wanted; ++count) {
        taken.push_back(count);
        forEachSplit(sizes, wanted - count, taken,
                     ways * static_cast<double>(binomial(size, count)), found);
        taken.pop_back();
    }
}

using Probabilities = std::vector<double>;

// How likely each number of suitLengths is, with `wanted` of the `free` cards beside the `fixed`.
Probabilities suitLengthsExpected(CardsConfiguration fixed, CardsConfiguration free, int wanted)
{
    Probabilities expected(0x10000);
    std::vector<int> taken;
    const auto all = static_cast<double>(binomial(free.count(), wanted));
    forEachSplit(
        {free.countInSuit(0), free.countInSuit(1), free.countInSuit(2), free.countInSuit(3)},
        wanted, taken, 1.0, [&](const std::vector<int>& lengths, double ways) {
            unsigned key = 0;
            for (const int length : lengths) {
                key = 16 * key + static_cast<unsigned>(length);
            }
            expected.at(key + suitLengths(fixed)) += ways / all;
        });
    return expected;
}

Probabilities pointsExpected(CardsConfiguration fixed, CardsConfiguration free, int wanted)
{
    Probabilities expected(41);
    std::vector<int> sizes;
    int others = free.count();
    for (int honour = 0; honour < 4; ++honour) {
        sizes.push_back(CardsConfiguration(free & (acesMask >> honour)).count());
        others -= sizes.back();
    }
    sizes.push_back(others);
    std::vector<int> taken;
    const auto all = static_cast<double>(binomial(free.count(), wanted));
    forEachSplit(sizes, wanted, taken, 1.0, [&](const std::vector<int>& honours, double ways) {
        const int points = 4 * honours[0] + 3 * honours[1] + 2 * honours[2] + honours[3];
        expected.at(static_cast<unsigned>(points + highCardPoints(fixed))) += ways / all;
    });
    return expected;
}

// The chance that a fair dealer strays at least as far from `expected` as `counts` do.
//
// Values that should occur less than 25 times are taken together.
double chanceOf(const std::vector<int>& counts, const Probabilities& expected, double& chiSquare)
{
    constexpr double rare = 25;
    double rareExpected = 0;
    double rareCount = 0;
    int cells = 0;
    chiSquare = 0;
    const auto addCell = [&](double count, double mean) {
        chiSquare += (count - mean) * (count - mean) / mean;
        ++cells;
    };
    for (std::size_t value = 0; value < expected.size(); ++value) {
        const double mean = expected[value] * dealsDrawn;
        if (mean >= rare) {
            addCell(counts[value], mean);
        } else {
            rareExpected += mean;
            rareCount += counts[value];
        }
    }
    if (rareExpected > 0) {
        addCell(rareCount, rareExpected);
    } else if (rareCount > 0) {
        return 0;  // what can not happen has happened
    }
    const boost::math::chi_squared distribution(cells - 1);
    return boost::math::cdf(boost::math::complement(distribution, chiSquare));
}

// The cards of one hand or of two, and how often each of their values was seen.
struct Holding {
    std::vector<PlayerNumber> players;
    std::vector<int> lengthsSeen = std::vector<int>(0x10000);
    std::vector<int> pointsSeen = std::vector<int>(41);

    CardsConfiguration cards(const Hands& hands) const
    {
        CardsConfiguration held;
        for (const PlayerNumber player : players) {
            held |= hands[player];
        }
        return held;
    }
    std::string name() const
    {
        std::string letters;
        for (const PlayerNumber player : players) {
            letters += playerToChar(player);
        }
        return letters;
    }
};

// `engineOf(deal)` answers the engine that deals it.
template <class EngineOf>
void expectUniformDeals(const Hands& fixed, const EngineOf& engineOf)
{
    std::vector<Holding> holdings{{{North}},       {{East}},         {{South}},      {{West}},
                                  {{North, East}}, {{North, South}}, {{North, West}}};
    const RandomSource::Configuration configuration(fixed);
    for (int deal = 0; deal < dealsDrawn; ++deal) {
        Hands hands;
        auto&& engine = engineOf(deal);
        configuration.deal(hands, engine);
        for (Holding& holding : holdings) {
            const CardsConfiguration cards = holding.cards(hands);
            ++holding.lengthsSeen[suitLengths(cards)];
            ++holding.pointsSeen[static_cast<unsigned>(highCardPoints(cards))];
        }
    }
    for (const Holding& holding : holdings) {
        const CardsConfiguration held = holding.cards(fixed);
        const CardsConfiguration free = configuration.freeCards();
        const int wanted = cardsOfHand * static_cast<int>(holding.players.size()) - held.count();
        double chiSquare = 0;
        EXPECT_GT(chanceOf(holding.lengthsSeen, suitLengthsExpected(held, free, wanted), chiSquare),
                  significance)
            << "suit lengths of " << holding.name() << ": chi-square " << chiSquare;
        EXPECT_GT(chanceOf(holding.pointsSeen, pointsExpected(held, free, wanted), chiSquare),
                  significance)
            << "points of " << holding.name() << ": chi-square " << chiSquare;
    }
}

TEST(UniformDeals, LengthsAndPointsOfTheWholeDeck)
{
    std::mt19937_64 engine(20);
    expectUniformDeals(Hands(), [&](int) -> std::mt19937_64& { return engine; });
}

TEST(UniformDeals, LengthsAndPointsAroundFixedCards)
{
    std::mt19937_64 engine(21);
    expectUniformDeals(Hands(readWholeHand("AKQ..."), {}, readWholeHand(".J2.."), {}),
                       [&](int) -> std::mt19937_64& { return engine; });
}

TEST(UniformDeals, LengthsAndPointsWithAnEngineForEachDeal)
{
    expectUniformDeals(Hands(),
                       [](int deal) { return SeededEngine(22, static_cast<std::uint64_t>(deal)); });
}

}  // namespace
}  // namespace trikon
