#include "quick_calc.h"

#include "engine/function.h"
#include "engine/host.h"
#include "engine/parser.h"
#include "engine/token_kind.h"
#include "engine/variable.h"
#include "graph/sweep_variable.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace quorvex::desktop {

namespace {

constexpr long k_most_rows = 1'000'000;
constexpr double k_imaginary = 1e-14;

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}


bool stopped(engine::Host* host) {
    if (!host) return false;
    host->pump();
    return host->aborted();
}

} // namespace

std::string runnable_expression(engine::Parser& parser, const std::string& typed) {
    const std::string text = trimmed(typed);
    // A function as the list shows it ("f[x] = x^2" or just "f[x]") runs by its call.
    const std::string call = text.substr(0, text.find(' '));
    if (call.find('[') != std::string::npos && parser.find_function(call.c_str()) >= 0) return call;
    const size_t last = text.rfind('=');
    if (last == std::string::npos) return text;
    std::string rest = text.substr(last + 1);
    rest.erase(std::remove(rest.begin(), rest.end(), ' '), rest.end());
    return rest;
}

std::string tool_number_text(double value) {
    std::ostringstream out;
    engine::Variable::StreamVariable({value, 0}, out, 14);
    return out.str();
}

std::string fill_text(std::string text, const std::string& first, const std::string& second) {
    for (const auto& [mark, with] : {std::pair{std::string("%1"), &first}, std::pair{std::string("%2"), &second}})
        for (size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + with->size()))
            text.replace(at, mark.size(), *with);
    return text;
}

bool check_tool_variable(engine::Parser& parser, const std::string& expression, const std::string& name,
                         std::string& error, const ToolVariableTexts& texts) {
    if (name.empty()) {
        error = texts.missing;
        return false;
    }
    std::string token;
    char kind = 0;
    const long behind = parser.get_token(name.c_str(), token, kind);
    if (behind != static_cast<long>(name.size()) || kind != engine::VARIABLE || token != name ||
        parser.is_constant(name.c_str()) || parser.is_internal_function(name.c_str()) || parser.is_function(name.c_str())) {
        error = fill_text(texts.not_a_name, name);
        return false;
    }
    if (parser.is_variable(name.c_str()) && parser.is_var_locked(name.c_str())) {
        error = fill_text(texts.locked, name);
        return false;
    }
    if (texts.xyz_always && name.size() == 1 && std::string("xyzXYZ").find(name[0]) != std::string::npos) return true;
    // The expression must depend on the variable: a function by its parameters, else by its text.
    if (const int index = parser.find_function(expression.c_str()); index >= 0) {
        const engine::Function* function = parser.function_at(index);
        for (int n = 1; n <= function->num_variables(); ++n)
            if (function->GetFuncVariable(n) == name) return true;
        error = fill_text(texts.not_a_function_of, name, expression);
        return false;
    }
    if (!parser.find_token(expression.c_str(), name.c_str())) {
        parser.ClearLastError();
        error = fill_text(texts.not_a_function_of, name, expression);
        return false;
    }
    return true;
}

std::optional<double> tool_limit(engine::Parser& parser, const std::string& text,
                                 const std::vector<std::string>& variables, const ToolLimitTexts& texts,
                                 std::string& error) {
    const std::string limit = trimmed(text);
    if (limit.empty()) {
        error = texts.missing;
        return std::nullopt;
    }
    for (const std::string& variable : variables) {
        if (parser.find_token(limit.c_str(), variable.c_str())) {
            parser.ClearLastError();
            error = fill_text(texts.uses_variable, variable);
            return std::nullopt;
        }
    }
    parser.ClearLastError();
    engine::complex value;
    parser.eval_exp(limit.c_str(), value, true, false, false);
    if (parser.IsAnError()) {
        const char* why = parser.GetLastError();
        error = fill_text(texts.failed, {}, why ? why : "");
        parser.ClearLastError();
        return std::nullopt;
    }
    if (std::abs(value.imag()) > k_imaginary || !std::isfinite(value.real())) {
        error = texts.not_real;
        return std::nullopt;
    }
    return value.real();
}

std::optional<double> tool_limit(engine::Parser& parser, const std::string& text, const std::string& variable,
                                 const char* which, std::string& error) {
    const std::string the = std::string("The ") + which;
    return tool_limit(parser, text, {variable},
                      {the + " is missing.", the + " can not be a function of %1.", the + " can not be computed: %2",
                       the + " must be a real number."},
                      error);
}

std::optional<QuickCalcTable> quick_calc(engine::Parser& parser, const std::string& expression, const ToolRange& range,
                                         const ToolQuestions& questions, engine::Host* host, std::string& error) {
    QuickCalcTable table;
    table.expression = runnable_expression(parser, expression);
    table.variable = trimmed(range.variable);
    if (table.expression.empty()) {
        error = "You have not yet defined a function or expression.";
        return std::nullopt;
    }
    if (!check_tool_variable(parser, table.expression, table.variable, error)) return std::nullopt;
    std::optional<double> low = tool_limit(parser, range.start, table.variable, "start value", error);
    if (!low) return std::nullopt;
    std::optional<double> high = tool_limit(parser, range.end, table.variable, "end value", error);
    if (!high) return std::nullopt;
    const std::optional<double> points = tool_limit(parser, range.points, table.variable, "number of points", error);
    if (!points) return std::nullopt;
    if (*points < 1 || *points > static_cast<double>(k_most_rows) || *points != std::floor(*points)) {
        error = "The number of points must be a whole number from 1 to " + std::to_string(k_most_rows) + ".";
        return std::nullopt;
    }
    const auto count = static_cast<long>(*points);
    if (count > 1 && *low == *high) {
        error = "The start and end values are equal: give the variable a range.";
        return std::nullopt;
    }
    if (*high < *low) std::swap(*low, *high);

    graph::SweepVariable held(parser, table.variable);
    engine::Variable walk(table.variable, {*low, 0}, {*high, 0}, count);
    walk.ResetIncrement();
    held.set(walk.value());
    parser.ClearLastError();
    const int equation = parser.map_expression(table.expression.c_str());
    if (equation == 0) {
        const char* why = parser.GetLastError();
        error = why ? why : "The expression can not be computed.";
        parser.ClearLastError();
        return std::nullopt;
    }
    table.two_solutions = parser.root_taken() && questions.both_solutions &&
                          questions.both_solutions("Two solutions to this expression exist, would you like to compute "
                                                   "both solutions?");
    const double zero = std::max(k_imaginary, static_cast<double>(parser.answer_format().zero_precision));
    // One point: false ends the run.
    const auto run_point = [&] {
        const double x = walk.value().real();
        held.set({x, 0});
        const engine::complex value = parser.solve_equation(equation, false, true);
        if (parser.IsAnError()) {
            const char* why = parser.GetLastError();
            const std::string text = "An error occured while computing the function at " + table.variable + " = " +
                                     tool_number_text(x) + " : " + (why ? why : "");
            parser.ClearLastError();
            if (questions.go_on_after_error && !questions.go_on_after_error(text)) return false;
            table.rows.push_back({x, {}, true});
            return true;
        }
        const double imaginary = std::abs(value.imag());
        if (imaginary > k_imaginary) table.imaginary_found = true;
        if (imaginary > zero) table.large_imaginary_found = true;
        table.rows.push_back({x, value, false});
        return true;
    };
    bool going = true;
    for (long n = 0; n < count && going; ++n) {
        going = run_point();
        if (stopped(host)) table.stopped = true, going = false;
        if (going && n + 1 < count && !walk.Increment()) break;
    }
    if (going && table.two_solutions) {
        // Back from the end along the negative branch.
        parser.set_neg_sqrt(true);
        while (going && walk.Decrement()) {
            going = run_point();
            if (stopped(host)) table.stopped = true, going = false;
        }
        parser.set_neg_sqrt(false);
    }
    parser.delete_equation(equation);
    return table;
}

} // namespace quorvex::desktop
