#pragma once
#include "graph_data.h"

namespace quorvex::graph {

// How near a click must come to a note's place, in pixels along X and along Y, to take it.
inline constexpr int k_note_reach = 20;

// The note (not a point label) whose place lies within `reach` pixels of (x, y) along both axes;
// of several, the nearest; null when none does.
GraphNote* note_near(GraphData& graph, int x, int y, int reach = k_note_reach);

} // namespace quorvex::graph
