#include "axis_ticks.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace quorvex::graph {

namespace {

// A tick's value as a whole number of units of 10^exponent, held exactly.
struct DecimalTick {
    std::int64_t units = 0;
    int exponent = 0;
};

// The decimal exponent of the value's leading digit.
int leading_exponent(const DecimalTick& tick) {
    const std::string digits = std::to_string(std::llabs(tick.units));
    return static_cast<int>(digits.size()) - 1 + tick.exponent;
}

std::string plain_text(const DecimalTick& tick) {
    std::string digits = std::to_string(std::llabs(tick.units));
    if (tick.exponent >= 0) {
        digits.append(static_cast<size_t>(tick.exponent), '0');
    } else {
        const auto decimals = static_cast<size_t>(-tick.exponent);
        if (digits.size() <= decimals) digits.insert(0, decimals + 1 - digits.size(), '0');
        digits.insert(digits.size() - decimals, ".");
        while (digits.back() == '0') digits.pop_back();
        if (digits.back() == '.') digits.pop_back();
    }
    return (tick.units < 0 ? "-" : "") + digits;
}

// As printf's %g writes it: one digit, the others after a point, and a signed exponent of at least
// two digits.
std::string scientific_text(const DecimalTick& tick) {
    std::string digits = std::to_string(std::llabs(tick.units));
    const int exponent = static_cast<int>(digits.size()) - 1 + tick.exponent;
    while (digits.size() > 1 && digits.back() == '0') digits.pop_back();
    std::string text = tick.units < 0 ? "-" : "";
    text += digits[0];
    if (digits.size() > 1) text += "." + digits.substr(1);
    char power[16];
    std::snprintf(power, sizeof power, "e%c%02d", exponent < 0 ? '-' : '+', std::abs(exponent));
    return text + power;
}

} // namespace

std::vector<AxisTick> linear_ticks(double from, double to) {
    std::vector<AxisTick> ticks;
    if (!(to > from) || !std::isfinite(from) || !std::isfinite(to) || !std::isfinite(to - from)) return ticks;
    // About six ticks: the rough step rounded to 1, 2 or 5 times a power of ten.
    const double rough = (to - from) / 6;
    int exponent = static_cast<int>(std::floor(std::log10(rough)));
    const double ratio = rough / std::pow(10.0, exponent);
    int mantissa = ratio < 1.5 ? 1 : ratio < 3.5 ? 2 : ratio < 7.5 ? 5 : 10;
    if (mantissa == 10) mantissa = 1, ++exponent;
    const double step = mantissa * std::pow(10.0, exponent);
    // The multiples inside the range; an end that misses a multiple by rounding alone still has it.
    const double slack = 1e-9;
    const double first = std::ceil(from / step - slack), last = std::floor(to / step + slack);
    // Beyond 2^53 multiples the values themselves are no longer apart: such a range has no ticks.
    if (!(std::abs(first) < 0x1p53 / 10 && std::abs(last) < 0x1p53 / 10) || last - first > 100) return ticks;
    std::vector<DecimalTick> exact;
    for (auto k = static_cast<std::int64_t>(first); k <= static_cast<std::int64_t>(last); ++k)
        exact.push_back({k * mantissa, exponent});
    // One way of writing for the whole axis: plain numbers unless they would run long.
    int widest = exponent;
    for (const DecimalTick& tick : exact)
        if (tick.units != 0) widest = std::max(widest, leading_exponent(tick));
    const bool plain = widest < 6 && exponent >= -5;
    const double scale = std::pow(10.0, std::abs(exponent));
    if (!std::isfinite(scale)) return ticks;
    for (const DecimalTick& tick : exact) {
        // One rounding from the exact decimal: the double nearest to it.
        const auto units = static_cast<double>(tick.units);
        const double value = exponent >= 0 ? units * scale : units / scale;
        ticks.push_back({value, tick.units == 0 ? "0" : plain ? plain_text(tick) : scientific_text(tick)});
    }
    return ticks;
}

} // namespace quorvex::graph
