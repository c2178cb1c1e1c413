#pragma once
#include "chart_data.h"

#include <cstddef>
#include <vector>

namespace quorvex::graph {

// What a chart shows of a series: the ranges of its axes and the size of its plot area in pixels
// (or finer: more columns only keep more points).
struct PixelWindow {
    double x_from = 0, x_to = 1;
    double y_from = 0, y_to = 1; // used for series drawn as points alone
    size_t columns = 1, rows = 1;
    bool log_x = false, log_y = false;
};

// One point to draw; a hole (k_chart_hole in X and Y) breaks the line there.
struct PlotPoint {
    double x = k_chart_hole, y = k_chart_hole;
    bool is_hole() const { return ChartData::is_hole(x) || ChartData::is_hole(y); }
};

// The points of a series drawn as a line that give the same picture in `window`: of each run of
// consecutive points inside one pixel column, the first, the lowest, the highest and the last, in
// the order they came. Every segment of the line then covers the same pixels. Points left and right
// of the window count as one column on each side, so lines still run out of the picture as before.
// Holes stay holes (several in a row are one). A million points come back as a few thousand.
std::vector<PlotPoint> decimate_line(const ChartData& data, size_t series, const PixelWindow& window);

// The same for a series drawn as points alone: of each run inside one pixel column, one point for
// each pixel row it touches.
std::vector<PlotPoint> decimate_points(const ChartData& data, size_t series, const PixelWindow& window);

} // namespace quorvex::graph
