// The document hub: the questions, refusals and notices of adding and deleting through it, quiet
// values for graphs, and unique graph names.
#include "desktop/document_hub.h"
#include "document/document.h"
#include "engine/parser.h"
#include "engine/reporter.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

using namespace quorvex;

namespace {

struct Answering : engine::Reporter {
    bool answer = false;
    std::vector<std::string> asked;
    void report(std::string_view, std::string_view, engine::MessageKind) override {}
    bool ask(std::string_view text, std::string_view caption) override {
        asked.push_back(std::string(caption) + ": " + std::string(text));
        return answer;
    }
};

struct Hub : ::testing::Test {
    engine::Parser parser{&functions::builtin_functions(), QUORVEX_DATA_DIR};
    Answering reporter;
    document::Document document{parser, &reporter};
    std::vector<std::string> heard;
    int variable_notices = 0, function_notices = 0;
    desktop::DocumentHub hub{parser, document, reporter,
                             {[this] { ++variable_notices; }, [this] { ++function_notices; },
                              [this](std::string_view sound) { heard.emplace_back(sound); },
                              [this](std::string_view message) { heard.emplace_back(message); }}};
};

} // namespace

TEST_F(Hub, DeletingWhatOthersUseIsAlwaysAsked) {
    EXPECT_TRUE(hub.AddEditVariable("t", "2"));
    EXPECT_EQ(variable_notices, 1);
    EXPECT_EQ(heard, (std::vector<std::string>{"Add.wav"}));
    EXPECT_TRUE(hub.AddEditFunction("g[t]", "t*3"));
    EXPECT_EQ(function_notices, 1);
    const int notices = variable_notices;
    EXPECT_FALSE(hub.AddEditVariable("2bad", "1")); // the engine refuses the name
    EXPECT_EQ(variable_notices, notices);

    // t is a variable of g: asked although the caller did not want a question; No keeps it.
    EXPECT_FALSE(hub.DeleteVariable(0, true, false));
    ASSERT_EQ(reporter.asked.size(), 1u);
    EXPECT_EQ(reporter.asked[0],
              "Variables Manager: Variable ' t ' is used in the function body of ' g[t] ',\ndo you still want to "
              "delete this variable?");
    EXPECT_EQ(parser.variable_count(), 1);

    // A function that a graph draws, likewise.
    document::DocumentGraph graph;
    graph.Data.Functions.emplace_back("g[t]", "t*3");
    document.Graphs.push_back(graph);
    EXPECT_TRUE(hub.FunUsedInGraph("g[t]"));
    EXPECT_FALSE(hub.FunUsedInGraph("G[t]")); // the name as written
    EXPECT_FALSE(hub.DeleteFunction(0, true, false));
    EXPECT_NE(reporter.asked.back().find("Function Manager: Function \"g[t]\" is required"), std::string::npos);
    reporter.answer = true;
    EXPECT_TRUE(hub.DeleteFunction(0, true, false));
    EXPECT_EQ(parser.function_count(), 0);
    EXPECT_TRUE(hub.DeleteVariable(0, true, true));
    EXPECT_EQ(reporter.asked.back(), "Variables Manager: Are you sure that you want to delete 't'?");
    EXPECT_EQ(parser.variable_count(), 0);
    EXPECT_EQ(heard.back(), "Delete.wav");
    EXPECT_FALSE(hub.DeleteVariable(5, true, true)); // no such variable
}

TEST_F(Hub, ComputesQuietlyAndKeepsGraphNamesUnique) {
    engine::complex value;
    EXPECT_TRUE(hub.ComputeValue("SIN(30)*2", value));
    EXPECT_DOUBLE_EQ(value.real(), 1.0);
    EXPECT_FALSE(hub.ComputeValue("1/0", value));
    ASSERT_EQ(heard.size(), 2u);
    EXPECT_EQ(heard[0], "Error.wav");
    EXPECT_FALSE(heard[1].empty()); // the engine's message, for the graph's error list
    EXPECT_FALSE(parser.IsAnError()); // and the engine is ready for the next point

    for (const char* name : {"Graph", "Graph #1"}) {
        document::DocumentGraph graph;
        graph.Data.Name = name;
        document.Graphs.push_back(graph);
    }
    EXPECT_EQ(hub.GetUniqueGraphName("Graph"), "Graph #2");
    EXPECT_EQ(hub.GetUniqueGraphName("graph"), "graph"); // names keep their case
    EXPECT_TRUE(hub.IsUniqueGraphName("Graph", &document.Graphs[0].Data));
    EXPECT_FALSE(hub.IsUniqueGraphName("Graph #1"));
}
