#pragma once
#include "complex.h"
#include "number/complex_decimal.h"

#include <optional>
#include <string_view>
#include <vector>

namespace quorvex::engine {

// Precise arithmetic: a value carries its own decimal digits (the 21-digit working type, which
// holds 56 digits and whose functions are good to about 34) from step to step, instead of coming
// back through 15 digits after every operator and function. Only the shown answer is rounded, once,
// to the digits the user asked for, so it is the true value correctly rounded.
//
// Nothing here knows the Parser: the descent (parser_precise.cpp) calls these on its operands.
using Wide = number::ComplexDecimal21;

// What a value in precise arithmetic holds besides its double; shared, never changed once made.
struct PreciseValue {
    Wide z;
};

namespace precise {

// Significant digits a value is trusted to: what is below them is noise of the functions.
inline constexpr int k_trusted_digits = 32;

// A number as written, "12.5" with its power of ten (12.5e-3 is "12.5", -3): exactly.
Wide from_literal(std::string_view digits, long exponent);
// A double that came from elsewhere (a tool, a built-in without a precise kernel): the digits of
// its shortest text, so 0.1 stays 0.1.
Wide from_double(const complex& z);
// A built-in's double result: all 17 significant digits of the double, since a function computed
// in binary is closer to its true value than any shorter text of it.
Wide from_result(const complex& z);
// A long double result with all its digits, and a real value to the nearest long double.
Wide from_long_double(long double x);
long double to_long_double(const number::Decimal21& x);
// The double the rest of the engine sees: the value through 15 significant digits.
complex to_double(const Wide& z);

// The operators. A sum or difference that cancels below the trusted digits of its larger operand
// is zero: 1/3*3-1 is 0, not a remnant of the 56th digit.
Wide add(const Wide& a, const Wide& b);
Wide sub(const Wide& a, const Wide& b);
Wide mul(const Wide& a, const Wide& b);
// False for a zero divisor (the caller reports it).
bool div(Wide& result, const Wide& a, const Wide& b);
Wide negate(const Wide& a);
// Real integer powers exactly by squaring; the rest as exp(w log z). False where z^w has no value.
bool pow(Wide& result, const Wide& z, const Wide& w);
// The integer a real value is, to its trusted digits (1/3*3 is 1); nothing for another value.
std::optional<number::Decimal21> nearest_integer(const Wide& z);

// Comparison of two values as the user sees them: each rounded to 14 significant digits first,
// so values equal to 14 digits are equal. Complex values are ordered part by part.
int compare_real(const number::Decimal21& a, const number::Decimal21& b);
bool relation_holds(char relation, const Wide& a, const Wide& b);

// The value rounded half away from zero to `digits` significant digits (1 to 15), as the nearest
// double: printed at those digits it shows exactly the correctly rounded value.
double rounded_for_display(const number::Decimal21& x, int digits);

// The built-in functions with a precise kernel: SQRT, CUBERT, EXP, LN, LOG10, LOG, POW, ABS,
// HYPOT, DEG, RAD, the circular and hyperbolic functions and their inverses, the sum and the
// parallel value of resistances and the percentiles (their position exact), on real arguments
// (angles in degrees when `degrees`); the functions of one argument also on a complex one (the
// circular ones in radians). Nothing for another function or a value outside the kernel's
// domain: the caller keeps the double the built-in computed.
std::optional<Wide> function(std::string_view name, const std::vector<Wide>& arguments, bool degrees);

// How near the default result a precise kernel's value must be to be taken as the same answer,
// relative: the percentiles of the default rules place their position in single precision.
double agreement_tolerance(std::string_view name);

// PI, e and EULER to the working digits; nothing for the other constants (their decimal values are
// exact as written).
std::optional<Wide> constant(std::string_view name);

} // namespace precise
} // namespace quorvex::engine
