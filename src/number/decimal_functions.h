#pragma once
#include "decimal.h"

#include <boost/math/special_functions/acosh.hpp>
#include <boost/math/special_functions/asinh.hpp>
#include <boost/math/special_functions/atanh.hpp>

namespace quorvex::number {

// Elementary functions, correct to the working precision. A domain fault (log of a value not
// above zero, sqrt of a negative, and so on) gives zero and sets *fault when asked; nothing
// throws and nothing becomes NaN.

namespace detail {
template <unsigned D>
Decimal<D> refuse(bool* fault) {
    if (fault) *fault = true;
    return Decimal<D>();
}
} // namespace detail

template <unsigned D>
Decimal<D> pi() {
    return Decimal<D>(boost::math::constants::pi<typename Decimal<D>::Value>());
}

template <unsigned D>
Decimal<D> sqrt(const Decimal<D>& x, bool* fault = nullptr) {
    if (x.sign() < 0) return detail::refuse<D>(fault);
    return Decimal<D>(boost::multiprecision::sqrt(x.value()));
}

template <unsigned D>
Decimal<D> exp(const Decimal<D>& x) {
    return Decimal<D>(boost::multiprecision::exp(x.value()));
}

template <unsigned D>
Decimal<D> log(const Decimal<D>& x, bool* fault = nullptr) {
    if (x.sign() <= 0) return detail::refuse<D>(fault);
    return Decimal<D>(boost::multiprecision::log(x.value()));
}

template <unsigned D>
Decimal<D> log10(const Decimal<D>& x, bool* fault = nullptr) {
    if (x.sign() <= 0) return detail::refuse<D>(fault);
    return Decimal<D>(boost::multiprecision::log10(x.value()));
}

// A negative base takes only integer exponents; zero takes only positive ones.
template <unsigned D>
Decimal<D> pow(const Decimal<D>& x, const Decimal<D>& y, bool* fault = nullptr) {
    if (x.is_zero()) return y.sign() > 0 ? Decimal<D>() : detail::refuse<D>(fault);
    if (x.sign() < 0 && !y.is_integer()) return detail::refuse<D>(fault);
    return Decimal<D>(boost::multiprecision::pow(x.value(), y.value()));
}

template <unsigned D>
Decimal<D> sin(const Decimal<D>& x) {
    return Decimal<D>(boost::multiprecision::sin(x.value()));
}
template <unsigned D>
Decimal<D> cos(const Decimal<D>& x) {
    return Decimal<D>(boost::multiprecision::cos(x.value()));
}
template <unsigned D>
Decimal<D> tan(const Decimal<D>& x) {
    return Decimal<D>(boost::multiprecision::tan(x.value()));
}
template <unsigned D>
Decimal<D> asin(const Decimal<D>& x, bool* fault = nullptr) {
    if (x.abs() > Decimal<D>(1)) return detail::refuse<D>(fault);
    return Decimal<D>(boost::multiprecision::asin(x.value()));
}
template <unsigned D>
Decimal<D> acos(const Decimal<D>& x, bool* fault = nullptr) {
    if (x.abs() > Decimal<D>(1)) return detail::refuse<D>(fault);
    return Decimal<D>(boost::multiprecision::acos(x.value()));
}
template <unsigned D>
Decimal<D> atan(const Decimal<D>& x) {
    return Decimal<D>(boost::multiprecision::atan(x.value()));
}
template <unsigned D>
Decimal<D> atan2(const Decimal<D>& y, const Decimal<D>& x) {
    if (x.is_zero() && y.is_zero()) return Decimal<D>();
    return Decimal<D>(boost::multiprecision::atan2(y.value(), x.value()));
}
template <unsigned D>
Decimal<D> sinh(const Decimal<D>& x) {
    return Decimal<D>(boost::multiprecision::sinh(x.value()));
}
template <unsigned D>
Decimal<D> cosh(const Decimal<D>& x) {
    return Decimal<D>(boost::multiprecision::cosh(x.value()));
}
template <unsigned D>
Decimal<D> tanh(const Decimal<D>& x) {
    return Decimal<D>(boost::multiprecision::tanh(x.value()));
}
template <unsigned D>
Decimal<D> asinh(const Decimal<D>& x) {
    return Decimal<D>(boost::math::asinh(x.value()));
}
template <unsigned D>
Decimal<D> acosh(const Decimal<D>& x, bool* fault = nullptr) {
    if (x < Decimal<D>(1)) return detail::refuse<D>(fault);
    return Decimal<D>(boost::math::acosh(x.value()));
}
template <unsigned D>
Decimal<D> atanh(const Decimal<D>& x, bool* fault = nullptr) {
    if (x.abs() >= Decimal<D>(1)) return detail::refuse<D>(fault);
    return Decimal<D>(boost::math::atanh(x.value()));
}

} // namespace quorvex::number
