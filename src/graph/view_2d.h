#pragma once
#include "graph_data.h"

namespace quorvex::graph {

// What the margin commands add to or take from every side of a 2-D graph, in pixels.
inline constexpr int k_margin_step = 25;

// A 2-D graph's four margins as it draws them: the graph's own where set (not 0), else its
// default where set, else 0 for the chart's automatic margin.
struct Margins2D {
    int bottom = 0, top = 0, left = 0, right = 0;
    bool operator==(const Margins2D&) const = default;
};
Margins2D margins_of(const GraphData& graph);

// How far each side lies from the margins a new graph has, which the chart's own layout shows:
// what the chart adds to (or, negative, takes from) its automatic margins. 0 on a side left to
// the chart (no margin and no default).
Margins2D margin_change(const GraphData& graph);

// Every margin `step` pixels larger (negative: smaller), never below one pixel.
void change_margins(GraphData& graph, int step);
// The margins back to the defaults, and the present ones kept as the defaults.
void set_default_margins(GraphData& graph);
void save_default_margins(GraphData& graph);

// Depth, inclination and rotation back to the defaults, and the present ones kept as the defaults.
void set_default_orientation_2d(GraphData& graph);
void save_default_orientation_2d(GraphData& graph);

} // namespace quorvex::graph
