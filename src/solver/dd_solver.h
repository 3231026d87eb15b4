// How many tricks a side takes when all four hands are seen.
//
// The solver holds one deal, a trump and a position of the deal, and answers questions about the
// position: can a side take so many tricks, how many does it take, what is each card worth. All of
// them come down to yes/no searches (`search.cpp`), whose results are remembered until the deal,
// the trump or the set of cards changes, so that each question makes the next ones cheaper.
//
// Positions are asked about by the player to play next and the cards on the table. How many these
// are follows from the number of cards in play: one to three short of a multiple of four.
#pragma once

#include "cards/situation.h"
#include "solver/deal.h"
#include "solver/leads.h"
#include "solver/move_generation.h"
#include "solver/reply_memory.h"
#include "solver/transposition_table.h"
#include "solver/trick.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace trikon {

constexpr int trumpsCount = 5;

/// Takes 320 kilobytes and a growing table: on the heap only. Used by one thread at a time.
class DDSolver {
public:
    /// A solver of an empty deal at no trump.
    DDSolver();
    DDSolver(const DDSolver&) = delete;
    DDSolver& operator=(const DDSolver&) = delete;
    virtual ~DDSolver() = default;

    /// Puts all cards of the deal back in play and forgets what was proved.
    virtual void reset();

    /// Takes over four hands of equal length and works out their tables; then `reset`.
    void setHands(const Hands& hands);
    /// Shares a deal whose tables are filled, as with the solvers of its other trumps; then
    /// `reset`.
    void setDeal(std::shared_ptr<const Deal> newDeal);
    /// As `reset`, with only the cards of `inPlay` in play.
    void resetToSituation(CardsConfiguration inPlay);
    /// Changes the trump and then calls `reset`; with the trump already set, nothing happens.
    void set_trump_suit(Trump newTrump);

    const std::shared_ptr<const Deal>& getDeal() const { return deal; }
    const Situation& getSituation() const { return situation; }
    Trump getTrump() const { return trump; }

    /// Whether `player`'s side takes at least `target` of the tricks still to play.
    ///
    /// Here and below `player` is to play the next card, `trick` holds the cards on the table, the
    /// current trick counts as still to play, and the position is as before when the call returns.
    bool solveCanTake(std::int8_t target, PlayerNumber player, const Trick& trick);
    /// A proved count that reaches `target`, or else an upper bound on the tricks.
    std::int8_t tricksToTakeApprox(std::int8_t target, PlayerNumber player, const Trick& trick);
    /// The tricks that `player`'s side takes; 0 with no card in play.
    ///
    /// `guess` is the target tried first, -1 for none: a wrong one costs time, never correctness.
    std::int8_t solveTricksToTake(PlayerNumber player, const Trick& trick, std::int8_t guess);

    /// Sets the value of each move to the tricks of `player`'s side if that card is played.
    ///
    /// Answers the first move of the highest value, `end` for an empty range. The cards must be
    /// `player`'s and in play.
    Move* analizeAll(PlayerNumber player, const Trick& trick, Move* begin, Move* end);
    /// Sets the value of each move to what one search against `target` tells about it.
    ///
    /// That is a proved count that reaches the target, or else an upper bound. With `stopEarly` the
    /// moves behind the first that reaches it stay as they are. Answers the first move of the
    /// highest value among those set, `end` for an empty range. Target 0 gives 0, unsearched.
    Move* approxAll(std::int8_t target, PlayerNumber player, const Trick& trick, Move* begin,
                    Move* end, bool stopEarly);
    /// Sets the value of each move to 1 if `player`'s side can then take `target` tricks, else 0.
    ///
    /// Answers what `approxAll` does.
    Move* winLooseAll(std::int8_t target, PlayerNumber player, const Trick& trick, Move* begin,
                      Move* end);
    /// Writes the tricks of `player`'s side in each denomination, by the numbers of `Trump`.
    ///
    /// `trickCards` are the cards on the table, the last one played first: what they are worth
    /// changes with the trump. What was proved is forgotten; trump and position stay.
    void analizeAllSuits(PlayerNumber player, const OneCardInSuit* trickCards,
                         std::array<unsigned, trumpsCount>& tricks);
    /// For each position of a play, the cards that keep all the tricks of the side to play.
    ///
    /// `play` starts in the present position, with a lead by `leader`, and each card must be legal.
    /// Entry i belongs to the position before card i, the last one to that after the whole play; it
    /// is empty when no card is left.
    std::vector<CardsConfiguration> allBest(PlayerNumber leader,
                                            std::span<const OneCardInSuit> play);

    /// Whether the side of `player`, who is to lead, can take `target` tricks.
    ///
    /// A result that reaches the target is a lower bound on its tricks, another one an upper bound,
    /// in every position that agrees on the ranks added to `relevant` (see `search.cpp`).
    std::int8_t searchStartTrick(std::int8_t target, PlayerNumber player,
                                 CardsConfiguration& relevant);
    /// The same for the player of card `pos` (1 to 3, 0 for the lead) of `trick`.
    std::int8_t searchInTrick(int pos, std::int8_t target, PlayerNumber player,
                              CardsConfiguration& relevant, const Trick& trick);
    /// Whether `leader`'s side wins the last trick. Defined in `sure_tricks.h`.
    template <int T>
    bool searchLastTrick(PlayerNumber leader, CardsConfiguration& relevant) const;
    /// Whether `player`'s side holds the highest card in play of the suit, which is not out of
    /// play.
    template <int suit>
    bool hasHighestInSuit(PlayerNumber player, CardsConfiguration& relevant) const;

    /// The positions that searches have looked into since the solver was made.
    std::uint64_t nodesSearched() const { return nodes; }
    const TranspositionTable& getTable() const { return table; }

protected:
    // A derived solver that plays cards keeps `situation` in step with them; all of it must always
    // be part of `deal`.
    TranspositionTable table;
    Situation situation;
    Trump trump = NoTrump;
    std::shared_ptr<const Deal> deal;
    // With so many tricks left or more, the present one included, moves are tried by turns
    // (`search_by_turns.h`): the first for so many nodes at first and ten times as many each
    // further time, the others for a part as many.
    struct Turns {
        int fromTricks = 12;
        std::uint64_t firstPatience = 10000;
        std::uint64_t partOfFirst = 200;
    } turns;

private:
    // What came of the moves: one that keeps the other side from its target, and what it then
    // takes; else the least that it takes.
    struct Tried {
        bool succeeds;
        std::int8_t othersTricks;
        CardsConfiguration relevant;
        MoveFast move;
    };
    static constexpr Tried noneTried{false, cardsOfHand, {}, {}};
    class Patience;

    template <int T>
    std::int8_t searchStartTrick(std::int8_t target, PlayerNumber player,
                                 CardsConfiguration& relevant);
    template <int T>
    std::int8_t searchInTrick(int pos, std::int8_t target, PlayerNumber player,
                              CardsConfiguration& relevant, const Trick& trick);
    // From here to the next lead `relevant` must be empty before.
    template <int T, int pos>
    std::int8_t searchInTrick(std::int8_t target, PlayerNumber player, CardsConfiguration& relevant,
                              const Trick& trick);
    template <int T>
    Tried tryLeads(Leads& leads, std::int8_t othersTarget, PlayerNumber player);
    template <int T, int pos>
    Tried tryByTurns(MoveList moves, std::int8_t othersTarget, PlayerNumber player,
                     const Trick& trick, Tried failed);
    template <int T, int pos>
    std::optional<Tried> tryFor(std::uint64_t patience, std::int8_t othersTarget,
                                PlayerNumber player, const Trick& trick, const MoveFast& move);
    template <int T>
    std::int8_t cashAfterLead(std::int8_t target, PlayerNumber player, int suit,
                              CardsConfiguration& relevant) const;
    // These two are kept apart from `searchInTrick`, whose common way needs neither.
    template <int T, int pos>
    [[gnu::noinline]] std::int8_t discard(std::int8_t othersTarget, PlayerNumber player,
                                          CardsConfiguration& relevant, const Trick& trick);
    template <int T, int pos>
    [[gnu::noinline]] std::int8_t followOn(FollowingMoves& moves, std::int8_t othersTarget,
                                           PlayerNumber player, CardsConfiguration& relevant,
                                           const Trick& trick);
    template <int T, int pos, class Moves>
    [[gnu::always_inline]] std::int8_t tryMoves(Moves& moves, std::int8_t othersTarget,
                                                PlayerNumber player, CardsConfiguration& relevant,
                                                const Trick& trick);
    template <int T, int pos>
    std::uint16_t cardToPlay(PlayerNumber player, const Trick& trick, const MoveFast& move) const;
    template <int T, int pos>
    [[gnu::always_inline]] std::int8_t playAndSearch(std::int8_t target, PlayerNumber player,
                                                     CardsConfiguration& relevant, Trick trick,
                                                     const MoveFast& move);
    template <int T>
    std::int8_t searchNextTrick(std::int8_t target, PlayerNumber lastPlayer,
                                CardsConfiguration& relevant, const Trick& trick);

    class AfterCard;

    bool isGivenUp() const { return nodes >= mostNodes; }
    void forgetProofs();
    void collectBest(PlayerNumber player, const Trick& trick, std::span<const OneCardInSuit> play,
                     CardsConfiguration* best);
    CardsConfiguration bestCards(PlayerNumber player, const Trick& trick);
    CardsConfiguration legalCards(PlayerNumber player, const Trick& trick) const;

    // For the hand on lead, a suit and its cards in play: the group that last reached its target.
    BestLeads bestLeads{};
    ReplyMemory replies;
    std::uint64_t nodes = 0;
    // Of these, those whose proofs are forgotten.
    std::uint64_t nodesForgotten = 0;
    // A search that has come to so many is given up: it answers anything, and nothing of it is
    // kept.
    std::uint64_t mostNodes = ~std::uint64_t{0};
};

}  // namespace trikon
