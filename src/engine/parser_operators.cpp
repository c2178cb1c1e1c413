// The kernels behind the operators ^, ! and the relational chain, computed in decimal at 21
// digits and brought back through 15 significant digits.
#include "parser.h"

#include "decimal_round_trip.h"
#include "number/fast_elementary.h"

#include <cmath>

namespace quorvex::engine {

namespace {

using number::ComplexDecimal21;
using number::Decimal21;

bool nearly_real(const complex& z) { return z.imag() == 0 || std::fabs(z.imag()) <= 1e-14; }

ComplexDecimal21 lift21(const complex& z) { return lift(z); }

complex exp21(const complex& z) {
    double value = 0;
    if (z.imag() == 0 && number::fast_exp(z.real(), value)) return {value, 0};
    return land(number::exp(lift21(z)));
}

complex negated(const complex& z) { return {0.0 - z.real(), 0.0 - z.imag()}; }

} // namespace

complex Parser::_pow(complex& z, complex& w) {
    // A real even root such as x^0.5 has a second, negative value.
    bool even_root = false;
    if (nearly_real(z) && nearly_real(w) && w.real() > 0 && w.real() <= 0.5) {
        const double r = 1.0 / w.real();
        if (std::fabs(Mathematics::round(r) - r) < 1e-12 && Mathematics::is_even(Mathematics::round(r))) {
            m_root_taken = true;
            even_root = true;
        }
    }
    const bool negate_root = m_neg_sqrt && even_root;
    complex result;
    if (z.imag() == 0 && w.imag() == 0) {
        const bool integer_power = Mathematics::is_integer(w.real());
        if (z.real() == 0) {
            // Zero to a negative power is a division by zero; to a positive one it is zero.
            if (w.real() < 0) {
                m_math.math_exception(0);
                return {0, 0};
            }
            return w.real() == 0 ? complex(1, 0) : complex(0, 0);
        }
        if (!integer_power && z.real() > 0) {
            const long double exponent = m_math.real_mult(w.real(), std::log(static_cast<long double>(z.real())));
            result = exp21(complex(static_cast<double>(exponent), 0));
        } else if (!integer_power) {
            // An odd root of a negative number is real and negative: (-8)^(1/3) is -2, and
            // (-4)^0.5 is -2 as well. The caller's operand becomes positive on the way.
            z = negated(z);
            complex logarithm;
            ComplexDecimal21 natural;
            number::log(natural, lift21(z));
            logarithm = land(natural);
            result = exp21(m_math.complex_mult(w, logarithm));
            if (!Mathematics::is_even(w.real())) result = negated(result);
        } else {
            double power = 0;
            if (w.real() >= 2 && w.real() <= 64 && number::fast_power(z.real(), static_cast<int>(w.real()), power))
                result = {power, 0};
            else
                result = land(ComplexDecimal21{number::pow(Decimal21::lift(z.real()), Decimal21::lift(w.real())), {}});
        }
    } else {
        ComplexDecimal21 power;
        if (number::pow(power, lift21(z), lift21(w)) != 0) {
            m_math.math_exception(0);
            return {0, 0};
        }
        result = land(power);
    }
    return negate_root ? negated(result) : result;
}

complex Parser::_factorial(complex& z) {
    if (z.imag() != 0) {
        parser_exception(15);
        return {0, 0};
    }
    if (z.real() < 0 || !Mathematics::is_integer(z.real())) {
        parser_exception(16);
        return {0, 0};
    }
    if (z.real() > 170) {
        parser_exception(17);
        return {0, 0};
    }
    return {Decimal21::lift(z.real()).factorial().to_double(), 0};
}

bool Parser::compare(char relation, bool flag, const complex& a, const complex& b) {
    if (!flag) return false; // a chain that failed once stays false
    // Both sides enter at 14 significant digits, so 0.1+0.2 == 0.3 holds. Complex values are
    // ordered part by part: values that differ in opposite directions are neither greater nor less.
    const ComplexDecimal21 x = lift21(a), y = lift21(b);
    switch (relation) {
    case relational::equal: return number::eq(x, y);
    case relational::not_equal: return number::neq(x, y);
    case relational::greater: return number::gt(x, y);
    case relational::greater_equal: return number::ge(x, y);
    case relational::less: return number::lt(x, y);
    case relational::less_equal: return number::le(x, y);
    default: return false;
    }
}

} // namespace quorvex::engine
