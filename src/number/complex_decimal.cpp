// Complex arithmetic, roots, exponentials and the trigonometric and hyperbolic functions. The
// inverse functions are in complex_inverse.cpp.
#include "complex_decimal.h"

#include <string>

namespace quorvex::number {

namespace {

// Beyond this |x| the exponential e^(-2|x|) is below the held width, so tan and tanh take their
// limits (without ever forming sinh^2 x, which would overflow for huge x).
template <unsigned D>
const Decimal<D>& saturation_limit() {
    static const Decimal<D> limit(Decimal<D>::held_digits * 6 / 5 + 4);
    return limit;
}

// tan and tanh share one formula, with the parts' roles swapped (tanh z = -i tan iz). For an
// angle t and a hyperbolic argument h it gives
//   real  = sin t cos t / (cos^2 t + sinh^2 h),   other = sinh h cosh h / (cos^2 t + sinh^2 h).
// A denominator below 10^-(2D+6), that is cos t and sinh h both zero to the working precision,
// is a pole.
template <unsigned D>
int tangent(Decimal<D>& circular, Decimal<D>& hyperbolic, const Decimal<D>& t, const Decimal<D>& h) {
    static const Decimal<D> pole = Decimal<D>::from_text("1e-" + std::to_string(2 * D + 6));
    const Decimal<D> s = sin(t), c = cos(t);
    if (h.abs() > saturation_limit<D>()) {
        // sinh h cosh h / sinh^2 h rounds to +-1 and the other part to 4 s c e^(-2|h|).
        circular = Decimal<D>(4) * s * c * exp(-(h.abs() + h.abs()));
        hyperbolic = Decimal<D>(h.sign());
        return 0;
    }
    const Decimal<D> sh = sinh(h), ch = cosh(h);
    const Decimal<D> d = c * c + sh * sh;
    if (d < pole) return -1;
    circular = s * c / d;
    hyperbolic = sh * ch / d;
    return 0;
}

} // namespace

template <unsigned D>
int ComplexFunctions<D>::div(Z& result, const Z& z, const Z& w) {
    const Decimal<D> d2 = w.re * w.re + w.im * w.im;
    if (d2.is_zero()) return -1;
    result = {(z.re * w.re + z.im * w.im) / d2, (w.re * z.im - z.re * w.im) / d2};
    return 0;
}

template <unsigned D>
Decimal<D> ComplexFunctions<D>::abs(const Z& z) {
    if (z.im.is_zero()) return z.re.abs();
    if (z.re.is_zero()) return z.im.abs();
    return number::sqrt(z.re * z.re + z.im * z.im);
}

template <unsigned D>
ComplexDecimal<D> ComplexFunctions<D>::sqrt(const Z& z) {
    if (z.im.is_zero()) {
        // On the real axis the root is real, or positive imaginary for a negative number.
        if (z.re.sign() >= 0) return {number::sqrt(z.re), Decimal<D>()};
        return {Decimal<D>(), number::sqrt(-z.re)};
    }
    const Decimal<D> m = abs(z);
    const Decimal<D> two(2);
    // Of (m + a) / 2 and (m - a) / 2 one adds like signs and the other may cancel away every
    // digit (a = 1e15, b = 1e-15); the second part comes from b = 2 re im instead.
    if (z.re.sign() >= 0) {
        const Decimal<D> re = number::sqrt((m + z.re) / two);
        return {re, z.im / (two * re)};
    }
    Decimal<D> im = number::sqrt((m - z.re) / two);
    if (z.im.sign() < 0) im = -im;
    return {z.im / (two * im), im};
}

template <unsigned D>
ComplexDecimal<D> ComplexFunctions<D>::exp(const Z& z) {
    const Decimal<D> scale = number::exp(z.re);
    if (z.im.is_zero()) return {scale, Decimal<D>()};
    return {scale * number::cos(z.im), scale * number::sin(z.im)};
}

template <unsigned D>
int ComplexFunctions<D>::log(Z& result, const Z& z) {
    if (is0(z)) return -1;
    // log |z|; near |z| = 1 it is tiny and log(sqrt(aa + bb)) would keep only the digits of
    // aa + bb - 1 that survived the sum, so there it is log1p((M - 1)(M + 1) + m^2) / 2 with M
    // the larger part.
    const Decimal<D> a = z.re.abs(), b = z.im.abs();
    const Decimal<D>& large = a < b ? b : a;
    const Decimal<D>& small = a < b ? a : b;
    const Decimal<D> one(1), two(2);
    const Decimal<D> excess = (large - one) * (large + one) + small * small;
    const Decimal<D> modulus_log = excess.abs() + excess.abs() < one ? log1p(excess) / two : number::log(abs(z));
    result = {modulus_log, number::atan2(z.im, z.re)};
    return 0;
}

template <unsigned D>
int ComplexFunctions<D>::log10(Z& result, const Z& z) {
    static const Decimal<D> ln10 = number::log(Decimal<D>(10));
    Z natural;
    if (log(natural, z) != 0) return -1;
    result = {natural.re / ln10, natural.im / ln10};
    return 0;
}

template <unsigned D>
int ComplexFunctions<D>::pow(Z& result, const Z& z, const Z& w) {
    if (is0(z)) {
        if (w.re.sign() <= 0) return -1;
        result = {};
        return 0;
    }
    Z logarithm;
    log(logarithm, z);
    result = exp(mul(w, logarithm));
    return 0;
}

template <unsigned D>
ComplexDecimal<D> ComplexFunctions<D>::sin(const Z& z) {
    if (z.im.is_zero()) return {number::sin(z.re), Decimal<D>()};
    return {number::sin(z.re) * number::cosh(z.im), number::cos(z.re) * number::sinh(z.im)};
}

template <unsigned D>
ComplexDecimal<D> ComplexFunctions<D>::cos(const Z& z) {
    if (z.im.is_zero()) return {number::cos(z.re), Decimal<D>()};
    return {number::cos(z.re) * number::cosh(z.im), -(number::sin(z.re) * number::sinh(z.im))};
}

template <unsigned D>
int ComplexFunctions<D>::tan(Z& result, const Z& z) {
    Decimal<D> re, im;
    if (tangent(re, im, z.re, z.im) != 0) return -1;
    result = {re, im};
    return 0;
}

template <unsigned D>
ComplexDecimal<D> ComplexFunctions<D>::sinh(const Z& z) {
    if (z.im.is_zero()) return {number::sinh(z.re), Decimal<D>()};
    return {number::sinh(z.re) * number::cos(z.im), number::cosh(z.re) * number::sin(z.im)};
}

template <unsigned D>
ComplexDecimal<D> ComplexFunctions<D>::cosh(const Z& z) {
    if (z.im.is_zero()) return {number::cosh(z.re), Decimal<D>()};
    return {number::cosh(z.re) * number::cos(z.im), number::sinh(z.re) * number::sin(z.im)};
}

template <unsigned D>
int ComplexFunctions<D>::tanh(Z& result, const Z& z) {
    Decimal<D> re, im;
    if (tangent(im, re, z.im, z.re) != 0) return -1;
    result = {re, im};
    return 0;
}

template <unsigned D>
int ComplexFunctions<D>::mod(Z& result, const Z& z, const Z& w) {
    const Z a = number::round(z), b = number::round(w);
    Z quotient;
    if (div(quotient, a, b) != 0) return -1;
    result = sub(a, mul(b, fix(quotient)));
    return 0;
}

template struct ComplexFunctions<14>;
template struct ComplexFunctions<21>;
template struct ComplexFunctions<50>;

} // namespace quorvex::number
