// Deals from text with their tables worked out.
//
// The tables cost more than the reading, so they are worked out once, for a deal that was read to
// its end. What the sides hold is emptied first: a deal that cannot be read keeps nothing of the
// one before it.
#include "solver/deal.h"

#include <istream>

namespace trikon {

std::istream& Deal::readNextPlayer(std::istream& in, const char* order, bool completeLast,
                                   bool lineBounded)
{
    const int place = Hands::readNextPlayer(in, order, completeLast, lineBounded);
    if (place == playersCount - 1) {
        initHelpers();
    }
    return in;
}

std::istream& Deal::readAllPlayers(std::istream& in, const char* order, bool completeLast,
                                   bool lineBounded)
{
    clear();
    while (nextPlayerToRead(order) != NoPlayer) {
        readNextPlayer(in, order, completeLast, lineBounded);
    }
    return in;
}

std::istream& Deal::readMixedDirectionHands(std::istream& in, bool completeLast, bool retryFirst)
{
    clear();
    Hands::readMixedDirectionHands(in, completeLast, retryFirst);
    initHelpers();
    return in;
}

std::istream& Deal::readAllHandsFromPBNLike(std::istream& in)
{
    clear();
    Hands::readAllHandsFromPBNLike(in);
    initHelpers();
    return in;
}

PlayerNumber Deal::readFromBBOLIN(const char* text)
{
    clear();
    const PlayerNumber dealer = Hands::readFromBBOLIN(text);
    initHelpers();
    return dealer;
}

PlayerNumber Deal::readFromBBOLIN(std::istream& in)
{
    clear();
    const PlayerNumber dealer = Hands::readFromBBOLIN(in);
    initHelpers();
    return dealer;
}

std::istream& operator>>(std::istream& in, Deal& deal)
{
    return deal.readAllPlayers(in, "NESW", true, false);
}

}  // namespace trikon
