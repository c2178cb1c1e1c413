#include "view_2d.h"

#include <algorithm>

namespace quorvex::graph {

namespace {

struct Side {
    int GraphData::*current;
    int GraphData::*fallback;
    int Margins2D::*shown;
};

constexpr Side k_sides[] = {
    {&GraphData::MarginBottom2D, &GraphData::DefaultMarginBottom2D, &Margins2D::bottom},
    {&GraphData::MarginTop2D, &GraphData::DefaultMarginTop2D, &Margins2D::top},
    {&GraphData::MarginLeft2D, &GraphData::DefaultMarginLeft2D, &Margins2D::left},
    {&GraphData::MarginRight2D, &GraphData::DefaultMarginRight2D, &Margins2D::right},
};

} // namespace

Margins2D margins_of(const GraphData& graph) {
    Margins2D margins;
    for (const Side& side : k_sides)
        margins.*side.shown = graph.*side.current ? graph.*side.current : graph.*side.fallback;
    return margins;
}

Margins2D margin_change(const GraphData& graph) {
    // The chart's own layout stands for the margins a new graph has.
    static const GraphData fresh;
    const Margins2D shown = margins_of(graph), usual = margins_of(fresh);
    Margins2D change;
    for (const Side& side : k_sides)
        if (shown.*side.shown) change.*side.shown = shown.*side.shown - usual.*side.shown;
    return change;
}

void change_margins(GraphData& graph, int step) {
    const Margins2D shown = margins_of(graph);
    for (const Side& side : k_sides) graph.*side.current = std::max(1, shown.*side.shown + step);
}

void set_default_margins(GraphData& graph) {
    for (const Side& side : k_sides) graph.*side.current = graph.*side.fallback;
}

void save_default_margins(GraphData& graph) {
    const Margins2D shown = margins_of(graph);
    for (const Side& side : k_sides) graph.*side.fallback = shown.*side.shown;
}

void set_default_orientation_2d(GraphData& graph) {
    graph.Depth = graph.DefaultDepth;
    graph.Inclination = graph.DefaultInclination;
    graph.Rotation = graph.DefaultRotation;
}

void save_default_orientation_2d(GraphData& graph) {
    graph.DefaultDepth = graph.Depth;
    graph.DefaultInclination = graph.Inclination;
    graph.DefaultRotation = graph.Rotation;
}

} // namespace quorvex::graph
