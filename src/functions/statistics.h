#pragma once
#include <vector>

namespace quorvex::engine {
class Parser;
}

namespace quorvex::functions {

using DataList = std::vector<long double>;

// Descriptive statistics of a data list, in long double; no decimal round trip. Kernels that
// need order sort the caller's list in place. Lists reach them with two points at least.
namespace statistics {

long double sumx(const DataList& x);
long double sumxsq(const DataList& x);
long double mean(const DataList& x);
long double gmean(const DataList& x);
long double hmean(const DataList& x);
long double qmean(const DataList& x);
long double minimum(const DataList& x);
long double maximum(const DataList& x);
long double range(const DataList& x);
long double sumdev(const DataList& x);
long double sumdevsq(const DataList& x);
long double avgdev(const DataList& x);
long double svariance(const DataList& x);
long double pvariance(const DataList& x);
// The short-term spread: the mean range of consecutive groups of three, divided by 1.69.
long double ststdev(const DataList& x);
long double avgsumrangepairs(const DataList& x);
// The spread used where only the data speak: sample below 31 points, population from 31 up.
long double spread(const DataList& x);
long double skew(const DataList& x);
long double kurt(const DataList& x);
long double median(DataList& x);
long double rank(DataList& x, long double value);
long double percentile(DataList& x, long double p);
long double factorial(long double n);
long double lnfactorial(long double n);
long double binoco(long double n, long double r);
long double permutate(long double n, long double r);
// The most frequent value; without repeats, the middle of the fullest class of a frequency
// distribution. Reports through the parser's statistics layer.
long double mode(DataList& x, engine::Parser& parser);

} // namespace statistics

} // namespace quorvex::functions
