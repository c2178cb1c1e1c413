#pragma once
#include <string>
#include <string_view>

namespace quorvex::number {

// Reads decimal text the forgiving way the engine needs: leading blanks and tabs, an optional
// sign, digits with an optional point, an optional exponent ("e" or "E", optional sign). Reading
// stops at the first character that does not fit; text without digits is zero. The result is a
// canonical form that Boost parses without complaint ("-123.45e+6", or "0").
std::string canonical_decimal(std::string_view text);

// Rounds a scientific digit string (as Boost writes it: "-d.ddd...e+nn", exact digits) to
// `places` digits after the point, halves away from zero, and writes "d.dddE+n". Zero gives
// "0.000E+0". A negative `places` keeps every digit given, trailing zeros dropped.
std::string round_scientific(std::string_view exact, int places);

} // namespace quorvex::number
