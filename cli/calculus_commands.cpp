// The commands that run a mapped expression: a table of values, an integral, a derivative and
// the scan for real roots.
#include "answer_text.h"
#include "command_support.h"

#include "engine/root_scan.h"

#include <algorithm>
#include <cmath>

namespace quorvex::cli {

namespace {

constexpr long k_most_points = 10'000'000;
constexpr const char* k_default_accuracy = "1e-4";
constexpr const char* k_default_step = "0.1";
constexpr long double k_derivative_tolerance = 1e-4L;
constexpr long k_recommended_steps = 101;
// Integrals and derivatives are found to a tolerance near 1e-4, so their last digits are noise:
// like the integration and differentiation tools, they show 6 digits unless asked for more.
constexpr int k_tool_digits = 6;

void show_tool_digits(CommandContext& context) {
    if (!context.options.precision) context.parser.answer_format().precision = k_tool_digits;
}

// The limits as the arguments at `first` and `first + 1` give them.
struct Limits {
    long double low;
    long double high;
};

Limits read_limits(CommandContext& context, size_t first) {
    const auto& args = context.options.command_args;
    const std::string& variable = args[1];
    refuse_variable_in(context, args[first], "LOW", variable);
    refuse_variable_in(context, args[first + 1], "HIGH", variable);
    return {evaluate_real(context, args[first], "LOW"), evaluate_real(context, args[first + 1], "HIGH")};
}

long double midpoint(long double low, long double high) {
    return EvenPoints(low, high, 3).at(1);
}

} // namespace

int run_map(CommandContext& context) {
    const auto& args = arguments(context, 5, 5);
    refuse_options(context, false, false);
    const Limits limits = read_limits(context, 2);
    const long count = evaluate_count(context, args[4], "POINTS", 1, k_most_points);
    RunVariable variable(context, args[1]);
    EvenPoints points(limits.low, limits.high, count);
    const MappedEquation equation(context, args[0], variable,
                                  {limits.low, midpoint(limits.low, limits.high), limits.high});

    // Each row is written as it is computed, in one write; a number the short path is not
    // certain of takes the answer stream.
    AnswerText answer(context);
    std::string row;
    bool all_ok = true;
    for (long i = 0; i < points.count(); ++i) {
        if (stop_requested(context, std::to_string(i) + " of " + std::to_string(count) + " points"))
            return k_stopped_status;
        show_progress(context, i, count);
        const long double x = points.at(i);
        variable.set(x);
        const engine::complex value = context.parser.solve_equation(equation.number(), false, true);
        row.clear();
        if (!answer.append(row, static_cast<double>(x))) row += format_answer(context, x);
        row += '\t';
        if (context.parser.IsAnError()) {
            row += "error: " + last_error(context.parser) + '\n';
            all_ok = false;
        } else if (answer.append(row, value)) {
            row += '\n';
        } else {
            // An overflowed value fails the command after the point it was found at.
            context.out << row;
            row = format_answer(context, value) + '\n';
        }
        context.out << row;
    }
    return all_ok ? 0 : 1;
}

int run_integrate(CommandContext& context) {
    const auto& args = arguments(context, 4, 4);
    refuse_options(context, true, false);
    const Limits limits = read_limits(context, 2);
    const long double accuracy =
        evaluate_real(context, context.options.accuracy.value_or(k_default_accuracy), "--accuracy");
    // A value below the zero tolerance (1e-12 unless --zero says otherwise) evaluates to 0.
    if (!(accuracy > 0 && accuracy < 1))
        usage_failure("--accuracy must lie between 0 and 1, above the zero tolerance");
    RunVariable variable(context, args[1]);
    const MappedEquation equation(context, args[0], variable,
                                  {limits.low, midpoint(limits.low, limits.high), limits.high});

    const engine::IntegralResult integral =
        context.parser.integrate(equation.number(), variable.name(), limits.low, limits.high, accuracy, true);
    if (stop_requested(context, "a part of the integration")) return k_stopped_status;
    // The method's best estimate, when it could not meet the accuracy, is shown with a warning
    // and a failed status: it is not the answer asked for.
    const char* const not_converged = engine::Parser::integral_not_converged_message();
    if (context.parser.IsAnError() && last_error(context.parser) != not_converged)
        calculation_failure(last_error(context.parser));
    show_tool_digits(context);
    context.out << format_answer(context, integral.value) << '\n';
    if (context.parser.integral_converged()) return 0;
    context.out.flush();
    context.err << "warning: " << not_converged << '\n';
    return 1;
}

int run_derive(CommandContext& context) {
    const auto& args = arguments(context, 3, 3);
    refuse_options(context, false, true);
    refuse_variable_in(context, args[2], "X", args[1]);
    const long double x = evaluate_real(context, args[2], "X");
    // Without --step the step is chosen for the order and the point.
    const bool automatic = !context.options.step.has_value();
    const std::string step_text = context.options.step.value_or(k_default_step);
    const long double step = evaluate_real(context, step_text, "--step");
    if (step == 0) {
        const std::string zeroed = zeroed_by_tolerance(context, step_text);
        if (!zeroed.empty()) usage_failure("--step must not be 0" + zeroed);
    }
    const int order = context.options.order.value_or(1);
    RunVariable variable(context, args[1]);
    const MappedEquation equation(context, args[0], variable, {x, x + step, x - step});

    long double tolerance = k_derivative_tolerance;
    const long double derivative =
        automatic ? context.parser.DerivativeAuto(equation.number(), variable.name(), x, order, tolerance)
                  : context.parser.Derivative(equation.number(), variable.name(), x, step, order, tolerance, true);
    if (stop_requested(context, "a part of the differentiation")) return k_stopped_status;
    if (context.parser.IsAnError()) calculation_failure(last_error(context.parser));
    show_tool_digits(context);
    context.out << format_answer(context, derivative) << '\n';
    return 0;
}

int run_roots(CommandContext& context) {
    const auto& args = arguments(context, 5, 5);
    refuse_options(context, false, false);
    Limits limits = read_limits(context, 2);
    if (limits.low == limits.high) usage_failure("LOW and HIGH must differ");
    if (limits.high < limits.low) std::swap(limits.low, limits.high);
    const long steps = evaluate_count(context, args[4], "STEPS", 2, k_most_points);
    if (steps < k_recommended_steps)
        context.err << "quorvex-cli: roots: It is recommended that a minimum of 101 steps be used, a smaller "
                       "number of increments could result in inaccurate results.\n";
    RunVariable variable(context, args[1]);
    EvenPoints grid(limits.low, limits.high, steps);
    const MappedEquation equation(context, args[0], variable,
                                  {limits.low, midpoint(limits.low, limits.high), limits.high});
    engine::Parser& parser = context.parser;

    // Each root is written as it is found; roots that print alike are one.
    engine::RootScanCalls calls;
    calls.point = [&grid](long i) { return grid.at(i); };
    calls.set_variable = [&variable](long double x) { variable.set(x); };
    calls.text = [&context](long double x) { return format_answer(context, x); };
    calls.going_on = [&context](long i, long intervals, bool negative) {
        if (stop_requested(context, std::to_string(i) + " of " + std::to_string(intervals) + " intervals" +
                                        (negative ? " of the negative branch" : "")))
            return false;
        show_progress(context, i, intervals);
        return true;
    };
    calls.found = [&context](const engine::ScannedRoot& root) {
        context.out << root.text << '\t' << format_answer(context, root.value) << '\n';
        context.out.flush();
    };
    const engine::RootScanResult scan =
        engine::scan_roots(parser, equation.number(), variable.name(), grid.count(), equation.took_even_root(), calls);
    if (scan.end == engine::RootScanEnd::stopped) return k_stopped_status;
    if (scan.end == engine::RootScanEnd::failed) {
        std::string why = scan.error;
        std::replace(why.begin(), why.end(), '\n', ' ');
        std::replace(why.begin(), why.end(), '\r', ' ');
        calculation_failure("An error occured while computing the function at " + std::string(variable.name()) +
                            " = " + format_answer(context, scan.failed_at) + " : " + why);
    }
    if (scan.roots.empty()) context.err << "Solution - 0 roots found\n";
    return 0;
}

} // namespace quorvex::cli
