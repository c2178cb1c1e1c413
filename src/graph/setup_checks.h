#pragma once
#include "graph_data.h"

#include <optional>
#include <string>

namespace quorvex::engine {
class Parser;
}

namespace quorvex::graph {

// The setup pages, in the order the sheet shows them.
enum class SetupPage { Graphs, Functions, Variables, Data, Labels, Types, Styles, Colors };

// What keeps a graph from being drawn: the page to turn to and what to tell the user. A warning
// (`proceed_question`) is asked as Yes or No; Yes draws anyway.
struct SetupProblem {
    SetupPage page = SetupPage::Graphs;
    std::string message;
    bool proceed_question = false;
};

// The checks made before a graph is drawn, in the order of the pages: something to draw, the
// functions, the axis variables (reversed limits are swapped on the way), the data sets, the
// type. The first problem found, or none. `allow_warnings` skips the questions already answered.
std::optional<SetupProblem> check_graph(GraphData& graph, engine::Parser& parser, bool allow_warnings = false);

// The labels page: every title must be given.
std::optional<SetupProblem> check_titles(const GraphData& graph);

} // namespace quorvex::graph
