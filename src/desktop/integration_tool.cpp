#include "integration_tool.h"

#include "quick_calc.h"

#include "engine/host.h"
#include "engine/integral_result.h"
#include "engine/parser.h"
#include "graph/sweep_variable.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace quorvex::desktop {

namespace {

const char* const k_missing_parameter = "You are missing or have not selected an integration parameter.";
const char* const k_bad_parameter =
    "' %1 ' can not be an integration parameter: it must be the name of a variable.";
const char* const k_locked_parameter =
    "The variable ' %1 ' is locked by another process that is running: wait until it ends.";
const char* const k_not_a_function_of =
    "%2 is not a function of %1 and can not be integrated with respect to it.";
const char* const k_same_parameter = "Each integral needs a parameter of its own: ' %1 ' is used twice.";
const char* const k_missing_limit = "An Integration limit is missing.";
const char* const k_limit_uses_variable = "The integration limit can not be a function of %1.";
const char* const k_imaginary_limit =
    "The integration limits CAN NOT be imaginary number, they must be real numbers.";
const char* const k_equal_limits =
    "The lower and upper integration limits are equal: the integral has no range.";
// The engine's words for a name it does not know, in each of their forms.
const char* const k_unknown_name = "be identified as a variable or";
const char* const k_assign_or_integrate =
    " You may either integrate with repsect to this variable, or you must assign this variable a value.";

// The first rule samples the outer integral at 2^11 + 1 points at most.
constexpr double k_first_rule_points = 2049;

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

ToolLimitTexts limit_texts() {
    return {k_missing_limit, k_limit_uses_variable, "%2", k_imaginary_limit};
}

// The run's equations, deleted however the run ends.
class Equations {
public:
    explicit Equations(engine::Parser& parser) : m_parser(parser) {}
    ~Equations() {
        // Deleting renumbers the later ones: the last first.
        for (auto n = m_numbers.rbegin(); n != m_numbers.rend(); ++n)
            m_parser.delete_equation(*n);
    }
    Equations(const Equations&) = delete;
    Equations& operator=(const Equations&) = delete;
    int add(const std::string& text) {
        const int number = m_parser.map_expression(text.c_str());
        if (number != 0) m_numbers.push_back(number);
        return number;
    }

private:
    engine::Parser& m_parser;
    std::vector<int> m_numbers;
};

// The run's variables locked against the editor and the other tools while it runs: a line that
// reads or sets one is refused with the engine's message instead of seeing a value of the run.
class Locks {
public:
    Locks(engine::Parser& parser, std::vector<std::string> names)
        : m_parser(parser), m_names(std::move(names)) {
        for (const std::string& name : m_names)
            m_parser.set_var_lock(name.c_str(), true);
    }
    ~Locks() {
        for (const std::string& name : m_names)
            m_parser.set_var_lock(name.c_str(), false);
    }
    Locks(const Locks&) = delete;
    Locks& operator=(const Locks&) = delete;

private:
    engine::Parser& m_parser;
    std::vector<std::string> m_names;
};

// The host the engine asks while the run goes, given back afterwards.
class HostFor {
public:
    HostFor(engine::Parser& parser, engine::Host* host) : m_parser(parser), m_previous(parser.host()) {
        parser.set_host(host);
    }
    ~HostFor() { m_parser.set_host(m_previous); }
    HostFor(const HostFor&) = delete;
    HostFor& operator=(const HostFor&) = delete;

private:
    engine::Parser& m_parser;
    engine::Host* m_previous;
};

// The smaller and the larger of two limit texts, so that an inner range given upside down at
// some outer point is turned round there as well, never negated.
std::string lower_of(const std::string& a, const std::string& b) {
    return "((" + a + ")+(" + b + ")-ABS((" + a + ")-(" + b + ")))/2";
}
std::string upper_of(const std::string& a, const std::string& b) {
    return "((" + a + ")+(" + b + ")+ABS((" + a + ")-(" + b + ")))/2";
}

std::nullopt_t fail(IntegrationFailure& failure, std::string message, IntegrationField field, int axis) {
    failure = {std::move(message), field, axis};
    return std::nullopt;
}

} // namespace

long double integration_tolerance(int position) {
    long double tolerance = 0.01L;
    for (int n = 0; n < std::clamp(position, 0, 100) / 10; ++n)
        tolerance /= 10;
    return tolerance;
}

int integration_percent(long points) {
    if (points <= 1) return 0;
    const double share = std::log2(static_cast<double>(points)) / std::log2(k_first_rule_points);
    return std::clamp(static_cast<int>(100 * share), 0, 99);
}

std::string integration_not_converged_text() {
    return engine::Parser::integral_not_converged_message();
}

std::optional<IntegrationAnswer> integrate_expression(engine::Parser& parser, const IntegrationInput& input,
                                                      engine::Host* host, IntegrationFailure& failure) {
    const int order = std::clamp(input.order, 1, 3);
    const std::string typed = trimmed(input.expression);
    const std::string expression = runnable_expression(parser, typed.empty() ? "1" : typed);

    // The parameters, X first.
    ToolVariableTexts parameter_texts{k_missing_parameter, k_bad_parameter, k_locked_parameter,
                                      k_not_a_function_of, true};
    std::vector<std::string> names;
    for (int k = 0; k < order; ++k) {
        const std::string name = trimmed(input.axes[static_cast<size_t>(k)].parameter);
        std::string error;
        if (!check_tool_variable(parser, expression, name, error, parameter_texts))
            return fail(failure, error, IntegrationField::parameter, k);
        if (std::find(names.begin(), names.end(), name) != names.end())
            return fail(failure, fill_text(k_same_parameter, name), IntegrationField::parameter, k);
        names.push_back(name);
    }

    // A limit may use the variables of the integrals outside its own, never its own or an inner one.
    const auto uses_inner = [&](int axis) {
        return std::vector<std::string>(names.begin(), names.begin() + axis + 1);
    };
    const int outermost = order - 1;
    const IntegrationAxis& outer = input.axes[static_cast<size_t>(outermost)];
    std::string error;
    std::optional<double> low = tool_limit(parser, outer.lower, uses_inner(outermost), limit_texts(), error);
    if (!low) return fail(failure, error, IntegrationField::lower, outermost);
    std::optional<double> high = tool_limit(parser, outer.upper, uses_inner(outermost), limit_texts(), error);
    if (!high) return fail(failure, error, IntegrationField::upper, outermost);
    if (*low == *high) return fail(failure, k_equal_limits, IntegrationField::lower, outermost);
    const bool upside_down = *high < *low;
    if (upside_down) std::swap(*low, *high);
    for (int k = outermost - 1; k >= 0; --k) {
        const IntegrationAxis& axis = input.axes[static_cast<size_t>(k)];
        for (const auto& [text, field] : {std::pair{&axis.lower, IntegrationField::lower},
                                          std::pair{&axis.upper, IntegrationField::upper}}) {
            if (trimmed(*text).empty()) return fail(failure, k_missing_limit, field, k);
            for (const std::string& name : uses_inner(k))
                if (parser.find_token(text->c_str(), name.c_str())) {
                    parser.ClearLastError();
                    return fail(failure, fill_text(k_limit_uses_variable, name), field, k);
                }
            parser.ClearLastError();
        }
    }

    // From here the variables are the run's, and as they were again when it ends.
    std::vector<std::unique_ptr<graph::SweepVariable>> held;
    for (int k = outermost; k >= 0; --k)
        held.push_back(std::make_unique<graph::SweepVariable>(parser, names[static_cast<size_t>(k)]));
    // Places every variable at the share `t` of its range, outside in, an inner range read where
    // the outer variables now are. False (with `failure` set) when an inner limit fails there.
    const auto place = [&](double t) {
        double from = *low, to = *high;
        for (int k = outermost; k >= 0; --k) {
            parser.set_var_value({from + t * (to - from), 0}, names[static_cast<size_t>(k)].c_str());
            if (k == 0) break;
            const IntegrationAxis& inner = input.axes[static_cast<size_t>(k - 1)];
            const std::optional<double> a = tool_limit(parser, inner.lower, {}, limit_texts(), error);
            if (!a) {
                fail(failure, error, IntegrationField::lower, k - 1);
                return false;
            }
            const std::optional<double> b = tool_limit(parser, inner.upper, {}, limit_texts(), error);
            if (!b) {
                fail(failure, error, IntegrationField::upper, k - 1);
                return false;
            }
            from = std::min(*a, *b);
            to = std::max(*a, *b);
        }
        return true;
    };
    if (!place(0.5)) return std::nullopt;

    // The expression is mapped where it can be computed: inside the ranges first, then at an end
    // (an integrand may fail at a point, such as 1/x at 0, and still have an integral).
    Equations equations(parser);
    const int function = parser.find_function(expression.c_str());
    if (function >= 0) parser.reset_func_modvalue(function);
    int equation = 0;
    std::string map_error;
    for (const double t : {0.5, 0.0, 1.0}) {
        if (t != 0.5 && !place(t)) continue;
        parser.ClearLastError();
        equation = equations.add(expression);
        if (equation != 0) break;
        if (map_error.empty()) {
            const char* why = parser.GetLastError();
            map_error = why ? why : "";
        }
    }
    parser.ClearLastError();
    if (equation == 0) {
        if (function < 0 && map_error.find(k_unknown_name) != std::string::npos)
            map_error += k_assign_or_integrate;
        return fail(failure, map_error, IntegrationField::expression, 0);
    }
    if (!place(0.5)) return std::nullopt;
    std::vector<engine::IntegralLevel> levels;
    for (int k = 0; k < outermost; ++k) {
        const IntegrationAxis& axis = input.axes[static_cast<size_t>(k)];
        const std::string a = trimmed(axis.lower), b = trimmed(axis.upper);
        const int lower = equations.add(lower_of(a, b));
        const int upper = lower ? equations.add(upper_of(a, b)) : 0;
        if (upper == 0) {
            const char* why = parser.GetLastError();
            const std::string message = why ? why : "";
            parser.ClearLastError();
            return fail(failure, message, IntegrationField::lower, k);
        }
        levels.push_back({names[static_cast<size_t>(k)].c_str(), lower, upper});
    }
    if (order > 1) {
        // The outermost limits, already computed once, in their order.
        std::string a = trimmed(outer.lower), b = trimmed(outer.upper);
        if (upside_down) std::swap(a, b);
        const int lower = equations.add(a);
        const int upper = lower ? equations.add(b) : 0;
        if (upper == 0) return fail(failure, k_missing_limit, IntegrationField::lower, outermost);
        levels.push_back({names.back().c_str(), lower, upper});
    }

    const long double tolerance = integration_tolerance(input.accuracy_position);
    engine::IntegralResult result;
    {
        const Locks locks(parser, names);
        const HostFor hosted(parser, host);
        parser.ClearLastError();
        result = order == 1 ? parser.integrate(equation, names[0].c_str(), *low, *high, tolerance, true)
                            : parser.integrate_nested(equation, levels, tolerance, true);
    }
    IntegrationAnswer answer;
    if (host && host->aborted()) {
        parser.ClearLastError();
        answer.stopped = true;
        return answer;
    }
    if (parser.IsAnError()) {
        const char* why = parser.GetLastError();
        const std::string message = why ? why : "";
        parser.ClearLastError();
        if (message != integration_not_converged_text())
            return fail(failure, message, IntegrationField::expression, 0);
    }
    answer.value = static_cast<double>(result.value);
    answer.error = static_cast<double>(result.error);
    answer.converged = result.converged;
    return answer;
}

} // namespace quorvex::desktop
