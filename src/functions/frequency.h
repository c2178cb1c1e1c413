#pragma once
#include "statistics.h"

#include <optional>
#include <vector>

namespace quorvex::functions {

// One class of a frequency distribution. Classes are open below and closed above, except the
// first, which also takes its lower bound.
struct Frequency {
    int count = 0;
    long double lower = 0;
    long double upper = 0;
    bool first = false;

    bool addDataPoint(long double x) {
        if (!((x > lower || (first && x == lower)) && x <= upper)) return false;
        ++count;
        return true;
    }
};

namespace statistics {

enum class ClassScheme { SquareRoot = 0, NormalFit = 1, Given = 2 };

// Builds the classes of `x` (sorted on the way) by a scheme: the square root of n classes of
// equal width, classes from a normal fit, or `classes` of equal width. With `by_count` the
// classes are ordered by descending count, empty ones last. Nothing when the scheme cannot give
// a class: the normal fit needs five points per class and at least one class.
std::optional<std::vector<Frequency>> buildFreqDist(DataList& x, bool by_count, ClassScheme scheme, int classes = 0);
// The fullest class; the first of equals.
size_t getMaxFreqNum(const std::vector<Frequency>& frequencies);
// How many points lie further than k deviations from the mean (population spread below 31
// points, sample spread from 31); removes them when asked.
int GetOutLiers(DataList& x, int k, bool remove);
// Which points GetOutLiers counts, in the list's order, so that a caller can drop the points
// that belong to them elsewhere.
std::vector<bool> outlying_points(const DataList& x, int k);
// exp(lngamma(a) + lngamma(b) - lngamma(a + b)); 0 unless both are positive.
long double beta(long double a, long double b);

} // namespace statistics

} // namespace quorvex::functions
