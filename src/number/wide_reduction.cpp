#include "wide_reduction.h"

#include <boost/math/constants/constants.hpp>

namespace quorvex::number::detail {

namespace {

using boost::multiprecision::cpp_dec_float;
using boost::multiprecision::et_off;
using Wide200 = boost::multiprecision::number<cpp_dec_float<200>, et_off>;
using Wide480 = boost::multiprecision::number<cpp_dec_float<480>, et_off>;

// Below these orders of magnitude the backend's reductions lose fewer digits than the guard
// digits of every width hold.
constexpr long long k_own_angle_order = 6;
constexpr long long k_own_exponent_order = 3;
// Digits the rest keeps beyond the held width, so its last held digit is right.
constexpr long long k_spare_digits = 24;

template <typename Wide>
const Wide& half_pi() {
    static const Wide value = boost::math::constants::half_pi<Wide>();
    return value;
}

template <typename Wide>
const Wide& ln10() {
    static const Wide value = boost::multiprecision::log(Wide(10));
    return value;
}

// x = n * unit + rest with n the nearest integer; n is held exactly while it has fewer digits
// than the wide width.
template <typename Wide, typename Value>
Value reduce(const Value& x, const Wide& unit, Wide& count) {
    const Wide wide(x);
    count = boost::multiprecision::floor(wide / unit + Wide(0.5));
    return Value(wide - count * unit);
}

// The narrowest wide width that keeps the held digits of the rest of x.
template <unsigned D>
bool fits_200(const Decimal<D>& x) {
    return x.value().backend().order() + Decimal<D>::held_digits + k_spare_digits <= 200;
}

} // namespace

template <unsigned D>
bool reduce_quarter_turns(const Decimal<D>& x, Decimal<D>& rest, int& quadrant) {
    if (x.is_zero() || x.value().backend().order() < k_own_angle_order) return false;
    // The residue of the count mod 4; past 1e480 the count is not exact, and the mask only
    // keeps the answer in range.
    if (fits_200(x)) {
        Wide200 turns;
        rest = Decimal<D>(reduce(x.value(), half_pi<Wide200>(), turns));
        quadrant = (turns - boost::multiprecision::floor(turns / 4) * 4).template convert_to<int>() & 3;
    } else {
        Wide480 turns;
        rest = Decimal<D>(reduce(x.value(), half_pi<Wide480>(), turns));
        quadrant = (turns - boost::multiprecision::floor(turns / 4) * 4).template convert_to<int>() & 3;
    }
    return true;
}

template <unsigned D>
bool reduce_decades(const Decimal<D>& x, Decimal<D>& rest, long long& decades) {
    if (x.is_zero() || x.value().backend().order() < k_own_exponent_order) return false;
    // Callers keep |x| below the decimal range (about 1.5e8), so the 200-digit width always does.
    Wide200 count;
    rest = Decimal<D>(reduce(x.value(), ln10<Wide200>(), count));
    decades = count.template convert_to<long long>();
    return true;
}

template bool reduce_quarter_turns<14>(const Decimal<14>&, Decimal<14>&, int&);
template bool reduce_quarter_turns<21>(const Decimal<21>&, Decimal<21>&, int&);
template bool reduce_quarter_turns<50>(const Decimal<50>&, Decimal<50>&, int&);
template bool reduce_decades<14>(const Decimal<14>&, Decimal<14>&, long long&);
template bool reduce_decades<21>(const Decimal<21>&, Decimal<21>&, long long&);
template bool reduce_decades<50>(const Decimal<50>&, Decimal<50>&, long long&);

} // namespace quorvex::number::detail
