#include "sweep_2d.h"

#include "graph_limits.h"
#include "pole_breaks.h"
#include "progress_steps.h"
#include "sweep_variable.h"
#include "root_branches.h"

#include "engine/host.h"
#include "engine/parser.h"

#include <cmath>
#include <sstream>

namespace quorvex::graph {

namespace {

constexpr double k_imaginary_zero = 1e-10;
constexpr double k_zero = 1e-14;
constexpr const char* k_complex_point = "Complex data point encountered, data must be real!";

std::string value_text(const engine::complex& value) {
    std::ostringstream out;
    engine::Variable::StreamVariable(value, out, 10);
    return out.str();
}

struct MappedFunction {
    int equation = 0;
    bool two_roots = false;
    size_t series = 0;
};

// Maps the functions from the last to the first; an unknown or unmappable one is reported and
// left out.
std::vector<MappedFunction> map_functions(engine::Parser& parser, const GraphData& graph, SweepVariable& variable,
                                          engine::Variable sweep, SweepReport& report) {
    std::vector<MappedFunction> mapped;
    const size_t count = graph.Functions.size();
    for (size_t i = count; i-- > 0;) {
        const engine::Function& function = graph.Functions[i];
        const std::string& name = function.full_name();
        const std::string bare = name.substr(0, name.find('['));
        if (parser.find_function(name.c_str()) < 0 && !parser.is_internal_function(bare.c_str()) &&
            !parser.is_library_function(bare.c_str())) {
            report.errors.push_back("\"" + name + "\" could not be found. The graph could not be created!");
            continue;
        }
        sweep.ResetIncrement();
        variable.set(sweep.value());
        int equation = parser.map_expression(name.c_str());
        if (equation == 0 && sweep.Increment()) {
            // One more try at the next point: the first may be singular (1/x from 0).
            parser.ClearLastError();
            variable.set(sweep.value());
            equation = parser.map_expression(name.c_str());
        }
        if (equation == 0) {
            const char* why = parser.GetLastError();
            if (why) report.errors.emplace_back(why);
            parser.ClearLastError();
            report.errors.push_back("\"" + name + "\" could not be mapped. Graph could not be created!");
            continue;
        }
        const bool two = graph.GraphTwoSolutions && parser.root_taken();
        report.two_solutions = report.two_solutions || two;
        mapped.push_back({equation, two, count - 1 - i});
    }
    return mapped;
}

size_t set_length(const StrDataPnts& set) { return std::max(set.XPoints.size(), set.YPoints.size()); }

// Equations are numbered by place: the last goes first, so that the others keep their numbers.
void delete_equations(engine::Parser& parser, const std::vector<MappedFunction>& mapped) {
    for (auto each = mapped.rbegin(); each != mapped.rend(); ++each) parser.delete_equation(each->equation);
}

} // namespace

std::optional<ChartData> sweep_2d(engine::Parser& parser, const GraphData& graph, SweepReport& report,
                                  engine::Host* host, const std::function<bool()>& both_branches,
                                  const DataValue& data_value) {
    const VariableCopy& axis = graph.XAxisVar ? graph.XAxisVar : graph.ZAxisVar;
    const bool functions = !graph.Functions.empty();
    if (functions && !axis) return std::nullopt;
    // Before anything is mapped or set aside: a graph beyond what one graph holds is not begun.
    if (const size_t work = graph_work(graph); work > k_max_graph_work) {
        report.errors.push_back(graph_work_refusal(work));
        return std::nullopt;
    }

    size_t points = axis ? static_cast<size_t>(std::max(1L, axis->num_points())) : 0;
    std::optional<SweepVariable> variable;
    std::vector<MappedFunction> mapped;
    if (functions) {
        variable.emplace(parser, axis->name());
        mapped = map_functions(parser, graph, *variable, *axis, report);
        if (mapped.size() < graph.Functions.size()) {
            delete_equations(parser, mapped);
            return std::nullopt;
        }
    }
    if (report.two_solutions && both_branches && !both_branches()) {
        report.two_solutions = false;
        for (MappedFunction& each : mapped) each.two_roots = false;
    }
    const size_t function_points = points;
    if (report.two_solutions) points = 2 * points - 1; // out along one branch and back along the other
    // Each series keeps its own X (a data set's X texts need not be the functions' points) and its
    // own length, so that memory follows the work: a short data set beside a long sweep stays short.
    std::vector<size_t> lengths(graph.Functions.size(), functions ? points : 0);
    for (const StrDataPnts& set : graph.DataSets) lengths.push_back(set_length(set));
    ChartData data(lengths);

    size_t work = functions ? function_points : 0;
    for (const StrDataPnts& set : graph.DataSets) work += set_length(set);
    ProgressSteps progress(work);
    const auto step_done = [&progress, host] {
        if (progress.step() && host) host->progress(progress.percent(), 100);
    };

    const double zero = std::max(k_zero, static_cast<double>(parser.answer_format().zero_precision));
    const auto snap = [zero](double value) { return std::abs(value) < zero ? 0.0 : value; };
    if (functions) {
        engine::Variable sweep = *axis;
        size_t point = 0;
        bool first_back = false;
        const auto run_point = [&](bool backward) {
            const engine::complex x = sweep.value();
            variable->set(x);
            for (const MappedFunction& each : mapped) {
                if (backward && !each.two_roots) continue;
                data.set_x(each.series, point, snap(x.real()));
                engine::complex y = parser.solve_equation(each.equation, false, true);
                if (!parser.IsAnError() && backward) {
                    // Where the way out was still rising, the turn would join the two branches
                    // with a line across the graph: the first point back is left a hole.
                    double slope = -1.0;
                    if (first_back && point >= 3) {
                        const double dx = data.x(each.series, point - 1) - data.x(each.series, point - 2);
                        const double dy = data.y(each.series, point - 1) - data.y(each.series, point - 2);
                        slope = dx == 0 ? 1.0 : dy / dx;
                    }
                    if (!(slope <= 0)) continue;
                    parser.set_neg_sqrt(true);
                    y = parser.solve_equation(each.equation, false, true);
                    parser.set_neg_sqrt(false);
                }
                if (parser.IsAnError()) {
                    const char* why = parser.GetLastError();
                    report.errors.push_back("An error occured at " + axis->name() + " = " + value_text(x) + " : " +
                                            (why ? why : ""));
                    parser.ClearLastError();
                    continue; // a hole
                }
                if (std::abs(y.imag()) > k_imaginary_zero) {
                    // Complex: a hole, listed with the failures (once, on the way out).
                    if (!backward)
                        report.errors.push_back("An error occured at " + axis->name() + " = " + value_text(x) + " : " +
                                                k_complex_point);
                    continue;
                }
                data.set_y(each.series, point, snap(y.real()));
            }
            ++point;
        };
        sweep.ResetIncrement();
        for (size_t n = 0; n < function_points && !report.cancelled; ++n) {
            run_point(false);
            step_done();
            if (!keep_going(host, report) || !sweep.Increment()) break;
        }
        const size_t forward = point;
        if (!report.cancelled) {
            for (const MappedFunction& each : mapped) {
                if (each.two_roots) continue;
                const auto value_at = [&](double x) -> std::optional<double> {
                    variable->set(engine::complex(x, 0));
                    const engine::complex y = parser.solve_equation(each.equation, false, true);
                    const bool failed = parser.IsAnError();
                    parser.ClearLastError();
                    if (failed || std::abs(y.imag()) > k_imaginary_zero) return std::nullopt;
                    return y.real();
                };
                break_at_poles(data, each.series, 0, forward, value_at);
            }
        }
        if (report.two_solutions && !report.cancelled) {
            // Back along the other branch: the curve returns to its start below the axis.
            first_back = true;
            while (point < points && sweep.Decrement()) {
                run_point(true);
                first_back = false;
                if (!keep_going(host, report)) break;
            }
            const auto set_x = [&variable](double x) { variable->set(engine::complex(x, 0)); };
            for (const MappedFunction& each : mapped)
                if (each.two_roots && !report.cancelled)
                    join_root_branches(parser, each.equation, set_x, data, each.series, forward, zero);
        }
        delete_equations(parser, mapped);
        for (size_t i = 0; i < graph.Functions.size(); ++i) {
            const engine::Function& function = graph.Functions[i];
            data.set_label(graph.Functions.size() - 1 - i,
                           bounded_graph_text(function.label().empty() ? function.full_name() : function.label()));
        }
    }

    size_t series = graph.Functions.size();
    for (const StrDataPnts& set : graph.DataSets) {
        const auto evaluate = [&](const std::string* text, double& out) {
            if (!text || text->empty()) return false;
            engine::complex value;
            if (data_value) {
                if (!data_value(*text, value)) return false;
            } else {
                parser.eval_exp(text->c_str(), value, true, false, false);
                if (parser.IsAnError()) {
                    if (const char* why = parser.GetLastError()) report.errors.emplace_back(why);
                    parser.ClearLastError();
                    return false;
                }
            }
            if (std::abs(value.imag()) > k_imaginary_zero) return false;
            out = value.real();
            return true;
        };
        for (int p = 0; p < static_cast<int>(set_length(set)) && !report.cancelled; ++p) {
            double x = 0, y = 0;
            if (evaluate(set.GetXDataPoint(p), x)) data.set_x(series, static_cast<size_t>(p), x);
            if (evaluate(set.GetYDataPoint(p), y)) data.set_y(series, static_cast<size_t>(p), y);
            step_done();
            keep_going(host, report);
        }
        data.set_label(series, bounded_graph_text(set.Label.empty() ? set.Name : set.Label));
        ++series;
    }
    return data;
}

} // namespace quorvex::graph
