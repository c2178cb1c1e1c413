#pragma once
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace quorvex::number {

// How a double enters decimal: the digits of the shortest text that reads back as the same
// double, rounded half away from zero to 14 significant digits. Gives x = mantissa * 10^exponent
// (|mantissa| <= 10^14); false, with nothing set, for zero and for what is not finite.
// This writes the text; lift_digits below gets the same digits faster.
inline bool lift_digits_by_text(double x, std::int64_t& mantissa, int& exponent) {
    if (!std::isfinite(x) || x == 0) return false;
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, x, std::chars_format::scientific);
    const char* p = text;
    const bool negative = *p == '-';
    if (negative) ++p;
    std::int64_t digits_value = 0;
    int digits = 0;
    bool round_up = false;
    for (; p < written.ptr && *p != 'e'; ++p) {
        if (*p == '.') continue;
        if (digits < 14) {
            digits_value = digits_value * 10 + (*p - '0');
            ++digits;
        } else if (digits++ == 14) {
            round_up = *p >= '5'; // the first dropped digit decides a rounding half away from zero
        }
    }
    int scale = 0;
    std::from_chars(p + 1 + (p[1] == '+'), written.ptr, scale); // from_chars takes no plus sign
    const int kept = digits < 14 ? digits : 14;
    if (round_up) ++digits_value; // 99999999999999 + 1 is still exact: the exponent carries it
    mantissa = negative ? -digits_value : digits_value;
    exponent = scale - (kept - 1);
    return true;
}

namespace detail {

// The binary exponent of a normal double, read from its bits (a library call costs more than
// the rest of a lift); -1023 for zero and subnormal numbers.
inline int binary_exponent(double x) {
    return static_cast<int>((std::bit_cast<std::uint64_t>(x) >> 52) & 0x7FF) - 1023;
}

// 10^0 to 10^27, all exact in long double (5^27 < 2^64).
inline constexpr auto k_long_powers_of_ten = [] {
    struct Table {
        long double value[28];
    } powers{};
    powers.value[0] = 1;
    for (int i = 1; i < 28; ++i) powers.value[i] = powers.value[i - 1] * 10;
    return powers;
}();

} // namespace detail

// The same digits as lift_digits_by_text (the mantissa may carry trailing zeros), without the
// text. The double itself, scaled to 14 whole digits in long double, rounds as its shortest text
// does unless it lies near a half-way point of the 14th digit: the shortest text is within half
// a unit in the last place of the double, a hundredth of a unit of the 14th digit at most. Near
// a half-way point, and outside the range of exact powers, the text decides.
inline bool lift_digits(double x, std::int64_t& mantissa, int& exponent) {
    if (!std::isfinite(x) || x == 0) return false;
    const double magnitude = std::fabs(x);
    // floor(log2 |x| log10 2), which is the decimal exponent or one below it.
    const int binary = detail::binary_exponent(magnitude);
    if (binary == -1023) return lift_digits_by_text(x, mantissa, exponent); // subnormal
    int top = (binary * 78913) >> 18;
    long double scaled = 0;
    for (int attempt = 0; attempt < 3; ++attempt) {
        const int shift = 13 - top;
        if (shift > 27 || shift < -27) return lift_digits_by_text(x, mantissa, exponent);
        scaled = shift >= 0 ? magnitude * detail::k_long_powers_of_ten.value[shift]
                            : magnitude / detail::k_long_powers_of_ten.value[-shift];
        if (scaled >= 1e14L) {
            ++top;
        } else if (scaled < 1e13L) {
            --top;
        } else {
            break;
        }
    }
    if (scaled < 1e13L || scaled >= 1e14L) return lift_digits_by_text(x, mantissa, exponent);
    // The nearest integer by adding and taking away 2^63, where a long double holds no fraction:
    // a direct conversion would switch the rounding mode of the x87 unit, which stalls it.
    const long double nearest = (scaled + 0x1p63L) - 0x1p63L;
    const long double fraction = scaled - nearest; // -0.5 to 0.5, exact
    if (0.5L - std::fabs(fraction) < 0.05L) return lift_digits_by_text(x, mantissa, exponent);
    // Away from a half, the nearest integer is the rounding half away from zero; below 2^47,
    // it converts through double exactly.
    const auto digits = static_cast<std::int64_t>(static_cast<double>(nearest));
    mantissa = x < 0 ? -digits : digits;
    exponent = top - 13;
    return true;
}

} // namespace quorvex::number
