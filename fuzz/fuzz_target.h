// What the targets of the fuzzer share: their entry, and how they tell a fault from a bad text.
//
// A target hands one text to a reader in every way there is. The reader takes it or throws one of
// its documented errors; what it takes must then hold what the reader promises. Anything else - a
// crash, a leak, a hang, another exception, a broken promise - ends the program, and the fuzzer
// keeps the text.
#pragma once

#include "cards/parser_error.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

/// Tries one text; called by the fuzzer, or by replay.cpp for the files of a corpus.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,  // NOLINT(*-identifier-naming)
                                      std::size_t size);

namespace trikon {

inline std::string textOf(const std::uint8_t* data, std::size_t size)
{
    return std::string(data, data + size);
}

/// Ends the program when a promise is broken.
inline void require(bool holds, const char* promise)
{
    if (!holds) {
        std::fprintf(stderr, "Broken: %s\n", promise);
        std::abort();
    }
}

/// Whether `read()` takes its text; false for a parser_error. Other exceptions pass.
template <class Read>
bool readsWell(const Read& read)
{
    try {
        read();
        return true;
    } catch (const parser_error& error) {
        require(std::string_view(error.what()).starts_with("Error"), "an error has its text");
        return false;
    }
}

}  // namespace trikon
