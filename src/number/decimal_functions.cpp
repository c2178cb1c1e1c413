#include "decimal_functions.h"

#include "wide_reduction.h"

#include <boost/math/constants/constants.hpp>
#include <boost/math/policies/policy.hpp>
#include <boost/math/special_functions/acosh.hpp>
#include <boost/math/special_functions/asinh.hpp>
#include <boost/math/special_functions/atanh.hpp>

#include <string>

namespace quorvex::number {

namespace {

namespace mp = boost::multiprecision;

// Boost.Math throws on its errors by default; every argument is checked before it gets there,
// but the promise that nothing throws should not rest on that alone.
using Quiet = boost::math::policies::policy<
    boost::math::policies::domain_error<boost::math::policies::errno_on_error>,
    boost::math::policies::pole_error<boost::math::policies::errno_on_error>,
    boost::math::policies::overflow_error<boost::math::policies::errno_on_error>,
    boost::math::policies::evaluation_error<boost::math::policies::errno_on_error>>;

template <unsigned D>
Decimal<D> refuse(bool* fault) {
    if (fault) *fault = true;
    return Decimal<D>();
}

template <unsigned D>
Decimal<D> wrap(typename Decimal<D>::Value value) {
    return Decimal<D>(std::move(value));
}

// x^y for x > 0. The backend multiplies out integer exponents exactly; a square root is taken
// as one, so an exact root (whose 15-digit text may be a tie) stays exact rather than coming
// out a hair below through exp(y log x).
template <unsigned D>
Decimal<D> positive_power(const Decimal<D>& x, const Decimal<D>& y) {
    static const Decimal<D> half = Decimal<D>::from_text("0.5");
    if (y == half) return wrap<D>(mp::sqrt(x.value()));
    if (y == -half) return Decimal<D>(1) / wrap<D>(mp::sqrt(x.value()));
    return wrap<D>(mp::pow(x.value(), y.value()));
}

} // namespace

template <unsigned D>
Decimal<D> Elementary<D>::pi() {
    static const Decimal<D> value(boost::math::constants::pi<typename Decimal<D>::Value>());
    return value;
}

template <unsigned D>
Decimal<D> Elementary<D>::sqrt(const Decimal<D>& x, bool* fault) {
    if (x.sign() < 0) return refuse<D>(fault);
    return wrap<D>(mp::sqrt(x.value()));
}

template <unsigned D>
Decimal<D> Elementary<D>::exp(const Decimal<D>& x) {
    using Value = typename Decimal<D>::Value;
    // Past 1.55e8 the result is outside the decimal range (1e67108864) either way.
    static const Decimal<D> beyond(155000000);
    if (x.abs() > beyond) return x.sign() > 0 ? Decimal<D>(std::numeric_limits<Value>::infinity()) : Decimal<D>();
    // The backend's own exp loses about a digit for every factor of ten in x; e^x = 10^k e^r
    // with the reduction worked wide and an exact power of ten does not.
    Decimal<D> rest;
    long long decades = 0;
    if (!detail::reduce_decades(x, rest, decades)) return wrap<D>(mp::exp(x.value()));
    return wrap<D>(mp::exp(rest.value()) * mp::pow(Value(10), decades));
}

template <unsigned D>
Decimal<D> Elementary<D>::log(const Decimal<D>& x, bool* fault) {
    if (x.sign() <= 0) return refuse<D>(fault);
    return wrap<D>(mp::log(x.value()));
}

template <unsigned D>
Decimal<D> Elementary<D>::log10(const Decimal<D>& x, bool* fault) {
    if (x.sign() <= 0) return refuse<D>(fault);
    // An exact power of ten has an exact logarithm; the series would leave it a hair off an
    // integer, which integer operations on the result would notice.
    const long long order = x.value().backend().order();
    if (x.value() == mp::pow(typename Decimal<D>::Value(10), order)) return Decimal<D>(static_cast<int>(order));
    return wrap<D>(mp::log10(x.value()));
}

template <unsigned D>
Decimal<D> Elementary<D>::log1p(const Decimal<D>& x, bool* fault) {
    if (x <= Decimal<D>(-1)) return refuse<D>(fault);
    // 1 + x loses the digits of x that fall off the held width, but u - 1 is exactly what was
    // kept, and log(u) / (u - 1) is flat enough near 1 not to care which u it was given.
    const Decimal<D> u = Decimal<D>(1) + x;
    if (u == Decimal<D>(1)) return x;
    return log(u, nullptr) * x / (u - Decimal<D>(1));
}

template <unsigned D>
Decimal<D> Elementary<D>::pow(const Decimal<D>& x, const Decimal<D>& y, bool* fault) {
    if (x.is_zero()) return y.sign() > 0 ? Decimal<D>() : refuse<D>(fault);
    if (y.is_zero()) return Decimal<D>(1);
    if (x.sign() > 0) return positive_power(x, y);
    if (!y.is_integer()) return refuse<D>(fault);
    const Decimal<D> magnitude = positive_power(-x, y);
    const bool odd = !(y / Decimal<D>(2)).is_integer();
    return odd ? -magnitude : magnitude;
}

template <unsigned D>
Decimal<D> Elementary<D>::sin(const Decimal<D>& x) {
    Decimal<D> r;
    int quadrant = 0;
    if (!detail::reduce_quarter_turns(x, r, quadrant)) return wrap<D>(mp::sin(x.value()));
    switch (quadrant) {
    case 0: return wrap<D>(mp::sin(r.value()));
    case 1: return wrap<D>(mp::cos(r.value()));
    case 2: return -wrap<D>(mp::sin(r.value()));
    default: return -wrap<D>(mp::cos(r.value()));
    }
}

template <unsigned D>
Decimal<D> Elementary<D>::cos(const Decimal<D>& x) {
    Decimal<D> r;
    int quadrant = 0;
    if (!detail::reduce_quarter_turns(x, r, quadrant)) return wrap<D>(mp::cos(x.value()));
    switch (quadrant) {
    case 0: return wrap<D>(mp::cos(r.value()));
    case 1: return -wrap<D>(mp::sin(r.value()));
    case 2: return -wrap<D>(mp::cos(r.value()));
    default: return wrap<D>(mp::sin(r.value()));
    }
}

template <unsigned D>
Decimal<D> Elementary<D>::tan(const Decimal<D>& x) {
    Decimal<D> r;
    int quadrant = 0;
    if (!detail::reduce_quarter_turns(x, r, quadrant)) return wrap<D>(mp::tan(x.value()));
    const Decimal<D> t = wrap<D>(mp::tan(r.value()));
    return quadrant % 2 == 0 ? t : -(Decimal<D>(1) / t);
}

template <unsigned D>
Decimal<D> Elementary<D>::asin(const Decimal<D>& x, bool* fault) {
    if (x.abs() > Decimal<D>(1)) return refuse<D>(fault);
    return wrap<D>(mp::asin(x.value()));
}

template <unsigned D>
Decimal<D> Elementary<D>::acos(const Decimal<D>& x, bool* fault) {
    if (x.abs() > Decimal<D>(1)) return refuse<D>(fault);
    return wrap<D>(mp::acos(x.value()));
}

template <unsigned D>
Decimal<D> Elementary<D>::atan(const Decimal<D>& x) {
    return wrap<D>(mp::atan(x.value()));
}

template <unsigned D>
Decimal<D> Elementary<D>::atan2(const Decimal<D>& y, const Decimal<D>& x) {
    if (x.is_zero() && y.is_zero()) return Decimal<D>();
    return wrap<D>(mp::atan2(y.value(), x.value()));
}

// Past this |x| the term e^-|x| is below the held width: sinh and cosh are e^|x| / 2, taken
// from exp above rather than from the backend's, which loses digits for large x.
template <unsigned D>
bool exponential_only(const Decimal<D>& x) {
    static const Decimal<D> limit(Decimal<D>::held_digits * 6 / 5 + 4);
    return x.abs() > limit;
}

template <unsigned D>
Decimal<D> Elementary<D>::sinh(const Decimal<D>& x) {
    if (exponential_only(x)) {
        const Decimal<D> half = exp(x.abs()) / Decimal<D>(2);
        return x.sign() < 0 ? -half : half;
    }
    return wrap<D>(mp::sinh(x.value()));
}

template <unsigned D>
Decimal<D> Elementary<D>::cosh(const Decimal<D>& x) {
    if (exponential_only(x)) return exp(x.abs()) / Decimal<D>(2);
    return wrap<D>(mp::cosh(x.value()));
}

template <unsigned D>
Decimal<D> Elementary<D>::tanh(const Decimal<D>& x) {
    return wrap<D>(mp::tanh(x.value()));
}

template <unsigned D>
Decimal<D> Elementary<D>::asinh(const Decimal<D>& x) {
    return wrap<D>(boost::math::asinh(x.value(), Quiet()));
}

template <unsigned D>
Decimal<D> Elementary<D>::acosh(const Decimal<D>& x, bool* fault) {
    if (x < Decimal<D>(1)) return refuse<D>(fault);
    return wrap<D>(boost::math::acosh(x.value(), Quiet()));
}

template <unsigned D>
Decimal<D> Elementary<D>::atanh(const Decimal<D>& x, bool* fault) {
    if (x.abs() >= Decimal<D>(1)) return refuse<D>(fault);
    return wrap<D>(boost::math::atanh(x.value(), Quiet()));
}

template struct Elementary<14>;
template struct Elementary<21>;
template struct Elementary<50>;

} // namespace quorvex::number
