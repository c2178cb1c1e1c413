#include "sweep_3d.h"

#include "graph_limits.h"
#include "sweep_variable.h"

#include "engine/host.h"
#include "engine/parser.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <sstream>
#include <utility>

namespace quorvex::graph {

namespace {

constexpr double k_zero = 1e-14; // the least zero precision, as for curves

std::string value_text(double value) {
    std::ostringstream out;
    engine::Variable::StreamVariable({value, 0}, out, 10);
    return out.str();
}

// The values a ranged variable walks through, in the walk's own decimal steps.
std::vector<double> walk(const engine::Variable& range) {
    engine::Variable sweep = range;
    sweep.ResetIncrement();
    std::vector<double> values{sweep.value().real()};
    const auto most = static_cast<size_t>(std::max(1L, range.num_points()));
    while (values.size() < most && sweep.Increment()) values.push_back(sweep.value().real());
    return values;
}

bool evaluate(engine::Parser& parser, const std::string* text, double& out) {
    const std::optional<engine::complex> value = evaluate_data_text(parser, text);
    if (value) out = value->real();
    return value.has_value();
}

std::optional<Grid3D> sweep_function(engine::Parser& parser, const GraphData& graph, SweepReport& report,
                                     engine::Host* host) {
    const engine::Function& function = graph.Functions.front();
    const std::string& name = function.full_name();
    const std::string bare = name.substr(0, name.find('['));
    if (parser.find_function(name.c_str()) < 0 && !parser.is_internal_function(bare.c_str()) &&
        !parser.is_library_function(bare.c_str())) {
        report.errors.push_back("\"" + name + "\" could not be found. The graph could not be created!");
        return std::nullopt;
    }
    // A value within the answers' zero precision of 0 is 0, as in a curve: the walk's steps carry
    // a little binary noise, which a label would show as x = 4.4e-13.
    const double zero = std::max(k_zero, static_cast<double>(parser.answer_format().zero_precision));
    const auto snap = [zero](double value) { return std::abs(value) < zero ? 0.0 : value; };
    std::vector<double> xs = walk(*graph.XAxisVar);
    std::vector<double> zs = walk(*graph.ZAxisVar);
    for (std::vector<double>* values : {&xs, &zs})
        for (double& value : *values) value = snap(value);
    SweepVariable x(parser, graph.XAxisVar->name());
    SweepVariable z(parser, graph.ZAxisVar->name());
    // Mapped at a point of the grid; the next one is tried when the first is singular.
    int equation = 0;
    for (size_t tries = 0; tries < 2 && equation == 0; ++tries) {
        x.set(engine::complex(xs[std::min(tries, xs.size() - 1)], 0));
        z.set(engine::complex(zs[std::min(tries, zs.size() - 1)], 0));
        parser.ClearLastError();
        equation = parser.map_expression(name.c_str());
    }
    if (equation == 0) {
        if (const char* why = parser.GetLastError()) report.errors.emplace_back(why);
        parser.ClearLastError();
        report.errors.push_back("\"" + name + "\" could not be mapped. Graph could not be created!");
        return std::nullopt;
    }
    // The walk's own values: each a decimal step from the last, as a label will show them.
    Grid3D grid = Grid3D::irregular(xs, zs);
    grid.mark_regular();
    for (size_t i = 0; i < xs.size() && !report.cancelled; ++i) {
        x.set(engine::complex(xs[i], 0));
        for (size_t j = 0; j < zs.size(); ++j) {
            z.set(engine::complex(zs[j], 0));
            const engine::complex value = parser.solve_equation(equation, false, true);
            if (parser.IsAnError()) {
                const char* why = parser.GetLastError();
                report.errors.push_back("An error occured at " + graph.XAxisVar->name() + " = " + value_text(xs[i]) +
                                        " and " + graph.ZAxisVar->name() + " = " + value_text(zs[j]) + " : " +
                                        (why ? why : ""));
                parser.ClearLastError();
            } else {
                grid.set(i, j, snap(value.real()));
            }
            if (!keep_going(host, report)) break;
        }
    }
    parser.delete_equation(equation);
    if (report.cancelled) return std::nullopt;
    return grid;
}

std::optional<Grid3D> grid_of_sets(engine::Parser& parser, const GraphData& graph) {
    // A point is placed by its X (from the first set) and its set's Z: a column whose X or a row
    // whose Z is missing or fails has no place in the picture and is left out, rather than drawn
    // at the hole value as if that were a coordinate.
    const StrDataPnts& first = graph.DataSets.front();
    std::vector<double> xs;
    std::vector<size_t> columns;
    for (size_t p = 0; p < first.XPoints.size(); ++p) {
        double x = 0;
        if (evaluate(parser, first.GetXDataPoint(static_cast<int>(p)), x) && std::isfinite(x) && !Grid3D::is_hole(x)) {
            xs.push_back(x);
            columns.push_back(p);
        }
    }
    std::vector<double> ys;
    std::vector<const StrDataPnts*> rows;
    for (const StrDataPnts& set : graph.DataSets) {
        double y = 0;
        if (set.ZPoint && evaluate(parser, &*set.ZPoint, y) && std::isfinite(y) && !Grid3D::is_hole(y)) {
            ys.push_back(y);
            rows.push_back(&set);
        }
    }
    if (xs.empty() || ys.empty()) return std::nullopt;
    Grid3D grid = Grid3D::irregular(xs, ys);
    for (size_t j = 0; j < rows.size(); ++j)
        for (size_t i = 0; i < columns.size(); ++i) {
            double value = k_grid_hole;
            if (evaluate(parser, rows[j]->GetYDataPoint(static_cast<int>(columns[i])), value)) grid.set(i, j, value);
        }
    return grid;
}

std::string surface_refusal(size_t points, const char* advice) {
    return "The surface asks for " + std::to_string(points) + " points; a surface holds at most " +
           std::to_string(k_max_surface_points) + " (1000 by 1000). " + advice;
}

std::string number_text(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.14g", value);
    return text;
}

} // namespace

std::optional<double> value_at_3d(engine::Parser& parser, const GraphData& graph, double x, double z) {
    if (graph.Functions.empty() || !graph.XAxisVar || !graph.ZAxisVar) return std::nullopt;
    const std::string& name = graph.Functions.front().full_name();
    const size_t open = name.find('[');
    const size_t close = name.rfind(']');
    if (open == std::string::npos || close == std::string::npos || close < open) return std::nullopt;
    // f[x,y] becomes f[1.5,2]: the parameters named like the axis variables take the numbers.
    std::string call = name.substr(0, open + 1);
    size_t start = open + 1;
    for (;;) {
        const size_t end = std::min(name.find(',', start), close);
        const std::string parameter = name.substr(start, end - start);
        call += parameter == graph.XAxisVar->name()   ? number_text(x)
                : parameter == graph.ZAxisVar->name() ? number_text(z)
                                                      : parameter;
        if (end == close) break;
        call += ',';
        start = end + 1;
    }
    call += ']';
    engine::complex value;
    parser.eval_exp(call.c_str(), value, true, false, false);
    if (parser.IsAnError()) {
        parser.ClearLastError();
        return std::nullopt;
    }
    return value.real();
}

std::optional<Grid3D> sweep_3d(engine::Parser& parser, const GraphData& graph, SweepReport& report,
                               engine::Host* host) {
    if (const size_t work = graph_work(graph); work > k_max_graph_work) {
        report.errors.push_back(graph_work_refusal(work));
        return std::nullopt;
    }
    if (!graph.Functions.empty()) {
        if (!graph.XAxisVar || !graph.ZAxisVar) return std::nullopt;
        const auto points = static_cast<size_t>(std::max(1L, graph.XAxisVar->num_points())) *
                            static_cast<size_t>(std::max(1L, graph.ZAxisVar->num_points()));
        if (points > k_max_surface_points) {
            report.errors.push_back(surface_refusal(points, "Give the X or Z variable fewer points."));
            return std::nullopt;
        }
        return sweep_function(parser, graph, report, host);
    }
    if (graph.DataSets.empty() || graph.DataSets.front().XPoints.empty()) return std::nullopt;
    // The grid is the first set's X points by the number of sets: a long first set beside many
    // short ones asks for far more cells than the points the file holds.
    const size_t columns = graph.DataSets.front().XPoints.size();
    const size_t rows = graph.DataSets.size();
    if (const size_t points = columns * rows; points > k_max_surface_points) {
        report.errors.push_back(surface_refusal(points, "Give the first data set fewer points, or use fewer data sets."));
        return std::nullopt;
    }
    return grid_of_sets(parser, graph);
}

bool compute_3d(engine::Parser& parser, const GraphData& graph, Chart3D& chart, SweepReport& report,
                engine::Host* host) {
    std::optional<Grid3D> grid = sweep_3d(parser, graph, report, host);
    if (!grid) {
        if (!report.cancelled && report.errors.empty())
            report.errors.push_back("The graph \"" + graph.Name + "\" has no function or data set to draw in 3-D.");
        return false;
    }
    build_3d(graph, std::move(*grid), chart);
    return true;
}

} // namespace quorvex::graph
