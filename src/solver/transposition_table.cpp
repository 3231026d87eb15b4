// Matching, adding and widening of the bounds kept for one set of suit lengths.
#include "solver/transposition_table.h"

#include <algorithm>
#include <bit>
#include <cassert>
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
    for (std::uint32_t place = hotCount; place-- > 0;) {
        if (isSought(hot[place])) {
            return true;
        }
    }
    for (std::uint32_t place = coldCount; place-- > 0;) {
        if (isSought(cold[place])) {
            return true;
        }
    }
    return false;
}

void TranspositionTable::Node::add(Entry entry)
{
    if (hotCount == mostHot) {
        addCold(hot[0]);
        std::copy(hot.begin() + 1, hot.end(), hot.begin());
        --hotCount;
    }
    hot[hotCount++] = entry;
}

void TranspositionTable::Node::addCold(Entry entry)
{
    // With the allocator's own word, one less than a power of two fills a block of memory.
    if (std::has_single_bit(coldCount + 1U)) {
        auto larger = std::make_unique_for_overwrite<Entry[]>(2U * coldCount + 1U);
        std::copy_n(cold.get(), coldCount, larger.get());
        cold = std::move(larger);
    }
    cold[coldCount++] = entry;
}

std::vector<TranspositionTable::Entry> TranspositionTable::Node::entries() const
{
    std::vector<Entry> all(cold.get(), cold.get() + coldCount);
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
    if (places.mayHaveLost(leader, counts)) {
        const auto& lost = maps[static_cast<unsigned>(leader)];
        const auto entry = lost.find(counts);
        if (entry != lost.end()) {
            put(entry->second);
            return at(entry->second);
        }
    }
    return make(leader, counts);
}

TranspositionTable::Node& TranspositionTable::make(PlayerNumber leader,
                                                   TrickCountConfiguration counts)
{
    if (made >> chunkBits == chunks.size()) {  // first of all, as memory may run out
        chunks.push_back(std::make_unique<Node[]>(nodesOfChunk));
    }
    Node& node = at(made);
    node.counts = counts;
    node.leader = static_cast<unsigned>(leader) & 3;
    if (places.areFewFor(made)) {
        places.enlarge();
        putAll();
    }
    put(made++);
    return node;
}

void TranspositionTable::putAll()
{
    for (std::uint32_t number = 0; number < made; ++number) {
        put(number);
    }
}

void TranspositionTable::put(std::uint32_t number)
{
    const Node& node = at(number);
    const std::uint32_t lost =
        places.put(static_cast<PlayerNumber>(node.leader), node.counts, number);
    if (lost != NodePlaces::unknown) {
        maps[node.leader].try_emplace(at(lost).counts, lost);
    }
}

void TranspositionTable::forgetFrom(std::uint32_t number)
{
    constexpr std::size_t chunksToKeep = 16;  // a megabyte
    const std::uint32_t before = std::exchange(made, number);
    chunks.resize(
        std::min(chunks.size(), std::max(chunksToKeep, (made >> chunkBits) + std::size_t{1})));
    const std::size_t last = std::min<std::size_t>(before, chunks.size() << chunkBits);
    for (std::uint32_t forgotten = number; forgotten < last; ++forgotten) {
        at(forgotten) = {};
    }
    places.clear();
    for (auto& numbers : maps) {
        numbers.clear();
    }
}

void TranspositionTable::clear() { forgetFrom(0); }

void TranspositionTable::clear_most(std::int8_t cards)
{
    std::uint32_t kept = 0;
    for (std::uint32_t number = 0; number < made; ++number) {
        if (at(number).counts.sum() > cards) {
            at(kept++) = std::move(at(number));
        }
    }
    forgetFrom(kept);
    putAll();
}

std::size_t TranspositionTable::entriesCount() const
{
    std::size_t count = 0;
    for (std::uint32_t number = 0; number < made; ++number) {
        count += at(number).entriesCount();
    }
    return count;
}

}  // namespace trikon
