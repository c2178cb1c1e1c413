#pragma once
#include "chart_2d.h"
#include "sweep_2d.h"

#include <optional>
#include <span>

namespace quorvex::engine {
class Reporter;
}

namespace quorvex::graph {

// How one function of the graph is drawn, in the graph's function order.
struct SeriesLook {
    std::optional<store::TColor> color;
    int width = 1;
};

// The colours of the chart's parts as the graph keeps them.
ChartColors chart_colors_of(const GraphData& graph);

// Whether the graph type may have a logarithmic X (or Y) axis.
bool allows_log_x(int type);
bool allows_log_y(int type);

// Computes the graph and hands it to the chart: sweep, series styles and labels, titles,
// colours, margins, the shown range, logarithmic axes, grid lines, a histogram's intervals under
// its bars and notes. A pie with values at or below zero, which it can not show, is reported. A logarithmic axis the type
// does not allow, or whose range reaches zero or below, is reported and drawn linear (the flag of
// the graph is cleared for the first, kept for the second). False when nothing can be drawn; the
// sweep's messages are in `report`.
bool build_2d(engine::Parser& parser, GraphData& graph, std::span<const SeriesLook> looks, Chart2D& chart,
              SweepReport& report, engine::Reporter* reporter = nullptr, engine::Host* host = nullptr,
              const DataValue& data_value = {});

} // namespace quorvex::graph
