// The methods of `CardSet`, as scripts call them: `C.name(set, ...)` or `set:name(...)`.
//
// Most of them answer the same question of each argument, so they are templates over a plain
// function of one set; the table at the end names them all. No object with a destructor is alive
// where a method raises a Lua error.
#include "lua/card_set.h"
#include "lua/card_set_closure.h"
#include "lua/lua_error.h"

#include <algorithm>
#include <array>
#include <bit>
#include <functional>

namespace trikon {

namespace {

// --- questions about one set ---

constexpr int aceIndex = 12;
constexpr int kingIndex = 11;
constexpr int queenIndex = 10;
constexpr int jackIndex = 9;

// The lowest bit of each suit's 16-bit field: the four twos.
constexpr std::uint64_t twos = 0x0001000100010001;

// One in the field of each suit that holds the rank.
std::uint64_t suitsHolding(CardsConfiguration set, int rankIndex)
{
    return (set >> rankIndex) & twos;
}

// The product adds the four fields up in the topmost one; the sum must stay below 65536.
int sumOfFields(std::uint64_t fields) { return static_cast<int>((fields * twos) >> 48); }

int highCardPoints(CardsConfiguration set)
{
    return sumOfFields(4 * suitsHolding(set, aceIndex) + 3 * suitsHolding(set, kingIndex) +
                       2 * suitsHolding(set, queenIndex) + suitsHolding(set, jackIndex));
}

int controls(CardsConfiguration set)
{
    return sumOfFields(2 * suitsHolding(set, aceIndex) + suitsHolding(set, kingIndex));
}

int cardCount(CardsConfiguration set) { return set.count(); }

template <Trump suit>
int suitLength(CardsConfiguration set)
{
    return set.countInSuit(suit);
}

CardsConfiguration cardsInSuit(CardsConfiguration set, int suitNumber)
{
    return set & (std::uint64_t{fullSuit} << (16 * suitNumber));
}

template <Trump suit>
CardsConfiguration holding(CardsConfiguration set)
{
    return cardsInSuit(set, suit);
}

CardsConfiguration restOfDeck(CardsConfiguration set) { return fullDeck & ~std::uint64_t{set}; }

// The order of cards is that of their bits: clubs from the two up, spades last.
CardsConfiguration lowestCard(CardsConfiguration set) { return set & (0 - std::uint64_t{set}); }

// The card at `position` from 0, or from -1 at the highest card down; empty when there is none.
CardsConfiguration cardAt(CardsConfiguration set, lua_Integer position)
{
    const int count = set.count();
    if (position < 0) {
        position += count;
    }
    if (position < 0 || position >= count) {
        return {};
    }
    for (; position > 0; --position) {
        set ^= lowestCard(set);
    }
    return lowestCard(set);
}

std::array<int, suitsCount> suitLengths(CardsConfiguration set)
{
    return {set.countInSuit(Spades), set.countInSuit(Hearts), set.countInSuit(Diamonds),
            set.countInSuit(Clubs)};
}

bool isBetween(int low, int value, int high) { return low <= value && value <= high; }

bool lengthsAreWithin(CardsConfiguration set, int longestMajor, int longestMinor)
{
    return isBetween(2, set.countInSuit(Spades), longestMajor) &&
           isBetween(2, set.countInSuit(Hearts), longestMajor) &&
           isBetween(2, set.countInSuit(Diamonds), longestMinor) &&
           isBetween(2, set.countInSuit(Clubs), longestMinor);
}

// --- methods over any number of sets ---

// Room for `count` results; a C function has room for a few without asking.
void reserveResults(lua_State* state, int count)
{
    if (count > 1) {
        luaL_checkstack(state, count + LUA_MINSTACK, "too many arguments");
    }
}

// name(set, ...) -> the answer of `question` for each set
template <auto question>
int ofEach(lua_State* state)
{
    const int count = lua_gettop(state);
    reserveResults(state, count);
    for (int index = 1; index <= count; ++index) {
        pushResult(state, question(cardSetArgument(state, index)));
    }
    return count;
}

// name(set, ...) -> one set: `start` combined with each set in turn
template <auto combine, std::uint64_t start>
int ofAll(lua_State* state)
{
    const int count = lua_gettop(state);
    std::uint64_t combined = start;
    for (int index = 1; index <= count; ++index) {
        combined = combine(combined, std::uint64_t{cardSetArgument(state, index)});
    }
    pushResult(state, CardsConfiguration(combined));
    return 1;
}

// --- methods of their own kind ---

// new(value) -> the set written in tostring(value)
int newSet(lua_State* state)
{
    luaL_checkany(state, 1);
    const std::string_view text = pushTextOf(state, 1);
    pushResult(state, CardsConfiguration());
    auto& set = *static_cast<CardsConfiguration*>(lua_touserdata(state, -1));
    raiseWhatThrows(state, [&] { set = readWholeHand(std::string(text)); });
    return 1;
}

// The upvalue is the set of the cards still to come.
int nextCard(lua_State* state)
{
    auto& rest = *static_cast<CardsConfiguration*>(lua_touserdata(state, lua_upvalueindex(1)));
    if (rest.empty()) {
        return 0;
    }
    const CardsConfiguration card = lowestCard(rest);
    pushCardSet(state, card);
    rest ^= card;
    return 1;
}

// cards(set) -> function that answers the cards one by one, lowest first, then nothing
int cards(lua_State* state)
{
    pushResult(state, cardSetArgument(state, 1));
    lua_pushcclosure(state, nextCard, 1);
    return 1;
}

// get(set, selector, ...) -> one set a selector: the card at a position, or the cards of a suit
int get(lua_State* state)
{
    const CardsConfiguration set = cardSetArgument(state, 1);
    const int count = lua_gettop(state);
    reserveResults(state, count);
    for (int index = 2; index <= count; ++index) {
        int isNumber = 0;
        const lua_Integer position = lua_tointegerx(state, index, &isNumber);
        pushResult(state, isNumber != 0 ? cardAt(set, position)
                                        : cardsInSuit(set, luaCheckTrump(state, index, false)));
    }
    return count - 1;
}

// points(set, ace, king, queen, ...) -> number
int points(lua_State* state)
{
    const CardsConfiguration set = cardSetArgument(state, 1);
    const int count = lua_gettop(state);
    std::uint64_t cardsOfRank = twos << aceIndex;
    lua_Number sum = 0;
    for (int index = 2; index <= count; ++index) {
        sum += luaL_checknumber(state, index) * std::popcount(set & cardsOfRank);
        cardsOfRank >>= 1;
    }
    lua_pushnumber(state, sum);
    return 1;
}

// Pushes `lengths`; with a function as second argument answers all that it answers to them.
int answerLengths(lua_State* state, const std::array<int, suitsCount>& lengths)
{
    const bool hasFunction = lua_gettop(state) == 2;
    for (const int length : lengths) {
        pushResult(state, length);
    }
    if (!hasFunction) {
        return suitsCount;
    }
    lua_call(state, suitsCount, LUA_MULTRET);
    return lua_gettop(state) - 1;
}

void checkLengthsArguments(lua_State* state, const char* method)
{
    if (lua_gettop(state) > 2) {
        luaL_error(state, "too many arguments for `%s' function, expected 1 or 2, but got %d",
                   method, lua_gettop(state));
    }
}

// shape(set [, f]) -> lengths of spades, hearts, diamonds, clubs, or the results of f with them
int shape(lua_State* state)
{
    checkLengthsArguments(state, "shape");
    return answerLengths(state, suitLengths(cardSetArgument(state, 1)));
}

// pattern(set [, f]) -> lengths from the longest suit down, or the results of f with them
int pattern(lua_State* state)
{
    checkLengthsArguments(state, "pattern");
    std::array<int, suitsCount> lengths = suitLengths(cardSetArgument(state, 1));
    std::sort(lengths.begin(), lengths.end(), std::greater<>());
    return answerLengths(state, lengths);
}

// Arguments 2 and 3 are the bounds, both included. If both are bad, the upper one is told.
bool pointsAreInRange(lua_State* state, CardsConfiguration set)
{
    const lua_Number max = luaL_checknumber(state, 3);
    const lua_Number min = luaL_checknumber(state, 2);
    const int highCards = highCardPoints(set);
    return min <= highCards && highCards <= max;
}

// hcp_in_range(set, min, max) -> boolean
int hcp_in_range(lua_State* state)
{
    pushResult(state, pointsAreInRange(state, cardSetArgument(state, 1)));
    return 1;
}

// nt(set, min, max) -> boolean; the bounds are looked at only when the shape is right
int nt(lua_State* state)
{
    const CardsConfiguration set = cardSetArgument(state, 1);
    pushResult(state, CardsSet_balanced(set) && pointsAreInRange(state, set));
    return 1;
}

}  // namespace

bool CardsSet_balanced(CardsConfiguration cards)
{
    const auto lengths = suitLengths(cards);
    return lengthsAreWithin(cards, 4, 5) && std::count(lengths.begin(), lengths.end(), 2) != 2;
}

bool CardsSet_semibalanced(CardsConfiguration cards) { return lengthsAreWithin(cards, 5, 6); }

const luaL_Reg cardSetMethods[cardSetMethodsCount + 1] = {
    {"new", newSet},
    {"cards", cards},
    {"count", ofEach<cardCount>},
    {"cardsCount", ofEach<cardCount>},
    {"spades", ofEach<suitLength<Spades>>},
    {"Scount", ofEach<suitLength<Spades>>},
    {"hearts", ofEach<suitLength<Hearts>>},
    {"HCount", ofEach<suitLength<Hearts>>},
    {"diamonds", ofEach<suitLength<Diamonds>>},
    {"DCount", ofEach<suitLength<Diamonds>>},
    {"clubs", ofEach<suitLength<Clubs>>},
    {"CCount", ofEach<suitLength<Clubs>>},
    {"hcp", ofEach<highCardPoints>},
    {"miltons", ofEach<highCardPoints>},
    {"controls", ofEach<controls>},
    {"S", ofEach<holding<Spades>>},
    {"H", ofEach<holding<Hearts>>},
    {"D", ofEach<holding<Diamonds>>},
    {"C", ofEach<holding<Clubs>>},
    {"get", get},
    {"union", ofAll<std::bit_or<>{}, 0>},
    {"product", ofAll<std::bit_and<>{}, fullDeck>},
    {"xor", ofAll<std::bit_xor<>{}, 0>},
    {"complement", ofEach<restOfDeck>},
    {"points", points},
    {"shape", shape},
    {"pattern", pattern},
    {"balanced", ofEach<CardsSet_balanced>},
    {"semiBalanced", ofEach<CardsSet_semibalanced>},
    {"hcp_in_range", hcp_in_range},
    {"nt", nt},
    {nullptr, nullptr},
};

}  // namespace trikon
