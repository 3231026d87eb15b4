// A set of numbers kept as closed intervals, neighbours merged.
//
// It holds the numbers of rejected deals whose turn has not come: a run of any length costs one
// interval. The intervals lie in a deque, not in a tree, because new numbers nearly always belong
// at the back and old ones leave at the front: both are then cheap, and rarely allocate.
#pragma once

#include <algorithm>
#include <deque>
#include <iterator>
#include <numeric>

namespace trikon {

/// The numbers from `start` to `end`, both included; ordered by start.
template <class Number>
struct Interval {
    Number start;
    Number end;

    bool operator==(const Interval&) const = default;
    bool operator<(const Interval& other) const { return start < other.start; }
};

template <class Number>
class IntervalSet {
public:
    /// The intervals in ascending order; between any two at least one number is missing.
    const std::deque<Interval<Number>>& all() const { return intervals; }

    /// How many numbers there are.
    Number count() const;

    /// Adds the numbers from `first` to `last`, of which the set may hold none, all or a part.
    void insert(Number first, Number last);
    /// The number after the first interval if that starts at `number`, else `number` itself.
    ///
    /// The interval that was passed leaves the set.
    Number passFirst(Number number);
    void eraseStartingAfter(Number number);
    void clear() { intervals.clear(); }

private:
    std::deque<Interval<Number>> intervals;
};

// --- inline definitions ---

template <class Number>
Number IntervalSet<Number>::count() const
{
    return std::accumulate(intervals.begin(), intervals.end(), Number{},
                           [](Number sum, const Interval<Number>& interval) {
                               return sum + (interval.end - interval.start + 1);
                           });
}

template <class Number>
void IntervalSet<Number>::insert(Number first, Number last)
{
    // Those that overlap or touch become one with the new numbers.
    auto begin =
        std::upper_bound(intervals.begin(), intervals.end(), Interval<Number>{first, last});
    if (begin != intervals.begin() && std::prev(begin)->end + 1 >= first) {
        --begin;
        first = begin->start;
    }
    auto end = begin;
    for (; end != intervals.end() && end->start <= last + 1; ++end) {
        last = std::max(last, end->end);
    }
    if (begin == end) {
        intervals.insert(begin, {first, last});
        return;
    }
    *begin = {first, last};
    intervals.erase(std::next(begin), end);
}

template <class Number>
Number IntervalSet<Number>::passFirst(Number number)
{
    if (intervals.empty() || intervals.front().start != number) {
        return number;
    }
    const Number behind = intervals.front().end + 1;
    intervals.pop_front();
    return behind;
}

template <class Number>
void IntervalSet<Number>::eraseStartingAfter(Number number)
{
    intervals.erase(
        std::upper_bound(intervals.begin(), intervals.end(), Interval<Number>{number, number}),
        intervals.end());
}

}  // namespace trikon
