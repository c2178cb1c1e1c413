#pragma once
#include "decimal.h"

namespace quorvex::number::detail {

// Argument reductions worked at 200 or 480 digits. The backend reduces at the held width, so a
// large argument keeps only the held digits less its order of magnitude; these keep the rest
// right to the held width for any argument below about 1e360. Both return false, touching
// nothing, for arguments small enough for the backend's own reduction.

// x = q * pi/2 + rest with |rest| <= pi/4; `quadrant` is q mod 4.
template <unsigned D>
bool reduce_quarter_turns(const Decimal<D>& x, Decimal<D>& rest, int& quadrant);

// x = k * ln 10 + rest with |rest| <= ln 10 / 2, so e^x = 10^k e^rest with an exact 10^k.
template <unsigned D>
bool reduce_decades(const Decimal<D>& x, Decimal<D>& rest, long long& decades);

} // namespace quorvex::number::detail
