// Precise arithmetic on the 21-digit decimal type: operators, comparisons, rounding for display,
// constants and the kernels of the elementary built-in functions.
#include "precise_arithmetic.h"

#include "token_kind.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace quorvex::engine::precise {

namespace {

using number::Decimal21;

const Decimal21& ten_to_trusted() {
    static const Decimal21 value = Decimal21::from_text("1e" + std::to_string(k_trusted_digits));
    return value;
}

constexpr int k_power_limit = 300;

// 10^k for |k| up to k_power_limit, exact, made once.
const Decimal21& power_of_ten(int k) {
    static const std::vector<Decimal21> table = [] {
        std::vector<Decimal21> powers;
        for (int e = -k_power_limit; e <= k_power_limit; ++e) powers.push_back(Decimal21::from_text("1e" + std::to_string(e)));
        return powers;
    }();
    return table[static_cast<size_t>(k + k_power_limit)];
}

// A difference far below the operands is what is left of their last digits, not a value. The
// decimal exponents decide (a sum's magnitude is at most ten times its larger operand's order),
// which costs no multiplication on every sum.
Decimal21 cancelled_to_zero(const Decimal21& result, const Decimal21& a, const Decimal21& b) {
    if (result.is_zero() || a.is_zero() || b.is_zero()) return result;
    const long long larger = std::max(a.value().backend().order(), b.value().backend().order());
    return result.value().backend().order() + k_trusted_digits < larger ? Decimal21() : result;
}

Decimal21 from_shortest(double x) {
    if (x == 0) return Decimal21();
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, x);
    return Decimal21::from_text(std::string_view(text, static_cast<size_t>(written.ptr - text)));
}

// Rounded half away from zero to `digits` significant digits, exactly.
Decimal21 rounded(const Decimal21& x, int digits) { return Decimal21::from_text(x.to_text(digits - 1)); }

const Decimal21& degree() {
    static const Decimal21 value = number::pi<21>() / Decimal21(180);
    return value;
}

// An angle in degrees taken into [0, 360) exactly; multiples of 90 degrees then have exact
// sines and cosines, which the conversion to radians would blur in the last digits.
Decimal21 reduced_degrees(const Decimal21& x) {
    const Decimal21 turn(360);
    return x - turn * (x / turn).floor();
}

// sin or cos of an angle in the user's unit. A result below the noise that the argument's own
// trusted digits carry is zero: SIN(PI) is 0.
Decimal21 circular(bool cosine, const Decimal21& x, bool degrees) {
    if (degrees) {
        const Decimal21 angle = reduced_degrees(x);
        for (int quarter = 0; quarter < 4; ++quarter) {
            if (angle == Decimal21(90 * quarter)) {
                static constexpr int k_sine[] = {0, 1, 0, -1};
                return Decimal21(k_sine[cosine ? (quarter + 1) % 4 : quarter]);
            }
        }
        return cosine ? number::cos(angle * degree()) : number::sin(angle * degree());
    }
    const Decimal21 value = cosine ? number::cos(x) : number::sin(x);
    if (value.is_zero()) return value;
    const long long scale = x.is_zero() ? 0 : std::max<long long>(0, x.value().backend().order());
    return value.value().backend().order() + k_trusted_digits < scale ? Decimal21() : value;
}

Decimal21 to_user_angle(const Decimal21& radians, bool degrees) { return degrees ? radians / degree() : radians; }

// Real x^n by squaring, n a whole number of moderate size: every step keeps 56 digits.
Decimal21 integer_power(Decimal21 x, long long n) {
    Decimal21 result(1);
    for (; n > 0; n >>= 1) {
        if (n & 1) result = result * x;
        x = x * x;
    }
    return result;
}

// The position (n + 1) p / 100 - 1 in the sorted values, exact, and the value interpolated there.
Decimal21 percentile(std::vector<Decimal21> x, const Decimal21& p) {
    std::sort(x.begin(), x.end());
    const Decimal21 position = Decimal21(static_cast<int>(x.size()) + 1) * p / Decimal21(100) - Decimal21(1);
    if (position >= Decimal21(static_cast<int>(x.size()) - 1)) return x.back();
    if (position.sign() <= 0) return x.front();
    const Decimal21 low = position.floor();
    const auto k = static_cast<size_t>(low.to_double());
    return x[k] + (position - low) * (x[k + 1] - x[k]);
}

std::optional<Decimal21> list_function(std::string_view name, const std::vector<Decimal21>& a) {
    if (a.empty()) return std::nullopt;
    if (name == "SRESIST" || name == "PRESIST") {
        Decimal21 sum;
        for (const Decimal21& r : a) {
            if (name == "SRESIST") sum = sum + r;
            else if (r.is_zero()) return std::nullopt;
            else sum = sum + Decimal21(1) / r;
        }
        if (name == "SRESIST") return sum;
        return sum.is_zero() ? std::nullopt : std::optional<Decimal21>(Decimal21(1) / sum);
    }
    if (name == "LQRTLE" || name == "UQRTLE") return percentile(a, Decimal21(name == "LQRTLE" ? 25 : 75));
    if (name == "PRCTLE" && a.size() >= 2) {
        const Decimal21 p = a.back();
        if (p.sign() < 0 || p > Decimal21(100)) return std::nullopt;
        return percentile(std::vector<Decimal21>(a.begin(), a.end() - 1), p);
    }
    return std::nullopt;
}

std::optional<Decimal21> real_function(std::string_view name, const std::vector<Decimal21>& a, bool degrees) {
    bool fault = false;
    auto checked = [&fault](const Decimal21& value) -> std::optional<Decimal21> {
        if (fault) return std::nullopt;
        return value;
    };
    const size_t n = a.size();
    if (const auto value = list_function(name, a)) return value;
    if (n == 2) {
        if (name == "POW") {
            Wide result;
            if (!pow(result, {a[0], {}}, {a[1], {}}) || !result.is_real()) return std::nullopt;
            return result.re;
        }
        if (name == "HYPOT") return number::sqrt(a[0] * a[0] + a[1] * a[1]);
        if (name == "LOG") {
            if (a[0].sign() <= 0 || a[1].sign() <= 0 || a[1] == Decimal21(1)) return std::nullopt;
            return number::log(a[0]) / number::log(a[1]);
        }
        return std::nullopt;
    }
    if (n != 1) return std::nullopt;
    const Decimal21& x = a[0];
    if (name == "SQRT") return checked(number::sqrt(x, &fault));
    if (name == "CUBERT") {
        if (x.is_zero()) return x;
        const Decimal21 root = number::exp(number::log(x.abs()) / Decimal21(3));
        return x.sign() < 0 ? -root : root;
    }
    if (name == "EXP") return number::exp(x);
    if (name == "LN") return checked(number::log(x, &fault));
    if (name == "LOG10") return checked(number::log10(x, &fault));
    if (name == "ABS") return x.abs();
    if (name == "DEG") return x / degree();
    if (name == "RAD") return x * degree();
    if (name == "SIN") return circular(false, x, degrees);
    if (name == "COS") return circular(true, x, degrees);
    if (name == "TAN") {
        const Decimal21 cosine = circular(true, x, degrees);
        if (cosine.is_zero()) return std::nullopt;
        return circular(false, x, degrees) / cosine;
    }
    if (name == "ASIN") return checked(to_user_angle(number::asin(x, &fault), degrees));
    if (name == "ACOS") return checked(to_user_angle(number::acos(x, &fault), degrees));
    if (name == "ATAN") return to_user_angle(number::atan(x), degrees);
    if (name == "SINH") return number::sinh(x);
    if (name == "COSH") return number::cosh(x);
    if (name == "TANH") return number::tanh(x);
    if (name == "ASINH") return number::asinh(x);
    if (name == "ACOSH") return checked(number::acosh(x, &fault));
    if (name == "ATANH") return checked(number::atanh(x, &fault));
    return std::nullopt;
}

// The functions of one complex argument, by the complex decimal formulas; angles only in radians
// (the default rules refuse or convert the others, and their answer then stands).
std::optional<Wide> complex_function(std::string_view name, const Wide& z, bool degrees) {
    Wide result;
    auto faulting = [&result](int fault) -> std::optional<Wide> {
        if (fault != 0) return std::nullopt;
        return result;
    };
    if (name == "ABS") return Wide{number::abs(z), {}};
    if (name == "SQRT") return number::sqrt(z);
    if (name == "EXP") return number::exp(z);
    if (name == "LN") return faulting(number::log(result, z));
    if (name == "LOG10") return faulting(number::log10(result, z));
    if (name == "SINH") return number::sinh(z);
    if (name == "COSH") return number::cosh(z);
    if (name == "TANH") return faulting(number::tanh(result, z));
    if (name == "ASINH") return number::asinh(z);
    if (name == "ACOSH") return faulting(number::acosh(result, z));
    if (name == "ATANH") return faulting(number::atanh(result, z));
    if (degrees) return std::nullopt;
    if (name == "SIN") return number::sin(z);
    if (name == "COS") return number::cos(z);
    if (name == "TAN") return faulting(number::tan(result, z));
    if (name == "ASIN") return number::asin(z);
    if (name == "ACOS") return number::acos(z);
    if (name == "ATAN") return faulting(number::atan(result, z));
    return std::nullopt;
}

} // namespace

Wide from_literal(std::string_view digits, long exponent) {
    // Up to 18 digits go straight into the mantissa, with an exact power of ten: reading text
    // into the decimal type costs more than the arithmetic of a whole line.
    std::uint64_t mantissa = 0;
    int count = 0;
    long scale = exponent;
    bool point = false;
    for (const char c : digits) {
        if (c == '.' && !point) {
            point = true;
        } else if (c >= '0' && c <= '9') {
            if (mantissa == 0 && c == '0') {
                if (point) --scale;
                continue;
            }
            if (++count > 18) break;
            mantissa = mantissa * 10 + static_cast<std::uint64_t>(c - '0');
            if (point) --scale;
        } else {
            count = 19; // anything else: the text reader decides
            break;
        }
    }
    if (count > 18 || scale < -k_power_limit || scale > k_power_limit) {
        std::string text(digits);
        text += 'e';
        text += std::to_string(exponent);
        return {Decimal21::from_text(text), {}};
    }
    const Decimal21 whole(Decimal21::Value(static_cast<unsigned long long>(mantissa)));
    return {scale == 0 ? whole : whole * power_of_ten(static_cast<int>(scale)), {}};
}

Wide from_double(const complex& z) { return {from_shortest(z.real()), from_shortest(z.imag())}; }

Wide from_result(const complex& z) {
    auto digits = [](double x) {
        if (x == 0) return Decimal21();
        char text[40];
        const auto written = std::to_chars(text, text + sizeof text, x, std::chars_format::scientific, 16);
        return Decimal21::from_text(std::string_view(text, static_cast<size_t>(written.ptr - text)));
    };
    return {digits(z.real()), digits(z.imag())};
}

Wide from_long_double(long double x) {
    if (x == 0) return {};
    char text[48];
    const auto written = std::to_chars(text, text + sizeof text, x, std::chars_format::scientific, 20);
    return {Decimal21::from_text(std::string_view(text, static_cast<size_t>(written.ptr - text))), {}};
}

long double to_long_double(const Decimal21& x) { return std::strtold(x.to_text(20).c_str(), nullptr); }

double agreement_tolerance(std::string_view name) {
    return name == "PRCTLE" || name == "LQRTLE" || name == "UQRTLE" ? 1e-5 : 1e-9;
}

complex to_double(const Wide& z) { return {z.re.to_double(), z.im.to_double()}; }

Wide add(const Wide& a, const Wide& b) {
    return {cancelled_to_zero(a.re + b.re, a.re, b.re), cancelled_to_zero(a.im + b.im, a.im, b.im)};
}

Wide sub(const Wide& a, const Wide& b) {
    return {cancelled_to_zero(a.re - b.re, a.re, b.re), cancelled_to_zero(a.im - b.im, a.im, b.im)};
}

Wide mul(const Wide& a, const Wide& b) {
    if (a.is_real() && b.is_real()) return {a.re * b.re, {}};
    return number::mul(a, b);
}

bool div(Wide& result, const Wide& a, const Wide& b) {
    if (b.re.is_zero() && b.im.is_zero()) return false;
    if (b.is_real()) {
        result = {a.re / b.re, a.im / b.re};
        return true;
    }
    return number::div(result, a, b) == 0;
}

Wide negate(const Wide& a) { return {-a.re, -a.im}; }

std::optional<Decimal21> nearest_integer(const Wide& z) {
    if (!z.is_real()) return std::nullopt;
    if (z.re.is_integer()) return z.re;
    const Decimal21 whole = z.re.round();
    if ((z.re - whole).abs() * ten_to_trusted() <= z.re.abs()) return whole;
    return std::nullopt;
}

bool pow(Wide& result, const Wide& z, const Wide& w) {
    if (const auto whole = z.is_real() ? nearest_integer(w) : std::nullopt) {
        const Decimal21 n = *whole;
        if (n.abs() <= Decimal21(100000)) {
            const long long k = std::llround(n.to_double());
            const Decimal21 power = integer_power(z.re, k < 0 ? -k : k);
            if (k >= 0) {
                result = {power, {}};
                return true;
            }
            if (power.is_zero()) return false;
            result = {Decimal21(1) / power, {}};
            return true;
        }
    }
    if (z.is_real() && w.is_real() && z.re.sign() > 0) {
        result = {number::pow(z.re, w.re), {}};
        return true;
    }
    return number::pow(result, z, w) == 0;
}

int compare_real(const Decimal21& a, const Decimal21& b) {
    const Decimal21 x = a.is_zero() ? a : rounded(a, 14);
    const Decimal21 y = b.is_zero() ? b : rounded(b, 14);
    return x.compare(y);
}

bool relation_holds(char relation, const Wide& a, const Wide& b) {
    const int re = compare_real(a.re, b.re);
    const int im = compare_real(a.im, b.im);
    switch (relation) {
    case relational::equal: return re == 0 && im == 0;
    case relational::not_equal: return re != 0 || im != 0;
    case relational::greater: return re >= 0 && im >= 0 && re + im > 0;
    case relational::greater_equal: return re >= 0 && im >= 0;
    case relational::less: return re <= 0 && im <= 0 && re + im < 0;
    case relational::less_equal: return re <= 0 && im <= 0;
    default: return false;
    }
}

double rounded_for_display(const Decimal21& x, int digits) {
    if (x.is_zero()) return 0;
    if (digits < 1) digits = 1;
    if (digits > 15) digits = 15;
    return std::strtod(x.to_text(digits - 1).c_str(), nullptr);
}

std::optional<Wide> function(std::string_view name, const std::vector<Wide>& arguments, bool degrees) {
    if (arguments.size() == 1 && !arguments[0].is_real()) return complex_function(name, arguments[0], degrees);
    std::vector<Decimal21> real;
    real.reserve(arguments.size());
    for (const Wide& a : arguments) {
        if (!a.is_real()) return std::nullopt;
        real.push_back(a.re);
    }
    const auto value = real_function(name, real, degrees);
    if (!value) return std::nullopt;
    return Wide{*value, {}};
}

std::optional<Wide> constant(std::string_view name) {
    if (name == "PI") return Wide{number::pi<21>(), {}};
    if (name == "e") return Wide{number::exp(Decimal21(1)), {}};
    if (name == "EULER") return Wide{Decimal21::from_text("0.57721566490153286060651209008240243104215933593992"), {}};
    return std::nullopt;
}

} // namespace quorvex::engine::precise
