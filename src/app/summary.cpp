// Numbers that JSON does not know, infinities and what is no number, are written as strings.
#include "app/summary.h"

#include "cards/translation.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace trikon {

namespace {

using Json = nlohmann::ordered_json;

constexpr int formatVersion = 1;

// --- numbers and counters ---

Json numberToJson(double number)
{
    return std::isfinite(number) ? Json(number) : Json(std::to_string(number));
}

double numberOfJson(const Json& json)
{
    return json.is_string() ? std::strtod(json.get<std::string>().c_str(), nullptr)
                            : json.get<double>();
}

// The deviation is that of a sample, with the divisor n - 1. Unlike the printed one it cuts nothing
// to whole numbers. A single value has none.
Json counterToJson(const Counter& counter)
{
    const Counter::State state = counter.state();
    const double count = state.count;
    double variance = (state.squares - state.sum * state.sum / count) / (count - 1);
    if (variance < 0) {
        variance = 0;  // rounding; what is no number stays so
    }
    const bool hasDeviation = state.count > 1;
    return {{"count", state.count},
            {"sum", numberToJson(state.sum)},
            {"sum_of_squares", numberToJson(state.squares)},
            {"mean", numberToJson(counter.mean())},
            {"minimum", numberToJson(state.min)},
            {"maximum", numberToJson(state.max)},
            {"standard_deviation", hasDeviation ? numberToJson(std::sqrt(variance)) : Json()},
            {"standard_error", hasDeviation ? numberToJson(std::sqrt(variance / count)) : Json()},
            {"sum_rounding", numberToJson(state.sumCompensation)},
            {"sum_of_squares_rounding", numberToJson(state.squaresCompensation)}};
}

Counter counterOfJson(const Json& json)
{
    return Counter({numberOfJson(json.at("sum")), numberOfJson(json.at("sum_rounding")),
                    numberOfJson(json.at("sum_of_squares")),
                    numberOfJson(json.at("sum_of_squares_rounding")),
                    numberOfJson(json.at("minimum")), numberOfJson(json.at("maximum")),
                    json.at("count").get<std::uint32_t>()});
}

// --- a run ---

template <class Value>
Json jsonOf(const std::optional<Value>& value)
{
    return value ? Json(*value) : Json();
}

// What makes two runs parts of one job, but for the seed.
Json jobToJson(const Configuration& configuration)
{
    Json fixed;
    for (const PlayerNumber player : {North, East, South, West}) {
        fixed[std::string(1, playerToChar(player))] = str_contat(configuration.fixedHands[player]);
    }
    return {{"scripts", configuration.scriptFileNames},
            {"filter", jsonOf(configuration.filter)},
            {"stats", jsonOf(configuration.stats)},
            {"fixed", fixed}};
}

Json boundsToJson(const Configuration& configuration)
{
    Json bounds;
    bounds["num"] = configuration.findAll ? Json("all") : Json(configuration.handsCount);
    bounds["max"] = configuration.endOfDeals == Configuration::noDeal
                        ? Json()
                        : Json(configuration.endOfDeals - configuration.firstDeal);
    bounds["time"] = jsonOf(configuration.timeLimit);
    return bounds;
}

std::string summaryText(const Configuration& configuration, const RunReport& report,
                        const NamedCounters& totals)
{
    Json counters = Json::object();
    for (const auto& [name, counter] : totals) {
        counters[name] = counterToJson(counter);
    }
    const Json summary{{"tamrel_summary", formatVersion},
                       {"seed", jsonOf(configuration.seed)},
                       {"first", configuration.firstDeal},
                       {"dealt", report.dealt},
                       {"accepted", report.found},
                       {"given_up", report.givenUp},
                       {"job", jobToJson(configuration)},
                       {"bounds", boundsToJson(configuration)},
                       {"threads", report.threads},
                       {"processor_time", report.processorTime},
                       {"totals", counters}};
    return summary.dump(2) + '\n';
}

[[noreturn]] void throwCantWrite(const std::string& fileName, const char* reason)
{
    throw std::runtime_error(translate("Can't write \"%1%\": %2%.", {fileName, reason}));
}

// --- merging ---

struct Part {
    std::string fileName;
    Json summary;

    std::uint64_t first() const { return summary.at("first").get<std::uint64_t>(); }
    std::uint64_t dealt() const { return summary.at("dealt").get<std::uint64_t>(); }
    const Json& seed() const { return summary.at("seed"); }
};

[[noreturn]] void throwCantRead(const std::string& fileName, const std::string& reason)
{
    throw std::runtime_error(translate("Can't read \"%1%\": %2%.", {fileName, reason}));
}

Part readPart(const std::string& fileName)
{
    std::ifstream file(fileName);
    if (!file) {
        throwCantRead(fileName, std::strerror(errno));
    }
    Json summary = Json::parse(file, nullptr, false);
    if (!summary.is_object() || summary.value("tamrel_summary", 0) != formatVersion) {
        throwCantRead(fileName, translate("it is no summary of tamrel"));
    }
    return {fileName, std::move(summary)};
}

// Expects the parts in the order of their seeds and first deals.
void ensureFitTogether(const std::vector<Part>& parts)
{
    for (auto part = std::next(parts.begin()); part != parts.end(); ++part) {
        const Part& before = *std::prev(part);
        if (part->summary.at("job") != before.summary.at("job")) {
            throw std::runtime_error(
                translate("\"%1%\" and \"%2%\" are not of one job: scripts, filter, stats or fixed "
                          "cards differ.",
                          {before.fileName, part->fileName}));
        }
        if (!part->seed().is_null() && part->seed() == before.seed() &&
            part->first() < before.first() + before.dealt()) {
            throw std::runtime_error(translate("\"%1%\" and \"%2%\" hold the same deals.",
                                               {before.fileName, part->fileName}));
        }
    }
}

void addPart(const Part& part, RunReport& report, NamedCounters& totals)
{
    report.dealt += part.dealt();
    report.processorTime += part.summary.at("processor_time").get<double>();
    report.threads += part.summary.at("threads").get<int>();
    for (const auto& [name, counter] : part.summary.at("totals").items()) {
        totals[name].add(counterOfJson(counter));
    }
}

}  // namespace

void prepareSummary(const std::string& fileName)
{
    if (!std::ofstream(fileName)) {
        throwCantWrite(fileName, std::strerror(errno));
    }
}

void writeSummary(const std::string& fileName, const Configuration& configuration,
                  const RunReport& report, const NamedCounters& totals)
{
    std::string text;
    try {
        text = summaryText(configuration, report, totals);
    } catch (const Json::type_error&) {
        throwCantWrite(fileName, translate("a name in it is not UTF-8 text").c_str());
    }
    errno = 0;
    std::ofstream file(fileName);
    file << text << std::flush;
    if (!file) {
        throwCantWrite(fileName, std::strerror(errno));
    }
}

void mergeSummaries(const std::vector<std::string>& fileNames)
{
    if (fileNames.empty()) {
        throw std::runtime_error(translate("--merge needs the summary files of the parts."));
    }
    std::vector<Part> parts;
    parts.reserve(fileNames.size());
    for (const std::string& fileName : fileNames) {
        parts.push_back(readPart(fileName));
    }
    RunReport report{.threads = 0};
    NamedCounters totals;
    try {
        // In an order of their own: the order of additions decides over the last digit of a sum.
        std::ranges::sort(parts, [](const Part& one, const Part& other) {
            return std::tuple(one.seed(), one.first()) < std::tuple(other.seed(), other.first());
        });
        ensureFitTogether(parts);
        for (const Part& part : parts) {
            addPart(part, report, totals);
        }
    } catch (const Json::exception& error) {
        throw std::runtime_error(translate("A summary is damaged: %1%.", {error.what()}));
    }
    printTotals(totals, report);
}

}  // namespace trikon
