#pragma once
#include "store/ini_file.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quorvex::graph {

// A value the chart does not draw: the point becomes a gap in its line.
inline constexpr double k_chart_hole = 1e308;

// The numbers of a 2-D chart: series by points, with X and Y values. With layout 1 all series
// share one X row (what a sweep of functions makes); with layout 2 each series has its own, and
// may be shorter than the longest (its points beyond are holes, and take no memory).
// Every value starts as the hole.
class ChartData {
public:
    ChartData(int layout, size_t series, size_t points);
    // Layout 2 with a length for each series.
    explicit ChartData(const std::vector<size_t>& lengths);

    int layout() const { return m_layout; }
    size_t series() const { return m_y.size(); }
    size_t points() const { return m_points; } // of the longest series
    size_t points(size_t series) const { return series < m_y.size() ? m_y[series].size() : 0; }

    void set_x(size_t series, size_t point, double x);
    void set_y(size_t series, size_t point, double y);
    double x(size_t series, size_t point) const;
    double y(size_t series, size_t point) const;
    static bool is_hole(double value) { return !(value < k_chart_hole && value > -k_chart_hole); }

    // The line of a series is not drawn from point `point` - 1 to `point`, though both are
    // values: the function jumps there through a pole between them.
    void add_break(size_t series, size_t point);
    bool break_before(size_t series, size_t point) const;
    bool has_breaks(size_t series) const { return series < m_breaks.size() && !m_breaks[series].empty(); }

    // The legend text of a series.
    void set_label(size_t series, std::string label);
    const std::string& label(size_t series) const;

private:
    int m_layout;
    size_t m_points;
    std::vector<std::vector<double>> m_x; // one row for layout 1
    std::vector<std::vector<double>> m_y;
    std::vector<std::string> m_labels;
    std::vector<std::vector<size_t>> m_breaks; // per series, ascending; empty for most
};

// The extent of the drawn values, holes left out; none when no point has both values.
struct ChartBounds {
    double x_min = 0, x_max = 0, y_min = 0, y_max = 0;
};
std::optional<ChartBounds> data_extent(const ChartData& data);

// The range the axes show for `type`: histograms and Pareto charts widen X by the gap of their
// first two bars on each side; other types move each X end out by 5 % of the range unless that
// end lies within those 5 % of zero. Y always gains 5 % on top, and 5 % below only when it goes
// below zero.
std::optional<ChartBounds> shown_bounds(const ChartData& data, int type);

// The colour of series `n` when the graph gives none (fifteen, then round again).
store::TColor default_series_color(int n);

// How a series is drawn.
struct SeriesStyle {
    int line_pattern = 2; // 1 none (points only), 2 solid
    int fill_pattern = 2;
    store::TColor color = 0;
    int line_width = 1;
    int point_symbol = 2;
    store::TColor point_color = 0;
    int point_size = 7;
};
// The style of series `n` of a graph of `type`: its own colour and width when set, else the
// default colour, never the colour of the data area's background (white then).
SeriesStyle series_style(int n, int type, std::optional<store::TColor> color, int line_width,
                         store::TColor background);

} // namespace quorvex::graph
