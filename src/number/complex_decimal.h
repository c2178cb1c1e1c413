#pragma once
#include "decimal_functions.h"

namespace quorvex::number {

// A complex value as two decimals. The operations below keep the engine's rules: results come
// out of the named formulas, faults return -1 and leave the result untouched, and comparisons
// work on the parts, not on the modulus.
template <unsigned D>
struct ComplexDecimal {
    Decimal<D> re;
    Decimal<D> im;

    static ComplexDecimal lift(double real, double imaginary) {
        return {Decimal<D>::lift(real), Decimal<D>::lift(imaginary)};
    }
    bool is_real() const { return im.is_zero(); }
};

using ComplexDecimal14 = ComplexDecimal<14>;
using ComplexDecimal21 = ComplexDecimal<21>;
using ComplexDecimal50 = ComplexDecimal<50>;

template <unsigned D>
bool is0(const ComplexDecimal<D>& z) {
    return z.re.is_zero() && z.im.is_zero();
}

template <unsigned D>
ComplexDecimal<D> add(const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    return {z.re + w.re, z.im + w.im};
}
template <unsigned D>
ComplexDecimal<D> sub(const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    return {z.re - w.re, z.im - w.im};
}
template <unsigned D>
ComplexDecimal<D> mul(const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    return {z.re * w.re - z.im * w.im, z.re * w.im + z.im * w.re};
}
template <unsigned D>
int div(ComplexDecimal<D>& result, const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    const Decimal<D> d2 = w.re * w.re + w.im * w.im;
    if (d2.is_zero()) return -1;
    result = {(z.re * w.re + z.im * w.im) / d2, (w.re * z.im - z.re * w.im) / d2};
    return 0;
}

template <unsigned D>
Decimal<D> abs(const ComplexDecimal<D>& z) {
    if (z.im.is_zero()) return z.re.abs();
    if (z.re.is_zero()) return z.im.abs();
    return sqrt(z.re * z.re + z.im * z.im);
}

template <unsigned D>
ComplexDecimal<D> sqrt(const ComplexDecimal<D>& z) {
    if (z.im.is_zero()) {
        // Exact on the axes: the root of a negative real is positive imaginary.
        if (z.re.sign() >= 0) return {sqrt(z.re), Decimal<D>()};
        return {Decimal<D>(), sqrt(-z.re)};
    }
    const Decimal<D> m = abs(z);
    const Decimal<D> two(2);
    const Decimal<D> re = sqrt((m + z.re) / two);
    Decimal<D> im = sqrt((m - z.re) / two);
    if (z.im.sign() < 0) im = -im;
    return {re, im};
}

template <unsigned D>
ComplexDecimal<D> exp(const ComplexDecimal<D>& z) {
    const Decimal<D> scale = exp(z.re);
    if (z.im.is_zero()) return {scale, Decimal<D>()};
    return {scale * cos(z.im), scale * sin(z.im)};
}

template <unsigned D>
int log(ComplexDecimal<D>& result, const ComplexDecimal<D>& z) {
    if (is0(z)) return -1;
    result = {log(abs(z)), atan2(z.im, z.re)};
    return 0;
}

template <unsigned D>
int log10(ComplexDecimal<D>& result, const ComplexDecimal<D>& z) {
    ComplexDecimal<D> natural;
    if (log(natural, z) != 0) return -1;
    const Decimal<D> ln10 = log(Decimal<D>(10));
    result = {natural.re / ln10, natural.im / ln10};
    return 0;
}

template <unsigned D>
int pow(ComplexDecimal<D>& result, const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    if (is0(z)) {
        if (w.re.sign() <= 0) return -1;
        result = {};
        return 0;
    }
    ComplexDecimal<D> logarithm;
    log(logarithm, z);
    result = exp(mul(w, logarithm));
    return 0;
}

template <unsigned D>
ComplexDecimal<D> sin(const ComplexDecimal<D>& z) {
    if (z.im.is_zero()) return {sin(z.re), Decimal<D>()};
    return {sin(z.re) * cosh(z.im), cos(z.re) * sinh(z.im)};
}
template <unsigned D>
ComplexDecimal<D> cos(const ComplexDecimal<D>& z) {
    if (z.im.is_zero()) return {cos(z.re), Decimal<D>()};
    return {cos(z.re) * cosh(z.im), -(sin(z.re) * sinh(z.im))};
}
template <unsigned D>
int tan(ComplexDecimal<D>& result, const ComplexDecimal<D>& z) {
    const Decimal<D> s = sin(z.re), c = cos(z.re), sh = sinh(z.im), ch = cosh(z.im);
    const Decimal<D> d = c * c + sh * sh;
    // A denominator this small is a pole as far as the working precision can tell.
    if (d.is_zero() || d.abs() < Decimal<D>::from_text("1e-" + std::to_string(2 * D + 2))) return -1;
    result = {s * c / d, sh * ch / d};
    return 0;
}

template <unsigned D>
ComplexDecimal<D> sinh(const ComplexDecimal<D>& z) {
    if (z.im.is_zero()) return {sinh(z.re), Decimal<D>()};
    return {sinh(z.re) * cos(z.im), cosh(z.re) * sin(z.im)};
}
template <unsigned D>
ComplexDecimal<D> cosh(const ComplexDecimal<D>& z) {
    if (z.im.is_zero()) return {cosh(z.re), Decimal<D>()};
    return {cosh(z.re) * cos(z.im), sinh(z.re) * sin(z.im)};
}
template <unsigned D>
int tanh(ComplexDecimal<D>& result, const ComplexDecimal<D>& z) {
    if (z.im.is_zero()) {
        result = {tanh(z.re), Decimal<D>()};
        return 0;
    }
    const Decimal<D> two(2);
    const Decimal<D> d = cosh(two * z.re) + cos(two * z.im);
    if (d.is_zero()) return -1;
    result = {sinh(two * z.re) / d, sin(two * z.im) / d};
    return 0;
}

namespace detail {
// Below this magnitude the inverse functions use their series, where the logarithmic forms
// would lose digits to cancellation.
template <unsigned D>
bool tiny(const ComplexDecimal<D>& z) {
    static const Decimal<D> limit = Decimal<D>::from_text("1e-8");
    return z.re.abs() < limit && z.im.abs() < limit;
}
// z + sign * z^3 / divisor: the first two terms of the series.
template <unsigned D>
ComplexDecimal<D> cubic_series(const ComplexDecimal<D>& z, int sign, int divisor) {
    const ComplexDecimal<D> cube = mul(z, mul(z, z));
    const Decimal<D> d(divisor * sign);
    return {z.re + cube.re / d, z.im + cube.im / d};
}
template <unsigned D>
ComplexDecimal<D> times_i(const ComplexDecimal<D>& z) {
    return {-z.im, z.re};
}
} // namespace detail

template <unsigned D>
ComplexDecimal<D> asin(const ComplexDecimal<D>& z) {
    if (z.im.is_zero() && z.re.abs() <= Decimal<D>(1)) return {asin(z.re), Decimal<D>()};
    if (detail::tiny(z)) return detail::cubic_series(z, 1, 6);
    // -i log(iz + w) with w = sqrt(1 - z^2); since (w + iz)(w - iz) = 1, the larger of the two
    // gives the same logarithm without cancellation.
    const ComplexDecimal<D> one{Decimal<D>(1), Decimal<D>()};
    const ComplexDecimal<D> w = sqrt(sub(one, mul(z, z)));
    const ComplexDecimal<D> iz = detail::times_i(z);
    const ComplexDecimal<D> plus = add(w, iz), minus = sub(w, iz);
    ComplexDecimal<D> logarithm;
    if (abs(plus) >= abs(minus)) {
        log(logarithm, plus);
    } else {
        log(logarithm, minus);
        logarithm = {-logarithm.re, -logarithm.im};
    }
    return {logarithm.im, -logarithm.re};
}

template <unsigned D>
ComplexDecimal<D> acos(const ComplexDecimal<D>& z) {
    if (z.im.is_zero() && z.re.abs() <= Decimal<D>(1)) return {acos(z.re), Decimal<D>()};
    const ComplexDecimal<D> s = asin(z);
    return {pi<D>() / Decimal<D>(2) - s.re, -s.im};
}

template <unsigned D>
int atan(ComplexDecimal<D>& result, const ComplexDecimal<D>& z) {
    if (z.im.is_zero()) {
        result = {atan(z.re), Decimal<D>()};
        return 0;
    }
    if (detail::tiny(z)) {
        result = detail::cubic_series(z, -1, 3);
        return 0;
    }
    // (i/2) (log(1 - iz) - log(1 + iz)); z = i and z = -i are the poles.
    const ComplexDecimal<D> one{Decimal<D>(1), Decimal<D>()};
    const ComplexDecimal<D> iz = detail::times_i(z);
    ComplexDecimal<D> a, b;
    if (log(a, sub(one, iz)) != 0 || log(b, add(one, iz)) != 0) return -1;
    const ComplexDecimal<D> difference = sub(a, b);
    result = {-difference.im / Decimal<D>(2), difference.re / Decimal<D>(2)};
    return 0;
}

template <unsigned D>
ComplexDecimal<D> asinh(const ComplexDecimal<D>& z) {
    if (z.im.is_zero()) return {asinh(z.re), Decimal<D>()};
    if (detail::tiny(z)) return detail::cubic_series(z, -1, 6);
    // asinh(z) = -asinh(-z) keeps z + sqrt(z^2 + 1) away from cancellation.
    if (z.re.sign() < 0) {
        const ComplexDecimal<D> r = asinh(ComplexDecimal<D>{-z.re, -z.im});
        return {-r.re, -r.im};
    }
    const ComplexDecimal<D> one{Decimal<D>(1), Decimal<D>()};
    ComplexDecimal<D> result;
    log(result, add(z, sqrt(add(mul(z, z), one))));
    return result;
}

template <unsigned D>
int acosh(ComplexDecimal<D>& result, const ComplexDecimal<D>& z) {
    if (z.im.is_zero() && z.re >= Decimal<D>(1)) {
        result = {acosh(z.re), Decimal<D>()};
        return 0;
    }
    // log(z + sqrt(z + 1) sqrt(z - 1)), the principal branch.
    const ComplexDecimal<D> one{Decimal<D>(1), Decimal<D>()};
    return log(result, add(z, mul(sqrt(add(z, one)), sqrt(sub(z, one)))));
}

template <unsigned D>
int atanh(ComplexDecimal<D>& result, const ComplexDecimal<D>& z) {
    if (z.im.is_zero() && z.re.abs() < Decimal<D>(1)) {
        result = {atanh(z.re), Decimal<D>()};
        return 0;
    }
    if (detail::tiny(z)) {
        result = detail::cubic_series(z, 1, 3);
        return 0;
    }
    // (log(1 + z) - log(1 - z)) / 2; z = 1 and z = -1 are the poles.
    const ComplexDecimal<D> one{Decimal<D>(1), Decimal<D>()};
    ComplexDecimal<D> a, b;
    if (log(a, add(one, z)) != 0 || log(b, sub(one, z)) != 0) return -1;
    const ComplexDecimal<D> difference = sub(a, b);
    result = {difference.re / Decimal<D>(2), difference.im / Decimal<D>(2)};
    return 0;
}

template <unsigned D>
ComplexDecimal<D> round(const ComplexDecimal<D>& z) {
    return {z.re.round(), z.im.round()};
}
template <unsigned D>
ComplexDecimal<D> floor(const ComplexDecimal<D>& z) {
    return {z.re.floor(), z.im.floor()};
}
template <unsigned D>
ComplexDecimal<D> ceil(const ComplexDecimal<D>& z) {
    return {z.re.ceil(), z.im.ceil()};
}
template <unsigned D>
ComplexDecimal<D> fix(const ComplexDecimal<D>& z) {
    return {z.re.trunc(), z.im.trunc()};
}

// Both operands rounded to integers part by part; z - w times the integer parts of the
// quotient's real and imaginary parts.
template <unsigned D>
int mod(ComplexDecimal<D>& result, const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    const ComplexDecimal<D> a = round(z), b = round(w);
    ComplexDecimal<D> quotient;
    if (div(quotient, a, b) != 0) return -1;
    result = sub(a, mul(b, fix(quotient)));
    return 0;
}

template <unsigned D>
bool eq(const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    return z.re == w.re && z.im == w.im;
}
template <unsigned D>
bool neq(const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    return !eq(z, w);
}
template <unsigned D>
bool ge(const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    return z.re.compare(w.re) >= 0 && z.im.compare(w.im) >= 0;
}
template <unsigned D>
bool gt(const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    return ge(z, w) && z.re.compare(w.re) + z.im.compare(w.im) > 0;
}
template <unsigned D>
bool le(const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    return z.re.compare(w.re) <= 0 && z.im.compare(w.im) <= 0;
}
template <unsigned D>
bool lt(const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    return le(z, w) && z.re.compare(w.re) + z.im.compare(w.im) < 0;
}

} // namespace quorvex::number
