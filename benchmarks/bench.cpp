// Solves a list of deals and prints what a change of the solver may and may not change.
//
// Every deal is solved for all 20 results, five trumps and four declarers, on one thread, and the
// table is empty at the start of each trump. The answers' checksum must never change; the number of
// nodes tells whether the search walks as before; time and memory are what it is all for. A single
// result at no trump and one at spades are timed besides, each from nothing.
//
//     bench [FILE [EXPECTED]]
//
// FILE holds a deal a line, "N:" and the four hands from North on; what follows them is ignored.
// EXPECTED holds the checksum and the node count that must come out; else the exit status is 1.
#include "cards/hands.h"
#include "solver/dd_solver.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <vector>

using namespace trikon;

namespace {

struct Totals {
    std::uint64_t checksum = 14695981039346656037u;
    std::uint64_t nodes = 0;
    std::uint64_t nodesAtNoTrump = 0;
    std::uint64_t tableNodes = 0;
    std::uint64_t tableEntries = 0;
    std::vector<double> milliseconds;
    double millisecondsAtNoTrump = 0;  // of single results, all deals together
    double millisecondsAtSpades = 0;
};

double millisecondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

std::vector<Hands> readDeals(const std::string& fileName)
{
    std::ifstream file(fileName);
    if (!file) {
        throw std::runtime_error("cannot read " + fileName);
    }
    std::vector<Hands> deals;
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("N:", 0) != 0) {
            continue;
        }
        std::istringstream words(line.substr(2));
        Hands hands;
        for (int player = 0; player < playersCount; ++player) {
            std::string word;
            words >> word;
            hands[player] = readWholeHand(word);
        }
        deals.push_back(hands);
    }
    return deals;
}

// FNV-1a, one answer at a time.
void addToChecksum(std::uint64_t& checksum, int answer)
{
    checksum = (checksum ^ static_cast<std::uint64_t>(answer)) * 1099511628211u;
}

// All 20 results.
void solveDeal(DDSolver& solver, const Hands& hands, Totals& totals)
{
    const auto start = std::chrono::steady_clock::now();
    solver.setHands(hands);
    for (const Trump trump : {Spades, Hearts, Diamonds, Clubs, NoTrump}) {
        solver.set_trump_suit(trump);
        solver.reset();
        const std::uint64_t nodesBefore = solver.nodesSearched();
        std::int8_t guess = -1;
        for (const PlayerNumber declarer : {North, South, East, West}) {
            const int length = solver.getSituation().cardsCount / 4;
            if (declarer == East) {
                guess = static_cast<std::int8_t>(length - guess);
            }
            guess = solver.solveTricksToTake(nextPlayer(declarer), Trick(), guess);
            addToChecksum(totals.checksum, length - guess);
        }
        const std::uint64_t nodes = solver.nodesSearched() - nodesBefore;
        totals.nodes += nodes;
        totals.nodesAtNoTrump += trump == NoTrump ? nodes : 0;
        totals.tableNodes += solver.getTable().nodesCount();
        totals.tableEntries += solver.getTable().entriesCount();
    }
    totals.milliseconds.push_back(millisecondsSince(start));
}

// One result with North as declarer, from nothing: the deal is prepared and the table is empty.
double millisecondsOfOneResult(const Hands& hands, Trump trump)
{
    const auto solver = std::make_unique<DDSolver>();
    const auto start = std::chrono::steady_clock::now();
    solver->setHands(hands);
    solver->set_trump_suit(trump);
    solver->solveTricksToTake(East, Trick(), -1);
    return millisecondsSince(start);
}

double peakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

void print(Totals totals)
{
    std::vector<double>& times = totals.milliseconds;
    std::sort(times.begin(), times.end());
    double sum = 0;
    for (const double time : times) {
        sum += time;
    }
    const double count = static_cast<double>(times.size());
    const auto quantile = [&](double part) {
        return times[static_cast<std::size_t>(std::lround(part * (count - 1)))];
    };
    std::cout << "checksum " << std::hex << totals.checksum << std::dec << '\n'
              << "nodes " << totals.nodes << ", at no trump " << totals.nodesAtNoTrump << '\n'
              << "table nodes " << totals.tableNodes << '\n'
              << "table entries " << totals.tableEntries << '\n'
              << std::fixed << std::setprecision(1)  //
              << "milliseconds a deal: mean " << sum / count << ", median " << quantile(0.5)
              << ", 95 % " << quantile(0.95) << ", worst " << times.back() << '\n'
              << "milliseconds of one result: no trump " << totals.millisecondsAtNoTrump / count
              << ", spades " << totals.millisecondsAtSpades / count << '\n'
              << "peak memory " << peakMegabytes() << " MB\n";
}

// Whether the first two lines that were printed are those of the file.
bool agrees(const Totals& totals, const std::string& fileName)
{
    std::ifstream file(fileName);
    std::string name;
    std::uint64_t checksum = 0;
    std::uint64_t nodes = 0;
    file >> name >> std::hex >> checksum >> name >> std::dec >> nodes;
    return file && checksum == totals.checksum && nodes == totals.nodes;
}

}  // namespace

int main(int argc, char** argv)
try {
    const std::vector<Hands> deals = readDeals(argc > 1 ? argv[1] : TAMREL_BENCH_DEALS);
    const auto solver = std::make_unique<DDSolver>();
    Totals totals;
    for (const Hands& hands : deals) {
        solveDeal(*solver, hands, totals);
        totals.millisecondsAtNoTrump += millisecondsOfOneResult(hands, NoTrump);
        totals.millisecondsAtSpades += millisecondsOfOneResult(hands, Spades);
    }
    if (deals.empty()) {
        throw std::runtime_error("no deals");
    }
    print(totals);
    if (argc > 2 && !agrees(totals, argv[2])) {
        std::cout << "differs from " << argv[2] << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
}
