// The 2-D sweep against the engine: holes where a function fails, both branches of a square root,
// data sets as series, and the engine's variables left as they were.
#include "graph/sweep_2d.h"
#include "graph/build_2d.h"
#include "graph/decimate.h"

#include "engine/host.h"

#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace quorvex;
using namespace quorvex::graph;

namespace {

const std::string complex_point = "Complex data point encountered, data must be real!";

struct Sweep : ::testing::Test {
    engine::Parser parser{&functions::builtin_functions(), QUORVEX_DATA_DIR};
    GraphData graph{"g"};

    void declare(const char* line) {
        parser.eval_exp(line, true, false, false);
        ASSERT_FALSE(parser.IsAnError()) << line;
    }
    void sweep_x(double low, double high, long points) {
        graph.XAxisVar = VariableCopy(engine::Variable("x", engine::complex(low, 0), engine::complex(high, 0), points));
    }
};

} // namespace

TEST_F(Sweep, AFailingPointIsAHoleWithItsMessageAndTheVariableComesBack) {
    declare("x = 7");
    declare("f[x] = 1/x");
    declare("g[x] = 2*x");
    graph.Functions.emplace_back("f[x]", "1/x");
    graph.Functions.emplace_back("g[x]", "2*x");
    sweep_x(-1, 1, 5);
    SweepReport report;
    const auto data = sweep_2d(parser, graph, report);
    ASSERT_TRUE(data);
    ASSERT_EQ(data->series(), 2u);
    ASSERT_EQ(data->points(), 5u);
    // Series 0 is the last function.
    const double g[] = {-2, -1, 0, 1, 2};
    const double f[] = {-1, -2, 0, 2, 1};
    for (size_t p = 0; p < 5; ++p) {
        EXPECT_DOUBLE_EQ(data->x(0, p), -1 + 0.5 * static_cast<double>(p));
        EXPECT_DOUBLE_EQ(data->y(0, p), g[p]) << p;
        if (p == 2)
            EXPECT_TRUE(ChartData::is_hole(data->y(1, p))); // 1/0: a gap in the curve
        else
            EXPECT_DOUBLE_EQ(data->y(1, p), f[p]) << p;
    }
    ASSERT_EQ(report.errors.size(), 1u);
    EXPECT_EQ(report.errors[0].rfind("An error occured at x = 0 : ", 0), 0u) << report.errors[0];
    EXPECT_EQ(data->label(0), "g[x]");
    EXPECT_EQ(parser.get_var_value("x").real(), 7); // the user's x is back
    EXPECT_EQ(parser.equation_count(), 0);          // no equation left behind
    EXPECT_FALSE(parser.IsAnError());

    // A function the document does not have is named, and nothing is drawn.
    graph.Functions.emplace_back("nosuch[x]", "x");
    report = {};
    EXPECT_FALSE(sweep_2d(parser, graph, report));
    ASSERT_FALSE(report.errors.empty());
    EXPECT_EQ(report.errors[0], "\"nosuch[x]\" could not be found. The graph could not be created!");
}

TEST_F(Sweep, ASquareRootIsDrawnAlongBothBranchesAndComplexPointsAreHoles) {
    declare("h[x] = SQRT(x)");
    graph.Functions.emplace_back("h[x]", "SQRT(x)");
    sweep_x(-1, 4, 6); // -1 0 1 2 3 4
    SweepReport report;
    const auto data = sweep_2d(parser, graph, report);
    ASSERT_TRUE(data);
    EXPECT_TRUE(report.two_solutions);
    ASSERT_EQ(data->points(), 11u); // out along the positive branch, back along the negative one
    EXPECT_TRUE(ChartData::is_hole(data->y(0, 0))); // SQRT(-1) is complex
    const double forward[] = {0, 1, 1.4142135623731, 1.7320508075689, 2};
    for (size_t p = 1; p <= 5; ++p) EXPECT_NEAR(data->y(0, p), forward[p - 1], 1e-12) << p;
    const double back_x[] = {3, 2, 1, 0, -1};
    for (size_t p = 6; p < 11; ++p) EXPECT_DOUBLE_EQ(data->x(0, p), back_x[p - 6]) << p;
    // The curve rose to its end: the first point back is a gap, so that no line joins (4, 2) to
    // (3, -1.73); then the negative branch, and x = -1 is complex again.
    EXPECT_TRUE(ChartData::is_hole(data->y(0, 6)));
    for (size_t p = 7; p < 10; ++p) EXPECT_NEAR(data->y(0, p), -std::sqrt(back_x[p - 6]), 1e-12) << p;
    EXPECT_TRUE(ChartData::is_hole(data->y(0, 10)));
    // The complex point is listed once, though both branches pass it.
    EXPECT_EQ(report.errors, std::vector<std::string>{"An error occured at x = -1 : " + complex_point});
    EXPECT_FALSE(parser.is_variable("x")); // made for the sweep, removed after it

    graph.GraphTwoSolutions = false;
    report = {};
    EXPECT_EQ(sweep_2d(parser, graph, report)->points(), 6u);
}

TEST_F(Sweep, TheTwoBranchesOfASquareRootMeetWhereTheRootIsZero) {
    declare("h[x] = SQRT(x)");
    graph.Functions.emplace_back("h[x]", "SQRT(x)");
    for (const long points : {201L, 200L}) { // 0 on the walk, and 0 between two of its points
        sweep_x(-10, 10, points);
        SweepReport report;
        const auto data = sweep_2d(parser, graph, report);
        ASSERT_TRUE(data);
        const auto forward = static_cast<size_t>(points);
        ASSERT_EQ(data->points(), 2 * forward - 1);
        // The first point drawn on the way out (the positive branch) and the last on the way back
        // (the negative one) are the same: the origin.
        size_t first = 0, last = data->points() - 1;
        while (first < forward && ChartData::is_hole(data->y(0, first))) ++first;
        while (last >= forward && ChartData::is_hole(data->y(0, last))) --last;
        ASSERT_LT(first, forward);
        ASSERT_GE(last, forward);
        EXPECT_NEAR(data->x(0, first), 0, 1e-12) << points;
        EXPECT_NEAR(data->y(0, first), 0, 1e-9) << points;
        EXPECT_NEAR(data->x(0, last), 0, 1e-12) << points;
        EXPECT_NEAR(data->y(0, last), 0, 1e-9) << points;
        EXPECT_GT(data->y(0, first + 1), 0);
        EXPECT_LT(data->y(0, last - 1), 0);
        // Each x below 0 is listed as complex, once.
        ASSERT_EQ(report.errors.size(), 100u) << points;
        EXPECT_EQ(report.errors.front(), "An error occured at x = -10 : " + complex_point);
    }
}

TEST_F(Sweep, DataSetsFollowTheFunctionsWithHolesForWhatDoesNotEvaluate) {
    StrDataPnts set;
    set.SetName("measured");
    const char* xs[] = {"1", "2", "bad", "4"};
    const char* ys[] = {"PI", "1/0", "3", nullptr};
    for (int i = 0; i < 4; ++i) {
        set.PutXDataPoint(xs[i], i);
        set.PutYDataPoint(ys[i], i);
    }
    graph.DataSets.push_back(set);
    SweepReport report;
    const auto data = sweep_2d(parser, graph, report); // no function: no variable needed
    ASSERT_TRUE(data);
    ASSERT_EQ(data->series(), 1u);
    EXPECT_EQ(data->label(0), "measured");
    EXPECT_NEAR(data->y(0, 0), 3.14159265358979, 1e-12);
    EXPECT_TRUE(ChartData::is_hole(data->y(0, 1)));
    EXPECT_TRUE(ChartData::is_hole(data->x(0, 2)));
    EXPECT_TRUE(ChartData::is_hole(data->y(0, 3)));
    EXPECT_DOUBLE_EQ(data->x(0, 3), 4);
    // Each text that fails ("1/0", then "bad") is in the errors list with the engine's own message;
    // a missing one is no error.
    ASSERT_EQ(report.errors.size(), 2u);
    EXPECT_FALSE(report.errors[0].empty());
    EXPECT_FALSE(report.errors[1].empty());
}

TEST_F(Sweep, ADataSetGoesThroughTheGivenEvaluatorAndTheProgressMovesInWholePercents) {
    struct Counting : engine::Host {
        std::vector<long> shown;
        void progress(long done, long total) override {
            EXPECT_EQ(total, 100);
            shown.push_back(done);
        }
    } host;
    StrDataPnts set;
    set.SetName("three");
    for (int i = 0; i < 3; ++i) {
        set.PutXDataPoint(std::to_string(i), i);
        set.PutYDataPoint(i == 1 ? "nope" : "2*" + std::to_string(i), i);
    }
    graph.DataSets.push_back(set);
    std::vector<std::string> asked;
    const DataValue value = [&](const std::string& text, engine::complex& out) {
        asked.push_back(text);
        if (text == "nope") return false;
        parser.eval_exp(text.c_str(), out, true, false, false);
        return true;
    };
    SweepReport report;
    const auto data = sweep_2d(parser, graph, report, &host, {}, value);
    ASSERT_TRUE(data);
    EXPECT_EQ(asked.size(), 6u);
    EXPECT_TRUE(report.errors.empty()); // the evaluator tells its own failures
    EXPECT_TRUE(ChartData::is_hole(data->y(0, 1)));
    EXPECT_DOUBLE_EQ(data->y(0, 2), 4);
    ASSERT_EQ(host.shown.size(), 3u);
    EXPECT_EQ(host.shown[0], 33);
    EXPECT_EQ(host.shown[1], 66);
    EXPECT_TRUE(std::is_sorted(host.shown.begin(), host.shown.end()));
}

TEST_F(Sweep, TheWalkOfTenthsHitsZeroSoAPoleIsAHoleNotASpike) {
    declare("f[x] = 1/x");
    graph.Functions.emplace_back("f[x]", "1/x");
    sweep_x(-10, 10, 201);
    SweepReport report;
    const auto data = sweep_2d(parser, graph, report);
    ASSERT_TRUE(data);
    EXPECT_EQ(data->x(0, 100), 0.0);
    EXPECT_TRUE(ChartData::is_hole(data->y(0, 100)));
    EXPECT_EQ(data->x(0, 99), -0.1);
    EXPECT_EQ(data->y(0, 99), -10.0);
    ASSERT_EQ(report.errors.size(), 1u);
    EXPECT_EQ(report.errors[0].rfind("An error occured at x = 0 : ", 0), 0u) << report.errors[0];
}

TEST_F(Sweep, AGraphBeyondWhatOneGraphHoldsIsRefusedBeforeItBegins) {
    declare("x = 3");
    declare("f[x] = x+1");
    for (int i = 0; i < 100; ++i) graph.Functions.emplace_back("f[x]", "x+1");
    sweep_x(0, 1, 10000000); // a thousand million points in all
    SweepReport report;
    EXPECT_FALSE(sweep_2d(parser, graph, report));
    ASSERT_EQ(report.errors.size(), 1u);
    EXPECT_EQ(report.errors[0].rfind("The graph asks for 1000000000 points", 0), 0u) << report.errors[0];
    EXPECT_EQ(parser.equation_count(), 0);
    EXPECT_EQ(parser.get_var_value("x").real(), 3);

    // A short data set beside a long sweep keeps its own length.
    graph.Functions.erase(graph.Functions.begin() + 1, graph.Functions.end());
    sweep_x(0, 1, 1001);
    StrDataPnts set;
    set.SetName("two");
    set.PutXDataPoint(std::string("0"), 0);
    set.PutYDataPoint(std::string("1"), 0);
    set.PutXDataPoint(std::string("1"), 1);
    set.PutYDataPoint(std::string("2"), 1);
    graph.DataSets.push_back(set);
    report = {};
    const auto data = sweep_2d(parser, graph, report);
    ASSERT_TRUE(data);
    EXPECT_EQ(data->points(0), 1001u);
    EXPECT_EQ(data->points(1), 2u);
    EXPECT_DOUBLE_EQ(data->y(1, 1), 2);
    EXPECT_TRUE(ChartData::is_hole(data->y(1, 2)));
}

namespace {

// A user who presses Stop after the sweep has run `limit` points.
struct StopAfter : engine::Host {
    explicit StopAfter(int limit) : limit(limit) {}
    bool aborted() const override { return pumps >= limit; }
    void pump() override { ++pumps; }
    int limit, pumps = 0;
};

} // namespace

TEST_F(Sweep, StopEndsAMillionPointSweepAtOnceAndLeavesTheEngineAsItWas) {
    declare("x = 7");
    declare("h[x] = SQRT(x)");
    graph.Functions.emplace_back("h[x]", "SQRT(x)");
    const int variables = parser.variable_count();
    // Stopped on the way out a million points long, and on the way back along -SQRT.
    for (const auto& [points, limit] : {std::pair{1000000L, 1000}, std::pair{2000L, 2500}}) {
        sweep_x(0, 1000, points);
        StopAfter stop(limit);
        SweepReport report;
        sweep_2d(parser, graph, report, &stop); // what was computed is not drawn (see the build below)
        EXPECT_TRUE(report.cancelled);
        EXPECT_EQ(stop.pumps, limit); // not one point after the Stop
        EXPECT_EQ(parser.get_var_value("x").real(), 7);
        EXPECT_EQ(parser.variable_count(), variables);
        EXPECT_EQ(parser.equation_count(), 0);
        EXPECT_FALSE(parser.IsAnError());
        EXPECT_FALSE(parser.neg_sqrt());
    }

    // A sweep variable the document did not have is gone again, and the build draws nothing.
    graph.Functions.clear();
    declare("k[t] = t*2");
    graph.Functions.emplace_back("k[t]", "t*2");
    graph.XAxisVar = VariableCopy(engine::Variable("t", engine::complex(0, 0), engine::complex(1, 0), 1000000));
    StopAfter stop(10);
    RecordingChart chart;
    SweepReport report;
    EXPECT_FALSE(build_2d(parser, graph, {}, chart, report, nullptr, &stop));
    EXPECT_TRUE(report.cancelled);
    EXPECT_FALSE(parser.is_variable("t"));
    EXPECT_EQ(parser.equation_count(), 0);
    EXPECT_EQ(chart.data.series(), 0u);
    EXPECT_TRUE(chart.titles.empty());
}

TEST_F(Sweep, ALineIsNotDrawnAcrossAPoleThatFallsBetweenTwoPoints) {
    declare("f[x] = 1/x");
    declare("t[x] = x^3 - x");
    graph.Functions.emplace_back("f[x]", "1/x");
    graph.Functions.emplace_back("t[x]", "x^3 - x");
    sweep_x(-10, 10, 200); // the points step over 0
    SweepReport report;
    const auto data = sweep_2d(parser, graph, report);
    ASSERT_TRUE(data);
    EXPECT_TRUE(report.errors.empty());
    // Series 1 is 1/x: cut once, between its last negative and first positive point.
    size_t cuts = 0;
    for (size_t p = 1; p < 200; ++p) {
        if (!data->break_before(1, p)) continue;
        ++cuts;
        EXPECT_LT(data->y(1, p - 1), 0);
        EXPECT_GT(data->y(1, p), 0);
    }
    EXPECT_EQ(cuts, 1u);
    // A continuous change of sign, even a steep one, is drawn whole.
    EXPECT_FALSE(data->has_breaks(0));
    // The cut splits the drawn line as a hole does.
    const PixelWindow window{-10, 10, -20, 20, 400, 300};
    const std::vector<PlotPoint> drawn = decimate_line(*data, 1, window);
    EXPECT_EQ(std::count_if(drawn.begin(), drawn.end(), [](const PlotPoint& p) { return p.is_hole(); }), 1);
}
