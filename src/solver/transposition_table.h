// What earlier searches have proved, for positions at the start of a trick.
//
// Results are kept under the hand on lead and the sixteen numbers of cards that the hands hold in
// the suits. Under one such key lie bounds, each with the pattern of the top cards on which it
// depends: it holds wherever the same hands hold these cards in the same order, whatever lies
// below. What a bound says nothing about: the cards below its pattern, and other deals or trumps -
// the table must be cleared when either changes.
//
// Patterns are written in the names that `Deal::suitChain` gives, so that positions with the same
// hands in the same order are the same word.
#pragma once

#include "cards/situation.h"
#include "solver/node_places.h"
#include "solver/suit_masks.h"

#include <boost/unordered_map.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace trikon {

inline std::size_t hash_value(TrickCountConfiguration counts)
{
    return boost::hash<std::uint64_t>()(counts);
}

class TranspositionTable {
public:
    /// Bounds on the tricks of the side on lead, wherever the top cards are those of `pattern`.
    ///
    /// All in one word, for tables outgrow the caches: a pattern leaves three bits a suit unused.
    class Entry {
    public:
        Entry() = default;
        Entry(CardsConfiguration pattern, int lower, int upper)
            : word(pattern | spread(lower) << lowerAt | spread(upper) << upperAt)
        {
        }

        CardsConfiguration pattern() const { return word & fullDeck; }
        std::int8_t lower() const { return gather(word >> lowerAt); }
        std::int8_t upper() const { return gather(word >> upperAt); }

    private:
        static constexpr int lowerAt = 13;  // and 16 bits further
        static constexpr int upperAt = 45;

        // Two bits above one suit and two above the next.
        static std::uint64_t spread(int bound)
        {
            const auto bits = static_cast<std::uint64_t>(bound);
            return (bits & 3) | (bits & 12) << 14;
        }
        static std::int8_t gather(std::uint64_t bits)
        {
            return static_cast<std::int8_t>((bits & 3) | (bits >> 14 & 12));
        }

        std::uint64_t word = 0;
    };

    class Node;

    /// The node of a position with `leader` on lead, made when there is none.
    ///
    /// The reference stays good while further nodes are made.
    Node& node(PlayerNumber leader, TrickCountConfiguration counts);

    /// Has the memory fetched in which a node will be looked up, whoever leads.
    void prefetchPlaces(TrickCountConfiguration counts) const { places.prefetch(counts); }
    /// Has the memory of a node fetched that will be asked for soon, and answers where it may be.
    std::uint32_t prefetch(PlayerNumber leader, TrickCountConfiguration counts) const;
    /// `node` after `prefetch` has answered `likely`, with no other node made meanwhile.
    Node& prefetchedNode(std::uint32_t likely, PlayerNumber leader, TrickCountConfiguration counts);

    /// Forgets everything.
    void clear();
    /// Forgets the positions with at most `cards` cards in play, and moves the nodes of others.
    void clear_most(std::int8_t cards);

    std::size_t nodesCount() const { return made; }
    std::size_t entriesCount() const;

private:
    static constexpr int chunkBits = 10;
    static constexpr std::uint32_t nodesOfChunk = 1U << chunkBits;

    Node& at(std::uint32_t number) const;
    Node& findOrMake(PlayerNumber leader, TrickCountConfiguration counts);
    Node& make(PlayerNumber leader, TrickCountConfiguration counts);
    // Gives the node a place. The one that has lost it goes to the maps.
    void put(std::uint32_t number);
    void putAll();
    // Forgets the nodes from this number on, and where the others are.
    void forgetFrom(std::uint32_t number);

    // The nodes in the order in which they were made. The search holds on to a node while it adds
    // others, so they are never moved in memory.
    std::vector<std::unique_ptr<Node[]>> chunks;
    std::uint32_t made = 0;
    // Where they are: each has a place, or is in the map of its leader, which holds their numbers.
    NodePlaces places;
    std::array<boost::unordered_map<TrickCountConfiguration, std::uint32_t>, playersCount> maps;
};

/// One line of a cache.
class alignas(64) TranspositionTable::Node {
public:
    /// The lead that last reached its target here, in whatever deal of the ranks; no card if none.
    OneCardInSuit bestMove{0, 0};

    /// The bound that decides whether `target` tricks can be taken, -1 when none does.
    ///
    /// Either a lower bound that reaches the target or an upper bound below it. The ranks on which
    /// the deciding entry depends, as names, are added to `relevant`.
    std::int8_t check(CardsConfiguration pattern, const Situation& situation, std::int8_t target,
                      std::uint64_t& relevant);

    /// Records that at least `bound` tricks can be taken where the `relevant` ranks agree.
    ///
    /// `pattern` is cut down to the relevant ranks on the way.
    void update_lower_bound(CardsConfiguration& pattern, const Situation& situation,
                            std::uint64_t relevant, std::int8_t bound);
    /// Records that at most `bound` tricks can be taken where the `relevant` ranks agree.
    ///
    /// `pattern` is cut down to the relevant ranks on the way.
    void update_upper_bound(CardsConfiguration& pattern, std::uint64_t relevant, std::int8_t bound);

    /// Those added or asked for last are at the back.
    std::vector<Entry> entries() const;
    std::size_t entriesCount() const { return coldCount + hotCount; }

private:
    friend class TranspositionTable;

    static constexpr std::size_t mostHot = 5;

    // Records these bounds, of which one says nothing.
    void update(CardsConfiguration pattern, std::uint64_t relevant, std::int8_t lower,
                std::int8_t upper);
    void add(Entry entry);
    void addCold(Entry entry);
    // Shows entries to the function, the last first, until it answers true; true if it does.
    template <class Function>
    bool anyOf(Function isSought);

    // The last ones are here, where no further memory has to be fetched for them. Those before are
    // cold: there is room for one less than a power of two. An entry that decides changes places
    // with the one behind it.
    std::uint32_t coldCount : 27 = 0;
    std::uint32_t hotCount : 3 = 0;
    std::uint32_t leader : 2 = 0;  // with `counts` what the table keeps the node under
    std::array<Entry, mostHot> hot{};
    std::unique_ptr<Entry[]> cold;
    TrickCountConfiguration counts;
};

static_assert(sizeof(TranspositionTable::Node) == 64);

// --- inline definitions ---

inline TranspositionTable::Node& TranspositionTable::at(std::uint32_t number) const
{
    return chunks[number >> chunkBits][number % nodesOfChunk];
}

inline TranspositionTable::Node& TranspositionTable::node(PlayerNumber leader,
                                                          TrickCountConfiguration counts)
{
    return prefetchedNode(places.find(leader, counts), leader, counts);
}

inline std::uint32_t TranspositionTable::prefetch(PlayerNumber leader,
                                                  TrickCountConfiguration counts) const
{
    const std::uint32_t likely = places.find(leader, counts);
    if (likely != NodePlaces::unknown) {
        __builtin_prefetch(&at(likely));
    }
    return likely;
}

inline TranspositionTable::Node& TranspositionTable::prefetchedNode(std::uint32_t likely,
                                                                    PlayerNumber leader,
                                                                    TrickCountConfiguration counts)
{
    const bool isHere = likely != NodePlaces::unknown && at(likely).counts == counts;
    return isHere ? at(likely) : findOrMake(leader, counts);
}

}  // namespace trikon
