// Arithmetic through decimal text: operands enter at 14 significant digits, the operation runs
// in decimal, and each result leaves through 15 significant digits. This is what keeps binary
// noise out of every answer.
#include "mathematics.h"

#include "number/complex_decimal.h"
#include "number/fast_decimal.h"

#include <cmath>
#include <string>

namespace quorvex::engine {

namespace {

using number::ComplexDecimal14;
using number::Decimal14;

ComplexDecimal14 to_decimal(const complex& z) { return ComplexDecimal14::lift(z.real(), z.imag()); }

complex to_binary(const ComplexDecimal14& z) { return {z.re.to_double(), z.im.to_double()}; }

// Hands the 15-digit text to the caller when asked and reads it back.
long double finish(const Decimal14& result, std::string* text) {
    std::string digits = result.to_text(14);
    const long double value = std::strtold(digits.c_str(), nullptr);
    if (text) *text = std::move(digits);
    return value;
}

} // namespace

// Sums and differences work part by part, and a product with a real factor is two real
// products: those take the integer path, which gives the decimal type's answers exactly.
complex Mathematics::complex_add(const complex& a, const complex& b) {
    return {number::decimal_add(a.real(), b.real()), number::decimal_add(a.imag(), b.imag())};
}

complex Mathematics::complex_sub(const complex& a, const complex& b) {
    return {number::decimal_sub(a.real(), b.real()), number::decimal_sub(a.imag(), b.imag())};
}

complex Mathematics::complex_mult(const complex& a, const complex& b) {
    if (b.imag() == 0) return {number::decimal_mul(a.real(), b.real()), number::decimal_mul(a.imag(), b.real())};
    if (a.imag() == 0) return {number::decimal_mul(a.real(), b.real()), number::decimal_mul(a.real(), b.imag())};
    return to_binary(number::mul(to_decimal(a), to_decimal(b)));
}

complex Mathematics::complex_div(const complex& a, const complex& b) {
    // A real quotient, exact on integers, is what the decimal formula gives for real operands.
    if (a.imag() == 0 && b.imag() == 0 && b.real() != 0 && std::isfinite(a.real()) && std::isfinite(b.real()))
        return {number::decimal_div(a.real(), b.real()), 0};
    const ComplexDecimal14 divisor = to_decimal(b);
    if (number::is0(divisor)) {
        math_exception(0);
        return {0, 0};
    }
    ComplexDecimal14 quotient;
    number::div(quotient, to_decimal(a), divisor);
    return to_binary(quotient);
}

long double Mathematics::real_add(long double a, long double b, std::string* text) {
    return finish(Decimal14::lift(a) + Decimal14::lift(b), text);
}

long double Mathematics::real_sub(long double a, long double b, std::string* text) {
    return finish(Decimal14::lift(a) - Decimal14::lift(b), text);
}

long double Mathematics::real_mult(long double a, long double b, std::string* text) {
    return finish(Decimal14::lift(a) * Decimal14::lift(b), text);
}

long double Mathematics::real_div(long double a, long double b, std::string* text) {
    const Decimal14 divisor = Decimal14::lift(b);
    if (divisor.is_zero()) {
        math_exception(0);
        return 0;
    }
    return finish(Decimal14::lift(a) / divisor, text);
}

long double Mathematics::real_abs(long double a, std::string* text) { return finish(Decimal14::lift(a).abs(), text); }

long double Mathematics::char_add(const char* a, const char* b, std::string* text) {
    return finish(Decimal14::from_text(a ? a : "") + Decimal14::from_text(b ? b : ""), text);
}

long double Mathematics::char_sub(const char* a, const char* b, std::string* text) {
    return finish(Decimal14::from_text(a ? a : "") - Decimal14::from_text(b ? b : ""), text);
}

long double Mathematics::char_mult(const char* a, const char* b, std::string* text) {
    return finish(Decimal14::from_text(a ? a : "") * Decimal14::from_text(b ? b : ""), text);
}

long double Mathematics::char_div(const char* a, const char* b, std::string* text) {
    const Decimal14 divisor = Decimal14::from_text(b ? b : "");
    if (divisor.is_zero()) {
        math_exception(0);
        return 0;
    }
    return finish(Decimal14::from_text(a ? a : "") / divisor, text);
}

long double Mathematics::char_abs(const char* a, std::string* text) {
    return finish(Decimal14::from_text(a ? a : "").abs(), text);
}

std::string Mathematics::real_string(long double x, int digits) { return Decimal14::lift(x).to_text(digits); }

complex Mathematics::logarithm(const complex& z, long double base) {
    number::ComplexDecimal21 common;
    if (number::log10(common, number::ComplexDecimal21::lift(z.real(), z.imag())) != 0) return {0, 0};
    const number::Decimal21 divisor = number::log10(number::Decimal21::lift(static_cast<double>(base)));
    if (divisor.is_zero()) return {0, 0};
    return {(common.re / divisor).to_double(), (common.im / divisor).to_double()};
}

} // namespace quorvex::engine
