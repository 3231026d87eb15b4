// Adding values and counters, and both printed forms.
#include "app/counters.h"

#include "cards/translation.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <stdexcept>

namespace trikon {

namespace {

// Whatever is not above zero, not-a-number too, becomes 0.
double wholePart(double value) { return value > 0 ? std::trunc(value) : 0; }

}  // namespace

Counter::Counter(const State& state)
    : sum{state.sum, state.sumCompensation},
      squares{state.squares, state.squaresCompensation},
      min(state.min),
      max(state.max),
      valuesCount(state.count)
{
}

Counter::State Counter::state() const
{
    return {sum.value, sum.compensation, squares.value, squares.compensation, min,
            max,       valuesCount};
}

void Counter::add(double value)
{
    countFurther(1);
    sum.add(value);
    squares.add(value * value);
    min = std::min(min, value);
    max = std::max(max, value);
}

void Counter::add(const Counter& other)
{
    countFurther(other.valuesCount);
    sum.add(other.sum.total());
    squares.add(other.squares.total());
    min = std::min(min, other.min);
    max = std::max(max, other.max);
}

void Counter::countFurther(std::uint32_t values)
{
    constexpr std::uint32_t most = std::numeric_limits<std::uint32_t>::max();
    if (values > most - valuesCount) {
        throw std::runtime_error(
            translate("More than %1% values are counted under one name.", {std::to_string(most)}));
    }
    valuesCount += values;
}

void Counter::CompensatedSum::add(double term)
{
    const double corrected = term - compensation;
    const double next = value + corrected;
    // What the addition rounded away: zero in algebra, not in floating point.
    compensation = (next - value) - corrected;
    value = next;
}

double Counter::stddev() const { return deviation(valuesCount); }

double Counter::stddevest() const { return deviation(valuesCount - 1); }

double Counter::deviation(double divisor) const
{
    const double squaredMean = wholePart(sum.value) * sum.value / valuesCount;
    return std::sqrt((wholePart(squares.value) - squaredMean) / divisor);
}

std::ostream& operator<<(std::ostream& out, const Counter& counter)
{
    if (counter.valuesCount == 0) {
        return out << "no values\n";
    }
    return out << counter.sum.value << " / " << counter.valuesCount << " = " << counter.mean()
               << "   min: " << counter.min << "  max: " << counter.max
               << "  sdev: " << counter.stddev() << " est. " << counter.stddevest() << '\n';
}

void NamedCounters::add(const NamedCounters& other)
{
    for (const auto& [name, counter] : other.counters) {
        counters[name].add(counter);
    }
}

void NamedCounters::printShortly(std::ostream& out) const
{
    const char* separator = "";
    for (const auto& [name, counter] : counters) {
        out << separator << name << '=' << counter.mean();
        separator = ", ";
    }
}

std::ostream& operator<<(std::ostream& out, const NamedCounters& named)
{
    for (const auto& [name, counter] : named.counters) {
        out << name << ": " << counter;
    }
    return out;
}

}  // namespace trikon
