#pragma once
#include "chart_3d.h"
#include "graph_data.h"
#include "grid_3d.h"
#include "sweep_2d.h"

#include <optional>

namespace quorvex::engine {
class Host;
class Parser;
} // namespace quorvex::engine

namespace quorvex::graph {

// Turns a 3-D graph into a grid with the document's engine. A function (the first; a 3-D graph
// has one) is mapped once and run over the X variable (outer) and the Z variable (inner), on a
// regular grid; a cell where the engine fails is a hole with its message in the report, and only
// the real part of an answer is drawn. Without functions, the data sets make an irregular grid:
// the X values of the first set, one line per set at its Z value, the sets' Y values over them.
// The engine's variables are as they were afterwards, also when the host stops the sweep (then
// nothing is returned).
std::optional<Grid3D> sweep_3d(engine::Parser& parser, const GraphData& graph, SweepReport& report,
                               engine::Host* host = nullptr);

// The most points a surface may have: past a million cells the picture is a blur of lines that
// takes seconds to draw.
inline constexpr size_t k_max_surface_points = 1'000'000;

// The graph's value at (x, z) computed afresh, for a point label: the function called with the
// two numbers in place of the X and Z variables (at 14 digits), or none when that fails.
std::optional<double> value_at_3d(engine::Parser& parser, const GraphData& graph, double x, double z);

} // namespace quorvex::graph

namespace quorvex::graph {

// Computes a 3-D graph and hands it to the chart: the sweep, then forms, view, labels and notes.
// False when nothing can be drawn (the reasons are in `report`) or the host stopped it.
bool compute_3d(engine::Parser& parser, const GraphData& graph, Chart3D& chart, SweepReport& report,
                engine::Host* host = nullptr);

} // namespace quorvex::graph
