// The quick graph's values against the engine: a family of curves over a second variable, its
// data sets in a graph, failed points, refusals, Stop, and the document's variables left as they were.
#include "desktop/quick_graph.h"

#include "engine/host.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"
#include "graph/graph_data.h"

#include <gtest/gtest.h>

using namespace quorvex;
using namespace quorvex::desktop;

namespace {

struct QuickGraph : ::testing::Test {
    engine::Parser parser{&functions::builtin_functions(), QUORVEX_DATA_DIR};
    bool both = false;
    ToolQuestions questions{[this](const std::string&) { return both; }, [](const std::string&) { return true; }};
    std::string error;

    void declare(const char* line) {
        parser.eval_exp(line, true, false, false);
        ASSERT_FALSE(parser.IsAnError()) << line;
    }
    std::optional<QuickGraphFamily> run(const std::string& expression, ToolRange x, ToolRange second = {},
                                        engine::Host* host = nullptr) {
        error.clear();
        return quick_graph_values(parser, expression, x, second, questions, host, error);
    }
};

struct StopAfter : engine::Host {
    explicit StopAfter(int pumps) : left(pumps) {}
    bool aborted() const override { return left <= 0; }
    void pump() override { --left; }
    int left;
};

} // namespace

TEST_F(QuickGraph, AFamilyHasACurveForEachValueOfTheSecondVariableAndTheVariablesComeBack) {
    declare("x = 7");
    const auto family = run("x*y", {"x", "0", "2", "3"}, {"y", "3", "1", "3"});
    ASSERT_TRUE(family) << error;
    EXPECT_EQ(family->x, (std::vector<double>{0, 1, 2}));
    ASSERT_EQ(family->curves.size(), 3u);
    EXPECT_EQ(family->curves[2].y, (std::vector<double>{0, 3, 6}));
    EXPECT_EQ(quick_graph_curve_label(*family, 0), "x*y (y=1)");
    EXPECT_TRUE(family->errors.empty());
    // x has its value back; y was made for the run and is gone.
    engine::complex x;
    parser.eval_exp("x", x, true, false, false);
    EXPECT_EQ(x.real(), 7);
    EXPECT_FALSE(parser.is_variable("y"));

    // In a graph: one data set per curve; a second run replaces the family and keeps the rest.
    graph::GraphData graph;
    graph::StrDataPnts other;
    other.SetName("measured");
    other.PutXDataPoint("0", 0);
    other.PutYDataPoint("1", 0);
    graph.DataSets.push_back(other);
    put_family_2d(graph, *family);
    const auto again = run("x*y", {"x", "0", "2", "3"}, {"y", "1", "2", "2"});
    ASSERT_TRUE(again);
    put_family_2d(graph, *again);
    ASSERT_EQ(graph.DataSets.size(), 3u);
    EXPECT_EQ(graph.DataSets.front().Name, "measured");
    EXPECT_EQ(graph.DataSets.back().Name, "x*y (y=2)");
    EXPECT_EQ(*graph.DataSets.back().GetYDataPoint(2), "4");
    EXPECT_EQ(graph.DataLayout, 2); // the other set is shorter: the X values are no longer shared

    // As a surface: each curve a row at its Z.
    graph::GraphData surface;
    put_family_3d(surface, *family);
    title_quick_graph(surface, *family, true);
    ASSERT_EQ(surface.DataSets.size(), 3u);
    EXPECT_EQ(*surface.DataSets.back().GetZDataPoint(), "3");
    EXPECT_EQ(surface.Header, "Quick 3D Graph: x*y");
    EXPECT_EQ(surface.ZAxisTitle, " y ");
}

TEST_F(QuickGraph, FailedPointsAreHolesThatAreListedAndComplexValuesAreMarked) {
    const auto poles = run("1/(x-1)", {"x", "0", "2", "3"});
    ASSERT_TRUE(poles) << error;
    EXPECT_GE(poles->curves[0].y[1], 1e308);
    ASSERT_EQ(poles->errors.size(), 1u);
    EXPECT_EQ(poles->errors[0].rfind("An error occured at x = 1 : ", 0), 0u) << poles->errors[0];

    // LN of a negative number is complex: marked, its real part kept.
    const auto logs = run("LN(x)", {"x", "-1", "1", "3"});
    ASSERT_TRUE(logs) << error;
    EXPECT_TRUE(logs->imaginary_found);
    EXPECT_TRUE(logs->large_imaginary_found);
    EXPECT_EQ(logs->curves[0].y[0], 0);

    // Both branches of a square root, back from the end.
    both = true;
    const auto roots = run("SQRT(x)", {"x", "0", "4", "3"});
    ASSERT_TRUE(roots && roots->two_solutions);
    EXPECT_EQ(roots->x, (std::vector<double>{0, 2, 4, 2, 0}));
    EXPECT_NEAR(roots->curves[0].y[3], -1.4142135623731, 1e-12);
}

TEST_F(QuickGraph, InputThatCanNotRunIsRefusedAndStopEndsTheRun) {
    EXPECT_FALSE(run("x*y", {"x", "0", "1", "5"}, {"x", "0", "1", "5"}));
    EXPECT_NE(error.find("must differ"), std::string::npos);
    EXPECT_FALSE(run("x*y", {"x", "0", "1", "100000"}, {"y", "0", "1", "100"}));
    EXPECT_NE(error.find("more than a graph can hold"), std::string::npos);
    EXPECT_FALSE(run("x*y", {"x", "0", "1", "1"}, {}));
    EXPECT_FALSE(run("", {"x", "0", "1", "5"}));
    EXPECT_EQ(error, "You have not yet defined a function or expression.");

    declare("y = 5");
    StopAfter host(3);
    const auto family = run("x*y", {"x", "0", "1", "1000"}, {"y", "0", "1", "50"}, &host);
    ASSERT_TRUE(family);
    EXPECT_TRUE(family->stopped);
    EXPECT_LT(family->curves.size(), 50u);
    engine::complex y;
    parser.eval_exp("y", y, true, false, false);
    EXPECT_EQ(y.real(), 5);
    EXPECT_FALSE(parser.is_variable("x"));

    EXPECT_EQ(unique_quick_graph_name("Quick 2D Graph: f", [](const std::string& name) {
                  return name == "Quick 2D Graph: f" || name == "Quick 2D Graph: f:2";
              }),
              "Quick 2D Graph: f:3");
}
