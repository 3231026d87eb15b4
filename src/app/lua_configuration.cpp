// Settings from the script's global `conf`.
//
// Nothing here runs under a protected call but `conf` itself, so fields are read without
// metamethods: an error raised by one would end the process.
#include "app/configuration.h"
#include "app/whole_number.h"
#include "cards/translation.h"
#include "lua/lua_error.h"

#include <lua.hpp>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>

namespace trikon {

namespace {

// Pushes the field `key` of the table at `table`; false, with nil pushed, if there is none.
bool pushField(lua_State* state, int table, const char* key)
{
    lua_pushvalue(state, table);
    lua_pushstring(state, key);
    lua_rawget(state, -2);
    return !lua_isnil(state, -1);
}

std::optional<std::string> stringField(lua_State* state, int table, const char* key)
{
    const StackGuard restoresStack(state, lua_gettop(state));
    if (!pushField(state, table, key)) {
        return std::nullopt;
    }
    std::size_t length = 0;
    const char* text = lua_tolstring(state, -1, &length);
    if (text == nullptr) {
        throw std::runtime_error(translate(
            "Error in configuration: \"%1%\" has wrong type, string is required.", {key}));
    }
    return std::string(text, length);
}

[[noreturn]] void throwNotInteger(const char* key)
{
    throw std::runtime_error(
        translate("Error in configuration: \"%1%\" has wrong type, integer is required.", {key}));
}

// A number, cut to an integer toward zero; one outside of the limits counts as none.
std::optional<double> integerField(lua_State* state, int table, const char* key, double minimum,
                                   double maximum)
{
    const StackGuard restoresStack(state, lua_gettop(state));
    if (!pushField(state, table, key)) {
        return std::nullopt;
    }
    int isNumber = 0;
    const double whole = std::trunc(lua_tonumberx(state, -1, &isNumber));
    if (isNumber == 0 || !(whole >= minimum && whole <= maximum)) {
        throwNotInteger(key);
    }
    return whole;
}

// A number that is cut to an integer and must not be negative.
std::optional<std::uint64_t> countField(lua_State* state, int table, const char* key,
                                        std::int64_t maximum)
{
    const std::optional<double> value = integerField(
        state, table, key, -std::numeric_limits<double>::infinity(), static_cast<double>(maximum));
    if (value && *value < 0) {
        throw std::runtime_error(
            translate("Error in configuration: \"%1%\" can't be negative.", {key}));
    }
    return value ? std::optional(static_cast<std::uint64_t>(*value)) : std::nullopt;
}

// A number of 64 bits. Lua's own numbers hold 53 of them, so all 64 are written as a string.
std::optional<std::uint64_t> wordField(lua_State* state, int table, const char* key)
{
    constexpr std::int64_t mostExact = (std::int64_t{1} << 53) - 1;
    const StackGuard restoresStack(state, lua_gettop(state));
    pushField(state, table, key);
    if (lua_type(state, -1) != LUA_TSTRING) {
        return countField(state, table, key, mostExact);
    }
    const std::optional<std::uint64_t> number = wholeNumber(lua_tostring(state, -1));
    if (!number) {
        throwNotInteger(key);
    }
    return number;
}

// Pushes the table that `conf` is or returns; false when there is no `conf`.
bool pushConf(lua_State* state)
{
    lua_pushglobaltable(state);
    if (!pushField(state, lua_gettop(state), "conf")) {
        return false;
    }
    if (lua_isfunction(state, -1) && lua_pcall(state, 0, 1, 0) != LUA_OK) {
        velka::throw_exception_from_lua<std::runtime_error>(state);
    }
    if (!lua_istable(state, -1)) {
        throw std::runtime_error(
            translate("Error while reading configuration from lua script: \"conf\" must be a table "
                      "or function that returns a table."));
    }
    return true;
}

}  // namespace

bool Configuration::load_hand_from_lua_table(lua_State* state, PlayerNumber player, const char* key,
                                             int table)
{
    const std::optional<std::string> text = stringField(state, table, key);
    if (text) {
        fixedHands[player] = readWholeHand(*text);
    }
    return text.has_value();
}

void Configuration::load_from_lua_conf(lua_State* state)
{
    const CollectorPause pause(state);
    const StackGuard restoresStack(state, lua_gettop(state));
    if (!pushConf(state)) {
        return;
    }
    const int conf = lua_gettop(state);
    load_hand_from_lua_table(state, North, "N", conf);
    load_hand_from_lua_table(state, East, "E", conf);
    load_hand_from_lua_table(state, South, "S", conf);
    load_hand_from_lua_table(state, West, "W", conf);
    fixedHands.ensureIsValid();
    if (const auto jobs = integerField(state, conf, "jobs", std::numeric_limits<int>::min(),
                                       std::numeric_limits<int>::max())) {
        set_threads_count(static_cast<int>(*jobs));
    }
    if (const auto num =
            countField(state, conf, "num", std::numeric_limits<std::uint32_t>::max())) {
        handsCount = static_cast<std::uint32_t>(*num);
        findAll = false;
    }
    if (const auto number = wordField(state, conf, "seed")) {
        seed = number;
    }
    if (const auto format = stringField(state, conf, "format")) {
        printFunction = str_to_print_f(*format);
    }
}

}  // namespace trikon
