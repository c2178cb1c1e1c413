#pragma once
#include "complex.h"
#include "error_layer.h"
#include "fraction.h"

#include <string>

namespace quorvex::engine {

// The numeric base of the engine: rounding helpers, text classifiers and arithmetic whose results
// come back through 15 significant decimal digits, so that answers carry no binary noise.
// Operands enter through 14 significant digits.
class Mathematics : public ErrorLayer {
public:
    Mathematics();

    void math_exception(int code) { raise(code); }

    // Numbers and rounding.
    static bool are_equal(long double a, long double b, long double tolerance);
    static long double sign(long double x);
    static long double round(long double x); // halves away from zero
    static long double trunc(long double x);
    static long double Fmod(long double x, long double y);
    static bool is_integer(long double x);
    static bool is_even(long double x);
    complex& round_zero(complex& z, long double tolerance);
    long double round_zero(long double& x, long double tolerance);
    int numsigfig(long double x);
    long double trunc_toprec(long double x, int digits);
    // Integer digits plus fractional digits of x as it prints, at most 20 behind the point.
    int precision(long double x);

    // Text classifiers; all skip leading white space and one sign.
    static bool is_delim(char c);
    static bool is_number(const char* text);  // digits and operators; "i" only last (1+2i)
    static bool is_integer(const char* text); // digits up to a delimiter, no letter
    static bool is_real(const char* text);    // digits, a point, an exponent

    // Arithmetic through decimal text.
    complex complex_add(const complex& a, const complex& b);
    complex complex_sub(const complex& a, const complex& b);
    complex complex_mult(const complex& a, const complex& b);
    complex complex_div(const complex& a, const complex& b);
    long double real_add(long double a, long double b, std::string* text = nullptr);
    long double real_sub(long double a, long double b, std::string* text = nullptr);
    long double real_mult(long double a, long double b, std::string* text = nullptr);
    long double real_div(long double a, long double b, std::string* text = nullptr);
    long double real_abs(long double a, std::string* text = nullptr);
    // The same on operands that are decimal text already.
    long double char_add(const char* a, const char* b, std::string* text = nullptr);
    long double char_sub(const char* a, const char* b, std::string* text = nullptr);
    long double char_mult(const char* a, const char* b, std::string* text = nullptr);
    long double char_div(const char* a, const char* b, std::string* text = nullptr);
    long double char_abs(const char* a, std::string* text = nullptr);
    // Logarithm of z to a real base: log10(z) / log10(base), both parts.
    complex logarithm(const complex& z, long double base);
    complex modulus(const complex& a, const complex& b);
    // The integer functions work on integers below 10^15 in magnitude, whose every digit the
    // 15-digit rule keeps; their callers refuse larger operands.
    static constexpr long double k_exact_integer_limit = 1e15L;
    static bool is_exact_integer(long double x);
    static long double gcd(long double a, long double b);
    // The least common multiple as decimal digits: it may need up to 30.
    static std::string lcm(long double a, long double b);
    // Digits of x in `base` (2 to 16), at least one digit; also stored in `text` when given.
    static std::string basecon(long double x, long double base, std::string* text = nullptr);
    // x as it enters the decimal layer, written with `digits` digits after the point.
    std::string real_string(long double x, int digits);

    // Nearest fraction of x; status 0 success, 2 too small, 4 too many digits, 1 failure.
    Fraction DecToFrac(long double x, long double tolerance, int& status);

    // A value as it enters the decimal layer: 14 significant digits.
    static long double lift(long double x);
};

} // namespace quorvex::engine
