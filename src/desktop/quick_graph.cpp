#include "quick_graph.h"

#include "engine/host.h"
#include "engine/parser.h"
#include "engine/variable.h"
#include "graph/graph_data.h"
#include "graph/sweep_variable.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace quorvex::desktop {

namespace {

constexpr double k_imaginary = 1e-10;
constexpr double k_tiny_imaginary = 1e-14;
constexpr const char* k_hole_text = "1.0E308";
constexpr double k_hole = 1e308;

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string number_text(double value, int digits = 14) {
    std::ostringstream out;
    engine::Variable::StreamVariable({value, 0}, out, digits);
    return out.str();
}

// A variable's range as numbers: its low and high ends (swapped when reversed) and a whole
// number of points from `fewest` up.
struct Range {
    double low = 0, high = 0;
    long points = 0;
};

std::optional<Range> read_range(engine::Parser& parser, const std::string& expression, const ToolRange& range,
                                const std::string& variable, long fewest, long most, std::string& error) {
    if (!check_tool_variable(parser, expression, variable, error)) return std::nullopt;
    const std::optional<double> low = tool_limit(parser, range.start, variable, "start value", error);
    if (!low) return std::nullopt;
    const std::optional<double> high = tool_limit(parser, range.end, variable, "end value", error);
    if (!high) return std::nullopt;
    const std::optional<double> points = tool_limit(parser, range.points, variable, "number of points", error);
    if (!points) return std::nullopt;
    if (*points < static_cast<double>(fewest) || *points > static_cast<double>(most) || *points != std::floor(*points)) {
        error = "The number of points of " + variable + " must be a whole number from " + std::to_string(fewest) +
                " to " + std::to_string(most) + ".";
        return std::nullopt;
    }
    if (*points > 1 && *low == *high) {
        error = "The start and end values of " + variable + " are equal: give the variable a range.";
        return std::nullopt;
    }
    return Range{std::min(*low, *high), std::max(*low, *high), static_cast<long>(*points)};
}

// The values a variable walks through, in decimal steps as the engine takes them.
std::vector<double> walk_values(const std::string& name, const Range& range) {
    engine::Variable walk(name, {range.low, 0}, {range.high, 0}, range.points);
    walk.ResetIncrement();
    std::vector<double> values{walk.value().real()};
    while (static_cast<long>(values.size()) < range.points && walk.Increment()) values.push_back(walk.value().real());
    return values;
}

bool stopped(engine::Host* host) {
    if (!host) return false;
    host->pump();
    return host->aborted();
}

} // namespace

std::optional<QuickGraphFamily> quick_graph_values(engine::Parser& parser, const std::string& expression,
                                                   const ToolRange& primary, const ToolRange& secondary,
                                                   const ToolQuestions& questions, engine::Host* host,
                                                   std::string& error) {
    QuickGraphFamily family;
    family.expression = runnable_expression(parser, expression);
    family.variable = trimmed(primary.variable);
    family.parameter = trimmed(secondary.variable);
    if (family.expression.empty()) {
        error = "You have not yet defined a function or expression.";
        return std::nullopt;
    }
    const std::optional<Range> along =
        read_range(parser, family.expression, primary, family.variable, 2, k_most_quick_graph_values, error);
    if (!along) return std::nullopt;
    Range over{0, 0, 1};
    if (!family.parameter.empty()) {
        if (family.parameter == family.variable) {
            error = "The two variables of a quick graph must differ: " + family.variable + " is given twice.";
            return std::nullopt;
        }
        const std::optional<Range> second = read_range(parser, family.expression, secondary, family.parameter, 1,
                                                       k_most_quick_graph_curves, error);
        if (!second) return std::nullopt;
        over = *second;
        if (along->points * over.points > k_most_quick_graph_values) {
            error = "A family of " + std::to_string(over.points) + " curves of " + std::to_string(along->points) +
                    " points is more than a graph can hold (" + std::to_string(k_most_quick_graph_values) +
                    " values): take fewer points or curves.";
            return std::nullopt;
        }
    }

    family.x = walk_values(family.variable, *along);
    const std::vector<double> parameters =
        family.parameter.empty() ? std::vector<double>{0} : walk_values(family.parameter, over);
    graph::SweepVariable x_held(parser, family.variable);
    std::optional<graph::SweepVariable> parameter_held;
    if (!family.parameter.empty()) {
        parameter_held.emplace(parser, family.parameter);
        parameter_held->set({parameters.front(), 0});
    }

    // Mapped at the first point, or at the second when the first fails (1/x from 0).
    parser.ClearLastError();
    x_held.set({family.x.front(), 0});
    int equation = parser.map_expression(family.expression.c_str());
    if (equation == 0 && family.x.size() > 1) {
        parser.ClearLastError();
        x_held.set({family.x[1], 0});
        equation = parser.map_expression(family.expression.c_str());
    }
    if (equation == 0) {
        const char* why = parser.GetLastError();
        error = why ? why : "The expression can not be computed.";
        if (error.find("can not be identified as a variable or a constant!") != std::string::npos)
            error += " You may either graph with respect to this variable, or you must assign this variable a value.";
        parser.ClearLastError();
        return std::nullopt;
    }
    family.two_solutions = parser.root_taken() && questions.both_solutions &&
                           questions.both_solutions("Two solutions to this expression exist, would you like to "
                                                    "compute both solutions?");
    if (family.two_solutions)
        for (size_t i = family.x.size() - 1; i-- > 0;) family.x.push_back(family.x[i]);
    const size_t forward = (family.x.size() + (family.two_solutions ? 1 : 0)) / (family.two_solutions ? 2 : 1);
    const double zero = std::max(k_tiny_imaginary, static_cast<double>(parser.answer_format().zero_precision));

    const long total = static_cast<long>(parameters.size() * family.x.size());
    long done = 0;
    for (const double parameter : parameters) {
        if (parameter_held) parameter_held->set({parameter, 0});
        QuickGraphCurve curve{parameter, {}};
        curve.y.reserve(family.x.size());
        for (size_t i = 0; i < family.x.size(); ++i) {
            const bool negative_branch = i >= forward;
            if (negative_branch) parser.set_neg_sqrt(true);
            x_held.set({family.x[i], 0});
            const engine::complex value = parser.solve_equation(equation, false, true);
            if (negative_branch) parser.set_neg_sqrt(false);
            if (parser.IsAnError()) {
                const char* why = parser.GetLastError();
                std::string where = family.variable + " = " + number_text(family.x[i]);
                if (parameter_held) where += " and " + family.parameter + " = " + number_text(parameter);
                family.errors.push_back("An error occured at " + where + " : " + (why ? why : ""));
                parser.ClearLastError();
                curve.y.push_back(k_hole);
            } else {
                const double imaginary = std::abs(value.imag());
                if (imaginary > k_imaginary) family.imaginary_found = true;
                if (imaginary > k_tiny_imaginary && imaginary > zero) family.large_imaginary_found = true;
                const double y = value.real();
                curve.y.push_back(std::isfinite(y) ? (std::abs(y) < zero ? 0.0 : y) : k_hole);
            }
            if (host && (++done & 255) == 0) {
                host->progress(done, total);
                if (stopped(host)) family.stopped = true;
            }
            if (family.stopped) break;
        }
        family.curves.push_back(std::move(curve));
        if (family.stopped || stopped(host)) {
            family.stopped = true;
            break;
        }
    }
    parser.delete_equation(equation);
    return family;
}

std::string quick_graph_curve_label(const QuickGraphFamily& family, size_t curve) {
    if (family.parameter.empty()) return family.expression;
    return family.expression + " (" + family.parameter + "=" + number_text(family.curves[curve].parameter, 6) + ")";
}

namespace {

// The curves' points as data sets' texts; a failed point (or one the stop left out) is a hole.
graph::StrDataPnts curve_set(const QuickGraphFamily& family, size_t curve, const std::vector<std::string>& x_texts) {
    graph::StrDataPnts set;
    const std::string label = quick_graph_curve_label(family, curve);
    set.SetName(label.c_str());
    set.SetLabel(label.c_str());
    const std::vector<double>& y = family.curves[curve].y;
    for (size_t i = 0; i < family.x.size(); ++i) {
        set.PutXDataPoint(x_texts[i].c_str(), static_cast<int>(i));
        const bool hole = i >= y.size() || y[i] >= k_hole;
        set.PutYDataPoint(hole ? k_hole_text : number_text(y[i]).c_str(), static_cast<int>(i));
    }
    return set;
}

std::vector<std::string> x_texts(const QuickGraphFamily& family) {
    std::vector<std::string> texts;
    texts.reserve(family.x.size());
    for (const double x : family.x) texts.push_back(number_text(x));
    return texts;
}

} // namespace

void put_family_2d(graph::GraphData& graph, const QuickGraphFamily& family) {
    // The curves of an earlier run of the same family go; other series stay.
    const std::string prefix = family.expression + " (" + family.parameter + "=";
    graph.DataSets.remove_if([&](const graph::StrDataPnts& set) {
        return family.parameter.empty() ? set.Name == family.expression : set.Name.rfind(prefix, 0) == 0;
    });
    const std::vector<std::string> texts = x_texts(family);
    for (size_t c = 0; c < family.curves.size(); ++c) graph.DataSets.push_back(curve_set(family, c, texts));
    graph.DataLayout = 1;
    for (const graph::StrDataPnts& set : graph.DataSets)
        if (set.GetNumXYZPoints() != static_cast<int>(family.x.size())) graph.DataLayout = 2;
}

void put_family_3d(graph::GraphData& graph, const QuickGraphFamily& family) {
    graph.DataSets.clear();
    graph.Functions.clear();
    const std::vector<std::string> texts = x_texts(family);
    for (size_t c = 0; c < family.curves.size(); ++c) {
        graph::StrDataPnts set = curve_set(family, c, texts);
        set.PutZDataPoint(number_text(family.curves[c].parameter).c_str());
        graph.DataSets.push_back(std::move(set));
    }
    graph.DataLayout = 1;
}

void title_quick_graph(graph::GraphData& graph, const QuickGraphFamily& family, bool surface) {
    const std::string header = std::string(surface ? "Quick 3D Graph: " : "Quick 2D Graph: ") + family.expression;
    if (!graph.HeaderSet) graph.SetHeader(header.c_str(), false);
    if (!graph.FooterSet) graph.SetFooter(family.expression.c_str(), false);
    if (!graph.YTitleSet) graph.SetYAxisTitle(family.expression.c_str(), false);
    if (!graph.XTitleSet) {
        const std::string own = " " + family.variable + " ";
        std::string title = graph.XAxisTitle;
        if (title.empty() || surface)
            title = own;
        else if (title.find(own) == std::string::npos)
            title += " , " + own;
        graph.SetXAxisTitle(title.c_str(), false);
    }
    if (surface && !graph.ZTitleSet) graph.SetZAxisTitle((" " + family.parameter + " ").c_str(), false);
}

std::string unique_quick_graph_name(const std::string& base, const std::function<bool(const std::string&)>& taken) {
    if (!taken(base)) return base;
    for (int n = 2;; ++n) {
        std::string candidate = base + ":" + std::to_string(n);
        if (!taken(candidate)) return candidate;
    }
}

} // namespace quorvex::desktop
