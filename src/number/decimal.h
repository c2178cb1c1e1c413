#pragma once
#include "decimal_text.h"

#include <boost/multiprecision/cpp_dec_float.hpp>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

namespace quorvex::number {

// The working precisions the engine asks for (14, 21 and 50 significant digits) each run on a
// fixed cpp_dec_float width with guard digits: 24, 32 and 64 requested digits, which Boost
// rounds up to whole 8-digit limbs plus its own guard limbs (48, 56 and 88 digits held). Results
// of the elementary functions are therefore right well beyond the working precision, and the
// 15-digit rounding of the output is decided by true digits, not by noise.
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

    Decimal() = default;
    Decimal(int value) : m_value(value) {} // NOLINT: integers convert freely, as in arithmetic
    explicit Decimal(Value value) : m_value(std::move(value)) {}

    // Never throws: anything that is not a number reads as far as it goes, or as zero.
    static Decimal from_text(std::string_view text) { return Decimal(Value(canonical_decimal(text))); }

    // A binary value enters through its 14-significant-digit text, so its noise stays outside.
    static Decimal lift(long double x) {
        if (!std::isfinite(x)) return Decimal();
        char text[64];
        std::snprintf(text, sizeof text, "%.14Lg", x);
        return from_text(text);
    }

    template <unsigned Other>
    static Decimal from(const Decimal<Other>& other) {
        return Decimal(Value(other.value()));
    }

    // Scientific text with `places` digits after the point, rounded half away from zero.
    std::string to_text(int places) const {
        return round_scientific(m_value.str(k_exact_digits, std::ios_base::scientific), places);
    }
    // The way back into binary: through 15 significant digits.
    double to_double() const { return std::strtod(to_text(14).c_str(), nullptr); }
    long double to_long_double() const { return std::strtold(to_text(14).c_str(), nullptr); }

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
    }

    // n! of a non-negative integer value; anything else, or an n too large to be useful, is zero.
    Decimal factorial() const {
        if (sign() < 0 || !is_integer() || m_value > k_factorial_limit) return Decimal();
        Value product = 1;
        for (long k = 2; Value(k) <= m_value; ++k) product *= k;
        return Decimal(product);
    }

private:
    static constexpr int k_exact_digits = std::numeric_limits<Value>::max_digits10 + 8;
    static constexpr int k_factorial_limit = 3000;
    Value m_value{0};
};

using Decimal14 = Decimal<14>;
using Decimal21 = Decimal<21>;
using Decimal50 = Decimal<50>;

} // namespace quorvex::number
