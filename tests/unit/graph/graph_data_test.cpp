// What a new graph holds, which kind of graph it is, and the decimal digits of the 3-D flags.
#include "graph/graph_data.h"

#include <gtest/gtest.h>

using namespace quorvex::graph;
using quorvex::engine::complex;

namespace {

Variable ranged(const char* name, long points) {
    return Variable(name, complex(0, 0), complex(1, 0), points);
}

} // namespace

TEST(GraphData, NewGraphAndTypeTable) {
    const GraphData graph("g");
    EXPECT_EQ(graph.Header, "Header");
    EXPECT_EQ(graph.Type3D, 1111UL);
    EXPECT_FLOAT_EQ(graph.YRotation, 0.34f);
    EXPECT_EQ(graph.NeedsUpdate, (std::array<bool, 4>{false, true, true, true}));
    EXPECT_EQ(graph.GetCurDataSet(), nullptr);
    EXPECT_STREQ(graph_type_caption(graph_type::HiLoOpenClose), "HiLo Open Close");
    EXPECT_STREQ(graph_type_caption(12), "");
    EXPECT_EQ(find_graph_type(graph_type::Scatter)->drawn_as, graph_type::Plot);
}

TEST(GraphData, GraphTypeFollowsDataSetsAndAxisVariables) {
    GraphData graph;
    EXPECT_EQ(graph.GetGraphType(), 0);
    graph.Functions.emplace_back("f[x,z]", "x*z");
    const Variable x = ranged("x", 5), z = ranged("z", 7);
    graph.SetXAxisVar(&x);
    EXPECT_EQ(graph.GetGraphType(), 1);
    graph.SetZAxisVar(&z);
    graph.DataSets.emplace_back().PutXDataPoint("1", 0); // no Z: the variables decide
    EXPECT_EQ(graph.GetGraphType(), 2);
    graph.SetZAxisVar(nullptr);
    EXPECT_EQ(graph.GetGraphType(), 1);
    EXPECT_EQ(graph.GetNumZAxisPoints(), 0);

    graph.Functions.clear();
    graph.SetXAxisVar(nullptr);
    graph.DataSets.emplace_back().PutZDataPoint("3"); // any set with a Z value
    EXPECT_EQ(graph.GetGraphType(), 2);
}

TEST(GraphData, Type3DDigitsAreReadAndWrittenInDecimal) {
    GraphData graph;
    EXPECT_EQ(graph.Get3DTypeBit(type3d::Hidden), 0); // past the number's four digits
    EXPECT_TRUE(graph.Set3DTypeBit(type3d::Surface, 1));
    EXPECT_EQ(graph.Type3D, 1001111UL);
    EXPECT_TRUE(graph.Set3DTypeBit(type3d::Shade, 0));
    EXPECT_EQ(graph.Type3D, 1001101UL);
    for (const auto& [position, digit] : {std::pair{0, 1}, {8, 1}, {2, 10}, {2, -1}})
        EXPECT_FALSE(graph.Set3DTypeBit(position, digit));
    EXPECT_EQ(graph.Type3D, 1001101UL);
    EXPECT_EQ(graph.Get3DTypeBit(99), 0);
    graph.SetDefault3DAttributes();
    EXPECT_EQ(graph.Type3D, 1111UL);
}

TEST(GraphData, CopiesOwnTheirVariablesAndClearEmptiesEverything) {
    GraphData graph("g");
    const Variable x = ranged("x", 9);
    graph.SetXAxisVar(&x);
    graph.Functions.emplace_back("f[x]", "x");
    graph.ComVars.emplace_back(ranged("x", 4));
    graph.DataSets.emplace_back();
    graph.CurDataSet = 0;
    graph.SetNote("n", 1, 2, 0, true);

    GraphData other("other");
    other.ComVars.emplace_back(ranged("x", 30));
    other = graph;
    EXPECT_EQ(other.ComVars.front().num_points(), 4); // a whole copy, not Variable's assignment
    EXPECT_NE(other.XAxisVar.get(), graph.XAxisVar.get());
    EXPECT_EQ(other.GetCurDataSet(), &other.DataSets.front());

    graph.SetHeader("Mine", true);
    graph.Clear();
    EXPECT_EQ(graph.Header, "Header");
    EXPECT_FALSE(graph.HeaderSet || graph.XAxisVar);
    EXPECT_TRUE(graph.Functions.empty() && graph.ComVars.empty() && graph.DataSets.empty() &&
                graph.Notes.empty());
    EXPECT_EQ(graph.GetCurDataSet(), nullptr);
    EXPECT_EQ(other.GetNumXAxisPoints(), 9);
}
