// The variables a graph sweeps: those common to its functions, and the X and Z copies, with
// functions and variables made by the engine itself.
#include "graph/graph_data.h"

#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

using namespace quorvex::graph;
using quorvex::engine::complex;
using quorvex::engine::Parser;

namespace {

class GraphVariables : public ::testing::Test {
protected:
    Parser parser{&quorvex::functions::builtin_functions()};
    GraphData graph{"g"};

    void declare(const char* line) {
        parser.eval_exp(line, true, true, false);
        ASSERT_FALSE(parser.IsAnError()) << line << ": " << parser.GetLastError();
    }
    void graph_function(const char* name) {
        const int index = parser.find_function(name);
        ASSERT_GE(index, 0) << name;
        graph.Functions.push_back(*parser.function_at(index));
    }
    std::vector<std::string> common_names() const {
        std::vector<std::string> names;
        for (const Variable& variable : graph.ComVars)
            names.push_back(variable.name());
        return names;
    }
};

} // namespace

TEST_F(GraphVariables, CommonVariablesAreThoseOfEveryFunctionInFirstOrder) {
    declare("f[x,y] = x*y");
    declare("g[x] = x^2");
    declare("h[t,x] = t+x");
    graph_function("f");
    graph_function("g");
    graph.SetComVarList();
    EXPECT_EQ(common_names(), (std::vector<std::string>{"x"}));

    graph.Functions.clear();
    graph_function("h");
    graph.SetComVarList(); // rebuilt from scratch
    EXPECT_EQ(common_names(), (std::vector<std::string>{"t", "x"}));
    const Variable* t = graph.FindComVar("t"); // no data set: 1 to 10 over 25 points
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(t->low(), complex(1, 0));
    EXPECT_EQ(t->high(), complex(10, 0));
    EXPECT_EQ(t->num_points(), 25);
}

TEST_F(GraphVariables, CommonVariablesTakeTheirRangeFromTheFirstDataSet) {
    declare("f[x] = 2x");
    graph_function("f");
    StrDataPnts& set = graph.DataSets.emplace_back();
    for (const char* value : {"-2.5", "4", "7.5"})
        set.PutXDataPoint(value, set.GetLastXIndex() + 1);
    graph.SetComVarList();
    const Variable* x = graph.FindComVar("x");
    ASSERT_NE(x, nullptr);
    EXPECT_EQ(x->low(), complex(-2.5, 0));
    EXPECT_EQ(x->high(), complex(7.5, 0));
    EXPECT_EQ(x->num_points(), 3);

    set.DeleteXDataPoint(2);
    set.DeleteXDataPoint(1); // one X value is no range
    graph.SetComVarList();
    EXPECT_EQ(graph.FindComVar("x")->num_points(), 25);
}

TEST_F(GraphVariables, AxisVariablesAreOwnedCopiesWithDefaultTitles) {
    declare("x = 0, 10, 5");
    declare("z = 1, 2, 3");
    graph.SetXAxisVar(parser.find_var("x"));
    EXPECT_EQ(graph.XAxisTitle, "x");
    declare("x = 0, 1, 9");
    EXPECT_EQ(graph.GetNumXAxisPoints(), 5); // a copy, not a view of the engine's variable

    graph.SetXAxisTitle("Time", true);
    graph.SetXAxisVar(parser.find_var("z"));
    EXPECT_EQ(graph.XAxisTitle, "Time");
    EXPECT_EQ(graph.GetNumXAxisPoints(), 3);
    graph.SetZAxisVar(parser.find_var("z"));
    EXPECT_EQ(graph.ZAxisTitle, "z");
    graph.SetZAxisVar(parser.find_var("missing"));
    EXPECT_FALSE(graph.ZAxisVar);

    graph.SetCLXAxisVar(parser.find_var("x")); // the engine's copy takes no title
    EXPECT_EQ(graph.CLXAxisVar->num_points(), 9);
    EXPECT_EQ(graph.XAxisTitle, "Time");
}

TEST_F(GraphVariables, UncommonAxisVariablesAreDroppedAndCountsCompared) {
    declare("f[x,z] = x+z");
    declare("g[x] = x");
    declare("x = 0, 1, 4");
    declare("z = 0, 1, 4");
    graph_function("f");
    graph_function("g");
    graph.SetXAxisVar(parser.find_var("x"));
    graph.SetZAxisVar(parser.find_var("z"));
    graph.SetComVarList();
    graph.DelUncommonVars();
    EXPECT_TRUE(graph.XAxisVar);
    EXPECT_FALSE(graph.ZAxisVar);

    EXPECT_TRUE(graph.DataPointsEqual());
    for (int set = 0; set < 2; ++set) {
        StrDataPnts& data = graph.DataSets.emplace_back();
        for (int i = 0; i < 4; ++i)
            data.PutXDataPoint("1", i);
    }
    EXPECT_TRUE(graph.DataPointsEqual());
    graph.DataSets.back().PutXDataPoint(nullptr, 1); // an empty slot is no X value
    EXPECT_FALSE(graph.DataPointsEqual());
    graph.SetXAxisVar(nullptr); // without a variable the first set's count rules
    graph.DataSets.front().PutXDataPoint(nullptr, 2);
    EXPECT_TRUE(graph.DataPointsEqual());
}
