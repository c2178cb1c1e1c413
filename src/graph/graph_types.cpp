#include "graph_types.h"

#include <array>

namespace quorvex::graph {

namespace {

using namespace graph_type;

constexpr std::array<GraphTypeInfo, 15> k_types{{
    {Plot, "Plot", false, 1, Plot},
    {Bar, "Bar", true, 1, Bar},
    {Pie, "Pie", false, 1, Pie},
    {StackingBar, "Stacking Bar", true, 1, StackingBar},
    {Area, "Area", false, 1, Area},
    {HiLo, "HiLo", true, 2, HiLo},
    {HiLoOpenClose, "HiLo Open Close", true, 4, HiLoOpenClose},
    {Candle, "Candle", true, 4, Candle},
    {Polar, "Polar", false, 1, Polar},
    {Radar, "Radar", true, 1, Radar},
    {RadarFilled, "Radar Filled", true, 1, RadarFilled},
    {Scatter, "Scatter", false, 1, Plot}, // a plot without lines
    {Line, "Line", false, 1, Plot},       // a plot without symbols
    {Hystogram, "Hystogram", false, 1, Bar},
    {Pareto, "Pareto", false, 1, Bar}, // with the point index as X
}};

constexpr std::array<const char*, k_type3d_positions> k_flag_names{"Mesh",   "Shade",   "Contour", "Zone",
                                                                   "Hidden", "Project", "Surface"};

unsigned long power_of_ten(int exponent) {
    unsigned long result = 1;
    for (int i = 0; i < exponent; ++i)
        result *= 10;
    return result;
}

bool valid_position(int position) {
    return position >= 1 && position <= k_type3d_positions;
}

} // namespace

std::span<const GraphTypeInfo> graph_types() {
    return k_types;
}

const GraphTypeInfo* find_graph_type(int type) {
    for (const GraphTypeInfo& info : k_types)
        if (info.type == type) return &info;
    return nullptr;
}

const char* graph_type_caption(int type) {
    const GraphTypeInfo* info = find_graph_type(type);
    return info ? info->caption : "";
}

const char* type3d_flag_name(int position) {
    return valid_position(position) ? k_flag_names[static_cast<size_t>(position - 1)] : "";
}

const char* type3d_form_caption(int form) {
    return form == 1 ? "Bar" : "Surface";
}

int Get3DTypeBit(unsigned long value, int position) {
    if (!valid_position(position)) return 0;
    return static_cast<int>(value / power_of_ten(position - 1) % 10);
}

bool Set3DTypeBit(unsigned long& value, int position, int digit) {
    if (!valid_position(position) || digit < 0 || digit > 9) return false;
    const unsigned long scale = power_of_ten(position - 1);
    value = value - static_cast<unsigned long>(Get3DTypeBit(value, position)) * scale +
            static_cast<unsigned long>(digit) * scale;
    return true;
}

} // namespace quorvex::graph
