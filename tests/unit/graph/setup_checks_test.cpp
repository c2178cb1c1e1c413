// The checks before a graph is drawn: which page they send the user to and what they say.
#include "graph/setup_checks.h"

#include "engine/parser.h"
#include "functions/builtin_functions.h"
#include "graph/graph_types.h"

#include <gtest/gtest.h>

using namespace quorvex;
using namespace quorvex::graph;

namespace {

struct Checks : ::testing::Test {
    engine::Parser parser{&functions::builtin_functions(), QUORVEX_DATA_DIR};
    GraphData graph{"g"};
    void SetUp() override { parser.eval_exp("f[x, k] = k*x", true, false, false); }
    VariableCopy axis(const char* name, double low, double high, long points) {
        return VariableCopy(engine::Variable(name, engine::complex(low, 0), engine::complex(high, 0), points));
    }
};

} // namespace

TEST_F(Checks, VariablesAreCheckedInOrderAndReversedLimitsSwapped) {
    auto found = check_graph(graph, parser);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->page, SetupPage::Functions); // nothing to graph

    graph.Functions.emplace_back("f[x,k]", "k*x");
    found = check_graph(graph, parser);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->page, SetupPage::Variables);
    EXPECT_EQ(found->message, "Choose the variable of the X axis and its range.");

    graph.XAxisVar = axis("x", 2, 2, 10);
    EXPECT_NE(check_graph(graph, parser)->message.find("are equal"), std::string::npos);
    graph.XAxisVar = axis("x", 5, -5, 1);
    EXPECT_NE(check_graph(graph, parser)->message.find("at least 2 points"), std::string::npos);
    EXPECT_EQ(graph.XAxisVar->low().real(), -5); // put the right way round
    graph.XAxisVar = axis("x", -5, 5, 11);
    // k is neither an axis nor defined.
    EXPECT_EQ(check_graph(graph, parser)->message, "The variable ' k ' of ' f[x,k] ' has no value: make it an axis or define it.");
    parser.eval_exp("k = 3", true, false, false);
    EXPECT_FALSE(check_graph(graph, parser));

    graph.ZAxisVar = axis("k", 0, 1, 100);
    graph.XAxisVar = axis("x", -5, 5, 101);
    found = check_graph(graph, parser);
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->proceed_question); // 10,100 points: asked, not refused
    EXPECT_FALSE(check_graph(graph, parser, true));

    graph.ZAxisVar.reset();
    graph.Type = graph_type::Pie;
    graph.XAxisVar = axis("x", 1, 30, 30);
    EXPECT_NE(check_graph(graph, parser)->message.find("at most 20 slices"), std::string::npos);
}

TEST_F(Checks, DataSetsAndTypesAreCheckedBeforeDrawing) {
    StrDataPnts set;
    set.SetName("s");
    graph.DataSets.push_back(set);
    EXPECT_EQ(check_graph(graph, parser)->message, "The data set ' s ' has no points.");
    graph.DataSets.front().PutXDataPoint("1", 0);
    graph.DataSets.front().PutXDataPoint("2", 1);
    graph.DataSets.front().PutYDataPoint("5", 0);
    auto found = check_graph(graph, parser);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->page, SetupPage::Data);
    EXPECT_NE(found->message.find("2 X values and 1 Y values"), std::string::npos);
    graph.DataSets.front().PutYDataPoint("6", 1);
    EXPECT_FALSE(check_graph(graph, parser));

    graph.Type = graph_type::HiLo; // one series is too few
    found = check_graph(graph, parser);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->page, SetupPage::Types);
    graph.Type = graph_type::Bar;
    graph.DataLayout = 2;
    EXPECT_EQ(check_graph(graph, parser)->message,
              "The BAR graph needs data sets of equal length that share their X values.");

    graph.Header.clear();
    EXPECT_TRUE(check_titles(graph));
    graph.Header = "h", graph.XAxisTitle = "x", graph.YAxisTitle = "y";
    EXPECT_FALSE(check_titles(graph));
}
