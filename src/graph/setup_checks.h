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

// What a problem offers besides a refusal. `DefaultAxis`: Yes puts the first shared variable on the
// X axis (pick_default_x_axis) and checks again. `DefineVariable`: Yes gives `variable` a value and
// checks again; No tells `refusal`. `EditFunction`: Yes opens `variable` (a function) to be edited.
enum class SetupOffer { None, DefaultAxis, DefineVariable, EditFunction };

// What keeps a graph from being drawn: the page to turn to and what to tell the user. A warning
// (`proceed_question`) is asked as Yes or No; Yes draws anyway. A problem with an `offer` is asked
// as Yes or No too.
struct SetupProblem {
    SetupPage page = SetupPage::Graphs;
    std::string message;
    bool proceed_question = false;
    SetupOffer offer = SetupOffer::None;
    std::string variable;
    std::string refusal;
};

// The checks made before a graph is drawn, in the order of the pages: something to draw, the
// functions, the axis variables (reversed limits are swapped on the way), the data sets, the
// type. The first problem found, or none. `allow_warnings` skips the questions already answered.
std::optional<SetupProblem> check_graph(GraphData& graph, engine::Parser& parser, bool allow_warnings = false);

// The checks of one page only, as the wizard makes them when the user leaves the page: the
// functions, the axis variables, the data sets, the titles or the type. None for the other pages.
std::optional<SetupProblem> check_page(SetupPage page, GraphData& graph, engine::Parser& parser,
                                       bool allow_warnings = false);

// The labels page: the header, the footer and every axis title must be given.
std::optional<SetupProblem> check_titles(const GraphData& graph);

// Puts the first variable the functions share on the X axis with its range; false when they share
// none.
bool pick_default_x_axis(GraphData& graph);

// Why `candidate` (a full name such as "g[t]", or empty when nothing is selected) can not join the
// functions graphed: nothing chosen, graphed already, or no variable shared with all of them (a
// user's function is offered to be edited, a library function is only refused).
std::optional<SetupProblem> check_function_to_add(const std::vector<Function>& graphed, const std::string& candidate,
                                                  engine::Parser& parser);
// Why nothing can be removed from the functions graphed: there are none, or none is selected.
std::optional<SetupProblem> check_function_to_remove(size_t graphed, bool selected);

// A name for a new data set: given, and no other set of the graph has it.
std::optional<SetupProblem> check_new_set_name(const std::vector<std::string>& names, const std::string& name);

} // namespace quorvex::graph
