#include "mathematics.h"

#include "error_tables.h"

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
    char text[64];
    std::snprintf(text, sizeof text, "%.14Lg", x);
    return std::strtold(text, nullptr);
}

double Mathematics::land(long double x) {
    char text[64];
    std::snprintf(text, sizeof text, "%.14Le", x);
    return std::strtod(text, nullptr);
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
    // Counted on the value as it enters the decimal layer, so binary noise adds no digits.
    char text[512];
    std::snprintf(text, sizeof text, "%.20Lf", std::fabs(lift(x)));
    const char* point = std::strchr(text, '.');
    int integer_digits = point ? static_cast<int>(point - text) : static_cast<int>(std::strlen(text));
    if (integer_digits == 1 && text[0] == '0') integer_digits = 0;
    int fraction_digits = 0;
    for (int i = 1; point && point[i]; ++i)
        if (point[i] != '0') fraction_digits = i;
    return integer_digits + fraction_digits;
}



} // namespace quorvex::engine
