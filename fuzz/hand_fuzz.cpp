// One hand, with all switches of its reader, and as the whole of a text.
#include "cards/cards_configuration.h"
#include "fuzz_target.h"

namespace {

using namespace trikon;

constexpr std::uint64_t everyOtherCard = fullDeck & 0x5555'5555'5555'5555;

void readWithSwitches(const std::string& text, CardsConfiguration forbidden, unsigned switches)
{
    CardsConfiguration hand;
    const bool dots = (switches & 1) != 0;
    const bool lineBounded = (switches & 2) != 0;
    const bool prePost = (switches & 4) != 0;
    if (readsWell([&] { hand.readDealHand(text, forbidden, dots, lineBounded, prePost); })) {
        require((hand & ~(fullDeck & ~forbidden)) == 0, "a hand has only cards that are left");
    }
}

void readWhole(const std::string& text)
{
    CardsConfiguration hand;
    if (!readsWell([&] { hand = readWholeHand(text); })) {
        return;
    }
    for (const std::string& written : {hand.str(false), hand.str(true), hand.str_prefixed()}) {
        require(written.empty() || readWholeHand(written) == hand, "a written hand is read back");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text = textOf(data, size);
    for (unsigned switches = 0; switches < 8; ++switches) {
        readWithSwitches(text, CardsConfiguration(), switches);
        readWithSwitches(text, everyOtherCard, switches);
    }
    readWhole(text);
    return 0;
}
