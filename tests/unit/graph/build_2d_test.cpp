// Building a 2-D graph onto the recording chart: styles and titles, the shown range, logarithmic
// axes refused where they can not be drawn, notes.
#include "graph/build_2d.h"

#include "engine/parser.h"
#include "engine/reporter.h"
#include "functions/builtin_functions.h"
#include "graph/graph_types.h"
#include "graph/interval_labels.h"

#include <gtest/gtest.h>

using namespace quorvex;
using namespace quorvex::graph;

namespace {

struct Told : engine::Reporter {
    std::vector<std::string> texts;
    bool answer = true;
    void report(std::string_view text, std::string_view, engine::MessageKind) override { texts.emplace_back(text); }
    bool ask(std::string_view text, std::string_view) override {
        texts.emplace_back(text);
        return answer;
    }
};

struct Build : ::testing::Test {
    engine::Parser parser{&functions::builtin_functions(), QUORVEX_DATA_DIR};
    GraphData graph{"squares"};
    RecordingChart chart;
    Told told;
    SweepReport report;

    void SetUp() override {
        parser.eval_exp("sq[x] = x^2", true, false, false);
        graph.Functions.emplace_back("sq[x]", "x^2");
        graph.XAxisVar = VariableCopy(engine::Variable("x", engine::complex(-2, 0), engine::complex(2, 0), 5));
    }
};

} // namespace

TEST_F(Build, HandsTheChartDataStylesTitlesRangeAndNotes) {
    graph.Header = "Squares";
    graph.XAxisTitle = "x";
    graph.Notes.emplace_back("minimum", 120, 80, -1, true);
    const SeriesLook look{0x0000FFu, 3};
    ASSERT_TRUE(build_2d(parser, graph, std::span(&look, 1), chart, report, &told));
    EXPECT_EQ(chart.type, graph_type::Plot);
    ASSERT_EQ(chart.data.series(), 1u);
    EXPECT_DOUBLE_EQ(chart.data.y(0, 0), 4);
    EXPECT_DOUBLE_EQ(chart.data.y(0, 2), 0);
    ASSERT_EQ(chart.styles.size(), 1u);
    EXPECT_EQ(chart.styles[0].color, 0x0000FFu);
    EXPECT_EQ(chart.styles[0].line_width, 3);
    EXPECT_EQ(chart.titles[0], "Squares");
    EXPECT_EQ(chart.titles[2], "x");
    ASSERT_TRUE(chart.bounds);
    EXPECT_DOUBLE_EQ(chart.bounds->x_min, -2.2);
    EXPECT_DOUBLE_EQ(chart.bounds->y_min, 0);
    EXPECT_DOUBLE_EQ(chart.bounds->y_max, 4.2);
    EXPECT_TRUE(chart.grid);
    ASSERT_EQ(chart.texts.size(), 1u);
    EXPECT_TRUE(chart.texts[0].note);
    EXPECT_EQ(chart.texts[0].x, 120);
    EXPECT_EQ(graph.Notes.front().Index, 0);
    EXPECT_TRUE(told.texts.empty());
}

TEST_F(Build, LogarithmicAxesOnlyWhereTheyCanBeDrawn) {
    // Y from 0: a logarithmic Y axis can not show it; the flag stays for a later range.
    graph.YAxisLogarithmic = 1;
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    EXPECT_FALSE(chart.log_y);
    EXPECT_EQ(graph.YAxisLogarithmic, 1);
    ASSERT_EQ(told.texts.size(), 1u);
    EXPECT_NE(told.texts[0].find("zero or below"), std::string::npos);

    // Positive values: drawn logarithmic, the range is the values themselves.
    graph.XAxisVar = VariableCopy(engine::Variable("x", engine::complex(1, 0), engine::complex(10, 0), 10));
    graph.XAxisLogarithmic = 1;
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    EXPECT_TRUE(chart.log_x);
    EXPECT_TRUE(chart.log_y);
    EXPECT_DOUBLE_EQ(chart.bounds->x_min, 1);
    EXPECT_DOUBLE_EQ(chart.bounds->y_max, 100);

    // A pie has no logarithmic axis: refused and cleared.
    graph.Type = graph_type::Pie;
    told.texts.clear();
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    EXPECT_EQ(graph.XAxisLogarithmic, 0);
    EXPECT_EQ(graph.YAxisLogarithmic, 0);
    EXPECT_EQ(told.texts.size(), 2u);
    EXPECT_EQ(chart.type, graph_type::Pie);
}

TEST_F(Build, BothBranchesAreAskedForOnceAndTheAnswerKept) {
    parser.eval_exp("root[x] = SQRT(x)", true, false, false);
    graph.Functions.assign(1, engine::Function("root[x]", "SQRT(x)"));
    graph.XAxisVar = VariableCopy(engine::Variable("x", engine::complex(0, 0), engine::complex(4, 0), 5));
    told.answer = false;
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    ASSERT_EQ(told.texts.size(), 1u);
    EXPECT_EQ(told.texts[0],
              "Two solutions were found for one or more expressions, would you like to graph both solutions?");
    EXPECT_EQ(chart.data.points(), 5u); // the positive branch alone
    EXPECT_FALSE(graph.GraphTwoSolutions);
    EXPECT_FALSE(graph.AskGraphTwoSolutions);
    report = {};
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    EXPECT_EQ(told.texts.size(), 1u); // not asked again
}

TEST_F(Build, LabelsStayOnTheirPointsWhileThePointsKeepTheirValues) {
    // x = -1 is point 1 of the only series, where sq gives 1.
    graph.Notes.emplace_back(" (-1 , 1) ", 0, 1, -1, false);
    graph.Notes.emplace_back(" (0 , 5) ", 0, 2, -1, false); // the point has 0 now
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report));
    ASSERT_EQ(chart.texts.size(), 1u);
    EXPECT_FALSE(chart.texts[0].note);
    EXPECT_EQ(chart.texts[0].series, 0u);
    EXPECT_EQ(chart.texts[0].point, 1u);
    ASSERT_EQ(graph.Notes.size(), 1u); // the stale label went
    EXPECT_EQ(graph.Notes.front().Index, 0);
}

TEST_F(Build, BarsBeyondWhatAChartLaysOutAreRefusedBeforeAnyWork) {
    graph.Type = graph_type::Bar;
    StrDataPnts set;
    set.SetName("many");
    for (int p = 0; p < 10000; ++p) {
        set.PutXDataPoint(std::to_string(p), p);
        set.PutYDataPoint("1", p);
    }
    graph.DataSets.push_back(set);
    EXPECT_FALSE(build_2d(parser, graph, {}, chart, report, &told));
    ASSERT_EQ(report.errors.size(), 1u);
    EXPECT_EQ(report.errors[0].rfind("A Bar graph draws at most 4000 bars", 0), 0u) << report.errors[0];
    EXPECT_EQ(chart.data.series(), 0u); // nothing reached the chart

    // As a line graph the same points are drawn.
    graph.Type = graph_type::Line;
    report = {};
    EXPECT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    EXPECT_EQ(chart.data.points(1), 10000u);
}

TEST_F(Build, TheLegendListsTheFunctionsInTheSetupsOrderThenTheDataSets) {
    parser.eval_exp("cb[x] = x^3", true, false, false);
    graph.Functions.emplace_back("cb[x]", "x^3");
    StrDataPnts set;
    set.SetName("measured");
    set.PutXDataPoint("1", 0);
    set.PutYDataPoint("2", 0);
    graph.DataSets.push_back(set);
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report));
    std::vector<std::string> legend;
    for (size_t series : chart.legend_order) legend.push_back(chart.data.label(series));
    EXPECT_EQ(legend, (std::vector<std::string>{"sq[x]", "cb[x]", "measured"}));
}

TEST_F(Build, APolarGraphIsDrawnOnAWholeTurnFromTheCentre) {
    // A rose petal over 60 degrees fills a sixth of the circle, not all of it, and the radius
    // starts at the centre rather than at the smallest value.
    parser.eval_exp("rose[t] = 2 + COS(3*t)", true, false, false);
    graph.Functions.front() = engine::Function("rose[t]", "2 + COS(3*t)");
    graph.XAxisVar = VariableCopy(engine::Variable("t", engine::complex(0, 0), engine::complex(60, 0), 13));
    graph.Type = graph_type::Polar;
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    ASSERT_TRUE(chart.bounds);
    EXPECT_EQ(chart.bounds->x_min, 0);
    EXPECT_EQ(chart.bounds->x_max, 360);
    EXPECT_EQ(chart.bounds->y_min, 0);
    EXPECT_GE(chart.bounds->y_max, 3);

    // Past a whole turn the angle comes round again, and a negative radius points the other way.
    parser.eval_exp("back[t] = -1 - t/1000", true, false, false);
    graph.Functions.front() = engine::Function("back[t]", "-1 - t/1000");
    graph.XAxisVar = VariableCopy(engine::Variable("t", engine::complex(0, 0), engine::complex(400, 0), 5));
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    EXPECT_DOUBLE_EQ(chart.data.x(0, 0), 180);  // r = -1 at 0 degrees is r = 1 at 180
    EXPECT_DOUBLE_EQ(chart.data.y(0, 0), 1);
    EXPECT_DOUBLE_EQ(chart.data.x(0, 4), 220);  // 400 + 180 - 360
    EXPECT_DOUBLE_EQ(chart.data.y(0, 4), 1.4);
    EXPECT_EQ(chart.bounds->y_min, 0);
    graph.Functions.front() = engine::Function("rose[t]", "2 + COS(3*t)");

    parser.set_angle_type(1); // radians: the turn is 2 pi
    graph.XAxisVar = VariableCopy(engine::Variable("t", engine::complex(0, 0), engine::complex(1, 0), 11));
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    EXPECT_DOUBLE_EQ(chart.bounds->x_max, 2 * 3.14159265358979323846);

    graph.Type = graph_type::Plot; // other graphs keep the range of their data
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    EXPECT_LT(chart.bounds->x_max, 2);
}

TEST_F(Build, APieWarnsOfValuesItCanNotShowAndAHistogramNamesItsIntervals) {
    graph.Type = graph_type::Pie; // x^2 over -2..2 is 0 at x = 0
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    ASSERT_EQ(told.texts.size(), 1u);
    EXPECT_NE(told.texts[0].find("negative or zero"), std::string::npos);
    EXPECT_TRUE(chart.value_labels.empty());

    told.texts.clear();
    graph.Type = graph_type::Pareto;
    graph.Functions.clear();
    graph.XAxisVar = VariableCopy();
    StrDataPnts set;
    set.SetName("counts");
    const char* xs[] = {"1", "3", "5"};
    const char* ys[] = {"7", "2", "4"};
    for (int i = 0; i < 3; ++i) set.PutXDataPoint(xs[i], i), set.PutYDataPoint(ys[i], i);
    graph.DataSets.push_back(set);
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    EXPECT_TRUE(told.texts.empty());
    ASSERT_EQ(chart.value_labels.size(), 3u);
    EXPECT_EQ(chart.value_labels[0], "0 to 2");
    EXPECT_EQ(chart.value_labels[2], "4 to 6");
    EXPECT_DOUBLE_EQ(chart.label_angle, 45);
    // The bars stand at their index.
    EXPECT_DOUBLE_EQ(chart.data.x(0, 2), 2);

    // Intervals of thirds are written short enough to stand under their bars.
    graph.DataSets.front().PutXDataPoint("1/3", 0);
    graph.DataSets.front().PutXDataPoint("1", 1);
    graph.DataSets.front().PutXDataPoint("5/3", 2);
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    EXPECT_EQ(chart.value_labels[1], "0.6667 to 1.333");
}

TEST_F(Build, AHistogramsPointLabelNamesItsIntervalAndStaysWhileItsBarKeepsItsHeight) {
    graph.Type = graph_type::Hystogram;
    graph.Functions.clear();
    graph.XAxisVar = VariableCopy();
    StrDataPnts set;
    set.SetName("counts");
    const char* ys[] = {"7", "2", "4"};
    for (int i = 0; i < 3; ++i) set.PutXDataPoint(std::to_string(2 * i + 1), i), set.PutYDataPoint(ys[i], i);
    graph.DataSets.push_back(set);
    const std::string label = histogram_point_label(false, "2 to 4", "2");
    EXPECT_EQ(label, " (2 to 4 , 2) ");
    graph.Notes.emplace_back(label.c_str(), 0, 1, -1, false);
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    EXPECT_EQ(graph.Notes.size(), 1u);
    // The bar grew: its label goes.
    graph.DataSets.front().PutYDataPoint("5", 1);
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    EXPECT_TRUE(graph.Notes.empty());
    // A Pareto chart's label shows the height alone, at three digits.
    graph.Type = graph_type::Pareto;
    graph.DataSets.front().PutYDataPoint("3.14159", 1);
    graph.Notes.emplace_back(histogram_point_label(true, "", "3.14").c_str(), 0, 1, -1, false);
    ASSERT_TRUE(build_2d(parser, graph, {}, chart, report, &told));
    EXPECT_EQ(graph.Notes.size(), 1u);
    EXPECT_EQ(histogram_label_value(true, graph.Notes.front().Text), "3.14");
}
