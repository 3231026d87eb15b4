// A solver that is walked through a play by hand, for questions in the middle of tricks.
#pragma once

#include "solver/card_on_table.h"
#include "solver/dd_solver.h"

#include <array>
#include <memory>
#include <random>
#include <vector>

namespace trikon {

class PlayingSolver : public DDSolver {
public:
    using DDSolver::Turns;
    using DDSolver::turns;

    void start(const Hands& hands, Trump trumpToSet, PlayerNumber leader)
    {
        history.clear();
        setHands(hands);
        set_trump_suit(trumpToSet);
        player = leader;
        trick = Trick();
        onTable.clear();
    }

    void play(OneCardInSuit card)
    {
        history.push_back(
            {player, trick, onTable, std::make_unique<CardOnTable>(situation, player, card)});
        if (onTable.empty()) {
            trick = Trick(card.suit, card.card);
        } else {
            trick.add(trump, card.suit, card.card);
        }
        onTable.push_back(card);
        player = nextPlayer(player);
        if (onTable.size() == playersCount) {
            player = deal->holderOf(trick.winningSuit, trick.winningCard);
            trick = Trick();
            onTable.clear();
        }
    }
    void takeBack()
    {
        player = history.back().player;
        trick = history.back().trick;
        onTable = history.back().onTable;
        history.pop_back();
    }

    bool canTakeBack() const { return !history.empty(); }

    std::vector<OneCardInSuit> legalCards() const
    {
        CardsConfiguration cards = situation.cards & (*deal)[player];
        if (!onTable.empty() && cards.suit(trick.ledSuit) != 0) {
            cards = onlySuit(trick.ledSuit, cards.suit(trick.ledSuit));
        }
        std::vector<OneCardInSuit> legal;
        for (std::uint8_t suit = 0; suit < suitsCount; ++suit) {
            for (unsigned left = cards.suit(suit); left != 0; left &= left - 1) {
                legal.push_back({suit, lowestCard(static_cast<std::uint16_t>(left))});
            }
        }
        return legal;
    }
    void playRandomCard(std::mt19937_64& random)
    {
        const std::vector<OneCardInSuit> legal = legalCards();
        play(legal[random() % legal.size()]);
    }

    /// What the four players still hold.
    Hands handsLeft() const
    {
        Hands hands;
        for (int number = 0; number < playersCount; ++number) {
            hands[number] = situation.cards & (*deal)[number];
        }
        return hands;
    }
    int tricksLeft() const { return (situation.cardsCount + 3) / 4; }

    PlayerNumber player = North;
    Trick trick;
    std::vector<OneCardInSuit> onTable;

private:
    struct Step {
        PlayerNumber player;
        Trick trick;
        std::vector<OneCardInSuit> onTable;
        std::unique_ptr<CardOnTable> card;
    };
    std::vector<Step> history;
};

}  // namespace trikon
