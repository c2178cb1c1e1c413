// Chart numbers: holes, the shown range of each kind of graph, default colours and styles.
#include "graph/chart_data.h"
#include "graph/graph_types.h"

#include <gtest/gtest.h>

using namespace quorvex::graph;

TEST(ChartData, SharedOrOwnXAndHolesLeftOutOfTheExtent) {
    ChartData shared(1, 2, 3);
    EXPECT_TRUE(ChartData::is_hole(shared.y(1, 2))); // everything starts as a hole
    for (size_t p = 0; p < 3; ++p) shared.set_x(1, p, static_cast<double>(p)); // one row for all
    shared.set_y(0, 0, 4);
    shared.set_y(0, 2, -2);
    shared.set_y(1, 1, 10);
    EXPECT_EQ(shared.x(0, 2), 2.0);
    shared.set_y(7, 0, 1); // outside: ignored
    auto extent = data_extent(shared);
    ASSERT_TRUE(extent);
    EXPECT_EQ(extent->x_min, 0);
    EXPECT_EQ(extent->x_max, 2);
    EXPECT_EQ(extent->y_min, -2);
    EXPECT_EQ(extent->y_max, 10);

    ChartData own(2, 2, 2);
    own.set_x(0, 0, 5);
    own.set_y(0, 0, 1);
    own.set_x(1, 0, -5); // the other series' X is its own
    EXPECT_EQ(own.x(0, 0), 5);
    EXPECT_TRUE(ChartData::is_hole(own.x(0, 1)));
    extent = data_extent(own);
    ASSERT_TRUE(extent);
    EXPECT_EQ(extent->x_min, 5); // the point of series 1 has no Y
    EXPECT_FALSE(data_extent(ChartData(1, 1, 4)));
}

TEST(ChartData, ShownRangeKeepsAnEndAtZeroAndWidensBarsFromZero) {
    ChartData curve(1, 1, 3);
    const double xs[] = {0, 5, 10}, ys[] = {1, 3, 5};
    for (size_t p = 0; p < 3; ++p) {
        curve.set_x(0, p, xs[p]);
        curve.set_y(0, p, ys[p]);
    }
    auto shown = shown_bounds(curve, graph_type::Plot);
    ASSERT_TRUE(shown);
    EXPECT_DOUBLE_EQ(shown->x_min, 0);    // at zero: stays
    EXPECT_DOUBLE_EQ(shown->x_max, 10.5); // 5 % of the range out
    EXPECT_DOUBLE_EQ(shown->y_min, 1);    // positive: stays
    EXPECT_DOUBLE_EQ(shown->y_max, 5.2);

    curve.set_y(0, 0, -3);
    shown = shown_bounds(curve, graph_type::Plot);
    EXPECT_DOUBLE_EQ(shown->y_min, -3.4);
    EXPECT_DOUBLE_EQ(shown->y_max, 5.4);

    shown = shown_bounds(curve, graph_type::Hystogram);
    EXPECT_DOUBLE_EQ(shown->x_min, -5); // one bar gap on each side
    EXPECT_DOUBLE_EQ(shown->x_max, 15);
    // Counts of 1, 3 and 5: the axis starts at 0, so the bar of 1 has a height.
    curve.set_y(0, 0, 1);
    for (const int bars : {graph_type::Hystogram, graph_type::Pareto}) {
        shown = shown_bounds(curve, bars);
        EXPECT_DOUBLE_EQ(shown->y_min, 0);
        EXPECT_DOUBLE_EQ(shown->y_max, 5.25);
    }
}

TEST(ChartData, DefaultColoursAndSeriesStyles) {
    EXPECT_EQ(default_series_color(0), 0xFFu);
    EXPECT_EQ(default_series_color(14), 0xFF00u);
    EXPECT_EQ(default_series_color(15), default_series_color(1)); // round again from 1
    EXPECT_EQ(default_series_color(29), default_series_color(1));

    SeriesStyle style = series_style(1, graph_type::Plot, std::nullopt, 0, 0xFFFFFF);
    EXPECT_EQ(style.color, 0xFF0000u);
    EXPECT_EQ(style.point_color, style.color);
    EXPECT_EQ(style.line_width, 1);
    EXPECT_EQ(style.point_symbol, 5);
    EXPECT_EQ(style.line_pattern, 2);
    EXPECT_EQ(series_style(0, graph_type::Scatter, 0x123456u, 3, 0).line_pattern, 1);
    EXPECT_EQ(series_style(4, graph_type::Line, std::nullopt, 1, 0).point_symbol, 1);
    // A series as dark as the data area's background would vanish: white instead.
    EXPECT_EQ(series_style(5, graph_type::Plot, std::nullopt, 1, 0).color, 0xFFFFFFu);
    EXPECT_EQ(series_style(2, graph_type::Plot, 0x8000u, 2, 0x8000u).color, 0xFFFFFFu);
}
