// What scripts ask the solver about the current deal, and the solvers kept for it.
//
// One solver a trump is made when a script first asks about it and kept until the next deal:
// another declarer, or another line of play, then finds what was proved before. All of them share
// the tables of the deal, which are worked out once.
#pragma once

#include "cards/hands.h"
#include "cards/players_and_trumps.h"
#include "solver/interactive_dd_solver.h"

#include <array>
#include <memory>
#include <optional>

namespace trikon {

class ScriptSolver {
public:
    /// The solver of `trump` for the deal `hands`, at the lead against `declarer`.
    ///
    /// `commands` (null for none) have been played; null when one of their cards cannot be. Throws
    /// what the command language throws else. All calls until `clear` must be about the same deal.
    InteractiveDDSolver* getSolver(const Hands& hands, PlayerNumber declarer, Trump trump,
                                   const char* commands);

    /// The tricks of declarer's side, those that the commands played included; none as above.
    std::optional<int> tricks(const Hands& hands, PlayerNumber declarer, Trump trump,
                              const char* commands);
    /// Whether declarer's side takes `n` tricks or more, those played included; none as above.
    std::optional<bool> canTake(std::int64_t n, const Hands& hands, PlayerNumber declarer,
                                Trump trump, const char* commands);

    /// Destroys all solvers: the deal is over.
    void clear();

private:
    std::array<std::unique_ptr<InteractiveDDSolver>, trumpsCount> solvers;
    // The tables of the current deal, once a solver needed them.
    std::shared_ptr<const Deal> deal;
};

}  // namespace trikon
