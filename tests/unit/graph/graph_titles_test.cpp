// Titles: defaults made from the graph's contents, and which user titles survive a default.
#include "graph/graph_data.h"

#include <gtest/gtest.h>

using namespace quorvex::graph;
using quorvex::engine::complex;

namespace {

GraphData graph_of_two_functions_and_a_set() {
    GraphData graph("g");
    graph.Functions.emplace_back("f[x]", "x^2");
    graph.Functions.emplace_back("g[x, y]", "x+y");
    graph.DataSets.emplace_back().SetName("Measured");
    return graph;
}

constexpr const char* k_contents = "f[x] , g[x, y] , Measured";

} // namespace

TEST(GraphTitles, DefaultsAreMadeFromContentsAndClearTheFlags) {
    GraphData graph = graph_of_two_functions_and_a_set();
    graph.SetDefaultHeader(false);
    graph.SetDefaultYAxisTitle(false);
    EXPECT_EQ(graph.Header, std::string("Graph of: ") + k_contents);
    EXPECT_EQ(graph.YAxisTitle, k_contents);

    graph.SetXAxisTitle("kept", false);
    graph.SetDefaultXAxisTitle(true); // no X variable: no default
    EXPECT_EQ(graph.XAxisTitle, "kept");

    graph.SetYAxisTitle("Speed", true);
    graph.SetDefaultYAxisTitle(false);
    EXPECT_EQ(graph.YAxisTitle, "Speed");
    graph.SetDefaultYAxisTitle(true);
    EXPECT_EQ(graph.YAxisTitle, k_contents);
    EXPECT_FALSE(graph.YTitleSet);

    const Variable t("t", complex(0, 0), complex(1, 0), 3);
    graph.SetZAxisVar(&t);
    graph.SetZAxisTitle("", true); // set by the user but empty: the default applies
    graph.SetDefaultZAxisTitle(false);
    EXPECT_EQ(graph.ZAxisTitle, "t");

    graph.SetHeader(nullptr, true);
    EXPECT_FALSE(graph.HeaderSet);

    // The title text never grows past its buffer of 1024 characters.
    for (int i = 0; i < 200; ++i)
        graph.DataSets.emplace_back().SetName("a long data set name");
    graph.SetDefaultFooter(false);
    EXPECT_EQ(graph.Footer.size(), GraphData::k_title_buffer_size - 1);
    EXPECT_EQ(graph.Footer.rfind(std::string("Graph of: ") + k_contents + " , a long", 0), 0u);
}

TEST(GraphTitles, HeaderAndFooterDefaultsBothFollowTheFooterFlag) {
    GraphData graph = graph_of_two_functions_and_a_set();
    graph.SetFooter("My footer", true);
    graph.SetHeader("My header", false);
    graph.SetDefaultHeader(false);
    graph.SetDefaultFooter(false);
    EXPECT_EQ(graph.Header, "My header"); // protected by the footer's flag
    EXPECT_EQ(graph.Footer, "My footer");
    graph.SetDefaultHeader(true);
    EXPECT_EQ(graph.Header, std::string("Graph of: ") + k_contents);
    EXPECT_TRUE(graph.FooterSet); // the header default clears only its own flag

    GraphData other = graph_of_two_functions_and_a_set();
    other.SetHeader("Mine alone", true);
    other.SetDefaultHeader(false);
    EXPECT_EQ(other.Header, std::string("Graph of: ") + k_contents);
    other.ClearTitles();
    EXPECT_EQ(other.Footer, "Footer");
    EXPECT_FALSE(other.HeaderSet || other.FooterSet);
}
