#pragma once
#include "complex.h"
#include "number/complex_decimal.h"

namespace quorvex::engine {

// A value into the decimal layer through 14 significant digits, and back through 15.
template <unsigned D = 21>
number::ComplexDecimal<D> lift(const complex& z) {
    return number::ComplexDecimal<D>::lift(z.real(), z.imag());
}

template <unsigned D>
complex land(const number::ComplexDecimal<D>& z) {
    return {z.re.to_double(), z.im.to_double()};
}

template <unsigned D>
complex land(const number::Decimal<D>& x) {
    return {x.to_double(), 0};
}

} // namespace quorvex::engine
