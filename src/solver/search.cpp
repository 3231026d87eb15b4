// The yes/no search: can the side of the player to move take `target` of the tricks left?
//
// The search plays the deal card by card, depth first. Every card belongs to one player, so the
// question passes to the other side with each: with L tricks left, my side can take k exactly when
// the other side cannot take L - k + 1, and r tricks of theirs are L - r of mine. The answer is a
// count v. If v reaches the target, the side takes at least v tricks, otherwise at most v.
//
//     start of a trick -> second card -> third card -> fourth card -> start of the next trick
//
// Every answer names the ranks on which it stands, its relevance: in each suit nothing or all ranks
// from some card upward. The promise is that the answer holds in every position with the same
// trump, the same hand on lead and the same number of cards of each suit in each hand, in which the
// cards in play of the relevant ranks belong to the same hands in the same order. It is what makes
// remembered answers serve other positions, and it rules out moves that would fail for the same
// reasons. Relevance is always in actual ranks here; only the table speaks in names
// (`Deal::suitChain`).
#include "solver/card_on_table.h"
#include "solver/dd_solver.h"
#include "solver/search_by_turns.h"
#include "solver/sure_tricks.h"

#include <algorithm>

namespace trikon {

namespace {

// The tricks left, one on the table included. Without a sign the division is a shift.
std::int8_t tricksOf(const Situation& situation)
{
    return static_cast<std::int8_t>((static_cast<unsigned>(situation.cardsCount) + 3) / 4);
}

}  // namespace

// --- dispatch: the only place where trump and position are values of the run ---

std::int8_t DDSolver::searchStartTrick(std::int8_t target, PlayerNumber player,
                                       CardsConfiguration& relevant)
{
    switch (trump) {
    case Clubs: return searchStartTrick<Clubs>(target, player, relevant);
    case Diamonds: return searchStartTrick<Diamonds>(target, player, relevant);
    case Hearts: return searchStartTrick<Hearts>(target, player, relevant);
    case Spades: return searchStartTrick<Spades>(target, player, relevant);
    default: return searchStartTrick<NoTrump>(target, player, relevant);
    }
}

std::int8_t DDSolver::searchInTrick(int pos, std::int8_t target, PlayerNumber player,
                                    CardsConfiguration& relevant, const Trick& trick)
{
    const auto tricksLeft = static_cast<std::int8_t>((situation.cardsCount + 3) / 4);
    if (target <= 0) {
        return 0;
    }
    if (target > tricksLeft) {
        return tricksLeft;
    }
    switch (trump) {
    case Clubs: return searchInTrick<Clubs>(pos, target, player, relevant, trick);
    case Diamonds: return searchInTrick<Diamonds>(pos, target, player, relevant, trick);
    case Hearts: return searchInTrick<Hearts>(pos, target, player, relevant, trick);
    case Spades: return searchInTrick<Spades>(pos, target, player, relevant, trick);
    default: return searchInTrick<NoTrump>(pos, target, player, relevant, trick);
    }
}

template <int T>
std::int8_t DDSolver::searchInTrick(int pos, std::int8_t target, PlayerNumber player,
                                    CardsConfiguration& relevant, const Trick& trick)
{
    CardsConfiguration reasons;  // a search in a trick takes what it is given for its own
    const std::int8_t tricks = pos == 1   ? searchInTrick<T, 1>(target, player, reasons, trick)
                               : pos == 2 ? searchInTrick<T, 2>(target, player, reasons, trick)
                                          : searchInTrick<T, 3>(target, player, reasons, trick);
    relevant |= reasons;
    return tricks;
}

// --- the search ---

template <int T>
std::int8_t DDSolver::searchStartTrick(std::int8_t target, PlayerNumber player,
                                       CardsConfiguration& relevant)
{
    static_assert(Clubs <= T && T <= NoTrump);

    // Step 1. Answer what needs no play.
    const auto tricksLeft = static_cast<std::int8_t>(situation.cardsCount / 4);
    if (target <= 0) {
        return 0;
    }
    if (target > tricksLeft) {
        return tricksLeft;
    }
    if (isGivenUp()) {
        return 0;
    }
    ++nodes;
    if (tricksLeft == 1) {
        return searchLastTrick<T>(player, relevant) ? 1 : 0;
    }

    // To fetch it takes longer than the next two steps.
    const std::uint32_t likely = table.prefetch(player, situation.counts);

    // Step 2. Cash what is sure.
    if (QuickTricks<T>::mayCash(target, player, *deal, situation)) {
        QuickTricks<T> quickTricks;
        const std::uint8_t sure = quickTricks(player, *deal, situation.cards, tricksLeft);
        if (sure >= target) {
            relevant |= coverOf(quickTricks.winners());
            return static_cast<std::int8_t>(sure);
        }
    }

    // Step 3. Leave the others the tricks that their trumps win in any case.
    if constexpr (T != NoTrump) {
        const std::uint16_t trumps = situation.cards.suit(T);
        const SureTrumps theirs = deal->sureTrumps(player + 1, T, deal->order(T, trumps));
        if (tricksLeft - theirs.tricks < target) {
            relevant |= onlySuit(T, _highest_mask[trumps][theirs.depth]);
            return static_cast<std::int8_t>(tricksLeft - theirs.tricks);
        }
    }

    // Step 4. Ask the table. It answers in names, and the caller is told ranks.
    const CardsConfiguration pattern = deal->pattern(situation.cards);
    TranspositionTable::Node& node = table.prefetchedNode(likely, player, situation.counts);
    std::uint64_t cover = 0;
    const std::int8_t known = node.check(pattern, situation, target, cover);
    if (known >= 0) {
        relevant |= transformRelevance(cover, pattern, situation.cards);
        return known;
    }

    // Step 5. Try the leads until the other side falls short; what was best here before comes
    // first.
    const auto othersTarget = static_cast<std::int8_t>(tricksLeft - target + 1);
    Leads leads(situation, *deal, bestLeads, player, node.bestMove);
    const Tried tried = tryLeads<T>(leads, othersTarget, player);
    const auto bound = static_cast<std::int8_t>(tricksLeft - tried.othersTricks);

    if (isGivenUp()) {
        return 0;
    }

    // Step 6. Remember the answer and what brought it about.
    const CardsConfiguration named = transformRelevance(tried.relevant, situation.cards, pattern);
    CardsConfiguration stored = pattern;
    if (tried.succeeds) {
        const MoveFast& lead = tried.move;
        node.update_lower_bound(stored, situation, named, bound);
        node.bestMove = {lead.suit, lead.card};
        bestLeads[player][lead.suit][situation.cards.suit(lead.suit)] = lead.equivalents;
    } else {
        node.update_upper_bound(stored, named, bound);
    }
    relevant |= tried.relevant;
    return bound;
}

template <int T, int pos>
std::int8_t DDSolver::searchInTrick(std::int8_t target, PlayerNumber player,
                                    CardsConfiguration& relevant, const Trick& trick)
{
    static_assert(Clubs <= T && T <= NoTrump);
    static_assert(1 <= pos && pos <= 3);
    ++nodes;

    // Step 1. Whoever is void may play any card.
    const std::int8_t tricksLeft = tricksOf(situation);
    const auto othersTarget = static_cast<std::int8_t>(tricksLeft - target + 1);
    const CardsConfiguration mine = situation.cards & (*deal)[player];
    if (mine.suit(trick.ledSuit) == 0) {
        return static_cast<std::int8_t>(tricksLeft -
                                        discard<T, pos>(othersTarget, player, relevant, trick));
    }

    // Step 2. Others follow suit, first with what last worked in the same choice. Behind the last
    // card the table will be asked, and where depends on its suit alone.
    if constexpr (pos == 3) {
        table.prefetchPlaces(situation.counts - countOf(player, trick.ledSuit));
    }
    FollowingMoves moves = FollowingMoves::of<pos>(situation, *deal, player, trick);
    std::uint32_t choice = 0;
    if (pos < 3 && moves.hasChoice() && trick.winningSuit == trick.ledSuit) {
        choice = ReplyMemory::choice(pos, player, situation.cards.suit(trick.ledSuit), trick);
        const std::uint16_t best = replies.card(choice);
        if (best != 0) {
            moves.startWith(best);
        }
    }

    // Step 3. Try it, and the others only if it fails; early in a deal all of them by turns.
    if (tricksLeft >= turns.fromTricks) {
        const Tried tried =
            tryByTurns<T, pos>(listed(moves), othersTarget, player, trick, noneTried);
        if (choice != 0 && tried.succeeds) {
            replies.remember(choice, tried.move.card);
        }
        relevant = tried.relevant;
        return static_cast<std::int8_t>(tricksLeft - tried.othersTricks);
    }

    MoveFast move = moves.present();
    std::int8_t others = playAndSearch<T, pos>(othersTarget, player, relevant, trick, move);
    if (others >= othersTarget && !isGivenUp()) {
        coverWholeGroup(relevant, move);
        if (moves.nextAfter(relevant)) {
            FollowingMoves further = moves;
            others =
                std::min(others, followOn<T, pos>(further, othersTarget, player, relevant, trick));
            move = further.present();
        }
    }
    if (choice != 0 && others < othersTarget && !isGivenUp()) {
        replies.remember(choice, move.card);
    }
    return static_cast<std::int8_t>(tricksLeft - others);
}

// Tries the other cards of the suit led when the first one has failed.
template <int T, int pos>
std::int8_t DDSolver::followOn(FollowingMoves& moves, std::int8_t othersTarget, PlayerNumber player,
                               CardsConfiguration& relevant, const Trick& trick)
{
    return tryMoves<T, pos>(moves, othersTarget, player, relevant, trick);
}

// Tries the cards of a hand that is void in the suit led.
template <int T, int pos>
std::int8_t DDSolver::discard(std::int8_t othersTarget, PlayerNumber player,
                              CardsConfiguration& relevant, const Trick& trick)
{
    VoidMoves moves = VoidMoves::of<pos, T>(situation, *deal, player, trick);
    if (tricksOf(situation) >= turns.fromTricks) {
        const Tried tried =
            tryByTurns<T, pos>(listed(moves), othersTarget, player, trick, noneTried);
        relevant = tried.relevant;
        return tried.othersTricks;
    }
    return tryMoves<T, pos>(moves, othersTarget, player, relevant, trick);
}

// Plays the present move and those after it until the other side falls short. `relevant` is what
// moves before it have failed for, to which the reasons of further failures are added.
template <int T, int pos, class Moves>
inline std::int8_t DDSolver::tryMoves(Moves& moves, std::int8_t othersTarget, PlayerNumber player,
                                      CardsConfiguration& relevant, const Trick& trick)
{
    std::int8_t fewest = noneTried.othersTricks;
    CardsConfiguration reasons;
    do {
        reasons = {};
        const MoveFast move = moves.present();
        const std::int8_t others =
            playAndSearch<T, pos>(othersTarget, player, reasons, trick, move);
        if (others < othersTarget || isGivenUp()) {
            relevant = reasons;
            return others;
        }
        fewest = std::min(fewest, others);
        coverWholeGroup(reasons, move);
        relevant |= reasons;
    } while (moves.nextAfter(reasons));
    return fewest;
}

// --- what both have in common ---

// Tries the leads one by one: does the other side then reach its target?
template <int T>
DDSolver::Tried DDSolver::tryLeads(Leads& leads, std::int8_t othersTarget, PlayerNumber player)
{
    Tried failed = noneTried;
    const bool isEarly = tricksOf(situation) >= turns.fromTricks;
    MoveList early;
    // It does without a search if it wins the lead and cashes enough, whichever card of the suit is
    // led. So it is asked once for each suit.
    const bool mayCash =
        QuickTricks<T>::mayCash(othersTarget, nextPlayer(player), *deal, situation);
    unsigned suitsToAsk = mayCash ? (1U << suitsCount) - 1 : 0;
    while (leads.next()) {
        const MoveFast& lead = leads.present();
        if ((suitsToAsk >> lead.suit & 1) != 0) {
            suitsToAsk ^= 1U << lead.suit;
            const std::int8_t sure =
                cashAfterLead<T>(othersTarget, player, lead.suit, failed.relevant);
            if (sure >= othersTarget) {
                failed.othersTricks = std::min(failed.othersTricks, sure);
                leads.leaveOutSuit();
                continue;
            }
        }
        if (isEarly) {
            early.push_back(lead);
            continue;
        }
        CardsConfiguration relevant;
        const std::int8_t others =
            playAndSearch<T, 0>(othersTarget, player, relevant, Trick(), lead);
        if (others < othersTarget) {
            return {true, others, relevant, lead};
        }
        if (isGivenUp()) {
            return failed;
        }
        coverWholeGroup(relevant, lead);
        leads.leaveOutAlike(relevant);
        failed.othersTricks = std::min(failed.othersTricks, others);
        failed.relevant |= relevant;
    }
    return isEarly ? tryByTurns<T, 0>(early, othersTarget, player, Trick(), failed) : failed;
}

// The tricks that the side after `player` can cash when he leads the suit; relevance is added if
// they reach the target.
template <int T>
std::int8_t DDSolver::cashAfterLead(std::int8_t target, PlayerNumber player, int suit,
                                    CardsConfiguration& relevant) const
{
    QuickTricks<T> quickTricks;
    const auto sure = static_cast<std::int8_t>(quickTricks.afterLead(
        nextPlayer(player), *deal, situation.cards, suit, tricksOf(situation)));
    if (sure >= target) {
        relevant |= coverOf(quickTricks.winners());
    }
    return sure;
}

// Which card of a group is played changes no result, only what it stands on. A card that wins makes
// the ranks from its own upward matter, so it had better be the highest; one that loses leaves the
// rest of its group behind, which had better be high.
template <int T, int pos>
inline std::uint16_t DDSolver::cardToPlay(PlayerNumber player, const Trick& trick,
                                          const MoveFast& move) const
{
    bool isAboutToWin = false;
    if constexpr (pos == 0) {
        const CardsConfiguration others = situation.cards & deal->sideCards(player + 1);
        isAboutToWin = move.card > others.suit(move.suit);
    } else {
        isAboutToWin =
            move.suit == trick.winningSuit ? move.card > trick.winningCard : move.suit == T;
    }
    return isAboutToWin ? _highest_bit13[move.equivalents] : move.card;
}

// The other side's result against `target` once the player at `pos` has played the move.
template <int T, int pos>
inline std::int8_t DDSolver::playAndSearch(std::int8_t target, PlayerNumber player,
                                           CardsConfiguration& relevant, Trick trick,
                                           const MoveFast& move)
{
    const std::uint16_t card = cardToPlay<T, pos>(player, trick, move);
    const CardOnTable played(situation, player, {move.suit, card});
    if constexpr (pos == 0) {
        return searchInTrick<T, 1>(target, nextPlayer(player), relevant, Trick(move.suit, card));
    } else {
        trick.add(static_cast<Trump>(T), move.suit, card);
        if constexpr (pos < 3) {
            return searchInTrick<T, pos + 1>(target, nextPlayer(player), relevant, trick);
        } else {
            return searchNextTrick<T>(target, player, relevant, trick);
        }
    }
}

// The same once `trick` is complete: who has won it leads.
template <int T>
std::int8_t DDSolver::searchNextTrick(std::int8_t target, PlayerNumber lastPlayer,
                                      CardsConfiguration& relevant, const Trick& trick)
{
    if (trick.followed != 0) {
        relevant |= onlySuit(trick.winningSuit, ranksFrom(trick.winningCard));
    }
    const PlayerNumber leader = deal->holderOf(trick.winningSuit, trick.winningCard);
    if (((leader ^ lastPlayer) & 1) != 0) {  // the other side has won
        const auto further = static_cast<std::int8_t>(target - 1);
        return static_cast<std::int8_t>(1 + searchStartTrick<T>(further, leader, relevant));
    }
    const std::int8_t tricksLeft = tricksOf(situation);
    const auto ownTarget = static_cast<std::int8_t>(tricksLeft - target + 1);
    return static_cast<std::int8_t>(tricksLeft - searchStartTrick<T>(ownTarget, leader, relevant));
}

}  // namespace trikon
