// All settings of a run: the command line first, then the script's `conf`, key by key.
//
// Filled once before any deal is made and only read afterwards, by all workers.
#pragma once

#include "app/deal_formats.h"
#include "cards/hands.h"
#include "cards/players_and_trumps.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

struct lua_State;

namespace trikon {

class Configuration {
public:
    /// The top bit alone: set in the counter of deals, it ends them all.
    static constexpr unsigned long noDeal = 1UL << 63;
    static constexpr const char* standardInput = "-";

    std::int32_t threadsCount = 1;
    /// How many deals to print.
    std::uint32_t handsCount = 10;
    /// Whether every deal is asked for that comes before another bound ends the run.
    bool findAll = false;
    /// With a seed each deal follows from the seed and the deal's number alone.
    std::optional<std::uint64_t> seed;
    /// The number of the first deal and the one behind the last; from `noDeal` up none is dealt.
    unsigned long firstDeal = 0;
    unsigned long endOfDeals = noDeal;
    bool showStatistics = true;
    bool showRemarks = true;
    /// Where to write the result for other programs.
    std::optional<std::string> summaryFileName;
    /// Whether the files named are such results, to be merged, and nothing is dealt.
    bool merge = false;
    /// Whether to tell the seed and the progress on standard error.
    bool verbose = false;
    /// Seconds that dealing may take.
    std::optional<double> timeLimit;
    /// The scripts in their order; `standardInput` stands for what was read from there.
    std::vector<std::string> scriptFileNames;
    /// The texts of those scripts that can be read but once, standard input and pipes, by name.
    std::map<std::string, std::string> textsReadOnce;
    /// Texts that replace the scripts' functions of these names.
    std::optional<std::string> filter;
    std::optional<std::string> stats;
    /// The cards that every deal gives to each hand.
    Hands fixedHands;
    PrintFormat printFunction = nullptr;

    /// A count of `n` below 1 is taken from the number of processor cores: 0 all, -1 all but one.
    void set_threads_count(int n);

    bool hasScript() const { return !scriptFileNames.empty() || filter || stats; }

    /// Reads the command line, and standard input if it is a script; false when it is wrong, after
    /// saying so on standard error.
    ///
    /// What the command-line library itself finds wrong, and --help and --version, end the process.
    bool process_cmdl(int argc, const char* const* argv);

    /// Applies the global `conf` of a script, a table or a function that returns one.
    ///
    /// Throws std::runtime_error, or parser_error for a hand. The Lua stack is left as it was.
    void load_from_lua_conf(lua_State* state);

    /// Reads the hand `key` of the table at `table` into `player`'s fixed cards; false for nil.
    bool load_hand_from_lua_table(lua_State* state, PlayerNumber player, const char* key,
                                  int table);
};

}  // namespace trikon
