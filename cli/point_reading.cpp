#include "point_reading.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace quorvex::cli {

namespace {

// 10^0 to 10^27, all exact in long double (5^27 < 2^64).
constexpr auto k_powers = [] {
    struct Table {
        long double value[28];
    } powers{};
    powers.value[0] = 1;
    for (int i = 1; i < 28; ++i) powers.value[i] = powers.value[i - 1] * 10;
    return powers;
}();

} // namespace

std::optional<long double> read_as_engine(double nearest) {
    if (nearest == 0) return 0.0L; // the text "0.0...E+0" reads as +0
    if (!std::isnormal(nearest)) return std::nullopt;
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, nearest, std::chars_format::scientific);
    if (written.ec != std::errc()) return std::nullopt;
    const char* p = text;
    const bool negative = *p == '-';
    if (negative) ++p;
    std::uint64_t digits = 0;
    int fraction_digits = 0;
    bool after_point = false;
    for (; p < written.ptr && *p != 'e'; ++p) {
        if (*p == '.') {
            after_point = true;
            continue;
        }
        digits = digits * 10 + static_cast<std::uint64_t>(*p - '0');
        if (after_point) ++fraction_digits;
    }
    if (fraction_digits > 14 || p == written.ptr) return std::nullopt; // more than 15 digits: no engine result
    int scale = 0;
    if (std::from_chars(p + 1 + (p[1] == '+'), written.ptr, scale).ec != std::errc()) return std::nullopt;
    const int exponent = scale - fraction_digits;
    if (exponent > 27 || exponent < -27) return std::nullopt;
    // digits < 10^15 is exact in long double; one multiplication or division by an exact power
    // rounds correctly, as reading the text does.
    const long double magnitude = exponent >= 0 ? static_cast<long double>(digits) * k_powers.value[exponent]
                                                : static_cast<long double>(digits) / k_powers.value[-exponent];
    return negative ? -magnitude : magnitude;
}

} // namespace quorvex::cli
