// Where a value of the graph is drawn in the plot area, and where a point label's box goes.
#include "graph/plot_frame.h"

#include <gtest/gtest.h>

using namespace quorvex::graph;

namespace {

// A plot area of 400 by 200 pixels at (60, 30) showing x -10..10 and y -1..3.
PlotFrame frame() {
    PlotFrame f;
    f.left = 60, f.top = 30, f.width = 400, f.height = 200;
    f.shown = {-10, 10, -1, 3};
    return f;
}

void expect_pixel(const std::optional<Pixel>& got, double x, double y) {
    ASSERT_TRUE(got);
    EXPECT_NEAR(got->x, x, 1e-9);
    EXPECT_NEAR(got->y, y, 1e-9);
}

} // namespace

TEST(PlotFrame, ValuesLandWhereTheAxesShowThemAlsoAfterAZoom) {
    PlotFrame f = frame();
    expect_pixel(to_pixel(f, -10, 3), 60, 30);  // top left
    expect_pixel(to_pixel(f, 10, -1), 460, 230); // bottom right: Y grows upwards
    expect_pixel(to_pixel(f, 0, 0), 260, 180);
    // Zoomed into x 0..5, y 0..1: the same value moves with its axes.
    f.shown = {0, 5, 0, 1};
    expect_pixel(to_pixel(f, 2.5, 0.25), 260, 180);
    EXPECT_FALSE(inside(f, *to_pixel(f, 6, 0.5))); // now beyond the right edge
    EXPECT_TRUE(inside(f, *to_pixel(f, 5, 1)));     // the corner itself is shown

    EXPECT_FALSE(to_pixel(f, k_chart_hole, 1));
    f.shown = {1, 1, 0, 1}; // an empty range places nothing
    EXPECT_FALSE(to_pixel(f, 1, 0.5));
}

TEST(PlotFrame, LogarithmicAxesGoByDecades) {
    PlotFrame f = frame();
    f.shown = {1, 1000, 0.1, 10};
    f.log_x = f.log_y = true;
    expect_pixel(to_pixel(f, 10, 1), 60 + 400.0 / 3, 130);
    expect_pixel(to_pixel(f, 1000, 0.1), 460, 230);
    EXPECT_FALSE(to_pixel(f, 0, 1)); // zero has no place on a logarithmic axis
    EXPECT_FALSE(to_pixel(f, 10, -1));
}

TEST(PlotFrame, APointLabelSitsBesideItsPointAndTurnsAtTheEdges) {
    const PlotFrame f = frame();
    const Pixel middle = place_point_label(f, {200, 150}, 80, 20);
    EXPECT_DOUBLE_EQ(middle.x, 210); // right of the point
    EXPECT_DOUBLE_EQ(middle.y, 120); // its lower edge 10 pixels above it
    const Pixel right = place_point_label(f, {440, 150}, 80, 20);
    EXPECT_DOUBLE_EQ(right.x, 350); // would leave on the right: to the left of the point
    EXPECT_DOUBLE_EQ(right.y, 120);
    const Pixel top = place_point_label(f, {200, 40}, 80, 20);
    EXPECT_DOUBLE_EQ(top.x, 210);
    EXPECT_DOUBLE_EQ(top.y, 50); // would leave at the top: below the point
}
