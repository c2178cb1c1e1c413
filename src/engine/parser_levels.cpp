// The recursive descent: one function per level of precedence, evaluating while reading.
#include "evaluation_aborted.h"
#include "parser.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

namespace quorvex::engine {

namespace {

// Deeper nesting than any hand-written expression needs; beyond it the stack would be at risk.
constexpr int k_max_nesting = 400;

// Leaves a nesting level on every way out of the function that entered it.
class NestingScope {
public:
    explicit NestingScope(int& depth) : m_depth(depth) {}
    ~NestingScope() { --m_depth; }
    NestingScope(const NestingScope&) = delete;
    NestingScope& operator=(const NestingScope&) = delete;

private:
    int& m_depth;
};

bool starts_relational(const std::string& token) {
    return !token.empty() && std::strchr(relational::codes, token[0]) != nullptr;
}

} // namespace

void Parser::enter_nesting() {
    if (++m_depth > k_max_nesting)
        special_exception("The expression is nested too deeply to be evaluated!", nullptr);
}

complex Parser::checked(const complex& value) {
    if (!std::isfinite(value.real()) || !std::isfinite(value.imag())) parser_exception(26);
    return value;
}

void Parser::eval_exp0(Operand& value, std::ostringstream& out) {
    if (!get_token()) parser_exception(4);
    if (m_token == "i") {
        get_token();
        if (m_token == "=") parser_exception(13);
        putback();
    }

    if (m_token_kind == VARIABLE && !is_internal_function(m_token.c_str()) && is_function_declaration()) {
        m_input_pos = m_input_start;
        get_token();
        if (is_library_function(m_token.c_str()))
            special_exception("' %s ' has already been defined as a mathematical library function. You can not "
                              "redefine this function! Please choose another name!",
                              m_token.c_str());
        declare_function();
        if (m_beep && m_reporter) m_reporter->beep();
        throw EvaluationAborted{}; // the declaration is over; the line has no answer
    }

    m_input_pos = m_input_start;
    insert_functions();
    m_input_pos = m_input_start;
    get_token();
    if (m_token_kind == VARIABLE && at(skip_spaces(m_input_pos)) != '[') {
        m_var_name = m_token;
        const std::string name = m_var_name;
        char saved_kind = DELIMITER;
        std::string saved_token;
        if (!is_variable(name.c_str()) && !is_constant(name.c_str())) {
            copy_token(saved_kind, saved_token);
            get_token();
            if (m_token == "=") {
                declare_variable(value, out, name);
                return;
            }
            if (m_token.empty() || m_token == ",") {
                if (!m_auto_declare) {
                    report_unknown_name(name);
                    return;
                }
                add_variable(name);
                record_instruction(NEW_VARIABLE, {}, name.c_str());
                if (m_name_use) m_name_use->written.insert(name);
                m_var_changed = true;
                out << "FLAG";
                return;
            }
            m_unknown_name = true;
            special_exception("' %s ' could not be identified as a variable or a constant!", name.c_str());
            return;
        }
        copy_token(saved_kind, saved_token);
        get_token();
        if (is_variable(name.c_str())) {
            if (m_token == "=") {
                declare_variable(value, out, name);
                return;
            }
            if (!var_assigned(name.c_str())) special_exception("' %s ' does not have a value yet", name.c_str());
        } else if (m_token == "=") {
            special_exception("Internal constant '%s' can not be assigned a value", name.c_str());
        }
        putback();
        copy_token_back(saved_kind, saved_token);
    }
    eval_exp1(value, out);
}

void Parser::declare_variable(Operand& value, std::ostringstream& out, const std::string& name) {
    if (at(skip_spaces(m_input_pos)) == '\0') parser_exception(7);
    // A plain number on the right shows no answer; an expression shows its value.
    bool literal = Mathematics::is_number(m_expression.c_str() + m_input_pos);
    get_token();
    eval_exp1(value, out);
    if (m_name_use) m_name_use->written.insert(name); // from here on the variable is set
    if (!is_variable(name.c_str())) {
        add_variable(name);
        record_instruction(NEW_VARIABLE, {}, name.c_str());
    }
    if (m_token != ",") {
        set_var_value(value.z, name.c_str());
        if (m_precise) store_precise(name, value);
        record_instruction(ASSIGN, {}, name.c_str());
    } else {
        // name = low, high, points
        const complex low = value.z;
        set_var_lowlimit(value.z, name.c_str());
        record_instruction(LOW_LIMIT, {}, name.c_str());
        get_token();
        eval_exp1(value, out);
        if (m_token != ",")
            special_exception("Comma expected after high limit in incremental variable declaration Of ' %s '",
                              name.c_str());
        set_var_hilimit(value.z, name.c_str());
        record_instruction(HIGH_LIMIT, {}, name.c_str());
        if (low == value.z)
            special_exception("The lower and higher incremental limits for ' %s ' can not be equal", name.c_str());
        get_token();
        eval_exp1(value, out);
        if (value.z.imag() != 0 || !Mathematics::is_integer(value.z.real()))
            special_exception("The number of increments must be an integer in variable declaration of ' %s '",
                              name.c_str());
        // The count is kept in 32 bits; a count that does not fit is refused, never cut.
        if (value.z.real() < 1 || value.z.real() > 2147483647.0)
            special_exception("The number of points in the incremental variable declaration of ' %s ' must lie "
                              "between 1 and 2147483647!",
                              name.c_str());
        set_var_numpoints(static_cast<long>(value.z.real()), name.c_str());
        record_instruction(NUM_POINTS, {}, name.c_str());
        literal = true;
    }
    m_var_changed = true;
    if (literal) out << "FLAG";
}

void Parser::eval_exp1(complex& value, std::ostringstream& out) {
    Operand operand;
    eval_exp1(operand, out);
    value = operand.z;
    // A built-in being called in precise arithmetic takes its parameters' own digits from here.
    if (m_precise) m_call_arguments.push_back(std::move(operand));
}

void Parser::eval_exp1(Operand& value, std::ostringstream& out) {
    enter_nesting();
    NestingScope scope(m_depth);
    eval_exp2(value, out);
    if (!starts_relational(m_token)) return;
    // A chain: every pair must hold, and the answer is 1 or 0.
    Operand left = value;
    bool holds = true;
    bool first = true;
    while (starts_relational(m_token)) {
        if (m_mapping && first) record_instruction(BEGIN_RELATION);
        first = false;
        const char relation = m_token[0];
        get_token();
        Operand right;
        eval_exp2(right, out);
        holds = m_precise ? precise_compare(relation, holds, left, right) : compare(relation, holds, left.z, right.z);
        record_instruction(LESS + (relation - relational::less));
        left = right;
    }
    value = Operand{complex(holds ? 1 : 0, 0), nullptr};
    record_instruction(END_RELATION);
}

void Parser::eval_exp2(Operand& value, std::ostringstream& out) {
    eval_exp3(value, out);
    while (m_token == "+" || m_token == "-") {
        const char op = m_token[0];
        get_token();
        if (m_token == ")" || m_token.empty()) parser_exception(5);
        Operand term;
        eval_exp3(term, out);
        if (m_precise) precise_operator(op, value, term);
        else value.z = checked(op == '+' ? m_math.complex_add(value.z, term.z) : m_math.complex_sub(value.z, term.z));
        record_instruction(op == '+' ? ADD : SUBTRACT);
    }
}

void Parser::eval_exp3(Operand& value, std::ostringstream& out) {
    eval_exp4(value, out);
    while (m_implied_mult || m_token == "*" || m_token == "/" || m_token == "%") {
        char op = '*';
        if (m_implied_mult) {
            // The factor that set the flag is read again as the first token of the operand.
            m_implied_mult = false;
            putback();
        } else {
            op = m_token[0];
        }
        get_token();
        if (m_token == ")" || m_token.empty()) parser_exception(5);
        Operand factor;
        eval_exp4(factor, out);
        if (op == '*' || op == '/') {
            if (m_precise)
                precise_operator(op, value, factor);
            else
                value.z = checked(op == '*' ? m_math.complex_mult(value.z, factor.z) : m_math.complex_div(value.z, factor.z));
            record_instruction(op == '*' ? MULTIPLY : DIVIDE);
        } else {
            // The integer remainder has no meaning for a zero divisor.
            if (factor.z == complex(0, 0)) m_math.math_exception(0);
            value = Operand{m_math.modulus(value.z, factor.z), nullptr};
            record_instruction(MODULUS);
        }
    }
}

void Parser::eval_exp4(Operand& value, std::ostringstream& out) {
    eval_exp5(value, out);
    if (m_token == "^") {
        get_token();
        Operand exponent;
        eval_exp5(exponent, out);
        // _pow may turn a negative base positive on the way; the precise power takes the original.
        const Operand base = value;
        const complex result = checked(_pow(value.z, exponent.z));
        if (m_precise) {
            value = base;
            precise_power(value, exponent, result);
        } else {
            value.z = result;
        }
        record_instruction(POWER);
    }
}

void Parser::eval_exp5(Operand& value, std::ostringstream& out) {
    char sign = 0;
    if ((m_token == "+" && m_token_kind == DELIMITER) || m_token == "-") {
        sign = m_token[0];
        get_token();
    }
    eval_exp6(value, out);
    if (sign == '-') {
        // Subtracting from zero keeps a negated zero from printing as "-0".
        if (m_precise) precise_negate(value);
        else value.z = complex(0.0 - value.z.real(), 0.0 - value.z.imag());
        record_instruction(NEGATE);
    }
    if (m_token == "!") {
        const Operand argument = value;
        value = Operand{_factorial(value.z), nullptr};
        if (m_precise) precise_factorial(value, argument);
        get_token();
        if (m_token == "(") m_implied_mult = true;
        record_instruction(FACTORIAL);
    }
}

void Parser::eval_exp6(Operand& value, std::ostringstream& out) {
    if (m_token != "(") {
        atom(value, out);
        return;
    }
    get_token();
    if (m_token == "*" || m_token == "/") parser_exception(5);
    eval_exp1(value, out);
    if (m_token != ")") parser_exception(2);
    get_token();
    if (m_token == "(" || m_token == "i" || m_token_kind == NUMBER || m_token_kind == VARIABLE)
        m_implied_mult = true;
}

void Parser::atom(Operand& value, std::ostringstream& out) {
    if (m_token_kind == VARIABLE)
        atom_name(value, out);
    else if (m_token_kind == NUMBER)
        atom_number(value, out);
    else
        parser_exception(1);
}

void Parser::atom_name(Operand& value, std::ostringstream& out) {
    const std::string name = m_token;
    const size_t bracket = skip_spaces(m_input_pos);
    if (at(bracket) == '[') {
        int depth = 1;
        size_t p = bracket + 1;
        for (; at(p) != '\0'; ++p) {
            if (at(p) == '[') {
                ++depth;
            } else if (at(p) == ']') {
                if (depth == 0) break;
                --depth;
            }
        }
        if (depth > 0)
            special_exception("The '%s' is missing a right function bracket ] or parenthesis!", name.c_str());
        if (at(p) == ']' && at(skip_spaces(p + 1)) == '=')
            special_exception("The '%s' function can not be redefined!", name.c_str());
        const int function = internal_function(name.c_str());
        if (function < 0) {
            special_exception("' %s ' can not be identified as a function!", name.c_str());
            return;
        }
        get_token(); // the "["
        get_token(); // the first token of the parameters
        if (m_precise) {
            precise_builtin(value, function, out);
        } else {
            value.z = m_builtins->call(function, *this, out);
        }
        // A result beyond the range of a double is an overflow, never a number shown as 0.
        if (!std::isfinite(value.z.real()) || !std::isfinite(value.z.imag())) mathlib_exception(34, function);
        if (m_token != "]") parser_exception(3);
        get_token();
        if (m_token == "(" || m_token_kind == VARIABLE || m_token_kind == NUMBER) m_implied_mult = true;
        return;
    }

    if (is_constant(name.c_str())) {
        value = Operand{complex(static_cast<double>(get_constant_value(name.c_str())), 0), nullptr};
        if (m_precise) precise_constant(value, name);
    } else if (Variable* variable = find_var(name.c_str())) {
        if (variable->locked())
            special_exception("Variable ' %s ' has been temporarily locked by another running process!",
                              name.c_str());
        if (!variable->assigned()) {
            // Inside a function declaration a missing value ends the evaluation without a message.
            if (m_func_declared) throw EvaluationAborted{};
            special_exception("No value for variable ' %s ' could be found!", name.c_str());
        }
        value = Operand{get_var_value(name.c_str()), nullptr};
        if (m_precise) precise_variable(value, *variable);
    } else {
        special_exception("' %s ' can not be identified as a variable or a constant!", name.c_str());
    }
    if (m_name_use) m_name_use->read.insert(name);
    get_token();
    if (m_token == "(" || m_token_kind == VARIABLE || m_token_kind == NUMBER) m_implied_mult = true;
}

void Parser::atom_number(Operand& value, std::ostringstream& out) {
    if (m_token == "i") {
        // The imaginary unit takes only the real part of a directly following atom: "i i" is 0.
        get_token();
        if (m_token_kind == VARIABLE || m_token_kind == NUMBER) {
            enter_nesting();
            NestingScope scope(m_depth);
            Operand factor;
            atom(factor, out);
            value = Operand{complex(0, factor.z.real()), nullptr};
            if (m_precise) precise_imaginary(value, factor);
        } else {
            value = Operand{complex(0, 1), nullptr};
        }
        putback();
    } else {
        if (m_check_digits) {
            const size_t first = m_token.find_first_not_of('0');
            const std::string digits = first == std::string::npos ? std::string() : m_token.substr(first);
            const bool point = digits.find('.') != std::string::npos;
            if ((point && digits.size() > 15) || (!point && digits.size() > 14))
                special_exception("The specified operation on the number ' %s ' can not be performed because this "
                                  "number has more significant digits than the operation can support.",
                                  m_token.c_str());
        }
        long double number = std::strtold(m_token.c_str(), nullptr);
        const std::string digits = m_token;
        long power_of_ten = 0;
        const char next = at(m_input_pos);
        if (next == 'e' || next == 'E') {
            get_token();
            const bool exponent = m_token == "e" || m_token == "E";
            putback();
            if (exponent) power_of_ten = get_scientific_value(number);
        }
        if (number > 1e307L) parser_exception(24);
        if (number > 0 && number < 1e-307L) parser_exception(25);
        get_token();
        const bool imaginary = m_token == "i";
        value = Operand{imaginary ? complex(0, static_cast<double>(number)) : complex(static_cast<double>(number), 0),
                        nullptr};
        if (!imaginary) putback();
        if (m_precise) precise_literal(value, digits, power_of_ten, imaginary);
    }
    record_instruction(LOAD_LITERAL, value.z);
    get_token();
    if (m_token == "(" || m_token_kind == VARIABLE) m_implied_mult = true;
}

long Parser::get_scientific_value(long double& value) {
    ++m_input_pos; // over the e
    get_token();
    if (m_token != "+" && m_token != "-") parser_exception(9);
    const bool negative = m_token == "-";
    get_token();
    if (m_token_kind != NUMBER || m_token == "i") parser_exception(10);
    const long double exponent_value = std::strtold(m_token.c_str(), nullptr);
    if (exponent_value != std::trunc(exponent_value)) parser_exception(8);

    // The mantissa goes through its decimal text, so the result is the value the user wrote,
    // not a product with a binary power of ten.
    std::ostringstream mantissa_stream;
    complex mantissa(static_cast<double>(value), 0);
    stream_variable(mantissa, mantissa_stream, 14);
    std::string mantissa_text = mantissa_stream.str();
    // Far beyond any representable value, so the clamp cannot change an answer.
    long exponent = static_cast<long>(std::fmin(exponent_value, 100000.0L));
    if (negative) exponent = -exponent;
    const size_t e = mantissa_text.find_first_of("eE");
    if (e != std::string::npos) {
        exponent += std::strtol(mantissa_text.c_str() + e + 1, nullptr, 10);
        mantissa_text.resize(e);
    }
    mantissa_text += exponent >= 0 ? "E+" : "E";
    mantissa_text += std::to_string(exponent);
    value = std::strtold(mantissa_text.c_str(), nullptr);
    return negative ? -static_cast<long>(std::fmin(exponent_value, 100000.0L))
                    : static_cast<long>(std::fmin(exponent_value, 100000.0L));
}

} // namespace quorvex::engine
