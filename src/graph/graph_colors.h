#pragma once
#include "graph_data.h"

#include <span>
#include <string>

namespace quorvex::graph {

inline constexpr const char* k_default_colors_section = "Graph Default Colors";
inline constexpr const char* k_default_orientation_section = "Graph Default Orientation";

// One of the sixteen chart colours: where GraphData keeps it, the key a document saves it under
// (spelling included: "GraphForegrondColor"), the key of the user's default in the settings file
// (the document key without "Color"), and its built-in value.
struct GraphColorEntry {
    TColor GraphData::*member;
    const char* document_key;
    const char* ini_key;
    TColor initial;
};

std::span<const GraphColorEntry> graph_colors();

// "r,g,b", the text form of a colour in settings and documents.
std::string color_text(TColor color);

} // namespace quorvex::graph
