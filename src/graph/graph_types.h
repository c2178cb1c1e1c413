#pragma once
#include <span>

namespace quorvex::graph {

// The kinds of two-dimensional graph, by the number saved in documents. 12 is not used.
namespace graph_type {
inline constexpr int Plot = 1;
inline constexpr int Bar = 2;
inline constexpr int Pie = 3;
inline constexpr int StackingBar = 4;
inline constexpr int Area = 5;
inline constexpr int HiLo = 6;
inline constexpr int HiLoOpenClose = 7;
inline constexpr int Candle = 8;
inline constexpr int Polar = 9;
inline constexpr int Radar = 10;
inline constexpr int RadarFilled = 11;
inline constexpr int Scatter = 13;
inline constexpr int Line = 14;
inline constexpr int Hystogram = 15;
inline constexpr int Pareto = 16;
} // namespace graph_type

struct GraphTypeInfo {
    int type;
    const char* caption; // what the user sees, spelling included
    bool needs_shared_x; // all sets must have equal point counts (DataLayout 1)
    int min_series;      // least number of functions and data sets together
    int drawn_as;        // the type the chart draws it as
};

std::span<const GraphTypeInfo> graph_types();
// Null for 12 and for any number that is no graph type.
const GraphTypeInfo* find_graph_type(int type);
// The caption of a type, or an empty text for a number that is no graph type.
const char* graph_type_caption(int type);

// The 3-D attributes are decimal digits of one number, the first in the units digit: a saved
// document holds 1111, not fifteen, for the first four flags set.
namespace type3d {
inline constexpr int Mesh = 1;
inline constexpr int Shade = 2;
inline constexpr int Contour = 3;
inline constexpr int Zone = 4;
inline constexpr int Hidden = 5;  // hidden lines
inline constexpr int Project = 6; // projection on both Z planes
inline constexpr int Surface = 7; // the form: 0 a surface, 1 bars
} // namespace type3d

inline constexpr int k_type3d_positions = 7;
inline constexpr unsigned long k_default_type3d = 1111;

// The name of a position ("Mesh" ... "Surface"), or an empty text outside 1..7.
const char* type3d_flag_name(int position);
// The caption of the 3-D form held at the Surface position: "Surface" for 0, "Bar" for 1.
const char* type3d_form_caption(int form);

// The digit at `position` counted from 1 at the right; 0 past the number's length and for a
// position outside 1..7.
int Get3DTypeBit(unsigned long value, int position);
// Replaces the digit at `position` by `digit`. False, leaving `value` alone, for a position
// outside 1..7 or a digit outside 0..9.
bool Set3DTypeBit(unsigned long& value, int position, int digit);

} // namespace quorvex::graph
