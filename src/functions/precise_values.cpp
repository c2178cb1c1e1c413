// The values precise arithmetic asks of the distributions and of the normal helpers: the same
// long double computations as their entries, on parameters that were never rounded to a double,
// with the result kept in long double. A double carries about 16 digits, too few for the 14th
// shown digit to be right every time; long double leaves three more.
#include "builtin_functions.h"
#include "builtin_index.h"
#include "distributions.h"

#include <boost/math/distributions/normal.hpp>
#include <boost/math/special_functions/erf.hpp>

#include <cmath>

namespace quorvex::functions {

namespace {

std::optional<long double> finite(long double value) {
    if (!std::isfinite(value)) return std::nullopt;
    return value;
}

std::optional<long double> distribution(int index, const std::vector<long double>& a) {
    const int family = distributions::family_of(index);
    const size_t expected = static_cast<size_t>(distributions::shape_count(family)) + 1;
    if (a.size() != expected) return std::nullopt;
    const long double b = expected == 3 ? a[2] : 0;
    if (distributions::broken_limit(index, a[0], a[1], b)) return std::nullopt;
    return distributions::evaluate(index, a[0], a[1], b);
}

} // namespace

std::optional<long double> BuiltinFunctions::precise_value(int index, const std::vector<long double>& a) const {
    if (index >= BETACDF && index <= STUDTX) return distribution(index, a);
    try {
        if ((index == ERF || index == ERFC) && a.size() == 1)
            return finite(index == ERF ? boost::math::erf(a[0]) : boost::math::erfc(a[0]));
        if (index == NORDIST && a.size() == 3 && a[2] > 0)
            return finite(boost::math::pdf(boost::math::normal_distribution<long double>(a[1], a[2]), a[0]));
    } catch (const std::exception&) {
        return std::nullopt;
    }
    return std::nullopt;
}

} // namespace quorvex::functions
