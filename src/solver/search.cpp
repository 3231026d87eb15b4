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
#include "solver/move_ordering.h"
#include "solver/sure_tricks.h"

#include <algorithm>
#include <array>
#include <utility>

namespace trikon {

namespace {

// How much the suit that was best before at a node weighs in the ordering of leads.
constexpr int rememberedSuitWeight = 250;

// More tricks than there can be, for a minimum.
constexpr int tricksOfDeal = 13;

// The tricks left, one on the table included. Without a sign the division is a shift.
std::int8_t tricksOf(const Situation& situation)
{
    return static_cast<std::int8_t>((static_cast<unsigned>(situation.cardsCount) + 3) / 4);
}

// Widens the relevance of a failed move. Only the lowest card of its group was tried; the others
// fail alike as long as none of them is told from it.
void coverWholeGroup(CardsConfiguration& relevant, const MoveFast& move)
{
    const std::uint16_t ranks = relevant.suit(move.suit);
    if ((ranks & move.equivalents) != 0 && (ranks & move.card) == 0) {
        relevant |= onlySuit(move.suit, ranksFrom(move.card));
    }
}

// Brings the move that plays `card`, if there is one, to the front; the others keep their order.
void moveToFront(MoveFast* begin, MoveFast* end, OneCardInSuit card)
{
    MoveFast* const found = std::find_if(begin, end, [&](const MoveFast& move) {
        return move.suit == card.suit && (move.equivalents & card.card) != 0;
    });
    if (found != end) {
        std::rotate(begin, found, found + 1);
    }
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
    ++nodes;
    if (tricksLeft == 1) {
        return searchLastTrick<T>(player, relevant) ? 1 : 0;
    }

    table.prefetch(player, situation.counts);  // which takes as long as the next two steps

    // Step 2. Cash what is sure.
    QuickTricks<T> quickTricks;
    const std::uint8_t sure = quickTricks(player, *deal, situation.cards, tricksLeft);
    if (sure >= target) {
        relevant |= coverOf(quickTricks.winners());
        return static_cast<std::int8_t>(sure);
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
    TranspositionTable::Node& node = table.node(player, situation.counts);
    std::uint64_t cover = 0;
    const std::int8_t known = node.check(pattern, situation, target, cover);
    if (known >= 0) {
        relevant |= transformRelevance(cover, pattern, situation.cards);
        return known;
    }

    // Step 5. Generate the leads, suit by suit; what was best here before comes first.
    std::array<MoveFast, cardsOfHand> leads;
    MoveFast* const end = generateLeads(leads.data(), player, node.bestMove);
    moveToFront(leads.data(), end, node.bestMove);

    // Step 6. Try the leads until the other side falls short.
    const auto othersTarget = static_cast<std::int8_t>(tricksLeft - target + 1);
    const Tried tried = tryLeads<T>(leads.data(), end, othersTarget, player);
    const auto bound = static_cast<std::int8_t>(tricksLeft - tried.othersTricks);

    // Step 7. Remember the answer and what brought it about.
    const CardsConfiguration named = transformRelevance(tried.relevant, situation.cards, pattern);
    CardsConfiguration stored = pattern;
    if (tried.winner != nullptr) {
        const MoveFast& lead = *tried.winner;
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

    // Step 1. Win the lead and cash what is sure.
    if constexpr (T == NoTrump && pos == 1) {
        const std::int8_t sure = cashAfterLead(target, player, relevant, trick);
        if (sure >= target) {
            return sure;
        }
    }

    // Step 2. Whoever is void may play any card.
    const std::int8_t tricksLeft = tricksOf(situation);
    const auto othersTarget = static_cast<std::int8_t>(tricksLeft - target + 1);
    const CardsConfiguration mine = situation.cards & (*deal)[player];
    if (mine.suit(trick.ledSuit) == 0) {
        return static_cast<std::int8_t>(tricksLeft -
                                        discard<T, pos>(othersTarget, player, relevant, trick));
    }

    // Step 3. Others follow suit, first with what last worked in the same choice.
    FollowingMoves moves = FollowingMoves::of<pos>(situation, *deal, player, trick);
    std::uint32_t choice = 0;
    if (pos < 3 && moves.hasChoice() && trick.winningSuit == trick.ledSuit) {
        choice = ReplyMemory::choice(pos, player, situation.cards.suit(trick.ledSuit), trick);
        const std::uint16_t best = replies.card(choice);
        if (best != 0) {
            moves.startWith(best);
        }
    }

    // Step 4. Try it, and the others only if it fails.
    MoveFast move = moves.present();
    std::int8_t others = playAndSearch<T, pos>(othersTarget, player, relevant, trick, move);
    if (others >= othersTarget) {
        coverWholeGroup(relevant, move);
        if (moves.nextAfter(relevant)) {
            FollowingMoves further = moves;
            others =
                std::min(others, followOn<T, pos>(further, othersTarget, player, relevant, trick));
            move = further.present();
        }
    }
    if (choice != 0 && others < othersTarget) {
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
    return tryMoves<T, pos>(moves, othersTarget, player, relevant, trick);
}

// Plays the present move and those after it until the other side falls short. `relevant` is what
// moves before it have failed for, to which the reasons of further failures are added.
template <int T, int pos, class Moves>
inline std::int8_t DDSolver::tryMoves(Moves& moves, std::int8_t othersTarget, PlayerNumber player,
                                      CardsConfiguration& relevant, const Trick& trick)
{
    std::int8_t fewest = tricksOfDeal;
    CardsConfiguration reasons;
    do {
        reasons = {};
        const MoveFast move = moves.present();
        const std::int8_t others =
            playAndSearch<T, pos>(othersTarget, player, reasons, trick, move);
        if (others < othersTarget) {
            relevant = reasons;
            return others;
        }
        fewest = std::min(fewest, others);
        coverWholeGroup(reasons, move);
        relevant |= reasons;
    } while (moves.nextAfter(reasons));
    return fewest;
}

// The tricks that `player`, second to play at no trump, and his partner can cash; relevance is
// added if they reach the target.
std::int8_t DDSolver::cashAfterLead(std::int8_t target, PlayerNumber player,
                                    CardsConfiguration& relevant, const Trick& trick) const
{
    CardsConfiguration inPlay = situation.cards;
    inPlay.add({trick.ledSuit, trick.winningCard});
    const std::int8_t tricksLeft = tricksOf(situation);
    QuickTricks<NoTrump> quickTricks;
    const auto sure = static_cast<std::int8_t>(
        quickTricks.afterLead(player, *deal, inPlay, trick.ledSuit, tricksLeft));
    if (sure >= target) {
        relevant |= coverOf(quickTricks.winners());
    }
    return sure;
}

// --- what both have in common ---

// Plays the leads one by one and asks whether the other side then reaches its target.
template <int T>
DDSolver::Tried DDSolver::tryLeads(const MoveFast* begin, const MoveFast* end,
                                   std::int8_t othersTarget, PlayerNumber player)
{
    Tried failed{nullptr, tricksOfDeal, {}};
    CardsConfiguration candidates = fullDeck;
    for (const MoveFast* move = begin; move != end; ++move) {
        if ((candidates.suit(move->suit) & move->equivalents) == 0) {
            continue;
        }
        CardsConfiguration relevant;
        const std::int8_t others =
            playAndSearch<T, 0>(othersTarget, player, relevant, Trick(), *move);
        if (others < othersTarget) {
            return {move, others, relevant};
        }
        coverWholeGroup(relevant, *move);
        // If the rank of the card did not matter, neither does that of any other card of the suit
        // outside the relevance: they fail as this one does.
        if ((relevant.suit(move->suit) & move->card) == 0) {
            candidates &= relevant | ~onlySuit(move->suit, fullSuit);
        }
        failed.othersTricks = std::min(failed.othersTricks, others);
        failed.relevant |= relevant;
    }
    return failed;
}

// The other side's result against `target` once the player at `pos` has played the move.
template <int T, int pos>
inline std::int8_t DDSolver::playAndSearch(std::int8_t target, PlayerNumber player,
                                           CardsConfiguration& relevant, Trick trick,
                                           const MoveFast& move)
{
    const CardOnTable played(situation, player, {move.suit, move.card});
    if constexpr (pos == 0) {
        return searchInTrick<T, 1>(target, nextPlayer(player), relevant,
                                   Trick(move.suit, move.card));
    } else {
        trick.add(static_cast<Trump>(T), move.suit, move.card);
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

// --- the moves to try ---

MoveFast* DDSolver::generateLeads(MoveFast* out, PlayerNumber player, OneCardInSuit bestMove) const
{
    struct WeightedSuit {
        int weight;
        std::uint8_t suit;
    };
    std::array<WeightedSuit, suitsCount> suits;
    unsigned count = 0;
    const CardsConfiguration mine = situation.cards & (*deal)[player];
    for (std::uint8_t suit = 0; suit < suitsCount; ++suit) {
        if (mine.suit(suit) == 0) {
            continue;
        }
        int weight = leadWeight(situation, *deal, player, suit);
        weight += bestMove.card != 0 && bestMove.suit == suit ? rememberedSuitWeight : 0;
        unsigned place = count++;
        for (; place > 0 && suits[place - 1].weight < weight; --place) {
            suits[place] = suits[place - 1];
        }
        suits[place] = {weight, suit};
    }
    for (unsigned place = 0; place < count; ++place) {
        out = generateLeadsOfSuit(out, player, suits[place].suit);
    }
    return out;
}

// The group that last succeeded with these cards in play, then the highest one, then upward.
inline MoveFast* DDSolver::generateLeadsOfSuit(MoveFast* out, PlayerNumber player,
                                               std::uint8_t suit) const
{
    const std::uint16_t inPlay = situation.cards.suit(suit);
    auto mine = static_cast<std::uint16_t>((*deal)[player].suit(suit) & inPlay);
    const auto separators = static_cast<std::uint16_t>(inPlay ^ mine);
    const std::uint16_t best = bestLeads[player][suit][inPlay];
    if (best != 0) {
        *out++ = {lowestCard(best), best, suit};
        mine ^= best;
    }
    MoveFast* const others = out;
    generateMovesInOneSuit(suit, out, mine, separators);
    if (out - others > 1) {
        std::rotate(others, out - 1, out);
    }
    return out;
}

}  // namespace trikon
