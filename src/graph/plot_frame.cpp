#include "plot_frame.h"

#include <cmath>

namespace quorvex::graph {

namespace {

// The share of the way from `low` to `high` at which `value` stands, on a linear or a
// logarithmic scale.
std::optional<double> share(double value, double low, double high, bool log) {
    if (ChartData::is_hole(value)) return std::nullopt;
    if (log) {
        if (value <= 0 || low <= 0 || high <= 0) return std::nullopt;
        value = std::log10(value), low = std::log10(low), high = std::log10(high);
    }
    if (!(high > low)) return std::nullopt;
    return (value - low) / (high - low);
}

} // namespace

std::optional<Pixel> to_pixel(const PlotFrame& frame, double x, double y) {
    const std::optional<double> across = share(x, frame.shown.x_min, frame.shown.x_max, frame.log_x);
    const std::optional<double> up = share(y, frame.shown.y_min, frame.shown.y_max, frame.log_y);
    if (!across || !up) return std::nullopt;
    return Pixel{frame.left + *across * frame.width, frame.top + (1 - *up) * frame.height};
}

bool inside(const PlotFrame& frame, Pixel pixel) {
    // Half a pixel of slack: a point on the edge of the range maps onto the edge give or take
    // the rounding of the division.
    constexpr double slack = 0.5;
    return pixel.x >= frame.left - slack && pixel.x <= frame.left + frame.width + slack && pixel.y >= frame.top - slack &&
           pixel.y <= frame.top + frame.height + slack;
}

Pixel place_point_label(const PlotFrame& frame, Pixel point, double width, double height, double offset) {
    Pixel corner{point.x + offset, point.y - offset - height};
    if (corner.x + width > frame.left + frame.width) corner.x = point.x - offset - width;
    if (corner.y < frame.top) corner.y = point.y + offset;
    return corner;
}

} // namespace quorvex::graph
