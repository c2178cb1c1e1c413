#pragma once
#include "decimal.h"

namespace quorvex::number {

// Elementary functions of a decimal, correct to its working precision: each is computed on the
// full held width (see Width in decimal.h), so the 15-digit text of a result is decided by true
// digits.
//
// Domain faults (log of a value not above zero, sqrt of a negative, asin or acos outside
// [-1, 1], atanh outside (-1, 1), acosh below 1, pow of a negative base to a non-integer or of
// zero to an exponent not above zero) give zero and set *fault to true when a flag is passed;
// the flag is never cleared, so one flag can watch a whole computation. Nothing throws and
// nothing becomes NaN; a result beyond the decimal range saturates (see Decimal's constructor).
//
// The bodies live in decimal_functions.cpp, compiled once for each working precision.
template <unsigned D>
struct Elementary {
    static Decimal<D> pi();
    static Decimal<D> sqrt(const Decimal<D>& x, bool* fault);
    static Decimal<D> exp(const Decimal<D>& x);
    static Decimal<D> log(const Decimal<D>& x, bool* fault);
    static Decimal<D> log10(const Decimal<D>& x, bool* fault);
    static Decimal<D> log1p(const Decimal<D>& x, bool* fault);
    static Decimal<D> pow(const Decimal<D>& x, const Decimal<D>& y, bool* fault);
    static Decimal<D> sin(const Decimal<D>& x);
    static Decimal<D> cos(const Decimal<D>& x);
    static Decimal<D> tan(const Decimal<D>& x);
    static Decimal<D> asin(const Decimal<D>& x, bool* fault);
    static Decimal<D> acos(const Decimal<D>& x, bool* fault);
    static Decimal<D> atan(const Decimal<D>& x);
    static Decimal<D> atan2(const Decimal<D>& y, const Decimal<D>& x);
    static Decimal<D> sinh(const Decimal<D>& x);
    static Decimal<D> cosh(const Decimal<D>& x);
    static Decimal<D> tanh(const Decimal<D>& x);
    static Decimal<D> asinh(const Decimal<D>& x);
    static Decimal<D> acosh(const Decimal<D>& x, bool* fault);
    static Decimal<D> atanh(const Decimal<D>& x, bool* fault);
};

extern template struct Elementary<14>;
extern template struct Elementary<21>;
extern template struct Elementary<50>;

template <unsigned D>
Decimal<D> pi() {
    return Elementary<D>::pi();
}
template <unsigned D>
Decimal<D> sqrt(const Decimal<D>& x, bool* fault = nullptr) {
    return Elementary<D>::sqrt(x, fault);
}
template <unsigned D>
Decimal<D> exp(const Decimal<D>& x) {
    return Elementary<D>::exp(x);
}
template <unsigned D>
Decimal<D> log(const Decimal<D>& x, bool* fault = nullptr) {
    return Elementary<D>::log(x, fault);
}
template <unsigned D>
Decimal<D> log10(const Decimal<D>& x, bool* fault = nullptr) {
    return Elementary<D>::log10(x, fault);
}
// log(1 + x), without the loss that 1 + x costs when x is tiny; x not above -1 is a fault.
template <unsigned D>
Decimal<D> log1p(const Decimal<D>& x, bool* fault = nullptr) {
    return Elementary<D>::log1p(x, fault);
}
// x^y. A negative base takes only integer exponents (the sign follows their parity); zero takes
// only positive ones and gives zero.
template <unsigned D>
Decimal<D> pow(const Decimal<D>& x, const Decimal<D>& y, bool* fault = nullptr) {
    return Elementary<D>::pow(x, y, fault);
}
// Angles in radians. Large arguments are reduced against a wide value of pi, so sin(1e22) is
// right to the working precision for any argument below about 1e360 (about 1e100 needs no more
// than a 200-digit reduction; beyond 1e360 digits are lost).
template <unsigned D>
Decimal<D> sin(const Decimal<D>& x) {
    return Elementary<D>::sin(x);
}
template <unsigned D>
Decimal<D> cos(const Decimal<D>& x) {
    return Elementary<D>::cos(x);
}
template <unsigned D>
Decimal<D> tan(const Decimal<D>& x) {
    return Elementary<D>::tan(x);
}
template <unsigned D>
Decimal<D> asin(const Decimal<D>& x, bool* fault = nullptr) {
    return Elementary<D>::asin(x, fault);
}
template <unsigned D>
Decimal<D> acos(const Decimal<D>& x, bool* fault = nullptr) {
    return Elementary<D>::acos(x, fault);
}
template <unsigned D>
Decimal<D> atan(const Decimal<D>& x) {
    return Elementary<D>::atan(x);
}
// The angle of the point (x, y) in (-pi, pi]; atan2(0, 0) is zero.
template <unsigned D>
Decimal<D> atan2(const Decimal<D>& y, const Decimal<D>& x) {
    return Elementary<D>::atan2(y, x);
}
template <unsigned D>
Decimal<D> sinh(const Decimal<D>& x) {
    return Elementary<D>::sinh(x);
}
template <unsigned D>
Decimal<D> cosh(const Decimal<D>& x) {
    return Elementary<D>::cosh(x);
}
template <unsigned D>
Decimal<D> tanh(const Decimal<D>& x) {
    return Elementary<D>::tanh(x);
}
template <unsigned D>
Decimal<D> asinh(const Decimal<D>& x) {
    return Elementary<D>::asinh(x);
}
template <unsigned D>
Decimal<D> acosh(const Decimal<D>& x, bool* fault = nullptr) {
    return Elementary<D>::acosh(x, fault);
}
template <unsigned D>
Decimal<D> atanh(const Decimal<D>& x, bool* fault = nullptr) {
    return Elementary<D>::atanh(x, fault);
}

} // namespace quorvex::number
