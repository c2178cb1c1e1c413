#include "command_support.h"

#include "command_host.h"

#include "engine/evaluation_aborted.h"
#include "number/fast_decimal.h"
#include "point_reading.h"

#include <cmath>
#include <cstring>
#include <sstream>

namespace quorvex::cli {

namespace {

constexpr double k_imaginary_tolerance = 1e-14;

bool is_blank(const std::string& text) {
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

std::string quoted(std::string_view what, const std::string& text) {
    return std::string(what) + " \"" + text + "\"";
}

} // namespace

void usage_failure(std::string message) {
    throw CommandFailure{2, std::move(message)};
}

void calculation_failure(std::string message) {
    throw CommandFailure{1, std::move(message)};
}

const std::vector<std::string>& arguments(const CommandContext& context, size_t minimum, size_t maximum) {
    const std::vector<std::string>& args = context.options.command_args;
    if (args.size() < minimum || args.size() > maximum) {
        const std::string wanted = minimum == maximum ? std::to_string(minimum)
                                   : maximum == minimum + 1
                                       ? std::to_string(minimum) + " or " + std::to_string(maximum)
                                       : std::to_string(minimum) + " to " + std::to_string(maximum);
        usage_failure("takes " + wanted + " arguments, not " + std::to_string(args.size()));
    }
    return args;
}

void refuse_options(const CommandContext& context, bool accuracy, bool order_or_step) {
    if (!accuracy && context.options.accuracy) usage_failure("--accuracy is no option of this command");
    if (!order_or_step && (context.options.order || context.options.step))
        usage_failure("--order and --step are no options of this command");
}

engine::complex evaluate(CommandContext& context, const std::string& text, std::string_view what) {
    if (is_blank(text)) usage_failure(std::string(what) + " is empty");
    engine::complex value;
    context.parser.eval_exp(text, value, true, false, false);
    if (context.parser.IsAnError()) usage_failure(quoted(what, text) + ": " + last_error(context.parser));
    if (context.parser.func_declared())
        usage_failure(quoted(what, text) + " declares a function, it has no value");
    return value;
}

std::string zeroed_by_tolerance(CommandContext& context, const std::string& text) {
    engine::PrecformType& format = context.parser.answer_format();
    const float tolerance = format.zero_precision;
    format.zero_precision = 0;
    engine::complex value;
    context.parser.eval_exp(text, value, true, false, false);
    const bool failed = context.parser.IsAnError();
    context.parser.ClearLastError();
    format.zero_precision = tolerance;
    if (failed || value == engine::complex(0, 0)) return {};
    std::ostringstream words;
    words << " (" << text << " lies below the zero tolerance, " << tolerance
          << ", and counts as 0; --zero sets a smaller one)";
    return words.str();
}

long double evaluate_real(CommandContext& context, const std::string& text, std::string_view what) {
    const engine::complex value = evaluate(context, text, what);
    if (std::fabs(value.imag()) > k_imaginary_tolerance)
        usage_failure(quoted(what, text) + " must be a real number");
    return value.real();
}

long evaluate_count(CommandContext& context, const std::string& text, std::string_view what, long minimum,
                    long maximum) {
    const long double value = evaluate_real(context, text, what);
    if (!engine::Mathematics::is_integer(value) || value < minimum || value > maximum)
        usage_failure(quoted(what, text) + " must be a whole number from " + std::to_string(minimum) +
                      " to " + std::to_string(maximum));
    return static_cast<long>(value);
}

void refuse_variable_in(CommandContext& context, const std::string& text, std::string_view what,
                        const std::string& variable) {
    if (context.parser.find_token(text.c_str(), variable.c_str()))
        usage_failure(quoted(what, text) + " can not be a function of " + variable);
}

std::string format_answer(CommandContext& context, engine::complex value) {
    // A result beyond the range of a double overflowed on its way; it is never shown as a number.
    if (!std::isfinite(value.real()) || !std::isfinite(value.imag()))
        calculation_failure("A Floating Point Overflow Has Occured!");
    engine::Parser& parser = context.parser;
    // The stream settings the Parser gives the text of an answer.
    const engine::PrecformType& format = parser.answer_format();
    std::ostringstream out;
    out.flags(std::ios::dec | std::ios::internal);
    if (format.format == 1) out.setf(std::ios::scientific | std::ios::showbase);
    if (format.dec_point) out.setf(std::ios::showpoint);
    if (format.lead_sign) out.setf(std::ios::showpos);
    out.precision(format.precision);
    if (context.options.fraction) {
        // A number without a near fraction is written in decimals, not refused.
        parser.SetSilentMode(true);
        try {
            engine::complex copy = value;
            parser.stream_answer(copy, out, -1, true);
            return out.str();
        } catch (const engine::EvaluationAborted&) {
            parser.ClearLastError();
            out.str("");
        }
    }
    parser.stream_answer(value, out, -1, false);
    return out.str();
}

std::string format_answer(CommandContext& context, long double value) {
    return format_answer(context, engine::complex(static_cast<double>(value), 0));
}

std::string last_error(engine::Parser& parser) {
    const char* message = parser.GetLastError();
    std::string text = message && *message ? message : "evaluation failed";
    for (char& c : text)
        if (c == '\n' || c == '\r') c = ' ';
    return text;
}

EvenPoints::EvenPoints(long double low, long double high, long count)
    : m_low(low), m_high(high), m_count(count < 1 ? 1 : count) {
    m_math.set_silent(true);
    m_math.set_solving_map(true);
    if (m_count > 1) m_width = m_math.real_div(m_math.real_sub(high, low), static_cast<long double>(m_count - 1));
    // The integer path gives the same 15-digit results as the decimal type: a 15-digit result
    // read back as the nearest double has that text as its shortest, so it enters the next
    // operation with the same digits whether it is held as that double or as the long double
    // the decimal path reads. Limits beyond a double's range keep the decimal path.
    m_fast = static_cast<long double>(static_cast<double>(low)) == low &&
             static_cast<long double>(static_cast<double>(high)) == high && std::isfinite(static_cast<double>(low)) &&
             std::isfinite(static_cast<double>(high));
    if (m_fast && m_count > 1)
        m_fast_width = number::decimal_div(number::decimal_sub(static_cast<double>(high), static_cast<double>(low)),
                                           static_cast<double>(m_count - 1));
    // A subnormal width would not keep its digits as a double.
    m_fast = m_fast && (m_fast_width == 0 || std::isnormal(m_fast_width)) &&
             std::isfinite(static_cast<double>(m_width));
}

long double EvenPoints::at(long i) {
    if (i <= 0) return m_low;
    if (i + 1 >= m_count) return m_high;
    if (m_fast) {
        const double nearest = number::decimal_add(static_cast<double>(m_low),
                                                   number::decimal_mul(static_cast<double>(i), m_fast_width));
        if (const auto point = read_as_engine(nearest)) return *point;
    }
    return decimal_at(i);
}

long double EvenPoints::decimal_at(long i) {
    if (i <= 0) return m_low;
    if (i + 1 >= m_count) return m_high;
    return m_math.real_add(m_low, m_math.real_mult(static_cast<long double>(i), m_width));
}

bool stop_requested(CommandContext& context, const std::string& what) {
    if (!context.host || !context.host->aborted()) return false;
    context.host->finish();
    context.out.flush();
    context.err << "quorvex-cli: stopped (Ctrl+C) after " << what << '\n';
    return true;
}

void show_progress(CommandContext& context, long done, long total) {
    if (context.host) context.host->progress(done, total);
}

RunVariable::RunVariable(CommandContext& context, const std::string& name)
    : m_parser(context.parser), m_name(name) {
    std::string token;
    char kind = 0;
    const long behind = m_parser.get_token(name.c_str(), token, kind);
    const bool one_name =
        behind == static_cast<long>(name.size()) && kind == engine::VARIABLE && token == name;
    if (!one_name || m_parser.is_constant(name.c_str()) || m_parser.is_internal_function(name.c_str()) ||
        m_parser.is_function(name.c_str()))
        usage_failure(quoted("VAR", name) + " is not a variable name");
    if (m_parser.is_variable(name.c_str())) {
        m_saved = m_parser.get_var_value(name.c_str());
        return;
    }
    m_parser.eval_exp((name + " = 0").c_str(), true, false, false);
    if (m_parser.IsAnError() || !m_parser.is_variable(name.c_str()))
        usage_failure(quoted("VAR", name) + " is not a variable name: " + last_error(m_parser));
    m_made = true;
}

RunVariable::~RunVariable() {
    if (m_made) {
        // Index -1 would mean the variable found last, whatever it is.
        if (const int index = m_parser.find_variable(m_name.c_str()); index >= 0)
            m_parser.delete_variable(index);
    } else {
        m_parser.set_var_value(m_saved, m_name.c_str());
    }
}

void RunVariable::set(long double value) {
    m_parser.set_var_value(engine::complex(static_cast<double>(value), 0), m_name.c_str());
}

MappedEquation::MappedEquation(CommandContext& context, const std::string& expression, RunVariable& variable,
                               std::initializer_list<long double> at)
    : m_parser(context.parser) {
    if (is_blank(expression)) usage_failure("EXPR is empty");
    std::string first_error;
    for (const long double x : at) {
        variable.set(x);
        m_number = m_parser.map_expression(expression.c_str());
        if (m_number != 0) {
            m_even_root = m_parser.root_taken();
            if (!m_parser.func_declared()) return;
            m_parser.delete_equation(m_number);
            m_number = 0;
            usage_failure(quoted("EXPR", expression) + " declares a function; give the expression to run");
        }
        if (first_error.empty()) first_error = last_error(m_parser);
    }
    usage_failure(quoted("EXPR", expression) + " can not be mapped: " + first_error);
}

MappedEquation::~MappedEquation() {
    if (m_number != 0) m_parser.delete_equation(m_number);
}

} // namespace quorvex::cli
