#pragma once
#include "chart_data.h"
#include "graph_data.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvex::graph {

// A 2-D graph file (.g2d): the drawn numbers, then one ini section, named after the graph, with
// its titles, type, view, margins and colours. It holds no functions, variables or notes: it is a
// picture's data, opened to be looked at again.
struct GraphFile2D {
    ChartData data{2, 0, 0};
    GraphData graph; // titles, type, view, margins, colours and the series labels' count
    std::vector<std::string> messages; // what was read otherwise than written (a title cut short)
};

// Writes `data` as drawn for `graph` to `path`, through a temporary file; false with `error`.
bool write_graph_file(const std::string& path, const ChartData& data, const GraphData& graph, std::string* error);
// Reads a file written by write_graph_file; none with `error` for a file that is no graph file.
// A colour the file lacks is the user's default from `user_settings` ("Graph Default Colors")
// when given, else the colour a new graph has.
std::optional<GraphFile2D> read_graph_file(const std::string& path, std::string* error,
                                           const store::IniFile* user_settings = nullptr);

} // namespace quorvex::graph
