#include "fast_elementary.h"

#include "lift_digits.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace quorvex::number {

namespace {

// The unit roundoff of long double: one correctly rounded operation errs by at most this share.
constexpr long double k_unit = 0x1p-64L;
// What the long double sine, cosine and exponential of the C library may err by, as a share of
// the result: four of its units in the last place, twice what the library documents.
constexpr long double k_library_error = 8 * k_unit;
// How much wider than the error bound the distance from a half-way point must be.
constexpr long double k_margin = 4;
// 10^n is exact in long double up to here (5^27 < 2^64) and in double up to 22 (5^22 < 2^53).
constexpr int k_exact_long_power = 27;
constexpr int k_exact_double_power = 22;
// Scaling reaches the whole range of doubles, with room for 15 digits on either side.
constexpr int k_widest_power = 340;

// 10^n for |n| <= k_widest_power, exact up to 27 and correctly rounded beyond.
long double long_power_of_ten(int n) {
    static const auto table = [] {
        struct Table {
            long double value[2 * k_widest_power + 1];
        } powers{};
        for (int i = -k_widest_power; i <= k_widest_power; ++i) {
            char text[16];
            text[0] = '1';
            text[1] = 'e';
            *std::to_chars(text + 2, text + sizeof text - 1, i).ptr = '\0';
            powers.value[i + k_widest_power] = std::strtold(text, nullptr);
        }
        return powers;
    }();
    return table.value[n + k_widest_power];
}

double double_power_of_ten(int n) { return static_cast<double>(long_power_of_ten(n)); }

// value * 10^n: one rounding when the power is exact, else two, each within k_unit.
bool scale(long double value, int n, long double& result) {
    if (n > k_widest_power || n < -k_widest_power) return false;
    if (n < 0 && n >= -k_exact_long_power)
        result = value / long_power_of_ten(-n);
    else
        result = value * long_power_of_ten(n);
    return true;
}

// x lifted to 14 digits, as a long double within 2 k_unit of the decimal value.
bool lifted(double x, long double& value) {
    std::int64_t mantissa = 0;
    int exponent = 0;
    if (!lift_digits(x, mantissa, exponent)) return false;
    return scale(static_cast<long double>(mantissa), exponent, value); // the mantissa is exact: below 2^47
}

// r, known to within `error` of the exact result, rounded to 15 significant digits half away from
// zero and read as the nearest double; false when the bound does not settle the rounding.
bool land(long double r, long double error, double& result) {
    const long double magnitude = std::fabs(r);
    // Beyond the normal doubles the decimal path decides (saturation, underflow).
    if (!(magnitude >= 1e-300L && magnitude <= 1e300L)) return false;
    // floor(log2 |r| log10 2): the decimal exponent or one below it.
    int top = (detail::binary_exponent(static_cast<double>(magnitude)) * 78913) >> 18;
    // The 15 digits as the whole part of `scaled`, 10^14 <= scaled < 10^15 once `top` is right.
    long double scaled = 0;
    for (int attempt = 0; attempt < 3; ++attempt) {
        if (!scale(magnitude, 14 - top, scaled)) return false;
        if (scaled < 1e14L) {
            --top;
        } else if (scaled >= 1e15L) {
            ++top;
        } else {
            break;
        }
    }
    if (scaled < 1e14L || scaled >= 1e15L) return false;
    // The error in units of the 15th digit: the given bound and the roundings of the scaling.
    const long double bound = k_margin * (error / magnitude + 3 * k_unit) * scaled;
    // The exact value may lie in the next decade (cos of a tiny angle, just below 1) or the one
    // before. Both round as the digits here do, to 10^15 or 10^14 units, as long as the bound
    // is far below the finer grid of the decade before.
    if (bound >= 0.04L) return false;
    // The nearest integer without a conversion that would switch the x87 rounding mode.
    const long double nearest = (scaled + 0x1p63L) - 0x1p63L;
    const long double fraction = scaled - nearest; // -0.5 to 0.5, exact
    if (0.5L - std::fabs(fraction) <= bound) return false;
    // Away from a half the nearest integer is the rounding half away from zero; below 2^53.
    const auto digits = static_cast<std::uint64_t>(static_cast<double>(nearest));
    const int exponent = top - 14;
    double value = 0;
    if (exponent >= -k_exact_double_power && exponent <= k_exact_double_power) {
        // An exact integer below 2^53 times or over an exact power of ten: one correct rounding.
        const double d = static_cast<double>(digits);
        value = exponent >= 0 ? d * double_power_of_ten(exponent) : d / double_power_of_ten(-exponent);
    } else {
        char text[40];
        char* end = std::to_chars(text, text + 20, digits).ptr;
        *end++ = 'e';
        end = std::to_chars(end, text + sizeof text, exponent).ptr;
        if (std::from_chars(text, end, value).ec != std::errc()) return false;
    }
    result = r < 0 ? -value : value;
    return true;
}

__extension__ typedef __int128 Wide;

// A value as the unevaluated sum hi + lo of two long doubles, which carries about twice the
// digits of one: enough that the lifted argument loses nothing on its way into binary.
struct Pair {
    long double hi = 0;
    long double lo = 0;
};

// a b = p + e exactly (Dekker), splitting each 64-bit significand into halves of 32 bits.
Pair two_product(long double a, long double b) {
    constexpr long double splitter = 4294967297.0L; // 2^32 + 1
    const auto split = [](long double v, long double& high, long double& low) {
        const long double t = splitter * v;
        high = t - (t - v);
        low = v - high;
    };
    long double ah = 0, al = 0, bh = 0, bl = 0;
    split(a, ah, al);
    split(b, bh, bl);
    const long double p = a * b;
    return {p, ((ah * bh - p) + ah * bl + al * bh) + al * bl};
}

// mantissa 10^exponent as a pair within a few k_unit^2 of it.
bool exact_pair(std::int64_t mantissa, int exponent, Pair& value) {
    const auto m = static_cast<long double>(mantissa); // exact: below 2^47
    if (exponent >= 0) {
        if (exponent > k_exact_long_power) return false;
        value = two_product(m, long_power_of_ten(exponent)); // exact
        return true;
    }
    if (exponent < -k_exact_long_power) return false;
    const long double power = long_power_of_ten(-exponent);
    value.hi = m / power;
    // m - hi power, exactly but for the last subtraction: hi power lies within a unit of m.
    const Pair back = two_product(value.hi, power);
    value.lo = ((m - back.hi) - back.lo) / power;
    return true;
}

bool lifted_pair(double x, Pair& value) {
    std::int64_t mantissa = 0;
    int exponent = 0;
    return lift_digits(x, mantissa, exponent) && exact_pair(mantissa, exponent, value);
}

// What the pair of an argument may be off by, as a share of it.
constexpr long double k_pair_error = 8 * k_unit * k_unit;

// The lifted angle in degrees less whole turns, worked exactly on integers, so that a large
// angle keeps all its digits: (-360, 360).
bool reduced_degrees(double x, Pair& angle) {
    std::int64_t mantissa = 0;
    int exponent = 0;
    if (!lift_digits(x, mantissa, exponent)) return false;
    if (exponent >= 0) {
        // m 10^e mod 360 from the remainders of its factors.
        Wide power = 1;
        for (int i = 0; i < exponent; ++i) power = power * 10 % 360;
        return exact_pair(static_cast<std::int64_t>(static_cast<Wide>(mantissa) * power % 360), 0, angle);
    }
    // 360 10^k stays below 2^127 for k up to 35; smaller angles need no reduction.
    if (exponent < -35) return exact_pair(mantissa, exponent, angle);
    Wide turn = 360;
    for (int i = 0; i < -exponent; ++i) turn *= 10;
    return exact_pair(static_cast<std::int64_t>(mantissa % turn), exponent, angle);
}

// The angle in radians as a pair.
bool radians(double x, bool degrees, Pair& angle) {
    if (!degrees) return lifted_pair(x, angle);
    if (!reduced_degrees(x, angle)) return false;
    // pi / 180 and what its long double value falls short of it by.
    constexpr long double degree = 0.0174532925199432957692369076848861271344L;
    constexpr long double degree_rest = 9.776144252033726049940294e-23L;
    const Pair product = two_product(angle.hi, degree);
    angle = {product.hi, product.lo + angle.hi * degree_rest + angle.lo * degree};
    return true;
}

// The angle less k quarter turns, |r| <= pi/4 or a little more, for angles below 2^20: pi/2 in
// three parts, the first two short enough that their products with k are exact, so that the
// remainder keeps its digits even next to a multiple of pi/2. The library's own reduction of
// larger arguments is exact too, but slow.
bool reduce_quarter_turns(const Pair& angle, Pair& rest, long long& quarter) {
    if (!(std::fabs(angle.hi) < 1048576.0L)) return false;
    constexpr long double two_over_pi = 0x517cc1b727220a95p-63L;
    constexpr long double pi_half_1 = 0x6487ed5110bp-42L;  // 43 bits
    constexpr long double pi_half_2 = 0x4611a626331p-86L;  // the next 43 bits
    constexpr long double pi_half_3 = 0x45c06e0e68948127p-150L;
    // The nearest whole number: 1.5 2^63 plus anything below 2^62 holds no fraction.
    const long double k = (angle.hi * two_over_pi + 0x1.8p63L) - 0x1.8p63L;
    const long double r = (angle.hi - k * pi_half_1) - k * pi_half_2; // exact: Sterbenz and short parts
    const long double correction = angle.lo - k * pi_half_3;
    rest.hi = r + correction;
    rest.lo = correction - (rest.hi - r);
    quarter = static_cast<long long>(static_cast<double>(k)); // through double: no x87 mode switch
    return true;
}

// sin or cos of hi + lo from those of hi: f(hi) + f'(hi) lo, the square of lo being far below
// anything that counts. The error: the library's on both terms, the pair's and the reduction's,
// the final sum.
bool trig_land(bool sine, const Pair& angle, double& result) {
    Pair rest = angle;
    long long quarter = 0;
    const bool reduced = reduce_quarter_turns(angle, rest, quarter);
    // sin(r + k pi/2) is sin r, cos r, -sin r, -cos r for k = 0, 1, 2, 3 (mod 4); cos likewise from 1.
    const int phase = static_cast<int>(((quarter % 4) + 4 + (sine ? 0 : 1)) % 4);
    long double sin_hi = 0, cos_hi = 0;
    ::sincosl(rest.hi, &sin_hi, &cos_hi);
    const bool use_cos = phase == 1 || phase == 3;
    const bool negate = phase >= 2;
    const long double value = use_cos ? cos_hi : sin_hi;
    const long double correction = (use_cos ? -sin_hi : cos_hi) * rest.lo;
    long double r = value + correction;
    if (negate) r = -r;
    // The reduced angle itself may be a unit off in its last place, which moves f by as much.
    const long double error = (std::fabs(value) + std::fabs(correction)) * (k_library_error + 2 * k_unit) +
                              std::fabs(angle.hi) * k_pair_error * (reduced ? 2 : 1) + std::fabs(r) * k_unit;
    return land(r, error, result);
}

} // namespace

bool fast_sin(double x, bool degrees, double& result) {
    Pair angle;
    return radians(x, degrees, angle) && trig_land(true, angle, result);
}

bool fast_cos(double x, bool degrees, double& result) {
    Pair angle;
    return radians(x, degrees, angle) && trig_land(false, angle, result);
}

bool fast_exp(double x, double& result) {
    Pair argument;
    if (!lifted_pair(x, argument)) return false;
    // e^(hi + lo) = e^hi (1 + lo), lo being below k_unit |hi|.
    const long double base = std::exp(argument.hi);
    const long double r = base + base * argument.lo;
    return land(r, std::fabs(r) * (k_library_error + 2 * k_unit + std::fabs(argument.hi) * k_pair_error), result);
}

bool fast_power(double x, int n, double& result) {
    if (n < 2 || n > 64) return false;
    long double base = 0;
    if (!lifted(x, base)) return false;
    long double r = 1;
    for (int i = 0; i < n; ++i) r *= base;
    // n products and the lift of the base n times over.
    return land(r, std::fabs(r) * 3 * n * k_unit, result);
}

} // namespace quorvex::number
