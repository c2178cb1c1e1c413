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

TEST_F(Checks, AGraphTooLargeIsRefusedALargeOneAskedAboutAndBarsBoundedApart) {
    parser.eval_exp("k = 2", true, false, false);
    graph.Functions.emplace_back("f[x,k]", "k*x");
    graph.XAxisVar = axis("x", 0, 1, 500000);
    EXPECT_FALSE(check_graph(graph, parser)); // half a million points: drawn without a question

    graph.XAxisVar = axis("x", 0, 1, 2000000);
    auto found = check_graph(graph, parser);
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->proceed_question);
    EXPECT_EQ(found->page, SetupPage::Variables);
    EXPECT_EQ(found->message, "The graph has 2000000 points, which takes a while to compute and draw. Do you want to "
                              "go on?");
    EXPECT_FALSE(check_graph(graph, parser, true)); // answered Yes

    // A hundred functions of ten million points each: refused however the questions were answered.
    for (int i = 1; i < 100; ++i) graph.Functions.emplace_back("f[x,k]", "k*x");
    graph.XAxisVar = axis("x", 0, 1, 10000000);
    found = check_graph(graph, parser, true);
    ASSERT_TRUE(found);
    EXPECT_FALSE(found->proceed_question);
    EXPECT_NE(found->message.find("The graph asks for 1000000000 points"), std::string::npos) << found->message;

    // Bars: a few hundred are drawn, a hundred thousand refused on the types page.
    graph.Functions.erase(graph.Functions.begin() + 1, graph.Functions.end());
    graph.Type = graph_type::Hystogram;
    graph.XAxisVar = axis("x", 0, 1, 300);
    EXPECT_FALSE(check_graph(graph, parser));
    graph.XAxisVar = axis("x", 0, 1, 100000);
    found = check_graph(graph, parser);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->page, SetupPage::Types);
    EXPECT_EQ(found->message, "A Hystogram graph draws at most 4000 bars (series times points); this one would have "
                              "100000. Give it fewer points, or draw it as a Plot or Line graph.");
}

TEST_F(Checks, AThreeDimensionalGraphOfDataSetsIsAGridOfSetsAtTheirOwnZ) {
    const auto set = [](const char* name, const char* z, std::vector<const char*> xs) {
        StrDataPnts each;
        each.Name = name;
        if (z) each.PutZDataPoint(std::string(z));
        for (int p = 0; p < static_cast<int>(xs.size()); ++p) {
            each.PutXDataPoint(xs[static_cast<size_t>(p)], p);
            each.PutYDataPoint("1", p);
        }
        return each;
    };
    graph.YAxisTitle = graph.XAxisTitle = graph.ZAxisTitle = "t";
    graph.DataSets = {set("a", "1", {"0", "1", "2"})};
    EXPECT_NE(check_graph(graph, parser)->message.find("at least 2 data sets"), std::string::npos);
    graph.DataSets.push_back(set("b", "2/2", {"0", "1", "2"}));
    EXPECT_NE(check_graph(graph, parser)->message.find("has the Z value of another set"), std::string::npos);
    graph.DataSets.back() = set("b", nullptr, {"0", "1", "2"});
    EXPECT_NE(check_graph(graph, parser)->message.find("needs a Z value"), std::string::npos);
    graph.DataSets.back() = set("b", "2", {"0", "2", "1"});
    EXPECT_NE(check_graph(graph, parser)->message.find("must rise"), std::string::npos);
    graph.DataSets.back() = set("b", "2", {"0", "1", "3"});
    const auto found = check_graph(graph, parser);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->page, SetupPage::Data);
    EXPECT_NE(found->message.find("share their X values"), std::string::npos);
    graph.DataSets.back() = set("b", "2", {"0", "1", "4/2"});
    EXPECT_FALSE(check_graph(graph, parser));
}
