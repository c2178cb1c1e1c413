#pragma once
#include <cstdint>

namespace quorvex::engine {

enum TokenKind : std::uint8_t {
    DELIMITER = 0, // operator, bracket or punctuation; also the empty token at the end
    VARIABLE = 1,  // any name: variable, constant, user, library or internal function
    NUMBER = 2,    // a decimal literal without exponent, or the imaginary unit i
};

// Relational operators travel in a token as control bytes, doubled for the two-character
// operators so that stepping back by the token's length lands exactly where the operator began.
namespace relational {
inline constexpr char less = 0x01;
inline constexpr char less_equal = 0x02;
inline constexpr char greater = 0x03;
inline constexpr char greater_equal = 0x04;
inline constexpr char equal = 0x05;
inline constexpr char not_equal = 0x06;
inline constexpr char codes[] = "\x01\x02\x03\x04\x05\x06";
} // namespace relational

} // namespace quorvex::engine
