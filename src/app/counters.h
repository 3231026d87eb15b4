// Statistics that a script counts: sum, mean, extremes and deviations of the values under a name.
//
// A deal has its own `NamedCounters`, which the print queue adds to those of the whole run. Sums
// are kept with a compensation term (Kahan), so that millions of small values added to a large sum
// are not rounded away.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <limits>
#include <map>
#include <string>

namespace trikon {

class Counter {
public:
    /// All that a counter holds. Each exact sum is the sum less its compensation.
    struct State {
        double sum;
        double sumCompensation;
        double squares;
        double squaresCompensation;
        double min;
        double max;
        std::uint32_t count;
    };

    Counter() = default;
    explicit Counter(const State& state);
    State state() const;

    std::uint32_t count() const { return valuesCount; }
    /// The mean of the values, not a number without any.
    double mean() const { return sum.value / valuesCount; }
    /// The standard deviation of the values taken as the whole population (divisor n).
    ///
    /// Sum and sum of squares are cut to whole numbers first, which leaves whole values from 0 up
    /// unchanged and shows in others: the single value 1.5 has the deviation 0.707107. Not a number
    /// where that makes the variance negative.
    double stddev() const;
    /// The same with the divisor n - 1, an estimate from a sample; a single value divides by zero.
    double stddevest() const;

    /// Counts one more value. Throws std::runtime_error, and changes nothing, on a full counter.
    void add(double value);
    /// Counts all values of `other`. Throws and changes nothing when they are too many together.
    void add(const Counter& other);

    /// Writes one line: the long form, or "no values".
    friend std::ostream& operator<<(std::ostream& out, const Counter& counter);

private:
    // The exact sum is about `value` minus `compensation`.
    struct CompensatedSum {
        double value = 0;
        double compensation = 0;

        void add(double term);
        double total() const { return value - compensation; }
    };

    void countFurther(std::uint32_t values);
    double deviation(double divisor) const;

    CompensatedSum sum;
    CompensatedSum squares;
    double min = std::numeric_limits<double>::infinity();
    double max = -std::numeric_limits<double>::infinity();
    std::uint32_t valuesCount = 0;
};

/// Counters under their names, in the byte order of the names.
class NamedCounters {
public:
    bool empty() const { return counters.empty(); }
    auto begin() const { return counters.begin(); }
    auto end() const { return counters.end(); }
    void clear() { counters.clear(); }
    void swap(NamedCounters& other) noexcept { counters.swap(other.counters); }

    /// The counter called `name`, a fresh one if there is none.
    Counter& operator[](const std::string& name) { return counters[name]; }
    /// Adds each counter of `other` to the one of its name here.
    ///
    /// Throws std::runtime_error when a counter gets too many values; names before it are added.
    void add(const NamedCounters& other);

    /// Writes the names with their means, "a=2, b=5"; all counters must hold values.
    void printShortly(std::ostream& out) const;
    /// Writes a line a name: the name and its counter in long form.
    friend std::ostream& operator<<(std::ostream& out, const NamedCounters& named);

private:
    std::map<std::string, Counter> counters;
};

}  // namespace trikon
