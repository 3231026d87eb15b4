// The border between C++ exceptions and Lua errors, in both directions.
//
// Lua raises an error with a long jump: it passes over C++ frames without running a destructor, and
// a C++ exception must not pass through a frame of Lua. So a function called by Lua first reads its
// arguments, does what may throw within `raiseWhatThrows`, and keeps no object that has a
// destructor across any call that may raise. A caller of Lua turns a failed protected call into an
// exception with `velka::throw_exception_from_lua`.
#pragma once

#include <lua.hpp>

#include <cstddef>
#include <exception>
#include <string>
#include <string_view>
#include <type_traits>

namespace trikon {

/// Sets the height of a Lua stack when the scope ends, also when it ends by an exception.
class StackGuard {
public:
    /// `height` is at most the stack's height at the end of the scope.
    StackGuard(lua_State* state, int height) : state(state), height(height) {}
    StackGuard(const StackGuard&) = delete;
    StackGuard& operator=(const StackGuard&) = delete;
    ~StackGuard() { lua_settop(state, height); }

private:
    lua_State* state;
    int height;
};

/// Keeps the collector from running in a scope that no protected call surrounds.
///
/// A script's finalisers would run there, and an error of theirs would end the process.
class CollectorPause {
public:
    explicit CollectorPause(lua_State* state)
        : state(state), wasRunning(lua_gc(state, LUA_GCISRUNNING, 0) != 0)
    {
        lua_gc(state, LUA_GCSTOP, 0);
    }
    CollectorPause(const CollectorPause&) = delete;
    CollectorPause& operator=(const CollectorPause&) = delete;
    ~CollectorPause()
    {
        if (wasRunning) {
            lua_gc(state, LUA_GCRESTART, 0);
        }
    }

private:
    lua_State* state;
    bool wasRunning;
};

/// The text of the error value on top of the stack, which stays there.
///
/// A value that is neither string nor number has no text of its own: a table is told as "(error
/// object is a table value)".
std::string errorText(lua_State* state);

/// Pushes the text of the value at `index` as Lua's `tostring` gives it and answers it.
///
/// The characters belong to the pushed value. Raises a Lua error when a `__tostring` metamethod
/// raises one or gives no text. Takes two slots of the stack while it runs.
std::string_view pushTextOf(lua_State* state, int index);

/// Runs `work()`; an exception that leaves it becomes a Lua error with the exception's text.
///
/// The error has no "file:line:" in front. `work` must not call what may raise a Lua error, and the
/// caller must not hold an object with a destructor. Takes two slots of the stack.
template <class Work>
void raiseWhatThrows(lua_State* state, const Work& work);

// --- inline definitions ---

inline std::string errorText(lua_State* state)
{
    if (const char* text = lua_tostring(state, -1)) {
        return text;
    }
    return std::string("(error object is a ") + luaL_typename(state, -1) + " value)";
}

inline std::string_view pushTextOf(lua_State* state, int index)
{
    std::size_t length = 0;
    const char* text = luaL_tolstring(state, index, &length);
    if (text == nullptr) {
        luaL_error(state, "'__tostring' must return a string");
    }
    return {text, length};
}

/// Pushes `text`, or Lua's own error value when memory ends; never raises.
inline void pushErrorText(lua_State* state, const char* text)
{
    lua_pushcfunction(state, [](lua_State* inner) {
        lua_pushstring(inner, static_cast<const char*>(lua_touserdata(inner, 1)));
        return 1;
    });
    lua_pushlightuserdata(state, const_cast<char*>(text));
    lua_pcall(state, 1, 1, 0);
}

/// Whether `work()` ends without an exception; else the exception's text is pushed.
template <class Work>
bool endsWell(lua_State* state, const Work& work)
{
    try {
        work();
        return true;
    } catch (const std::exception& error) {
        pushErrorText(state, error.what());
    } catch (...) {
        pushErrorText(state, "unknown error");
    }
    return false;
}

template <class Work>
void raiseWhatThrows(lua_State* state, const Work& work)
{
    static_assert(std::is_trivially_destructible_v<Work>, "a Lua error would skip its destructor");
    if (!endsWell(state, work)) {
        lua_error(state);
    }
}

}  // namespace trikon

namespace velka {

/// Throws an `E` with the text of the error value on top of the stack, and pops that value.
template <class E>
[[noreturn]] void throw_exception_from_lua(lua_State* state)
{
    const trikon::StackGuard popsTheValue(state, lua_gettop(state) - 1);
    throw E(trikon::errorText(state));
}

}  // namespace velka
