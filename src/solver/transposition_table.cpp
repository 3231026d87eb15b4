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
    for (std::size_t place = bounds.size(); place-- > 0;) {
        const Entry& entry = bounds[place];
        if ((pattern & entry.cover) != entry.pattern ||
            (entry.lower < target && target <= entry.upper)) {
            continue;
        }
        const std::int8_t answer = entry.lower >= target ? entry.lower : entry.upper;
        relevant |= entry.cover;
        if (place + 1 < bounds.size()) {
            std::swap(bounds[place], bounds[place + 1]);
        }
        return answer;
    }
    return -1;
}

void TranspositionTable::Node::update_lower_bound(CardsConfiguration& pattern,
                                                  const Situation& situation,
                                                  std::uint64_t relevant, std::int8_t bound)
{
    pattern &= relevant;
    const auto tricksLeft = static_cast<std::int8_t>(situation.cardsCount / 4);
    for (std::size_t place = bounds.size(); place-- > 0;) {
        Entry& entry = bounds[place];
        if ((entry.pattern & relevant) != pattern) {
            continue;
        }
        if (entry.pattern == pattern) {
            entry.lower = std::max(entry.lower, bound);
            return;
        }
        // The entry stands on more cards. If it says no more, it can stand on these alone, unless
        // its other bound needs them.
        if (entry.lower <= bound) {
            entry.lower = bound;
            if (entry.upper == tricksLeft) {
                entry.widenTo(pattern);
                return;
            }
        }
    }
    bounds.emplace_back(pattern, bound, tricksLeft);
}

void TranspositionTable::Node::update_upper_bound(CardsConfiguration& pattern,
                                                  std::uint64_t relevant, std::int8_t bound)
{
    pattern &= relevant;
    for (std::size_t place = bounds.size(); place-- > 0;) {
        Entry& entry = bounds[place];
        if ((entry.pattern & relevant) != pattern) {
            continue;
        }
        if (entry.pattern == pattern) {
            entry.upper = std::min(entry.upper, bound);
            return;
        }
        if (entry.upper >= bound) {
            entry.upper = bound;
            if (entry.lower == 0) {
                entry.widenTo(pattern);
                return;
            }
        }
    }
    bounds.emplace_back(pattern, std::int8_t{0}, bound);
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
            count += node.entries().size();
        }
    }
    return count;
}

}  // namespace trikon
