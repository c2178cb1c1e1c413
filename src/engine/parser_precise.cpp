// Precise arithmetic in the descent. The four operators work on the digits alone: their only
// faults, a zero divisor and an overflow, are checked here. Every other step runs the default rules
// first, so errors, messages, branches and the mapper's recording are those of the default
// arithmetic, and then gives its operand the value's own digits. The double the rest of the engine
// reads is those digits through 15 significant digits.
#include "parser.h"
#include "precise_arithmetic.h"

#include <cmath>
#include <optional>

namespace quorvex::engine {

namespace {

Wide wide(const Operand& value) { return value.precise ? value.precise->z : precise::from_double(value.z); }

Operand made(const Wide& z) {
    return Operand{precise::to_double(z), std::make_shared<const PreciseValue>(PreciseValue{z})};
}

// Whether the precise value is the one the default rules meant (or its negative, for the second
// root the user asked for): the same to nine digits, or within 1e-12 of it near zero. Anything else
// is another branch or a special case the default rules decide, and the default value stands.
bool agrees(const complex& precise_value, const complex& result, double relative = 1e-9) {
    const double tolerance = relative * std::abs(result) + 1e-12;
    return std::abs(precise_value - result) <= tolerance;
}

// The built-in table's own precise value, on real parameters taken to long double.
std::optional<Wide> table_kernel(const BuiltinTable& table, int function, const std::vector<Wide>& arguments) {
    std::vector<long double> real;
    real.reserve(arguments.size());
    for (const Wide& a : arguments) {
        if (!a.is_real()) return std::nullopt;
        real.push_back(precise::to_long_double(a.re));
    }
    const auto value = table.precise_value(function, real);
    if (!value) return std::nullopt;
    return precise::from_long_double(*value);
}

} // namespace

void Parser::precise_operator(char op, Operand& value, const Operand& other) {
    const Wide a = wide(value), b = wide(other);
    Wide z;
    switch (op) {
    case '+': z = precise::add(a, b); break;
    case '-': z = precise::sub(a, b); break;
    case '*': z = precise::mul(a, b); break;
    default:
        if (!precise::div(z, a, b)) {
            m_math.math_exception(0);
            value = Operand{};
            return;
        }
    }
    value = made(z);
    value.z = checked(value.z);
}

void Parser::precise_power(Operand& value, const Operand& exponent, const complex& result) {
    Wide z;
    if (precise::pow(z, wide(value), wide(exponent))) {
        const Operand candidate = made(z);
        if (agrees(candidate.z, result)) {
            value = candidate;
            return;
        }
        const Operand negated = made(precise::negate(z));
        if (agrees(negated.z, result)) {
            value = negated;
            return;
        }
    }
    value = Operand{result, nullptr};
}

void Parser::precise_negate(Operand& value) {
    value = value.precise ? made(precise::negate(value.precise->z))
                          : Operand{complex(0.0 - value.z.real(), 0.0 - value.z.imag()), nullptr};
}

void Parser::precise_literal(Operand& value, const std::string& digits, long exponent, bool imaginary) {
    // The double the default rules read from the text is the one this value comes back to.
    const Wide number = precise::from_literal(digits, exponent);
    value.precise = std::make_shared<const PreciseValue>(PreciseValue{imaginary ? Wide{{}, number.re} : number});
}

bool Parser::precise_constant(Operand& value, const std::string& name) {
    const auto constant = precise::constant(name);
    if (!constant) return false;
    value = made(*constant);
    return true;
}

void Parser::precise_imaginary(Operand& value, const Operand& factor) {
    value = made(Wide{{}, wide(factor).re});
}

void Parser::precise_factorial(Operand& value, const Operand& argument) {
    const auto n = precise::nearest_integer(wide(argument));
    if (n && n->sign() >= 0) value = made(Wide{n->factorial(), {}});
}

void Parser::precise_builtin(Operand& value, int function, std::ostringstream& out) {
    std::vector<Operand> outer;
    outer.swap(m_call_arguments);
    // Back to the caller's parameters however the call ends.
    struct Restore {
        std::vector<Operand>& arguments;
        std::vector<Operand>& outer;
        ~Restore() { arguments.swap(outer); }
    } restore{m_call_arguments, outer};
    value = Operand{m_builtins->call(function, *this, out), nullptr};
    if (const auto kernel = precise_kernel(function)) {
        const double tolerance = precise::agreement_tolerance(get_function_name(function));
        for (const Wide& candidate : {*kernel, precise::negate(*kernel)}) {
            Operand precise_value = made(candidate);
            if (agrees(precise_value.z, value.z, tolerance)) {
                value = std::move(precise_value);
                return;
            }
        }
    }
    // No kernel, or one that decided otherwise: the double enters with all its digits.
    value.precise = std::make_shared<const PreciseValue>(PreciseValue{precise::from_result(value.z)});
}

std::optional<Wide> Parser::precise_kernel(int function) const {
    if (m_call_arguments.empty()) return std::nullopt;
    std::vector<Wide> arguments;
    arguments.reserve(m_call_arguments.size());
    for (const Operand& argument : m_call_arguments) arguments.push_back(wide(argument));
    if (auto kernel = precise::function(get_function_name(function), arguments, m_angle_type == 0)) return kernel;
    return table_kernel(*m_builtins, function, arguments);
}

bool Parser::precise_compare(char relation, bool flag, const Operand& a, const Operand& b) {
    if (!flag) return false;
    return precise::relation_holds(relation, wide(a), wide(b));
}

void Parser::precise_variable(Operand& value, const Variable& variable) {
    value = Operand{variable.value(), variable.precise_value()};
}

void Parser::store_precise(const std::string& name, const Operand& value) {
    if (Variable* variable = variable_for(name.c_str()))
        variable->SetVarPreciseValue(value.z, value.precise ? value.precise : made(wide(value)).precise);
}

complex Parser::precise_shown(const Operand& value, int digits) const {
    if (!value.precise) return value.z;
    return {precise::rounded_for_display(value.precise->z.re, digits),
            precise::rounded_for_display(value.precise->z.im, digits)};
}

} // namespace quorvex::engine
