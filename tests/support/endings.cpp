#include "support/endings.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace trikon {

namespace {

constexpr CardsConfiguration wholeSuit(int suitNumber)
{
    return OneCardInSuit{static_cast<std::uint8_t>(suitNumber), fullSuit};
}

std::vector<OneCardInSuit> cardsOf(CardsConfiguration set)
{
    std::vector<OneCardInSuit> cards;
    for (std::uint8_t suit = 0; suit < suitsCount; ++suit) {
        for (unsigned rank = 0; rank < ranksOfSuit; ++rank) {
            const OneCardInSuit card{suit, static_cast<std::uint16_t>(1u << rank)};
            if (set.has(card)) {
                cards.push_back(card);
            }
        }
    }
    return cards;
}

CardsConfiguration pack(EndingKind kind, int length, int suitNumber)
{
    const CardsConfiguration suit = wholeSuit(suitNumber);
    switch (kind) {
    case EndingKind::twoSuits: return suit | wholeSuit((suitNumber + 1) & 3);
    case EndingKind::threeSuits: return fullDeck & ~suit;
    case EndingKind::topRanks: {
        const std::uint64_t ranks = fullSuit & (fullSuit << (ranksOfSuit - length));
        return ranks | ranks << 16 | ranks << 32 | ranks << 48;
    }
    default: return fullDeck;
    }
}

}  // namespace

Hands randomEnding(std::mt19937_64& random, int length, EndingKind kind)
{
    const int suitNumber = static_cast<int>(random() & 3);
    const int first = static_cast<int>(random() & 3);
    std::vector<OneCardInSuit> cards = cardsOf(pack(kind, length, suitNumber));
    std::shuffle(cards.begin(), cards.end(), random);
    if (kind == EndingKind::oneSuitHand) {
        // All but one of the first hand's cards; the hand is dealt from the front.
        std::stable_partition(cards.begin(), cards.end(),
                              [&](OneCardInSuit card) { return card.suit == suitNumber; });
        std::shuffle(cards.begin() + length - 1, cards.end(), random);
    }
    Hands hands;
    auto next = cards.begin();
    for (int place = 0; place < playersCount; ++place) {
        for (int count = 0; count < length; ++count) {
            hands[(first + place) & 3].add(*next++);
        }
    }
    return hands;
}

Hands shuffledOutside(std::mt19937_64& random, const Hands& hands, CardsConfiguration relevant)
{
    Hands shuffled;
    for (int player = 0; player < playersCount; ++player) {
        shuffled[player] = hands[player] & relevant;
    }
    for (int suitNumber = 0; suitNumber < suitsCount; ++suitNumber) {
        const CardsConfiguration outside = wholeSuit(suitNumber) & ~relevant;
        std::vector<OneCardInSuit> cards = cardsOf(hands.allCards() & outside);
        std::shuffle(cards.begin(), cards.end(), random);
        auto next = cards.begin();
        for (int player = 0; player < playersCount; ++player) {
            const int count = CardsConfiguration(hands[player] & outside).count();
            for (int place = 0; place < count; ++place) {
                shuffled[player].add(*next++);
            }
        }
    }
    return shuffled;
}

bool agree(const Hands& hands, const Hands& others, CardsConfiguration relevant)
{
    const auto holderOf = [](const Hands& of, OneCardInSuit card) {
        int player = 0;
        while (!of[player].has(card)) {
            ++player;
        }
        return player;
    };
    for (int suitNumber = 0; suitNumber < suitsCount; ++suitNumber) {
        std::vector<OneCardInSuit> cards = cardsOf(hands.allCards() & wholeSuit(suitNumber));
        std::vector<OneCardInSuit> same = cardsOf(others.allCards() & wholeSuit(suitNumber));
        for (; !cards.empty() && relevant.has(cards.back()); cards.pop_back(), same.pop_back()) {
            if (same.empty() || holderOf(hands, cards.back()) != holderOf(others, same.back())) {
                return false;
            }
        }
    }
    return true;
}

Hands handsOf(const std::string& text)
{
    std::istringstream words(text);
    Hands hands;
    for (int player = 0; player < playersCount; ++player) {
        std::string word;
        words >> word;
        hands[player] = readWholeHand(word);
    }
    return hands;
}

std::string describe(const Hands& hands, Trump trump, PlayerNumber player)
{
    return str_contat(hands.toPBNString(North, fullDeck), ", trump ", "CDHSN"[trump], ", ",
                      playerToChar(player), " to play");
}

int effort(int count)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(NDEBUG)
    constexpr int ordinary = 5;
#else
    constexpr int ordinary = 100;
#endif
    const char* const wanted = std::getenv("TAMREL_TEST_EFFORT");
    const long long percent = wanted != nullptr ? std::atoi(wanted) : ordinary;
    return static_cast<int>(std::max(1LL, count * percent / 100));
}

std::vector<SolvedDeal> solvedDeals(const std::string& fileName)
{
    std::ifstream file(TAMREL_TEST_DATA + fileName);
    std::vector<SolvedDeal> deals;
    for (std::string line; std::getline(file, line);) {
        SolvedDeal deal{handsOf(line.substr(2)), {}};
        std::istringstream words(line);
        std::string word;
        for (int player = 0; player < playersCount; ++player) {
            words >> word;
        }
        for (int tricks = 0; words >> tricks;) {
            deal.tricks.push_back(tricks);
        }
        deals.push_back(deal);
    }
    if (deals.empty()) {
        throw std::runtime_error("no deals in " + fileName);
    }
    return deals;
}

}  // namespace trikon
