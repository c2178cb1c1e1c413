#include "decimate.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace quorvex::graph {

namespace {

// Where a value falls among `cells` pixels from `from` to `to`: -1 before, `cells` after.
class PixelScale {
public:
    PixelScale(double from, double to, size_t cells, bool log) : m_cells(static_cast<long>(cells)), m_log(log) {
        m_from = position(from);
        const double span = position(to) - m_from;
        m_valid = cells > 0 && std::isfinite(m_from) && std::isfinite(span) && span > 0;
        m_scale = m_valid ? static_cast<double>(cells) / span : 0;
    }
    bool valid() const { return m_valid; }
    long cell(double value) const {
        const double at = (position(value) - m_from) * m_scale;
        if (!(at >= 0)) return -1; // left of the window, or no place on a logarithmic axis
        if (at >= static_cast<double>(m_cells)) return m_cells;
        return static_cast<long>(at);
    }

private:
    double position(double value) const { return m_log ? (value > 0 ? std::log10(value) : -INFINITY) : value; }

    long m_cells;
    bool m_log;
    double m_from = 0, m_scale = 0;
    bool m_valid = false;
};

// Walks a series in order, handing each run of points inside one pixel column to `flush` and
// keeping holes as holes.
template <typename Flush>
std::vector<PlotPoint> walk_runs(const ChartData& data, size_t series, const PixelScale& columns, Flush flush) {
    std::vector<PlotPoint> out;
    std::vector<PlotPoint> run;
    long run_column = 0;
    const auto end_run = [&] {
        if (!run.empty()) flush(run, out);
        run.clear();
    };
    const size_t points = data.points(series);
    const bool breaks = data.has_breaks(series);
    for (size_t p = 0; p < points; ++p) {
        const PlotPoint point{data.x(series, p), data.y(series, p)};
        if (point.is_hole() || (breaks && data.break_before(series, p))) {
            end_run();
            if (!out.empty() && !out.back().is_hole()) out.push_back(PlotPoint{});
            if (point.is_hole()) continue;
        }
        const long column = columns.cell(point.x);
        if (!run.empty() && column != run_column) end_run();
        run_column = column;
        run.push_back(point);
    }
    end_run();
    return out;
}

std::vector<PlotPoint> all_points(const ChartData& data, size_t series) {
    std::vector<PlotPoint> out;
    for (size_t p = 0; p < data.points(series); ++p) {
        const PlotPoint point{data.x(series, p), data.y(series, p)};
        const bool cut = point.is_hole() || data.break_before(series, p);
        if (cut && !out.empty() && !out.back().is_hole()) out.push_back(PlotPoint{});
        if (!point.is_hole()) out.push_back(point);
    }
    return out;
}

} // namespace

std::vector<PlotPoint> decimate_line(const ChartData& data, size_t series, const PixelWindow& window) {
    const PixelScale columns(window.x_from, window.x_to, window.columns, window.log_x);
    if (!columns.valid()) return all_points(data, series);
    return walk_runs(data, series, columns, [](const std::vector<PlotPoint>& run, std::vector<PlotPoint>& out) {
        size_t low = 0, high = 0;
        for (size_t i = 1; i < run.size(); ++i) {
            if (run[i].y < run[low].y) low = i;
            if (run[i].y > run[high].y) high = i;
        }
        size_t keep[] = {0, std::min(low, high), std::max(low, high), run.size() - 1};
        const size_t* end = std::unique(std::begin(keep), std::end(keep));
        for (const size_t* i = keep; i != end; ++i) out.push_back(run[*i]);
    });
}

std::vector<PlotPoint> decimate_area_fill(const ChartData& data, size_t series, const PixelWindow& window) {
    const PixelScale columns(window.x_from, window.x_to, window.columns, window.log_x);
    if (!columns.valid()) return all_points(data, series);
    const long cells = static_cast<long>(window.columns);
    const auto inside = [cells](long column) { return column >= 0 && column < cells; };
    // One run of points in one column, held until the next run tells whether it is a neighbour.
    struct Run {
        long column = 0;
        PlotPoint first, last, low, high;
        size_t low_at = 0, high_at = 0; // their places in the run
        size_t count = 0;
    };
    std::vector<PlotPoint> out;
    Run run;
    bool has_run = false, level_in = false; // level_in: the edge comes in level from the last column
    double level = 0;
    // Ends the held run; `next` is the column of the run after it, or none at a hole or the end.
    const auto flush = [&](std::optional<long> next) {
        if (!has_run) return;
        has_run = false;
        const bool joined_out = next && inside(run.column) && *next == run.column + 1 && inside(*next);
        if (!inside(run.column)) {
            // Beyond the window the line's own points: what crosses the window's edge is the real line.
            const bool low_first = run.low_at < run.high_at;
            const std::pair<size_t, PlotPoint> keep[] = {{0, run.first},
                                                         low_first ? std::pair{run.low_at, run.low} : std::pair{run.high_at, run.high},
                                                         low_first ? std::pair{run.high_at, run.high} : std::pair{run.low_at, run.low},
                                                         {run.count - 1, run.last}};
            for (size_t i = 0; i < 4; ++i)
                if (i == 0 || keep[i].first != keep[i - 1].first) out.push_back(keep[i].second);
            level_in = false;
            return;
        }
        level = level_in ? std::clamp(level, run.low.y, run.high.y) : run.first.y;
        out.push_back({run.first.x, level});
        // Level through the column into its neighbour; else down to the real last point.
        const double leave = joined_out ? level : run.last.y;
        if (run.count > 1 || leave != level) out.push_back({run.last.x, leave});
        level_in = joined_out;
    };
    const size_t points = data.points(series);
    const bool breaks = data.has_breaks(series);
    for (size_t p = 0; p < points; ++p) {
        const PlotPoint point{data.x(series, p), data.y(series, p)};
        if (point.is_hole() || (breaks && data.break_before(series, p))) {
            flush(std::nullopt);
            level_in = false;
            if (!out.empty() && !out.back().is_hole()) out.push_back(PlotPoint{});
            if (point.is_hole()) continue;
        }
        const long column = columns.cell(point.x);
        if (has_run && column == run.column) {
            run.last = point;
            if (point.y < run.low.y) run.low = point, run.low_at = run.count;
            if (point.y > run.high.y) run.high = point, run.high_at = run.count;
            ++run.count;
            continue;
        }
        flush(column);
        run = Run{column, point, point, point, point, 0, 0, 1};
        has_run = true;
    }
    flush(std::nullopt);
    return out;
}

std::vector<PlotPoint> decimate_points(const ChartData& data, size_t series, const PixelWindow& window) {
    const PixelScale columns(window.x_from, window.x_to, window.columns, window.log_x);
    const PixelScale rows(window.y_from, window.y_to, window.rows, window.log_y);
    if (!columns.valid() || !rows.valid()) return all_points(data, series);
    std::vector<char> seen(window.rows + 2, 0); // rows -1 .. rows, reset after each run
    std::vector<size_t> touched;
    return walk_runs(data, series, columns, [&](const std::vector<PlotPoint>& run, std::vector<PlotPoint>& out) {
        for (const PlotPoint& point : run) {
            const auto row = static_cast<size_t>(rows.cell(point.y) + 1);
            if (seen[row]) continue;
            seen[row] = 1;
            touched.push_back(row);
            out.push_back(point);
        }
        for (const size_t row : touched) seen[row] = 0;
        touched.clear();
    });
}

} // namespace quorvex::graph
