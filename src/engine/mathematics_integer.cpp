// Integer operations on values that arrive as doubles: remainder, divisors, bases.
#include "mathematics.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace quorvex::engine {

namespace {

__extension__ typedef unsigned __int128 WideUnsigned;

std::uint64_t euclid(std::uint64_t a, std::uint64_t b) {
    while (b != 0) {
        const std::uint64_t r = a % b;
        a = b, b = r;
    }
    return a;
}

std::uint64_t magnitude(long double x) { return static_cast<std::uint64_t>(std::fabs(std::trunc(x))); }

std::string to_digits(WideUnsigned value, unsigned radix) {
    static const char digits[] = "0123456789ABCDEF";
    std::string reversed;
    do {
        reversed += digits[static_cast<unsigned>(value % radix)];
        value /= radix;
    } while (value > 0);
    return std::string(reversed.rbegin(), reversed.rend());
}

} // namespace

bool Mathematics::is_exact_integer(long double x) {
    return is_integer(x) && std::fabs(x) < k_exact_integer_limit;
}

complex Mathematics::modulus(const complex& a, const complex& b) {
    if (a.imag() != 0 || b.imag() != 0) {
        math_exception(1);
        return {0, 0};
    }
    if (!is_integer(a.real()) || !is_integer(b.real())) {
        math_exception(2);
        return {0, 0};
    }
    // Beyond 15 digits the operands are no longer the integers the user wrote.
    if (!is_exact_integer(a.real()) || !is_exact_integer(b.real())) {
        math_exception(6);
        return {0, 0};
    }
    const auto x = static_cast<std::int64_t>(a.real()), y = static_cast<std::int64_t>(b.real());
    if (y == 0) return {0, 0}; // the evaluator refuses a zero divisor before it gets here
    return {static_cast<double>(x % y), 0};
}

long double Mathematics::gcd(long double a, long double b) {
    return static_cast<long double>(euclid(magnitude(a), magnitude(b)));
}

std::string Mathematics::lcm(long double a, long double b) {
    const std::uint64_t x = magnitude(a), y = magnitude(b);
    const std::uint64_t divisor = euclid(x, y);
    // Two 15-digit operands have a multiple of up to 30 digits: exact in 128 bits.
    return divisor == 0 ? "0" : to_digits(static_cast<WideUnsigned>(x / divisor) * y, 10);
}

std::string Mathematics::basecon(long double x, long double base, std::string* text) {
    unsigned radix = static_cast<unsigned>(std::trunc(base));
    if (radix < 2 || radix > 16) radix = 10;
    const std::string result = to_digits(magnitude(x), radix);
    if (text) *text = result;
    return result;
}

} // namespace quorvex::engine
