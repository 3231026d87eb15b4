// A solver that follows the play: cards are played and taken back, and every question is about the
// position reached.
//
// What was proved about earlier positions of the deal stays and serves later ones, so playing on
// and taking back is cheap.
#pragma once

#include "cards/parser_error.h"
#include "cards/situation.h"
#include "solver/dd_solver.h"
#include "solver/played_cards_vector.h"

#include <array>
#include <cstdint>
#include <iosfwd>

namespace trikon {

/// A card of the play commands cannot be determined or may not be played.
class cant_play_card : public parser_error {
public:
    using parser_error::parser_error;
    std::ostream& print_to_stream(std::ostream& out) const override;
};

class InteractiveDDSolver : public DDSolver {
public:
    /// Takes all cards back and forgets what was proved.
    void reset() override;
    /// The player who leads to the first trick; North before it is set.
    void setFirstLeader(PlayerNumber player) { firstLeader = player; }

    const PlayedCardsVector& playedCards() const { return played; }
    PlayerNumber playerToPlay() const;
    /// Defined once a card was played.
    PlayerNumber playerWhoPlayLastCard() const;
    /// The cards of the suit that the player to play may play: none while he must follow another.
    std::uint16_t cardsPossibleToPlay(std::uint8_t suit) const;

    /// Plays a card; false, with no change, if it is not in play or not the player's to play.
    ///
    /// With `anyPlayer` it may be anybody's. Whether suit is followed is left to the caller.
    bool playCard(std::uint8_t suit, std::uint16_t card, bool anyPlayer);
    /// Plays a card that the caller knows to be in play.
    void playCardFast(std::uint8_t suit, std::uint16_t card);
    /// As `playCard`, with a suit of -1 or a card of 0 found as `tryDeduceCardDetails` finds it.
    bool tryPlayCard(int suit, std::uint16_t card, bool anyPlayer);
    /// Fills in a suit of -1 and a card of 0; false when they cannot be told.
    ///
    /// The suit is the one to be followed, or else the only one in which the player (at a lead with
    /// `anyPlayer`: anybody) holds the card; the card is the lowest of the suit. A suit that cannot
    /// be told is -1 afterwards. A card given together with its suit is not looked at.
    bool tryDeduceCardDetails(int& suit, std::uint16_t& card, bool anyPlayer) const;

    /// False if nothing was played.
    bool unplayLastCard();
    /// Takes back up to n cards; false if there were fewer.
    bool unplayLastCards(int n);
    /// Takes back the trick on the table, or the last whole one at a lead; false without cards.
    bool unplayLastTrick();

    /// Plays and takes back cards as a text says, word by word.
    ///
    /// A word is a card ("SA", "10h", "K", "S", "Sx", "x", "xS"; what is left out is deduced) or
    /// "u", "ut", "ua": take back the last card, the last trick, all cards. Throws cant_play_card,
    /// unexpected_character or parser_error_msg with the word; what the words before it did stays.
    void doCommands(std::istream& in, bool anyPlayer);
    void doCommands(const char* text, bool anyPlayer);

    // The questions of the base, about the player to play and the trick on the table.

    bool canTake(std::int8_t tricks);
    /// The tricks that the side of the player to play takes, the one on the table included.
    std::int8_t getTricksToTake();
    using DDSolver::analizeAll;
    Move* analizeAll(Move* begin, Move* end);
    void analizeAll(std::array<unsigned, trumpsCount>& tricks);
    using DDSolver::approxAll;
    Move* approxAll(std::int8_t target, Move* begin, Move* end);
    /// The card as a move whose value is still to be found.
    Move generateMove(std::uint8_t suit, std::uint16_t card) const { return {card, suit, 0}; }

    /// Counts the complete tricks that each player won, by `PlayerNumber`; answers `takers`.
    std::int8_t* getTricksTakers(std::int8_t* takers) const;
    /// Writes the cards on the table, each to the entry of who played it; answers `cards`.
    OneCardInSuit* getLastTrickCards(OneCardInSuit* cards) const;

private:
    PlayerNumber holderOf(OneCardInSuit card) const;
    Trick trickOnTable() const { return played.currentTrick(trump); }
    CardsConfiguration candidates(bool anyPlayer) const;
    void unplay();
    void doCommand(const std::string& word, bool anyPlayer);
    void takeBack(const std::string& word);

    PlayedCardsVector played;
    PlayerNumber firstLeader = North;
};

/// Reads one card word at the start of `text`; answers the place behind it, null if there is none.
///
/// What the word leaves out is 0 for the rank and -1 for the suit.
const char* tryParseMove(const char* text, std::uint16_t& card, int& suit);

}  // namespace trikon
