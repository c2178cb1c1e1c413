#pragma once
#include "chart_data.h"
#include "graph_data.h"

#include "engine/complex.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvex::engine {
class Host;
class Parser;
} // namespace quorvex::engine

namespace quorvex::graph {

// What a sweep met on the way: the messages for the graph's error list, and how it ended.
struct SweepReport {
    std::vector<std::string> errors;
    bool cancelled = false;
    bool two_solutions = false; // a function has a second branch (a square root was taken)
};

// Turns a 2-D graph into chart numbers with the document's engine: every function is mapped
// once and run at each point of the X variable's range; a point where the engine fails or the
// answer is complex is a hole, and its message goes to the report. With GraphTwoSolutions a
// function with a square root comes back along its negative branch, and the two branches meet
// where the root is zero, also between two points of the walk. Data sets follow the
// functions as further series. The engine's variables are as they were afterwards.
// Series order: the last function first, then the data sets in order.
// `both_branches`, when given, is asked once (before the sweep) whether a graph whose functions
// have a second branch should draw it; a No draws the positive branch alone.
// A data set's texts are evaluated by `data_value` when given (false for a text that fails, its
// message told by the evaluator), else by the engine with its message added to the report; a
// text that fails, is missing or has a complex value is a hole.
// The host hears the share done in whole percents (of 100) as points are computed.
using DataValue = std::function<bool(const std::string& text, engine::complex& value)>;
std::optional<ChartData> sweep_2d(engine::Parser& parser, const GraphData& graph, SweepReport& report,
                                  engine::Host* host = nullptr, const std::function<bool()>& both_branches = {},
                                  const DataValue& data_value = {});

} // namespace quorvex::graph
