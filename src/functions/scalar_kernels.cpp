#include "scalar_kernels.h"

#include "engine/decimal_round_trip.h"
#include "engine/error_tables.h"
#include "number/fast_elementary.h"

#include <cmath>

namespace quorvex::functions {

namespace {

using engine::land;
using engine::lift;
using number::ComplexDecimal21;
using number::Decimal21;

bool is_real(const complex& z) { return z.imag() == 0; }

// 1/pi, as the polar forms have always converted radians to degrees.
constexpr long double k_one_over_pi = 0.3183098861837907L;
constexpr long double k_pi = 3.14159265358979323846264338327950288L;

} // namespace

complex ScalarKernels::_sqrt(const complex& z) {
    // A real square root has a second, negative value; clients ask whether one was taken.
    if (z.imag() == 0 || std::fabs(z.imag()) <= 1e-14) m_parser.set_root_taken();
    complex root = land(number::sqrt(lift(z)));
    if (m_parser.neg_sqrt()) root = complex(0.0 - root.real(), 0.0 - root.imag());
    return root;
}

complex ScalarKernels::_cubert(const complex& z) {
    // Fifteen threes, not the double nearest to one third, so that CUBERT(-8) lands on -2.
    complex base = z, third(0.333333333333333, 0);
    return m_parser._pow(base, third);
}

complex ScalarKernels::_log(const complex& z, int function) {
    ComplexDecimal21 result;
    if (number::log(result, lift(z)) != 0) {
        m_parser.mathlib_exception(21, function);
        return {0, 0};
    }
    return land(result);
}

complex ScalarKernels::_log10(const complex& z, int function) {
    ComplexDecimal21 result;
    if (number::log10(result, lift(z)) != 0) {
        m_parser.mathlib_exception(21, function);
        return {0, 0};
    }
    return land(result);
}

complex ScalarKernels::_logarithm(const complex& z, const complex& base, int function) {
    if (z == complex(0, 0)) {
        m_parser.mathlib_exception(21, function);
        return {0, 0};
    }
    if (base.real() < 2 || base.imag() != 0) {
        m_parser.mathlib_exception(26, function);
        return {0, 0};
    }
    return m_parser.mathematics().logarithm(z, base.real());
}

complex ScalarKernels::_exp(const complex& z) {
    double value = 0;
    if (z.imag() == 0 && number::fast_exp(z.real(), value)) return {value, 0};
    return land(number::exp(lift(z)));
}

complex ScalarKernels::_abs(const complex& z) { return land(number::abs(lift(z))); }

complex ScalarKernels::_round(const complex& z) { return land(number::round(lift(z))); }

complex ScalarKernels::_trunc(const complex& z) { return land(number::fix(lift(z))); }

complex ScalarKernels::_floor(const complex& z, int function) {
    // Beyond this a 15-digit answer cannot show the step to the next integer.
    if (z.real() >= 99999999999999.9 || z.imag() >= 99999999999999.9) {
        m_parser.mathlib_exception(39, function);
        return {0, 0};
    }
    return land(number::floor(lift(z)));
}

complex ScalarKernels::_ceil(const complex& z, int function) {
    if (z.real() >= 99999999999999.9 || z.imag() >= 99999999999999.9) {
        m_parser.mathlib_exception(39, function);
        return {0, 0};
    }
    return land(number::ceil(lift(z)));
}

complex ScalarKernels::_fmod(const complex& z, const complex& w, int function) {
    // The parts are rounded to integers first; beyond 15 digits they are no longer exact.
    for (const double part : {z.real(), z.imag(), w.real(), w.imag()})
        if (!(std::fabs(std::round(part)) < engine::Mathematics::k_exact_integer_limit)) {
            m_parser.mathlib_exception(engine::k_mathlib_integer_too_large, function);
            return {0, 0};
        }
    ComplexDecimal21 result;
    if (w == complex(0, 0) || number::mod(result, lift(z), lift(w)) != 0) {
        m_parser.mathlib_exception(21, function);
        return {0, 0};
    }
    return land(result);
}

bool ScalarKernels::refuse_inexact_integers(const complex& a, const complex& b, int function) {
    if (engine::Mathematics::is_exact_integer(a.real()) && engine::Mathematics::is_exact_integer(b.real())) return false;
    m_parser.mathlib_exception(engine::k_mathlib_integer_too_large, function);
    return true;
}

complex ScalarKernels::_gcd(const complex& a, const complex& b, int function) {
    if (m_parser.check_no_imag_compnts(13, function, a, b) || m_parser.check_pos_integers(function, a, b) ||
        refuse_inexact_integers(a, b, function))
        return {0, 0};
    return {static_cast<double>(engine::Mathematics::gcd(a.real(), b.real())), 0};
}

complex ScalarKernels::_lcm(const complex& a, const complex& b, int function) {
    if (m_parser.check_no_imag_compnts(13, function, a, b) || m_parser.check_pos_integers(function, a, b) ||
        refuse_inexact_integers(a, b, function))
        return {0, 0};
    // Up to 30 digits, rounded to 15 like every other answer.
    return land(Decimal21::from_text(engine::Mathematics::lcm(a.real(), b.real())));
}

complex ScalarKernels::_hypot(const complex& x, const complex& y, int function) {
    if (m_parser.check_no_imag_compnts(13, function, x, y)) return {0, 0};
    return {static_cast<double>(std::hypot(static_cast<long double>(x.real()), static_cast<long double>(y.real()))), 0};
}

// The polar forms stay in long double and round small parts to zero instead.
complex ScalarKernels::_rtop(const complex& x, const complex& y, int function) {
    if (m_parser.check_no_imag_compnts(13, function, x, y)) return {0, 0};
    engine::Mathematics& math = m_parser.mathematics();
    const long double tolerance = m_parser.answer_format().zero_precision;
    const long double re = x.real(), im = y.real();
    long double magnitude = std::sqrt(re * re + im * im);
    long double angle = std::atan2(im, re);
    math.round_zero(magnitude, tolerance);
    math.round_zero(angle, tolerance);
    if (degrees()) angle = angle * k_one_over_pi * 180;
    return {static_cast<double>(magnitude), static_cast<double>(angle)};
}

complex ScalarKernels::_ptor(const complex& r, const complex& a, int function) {
    if (m_parser.check_no_imag_compnts(13, function, r, a)) return {0, 0};
    engine::Mathematics& math = m_parser.mathematics();
    const long double tolerance = m_parser.answer_format().zero_precision;
    long double angle = a.real();
    if (degrees()) angle = angle * k_pi * (1.0L / 180);
    long double re = r.real() * std::cos(angle);
    long double im = r.real() * std::sin(angle);
    math.round_zero(re, tolerance);
    math.round_zero(im, tolerance);
    return {static_cast<double>(re), static_cast<double>(im)};
}

complex ScalarKernels::_polar(const complex& r, const complex& a, int function) {
    if (m_parser.check_no_imag_compnts(13, function, r, a)) return {0, 0};
    // The angle is taken in radians whatever the mode, unlike PTOR.
    return {r.real() * std::cos(a.real()), r.real() * std::sin(a.real())};
}

complex ScalarKernels::_angle(const complex& z) {
    long double angle = std::atan2(static_cast<long double>(z.imag()), static_cast<long double>(z.real()));
    // The negative real axis is +pi, never -pi.
    if (z.real() < 0 && z.imag() == 0 && angle < 0) angle = -angle;
    if (degrees()) angle = angle * k_one_over_pi * 180;
    return {static_cast<double>(angle), 0};
}

complex ScalarKernels::_basecon(const complex& z, const complex& w, int function, std::string* text) {
    if (!is_real(z) || z.real() < 1 || !engine::Mathematics::is_integer(z.real())) {
        m_parser.mathlib_exception(24, function);
        return {0, 0};
    }
    if (!is_real(w) || w.real() < 2 || w.real() > 16 || !engine::Mathematics::is_integer(w.real())) {
        m_parser.mathlib_exception(25, function);
        return {0, 0};
    }
    if (refuse_inexact_integers(z, w, function)) return {0, 0};
    const std::string digits = engine::Mathematics::basecon(z.real(), w.real());
    if (text) {
        *text = digits;
        return z;
    }
    if (w.real() != 10) {
        m_parser.mathlib_exception(37, function);
        return {0, 0};
    }
    return land(Decimal21::from_text(digits));
}

} // namespace quorvex::functions
