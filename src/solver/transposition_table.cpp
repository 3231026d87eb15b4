// Matching, adding and widening of the bounds kept for one set of suit lengths.
#include "solver/transposition_table.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <utility>

namespace trikon {

std::int8_t TranspositionTable::Node::check(CardsConfiguration pattern,
                                            [[maybe_unused]] const Situation& situation,
                                            std::int8_t target, std::uint64_t& relevant)
{
    assert(0 < target && target <= situation.cardsCount / 4);
    Entry* behind = nullptr;
    std::int8_t answer = -1;
    anyOf([&](Entry& entry) {
        const CardsConfiguration cover = coverOf(entry.pattern());
        if ((pattern & cover) == entry.pattern()) {
            const std::int8_t lower = entry.lower();
            const std::int8_t upper = entry.upper();
            if (lower >= target || upper < target) {
                relevant |= cover;
                answer = lower >= target ? lower : upper;
                if (behind != nullptr) {
                    std::swap(entry, *behind);
                }
                return true;
            }
        }
        behind = &entry;
        return false;
    });
    return answer;
}

template <class Function>
inline bool TranspositionTable::Node::anyOf(Function isSought)
{
    for (std::size_t place = hotCount; place-- > 0;) {
        if (isSought(hot[place])) {
            return true;
        }
    }
    for (std::size_t place = cold.size(); place-- > 0;) {
        if (isSought(cold[place])) {
            return true;
        }
    }
    return false;
}

void TranspositionTable::Node::add(Entry entry)
{
    if (hotCount == mostHot) {
        cold.push_back(hot[0]);
        std::copy(hot.begin() + 1, hot.end(), hot.begin());
        --hotCount;
    }
    hot[hotCount++] = entry;
}

std::vector<TranspositionTable::Entry> TranspositionTable::Node::entries() const
{
    std::vector<Entry> all = cold;
    all.insert(all.end(), hot.begin(), hot.begin() + hotCount);
    return all;
}

void TranspositionTable::Node::update_lower_bound(CardsConfiguration& pattern,
                                                  const Situation& situation,
                                                  std::uint64_t relevant, std::int8_t bound)
{
    pattern &= relevant;
    update(pattern, relevant, bound, static_cast<std::int8_t>(situation.cardsCount / 4));
}

void TranspositionTable::Node::update_upper_bound(CardsConfiguration& pattern,
                                                  std::uint64_t relevant, std::int8_t bound)
{
    pattern &= relevant;
    update(pattern, relevant, 0, bound);
}

void TranspositionTable::Node::update(CardsConfiguration pattern, std::uint64_t relevant,
                                      std::int8_t lower, std::int8_t upper)
{
    const bool isKept = anyOf([&](Entry& entry) {
        if ((entry.pattern() & relevant) != pattern) {
            return false;
        }
        // An entry that stands on more cards can stand on these alone if it says no more, unless
        // its other bound needs them.
        const bool saysNoMore = entry.lower() <= lower && upper <= entry.upper();
        const bool standsOnThese = saysNoMore || entry.pattern() == pattern;
        entry = {standsOnThese ? pattern : entry.pattern(), std::max(entry.lower(), lower),
                 std::min(entry.upper(), upper)};
        return standsOnThese;
    });
    if (!isKept) {
        add({pattern, lower, upper});
    }
}

TranspositionTable::Node& TranspositionTable::findOrMake(PlayerNumber leader,
                                                         TrickCountConfiguration counts)
{
    Node& node = maps[static_cast<unsigned>(leader)][counts];
    if (nodesCount() > places.size() / 2) {
        emptyPlaces(placeBits + 2);
    }
    places[placeOf(leader, counts)] = {counts, &node};
    return node;
}

void TranspositionTable::emptyPlaces(int newPlaceBits)
{
    placeBits = newPlaceBits;
    places.assign(std::size_t{playersCount} << placeBits, {});
}

void TranspositionTable::clear()
{
    emptyPlaces(fewestPlaceBits);
    for (auto& map : maps) {
        map.clear();
    }
}

void TranspositionTable::clear_most(std::int8_t cards)
{
    emptyPlaces(placeBits);
    for (auto& map : maps) {
        for (auto place = map.begin(); place != map.end();) {
            place = place->first.sum() <= cards ? map.erase(place) : std::next(place);
        }
    }
}

std::size_t TranspositionTable::nodesCount() const
{
    std::size_t count = 0;
    for (const auto& map : maps) {
        count += map.size();
    }
    return count;
}

std::size_t TranspositionTable::entriesCount() const
{
    std::size_t count = 0;
    for (const auto& map : maps) {
        for (const auto& [counts, node] : map) {
            count += node.entriesCount();
        }
    }
    return count;
}

}  // namespace trikon
