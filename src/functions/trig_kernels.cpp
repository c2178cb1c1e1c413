// Trigonometric, hyperbolic and angle kernels. Degrees are converted at 50 digits with a long
// constant, so an angle enters the 21-digit functions without a conversion error: SIN(30) is
// exactly 0.5.
#include "builtin_index.h"
#include "engine/decimal_round_trip.h"
#include "number/fast_elementary.h"
#include "scalar_kernels.h"

#include <cmath>
#include <sstream>

namespace quorvex::functions {

namespace {

using engine::land;
using engine::lift;
using number::ComplexDecimal21;
using number::ComplexDecimal50;
using number::Decimal21;
using number::Decimal50;

const char* const k_degrees_to_radians =
    "0.01745329251994329576923690768488612713442871888541725456097191440171009114603449443682241569634509482";
const char* const k_full_circle =
    "6.283185307179586476925286766559005768394338798750211641949889184615632812572417997256069650684234136";

template <unsigned D>
const number::Decimal<D>& degrees_to_radians() {
    static const auto factor = number::Decimal<D>::from_text(k_degrees_to_radians);
    return factor;
}

// The remainder of x after whole turns, printed at 15 digits and read back.
Decimal50 reduce(const Decimal50& x, const Decimal50& turn) {
    if (x.abs() <= turn) return x;
    Decimal50 quotient, remainder;
    Decimal50::integer_div_rem(x, turn, quotient, remainder);
    return Decimal50::from_text(remainder.to_text(14));
}

bool near(long double value, long double target) { return std::fabs(value - target) < 1e-14L; }

} // namespace

complex ScalarKernels::_trig_func(const complex& z, int function) {
    // A real sine or cosine whose rounding long double settles needs no decimal work.
    if (z.imag() == 0 && (function == SIN || function == COS)) {
        double value = 0;
        if ((function == SIN ? number::fast_sin : number::fast_cos)(z.real(), degrees(), value)) return {value, 0};
    }
    if (std::fabs(z.real()) > 1e80 && std::fabs(z.imag()) > 1e80) {
        m_parser.mathlib_exception(38, function);
        return {0, 0};
    }
    ComplexDecimal50 angle = lift<50>(z);
    // Only TAN is reduced, so that its poles can be found; SIN and COS need no reduction.
    if (function == TAN) {
        const Decimal50 turn = degrees() ? Decimal50::from_text("360.0") : Decimal50::from_text(k_full_circle);
        angle.re = reduce(angle.re, turn);
        angle.im = reduce(angle.im, turn);
        const long double re = std::fabs(angle.re.to_long_double());
        const bool pole = degrees()
                              ? std::fabs(angle.im.to_long_double()) < 1e-307L && (near(re, 90) || near(re, 270))
                              : angle.im.is_zero() && (near(re, std::acos(-1.0L) / 2) || near(re, 1.5L * std::acos(-1.0L)));
        if (pole) {
            std::ostringstream text;
            complex value = z;
            m_parser.stream_variable(value, text, -1);
            m_parser.mathlib_exception(31, function, text.str().c_str());
            return {0, 0};
        }
    }
    if (degrees()) {
        angle.re = angle.re * degrees_to_radians<50>();
        angle.im = angle.im * degrees_to_radians<50>();
    }
    const ComplexDecimal21 x{Decimal21::from(angle.re), Decimal21::from(angle.im)};
    if (function == SIN) return land(number::sin(x));
    if (function == COS) return land(number::cos(x));
    ComplexDecimal21 result;
    if (number::tan(result, x) != 0) {
        m_parser.mathlib_exception(38, function);
        return {0, 0};
    }
    return land(result);
}

complex ScalarKernels::_arc_trig_func(const complex& z, int function) {
    if (degrees() && z.imag() != 0) {
        m_parser.mathlib_exception(28, function);
        return {0, 0};
    }
    if ((function == ASIN || function == ACOS) && (z.real() > 1 || z.real() < -1)) {
        m_parser.mathlib_exception(35, function);
        return {0, 0};
    }
    const ComplexDecimal21 x = lift(z);
    ComplexDecimal21 result;
    if (function == ASIN) {
        result = number::asin(x);
    } else if (function == ACOS) {
        result = number::acos(x);
    } else if (number::atan(result, x) != 0) {
        m_parser.mathlib_exception(38, function);
        return {0, 0};
    }
    if (degrees()) result.re = result.re / degrees_to_radians<21>();
    return land(result);
}

complex ScalarKernels::_hyp_trig_func(const complex& z, int function) {
    const ComplexDecimal21 x = lift(z);
    if (function == SINH) return land(number::sinh(x));
    if (function == COSH) return land(number::cosh(x));
    ComplexDecimal21 result;
    if (number::tanh(result, x) != 0) {
        m_parser.mathlib_exception(38, function);
        return {0, 0};
    }
    return land(result);
}

complex ScalarKernels::_arc_hyp_trig_func(const complex& z, int function) {
    if (function == ATANH && (z.real() <= -1 || z.real() >= 1)) {
        m_parser.mathlib_exception(35, function);
        return {0, 0};
    }
    const ComplexDecimal21 x = lift(z);
    if (function == ASINH) return land(number::asinh(x));
    ComplexDecimal21 result;
    const int fault = function == ACOSH ? number::acosh(result, x) : number::atanh(result, x);
    if (fault != 0) {
        m_parser.mathlib_exception(38, function);
        return {0, 0};
    }
    return land(result);
}

complex ScalarKernels::_degree(const complex& z) {
    const ComplexDecimal21 x = lift(z);
    return land(ComplexDecimal21{x.re / degrees_to_radians<21>(), x.im / degrees_to_radians<21>()});
}

complex ScalarKernels::_radian(const complex& z) {
    const ComplexDecimal21 x = lift(z);
    return land(ComplexDecimal21{x.re * degrees_to_radians<21>(), x.im * degrees_to_radians<21>()});
}

} // namespace quorvex::functions
