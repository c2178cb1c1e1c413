// Integer operations on values that arrive as doubles: remainder, divisors, bases.
#include "mathematics.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace quorvex::engine {

namespace {

namespace {

// Truncates to 32 bits without undefined behaviour for values out of range.
std::int64_t to_int32(long double x) {
    long double t = std::trunc(x);
    if (!(t >= -2147483648.0L)) return -2147483648LL;
    if (t > 2147483647.0L) return 2147483647LL;
    return static_cast<std::int64_t>(t);
}

} // namespace

std::int64_t euclid(std::int64_t a, std::int64_t b) {
    a = std::llabs(a), b = std::llabs(b);
    while (b != 0) {
        const std::int64_t r = a % b;
        a = b, b = r;
    }
    return a;
}

} // namespace

complex Mathematics::modulus(const complex& a, const complex& b) {
    if (a.imag() != 0 || b.imag() != 0) {
        math_exception(1);
        return {0, 0};
    }
    if (!is_integer(a.real()) || !is_integer(b.real())) {
        math_exception(2);
        return {0, 0};
    }
    std::int64_t divisor = to_int32(b.real());
    if (divisor == 0) return {0, 0}; // the evaluator refuses a zero divisor before it gets here
    return {static_cast<double>(to_int32(a.real()) % divisor), 0};
}

long double Mathematics::gcd(long double a, long double b) {
    return static_cast<long double>(euclid(to_int32(a), to_int32(b)));
}

long double Mathematics::lcm(long double a, long double b) {
    const std::int64_t x = to_int32(a), y = to_int32(b);
    const std::int64_t divisor = euclid(x, y);
    return divisor == 0 ? 0.0L : static_cast<long double>(std::llabs(x / divisor * y));
}

std::string Mathematics::basecon(long double x, long double base, std::string* text) {
    static const char digits[] = "0123456789ABCDEF";
    std::int64_t value = std::llabs(to_int32(x));
    std::int64_t radix = to_int32(base);
    if (radix < 2 || radix > 16) radix = 10;
    std::string reversed;
    do {
        reversed += digits[value % radix];
        value /= radix;
    } while (value > 0);
    std::string result(reversed.rbegin(), reversed.rend());
    if (text) *text = result;
    return result;
}

} // namespace quorvex::engine
