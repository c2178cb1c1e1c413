#include "statistics.h"

#include "engine/parser.h"
#include "frequency.h"

#include <algorithm>
#include <cmath>

namespace quorvex::functions::statistics {

namespace {

constexpr size_t k_population_from = 31;

long double variance_about_mean(const DataList& x, size_t divisor) {
    return divisor == 0 ? 0.0L : sumdevsq(x) / static_cast<long double>(divisor);
}

long double moment(const DataList& x, int power) {
    const long double m = mean(x), s = spread(x);
    long double total = 0;
    for (long double v : x) total += std::pow((v - m) / s, power);
    return total / static_cast<long double>(x.size());
}

} // namespace

long double sumx(const DataList& x) {
    long double total = 0;
    for (long double v : x) total += v;
    return total;
}

long double sumxsq(const DataList& x) {
    long double total = 0;
    for (long double v : x) total += v * v;
    return total;
}

long double mean(const DataList& x) { return x.empty() ? 0.0L : sumx(x) / static_cast<long double>(x.size()); }

long double gmean(const DataList& x) {
    // The exponential magnifies the error of the mean of the logs by the log's size (690 for
    // 1e300): in double that reaches the 14th digit, in long double it stays below the 15th.
    long double logs = 0;
    for (long double v : x) logs += std::log(v);
    return std::exp(logs / static_cast<long double>(x.size()));
}

long double hmean(const DataList& x) {
    long double reciprocals = 0;
    for (long double v : x) reciprocals += 1.0L / v;
    return static_cast<long double>(x.size()) / reciprocals;
}

long double qmean(const DataList& x) { return std::sqrt(sumxsq(x) / static_cast<long double>(x.size())); }

long double minimum(const DataList& x) { return *std::min_element(x.begin(), x.end()); }
long double maximum(const DataList& x) { return *std::max_element(x.begin(), x.end()); }
long double range(const DataList& x) { return maximum(x) - minimum(x); }

long double sumdev(const DataList& x) {
    const long double m = mean(x);
    long double total = 0;
    for (long double v : x) total += v - m;
    return total;
}

long double sumdevsq(const DataList& x) {
    const long double m = mean(x);
    long double total = 0;
    for (long double v : x) total += (v - m) * (v - m);
    return total;
}

long double avgdev(const DataList& x) {
    const long double m = mean(x);
    long double total = 0;
    for (long double v : x) total += std::fabs(v - m);
    return total / static_cast<long double>(x.size());
}

long double svariance(const DataList& x) { return x.empty() ? 0.0L : variance_about_mean(x, x.size() - 1); }
long double pvariance(const DataList& x) { return variance_about_mean(x, x.size()); }

long double avgsumrangepairs(const DataList& x) {
    if (x.size() < 2) return 0;
    if (x.size() == 2) return std::fabs(x[0] - x[1]);
    long double total = 0;
    size_t groups = 0;
    // Groups of three without overlap; a last group of one or two points is dropped.
    for (size_t i = 0; i + 2 < x.size(); i += 3, ++groups)
        total += std::max({std::fabs(x[i] - x[i + 1]), std::fabs(x[i] - x[i + 2]), std::fabs(x[i + 1] - x[i + 2])});
    return total / static_cast<long double>(groups);
}

long double ststdev(const DataList& x) { return x.empty() ? 0.0L : avgsumrangepairs(x) * 0.591715976331361L; }

long double spread(const DataList& x) {
    return std::sqrt(x.size() < k_population_from ? svariance(x) : pvariance(x));
}

long double skew(const DataList& x) { return moment(x, 3); }
long double kurt(const DataList& x) { return moment(x, 4) - 3; }

long double median(DataList& x) {
    std::sort(x.begin(), x.end());
    const size_t n = x.size();
    return n % 2 == 1 ? x[(n + 1) / 2 - 1] : (x[n / 2 - 1] + x[n / 2]) / 2;
}

long double rank(DataList& x, long double value) {
    std::sort(x.begin(), x.end());
    const auto first = std::find(x.begin(), x.end(), value);
    if (first == x.end()) return 0;
    const auto run = std::find_if(first, x.end(), [value](long double v) { return v != value; }) - first;
    // The average rank of tied points, counted from 1.
    return static_cast<long double>(first - x.begin()) + static_cast<long double>(run - 1) / 2 + 1;
}

long double percentile(DataList& x, long double p) {
    std::sort(x.begin(), x.end());
    const size_t n = x.size();
    // The position is taken as a 32-bit float, and its fraction with it.
    const float f = static_cast<float>((static_cast<long double>(n) + 1) * 0.01L * p - 1);
    if (f >= static_cast<float>(n - 1)) return x.back();
    if (f <= 0) return x.front();
    const auto low = static_cast<size_t>(std::floor(f));
    const float fraction = f - static_cast<float>(low);
    if (fraction == 0) return x[low];
    return x[low] + static_cast<long double>(fraction) * (x[low + 1] - x[low]);
}

long double factorial(long double n) {
    const long double whole = std::trunc(n);
    if (whole <= 19) {
        long double product = 1;
        for (int k = 2; k <= static_cast<int>(whole); ++k) product *= k;
        return product;
    }
    return std::exp(std::lgamma(whole + 1));
}

long double lnfactorial(long double n) { return n <= 1 ? 0.0L : std::lgamma(n + 1); }

long double binoco(long double n, long double r) {
    const long double value = std::exp(lnfactorial(n) - lnfactorial(r) - lnfactorial(n - r));
    return std::round(value);
}

long double permutate(long double n, long double r) { return std::round(std::exp(lnfactorial(n) - lnfactorial(n - r))); }

long double mode(DataList& x, engine::Parser& parser) {
    std::sort(x.begin(), x.end());
    // The value that repeats most often; on a tie the smaller one, which comes first.
    long double best = x.front();
    size_t best_count = 1;
    for (size_t i = 0; i < x.size();) {
        size_t j = i;
        while (j < x.size() && x[j] == x[i]) ++j;
        if (j - i > best_count) best = x[i], best_count = j - i;
        i = j;
    }
    if (best_count > 1) return best;

    bool equal_intervals = true;
    for (size_t i = 2; i < x.size() && equal_intervals; ++i)
        equal_intervals = std::fabs(x[i] - x[i - 1]) == std::fabs(x[1] - x[0]);
    if (equal_intervals) {
        parser.statistics_layer().raise(75);
        return 0;
    }
    if (x.size() < 23) parser.warn_insignificant_mode();

    // The middle of the fullest of sqrt(n) classes of equal width.
    const auto classes = buildFreqDist(x, false, ClassScheme::SquareRoot);
    const Frequency& fullest = (*classes)[getMaxFreqNum(*classes)];
    return (fullest.lower + fullest.upper) / 2;
}

} // namespace quorvex::functions::statistics
