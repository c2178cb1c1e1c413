#include "root_finder_tool.h"

#include "engine/function.h"
#include "engine/host.h"
#include "engine/parser.h"
#include "engine/root_scan.h"
#include "engine/variable.h"
#include "graph/graph_data.h"
#include "graph/sweep_variable.h"
#include "numerics/polynomial_roots.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace quorvex::desktop {

namespace {

constexpr long k_most_steps = 10'000'000;
constexpr long k_recommended_steps = 101;
constexpr double k_labelled_value = 1e-10; // a root whose value is below this is labelled
constexpr const char* k_unknown_name = "can not be identified as a variable or a constant!";

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string last_error(engine::Parser& parser) {
    const char* why = parser.GetLastError();
    std::string text = why && *why ? why : "The expression can not be computed.";
    parser.ClearLastError();
    return text;
}

// The name inside the engine's "' name ' can not be identified ..." message.
std::string quoted_name(const std::string& message) {
    const size_t open = message.find("' ");
    const size_t close = message.find(" '", open == std::string::npos ? 0 : open + 2);
    if (open == std::string::npos || close == std::string::npos) return {};
    return message.substr(open + 2, close - open - 2);
}

// The engine asks this host whether to stop inside a root search too, and is given its own back.
class ParserHost {
public:
    ParserHost(engine::Parser& parser, engine::Host* host) : m_parser(parser), m_before(parser.host()) {
        if (host) m_parser.set_host(host);
    }
    ~ParserHost() { m_parser.set_host(m_before); }
    ParserHost(const ParserHost&) = delete;
    ParserHost& operator=(const ParserHost&) = delete;

private:
    engine::Parser& m_parser;
    engine::Host* m_before;
};

} // namespace

std::string root_text(const engine::complex& value, int precision) {
    std::ostringstream out;
    engine::Variable::StreamVariable(value, out, precision);
    return out.str();
}

std::optional<RootTable> find_real_roots(engine::Parser& parser, const std::string& expression,
                                         const ToolRange& range, int precision,
                                         const RootFinderQuestions& questions, engine::Host* host,
                                         RootFinderRefusal& refusal) {
    RootTable table;
    table.precision = precision;
    table.expression = runnable_expression(parser, expression);
    table.variable = trimmed(range.variable);
    std::string& error = refusal.message;
    if (table.expression.empty()) {
        error = "You have not yet defined a function or expression.";
        return std::nullopt;
    }
    if (!check_tool_variable(parser, table.expression, table.variable, error)) return std::nullopt;
    std::optional<double> low = tool_limit(parser, range.start, table.variable, "start value", error);
    if (!low) return std::nullopt;
    std::optional<double> high = tool_limit(parser, range.end, table.variable, "end value", error);
    if (!high) return std::nullopt;
    if (*low == *high) {
        error = "The start and end values are equal: give the variable a range to search.";
        return std::nullopt;
    }
    if (*high < *low) std::swap(*low, *high);
    const std::optional<double> steps =
        tool_limit(parser, range.points, table.variable, "number of steps", error);
    if (!steps) return std::nullopt;
    if (std::trunc(*steps) == 0) {
        error = "The number of steps can not be 0.";
        return std::nullopt;
    }
    if (*steps < 0 || *steps > static_cast<double>(k_most_steps)) {
        error = "The number of steps must be a whole number from 1 to " + std::to_string(k_most_steps) + ".";
        return std::nullopt;
    }
    table.points = static_cast<long>(*steps); // truncated, as the variable's point count is
    table.low = *low;
    table.high = *high;
    if (table.points < k_recommended_steps && questions.few_steps &&
        !questions.few_steps(
            "It is recommended that a minimum of 101 steps be used, a smaller number of increments "
            "could result in inaccurate results.  Would you like to continue?")) {
        refusal.declined = true;
        return std::nullopt;
    }

    graph::SweepVariable held(parser, table.variable);
    engine::Variable walk(table.variable, {*low, 0}, {*high, 0}, table.points);
    walk.ResetIncrement();
    held.set(walk.value());
    parser.ClearLastError();
    const int equation = parser.map_expression(table.expression.c_str());
    if (equation == 0) {
        error = last_error(parser);
        if (error.find(k_unknown_name) != std::string::npos &&
            parser.find_function(table.expression.c_str()) < 0)
            refusal.unknown_name = quoted_name(error);
        return std::nullopt;
    }
    table.two_solutions = parser.root_taken();

    const ParserHost run_host(parser, host);
    engine::RootScanCalls calls;
    // The grid is the variable's own walk, in decimal steps that meet the end exactly.
    calls.point = [&walk](long i) {
        if (i == 0)
            walk.ResetIncrement();
        else
            walk.Increment();
        return static_cast<long double>(walk.value().real());
    };
    calls.set_variable = [&held](long double x) { held.set({static_cast<double>(x), 0}); };
    calls.text = [precision](long double x) { return root_text({static_cast<double>(x), 0}, precision); };
    int shown_percent = -1;
    size_t shown_roots = 0;
    const auto tell_progress = [&](int percent, bool always) {
        if (!questions.progress || (!always && percent == shown_percent)) return;
        shown_percent = percent;
        questions.progress("Searching for real root values - " + std::to_string(table.rows.size()) +
                               " real roots found",
                           percent);
    };
    calls.going_on = [&](long i, long intervals, bool negative) {
        // Each pass is half of the work when there are two.
        const long done = negative ? intervals + i : i;
        const long total = table.two_solutions ? 2 * intervals : intervals;
        tell_progress(static_cast<int>(100 * done / std::max(1L, total)), table.rows.size() != shown_roots);
        shown_roots = table.rows.size();
        if (!host) return true;
        host->pump();
        return !host->aborted();
    };
    calls.found = [&](const engine::ScannedRoot& root) {
        table.rows.push_back({{static_cast<double>(root.x), 0}, root.value, false});
    };
    const engine::RootScanResult scan =
        engine::scan_roots(parser, equation, table.variable, table.points, table.two_solutions, calls);
    parser.delete_equation(equation);
    // A stop inside the last interval's search ends the scan as if it had run out.
    table.stopped = scan.end == engine::RootScanEnd::stopped || (host && host->aborted());
    if (scan.end == engine::RootScanEnd::failed)
        table.failure = "An error occured while computing the function at " + table.variable + " = " +
                        root_text({static_cast<double>(scan.failed_at), 0}, precision) + " : " + scan.error;
    return table;
}

std::optional<RootTable> find_complex_roots(engine::Parser& parser, std::span<const std::string> by_power,
                                            const std::string& variable, int precision,
                                            RootFinderRefusal& refusal) {
    RootTable table;
    table.precision = precision;
    table.variable = trimmed(variable).empty() ? std::string("x") : trimmed(variable);
    int degree = -1;
    for (int p = static_cast<int>(by_power.size()) - 1; p >= 0 && degree < 0; --p)
        if (!trimmed(by_power[static_cast<size_t>(p)]).empty()) degree = p;
    if (degree < 0) {
        refusal.message = "You have not yet entered the coefficients of a polynomial.";
        return std::nullopt;
    }
    // From the highest power down.
    std::vector<engine::complex> values;
    for (int p = degree; p >= 0; --p) {
        const std::string text = trimmed(by_power[static_cast<size_t>(p)]);
        engine::complex value;
        if (!text.empty()) {
            parser.ClearLastError();
            parser.eval_exp(text.c_str(), value, true, false, false);
            if (parser.IsAnError()) {
                refusal.message = last_error(parser);
                refusal.caption = "Parser Error";
                refusal.coefficient_power = p;
                return std::nullopt;
            }
        }
        values.push_back(value);
    }
    if (degree == 0) {
        refusal.message = "A constant has no roots: give a coefficient of x or of a higher power.";
        refusal.coefficient_power = 0;
        return std::nullopt;
    }
    if (values.front() == engine::complex()) {
        refusal.message =
            "The coefficient of the highest power, x^" + std::to_string(degree) + ", must not be 0.";
        refusal.coefficient_power = degree;
        return std::nullopt;
    }

    // The polynomial as the column shows it: each term given, as it was typed.
    for (int p = degree; p >= 0; --p) {
        const std::string text = trimmed(by_power[static_cast<size_t>(p)]);
        if (text.empty() || values[static_cast<size_t>(degree - p)] == engine::complex()) continue;
        const auto plain = [](const std::string& part) {
            return part.find_first_of("+-*/^ ,") == std::string::npos;
        };
        const bool negative = text.size() > 1 && text[0] == '-' && plain(text.substr(1));
        const std::string body = negative ? text.substr(1) : text;
        std::string term = p > 0 && body == "1" ? "" : plain(body) ? body : "(" + body + ")";
        if (p > 0)
            term += (term.empty() ? "" : "*") + table.variable + (p > 1 ? "^" + std::to_string(p) : "");
        if (table.expression.empty())
            table.expression = (negative ? "-" : "") + term;
        else
            table.expression += (negative ? " - " : " + ") + term;
    }

    std::vector<numerics::LongComplex> coefficients;
    for (const engine::complex& value : values)
        coefficients.push_back({value.real(), value.imag()});
    const numerics::PolynomialRoots found = numerics::find_polynomial_roots(coefficients);
    table.laguerre = found.laguerre;
    if (found.outcome != numerics::RootsOutcome::all_found)
        table.failure = "Only " + std::to_string(found.roots.size()) + " of the " + std::to_string(degree) +
                        " roots were found.";
    for (const numerics::LongComplex& root : found.roots) {
        RootRow row;
        row.root = {static_cast<double>(root.re), static_cast<double>(root.im)};
        // The value at the root as printed, from the coefficients as printed: what a user who
        // checks the row by hand finds.
        const std::string at = root_text(row.root, precision);
        std::string polynomial;
        for (int p = degree; p >= 0; --p) {
            const engine::complex& c = values[static_cast<size_t>(degree - p)];
            if (c == engine::complex()) continue;
            polynomial += (polynomial.empty() ? "" : "+") +
                          ("(" + root_text(c, precision) + ")*POW(" + at + "," + std::to_string(p) + ")");
        }
        parser.ClearLastError();
        parser.eval_exp(polynomial.c_str(), row.value, true, false, false);
        if (parser.IsAnError()) {
            parser.ClearLastError();
            row.value_failed = true;
        }
        table.rows.push_back(row);
    }
    return table;
}

bool root_plot(engine::Parser& parser, const RootTable& table, engine::Host* host, graph::GraphData& plot,
               std::string& error) {
    if (table.points < 1 || table.expression.empty()) {
        error = "Find the real roots first: the plot shows the function and its roots.";
        return false;
    }
    const std::string title = "Root Plot for: " + table.expression;
    plot.Name = title;
    plot.SetHeader(title.c_str(), true);
    plot.SetFooter(("Roots for: " + table.expression).c_str(), true);
    plot.SetXAxisTitle((" " + table.variable + " ").c_str(), true);
    plot.SetYAxisTitle(table.expression.c_str(), true);
    const engine::complex low{table.low, 0}, high{table.high, 0};
    struct PlotPoint {
        double x;
        std::string x_text, y_text;
        bool labelled;
    };
    std::vector<PlotPoint> curve;
    const int function = parser.find_function(table.expression.c_str());
    if (function >= 0 && parser.function_at(function)->num_variables() == 1) {
        const engine::Function* declared = parser.function_at(function);
        plot.Functions.emplace_back(declared->full_name(), declared->value());
        plot.XAxisVar = graph::VariableCopy(engine::Variable(table.variable, low, high, table.points));
    } else {
        // The values at the grid points, on the branches the scan searched.
        ToolQuestions questions{[&table](const std::string&) { return table.two_solutions; },
                                [](const std::string&) { return true; }};
        std::optional<QuickCalcTable> values = quick_calc(
            parser, table.expression,
            {table.variable, root_text(low, 15), root_text(high, 15), std::to_string(table.points)},
            questions, host, error);
        if (!values) return false;
        if (values->stopped) {
            error = "The plot was stopped.";
            return false;
        }
        for (const QuickCalcRow& row : values->rows)
            curve.push_back({row.x, root_text({row.x, 0}, 15),
                             row.failed ? std::string("1.0E308") : root_text({row.value.real(), 0}, 15),
                             false});
    }
    std::vector<PlotPoint> roots;
    for (const RootRow& row : table.rows) {
        // The point where its label says, so that the label stays on it.
        const std::string x = root_text({row.root.real(), 0}, table.precision);
        roots.push_back({row.root.real(), x, root_text({row.value.real(), 0}, table.precision),
                         std::abs(row.value) < k_labelled_value});
    }
    if (!curve.empty() && !table.two_solutions) {
        // One branch: the roots take their places along the curve, labelled there.
        for (const PlotPoint& root : roots)
            curve.insert(std::upper_bound(curve.begin(), curve.end(), root.x,
                                          [](double x, const PlotPoint& point) { return x < point.x; }),
                         root);
        roots.clear();
    }
    // A function's curve, or the curve on both branches, keeps the roots as a series of their own.
    const auto add_set = [&plot](const std::string& name, const std::vector<PlotPoint>& points) {
        const int series = static_cast<int>(plot.Functions.size() + plot.DataSets.size());
        graph::StrDataPnts set;
        set.SetName(name.c_str());
        for (size_t n = 0; n < points.size(); ++n) {
            const PlotPoint& point = points[n];
            const int index = static_cast<int>(n);
            set.PutXDataPoint(point.x_text.c_str(), index);
            set.PutYDataPoint(point.y_text.c_str(), index);
            if (point.labelled)
                plot.SetNote((" (" + point.x_text + " , " + point.y_text + ") ").c_str(), series, index, -1,
                             false);
        }
        plot.DataSets.push_back(std::move(set));
    };
    if (!curve.empty()) add_set(table.expression, curve);
    if (!roots.empty()) add_set("Roots for: " + table.expression, roots);
    return true;
}

} // namespace quorvex::desktop
