// The arithmetic between declarer's tricks and those of whoever is to play.
#include "lua/script_solver.h"

namespace trikon {

namespace {

bool areOnOneSide(PlayerNumber one, PlayerNumber other) { return ((one ^ other) & 1) == 0; }

// The tricks still to play, the one on the table included.
int tricksLeft(const InteractiveDDSolver& solver)
{
    return (solver.getSituation().cardsCount + 3) / 4;
}

int tricksWonBySideOf(PlayerNumber declarer, const InteractiveDDSolver& solver)
{
    std::int8_t takers[playersCount];
    solver.getTricksTakers(takers);
    return takers[declarer] + takers[partner(declarer)];
}

}  // namespace

InteractiveDDSolver* ScriptSolver::getSolver(const Hands& hands, PlayerNumber declarer, Trump trump,
                                             const char* commands)
{
    std::unique_ptr<InteractiveDDSolver>& solver = solvers[static_cast<std::size_t>(trump)];
    if (solver == nullptr) {
        if (deal == nullptr) {
            auto prepared = std::make_shared_for_overwrite<Deal>();
            prepared->setHands(hands);
            deal = std::move(prepared);
        }
        solver = std::make_unique<InteractiveDDSolver>();
        solver->set_trump_suit(trump);
        solver->setDeal(deal);
    } else {
        solver->doCommands("ua", false);
    }
    solver->setFirstLeader(nextPlayer(declarer));
    if (commands != nullptr) {
        try {
            solver->doCommands(commands, false);
        } catch (const cant_play_card&) {
            return nullptr;
        }
    }
    return solver.get();
}

std::optional<int> ScriptSolver::tricks(const Hands& hands, PlayerNumber declarer, Trump trump,
                                        const char* commands)
{
    InteractiveDDSolver* const solver = getSolver(hands, declarer, trump, commands);
    if (solver == nullptr) {
        return std::nullopt;
    }
    std::int8_t further = solver->getTricksToTake();
    if (!areOnOneSide(solver->playerToPlay(), declarer)) {
        further = static_cast<std::int8_t>(tricksLeft(*solver) - further);
    }
    return tricksWonBySideOf(declarer, *solver) + further;
}

std::optional<bool> ScriptSolver::canTake(std::int64_t n, const Hands& hands, PlayerNumber declarer,
                                          Trump trump, const char* commands)
{
    InteractiveDDSolver* const solver = getSolver(hands, declarer, trump, commands);
    if (solver == nullptr) {
        return std::nullopt;
    }
    const std::int64_t need = n - tricksWonBySideOf(declarer, *solver);
    const int left = tricksLeft(*solver);
    if (need <= 0 || need > left) {
        return need <= 0;
    }
    if (areOnOneSide(solver->playerToPlay(), declarer)) {
        return solver->canTake(static_cast<std::int8_t>(need));
    }
    // Declarer takes `need` unless the defenders take one more than that leaves them.
    return !solver->canTake(static_cast<std::int8_t>(left + 1 - need));
}

void ScriptSolver::clear()
{
    if (deal == nullptr) {
        return;  // as for nearly every deal: no script has asked
    }
    for (std::unique_ptr<InteractiveDDSolver>& solver : solvers) {
        solver.reset();
    }
    deal.reset();
}

}  // namespace trikon
