#pragma once
#include "chart_data.h"

#include <optional>

namespace quorvex::graph {

// The plot area of a drawn chart, in the chart's pixels, with the range its axes show at the
// moment (after any zoom or pan).
struct PlotFrame {
    double left = 0, top = 0, width = 0, height = 0;
    ChartBounds shown;
    bool log_x = false, log_y = false;
};

struct Pixel {
    double x = 0, y = 0;
};

// Where the value (x, y) is drawn: X grows to the right, Y upwards, a logarithmic axis in
// decades. None for a hole, for an axis whose range is empty, and for a value at or below zero
// on a logarithmic axis.
std::optional<Pixel> to_pixel(const PlotFrame& frame, double x, double y);

// Whether a pixel lies in the plot area, edges included.
bool inside(const PlotFrame& frame, Pixel pixel);

// The top left corner of a point label's box of `width` by `height` pixels: `offset` pixels to
// the right of and above its point, or turned to the left or below the point where the box
// would leave the plot area that way.
Pixel place_point_label(const PlotFrame& frame, Pixel point, double width, double height, double offset = 10);

} // namespace quorvex::graph
