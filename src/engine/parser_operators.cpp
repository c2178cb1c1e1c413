// The kernels behind the operators ^, ! and the relational chain.
#include "parser.h"

#include <cmath>

namespace quorvex::engine {

namespace {

bool is_real(const complex& z) { return z.imag() == 0 || std::fabs(z.imag()) <= 1e-14; }

int compare_parts(long double a, long double b) { return a < b ? -1 : (a > b ? 1 : 0); }

} // namespace

complex Parser::_pow(complex& z, complex& w) {
    // A real even root such as x^0.5 has a second, negative value.
    bool even_root = false;
    if (is_real(z) && is_real(w) && w.real() > 0 && w.real() <= 0.5) {
        const double r = 1.0 / w.real();
        if (std::fabs(std::round(r) - r) < 1e-12 && Mathematics::is_even(std::round(r))) {
            m_root_taken = true;
            even_root = true;
        }
    }
    const long double base = Mathematics::lift(z.real());
    const long double power = Mathematics::lift(w.real());
    complex result;
    if (z.imag() == 0 && w.imag() == 0) {
        if (base == 0 && power < 0) {
            m_math.math_exception(0);
            return {0, 0};
        }
        if (!Mathematics::is_integer(power) && base < 0) {
            // An odd root of a negative number is real and negative: (-8)^(1/3) is -2.
            long double magnitude = std::pow(-base, power);
            if (!Mathematics::is_even(power)) magnitude = -magnitude;
            result = complex(Mathematics::land(magnitude), 0);
        } else {
            result = complex(Mathematics::land(std::pow(base, power)), 0);
        }
    } else {
        const std::complex<long double> zl(base, Mathematics::lift(z.imag()));
        const std::complex<long double> wl(power, Mathematics::lift(w.imag()));
        if (zl == std::complex<long double>(0, 0)) {
            if (wl.real() > 0) return {0, 0};
            m_math.math_exception(0);
            return {0, 0};
        }
        const std::complex<long double> r = std::pow(zl, wl);
        result = complex(Mathematics::land(r.real()), Mathematics::land(r.imag()));
    }
    if (m_neg_sqrt && even_root) result = -result;
    return result;
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
    long double product = 1;
    for (int k = 2; k <= static_cast<int>(z.real()); ++k) product *= k;
    return {Mathematics::land(product), 0};
}

bool Parser::compare(char relation, bool flag, const complex& a, const complex& b) {
    if (!flag) return false; // a chain that failed once stays false
    // Both sides enter at 14 significant digits, so 0.1+0.2 == 0.3 holds.
    const int re = compare_parts(Mathematics::lift(a.real()), Mathematics::lift(b.real()));
    const int im = compare_parts(Mathematics::lift(a.imag()), Mathematics::lift(b.imag()));
    // A partial order on the parts: values that differ in opposite directions are neither
    // greater nor less.
    switch (relation) {
    case relational::equal: return re == 0 && im == 0;
    case relational::not_equal: return !(re == 0 && im == 0);
    case relational::greater: return re >= 0 && im >= 0 && re + im > 0;
    case relational::greater_equal: return re >= 0 && im >= 0;
    case relational::less: return re <= 0 && im <= 0 && re + im < 0;
    case relational::less_equal: return re <= 0 && im <= 0;
    default: return false;
    }
}

} // namespace quorvex::engine
