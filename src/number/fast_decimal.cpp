#include "fast_decimal.h"

#include "lift_digits.h"

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

int digit_count(Wide magnitude) {
    const Wide* powers = powers_of_ten();
    int count = 1;
    while (count < 39 && magnitude >= powers[count]) ++count;
    return count;
}

// value * 10^exponent rounded half away from zero to 15 significant digits, as the nearest double.
double to_double(Wide value, int exponent) {
    if (value == 0) return 0.0;
    const bool negative = value < 0;
    Wide magnitude = negative ? -value : value;
    const int digits = digit_count(magnitude);
    if (digits > 15) {
        const Wide divisor = power_of_ten(digits - 15);
        const Wide remainder = magnitude % divisor;
        magnitude /= divisor;
        if (remainder * 2 >= divisor) ++magnitude;
        exponent += digits - 15;
    }
    // At most 16 digits (after a carry), then the exponent: "-123e-45".
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

double decimal_add(double a, double b) { return sum(lift(a), lift(b)); }

double decimal_sub(double a, double b) {
    Lifted negated = lift(b);
    negated.mantissa = -negated.mantissa;
    return sum(lift(a), negated);
}

double decimal_mul(double a, double b) {
    const Lifted x = lift(a), y = lift(b);
    return to_double(static_cast<Wide>(x.mantissa) * y.mantissa, x.exponent + y.exponent);
}

} // namespace quorvex::number
