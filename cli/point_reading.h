#pragma once
// How a result of the engine's decimal arithmetic arrives as a binary value, reproduced from the
// nearest double to its 15-digit text (what the integer path of number/fast_decimal gives).
#include <optional>

namespace quorvex::cli {

// The decimal path reads the 15-digit text as a long double, which is what this gives back: not
// the nearest double, since a text within half a unit of a long double of the midpoint between
// two doubles narrows from the long double to the other neighbour. The shortest text of the
// nearest double is the 15-digit text itself (distinct texts of 15 digits read as distinct normal
// doubles), so its digits give the long double in one correctly rounded operation.
// Empty when that is not certain (subnormal values, exponents past exact powers of ten).
std::optional<long double> read_as_engine(double nearest);

} // namespace quorvex::cli
