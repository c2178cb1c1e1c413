#pragma once
#include "chart_data.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace quorvex::graph {

// Where values land in a chart's plot area: each axis's shown range over the area's width and
// height in pixels, X growing to the right and Y upwards (pixel rows count downwards).
struct PlotMapping {
    double x_from = 0, x_to = 1, y_from = 0, y_to = 1;
    double width = 1, height = 1;
    bool log_x = false, log_y = false;
};

struct NearPoint {
    size_t series = 0, point = 0;
    double distance = 0; // in pixels
};

// Finds the point of a chart nearest to a pixel, for a click that labels it. A series whose X
// ascends (every sweep of a function, most data sets) is searched by halving for the points within
// reach in X; only others are looked through point by point. Made once per data, asked per click.
class PointFinder {
public:
    explicit PointFinder(const ChartData& data);

    // The drawn point nearest to (`x`, `y`), pixels from the plot area's top left corner, if one lies
    // less than `reach` pixels away; of equally near points the first series' and first point's.
    std::optional<NearPoint> nearest(const PlotMapping& mapping, double x, double y, double reach) const;

private:
    const ChartData& m_data;
    std::vector<bool> m_ascending; // per series: X set everywhere and never falling
};

} // namespace quorvex::graph
