#pragma once
#include <charconv>
#include <cmath>
#include <cstdint>

namespace quorvex::number {

// How a double enters decimal: the digits of the shortest text that reads back as the same
// double, rounded half away from zero to 14 significant digits. Gives x = mantissa * 10^exponent
// (|mantissa| <= 10^14); false, with nothing set, for zero and for what is not finite.
inline bool lift_digits(double x, std::int64_t& mantissa, int& exponent) {
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

} // namespace quorvex::number
