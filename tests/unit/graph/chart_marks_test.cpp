// The marks a 2-D chart draws beside its series: HiLo bars, a histogram's intervals, notes taken by
// a click, the margins, and the progress shown while a graph is computed.
#include "graph/hilo_bars.h"
#include "graph/interval_labels.h"
#include "graph/note_hit.h"
#include "graph/progress_steps.h"
#include "graph/view_2d.h"

#include <gtest/gtest.h>

#include <string>

using namespace quorvex::graph;

namespace {

// Series 0 high, 1 low, 2 open, 3 close over X = 10, 20, 30.
ChartData prices() {
    ChartData data(1, 4, 3);
    const double rows[4][3] = {{12, 15, 14}, {8, 11, 9}, {9, 14, 13}, {11, 12, 10}};
    for (size_t p = 0; p < 3; ++p) {
        data.set_x(0, p, 10.0 * static_cast<double>(p + 1));
        for (size_t s = 0; s < 4; ++s) data.set_y(s, p, rows[s][p]);
    }
    return data;
}

} // namespace

TEST(HiLoBars, EachPointWithAHighAndALowIsABarAndHolesLeaveOutOnlyWhatTheyHide) {
    ChartData data = prices();
    data.set_y(3, 1, k_chart_hole); // no close on the second day
    data.set_y(1, 2, k_chart_hole); // no low on the third: no bar
    const std::vector<HiLoBar> bars = hilo_bars(data, true);
    ASSERT_EQ(bars.size(), 2u);
    EXPECT_DOUBLE_EQ(bars[0].x, 10);
    EXPECT_DOUBLE_EQ(bars[0].high, 12);
    EXPECT_DOUBLE_EQ(bars[0].low, 8);
    EXPECT_DOUBLE_EQ(*bars[0].open, 9);
    EXPECT_DOUBLE_EQ(*bars[0].close, 11);
    EXPECT_EQ(bars[1].point, 1u);
    EXPECT_TRUE(bars[1].open);
    EXPECT_FALSE(bars[1].close);
    // A plain HiLo chart has no ticks, and one series is no chart of bars.
    EXPECT_FALSE(hilo_bars(prices(), false)[0].open);
    EXPECT_TRUE(hilo_bars(ChartData(1, 1, 3), false).empty());
}

TEST(HiLoBars, TheLinesStandAtTheirXWithTheOpenTickLeftAndTheCloseTickRight) {
    // X 0..40 over 400 pixels, Y 0..20 over 200 pixels, the area's corner at (50, 10).
    PlotFrame frame{50, 10, 400, 200, ChartBounds{0, 40, 0, 20}, false, false};
    const std::vector<PixelSegment> lines = hilo_segments(hilo_bars(prices(), true), frame);
    ASSERT_EQ(lines.size(), 9u); // three bars of three lines
    // The first bar: X 10 is pixel 150; low 8 is 210 - 80, high 12 is 210 - 120.
    EXPECT_DOUBLE_EQ(lines[0].from.x, 150);
    EXPECT_DOUBLE_EQ(lines[0].to.x, 150);
    EXPECT_DOUBLE_EQ(lines[0].from.y, 130);
    EXPECT_DOUBLE_EQ(lines[0].to.y, 90);
    // Bars 100 pixels apart: ticks of the longest length, 12 pixels.
    const double tick = hilo_tick_length(hilo_bars(prices(), true), frame);
    EXPECT_DOUBLE_EQ(tick, 12);
    EXPECT_DOUBLE_EQ(lines[1].from.x, 150 - tick); // open, to the left, at 9
    EXPECT_DOUBLE_EQ(lines[1].from.y, 120);
    EXPECT_DOUBLE_EQ(lines[2].to.x, 150 + tick); // close, to the right, at 11
    EXPECT_DOUBLE_EQ(lines[2].to.y, 100);
    // Bars crowded 15 pixels apart get ticks of a third of that, and never under 2 pixels.
    frame.width = 60;
    EXPECT_DOUBLE_EQ(hilo_tick_length(hilo_bars(prices(), true), frame), 5);
    frame.width = 2;
    EXPECT_DOUBLE_EQ(hilo_tick_length(hilo_bars(prices(), true), frame), 2);
}

TEST(IntervalLabels, EachBarReadsTheIntervalItStandsFor) {
    ChartData data(2, 1, 4);
    const double xs[] = {5, 15, 25, 35};
    for (size_t p = 0; p < 4; ++p) data.set_x(0, p, xs[p]), data.set_y(0, p, 1.0 + static_cast<double>(p));
    data.set_y(0, 2, k_chart_hole);
    const auto number = [](double value) { return std::to_string(static_cast<int>(value)); };
    EXPECT_DOUBLE_EQ(*histogram_half_width(data, 0), 5);
    const std::vector<std::string> labels = interval_labels(data, 0, number);
    ASSERT_EQ(labels.size(), 4u);
    EXPECT_EQ(labels[0], "0 to 10");
    EXPECT_EQ(labels[1], "10 to 20");
    EXPECT_EQ(labels[2], ""); // no bar there
    EXPECT_EQ(labels[3], "30 to 40");
    // A later X closer to the first than the second one narrows every bar.
    data.set_x(0, 3, 9);
    EXPECT_DOUBLE_EQ(*histogram_half_width(data, 0), 2);
    EXPECT_FALSE(histogram_half_width(ChartData(2, 1, 1), 0));
    // A Pareto chart numbers its bars.
    number_points_by_index(data);
    EXPECT_DOUBLE_EQ(data.x(0, 0), 0);
    EXPECT_DOUBLE_EQ(data.x(0, 3), 3);
}

TEST(NoteHit, AClickTakesTheNearestNoteWithinTwentyPixelsBothWaysButNoLabel) {
    GraphData graph("g");
    graph.Notes.emplace_back("far", 100, 100, -1, true);
    graph.Notes.emplace_back("near", 130, 112, -1, true);
    graph.Notes.emplace_back(" (1 , 2) ", 125, 110, -1, false); // a label at series 125, point 110
    GraphNote* taken = note_near(graph, 125, 110);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->Text, "near");
    EXPECT_EQ(note_near(graph, 100, 121), nullptr); // 21 pixels below the first, 30 left of the second
    ASSERT_TRUE(note_near(graph, 80, 80));
    EXPECT_EQ(note_near(graph, 80, 80)->Text, "far");
    EXPECT_EQ(note_near(graph, 79, 100), nullptr);
}

TEST(Margins2D, TheMarginsFallBackToTheDefaultsAndMoveTogether) {
    GraphData graph("g");
    EXPECT_EQ(margins_of(graph), (Margins2D{75, 16, 67, 9}));
    EXPECT_EQ(margin_change(graph), Margins2D{});
    change_margins(graph, k_margin_step);
    EXPECT_EQ(margins_of(graph), (Margins2D{100, 41, 92, 34}));
    EXPECT_EQ(margin_change(graph), (Margins2D{25, 25, 25, 25}));
    change_margins(graph, -2 * k_margin_step);
    EXPECT_EQ(margins_of(graph), (Margins2D{50, 1, 42, 1})); // never below one pixel
    EXPECT_EQ(margin_change(graph), (Margins2D{-25, -15, -25, -8}));
    save_default_margins(graph);
    change_margins(graph, k_margin_step);
    set_default_margins(graph);
    // The saved defaults are drawn, not the chart's usual layout.
    EXPECT_EQ(margins_of(graph), (Margins2D{50, 1, 42, 1}));
    EXPECT_EQ(margin_change(graph), (Margins2D{-25, -15, -25, -8}));
    // A side with neither a margin nor a default is the chart's automatic one.
    graph.DefaultMarginTop2D = 0;
    graph.MarginTop2D = 0;
    EXPECT_EQ(margins_of(graph).top, 0);
    EXPECT_EQ(margin_change(graph).top, 0);
}

TEST(Orientation2D, TheDefaultsComeBackAndTheShownOnesBecomeTheDefaults) {
    GraphData graph("g");
    graph.Depth = 40, graph.Inclination = 5, graph.Rotation = 70;
    save_default_orientation_2d(graph);
    graph.Depth = 1, graph.Inclination = 2, graph.Rotation = 3;
    set_default_orientation_2d(graph);
    EXPECT_EQ(graph.Depth, 40);
    EXPECT_EQ(graph.Inclination, 5);
    EXPECT_EQ(graph.Rotation, 70);
}

TEST(ProgressSteps, FewStepsMoveByTheirShareManyStepsByWholePercents) {
    ProgressSteps four(4);
    int changes = 0;
    for (int i = 0; i < 4; ++i) changes += four.step();
    EXPECT_EQ(changes, 4);
    EXPECT_EQ(four.percent(), 100);
    ProgressSteps many(1000);
    changes = 0;
    for (int i = 0; i < 1000; ++i) changes += many.step();
    EXPECT_GE(changes, 99); // one redraw per percent, not per step
    EXPECT_LE(changes, 100);
    EXPECT_GE(many.percent(), 99);
    ProgressSteps none(0);
    EXPECT_TRUE(none.step());
    EXPECT_EQ(none.percent(), 100);
}

TEST(HiLoBars, ACandlesBodyRunsFromOpenToCloseAndIsHollowWhenThePriceRose) {
    PlotFrame frame{0, 0, 400, 200, ChartBounds{0, 40, 0, 20}, false, false};
    const std::vector<HiLoBar> bars = hilo_bars(prices(), true);
    const std::vector<PixelBox> bodies = candle_bodies(bars, frame);
    ASSERT_EQ(bodies.size(), 3u);
    // Day one opened at 9 and closed at 11: rose; from pixel 200 - 110 to 200 - 90.
    EXPECT_TRUE(bodies[0].rising);
    EXPECT_NEAR(bodies[0].top, 90, 1e-9);
    EXPECT_NEAR(bodies[0].height, 20, 1e-9);
    EXPECT_DOUBLE_EQ(bodies[0].left + bodies[0].width / 2, 100); // centred on its X
    EXPECT_FALSE(bodies[2].rising); // opened at 13, closed at 10
    // The candle's line has no ticks.
    EXPECT_EQ(hilo_segments(bars, frame, false).size(), 3u);
}
