#include "support/reference_solver.h"

#include <array>
#include <cstddef>

namespace trikon {

namespace {

class Play {
public:
    Play(const Hands& hands, Trump trump, std::span<const OneCardInSuit> played)
        : hands(hands), trump(trump)
    {
        for (const OneCardInSuit card : played) {
            trick[onTable++] = card;
        }
    }

    // Whether the side of North and South, or that of East and West, takes `needed` more tricks.
    bool canTake(int side, int needed, PlayerNumber player)
    {
        if (needed <= 0) {
            return true;
        }
        if (needed > hands[player].count()) {  // he has yet to play to each trick left
            return false;
        }
        const bool ownMove = (player & 1) == side;
        for (std::uint8_t suit = 0; suit < suitsCount; ++suit) {
            for (int rank = 0; rank < ranksOfSuit; ++rank) {
                const OneCardInSuit card{suit, static_cast<std::uint16_t>(1 << rank)};
                if (isLegal(card, player) && canTakeAfter(card, side, needed, player) == ownMove) {
                    return ownMove;
                }
            }
        }
        return !ownMove;
    }

private:
    bool isLegal(OneCardInSuit card, PlayerNumber player) const
    {
        return hands[player].has(card) && (onTable == 0 || card.suit == trick[0].suit ||
                                           hands[player].suit(trick[0].suit) == 0);
    }

    bool canTakeAfter(OneCardInSuit card, int side, int needed, PlayerNumber player)
    {
        const std::array<OneCardInSuit, playersCount> trickBefore = trick;
        const std::size_t onTableBefore = onTable;
        hands[player].remove(card);
        trick[onTable++] = card;
        PlayerNumber next = nextPlayer(player);
        if (onTable == playersCount) {
            next = winner(next);  // the one after the last has led
            needed -= (next & 1) == side ? 1 : 0;
            onTable = 0;
        }
        const bool result = canTake(side, needed, next);
        hands[player].add(card);
        trick = trickBefore;
        onTable = onTableBefore;
        return result;
    }

    PlayerNumber winner(PlayerNumber leader) const
    {
        std::size_t best = 0;
        for (std::size_t place = 1; place < playersCount; ++place) {
            const bool higher =
                trick[place].suit == trick[best].suit && trick[place].card > trick[best].card;
            const bool ruffs = trick[place].suit == trump && trick[best].suit != trump;
            best = higher || ruffs ? place : best;
        }
        return static_cast<PlayerNumber>((static_cast<std::size_t>(leader) + best) & 3);
    }

    Hands hands;
    Trump trump;
    std::array<OneCardInSuit, playersCount> trick{};
    std::size_t onTable = 0;
};

}  // namespace

bool referenceCanTake(const Hands& hands, Trump trump, PlayerNumber player, int target,
                      std::span<const OneCardInSuit> played)
{
    return Play(hands, trump, played).canTake(player & 1, target, player);
}

int referenceTricks(const Hands& hands, Trump trump, PlayerNumber player,
                    std::span<const OneCardInSuit> played)
{
    int tricks = 0;
    while (referenceCanTake(hands, trump, player, tricks + 1, played)) {
        ++tricks;
    }
    return tricks;
}

}  // namespace trikon
