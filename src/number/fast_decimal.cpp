#include "fast_decimal.h"

#include "decimal.h"
#include "lift_digits.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace quorvex::number {

namespace {

// Holds every exact product (below 10^30) and aligned sum (below 10^33) of two lifted operands.
__extension__ typedef __int128 Wide;

// A lifted double: mantissa * 10^exponent, at most 14 significant digits (10^14 after rounding up).
struct Lifted {
    std::int64_t mantissa = 0;
    int exponent = 0;
};

Lifted lift(double x) {
    Lifted out;
    lift_digits(x, out.mantissa, out.exponent);
    return out;
}

// 10^0 to 10^38, built once: divisions of 128-bit numbers are slow, comparisons are not.
const Wide* powers_of_ten() {
    static const auto table = [] {
        static Wide powers[39];
        powers[0] = 1;
        for (int i = 1; i < 39; ++i) powers[i] = powers[i - 1] * 10;
        return powers;
    }();
    return table;
}

Wide power_of_ten(int n) { return powers_of_ten()[n]; }

// The count from the bit length, floor(bits log10 2), which is the count or one below it: a loop
// over 128-bit comparisons cost more than the arithmetic it served.
int digit_count(Wide magnitude) {
    if (magnitude <= 0) return 1;
    const auto high = static_cast<std::uint64_t>(magnitude >> 64);
    const int bits = high != 0 ? 128 - std::countl_zero(high) : 64 - std::countl_zero(static_cast<std::uint64_t>(magnitude));
    const int below = (bits * 1233) >> 12;
    return below + (magnitude >= power_of_ten(below) ? 1 : 0);
}

// magnitude / divisor and its remainder, in 64 bits when both fit: a 128-bit division is a
// library call several times slower.
Wide divide(Wide magnitude, Wide divisor, Wide& remainder) {
    constexpr Wide k_fits = static_cast<Wide>(1) << 64;
    if (magnitude < k_fits) {
        const auto m = static_cast<std::uint64_t>(magnitude), d = static_cast<std::uint64_t>(divisor);
        remainder = m % d;
        return m / d;
    }
    remainder = magnitude % divisor;
    return magnitude / divisor;
}

// value * 10^exponent rounded half away from zero to 15 significant digits, as the nearest double.
double to_double(Wide value, int exponent) {
    if (value == 0) return 0.0;
    const bool negative = value < 0;
    Wide magnitude = negative ? -value : value;
    const int digits = digit_count(magnitude);
    if (digits > 15) {
        const Wide divisor = power_of_ten(digits - 15);
        Wide remainder = 0;
        magnitude = divide(magnitude, divisor, remainder);
        if (remainder * 2 >= divisor) ++magnitude;
        exponent += digits - 15;
    }
    // At most 16 digits (after a carry), below 2^53: times or over an exact power of ten that is
    // a single correctly rounded operation, as reading the text would be.
    static constexpr double k_exact_powers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    if (exponent >= -22 && exponent <= 22) {
        const double digits_value = static_cast<double>(static_cast<std::uint64_t>(magnitude));
        const double result =
            exponent >= 0 ? digits_value * k_exact_powers[exponent] : digits_value / k_exact_powers[-exponent];
        return negative ? -result : result;
    }
    // Otherwise the text, "-123e-45".
    char text[48];
    char* out = text;
    if (negative) *out++ = '-';
    out = std::to_chars(out, text + 24, static_cast<std::uint64_t>(magnitude)).ptr;
    *out++ = 'e';
    out = std::to_chars(out, text + sizeof text, exponent).ptr;
    double result = 0;
    const auto parsed = std::from_chars(text, out, result);
    if (parsed.ec == std::errc::result_out_of_range) return std::strtod(std::string(text, out).c_str(), nullptr);
    return result;
}

// The position of the leading digit: 10^top <= |value| < 10^(top+1).
int top_digit(const Lifted& x) {
    const std::int64_t magnitude = x.mantissa < 0 ? -x.mantissa : x.mantissa;
    return x.exponent + digit_count(magnitude) - 1;
}

double sum(const Lifted& a, const Lifted& b) {
    if (a.mantissa == 0) return to_double(b.mantissa, b.exponent);
    if (b.mantissa == 0) return to_double(a.mantissa, a.exponent);
    const bool a_leads = top_digit(a) >= top_digit(b);
    const Lifted& large = a_leads ? a : b;
    const Lifted& small = a_leads ? b : a;
    // An operand whose leading digit lies more than 17 places below the other's is less than a
    // tenth of a unit in the 15th digit of the sum, even after the sum loses a leading digit: the
    // rounded sum is the larger operand. Within 17 places the aligned sum has at most 32 digits.
    if (top_digit(large) - top_digit(small) > 17) return to_double(large.mantissa, large.exponent);
    const Lifted& coarse = a.exponent >= b.exponent ? a : b;
    const Lifted& fine = a.exponent >= b.exponent ? b : a;
    return to_double(static_cast<Wide>(coarse.mantissa) * power_of_ten(coarse.exponent - fine.exponent) + fine.mantissa,
                     fine.exponent);
}

} // namespace

// An infinite operand (an overflow on its way to being reported) takes the decimal type's own
// rule: rare, so it may be slow, and it must never read as the zero a failed lift gives.
bool beyond_range(double a, double b) { return std::isinf(a) || std::isinf(b); }
using Slow = Decimal<14>;

double decimal_add(double a, double b) {
    if (beyond_range(a, b)) return (Slow::lift(a) + Slow::lift(b)).to_double();
    return sum(lift(a), lift(b));
}

double decimal_sub(double a, double b) {
    if (beyond_range(a, b)) return (Slow::lift(a) - Slow::lift(b)).to_double();
    Lifted negated = lift(b);
    negated.mantissa = -negated.mantissa;
    return sum(lift(a), negated);
}

double decimal_mul(double a, double b) {
    // A zero factor (the imaginary part of most products) gives +0 whatever the other is, as the
    // lifted product would: no lift needed.
    if (a == 0 || b == 0) return 0.0;
    if (beyond_range(a, b)) return (Slow::lift(a) * Slow::lift(b)).to_double();
    const Lifted x = lift(a), y = lift(b);
    return to_double(static_cast<Wide>(x.mantissa) * y.mantissa, x.exponent + y.exponent);
}

double decimal_div(double a, double b) {
    if (beyond_range(a, b)) return (Slow::lift(a) / Slow::lift(b)).to_double();
    Lifted x = lift(a), y = lift(b);
    if (x.mantissa == 0 || y.mantissa == 0) return 0.0;
    // Both mantissas to 14 digits, then 17 more digits of quotient than needed: the quotient
    // has 17 or 18 digits, of which the rounding drops 2 or 3. A dropped part of at least half
    // a unit rounds up, and the remainder left over from the division can not change which side
    // of the half it falls on, since the dropped digits are whole numbers below a power of ten.
    const auto normalise = [](Lifted& value) {
        const std::int64_t magnitude = value.mantissa < 0 ? -value.mantissa : value.mantissa;
        const int missing = 14 - digit_count(magnitude);
        if (missing < 0) { // 10^14, after a lift rounded up
            value.mantissa /= 10;
            value.exponent += 1;
            return;
        }
        value.mantissa *= static_cast<std::int64_t>(power_of_ten(missing));
        value.exponent -= missing;
    };
    normalise(x);
    normalise(y);
    const Wide quotient = static_cast<Wide>(x.mantissa) * power_of_ten(17) / y.mantissa;
    return to_double(quotient, x.exponent - y.exponent - 17);
}

} // namespace quorvex::number
