#pragma once
#include "graph_data.h"
#include "grid_3d.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvex::graph {

// A 3-D graph file (.g3d): the drawn grid, then one ini section, named after the graph, with its
// titles as the chart shows them, its forms, view and colours. Like a .g2d file it holds no
// functions, variables or notes. Its projection is written but not read back: a reopened picture
// is drawn without it.
struct GraphFile3D {
    Grid3D grid;
    GraphData graph;
    std::vector<std::string> messages; // what was read otherwise than written (a title cut short)
};

bool write_graph_file_3d(const std::string& path, const Grid3D& grid, const GraphData& graph, std::string* error);
// A colour the file lacks is the user's default from `user_settings` when given, as for .g2d.
std::optional<GraphFile3D> read_graph_file_3d(const std::string& path, std::string* error,
                                              const store::IniFile* user_settings = nullptr);

} // namespace quorvex::graph
