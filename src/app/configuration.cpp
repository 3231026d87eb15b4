// The command line: what the options are, and how they are read into the configuration.
//
// By itself the library takes an unknown option for a script file, and "-1" for a count of four
// thousand million. Both are made errors here by means that it offers: a constraint on script names
// and value types of our own.
#include "app/configuration.h"

#include "app/option_values.h"
#include "cards/translation.h"

#include <tclap/CmdLine.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iostream>
#include <iterator>
#include <limits>
#include <map>
#include <string_view>
#include <thread>

namespace trikon {

namespace {

constexpr const char* programVersion = "16.10.0";
constexpr const char* noFixedCards = "...";

class ScriptNameConstraint : public TCLAP::Constraint<std::string> {
public:
    std::string description() const override
    {
        return translate("no such option, and a file name must not begin with \"-\"");
    }
    std::string shortID() const override { return translate("file name"); }
    bool check(const std::string& name) const override
    {
        return name.empty() || name[0] != '-' || name == Configuration::standardInput;
    }
};

// The options as the library knows them. Each needs a help text of its own: the library compares
// arguments by it.
struct Options {
    TCLAP::CmdLine commandLine{
        translate("Deals random bridge hands that Lua scripts choose, and counts what they do."),
        ' ', programVersion};
    TCLAP::ValueArg<int> jobs{
        "j",
        "jobs",
        translate("Number of threads to use (by default equals to number of available CPU cores). "
                  "If argument is non-positive, it will be increased by number of available CPU "
                  "cores (0 to use all cores, -1 to use all cores except one)."),
        false,
        0,
        translate("number of threads"),
        commandLine};
    TCLAP::ValueArg<DealsCount> num{"n",
                                    "num",
                                    translate("Number of hands to deal (10 by default)."),
                                    false,
                                    DealsCount{{10}},
                                    translate("number of hands"),
                                    commandLine};
    TCLAP::ValueArg<std::string> north{
        "N",     "north",    translate("Fixed cards in NORTH hand."), false, noFixedCards,
        "cards", commandLine};
    TCLAP::ValueArg<std::string> east{
        "E",     "east",     translate("Fixed cards in EAST hand."), false, noFixedCards,
        "cards", commandLine};
    TCLAP::ValueArg<std::string> south{
        "S",     "south",    translate("Fixed cards in SOUTH hand."), false, noFixedCards,
        "cards", commandLine};
    TCLAP::ValueArg<std::string> west{
        "W",     "west",     translate("Fixed cards in WEST hand."), false, noFixedCards,
        "cards", commandLine};
    std::vector<std::string> formatNames{"none", "NESW", "short", "full", "PBN"};
    TCLAP::ValuesConstraint<std::string> formatConstraint{formatNames};
    TCLAP::ValueArg<std::string> format{
        "f",
        "format",
        translate("Output format, one of: none (don't print), NESW, short (used by default), full, "
                  "PBN."),
        false,
        "short",
        &formatConstraint,
        commandLine};
    TCLAP::SwitchArg noStatistics{
        "s", "nostats", translate("Don't print statistics for individual deals."), commandLine};
    TCLAP::SwitchArg noRemarks{
        "r", "noremarks", translate("Don't print remarks provided by calls of remark function."),
        commandLine};
    TCLAP::ValueArg<Seed> seed{
        "",
        "seed",
        translate("Makes the run repeatable: the same seed gives the same deals, with any number "
                  "of threads."),
        false,
        Seed(),
        translate("number"),
        commandLine};
    TCLAP::ValueArg<DealNumber> first{
        "",
        "first",
        translate("With a seed: the number of the first deal, 0 by default. Parts of one run are "
                  "made by --first and --max."),
        false,
        DealNumber(),
        translate("number"),
        commandLine};
    TCLAP::ValueArg<DealNumber> max{
        "",         "max",        translate("Number of hands to deal at most."),
        false,      DealNumber(), translate("number of hands"),
        commandLine};
    TCLAP::ValueArg<Seconds> time{
        "",         "time",    translate("Number of seconds to deal at most."),
        false,      Seconds(), translate("seconds"),
        commandLine};
    TCLAP::SwitchArg verbose{
        "", "verbose", translate("Tell the seed and the progress on standard error."), commandLine};
    TCLAP::ValueArg<std::string> filter{
        "",
        "filter",
        translate("Lua expression or function body that decides whether a deal counts, in place of "
                  "the scripts' function filter."),
        false,
        "",
        "Lua",
        commandLine};
    TCLAP::ValueArg<std::string> stats{
        "",
        "stats",
        translate("Lua expression or function body that is run for each deal that counts, in place "
                  "of the scripts' function stats."),
        false,
        "",
        "Lua",
        commandLine};
    TCLAP::ValueArg<std::string> summary{
        "",
        "summary",
        translate("File that gets the totals and what belongs to them, as JSON."),
        false,
        "",
        translate("file name"),
        commandLine};
    TCLAP::SwitchArg merge{
        "", "merge",
        translate("Deal nothing: the files are summaries of the parts of a job, whose totals are "
                  "printed together."),
        commandLine};
    ScriptNameConstraint scriptNameConstraint;
    TCLAP::UnlabeledMultiArg<std::string> scriptFileNames{
        "scriptFileNames", translate("Files with lua scripts."), false, &scriptNameConstraint,
        commandLine};
};

// "-fPBN", "--jobs=3" and "-xyz": the library would look for switches among the letters behind the
// dash, and might find -h.
bool isNoOption(std::string_view argument)
{
    if (argument.starts_with("--")) {
        return argument.find('=') != std::string_view::npos;
    }
    return argument.size() > 2 && argument[0] == '-' &&
           argument.find_first_not_of("srh", 1) != std::string_view::npos;
}

bool isOneOf(std::initializer_list<const TCLAP::Arg*> known, const std::string& argument)
{
    return std::ranges::any_of(
        known, [&](const TCLAP::Arg* option) { return option->argMatches(argument); });
}

bool takesNumber(const Options& options, const std::string& argument)
{
    return isOneOf(
        {&options.jobs, &options.num, &options.seed, &options.first, &options.max, &options.time},
        argument);
}

bool takesText(const Options& options, const std::string& argument)
{
    return isOneOf({&options.north, &options.east, &options.south, &options.west, &options.format,
                    &options.filter, &options.stats, &options.summary},
                   argument);
}

// Ends the process by the library's own error path.
void endWithUsage(Options& options, const char* program, const std::string& argument,
                  const std::string& message)
{
    options.commandLine.getProgramName() = program;  // the library learns it later
    TCLAP::CmdLineParseException error(message, argument);
    try {
        options.commandLine.getOutput()->failure(options.commandLine, error);
    } catch (const TCLAP::ExitException& exit) {
        std::exit(exit.getExitStatus());
    }
}

// Ends the process at the first argument that is no option, or a number without a digit, which the
// library would take for the default.
void rejectOddOptions(Options& options, int argc, const char* const* argv)
{
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (takesText(options, argument)) {
            ++i;  // the value may look like anything
        } else if (takesNumber(options, argument)) {
            ++i;
            if (i < argc && *argv[i] == '\0') {
                endWithUsage(options, argv[0], argument, translate("a number is missing"));
            }
        } else if (isNoOption(argument)) {
            endWithUsage(
                options, argv[0], argument,
                translate("no such option; a blank stands between an option and its value"));
        }
    }
}

std::optional<std::string> valueIfSet(const TCLAP::ValueArg<std::string>& option)
{
    return option.isSet() ? std::optional(option.getValue()) : std::nullopt;
}

// What to deal, and how much.
void takeBounds(const Options& options, Configuration& configuration)
{
    const DealsCount& num = options.num.getValue();
    configuration.findAll = num.all;
    configuration.handsCount =
        static_cast<std::uint32_t>(num.all ? DealsCount::most : num.number.value);
    if (options.seed.isSet()) {
        configuration.seed = options.seed.getValue().value;
    }
    configuration.firstDeal = options.first.getValue().value;
    if (options.max.isSet()) {
        configuration.endOfDeals =
            std::min(Configuration::noDeal, configuration.firstDeal + options.max.getValue().value);
    }
    if (options.time.isSet()) {
        configuration.timeLimit = options.time.getValue().value;
    }
}

std::string readAll(std::istream& in)
{
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The scripts that can be read only once, though every worker loads them: standard input and pipes.
std::map<std::string, std::string> readOnce(const std::vector<std::string>& scriptFileNames)
{
    std::map<std::string, std::string> texts;
    for (const std::string& name : scriptFileNames) {
        std::error_code ignored;
        if (name == Configuration::standardInput) {
            texts.try_emplace(name, readAll(std::cin));
        } else if (std::filesystem::exists(name, ignored) &&
                   std::filesystem::is_other(name, ignored)) {
            std::ifstream in(name);
            texts.try_emplace(name, readAll(in));
        }
    }
    return texts;
}

}  // namespace

void Configuration::set_threads_count(int n)
{
    if (n < 1) {
        const unsigned cores = std::max(1U, std::thread::hardware_concurrency());
        n = std::max(1, n + static_cast<int>(cores));
    }
    threadsCount = n;
}

bool Configuration::process_cmdl(int argc, const char* const* argv)
{
    try {
        Options options;
        rejectOddOptions(options, argc, argv);
        options.commandLine.parse(argc, argv);
        set_threads_count(options.jobs.getValue());
        takeBounds(options, *this);
        scriptFileNames = options.scriptFileNames.getValue();
        textsReadOnce = readOnce(scriptFileNames);
        filter = valueIfSet(options.filter);
        stats = valueIfSet(options.stats);
        fixedHands =
            Hands(readWholeHand(options.north.getValue()), readWholeHand(options.east.getValue()),
                  readWholeHand(options.south.getValue()), readWholeHand(options.west.getValue()));
        fixedHands.ensureIsValid();
        printFunction = str_to_print_f(options.format.getValue());
        showStatistics = !options.noStatistics.getValue();
        showRemarks = !options.noRemarks.getValue();
        summaryFileName = valueIfSet(options.summary);
        merge = options.merge.getValue();
        verbose = options.verbose.getValue();
        return true;
    } catch (const TCLAP::ArgException& error) {
        std::cerr << "error: " << error.error() << " for arg " << error.argId() << std::endl;
    } catch (const std::exception& error) {
        std::cerr << "error: " << error.what() << std::endl;
    }
    return false;
}

}  // namespace trikon
