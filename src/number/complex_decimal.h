#pragma once
#include "decimal_functions.h"

namespace quorvex::number {

// A complex value as two decimals. The operations keep the engine's rules: results come out of
// the formulas named beside each function, functions that can fault return 0 on success and -1
// on a domain fault (leaving the result untouched), and comparisons work on the parts, not on
// the modulus.
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

// The transcendental functions; bodies in complex_decimal.cpp and complex_inverse.cpp,
// compiled once for each working precision. Use the free functions below.
template <unsigned D>
struct ComplexFunctions {
    using Z = ComplexDecimal<D>;
    static int div(Z& result, const Z& z, const Z& w);
    static Decimal<D> abs(const Z& z);
    static Z sqrt(const Z& z);
    static Z exp(const Z& z);
    static int log(Z& result, const Z& z);
    static int log10(Z& result, const Z& z);
    static int pow(Z& result, const Z& z, const Z& w);
    static Z sin(const Z& z);
    static Z cos(const Z& z);
    static int tan(Z& result, const Z& z);
    static Z sinh(const Z& z);
    static Z cosh(const Z& z);
    static int tanh(Z& result, const Z& z);
    static Z asin(const Z& z);
    static Z acos(const Z& z);
    static int atan(Z& result, const Z& z);
    static Z asinh(const Z& z);
    static int acosh(Z& result, const Z& z);
    static int atanh(Z& result, const Z& z);
    static int mod(Z& result, const Z& z, const Z& w);
};

extern template struct ComplexFunctions<14>;
extern template struct ComplexFunctions<21>;
extern template struct ComplexFunctions<50>;

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
// (ac - bd) + (ad + bc)i
template <unsigned D>
ComplexDecimal<D> mul(const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    return {z.re * w.re - z.im * w.im, z.re * w.im + z.im * w.re};
}
// d2 = cc + dd; a zero d2 is a fault; else ((ac + bd) / d2, (cb - da) / d2).
template <unsigned D>
int div(ComplexDecimal<D>& result, const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    return ComplexFunctions<D>::div(result, z, w);
}
// sqrt(aa + bb), a real result.
template <unsigned D>
Decimal<D> abs(const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::abs(z);
}
// m = |z|; re = sqrt((m + a) / 2); the imaginary part has magnitude sqrt((m - a) / 2) and is
// negative only when b is, so sqrt(-4) is 2i. Whichever part would come from a difference of
// nearly equal numbers is taken as b / (2 * the other) instead, which is the same value.
template <unsigned D>
ComplexDecimal<D> sqrt(const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::sqrt(z);
}
// e^a cos b + i e^a sin b
template <unsigned D>
ComplexDecimal<D> exp(const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::exp(z);
}
// log |z| + i atan2(b, a); zero is a fault.
template <unsigned D>
int log(ComplexDecimal<D>& result, const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::log(result, z);
}
// log z / ln 10
template <unsigned D>
int log10(ComplexDecimal<D>& result, const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::log10(result, z);
}
// exp(w log z); a zero z gives zero when Re w > 0 and is a fault otherwise.
template <unsigned D>
int pow(ComplexDecimal<D>& result, const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    return ComplexFunctions<D>::pow(result, z, w);
}
// sin a cosh b + i cos a sinh b
template <unsigned D>
ComplexDecimal<D> sin(const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::sin(z);
}
// cos a cosh b - i sin a sinh b
template <unsigned D>
ComplexDecimal<D> cos(const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::cos(z);
}
// (sin a cos a + i sinh b cosh b) / (cos^2 a + sinh^2 b); a denominator below 10^-(2D+6),
// that is cos a and sinh b both zero to the working precision, is a pole, a fault.
template <unsigned D>
int tan(ComplexDecimal<D>& result, const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::tan(result, z);
}
// sinh a cos b + i cosh a sin b
template <unsigned D>
ComplexDecimal<D> sinh(const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::sinh(z);
}
// cosh a cos b + i sinh a sin b
template <unsigned D>
ComplexDecimal<D> cosh(const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::cosh(z);
}
// -i tan(iz): (sinh a cosh a + i sin b cos b) / (cos^2 b + sinh^2 a), with the same poles.
template <unsigned D>
int tanh(ComplexDecimal<D>& result, const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::tanh(result, z);
}
// The inverse functions take their principal values, the ones of the logarithmic forms
//   asin z = -i log(iz + sqrt(1 - z^2))      acos z = -i log(z + i sqrt(1 - z^2))
//   atan z = (i/2) (log(1 - iz) - log(1 + iz))
//   asinh z = log(z + sqrt(z^2 + 1))        acosh z = log(z + sqrt(z + 1) sqrt(z - 1))
//   atanh z = (log(1 + z) - log(1 - z)) / 2
// including on the cuts (atanh 2 = 0.549... - i pi/2), but are computed in rearranged forms
// that lose no digits to cancellation for large, tiny or near-real arguments
// (complex_inverse.cpp). atan faults at +-i, atanh at +-1.
template <unsigned D>
ComplexDecimal<D> asin(const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::asin(z);
}
template <unsigned D>
ComplexDecimal<D> acos(const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::acos(z);
}
template <unsigned D>
int atan(ComplexDecimal<D>& result, const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::atan(result, z);
}
template <unsigned D>
ComplexDecimal<D> asinh(const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::asinh(z);
}
template <unsigned D>
int acosh(ComplexDecimal<D>& result, const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::acosh(result, z);
}
template <unsigned D>
int atanh(ComplexDecimal<D>& result, const ComplexDecimal<D>& z) {
    return ComplexFunctions<D>::atanh(result, z);
}

// Each part rounded to an integer, halves away from zero.
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
// Each part truncated toward zero.
template <unsigned D>
ComplexDecimal<D> fix(const ComplexDecimal<D>& z) {
    return {z.re.trunc(), z.im.trunc()};
}

// Both operands rounded to integers part by part; a zero divisor is a fault; else z - w times
// the integer parts (toward zero) of the quotient's real and imaginary parts.
template <unsigned D>
int mod(ComplexDecimal<D>& result, const ComplexDecimal<D>& z, const ComplexDecimal<D>& w) {
    return ComplexFunctions<D>::mod(result, z, w);
}

// Comparisons on the parts. gt: neither part of z below w's, and the two comparisons (-1, 0,
// 1) summing above zero; ge: neither part below. So of 1+2i and 2+1i neither is greater, and
// neither is less.
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
