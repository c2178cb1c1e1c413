// The inverse trigonometric and hyperbolic functions of a complex value.
//
// The logarithmic forms in complex_decimal.h define the values; computed literally they lose
// digits wherever a sum nearly cancels: iz + sqrt(1 - z^2) for large z, log|.| near 1 for z
// near the real segment [-1, 1], log(1 + z) - log(1 - z) for large z. Here:
//  - asin and acos: of the two candidates u = iz + w and 1/u = w - iz (w = sqrt(1 - z^2)), the
//    one whose parts add like signs is used (w^2 = 1 - z^2 fixes the signs of w's parts, so one
//    always does), giving the angle part through atan2 without cancellation; the log part is
//    acosh(A) with A = (|z + 1| + |z - 1|) / 2 and A - 1 formed from differences rewritten as
//    quotients (the scheme of Hull, Fairgrieve and Tang).
//  - atanh: real part log(|1 + z|^2 / |1 - z|^2) / 4 (through log1p when the ratio is near 1),
//    imaginary part atan2(2y, (1 - x)(1 + x) - y^2) / 2; atan, asinh and acosh follow from
//    these by rotations.
#include "complex_decimal.h"

namespace quorvex::number {

namespace {

template <unsigned D>
Decimal<D> hypot(const Decimal<D>& p, const Decimal<D>& q) {
    return sqrt(p * p + q * q);
}

// acosh(A), A = (|z + 1| + |z - 1|) / 2, from x = |Re z| and y = |Im z|: the modulus part of
// asin and acos.
template <unsigned D>
Decimal<D> arc_modulus(const Decimal<D>& x, const Decimal<D>& y) {
    const Decimal<D> one(1), two(2);
    const Decimal<D> r = hypot(x + one, y), s = hypot(x - one, y);
    const Decimal<D> y2 = y * y;
    // r - (x + 1) = y^2 / (r + x + 1), and likewise s - |x - 1| when x < 1.
    const Decimal<D> near = y2 / (r + x + one);
    const Decimal<D> far = x < one ? y2 / (s + (one - x)) : s + (x - one);
    const Decimal<D> a_minus_1 = (near + far) / two;
    return log1p(a_minus_1 + sqrt(a_minus_1 * (a_minus_1 + two)));
}

// sqrt(1 - z^2), with 1 - x^2 as (1 - x)(1 + x) so z near +-1 keeps its digits.
template <unsigned D>
ComplexDecimal<D> cosine_of_arcsine(const ComplexDecimal<D>& z) {
    const Decimal<D> one(1), two(2);
    return sqrt(ComplexDecimal<D>{(one - z.re) * (one + z.re) + z.im * z.im, -(two * z.re * z.im)});
}

} // namespace

template <unsigned D>
ComplexDecimal<D> ComplexFunctions<D>::asin(const Z& z) {
    const Decimal<D>& x = z.re;
    const Decimal<D>& y = z.im;
    if (y.is_zero() && x.abs() <= Decimal<D>(1)) return {number::asin(x), Decimal<D>()};
    const Z w = cosine_of_arcsine(z);
    const Decimal<D> modulus = arc_modulus(x.abs(), y.abs());
    // Re w > 0 off the real axis, so u = iz + w adds like signs when y < 0; on the axis
    // (|x| > 1, w = i sqrt(x^2 - 1)) when x > 0. Otherwise 1/u = w - iz does, and
    // -i log u = i log(1/u).
    const bool direct = y.is_zero() ? x.sign() > 0 : y.sign() < 0;
    if (direct) return {number::atan2(w.im + x, w.re - y), -modulus};
    return {-number::atan2(w.im - x, w.re + y), modulus};
}

template <unsigned D>
ComplexDecimal<D> ComplexFunctions<D>::acos(const Z& z) {
    const Decimal<D>& x = z.re;
    const Decimal<D>& y = z.im;
    if (y.is_zero() && x.abs() <= Decimal<D>(1)) return {number::acos(x), Decimal<D>()};
    const Z w = cosine_of_arcsine(z);
    const Decimal<D> modulus = arc_modulus(x.abs(), y.abs());
    // v = z + iw adds like signs when y > 0, or on the axis when x < -1; else 1/v = z - iw.
    const bool direct = y.is_zero() ? x.sign() < 0 : y.sign() > 0;
    if (direct) return {number::atan2(y + w.re, x - w.im), -modulus};
    return {-number::atan2(y - w.re, x + w.im), modulus};
}

template <unsigned D>
int ComplexFunctions<D>::atanh(Z& result, const Z& z) {
    const Decimal<D>& x = z.re;
    const Decimal<D>& y = z.im;
    const Decimal<D> one(1), four(4);
    if (y.is_zero()) {
        const int side = x.abs().compare(one);
        if (side < 0) {
            result = {number::atanh(x), Decimal<D>()};
            return 0;
        }
        if (side == 0) return -1; // the poles +-1
        // On the cuts the logarithmic form gives -i pi/2 for x > 1 and +i pi/2 for x < -1; the
        // real part is log((|x| + 1) / (|x| - 1)) / 2 with the sign of x.
        const Decimal<D> half_pi = pi<D>() / Decimal<D>(2);
        const Decimal<D> magnitude = log1p(Decimal<D>(2) / (x.abs() - one)) / Decimal<D>(2);
        result = {x.sign() > 0 ? magnitude : -magnitude, x.sign() > 0 ? -half_pi : half_pi};
        return 0;
    }
    // The real part is log(num / den) / 4 with num = |1 + z|^2, den = |1 - z|^2; when the ratio
    // is near 1 it is log1p of num / den - 1 = 4x / den instead.
    const Decimal<D> y2 = y * y;
    const Decimal<D> numerator = (one + x) * (one + x) + y2;
    const Decimal<D> denominator = (one - x) * (one - x) + y2;
    const Decimal<D> excess = four * x / denominator;
    const Decimal<D> modulus_log =
        excess.abs() + excess.abs() < one ? log1p(excess) : number::log(numerator / denominator);
    result = {modulus_log / four, atan2(Decimal<D>(2) * y, (one - x) * (one + x) - y2) / Decimal<D>(2)};
    return 0;
}

// atan z = -i atanh(iz)
template <unsigned D>
int ComplexFunctions<D>::atan(Z& result, const Z& z) {
    if (z.im.is_zero()) {
        result = {number::atan(z.re), Decimal<D>()};
        return 0;
    }
    Z hyperbolic;
    if (atanh(hyperbolic, Z{-z.im, z.re}) != 0) return -1; // the poles +-i
    result = {hyperbolic.im, -hyperbolic.re};
    return 0;
}

// asinh z = -i asin(iz)
template <unsigned D>
ComplexDecimal<D> ComplexFunctions<D>::asinh(const Z& z) {
    if (z.im.is_zero()) return {number::asinh(z.re), Decimal<D>()};
    const Z circular = asin(Z{-z.im, z.re});
    return {circular.im, -circular.re};
}

// acosh z = +-i acos z, the sign chosen so the real part is not negative.
template <unsigned D>
int ComplexFunctions<D>::acosh(Z& result, const Z& z) {
    if (z.im.is_zero() && z.re >= Decimal<D>(1)) {
        result = {number::acosh(z.re), Decimal<D>()};
        return 0;
    }
    const Z circular = acos(z);
    if (circular.im.sign() <= 0)
        result = {-circular.im, circular.re};
    else
        result = {circular.im, -circular.re};
    return 0;
}

#define QUORVEX_INVERSE_FUNCTIONS(D)                                                                         \
    template ComplexDecimal<D> ComplexFunctions<D>::asin(const ComplexDecimal<D>&);                          \
    template ComplexDecimal<D> ComplexFunctions<D>::acos(const ComplexDecimal<D>&);                          \
    template int ComplexFunctions<D>::atan(ComplexDecimal<D>&, const ComplexDecimal<D>&);                    \
    template ComplexDecimal<D> ComplexFunctions<D>::asinh(const ComplexDecimal<D>&);                         \
    template int ComplexFunctions<D>::acosh(ComplexDecimal<D>&, const ComplexDecimal<D>&);                   \
    template int ComplexFunctions<D>::atanh(ComplexDecimal<D>&, const ComplexDecimal<D>&);
QUORVEX_INVERSE_FUNCTIONS(14)
QUORVEX_INVERSE_FUNCTIONS(21)
QUORVEX_INVERSE_FUNCTIONS(50)
#undef QUORVEX_INVERSE_FUNCTIONS

} // namespace quorvex::number
