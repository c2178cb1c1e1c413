#include "nearest_point.h"

#include <cmath>

namespace quorvex::graph {

namespace {

// One axis from values to pixels and back.
class AxisMap {
public:
    AxisMap(double from, double to, double pixels, bool log) : m_log(log) {
        m_from = position(from);
        m_scale = pixels / (position(to) - m_from);
    }
    double pixel(double value) const { return (position(value) - m_from) * m_scale; }
    double value(double pixel) const {
        const double at = m_from + pixel / m_scale;
        return m_log ? std::pow(10.0, at) : at;
    }

private:
    double position(double value) const { return m_log ? (value > 0 ? std::log10(value) : -INFINITY) : value; }
    bool m_log;
    double m_from = 0, m_scale = 1;
};

} // namespace

PointFinder::PointFinder(const ChartData& data) : m_data(data), m_ascending(data.series(), true) {
    for (size_t s = 0; s < data.series(); ++s)
        for (size_t p = 0; p < data.points(s) && m_ascending[s]; ++p) {
            const double x = data.x(s, p);
            m_ascending[s] = !ChartData::is_hole(x) && (p == 0 || x >= data.x(s, p - 1));
        }
}

std::optional<NearPoint> PointFinder::nearest(const PlotMapping& mapping, double x, double y, double reach) const {
    const AxisMap columns(mapping.x_from, mapping.x_to, mapping.width, mapping.log_x);
    const AxisMap rows(mapping.y_from, mapping.y_to, mapping.height, mapping.log_y);
    std::optional<NearPoint> best;
    double best_distance = reach;
    const auto consider = [&](size_t s, size_t p) {
        const double px = m_data.x(s, p), py = m_data.y(s, p);
        if (ChartData::is_hole(px) || ChartData::is_hole(py)) return;
        const double distance = std::hypot(columns.pixel(px) - x, mapping.height - rows.pixel(py) - y);
        if (distance < best_distance) {
            best_distance = distance;
            best = NearPoint{s, p, distance};
        }
    };
    // The X values within reach; a logarithmic axis may turn them around if its range does.
    double low = columns.value(x - reach), high = columns.value(x + reach);
    if (low > high) std::swap(low, high);
    for (size_t s = 0; s < m_data.series(); ++s) {
        const size_t points = m_data.points(s);
        if (!m_ascending[s] || !(low <= high)) {
            for (size_t p = 0; p < points; ++p) consider(s, p);
            continue;
        }
        // The first point at or right of `low`, by halving.
        size_t first = 0, count = points;
        while (count > 0) {
            const size_t half = count / 2;
            if (m_data.x(s, first + half) < low) first += half + 1, count -= half + 1;
            else count = half;
        }
        for (size_t p = first; p < points && m_data.x(s, p) <= high; ++p) consider(s, p);
    }
    return best;
}

} // namespace quorvex::graph
