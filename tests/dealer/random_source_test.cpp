#include "dealer/random_source.h"

#include "dealer/plain_subset.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>

namespace trikon {
namespace {

std::string nextDeal(RandomSource& source)
{
    Hands hands;
    source.deal(hands[North], hands[East], hands[South], hands[West]);
    return hands.toPBNString(North, fullDeck);
}

// The deals of a seed are a promise to everybody who has noted one down.
TEST(RandomSource, TheDealsOfASeedNeverChange)
{
    const RandomSource::Configuration nothingFixed{Hands()};
    RandomSource one(nothingFixed, 1);
    EXPECT_EQ(nextDeal(one),
              "N:J53.AJT763.73.J8 T2.K952.KJ85.KT6 AQ98.4.9642.Q543 K764.Q8.AQT.A972");
    EXPECT_EQ(nextDeal(one),
              "N:KT763.A542.KT4.K J542.9.AJ3.J9874 A.KQJT86.65.Q532 Q98.73.Q9872.AT6");
    RandomSource fortyTwo(nothingFixed, 42);
    EXPECT_EQ(nextDeal(fortyTwo),
              "N:AQ4.Q842.QT652.2 3.A93.K9.KQT9754 JT752.KT.73.AJ83 K986.J765.AJ84.6");

    const RandomSource::Configuration northHasSpades{
        Hands(fullDeck & ~(fullDeck >> 16), {}, {}, {})};
    RandomSource seven(northHasSpades, 7);
    EXPECT_EQ(nextDeal(seven),
              "N:AKQJT98765432... .AQT985.52.KJ532 .J7643.AQ8643.Q7 .K2.KJT97.AT9864");
    EXPECT_EQ(seven.engine()(), 16452894106784333046U);
}

// One card at a time, hand after hand.
Hands plainDeal(const Hands& fixed, std::mt19937_64& engine)
{
    Hands hands = fixed;
    CardsConfiguration free = fullDeck & ~fixed.allCards();
    for (const PlayerNumber player : {North, East, South}) {
        const int need = cardsOfHand - fixed[player].count();
        const std::uint64_t wordsOfRank = ListedWords::max() / binomial(free.count(), need);
        const CardsConfiguration drawn = plainSubset(free, engine() / wordsOfRank, need);
        hands[player] |= drawn;
        free ^= drawn;
    }
    hands[West] |= free;
    return hands;
}

TEST(RandomSource, AroundAnyFixedCardsTheDealsAreThoseOfThePlainWalk)
{
    std::mt19937_64 fixing(11);
    RandomSource::Configuration configuration{Hands()};
    for (int round = 0; round < 3000; ++round) {
        Hands fixed = plainDeal(Hands(), fixing);
        for (int player = 0; player < playersCount; ++player) {
            const std::uint64_t some = fixing();
            const std::uint64_t kept[] = {0, some & fixing(), some, fullDeck};
            fixed[player] &= kept[fixing() % 4];
        }
        configuration.setInitial(fixed);
        std::mt19937_64 engine(static_cast<unsigned>(round));
        std::mt19937_64 sameEngine = engine;
        for (int deal = 0; deal < 3; ++deal) {
            Hands dealt;
            configuration.deal(dealt, engine);
            ASSERT_EQ(dealt, plainDeal(fixed, sameEngine)) << fixed.toPBNString(North, fullDeck);
        }
        ASSERT_EQ(engine, sameEngine) << "three words a deal, whatever is fixed";
    }
}

TEST(UnitDraw, IsTheWordAsAFractionAndNeverOne)
{
    ListedWords engine({0, std::uint64_t{1} << 63, 0xfffffffffffffbff, ListedWords::max(),
                        0xfffffffffffffc00, std::uint64_t{1} << 62});
    EXPECT_EQ(unitDraw(engine), 0.0);
    EXPECT_EQ(unitDraw(engine), 0.5);
    EXPECT_EQ(unitDraw(engine), 1 - 0x1p-53);
    EXPECT_EQ(unitDraw(engine), 0.25);  // the two words before it round up to 1
    EXPECT_EQ(engine.wordsDrawn(), 6U);
}

}  // namespace
}  // namespace trikon
