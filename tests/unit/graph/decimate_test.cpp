// Drawing long series through per-pixel decimation: the same extremes in every pixel column, holes
// kept, full detail when zoomed in, and points alone kept once per pixel.
#include "graph/decimate.h"

#include <gtest/gtest.h>

#include <algorithm>
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

TEST(Decimate, AnAreaOfJaggedDataIsFilledUpToEachColumnsBandWithFewCorners) {
    // Up and down over the whole height at every point, with a hole in the middle.
    constexpr size_t points = 100000;
    ChartData data(2, 1, points);
    for (size_t p = 0; p < points; ++p) {
        data.set_x(0, p, static_cast<double>(p));
        if (p != 60000) data.set_y(0, p, static_cast<double>((p * 7919) % 1000));
    }
    const PixelWindow window{0, points - 1.0, 0, 1000, 1600, 800};
    const std::vector<PlotPoint> line = decimate_line(data, 0, window), fill = decimate_area_fill(data, 0, window);
    EXPECT_LE(fill.size(), 2u * 1602 + 1);
    // In each column the fill's edge stays inside the band the line covers there.
    const auto bands = column_extents(line, window);
    double travel = 0, line_travel = 0;
    for (size_t i = 0; i < fill.size(); ++i) {
        if (fill[i].is_hole()) continue;
        const long column = static_cast<long>(std::floor(fill[i].x / (points - 1.0) * 1600));
        EXPECT_GE(fill[i].y, bands.at(column).low) << i;
        EXPECT_LE(fill[i].y, bands.at(column).high) << i;
        if (i > 0 && !fill[i - 1].is_hole()) travel += std::abs(fill[i].y - fill[i - 1].y);
    }
    for (size_t i = 1; i < line.size(); ++i)
        if (!line[i].is_hole() && !line[i - 1].is_hole()) line_travel += std::abs(line[i].y - line[i - 1].y);
    // The line runs the whole height thousands of times; the fill's edge hardly moves.
    EXPECT_GT(line_travel, 1000.0 * 1000);
    EXPECT_LT(travel, 10.0 * 1000);
    // The same pieces as the line, starting and ending on the same points.
    ASSERT_EQ(std::count_if(fill.begin(), fill.end(), [](const PlotPoint& p) { return p.is_hole(); }), 1);
    const auto hole = std::find_if(fill.begin(), fill.end(), [](const PlotPoint& p) { return p.is_hole(); });
    EXPECT_EQ(fill.front().x, 0);
    EXPECT_EQ(fill.front().y, 0);
    EXPECT_EQ((hole - 1)->x, 59999);
    EXPECT_EQ((hole - 1)->y, data.y(0, 59999));
    EXPECT_EQ((hole + 1)->x, 60001);
    EXPECT_EQ((hole + 1)->y, data.y(0, 60001));
    EXPECT_EQ(fill.back().x, data.x(0, points - 1));
    EXPECT_EQ(fill.back().y, data.y(0, points - 1));
}

TEST(Decimate, AnAreaRunsThroughThePointsWhereTheyAreFewAndAtTheWindowsEdges) {
    // Fewer points than columns: the fill's edge is the data itself, hole and all.
    const ChartData sparse = noisy_wave(500);
    const PixelWindow whole{-10, 10, -2, 2, 800, 600};
    EXPECT_EQ(decimate_line(sparse, 0, whole).size(), 500u);
    EXPECT_EQ(decimate_area_fill(sparse, 0, whole), decimate_line(sparse, 0, whole));
    // Zoomed into a dense series: the edge leaves the window through the real points around it.
    const ChartData data = noisy_wave(1000000);
    const double from = data.x(0, 100000) + 1e-9, to = data.x(0, 100400);
    const std::vector<PlotPoint> fill = decimate_area_fill(data, 0, PixelWindow{from, to, -2, 2, 800, 600});
    const auto entry = std::find_if(fill.begin(), fill.end(), [&](const PlotPoint& p) { return p.x >= from; });
    ASSERT_TRUE(entry != fill.begin() && entry != fill.end());
    EXPECT_EQ(*(entry - 1), (PlotPoint{data.x(0, 100000), data.y(0, 100000)}));
    EXPECT_EQ(*entry, (PlotPoint{data.x(0, 100001), data.y(0, 100001)}));
}
