#include "build_2d.h"

#include "graph_limits.h"
#include "graph_types.h"
#include "interval_labels.h"

#include "engine/parser.h"
#include "engine/reporter.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <sstream>

namespace quorvex::graph {

namespace {

constexpr const char* k_caption = "Graphing Utility";

// Whether a number written in a label is `value`, to the label's digits (`tolerance`, relative).
bool same_value(const std::string& text, double value, double tolerance = 1e-9) {
    char* end = nullptr;
    const double written = std::strtod(text.c_str(), &end);
    if (end == text.c_str()) return false;
    return std::abs(written - value) <= tolerance * std::max(1.0, std::abs(value));
}

bool label_still_fits(const GraphNote& label, const ChartData& data, int type) {
    if (label.PosX < 0 || label.PosY < 0) return false;
    const auto series = static_cast<size_t>(label.PosX), point = static_cast<size_t>(label.PosY);
    if (series >= data.series() || point >= data.points()) return false;
    const double x = data.x(series, point), y = data.y(series, point);
    if (ChartData::is_hole(x) || ChartData::is_hole(y)) return false;
    if (type == graph_type::Hystogram || type == graph_type::Pareto) {
        // The bar's interval is no number: its height tells whether it is still the same bar.
        const bool pareto = type == graph_type::Pareto;
        const std::optional<std::string> shown = histogram_label_value(pareto, label.Text);
        return shown && same_value(*shown, y, pareto ? 5e-3 : 1e-9);
    }
    return same_value(label.XStr, x) && same_value(label.YStr, y);
}

// The legend lists the functions in the setup's order, then the data sets, while the series keep
// their numbers (the last function is series 0).
std::vector<size_t> legend_order(size_t functions, size_t data_sets) {
    std::vector<size_t> order;
    for (size_t f = functions; f-- > 0;) order.push_back(f);
    for (size_t set = 0; set < data_sets; ++set) order.push_back(functions + set);
    return order;
}

void tell(engine::Reporter* reporter, const std::string& text) {
    if (reporter) reporter->report(text, k_caption, engine::MessageKind::Information);
}

// A polar chart shows angles from 0 to one turn and radii from 0: a point is moved to the angle
// within one turn that shows it, and a negative radius points the opposite way, as in the
// mathematics of polar coordinates.
void to_one_turn(ChartData& data, double turn) {
    for (size_t s = 0; s < data.series(); ++s)
        for (size_t p = 0; p < data.points(); ++p) {
            double x = data.x(s, p), y = data.y(s, p);
            if (ChartData::is_hole(x) || ChartData::is_hole(y)) continue;
            if (y < 0) y = -y, x += turn / 2;
            x = std::fmod(x, turn);
            if (x < 0) x += turn;
            data.set_x(s, p, x);
            data.set_y(s, p, y);
        }
}

// A pie draws the first series' positive values as slices.
bool has_no_slice_value(const ChartData& data) {
    if (data.series() == 0) return false;
    for (size_t p = 0; p < data.points(0); ++p) {
        const double y = data.y(0, p);
        if (!ChartData::is_hole(y) && y <= 0) return true;
    }
    return false;
}

} // namespace

ChartColors chart_colors_of(const GraphData& graph) {
    ChartColors colors;
    colors.background = graph.BackgroundColor;
    colors.foreground = graph.ForegroundColor;
    colors.graph_background = graph.GraphBackgroundColor;
    colors.graph_foreground = graph.GraphForegrondColor;
    colors.data_area_background = graph.DataAreaBackgroundColor;
    colors.data_area_foreground = graph.DataAreaForegroundColor;
    colors.header_background = graph.HeaderBackgroundColor;
    colors.header = graph.HeaderForegroundColor;
    colors.footer_background = graph.FooterBackgroundColor;
    colors.footer = graph.FooterForegroundColor;
    colors.legend_background = graph.LegendBackgroundColor;
    colors.legend_foreground = graph.LegendForegroundColor;
    return colors;
}

bool allows_log_x(int type) {
    using namespace graph_type;
    return type == Scatter || type == Line || type == Plot || type == Area || type == HiLo || type == HiLoOpenClose ||
           type == Candle;
}

bool allows_log_y(int type) { return allows_log_x(type) || type == graph_type::Bar || type == graph_type::StackingBar; }

bool build_2d(engine::Parser& parser, GraphData& graph, std::span<const SeriesLook> looks, Chart2D& chart,
              SweepReport& report, engine::Reporter* reporter, engine::Host* host, const DataValue& data_value) {
    chart.clear();
    if (graph.XAxisLogarithmic && !allows_log_x(graph.Type)) {
        tell(reporter, "A logarithmic X axis is not available for this type of graph; the X axis is linear.");
        graph.XAxisLogarithmic = 0;
    }
    if (graph.YAxisLogarithmic && !allows_log_y(graph.Type)) {
        tell(reporter, "A logarithmic Y axis is not available for this type of graph; the Y axis is linear.");
        graph.YAxisLogarithmic = 0;
    }
    // Asked once per graph: the answer becomes the graph's own setting.
    const auto both_branches = [&graph, reporter] {
        if (!graph.AskGraphTwoSolutions || !reporter) return true;
        graph.AskGraphTwoSolutions = false;
        graph.GraphTwoSolutions = reporter->ask(
            "Two solutions were found for one or more expressions, would you like to graph both solutions?", k_caption);
        return graph.GraphTwoSolutions;
    };
    // Bars are refused before anything is computed; a sweep refuses a graph beyond its work itself.
    if (std::optional<std::string> why = too_many_bars(graph)) {
        report.errors.push_back(*why);
        return false;
    }
    std::optional<ChartData> data = sweep_2d(parser, graph, report, host, both_branches, data_value);
    if (!data || report.cancelled) return false;
    if (graph.Type == graph_type::Pie && has_no_slice_value(*data))
        tell(reporter, "The pie chart has values that are negative or zero, which can not be drawn as slices; "
                       "they are left out.");
    std::vector<std::string> intervals;
    if (graph.Type == graph_type::Hystogram || graph.Type == graph_type::Pareto) {
        // Four digits at most: under a bar, at 45 degrees, a longer number runs out of the room
        // the chart gives each category and is cut short.
        const int digits = std::min(parser.answer_format().precision, 4);
        intervals = histogram_axis_labels(*data, graph.Functions.size(), [digits](double value) {
            std::ostringstream out;
            engine::Variable::StreamVariable(engine::complex(value, 0), out, digits);
            return out.str();
        });
        if (graph.Type == graph_type::Pareto) number_points_by_index(*data);
    }
    const double turn = parser.angle_type() == 0 ? 360.0 : 2 * std::numbers::pi;
    if (graph.Type == graph_type::Polar) to_one_turn(*data, turn);

    const GraphTypeInfo* info = find_graph_type(graph.Type);
    chart.set_type(info ? info->drawn_as : graph_type::Plot);
    chart.set_legend_order(legend_order(graph.Functions.size(), data->series() - graph.Functions.size()));
    chart.set_data(*data);
    const size_t functions = graph.Functions.size();
    for (size_t s = 0; s < data->series(); ++s) {
        std::optional<store::TColor> color;
        int width = 1;
        if (s < functions) {
            // Series s draws function n-1-s.
            const size_t function = functions - 1 - s;
            if (function < looks.size()) color = looks[function].color, width = looks[function].width;
        } else if (const StrDataPnts* set = graph.GetDataSet(static_cast<int>(s - functions))) {
            if (set->HasLineColor) color = set->LineColor;
            width = set->LineWidth;
        }
        chart.set_series_style(s, series_style(static_cast<int>(s), graph.Type, color, width,
                                               graph.DataAreaBackgroundColor));
    }
    // Texts set by the program itself reach the chart bounded too (a file's are cut as it is read).
    chart.set_titles(bounded_graph_text(graph.Header), bounded_graph_text(graph.Footer),
                     bounded_graph_text(graph.XAxisTitle), bounded_graph_text(graph.YAxisTitle));
    chart.set_colors(chart_colors_of(graph));
    chart.set_margins(margin_change(graph));
    if (!intervals.empty()) chart.set_value_labels(intervals, 45.0);

    bool log_x = graph.XAxisLogarithmic != 0, log_y = graph.YAxisLogarithmic != 0;
    if (const std::optional<ChartBounds> shown = shown_bounds(*data, graph.Type)) {
        const std::optional<ChartBounds> extent = data_extent(*data);
        if (log_x && extent->x_min <= 0) {
            tell(reporter, "The X values reach zero or below, which a logarithmic axis can not show; the X axis is "
                           "drawn linear.");
            log_x = false;
        }
        if (log_y && extent->y_min <= 0) {
            tell(reporter, "The Y values reach zero or below, which a logarithmic axis can not show; the Y axis is "
                           "drawn linear.");
            log_y = false;
        }
        ChartBounds bounds = *shown;
        // A logarithmic axis shows the values themselves: a margin could reach zero.
        if (log_x) bounds.x_min = extent->x_min, bounds.x_max = extent->x_max;
        if (log_y) bounds.y_min = extent->y_min, bounds.y_max = extent->y_max;
        if (graph.Type == graph_type::Polar) {
            // X is an angle in the engine's unit: the circle is one whole turn, so that a curve
            // keeps its shape, and the radius grows from the centre (to_one_turn).
            bounds.x_min = 0;
            bounds.x_max = turn;
            bounds.y_min = 0;
        }
        chart.set_bounds(bounds);
    }
    chart.set_logarithmic(log_x, log_y);
    chart.set_grid(graph.ShowGridLines != 0);
    // Notes at their pixels; a label at its point, while the point still has the values the label
    // shows (a label whose point moved is dropped).
    for (auto note = graph.Notes.begin(); note != graph.Notes.end();) {
        if (note->IsNote) {
            note->Index = chart.add_note(bounded_graph_text(note->Text), note->PosX, note->PosY);
        } else if (label_still_fits(*note, *data, graph.Type)) {
            note->Index = chart.add_point_label(static_cast<size_t>(note->PosX), static_cast<size_t>(note->PosY),
                                                bounded_graph_text(note->Text));
        } else {
            note = graph.Notes.erase(note);
            continue;
        }
        ++note;
    }
    return true;
}

} // namespace quorvex::graph
