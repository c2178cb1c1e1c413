#include "hilo_bars.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quorvex::graph {

std::vector<HiLoBar> hilo_bars(const ChartData& data, bool open_close) {
    std::vector<HiLoBar> bars;
    if (data.series() < 2) return bars;
    const auto value = [&data](size_t series, size_t point) -> std::optional<double> {
        if (series >= data.series() || point >= data.points(series)) return std::nullopt;
        const double y = data.y(series, point);
        if (ChartData::is_hole(y)) return std::nullopt;
        return y;
    };
    for (size_t p = 0; p < data.points(0); ++p) {
        const double x = data.x(0, p);
        const std::optional<double> high = value(0, p), low = value(1, p);
        if (ChartData::is_hole(x) || !high || !low) continue;
        HiLoBar bar{p, x, *high, *low, std::nullopt, std::nullopt};
        if (open_close) bar.open = value(2, p), bar.close = value(3, p);
        bars.push_back(bar);
    }
    return bars;
}

double hilo_tick_length(const std::vector<HiLoBar>& bars, const PlotFrame& frame) {
    std::vector<double> columns;
    for (const HiLoBar& bar : bars)
        if (const std::optional<Pixel> at = to_pixel(frame, bar.x, bar.low)) columns.push_back(at->x);
    std::sort(columns.begin(), columns.end());
    double narrowest = std::numeric_limits<double>::infinity();
    for (size_t i = 1; i < columns.size(); ++i)
        if (columns[i] > columns[i - 1]) narrowest = std::min(narrowest, columns[i] - columns[i - 1]);
    if (!std::isfinite(narrowest)) return 12;
    return std::clamp(narrowest / 3, 2.0, 12.0);
}

std::vector<PixelSegment> hilo_segments(const std::vector<HiLoBar>& bars, const PlotFrame& frame, bool ticks) {
    std::vector<PixelSegment> segments;
    const double tick = hilo_tick_length(bars, frame);
    for (const HiLoBar& bar : bars) {
        const std::optional<Pixel> high = to_pixel(frame, bar.x, bar.high), low = to_pixel(frame, bar.x, bar.low);
        if (!high || !low) continue;
        segments.push_back({*low, *high});
        if (!ticks) continue;
        if (bar.open)
            if (const std::optional<Pixel> at = to_pixel(frame, bar.x, *bar.open))
                segments.push_back({Pixel{at->x - tick, at->y}, *at});
        if (bar.close)
            if (const std::optional<Pixel> at = to_pixel(frame, bar.x, *bar.close))
                segments.push_back({*at, Pixel{at->x + tick, at->y}});
    }
    return segments;
}

std::vector<PixelBox> candle_bodies(const std::vector<HiLoBar>& bars, const PlotFrame& frame) {
    std::vector<PixelBox> bodies;
    const double tick = hilo_tick_length(bars, frame);
    for (const HiLoBar& bar : bars) {
        if (!bar.open || !bar.close) continue;
        const std::optional<Pixel> open = to_pixel(frame, bar.x, *bar.open), close = to_pixel(frame, bar.x, *bar.close);
        if (!open || !close) continue;
        const double top = std::min(open->y, close->y);
        bodies.push_back({open->x - tick, top, 2 * tick, std::max(open->y, close->y) - top, *bar.close >= *bar.open});
    }
    return bodies;
}

} // namespace quorvex::graph
