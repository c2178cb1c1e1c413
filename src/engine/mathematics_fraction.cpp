// Decimal answers as fractions, by continued-fraction convergents.
#include "mathematics.h"

#include <cmath>
#include <cstdint>

namespace quorvex::engine {

Fraction Mathematics::DecToFrac(long double x, long double tolerance, int& status) {
    status = 1;
    Fraction result;
    if (numsigfig(x) > 14) {
        status = 4;
        return result;
    }
    long double magnitude = std::fabs(lift(x));
    long double whole = trunc(magnitude);
    long double rest = trunc_toprec(real_sub(magnitude, whole), 14);
    if (rest > 0 && rest < 5e-10L) {
        status = 2;
        return result;
    }
    // Continued-fraction convergents h/k of the rest, kept while they fit the display limits.
    std::int64_t h_prev = 1, h_prev2 = 0, k_prev = 0, k_prev2 = 1;
    long double r = rest;
    for (int step = 0; step < 100; ++step) {
        long double a = std::floor(r);
        if (a > 4294967295.0L) break;
        auto ai = static_cast<std::int64_t>(a);
        std::int64_t h = ai * h_prev + h_prev2;
        std::int64_t k = ai * k_prev + k_prev2;
        if (h > 2147483648LL || k > 4294967295LL) break;
        h_prev2 = h_prev, h_prev = h, k_prev2 = k_prev, k_prev = k;
        long double left = r - a;
        if (std::fabs(static_cast<long double>(h) / static_cast<long double>(k) - rest) < tolerance ||
            left <= 0)
            break;
        r = 1.0L / left;
    }
    if (k_prev == 0) return result;
    if (whole * static_cast<long double>(k_prev) > 9.0e18L) return result; // no 64-bit numerator
    result = Fraction{static_cast<std::int64_t>(whole) * k_prev, k_prev} + Fraction{h_prev, k_prev};
    if (x < 0) result.numerator = -result.numerator;
    status = 0;
    return result;
}

} // namespace quorvex::engine
