// Trying the moves of an early position by turns.
//
// A move that fails where a later one succeeds costs most where most cards are still to be played.
// And long before it has failed, the table knows enough to prove another one right at once. So the
// search of the first move is given up again and again, each time after many more nodes, and goes
// on later from what the table has kept; meanwhile the others are tried for a small part as long.
#pragma once

#include "solver/dd_solver.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace trikon {

/// Takes out the move at `place`, which has failed for these `reasons`, and those that fail alike.
inline void leaveOutAlike(MoveList& moves, std::size_t place, CardsConfiguration reasons)
{
    const CardsConfiguration candidates = candidatesAfter(moves[place], reasons);
    moves.erase(moves.begin() + static_cast<std::ptrdiff_t>(place));
    const auto isAlike = [&](const MoveFast& move) {
        return (candidates.suit(move.suit) & move.equivalents) == 0;
    };
    moves.erase(std::remove_if(moves.begin(), moves.end(), isAlike), moves.end());
}

/// Limits the nodes of a search to so many more for as long as the object lives.
class DDSolver::Patience {
public:
    Patience(DDSolver& solver, std::uint64_t more) : solver(solver), before(solver.mostNodes)
    {
        solver.mostNodes = std::min(before, solver.nodes + more);
    }
    ~Patience() { solver.mostNodes = before; }
    Patience(const Patience&) = delete;
    Patience& operator=(const Patience&) = delete;

private:
    DDSolver& solver;
    std::uint64_t before;
};

// Tries the moves of a position. `failed` is what came of moves before them.
template <int T, int pos>
DDSolver::Tried DDSolver::tryByTurns(MoveList moves, std::int8_t othersTarget, PlayerNumber player,
                                     const Trick& trick, Tried failed)
{
    constexpr std::uint64_t endless = std::uint64_t{1} << 62;
    for (std::uint64_t patience = turns.firstPatience; !moves.empty(); patience *= 10) {
        for (std::size_t place = 0; place < moves.size();) {
            const std::uint64_t limit = place == 0 ? patience : patience / turns.partOfFirst;
            const std::optional<Tried> tried = tryFor<T, pos>(
                moves.size() > 1 ? limit : endless, othersTarget, player, trick, moves[place]);
            if (isGivenUp() || (tried && tried->succeeds)) {
                return tried.value_or(failed);
            }
            if (tried) {
                failed.othersTricks = std::min(failed.othersTricks, tried->othersTricks);
                failed.relevant |= tried->relevant;
                leaveOutAlike(moves, place, tried->relevant);
            } else {
                ++place;
            }
        }
    }
    return failed;
}

// What comes of a move within so many nodes; nothing if it takes more.
template <int T, int pos>
std::optional<DDSolver::Tried> DDSolver::tryFor(std::uint64_t patience, std::int8_t othersTarget,
                                                PlayerNumber player, const Trick& trick,
                                                const MoveFast& move)
{
    const Patience limit(*this, patience);
    Tried tried{false, 0, {}, move};
    tried.othersTricks = playAndSearch<T, pos>(othersTarget, player, tried.relevant, trick, move);
    if (isGivenUp()) {
        return std::nullopt;
    }
    tried.succeeds = tried.othersTricks < othersTarget;
    if (!tried.succeeds) {
        coverWholeGroup(tried.relevant, move);
    }
    return tried;
}

}  // namespace trikon
