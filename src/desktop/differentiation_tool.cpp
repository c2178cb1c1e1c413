#include "differentiation_tool.h"

#include "engine/function.h"
#include "engine/host.h"
#include "engine/parser.h"
#include "engine/token_kind.h"
#include "engine/variable.h"
#include "graph/sweep_variable.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <set>

namespace quorvex::desktop {

namespace {

// A function value with a larger imaginary part is complex: the table holds real values only.
constexpr double k_imaginary = 1e-10;
// What the derivatives are asked to reach; the automatic step refines further while it can.
constexpr long double k_derivative_tolerance = 1e-4L;

const char* const k_trigonometric[] = {"SIN", "COS", "TAN", "ASIN", "ACOS", "ATAN", "COT", "CSC", "SEC"};
const char* const k_order_words[] = {"", "first", "second", "third"};
const char* const k_progress[] = {"Computing the function values", "Computing the first derivative values",
                                  "Computing the second derivative values",
                                  "Computing the third derivative values"};

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string upper(std::string text) {
    for (char& c : text)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

// The trigonometric function `text` uses, directly or through the functions it calls; `seen`
// holds the functions already read, so functions that call each other end the search.
std::string trigonometric_in(engine::Parser& parser, const std::string& text, std::set<std::string>& seen) {
    const char* at = text.c_str();
    std::string token;
    char kind = 0;
    for (long behind; *at && (behind = parser.get_token(at, token, kind)) > 0; at += behind) {
        if (kind != engine::VARIABLE) continue;
        const std::string name = upper(token);
        for (const char* trig : k_trigonometric)
            if (name == trig) return token;
        if (!seen.insert(name).second) continue;
        std::string body;
        if (const int index = parser.find_function(token.c_str()); index >= 0)
            body = parser.function_at(index)->value();
        else if (!parser.is_internal_function(token.c_str()) && !parser.is_variable(token.c_str()) &&
                 parser.is_library_function(token.c_str()) && parser.current_library_function())
            body = parser.current_library_function()->value();
        if (body.empty()) continue;
        if (std::string found = trigonometric_in(parser, body, seen); !found.empty()) return found;
    }
    parser.ClearLastError();
    return {};
}

// The variable held for a run: given back as it was (or removed when the run made it) however
// the run ends, and once the expression is mapped locked against other computations (an
// evaluation refuses a locked variable, so the mapping must come first).
class RunVariable {
public:
    RunVariable(engine::Parser& parser, const std::string& name)
        : m_parser(parser), m_name(name), m_held(parser, name) {}
    ~RunVariable() { m_parser.set_var_lock(m_name.c_str(), false); }
    void lock() { m_parser.set_var_lock(m_name.c_str(), true); }
    RunVariable(const RunVariable&) = delete;
    RunVariable& operator=(const RunVariable&) = delete;
    void set(double x) { m_held.set({x, 0}); }

private:
    engine::Parser& m_parser;
    std::string m_name;
    graph::SweepVariable m_held; // made first, so it restores the value after the lock is lifted
};

// The parser's host for the run, and the one it had before afterwards.
class HostForRun {
public:
    HostForRun(engine::Parser& parser, engine::Host* host) : m_parser(parser), m_before(parser.host()) {
        parser.set_host(host);
    }
    ~HostForRun() { m_parser.set_host(m_before); }
    HostForRun(const HostForRun&) = delete;
    HostForRun& operator=(const HostForRun&) = delete;

private:
    engine::Parser& m_parser;
    engine::Host* m_before;
};

bool stopped(engine::Host* host) {
    if (!host) return false;
    host->pump();
    return host->aborted();
}

std::string last_error(engine::Parser& parser) {
    const char* why = parser.GetLastError();
    std::string text = why ? why : "";
    parser.ClearLastError();
    return text;
}

// Lays out the walk of the variable from low to high in decimal steps, as every tool walks it.
std::vector<double> walk_points(const std::string& variable, double low, double high, long count) {
    if (count == 1) return {low};
    std::vector<double> points;
    points.reserve(static_cast<size_t>(count));
    engine::Variable walk(variable, {low, 0}, {high, 0}, count);
    walk.ResetIncrement();
    for (long n = 0; n < count; ++n) {
        points.push_back(walk.value().real());
        if (n + 1 < count && !walk.Increment()) break;
    }
    return points;
}

} // namespace

std::string trigonometric_function_used(engine::Parser& parser, const std::string& expression) {
    std::set<std::string> seen;
    return trigonometric_in(parser, expression, seen);
}

namespace {

bool refused_in_degrees(engine::Parser& parser, const std::string& expression, std::string& error) {
    if (parser.angle_type() != 0) return false;
    const std::string trig = trigonometric_function_used(parser, expression);
    if (trig.empty()) return false;
    error = "You can not differentiate the trigonometric function " + trig +
            " while in degrees mode, you must change to radians to differentiate this function.  Use the "
            "Mathematical Options dialog to change this setting.";
    return true;
}

} // namespace

std::string differentiation_heading(const DifferentiationTable& table, int column) {
    const std::string primes(static_cast<size_t>(std::clamp(column, 0, 3)), '\'');
    return table.name + " " + primes + "(" + table.variable + ")";
}

std::optional<DifferentiationTable> differentiation_table(engine::Parser& parser,
                                                          const std::string& expression,
                                                          const ToolRange& range, std::string& error) {
    DifferentiationTable table;
    table.expression = runnable_expression(parser, expression);
    table.variable = trimmed(range.variable);
    if (table.expression.empty()) {
        error = "You have not yet defined a function or expression.";
        return std::nullopt;
    }
    const int function = parser.find_function(table.expression.c_str());
    table.name = function >= 0 ? parser.get_func_short_name(function) : table.expression;
    if (refused_in_degrees(parser, table.expression, error)) return std::nullopt;
    ToolVariableTexts variable_texts;
    variable_texts.not_a_function_of = "%2 is not a function of %1 and can not be differentiated with respect to it.";
    if (!check_tool_variable(parser, table.expression, table.variable, error, variable_texts)) return std::nullopt;
    const auto limit_texts = [](const char* which) {
        const std::string the = std::string("The ") + which;
        return ToolLimitTexts{"A differentiation limit is missing.", the + " can not be a function of %1.",
                              the + " can not be computed: %2",
                              "The differentiation limits CAN NOT be imaginary numbers, they must be real numbers."};
    };
    const std::optional<double> high = tool_limit(parser, range.end, {table.variable}, limit_texts("end value"), error);
    if (!high) return std::nullopt;
    const std::optional<double> low = tool_limit(parser, range.start, {table.variable}, limit_texts("start value"), error);
    if (!low) return std::nullopt;
    const std::optional<double> steps =
        tool_limit(parser, range.points, table.variable, "number of steps", error);
    if (!steps) return std::nullopt;
    if (*steps < 1 || *steps >= static_cast<double>(k_most_differentiation_points) + 1) {
        error = *steps < 1 ? "The number of steps n can not be 0: the table needs at least one point."
                           : "The number of steps n can not be more than " +
                                 std::to_string(k_most_differentiation_points) + ".";
        return std::nullopt;
    }
    const auto count = static_cast<long>(std::trunc(*steps));
    if (count == 1) {
        table.x = {*low};
        return table;
    }
    if (*low == *high) {
        error =
            "The start and end values are equal: give the variable a range, or one step for a single point.";
        return std::nullopt;
    }
    table.x = walk_points(table.variable, std::min(*low, *high), std::max(*low, *high), count);
    return table;
}

bool fill_differentiation(engine::Parser& parser, DifferentiationTable& table,
                          const DifferentiationColumns& wanted, engine::Host* host,
                          const ToolProgress& progress, std::string& error) {
    table.stopped = false;
    bool missing = false;
    for (int column = 0; column < k_differentiation_columns; ++column)
        missing = missing || (wanted[static_cast<size_t>(column)] && !table.filled(column));
    if (!missing || table.x.empty()) return true;
    // The angle mode may have changed since the table was laid out.
    if (refused_in_degrees(parser, table.expression, error)) return false;
    if (parser.is_variable(table.variable.c_str()) && parser.is_var_locked(table.variable.c_str())) {
        error =
            "The variable ' " + table.variable + " ' is in use by another computation: wait until it ends.";
        return false;
    }

    RunVariable variable(parser, table.variable);
    HostForRun run_host(parser, host);
    variable.set(table.x.front());
    parser.ClearLastError();
    const int equation = parser.map_expression(table.expression.c_str());
    if (equation == 0) {
        error = last_error(parser);
        if (error.empty()) error = "The expression can not be computed.";
        if (error.find("can not be identified as a variable or a constant!") != std::string::npos &&
            parser.find_function(table.expression.c_str()) < 0)
            error += " You may either differentiate with respect to this variable, or you must assign this "
                     "variable a "
                     "value.";
        return false;
    }
    variable.lock();

    const size_t points = table.x.size();
    // One value of a column at point `n`; false with `error` set when the point fails.
    const auto value_at = [&](int column, size_t n, double& value) {
        const double x = table.x[n];
        const std::string where = table.variable + " = " + tool_number_text(x);
        if (column == FunctionColumn) {
            variable.set(x);
            const engine::complex result = parser.solve_equation(equation, false, true);
            if (parser.IsAnError()) {
                error =
                    "An error occured while computing the function at " + where + " : " + last_error(parser);
                return false;
            }
            if (std::abs(result.imag()) > k_imaginary) {
                error = "The function has a complex value at " + where +
                        ": only real functions can be differentiated.";
                return false;
            }
            value = result.real();
            return true;
        }
        long double tolerance = k_derivative_tolerance;
        value = static_cast<double>(
            parser.DerivativeAuto(equation, table.variable.c_str(), x, column, tolerance));
        if (host && host->aborted()) return true; // the caller sees the stop
        if (parser.IsAnError()) {
            error = std::string("An error occured while computing the ") + k_order_words[column] +
                    " differential at " + where + " : " + last_error(parser);
            return false;
        }
        return true;
    };

    bool failed = false;
    for (int column = 0; column < k_differentiation_columns && !failed && !table.stopped; ++column) {
        if (!wanted[static_cast<size_t>(column)] || table.filled(column)) continue;
        std::vector<double> values;
        values.reserve(points);
        if (progress) progress(k_progress[column], 0);
        for (size_t n = 0; n < points; ++n) {
            double value = 0;
            if (!value_at(column, n, value)) {
                failed = true;
                break;
            }
            if (stopped(host)) {
                table.stopped = true;
                break;
            }
            values.push_back(value);
            if (progress) progress(k_progress[column], static_cast<int>((n + 1) * 100 / points));
        }
        if (values.size() == points) table.columns[static_cast<size_t>(column)] = std::move(values);
    }
    parser.delete_equation(equation);
    parser.ClearLastError();
    return !failed;
}

} // namespace quorvex::desktop
