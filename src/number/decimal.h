#pragma once
#include "decimal_text.h"
#include "lift_digits.h"

#include <boost/multiprecision/cpp_dec_float.hpp>

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvex::number {

// The working precisions the engine asks for (14, 21 and 50 significant digits) each run on a
// fixed cpp_dec_float width N with guard digits: N = 24, 32 and 64. Why these:
//  - Boost holds N rounded up to whole 8-digit limbs plus three guard limbs: 48, 56 and 88
//    digits. A sum, difference or product of two operands of the working width (two lifted
//    doubles have 14 digits each) is exact in that room, so the one rounding of an operator is
//    the 15-digit rounding of its text.
//  - Boost's exp, log and trigonometric series are good to about N + 2 digits (measured against
//    mpmath: 26, 34 and 66), which leaves 10 to 14 true digits beyond the working precision, so
//    even a result lying within 1e-20 of a 15-digit tie rounds the right way. Where the
//    backend would lose digits for large arguments (sin of 1e22, exp of 1e5) the functions
//    reduce their arguments wider still (wide_reduction.h).
//  - Wider N costs time on every operator (the round trip of an add is mostly parse and print
//    at this width) without making any 15-digit result more right.
template <unsigned Digits>
struct Width;
template <>
struct Width<14> {
    static constexpr unsigned value = 24;
};
template <>
struct Width<21> {
    static constexpr unsigned value = 32;
};
template <>
struct Width<50> {
    static constexpr unsigned value = 64;
};

// A decimal floating value at one of the engine's working precisions.
template <unsigned Digits>
class Decimal {
public:
    using Value =
        boost::multiprecision::number<boost::multiprecision::cpp_dec_float<Width<Digits>::value>,
                                      boost::multiprecision::et_off>;

    // Digits the backend really holds (whole 8-digit limbs plus its guard limbs).
    static constexpr int held_digits = std::numeric_limits<Value>::max_digits10;

    Decimal() = default;
    Decimal(int value) : m_value(value) {} // NOLINT: integers convert freely, as in arithmetic
    // Overflow in the backend gives an infinity and infinity minus infinity a NaN; neither may
    // reach the text writer. An infinity becomes the largest finite value of its sign, which
    // still reads back as an infinite double, and a NaN becomes zero.
    explicit Decimal(Value value) : m_value(std::move(value)) {
        if (!m_value.backend().isfinite()) saturate();
    }

    // Never throws: anything that is not a number reads as far as it goes, or as zero. A value
    // beyond the decimal range saturates like an overflow, one below it is zero.
    static Decimal from_text(std::string_view text) {
        Decimal result(Value(canonical_decimal(text)));
        if (result.is_zero()) return result;
        const long long order = result.m_value.backend().order();
        if (order > k_range_order) result.saturate();
        if (order < -k_range_order) result.m_value = 0;
        return result;
    }

    // A binary value enters through 14 significant digits, so its noise stays outside. The
    // digits are those of the shortest text that reads back as the same double (the number the
    // user wrote, where a user wrote it), rounded half away from zero like every other rounding
    // of the engine, and they go straight into the mantissa: every operator pays for this twice.
    static Decimal lift(double x) {
        std::int64_t mantissa = 0;
        int exponent = 0;
        if (std::isinf(x)) return overflowed(x < 0); // an overflow stays one, it never turns into 0
        if (!lift_digits(x, mantissa, exponent)) return Decimal();
        Value value(static_cast<long long>(mantissa));
        value *= power_of_ten(exponent);
        return Decimal(std::move(value));
    }
    // A long double that holds a double's value lifts exactly as that double does (the engine's
    // long doubles mostly come from doubles); one with more bits takes the same rule on its own
    // shortest text.
    static Decimal lift(long double x) {
        if (std::isinf(x)) return overflowed(x < 0);
        if (!std::isfinite(x) || x == 0) return Decimal();
        if (std::fabs(x) <= (std::numeric_limits<double>::max)()) {
            const double narrow = static_cast<double>(x);
            if (static_cast<long double>(narrow) == x) return lift(narrow);
        }
        char text[64];
        const auto written = std::to_chars(text, text + sizeof text, x, std::chars_format::scientific);
        return Decimal(Value(round_scientific(std::string_view(text, static_cast<size_t>(written.ptr - text)), 13)));
    }

    template <unsigned Other>
    static Decimal from(const Decimal<Other>& other) {
        return Decimal(Value(other.value()));
    }

    // Scientific text with exactly `places` digits after the point, rounded half away from zero
    // from the exact digits: "1.25E-3", "-9.0E+12". With no places there is no point: 2.5 gives
    // "3E+0". Zero is "0.000E+0" (or "0E+0"). A negative `places` writes every digit held, with
    // trailing zeros dropped: "1.5E+0".
    std::string to_text(int places) const {
        char text[48];
        if (places >= 0 && places <= 17) return std::string(text, write_rounded(text, places));
        return round_scientific(m_value.str(k_exact_digits, std::ios_base::scientific), places);
    }
    // The way back into binary: through 15 significant digits.
    double to_double() const {
        char text[48];
        const size_t length = write_rounded(text, 14);
        double result = 0;
        const auto parsed = std::from_chars(text, text + length, result);
        // from_chars leaves the value alone when the text overflows a double.
        if (parsed.ec == std::errc::result_out_of_range)
            return std::strtod(std::string(text, length).c_str(), nullptr);
        return result;
    }
    long double to_long_double() const {
        char text[48];
        text[write_rounded(text, 14)] = '\0';
        return std::strtold(text, nullptr);
    }

    const Value& value() const { return m_value; }

    friend Decimal operator+(const Decimal& a, const Decimal& b) { return Decimal(a.m_value + b.m_value); }
    friend Decimal operator-(const Decimal& a, const Decimal& b) { return Decimal(a.m_value - b.m_value); }
    friend Decimal operator*(const Decimal& a, const Decimal& b) { return Decimal(a.m_value * b.m_value); }
    // Division by zero gives zero; callers that care test the divisor first.
    friend Decimal operator/(const Decimal& a, const Decimal& b) {
        return b.is_zero() ? Decimal() : Decimal(a.m_value / b.m_value);
    }
    Decimal operator-() const { return Decimal(-m_value); }
    friend bool operator==(const Decimal& a, const Decimal& b) { return a.m_value == b.m_value; }
    friend bool operator<(const Decimal& a, const Decimal& b) { return a.m_value < b.m_value; }
    friend bool operator>(const Decimal& a, const Decimal& b) { return a.m_value > b.m_value; }
    friend bool operator<=(const Decimal& a, const Decimal& b) { return a.m_value <= b.m_value; }
    friend bool operator>=(const Decimal& a, const Decimal& b) { return a.m_value >= b.m_value; }

    int compare(const Decimal& other) const { return m_value < other.m_value ? -1 : (m_value > other.m_value ? 1 : 0); }
    int sign() const { return m_value.sign(); }
    bool is_zero() const { return m_value.is_zero(); }
    bool is_integer() const { return boost::multiprecision::trunc(m_value) == m_value; }
    Decimal abs() const { return Decimal(boost::multiprecision::abs(m_value)); }
    Decimal floor() const { return Decimal(boost::multiprecision::floor(m_value)); }
    Decimal ceil() const { return Decimal(boost::multiprecision::ceil(m_value)); }
    Decimal trunc() const { return Decimal(boost::multiprecision::trunc(m_value)); }
    // To an integer, halves away from zero.
    Decimal round() const {
        const Value magnitude = boost::multiprecision::floor(boost::multiprecision::abs(m_value) + Value(0.5));
        return Decimal(m_value.sign() < 0 ? Value(-magnitude) : magnitude);
    }

    // Quotient truncated toward zero and the remainder a - q*b; a zero divisor gives zeros.
    static void integer_div_rem(const Decimal& a, const Decimal& b, Decimal& quotient, Decimal& remainder) {
        if (b.is_zero()) {
            quotient = remainder = Decimal();
            return;
        }
        quotient = Decimal(boost::multiprecision::trunc(a.m_value / b.m_value));
        remainder = a - quotient * b;
        // A quotient just below an integer can be rounded up to it by the division; the
        // remainder then has the wrong sign, and one step back mends it.
        if (!remainder.is_zero() && remainder.sign() != a.sign()) {
            const Decimal step(a.sign() * b.sign());
            quotient = quotient - step;
            remainder = remainder + step * b;
        }
    }

    // n! of a non-negative integer value; anything else, or an n too large to be useful, is zero.
    Decimal factorial() const {
        if (sign() < 0 || !is_integer() || m_value > k_factorial_limit) return Decimal();
        Value product = 1;
        for (long k = 2; Value(k) <= m_value; ++k) product *= k;
        return Decimal(product);
    }

private:
    // The largest value of a sign: what an infinite double lifts to, and what lands as one again.
    static Decimal overflowed(bool negative) {
        Decimal result(negative ? -1 : 1);
        result.saturate();
        return result;
    }
    void saturate() {
        if (boost::multiprecision::isnan(m_value))
            m_value = 0;
        else
            m_value = m_value.sign() < 0 ? -(std::numeric_limits<Value>::max)() : (std::numeric_limits<Value>::max)();
    }

    // Made once: a Value read from a double is a conversion of its own, on every rounding.
    static const Value& half() {
        static const Value value(0.5);
        return value;
    }

    // 10^k, exact; the common range is built once and kept.
    static const Value& power_of_ten(int k) {
        static const std::vector<Value> table = [] {
            std::vector<Value> powers;
            for (int e = -k_table_limit; e <= k_table_limit; ++e) powers.emplace_back("1e" + std::to_string(e));
            return powers;
        }();
        if (k >= -k_table_limit && k <= k_table_limit) return table[static_cast<size_t>(k + k_table_limit)];
        thread_local Value other;
        other = Value("1e" + std::to_string(k));
        return other;
    }

    // Writes the value rounded half away from zero to places + 1 significant digits as
    // "d.dddE+n" into `text` (room for 48 characters); returns the length. Works on the exact
    // digits: scaling by a power of ten is exact in a decimal type.
    size_t write_rounded(char* text, int places) const {
        char* out = text;
        if (m_value.is_zero()) {
            *out++ = '0';
            if (places > 0) {
                *out++ = '.';
                for (int i = 0; i < places; ++i) *out++ = '0';
            }
            *out++ = 'E', *out++ = '+', *out++ = '0';
            return static_cast<size_t>(out - text);
        }
        long long order = m_value.backend().order();
        const Value magnitude = boost::multiprecision::abs(m_value);
        const Value scaled = magnitude * power_of_ten(static_cast<int>(places - order));
        const Value whole = boost::multiprecision::trunc(scaled);
        unsigned long long digits = whole.template convert_to<unsigned long long>();
        if (scaled - whole >= half()) ++digits;
        static constexpr unsigned long long k_limits[] = {
            10ULL, 100ULL, 1000ULL, 10000ULL, 100000ULL, 1000000ULL, 10000000ULL, 100000000ULL,
            1000000000ULL, 10000000000ULL, 100000000000ULL, 1000000000000ULL, 10000000000000ULL,
            100000000000000ULL, 1000000000000000ULL, 10000000000000000ULL, 100000000000000000ULL,
            1000000000000000000ULL};
        if (digits >= k_limits[places]) { // 9.99...5 rounded up to 10.00...
            digits /= 10;
            ++order;
        }
        if (m_value.sign() < 0) *out++ = '-';
        char reversed[20];
        int count = 0;
        for (int i = 0; i <= places; ++i, digits /= 10) reversed[count++] = static_cast<char>('0' + digits % 10);
        *out++ = reversed[--count];
        if (places > 0) *out++ = '.';
        while (count > 0) *out++ = reversed[--count];
        *out++ = 'E';
        *out++ = order < 0 ? '-' : '+';
        const auto exponent = std::to_chars(out, text + 48, order < 0 ? -order : order);
        return static_cast<size_t>(exponent.ptr - text);
    }

    static constexpr long long k_range_order = std::numeric_limits<Value>::max_exponent10;
    static constexpr int k_table_limit = 400;
    static constexpr int k_exact_digits = std::numeric_limits<Value>::max_digits10 + 8;
    static constexpr int k_factorial_limit = 3000;
    Value m_value{0};
};

using Decimal14 = Decimal<14>;
using Decimal21 = Decimal<21>;
using Decimal50 = Decimal<50>;

} // namespace quorvex::number
