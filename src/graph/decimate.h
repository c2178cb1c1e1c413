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
    bool operator==(const PlotPoint&) const = default;
};

// The points of a series drawn as a line that give the same picture in `window`: of each run of
// consecutive points inside one pixel column, the first, the lowest, the highest and the last, in
// the order they came. Every segment of the line then covers the same pixels. Points left and right
// of the window count as one column on each side, so lines still run out of the picture as before.
// Holes stay holes (several in a row are one). A million points come back as a few thousand.
std::vector<PlotPoint> decimate_line(const ChartData& data, size_t series, const PixelWindow& window);

// The upper edge of the fill of a series drawn as an area (filled from its line down), to go with
// decimate_line's line drawn over it. Within one pixel column the line covers every row from the
// column's lowest to its highest point, so the fill only has to reach somewhere in that band: the
// edge runs level through each column and moves only as far as the next column's band makes it.
// Jagged data, whose line runs up and down the whole height in every column, so gets a fill with a
// few corners instead of thousands of tall edges (which painters fill slowly). Where a point has no
// neighbour in the next column (sparse data, the window's edges), the edge runs through the points
// themselves. Holes stay holes, as in decimate_line, so both give the same pieces.
std::vector<PlotPoint> decimate_area_fill(const ChartData& data, size_t series, const PixelWindow& window);

// The same for a series drawn as points alone: of each run inside one pixel column, one point for
// each pixel row it touches.
std::vector<PlotPoint> decimate_points(const ChartData& data, size_t series, const PixelWindow& window);

} // namespace quorvex::graph
