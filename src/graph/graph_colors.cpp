#include "graph_colors.h"

#include <array>

namespace quorvex::graph {

namespace {

const std::array<GraphColorEntry, 16> k_colors{{
    {&GraphData::BackgroundColor, "BackgroundColor", "Background", 0x808040},
    {&GraphData::ForegroundColor, "ForegroundColor", "Foreground", 0},
    {&GraphData::DataAreaBackgroundColor, "DataAreaBackgroundColor", "DataAreaBackground", 0xFFFFFF},
    {&GraphData::DataAreaForegroundColor, "DataAreaForegroundColor", "DataAreaForeground", 0},
    {&GraphData::FooterBackgroundColor, "FooterBackgroundColor", "FooterBackground", 0},
    {&GraphData::FooterForegroundColor, "FooterForegroundColor", "FooterForeground", 0xFFFFFF},
    {&GraphData::GraphBackgroundColor, "GraphBackgroundColor", "GraphBackground", 0},
    {&GraphData::GraphForegrondColor, "GraphForegrondColor", "GraphForegrond", 0xFF},
    {&GraphData::HeaderBackgroundColor, "HeaderBackgroundColor", "HeaderBackground", 0},
    {&GraphData::HeaderForegroundColor, "HeaderForegroundColor", "HeaderForeground", 0xFFFFFF},
    {&GraphData::LegendBackgroundColor, "LegendBackgroundColor", "LegendBackground", 0xFFFFFF},
    {&GraphData::LegendForegroundColor, "LegendForegroundColor", "LegendForeground", 0},
    {&GraphData::MeshBottomColor, "MeshBottomColor", "MeshBottom", 0},
    {&GraphData::MeshTopColor, "MeshTopColor", "MeshTop", 0},
    {&GraphData::SurfaceBottomColor, "SurfaceBottomColor", "SurfaceBottom", 0},
    {&GraphData::SurfaceTopColor, "SurfaceTopColor", "SurfaceTop", 0xFFFFFF},
}};

} // namespace

std::span<const GraphColorEntry> graph_colors() {
    return k_colors;
}

std::string color_text(TColor color) {
    return std::to_string(color & 0xFF) + "," + std::to_string(color >> 8 & 0xFF) + "," +
           std::to_string(color >> 16 & 0xFF);
}

} // namespace quorvex::graph
