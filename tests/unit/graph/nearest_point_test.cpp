// The point a click labels: the nearest drawn point within reach, found without looking at every
// point of a long sweep, the same as looking at every point would find.
#include "graph/nearest_point.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace quorvex::graph;

namespace {

// Every point looked at, with the distance worked out afresh: what the finder must agree with.
std::optional<NearPoint> by_every_point(const ChartData& data, const PlotMapping& m, double x, double y, double reach) {
    const auto at = [](double v, double from, double to, bool log) {
        return log ? (std::log10(v) - std::log10(from)) / (std::log10(to) - std::log10(from)) : (v - from) / (to - from);
    };
    std::optional<NearPoint> best;
    for (size_t s = 0; s < data.series(); ++s)
        for (size_t p = 0; p < data.points(s); ++p) {
            const double vx = data.x(s, p), vy = data.y(s, p);
            if (ChartData::is_hole(vx) || ChartData::is_hole(vy)) continue;
            const double dx = at(vx, m.x_from, m.x_to, m.log_x) * m.width - x;
            const double dy = (1 - at(vy, m.y_from, m.y_to, m.log_y)) * m.height - y;
            const double d = std::hypot(dx, dy);
            if (d < reach && (!best || d < best->distance)) best = NearPoint{s, p, d};
        }
    return best;
}

} // namespace

TEST(NearestPoint, ClicksFindTheSamePointAsLookingAtEveryPoint) {
    // A long sweep (X ascending, holes in Y), and a cloud of points in no order.
    constexpr size_t sweep = 50000, cloud = 2000;
    ChartData data(std::vector<size_t>{sweep, cloud});
    std::mt19937 random(7);
    std::uniform_real_distribution<double> unit(0, 1);
    for (size_t p = 0; p < sweep; ++p) {
        const double x = 0.1 + 99.9 * static_cast<double>(p) / sweep;
        data.set_x(0, p, x);
        if (p % 100 != 50) data.set_y(0, p, 50 + 40 * std::sin(x) + unit(random));
    }
    for (size_t p = 0; p < cloud; ++p) {
        data.set_x(1, p, 0.1 + 99.9 * unit(random));
        data.set_y(1, p, 100 * unit(random));
    }
    const PointFinder finder(data);
    for (const bool log : {false, true}) {
        const PlotMapping mapping{0.1, 100, 1, 100, 800, 500, log, log};
        size_t found = 0;
        for (int click = 0; click < 150; ++click) {
            const double x = 800 * unit(random), y = 500 * unit(random);
            const auto fast = finder.nearest(mapping, x, y, 10), slow = by_every_point(data, mapping, x, y, 10);
            ASSERT_EQ(fast.has_value(), slow.has_value()) << x << " " << y;
            if (!fast) continue;
            ++found;
            EXPECT_EQ(fast->series, slow->series);
            EXPECT_EQ(fast->point, slow->point);
            EXPECT_NEAR(fast->distance, slow->distance, 1e-9);
        }
        EXPECT_GT(found, 25u); // the clicks did land near points, not only beside them
    }
}

TEST(NearestPoint, OnlyDrawnPointsWithinReachCount) {
    ChartData data(1, 1, 3);
    for (size_t p = 0; p < 3; ++p) data.set_x(0, p, static_cast<double>(p));
    data.set_y(0, 0, 0);
    data.set_y(0, 2, 2); // the middle point is a hole
    const PointFinder finder(data);
    const PlotMapping mapping{0, 2, 0, 2, 200, 200};
    EXPECT_FALSE(finder.nearest(mapping, 100, 100, 10)); // over the hole: nothing drawn there
    const auto first = finder.nearest(mapping, 3, 196, 10);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->point, 0u);
    EXPECT_DOUBLE_EQ(first->distance, 5);
    EXPECT_FALSE(finder.nearest(mapping, 3, 196, 5)); // exactly the reach away is too far
    EXPECT_EQ(finder.nearest(mapping, 199, 1, 10)->point, 2u);
    // A range shown backwards still finds its points.
    EXPECT_EQ(finder.nearest(PlotMapping{2, 0, 0, 2, 200, 200}, 1, 1, 10)->point, 2u);
}
