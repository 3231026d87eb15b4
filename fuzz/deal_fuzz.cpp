// Whole deals, with every reader in turn.
#include "cards/hands.h"
#include "fuzz_target.h"

#include <sstream>
#include <stdexcept>

namespace {

using namespace trikon;

enum class Lengths { any, equal };

// The checks of a whole deal throw nothing but a runtime error.
template <class Check>
bool passes(const Check& check)
{
    try {
        check();
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

void requireSoundDeal(const Hands& hands, Lengths lengths)
{
    int cards = 0;
    for (int player = North; player <= West; ++player) {
        cards += hands[player].count();
    }
    require((hands.allCards() & ~fullDeck) == 0, "a deal has only cards of the deck");
    require(cards == hands.allCards().count(), "no card is in two hands");
    const bool isValid = passes([&] { hands.ensureIsValid(); });
    const bool isEqual = passes([&] { hands.ensureEqualLengths(); });
    require(isEqual == hands.handsHaveEqualLengths(), "both checks of lengths agree");
    require(lengths == Lengths::any || (isEqual && isValid), "the hands are equally long");
}

void requireRoundTrips(const Hands& hands)
{
    std::istringstream pbn(hands.toPBNString(East, fullDeck));
    Hands back;
    back.readFromPBN(pbn);
    require(back == hands, "written PBN is read back");
    if (hands.handsHaveEqualLengths()) {
        std::istringstream diagram(hands.toString());
        back.readMixedDirectionHands(diagram, false, false);
        require(back == hands, "a diagram is read back");
    }
}

template <class Read>
void tryReader(const std::string& text, Lengths lengths, const Read& read)
{
    std::istringstream in(text);
    Hands hands;
    if (readsWell([&] { read(hands, in); })) {
        requireSoundDeal(hands, lengths);
        requireRoundTrips(hands);
    }
}

void readWithSwitches(const std::string& text, bool completeLast, bool other)
{
    tryReader(text, Lengths::equal, [&](Hands& hands, std::istream& in) {
        hands.readAllPlayers(in, completeLast ? "NESW" : "WNES", completeLast, other);
    });
    tryReader(text, Lengths::any, [&](Hands& hands, std::istream& in) {
        hands.readMixedDirectionHands(in, completeLast, other);
    });
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text = textOf(data, size);
    for (const bool completeLast : {false, true}) {
        readWithSwitches(text, completeLast, false);
        readWithSwitches(text, completeLast, true);
    }
    tryReader(text, Lengths::any, [](Hands& hands, std::istream& in) { hands.readFromPBN(in); });
    tryReader(text, Lengths::equal,
              [](Hands& hands, std::istream& in) { hands.readAllHandsFromPBNLike(in); });
    tryReader(text, Lengths::equal,
              [](Hands& hands, std::istream& in) { hands.readFromBBOLIN(in); });
    tryReader(text, Lengths::equal,
              [&](Hands& hands, std::istream&) { hands.readFromBBOLIN(text.c_str()); });
    return 0;
}
