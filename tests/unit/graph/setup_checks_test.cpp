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
    // No axis chosen: the first variable the functions share is offered, with a range to draw.
    EXPECT_EQ(found->offer, SetupOffer::DefaultAxis);
    EXPECT_EQ(found->variable, "x");
    ASSERT_TRUE(pick_default_x_axis(graph));
    EXPECT_EQ(graph.XAxisVar->name(), "x");
    EXPECT_LT(graph.XAxisVar->low().real(), graph.XAxisVar->high().real());
    EXPECT_GE(graph.XAxisVar->num_points(), 2);

    graph.XAxisVar = axis("x", 2, 2, 10);
    EXPECT_NE(check_graph(graph, parser)->message.find("are equal"), std::string::npos);
    graph.XAxisVar = axis("x", 5, -5, 1);
    EXPECT_NE(check_graph(graph, parser)->message.find("at least 2 points"), std::string::npos);
    EXPECT_EQ(graph.XAxisVar->low().real(), -5); // put the right way round
    graph.XAxisVar = axis("x", -5, 5, 11);
    // k is neither an axis nor defined: offered to be defined, with what No is told.
    found = check_graph(graph, parser);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->offer, SetupOffer::DefineVariable);
    EXPECT_EQ(found->variable, "k");
    EXPECT_NE(found->message.find("2-dimensional"), std::string::npos);
    EXPECT_NE(found->refusal.find("' k ' must be defined"), std::string::npos);
    graph.ZAxisVar = axis("y", 0, 1, 3); // on a surface the question does not speak of 2 dimensions
    EXPECT_EQ(check_graph(graph, parser)->message.find("2-dimensional"), std::string::npos);
    graph.ZAxisVar.reset();
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

    graph.Header = "h", graph.Footer = "f", graph.XAxisTitle = "x", graph.YAxisTitle = "y";
    EXPECT_FALSE(check_titles(graph));
    EXPECT_FALSE(check_page(SetupPage::Labels, graph, parser));
    for (std::string* title : {&graph.Header, &graph.Footer, &graph.XAxisTitle, &graph.YAxisTitle}) {
        const std::string kept = *title;
        title->clear();
        const auto missing = check_page(SetupPage::Labels, graph, parser);
        ASSERT_TRUE(missing);
        EXPECT_EQ(missing->page, SetupPage::Labels);
        *title = kept;
    }
    // Each page checks only its own part: the types page knows nothing of the data sets.
    graph.DataSets.front().PutYDataPoint(static_cast<const char*>(nullptr), 1);
    EXPECT_EQ(check_page(SetupPage::Data, graph, parser)->page, SetupPage::Data);
    EXPECT_EQ(check_page(SetupPage::Types, graph, parser)->page, SetupPage::Types);
    graph.Type = graph_type::Plot;
    EXPECT_FALSE(check_page(SetupPage::Types, graph, parser));
    EXPECT_FALSE(check_page(SetupPage::Styles, graph, parser));
}

TEST_F(Checks, AFunctionJoinsTheGraphOnlyOnceAndSharingAVariable) {
    parser.eval_exp("g[x] = x^2", true, false, false);
    parser.eval_exp("h[t] = t", true, false, false);
    EXPECT_NE(check_function_to_add({}, "", parser)->message.find("Select a function"), std::string::npos);
    EXPECT_FALSE(check_function_to_add({}, "h[t]", parser)); // the first function shares with nothing
    const std::vector<Function> graphed{Function("f[x,k]", "k*x")};
    EXPECT_EQ(check_function_to_add(graphed, "f[x,k]", parser)->message, "The function ' f[x,k] ' is graphed already.");
    EXPECT_FALSE(check_function_to_add(graphed, "g[x]", parser));
    const auto apart = check_function_to_add(graphed, "h[t]", parser);
    ASSERT_TRUE(apart);
    EXPECT_EQ(apart->offer, SetupOffer::EditFunction); // a user's function can be edited to share one
    EXPECT_EQ(apart->variable, "h[t]");

    EXPECT_TRUE(check_function_to_remove(0, true));
    EXPECT_NE(check_function_to_remove(2, false)->message.find("Select a function"), std::string::npos);
    EXPECT_FALSE(check_function_to_remove(2, true));

    EXPECT_TRUE(check_new_set_name({"a"}, ""));
    EXPECT_EQ(check_new_set_name({"a", "b"}, "b")->page, SetupPage::Data);
    EXPECT_FALSE(check_new_set_name({"a", "b"}, "B2"));
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
