// Where the nodes of a transposition table are.
//
// A hash map takes many steps to find a node, and each waits for memory that the one before has
// named. Here one line of a cache tells where the nodes of one set of suit lengths are, whichever
// hand is on lead, so that it can be fetched before the trick is over that decides who leads. A key
// has two places; a newer one takes the older one's, and the table keeps in mind who has lost its
// place.
#pragma once

#include "cards/players_and_trumps.h"
#include "cards/situation.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace trikon {

class NodePlaces {
public:
    static constexpr std::uint32_t unknown = ~std::uint32_t{0};

    NodePlaces() { empty(fewestBits); }

    /// The number of the node, or very seldom that of another one; `unknown` if it has no place.
    std::uint32_t find(PlayerNumber leader, TrickCountConfiguration counts) const
    {
        const std::uint64_t hash = hashOf(counts);
        const Line& line = lines[lineOf(hash)];
        const std::uint32_t tag = tagOf(hash);
        const Place* const places = line.newer[leader].tag == tag ? line.newer : line.older;
        return places[leader].tag == tag ? places[leader].node : unknown;
    }
    /// Has what `find` needs fetched, whoever leads.
    void prefetch(TrickCountConfiguration counts) const
    {
        __builtin_prefetch(&lines[lineOf(hashOf(counts))]);
    }

    /// Whether a node with this key may have lost its place.
    bool mayHaveLost(PlayerNumber leader, TrickCountConfiguration counts) const
    {
        const std::uint64_t hash = hashOf(counts);
        const Line& line = lines[lineOf(hash)];
        return line.older[leader].tag != 0 || line.newer[leader].tag == tagOf(hash);
    }
    /// Gives the node a place, and answers which one has lost it; `unknown` if none has.
    std::uint32_t put(PlayerNumber leader, TrickCountConfiguration counts, std::uint32_t node)
    {
        const std::uint64_t hash = hashOf(counts);
        const std::uint32_t tag = tagOf(hash);
        Line& line = lines[lineOf(hash)];
        if (line.newer[leader].tag != tag) {  // of two with one tag only one can be found
            std::swap(line.older[leader], line.newer[leader]);
        }
        const Place lost = std::exchange(line.newer[leader], {tag, node});
        return lost.tag != 0 ? lost.node : unknown;
    }
    /// Whether so many nodes are better off in four times as many places.
    bool areFewFor(std::size_t nodes) const { return nodes > placesOfLine / 2 * lines.size(); }
    /// Empties all places and makes them four times as many.
    void enlarge() { empty(bits + 2); }
    /// Empties all places and makes them as few as at the start.
    void clear() { empty(fewestBits); }

private:
    // The upper half of a key's hash, made odd, and the node's number; the tag 0 is nobody's.
    struct Place {
        std::uint32_t tag;
        std::uint32_t node;
    };
    // By leader.
    struct alignas(64) Line {
        Place newer[playersCount];
        Place older[playersCount];
    };

    static constexpr int fewestBits = 10;
    static constexpr std::size_t placesOfLine = std::size_t{2} * playersCount;

    // By 2^64 over the golden ratio, as an odd number: what differs in keys reaches the upper half.
    static std::uint64_t hashOf(TrickCountConfiguration counts)
    {
        return counts * 0x9e3779b97f4a7c15U;
    }
    static std::uint32_t tagOf(std::uint64_t hash)
    {
        return static_cast<std::uint32_t>(hash >> 32) | 1;
    }
    std::size_t lineOf(std::uint64_t hash) const { return hash >> (64 - bits); }
    void empty(int newBits)
    {
        lines.assign(std::size_t{1} << newBits, {});
        bits = newBits;
    }

    int bits = fewestBits;
    std::vector<Line> lines;
};

}  // namespace trikon
