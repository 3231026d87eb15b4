// Play commands in a whole deal and in an ending, which is also solved from where they lead.
#include "cards/hands.h"
#include "fuzz_target.h"
#include "solver/interactive_dd_solver.h"

#include <memory>
#include <sstream>

namespace {

using namespace trikon;

std::unique_ptr<InteractiveDDSolver> solverOf(const char* pbn)
{
    Hands hands;
    std::istringstream in(pbn);
    hands.readFromPBN(in);
    auto solver = std::make_unique<InteractiveDDSolver>();
    solver->set_trump_suit(Hearts);
    solver->setHands(hands);
    solver->setFirstLeader(East);
    return solver;
}

void requireBeginning(const InteractiveDDSolver& solver)
{
    const Situation beginning(solver.getDeal()->allCards(), *solver.getDeal());
    const Situation& now = solver.getSituation();
    require(now.cards == beginning.cards && now.counts == beginning.counts &&
                now.cardsCount == beginning.cardsCount,
            "taking all cards back gives the deal");
    require(solver.playerToPlay() == East, "and its leader");
}

void play(InteractiveDDSolver& solver, const std::string& text, bool anyPlayer, bool solves)
{
    readsWell([&] {
        std::istringstream in(text);
        solver.doCommands(in, anyPlayer);
    });
    const Situation& now = solver.getSituation();
    require(now.cardsCount == now.cards.count() && now.counts.sum() == now.cardsCount,
            "the counts are those of the cards");
    require(now.cardsCount + solver.playedCards().count() == solver.getDeal()->allCards().count(),
            "a card is in play or played");
    if (solves) {
        const std::int8_t tricks = solver.getTricksToTake();
        require(tricks >= 0 && tricks <= (now.cardsCount + 3) / 4, "no more tricks than are left");
    }
    solver.doCommands("ua", false);
    requireBeginning(solver);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const auto whole =
        solverOf("N:AKQ.JT9.876.5432 JT9.3.AKQJT.JT98 42.AKQ.5432.AKQ7 87653.876542.9.6");
    static const auto ending = solverOf("N:A2..K. 3.K2.. ..32.A K..A.2");
    const std::string text = textOf(data, size);
    play(*whole, text, false, false);
    play(*whole, text, true, false);
    play(*ending, text, false, true);
    play(*ending, text, true, false);  // its hands are no longer of one length
    return 0;
}
