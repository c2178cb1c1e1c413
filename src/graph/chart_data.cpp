#include "chart_data.h"

#include "graph_types.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quorvex::graph {

ChartData::ChartData(int layout, size_t series, size_t points)
    : m_layout(layout == 2 ? 2 : 1),
      m_points(points),
      m_x(m_layout == 1 ? 1 : series, std::vector<double>(points, k_chart_hole)),
      m_y(series, std::vector<double>(points, k_chart_hole)),
      m_labels(series) {}

ChartData::ChartData(const std::vector<size_t>& lengths)
    : m_layout(2), m_points(lengths.empty() ? 0 : *std::max_element(lengths.begin(), lengths.end())),
      m_labels(lengths.size()) {
    m_x.reserve(lengths.size());
    m_y.reserve(lengths.size());
    for (const size_t length : lengths) {
        m_x.emplace_back(length, k_chart_hole);
        m_y.emplace_back(length, k_chart_hole);
    }
}

void ChartData::set_x(size_t series, size_t point, double x) {
    const size_t row = m_layout == 1 ? 0 : series;
    if (row < m_x.size() && point < m_x[row].size()) m_x[row][point] = x;
}

void ChartData::add_break(size_t series, size_t point) {
    if (series >= m_y.size()) return;
    if (m_breaks.size() < m_y.size()) m_breaks.resize(m_y.size());
    std::vector<size_t>& breaks = m_breaks[series];
    const auto at = std::lower_bound(breaks.begin(), breaks.end(), point);
    if (at == breaks.end() || *at != point) breaks.insert(at, point);
}

bool ChartData::break_before(size_t series, size_t point) const {
    return has_breaks(series) && std::binary_search(m_breaks[series].begin(), m_breaks[series].end(), point);
}

void ChartData::set_y(size_t series, size_t point, double y) {
    if (series < m_y.size() && point < m_y[series].size()) m_y[series][point] = y;
}

double ChartData::x(size_t series, size_t point) const {
    const size_t row = m_layout == 1 ? 0 : series;
    return row < m_x.size() && point < m_x[row].size() ? m_x[row][point] : k_chart_hole;
}

double ChartData::y(size_t series, size_t point) const {
    return series < m_y.size() && point < m_y[series].size() ? m_y[series][point] : k_chart_hole;
}

void ChartData::set_label(size_t series, std::string label) {
    if (series < m_labels.size()) m_labels[series] = std::move(label);
}

const std::string& ChartData::label(size_t series) const {
    static const std::string none;
    return series < m_labels.size() ? m_labels[series] : none;
}

std::optional<ChartBounds> data_extent(const ChartData& data) {
    std::optional<ChartBounds> extent;
    for (size_t s = 0; s < data.series(); ++s)
        for (size_t p = 0; p < data.points(); ++p) {
            const double x = data.x(s, p), y = data.y(s, p);
            if (ChartData::is_hole(x) || ChartData::is_hole(y)) continue;
            if (!extent) {
                extent = ChartBounds{x, x, y, y};
                continue;
            }
            extent->x_min = std::min(extent->x_min, x);
            extent->x_max = std::max(extent->x_max, x);
            extent->y_min = std::min(extent->y_min, y);
            extent->y_max = std::max(extent->y_max, y);
        }
    return extent;
}

std::optional<ChartBounds> shown_bounds(const ChartData& data, int type) {
    std::optional<ChartBounds> bounds = data_extent(data);
    if (!bounds) return bounds;
    const bool bars = type == graph_type::Hystogram || type == graph_type::Pareto;
    if (bars && data.points() >= 2 && !ChartData::is_hole(data.x(0, 0)) && !ChartData::is_hole(data.x(0, 1))) {
        const double gap = std::abs(data.x(0, 1) - data.x(0, 0));
        bounds->x_min -= gap;
        bounds->x_max += gap;
    } else {
        // An end at or near zero stays where it is: a curve from 0 starts at the axis.
        const double margin = 0.05 * (bounds->x_max - bounds->x_min);
        if (std::abs(bounds->x_min) > margin) bounds->x_min -= margin;
        if (std::abs(bounds->x_max) > margin) bounds->x_max += margin;
    }
    // Counts stand on zero, so that a bar of the smallest count still shows its height.
    if (bars) bounds->y_min = std::min(bounds->y_min, 0.0);
    const double margin = 0.05 * (bounds->y_max - bounds->y_min);
    bounds->y_max += margin;
    if (bounds->y_min < 0) bounds->y_min -= margin;
    return bounds;
}

store::TColor default_series_color(int n) {
    static constexpr std::array<store::TColor, 15> k_colors{0xFF,     0xFF0000, 0x8000, 0x80FF, 0xFF00FF,
                                                            0,        0xFF0000, 0xFFFF80, 0xFF00C0, 0x80,
                                                            0xFFFF,   0x808080, 0x8080, 0x80FF80, 0xFF00};
    if (n < 0) n = 0;
    while (n > 14) n -= 14; // as the table has always been walked: 15 is 1, not 0
    return k_colors[static_cast<size_t>(n)];
}

SeriesStyle series_style(int n, int type, std::optional<store::TColor> color, int line_width,
                         store::TColor background) {
    static constexpr std::array<int, 15> k_symbols{2, 5, 4, 6, 7, 3, 9, 10, 11, 12, 13, 14, 15, 16, 7};
    SeriesStyle style;
    style.line_width = line_width > 0 ? line_width : 1;
    style.line_pattern = type == graph_type::Scatter ? 1 : 2;
    style.point_symbol = type == graph_type::Line ? 1 : k_symbols[static_cast<size_t>(std::max(n, 0) % 15)];
    style.color = color ? *color : default_series_color(n);
    if (style.color == background) style.color = 0xFFFFFF;
    style.point_color = style.color;
    return style;
}

} // namespace quorvex::graph
