// Equivalent cards as one move, and the fixed orders.
#include "solver/move_generation.h"

#include "support/endings.h"
#include "support/literals.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

namespace trikon {

namespace {

// "C32" for a group: its suit and its cards from the highest down. The lowest one is to be played.
std::string text(const MoveFast* begin, const MoveFast* end)
{
    std::string result;
    for (const MoveFast* move = begin; move != end; ++move) {
        EXPECT_EQ(move->card, lowestCard(move->equivalents));
        CardsConfiguration group;
        group.setSuit(move->suit, move->equivalents);
        result = str_contat(result, result.empty() ? "" : " ", group.str_prefixed());
    }
    return result;
}

std::string groups(const char* cards, const char* separators)
{
    std::array<MoveFast, cardsOfHand> moves;
    MoveFast* end = moves.data();
    std::uint16_t suit = hand(cards).suit(Spades);
    generateMovesInOneSuit(Spades, end, suit, hand(separators).suit(Spades));
    EXPECT_EQ(suit, 0);
    return text(moves.data(), end);
}

template <int position>
std::string following(const char* handsText, Trump trump, PlayerNumber player, const Trick& trick)
{
    const auto deal = std::make_unique<Deal>();
    deal->setHands(handsOf(handsText));
    // The cards on the table have left play.
    CardsConfiguration inPlay = deal->allCards();
    inPlay.remove({trick.winningSuit, trick.winningCard});
    const Situation situation(inPlay, *deal);
    std::array<MoveFast, cardsOfHand> moves;
    const MoveFast* end = trump == NoTrump ? InTrickMovesGenNonVoid<position, NoTrump>::g(
                                                 moves.data(), situation, *deal, player, trick)
                                           : InTrickMovesGenNonVoid<position, Hearts>::g(
                                                 moves.data(), situation, *deal, player, trick);
    return text(moves.data(), end);
}

std::uint16_t card(const char* rank) { return hand(rank).suit(Spades); }

}  // namespace

TEST(MoveGeneration, CardsWithNothingBetweenThemAreOneMove)
{
    EXPECT_EQ(groups("AKQ...", "..."), "SAKQ");
    EXPECT_EQ(groups("KJ...", "Q..."), "SJ SK");
    EXPECT_EQ(groups("KJ...", "A..."), "SKJ");  // the queen has gone
    EXPECT_EQ(groups("AQ98642...", "K7..."), "S642 SQ98 SA");
    EXPECT_EQ(groups("...", "AK..."), "");
}

TEST(MoveGeneration, AVoidPlayerTriesTheLowestOfEachSuitFirst)
{
    std::array<MoveFast, cardsOfHand> moves;
    MoveFast* end = moves.data();
    CardsConfiguration cards = hand("AQ.432.K5.");
    const CardsConfiguration separators = hand("K.AT.98.");
    generateVoid(end, cards, separators, Diamonds, Spades, Hearts);
    EXPECT_EQ(text(moves.data(), end), "D5 SQ H432 DK SA");
    EXPECT_TRUE(cards.empty());

    end = moves.data();
    generateVoid(end, cards, separators, Diamonds, Spades, Hearts);
    EXPECT_EQ(end, moves.data());

    end = moves.data();
    cards = hand("AQ.432.K5.J");
    generateVoidOptimal(end, cards, separators, Diamonds, Spades, Hearts, 1, 7, 3);
    EXPECT_EQ(text(moves.data(), end), "SQ H432 D5 SA DK");
    EXPECT_EQ(cards, hand("...J"));  // not one of the three suits

    end = moves.data();
    cards = hand("A.4.K.");
    generateVoidOptimal(end, cards, separators, Diamonds, Spades, Hearts, 2, 2, 2);
    EXPECT_EQ(text(moves.data(), end), "DK SA H4");
}

TEST(MoveGeneration, TheFourthHandFollowsAsCheaplyAsItWins)
{
    const Trick jack(Spades, card("J..."));
    struct Case {
        const char* hands;  // South plays last
        const char* moves;
    };
    const Case cases[] = {
        {"J... 9... AQ32... 8...", "S32 SAQ"},
        {"J4... 9... QT2... 8...",
         "S2 ST SQ"},  // the partner's jack keeps the queen and the ten apart
        {"9... J... AQ32... 8...", "SAQ S32"},
        {"9... J... AQT2... K...", "SQ S2 ST SA"},
        {"9... J... T72... 8...", "S72 ST"},
    };
    for (const Case& example : cases) {
        EXPECT_EQ(following<3>(example.hands, NoTrump, South, jack), example.moves)
            << example.hands;
    }
    Trick ruffed(Spades, card("J..."));
    ruffed.add(Hearts, Hearts, card("2..."));
    EXPECT_EQ(following<3>("9... T... AQ32... 8...", Hearts, South, ruffed), "S32 SAQ");
}

TEST(MoveGeneration, TheHandsBetweenLookAtWhatMayStillBeatThem)
{
    const Trick jack(Spades, card("J..."));
    EXPECT_EQ(following<1>("9... J... AQ82... K...", NoTrump, South, jack), "SA S82 SQ");
    EXPECT_EQ(following<2>("9... J... AQT2... K...", NoTrump, South, jack), "SA S2 ST SQ");
    EXPECT_EQ(following<1>("K... J... AQ82... 9...", NoTrump, South, jack), "S82 SQ SA");
    EXPECT_EQ(following<2>("J... 9... AQT2... 8...", NoTrump, South, jack), "S2 ST SAQ");
}

}  // namespace trikon
