// Drawing long series through per-pixel decimation: the same extremes in every pixel column, holes
// kept, full detail when zoomed in, and points alone kept once per pixel.
#include "graph/decimate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

using namespace quorvex::graph;

namespace {

// A noisy wave of a million points from -10 to 10, with a hole at the 500,000th.
ChartData noisy_wave(size_t points) {
    ChartData data(2, 1, points);
    for (size_t p = 0; p < points; ++p) {
        const double x = -10 + 20.0 * static_cast<double>(p) / static_cast<double>(points - 1);
        data.set_x(0, p, x);
        if (p != points / 2) data.set_y(0, p, std::sin(x) + 0.3 * std::sin(997.0 * x * x));
    }
    return data;
}

struct Extent {
    double low = INFINITY, high = -INFINITY;
};
std::map<long, Extent> column_extents(const std::vector<PlotPoint>& points, const PixelWindow& window) {
    std::map<long, Extent> extents;
    for (const PlotPoint& point : points) {
        if (point.is_hole()) continue;
        const long column = static_cast<long>(std::floor((point.x - window.x_from) / (window.x_to - window.x_from) *
                                                         static_cast<double>(window.columns)));
        Extent& extent = extents[column];
        extent.low = std::min(extent.low, point.y);
        extent.high = std::max(extent.high, point.y);
    }
    return extents;
}

std::vector<PlotPoint> everything(const ChartData& data) {
    std::vector<PlotPoint> points;
    for (size_t p = 0; p < data.points(0); ++p) points.push_back({data.x(0, p), data.y(0, p)});
    return points;
}

} // namespace

TEST(Decimate, AMillionPointsKeepEveryColumnsExtremesAndTheirHole) {
    const ChartData data = noisy_wave(1000000);
    const PixelWindow window{-10, 10, -2, 2, 800, 600};
    const std::vector<PlotPoint> drawn = decimate_line(data, 0, window);
    EXPECT_LE(drawn.size(), 4u * 802 + 1);
    EXPECT_GE(drawn.size(), 800u);
    // The first and last points, and each column's lowest and highest, are those of the data.
    EXPECT_EQ(drawn.front().x, -10);
    EXPECT_EQ(drawn.back().x, 10);
    const auto full = column_extents(everything(data), window), kept = column_extents(drawn, window);
    ASSERT_EQ(full.size(), kept.size());
    for (const auto& [column, extent] : full) {
        EXPECT_EQ(kept.at(column).low, extent.low) << column;
        EXPECT_EQ(kept.at(column).high, extent.high) << column;
    }
    // The hole stays one hole, between the points on either side of it.
    size_t holes = 0, at = 0;
    for (size_t i = 0; i < drawn.size(); ++i)
        if (drawn[i].is_hole()) ++holes, at = i;
    ASSERT_EQ(holes, 1u);
    EXPECT_EQ(drawn[at - 1].x, data.x(0, 499999));
    EXPECT_EQ(drawn[at + 1].x, data.x(0, 500001));
}

TEST(Decimate, ZoomedInEveryPointIsKeptAndOutsideOnlyWhatLeadsOut) {
    const ChartData data = noisy_wave(1000000);
    // About 400 points in view over 800 columns: each its own column, all kept.
    const double from = data.x(0, 100000), to = data.x(0, 100400);
    const PixelWindow window{from, to, -2, 2, 800, 600};
    const std::vector<PlotPoint> drawn = decimate_line(data, 0, window);
    size_t inside = 0;
    for (const PlotPoint& point : drawn) inside += point.x >= from && point.x < to;
    EXPECT_EQ(inside, 400u);
    // Outside, each run keeps at most four points, the last before the view among them: one run on
    // the left, two on the right around the hole.
    EXPECT_LE(drawn.size(), 400u + 4 + (4 + 1 + 4));
    bool found = false;
    for (const PlotPoint& point : drawn) found = found || point.x == data.x(0, 99999);
    EXPECT_TRUE(found);
}

TEST(Decimate, PointsAloneAreKeptOncePerPixel) {
    ChartData data(2, 1, 10000);
    for (size_t p = 0; p < 10000; ++p) {
        data.set_x(0, p, static_cast<double>(p % 10) / 1000); // all in the first column
        data.set_y(0, p, static_cast<double>(p % 7));        // seven rows
    }
    const std::vector<PlotPoint> drawn = decimate_points(data, 0, PixelWindow{0, 10, 0, 7, 100, 7});
    ASSERT_EQ(drawn.size(), 7u);
    for (size_t i = 0; i < drawn.size(); ++i) EXPECT_EQ(drawn[i].y, static_cast<double>(i));
}
