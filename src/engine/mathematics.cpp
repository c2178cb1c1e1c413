#include "mathematics.h"

#include "error_tables.h"
#include "number/decimal.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace quorvex::engine {


Mathematics::Mathematics() : ErrorLayer(mathematics_messages(), "Mathematics Error") {}

long double Mathematics::lift(long double x) {
    return number::Decimal14::lift(static_cast<double>(x)).to_long_double();
}

bool Mathematics::are_equal(long double a, long double b, long double tolerance) {
    return !(a < b - tolerance || b + tolerance < a);
}

long double Mathematics::sign(long double x) { return x > 0 ? 1.0L : (x < 0 ? -1.0L : 0.0L); }

long double Mathematics::trunc(long double x) {
    long double whole;
    std::modf(x, &whole);
    return whole;
}

long double Mathematics::round(long double x) {
    if (trunc(x) == x) return x;
    return x > 0 ? trunc(x + 0.5L) : trunc(x - 0.5L);
}

long double Mathematics::Fmod(long double x, long double y) {
    long double r = std::fmod(x, y);
    return std::fabs(r - y) <= 1e-307L ? 0.0L : r;
}

bool Mathematics::is_integer(long double x) { return std::isfinite(x) && round(x) == x; }

bool Mathematics::is_even(long double x) { return is_integer(x) && Fmod(x, 2) == 0; }

complex& Mathematics::round_zero(complex& z, long double tolerance) {
    const long double re = real_abs(z.real());
    const long double im = real_abs(z.imag());
    if (re >= tolerance || im >= tolerance) {
        if (re < tolerance) z.real(0);
        if (im < tolerance) z.imag(0);
    } else {
        z = complex(0, 0);
    }
    return z;
}

long double Mathematics::round_zero(long double& x, long double tolerance) {
    if (real_abs(x) < tolerance) x = 0;
    return x;
}

long double Mathematics::trunc_toprec(long double x, int digits) {
    return std::strtold(real_string(x, digits).c_str(), nullptr);
}

int Mathematics::numsigfig(long double x) {
    std::string text = real_string(x, 14);
    // Counts positions up to the last character that is not a '0'; the point and a leading
    // minus do not count as digits.
    int count = text.find('.') != std::string::npos ? -1 : 0;
    if (!text.empty() && text[0] == '-') --count;
    int total = 0;
    for (char c : text) {
        if (c == 'E' || c == 'e') break;
        ++count;
        if (c != '0') total = count;
    }
    return total;
}

int Mathematics::precision(long double x) {
    // Counted on the 14-digit text the value enters the decimal layer with, so binary noise
    // adds no digits: integer digits plus digits behind the point, at most 20 of those.
    char text[64];
    std::snprintf(text, sizeof text, "%.14Le", std::fabs(x));
    int mantissa_digits = 0, last_nonzero = 0;
    const char* p = text;
    for (; *p && *p != 'e'; ++p) {
        if (*p < '0' || *p > '9') continue;
        ++mantissa_digits;
        if (*p != '0') last_nonzero = mantissa_digits;
    }
    const int exponent = *p == 'e' ? std::atoi(p + 1) : 0;
    const int integer_digits = exponent >= 0 ? exponent + 1 : 0;
    const int fraction_digits = std::min(20, std::max(0, last_nonzero - (exponent + 1)));
    return integer_digits + fraction_digits;
}



} // namespace quorvex::engine
