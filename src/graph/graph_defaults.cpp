#include "graph_colors.h"

namespace quorvex::graph {

void GraphData::SetDefaultOrientation(const store::IniFile& ini) {
    const auto read = [&ini](const char* key, int fallback) {
        return ini.GetInt(k_default_orientation_section, key, fallback);
    };
    // "Rotation" has no "2D" ending, and Y rotation falls back to 0 rather than its built-in
    // 0.34: settings files written so far depend on both.
    Depth = DefaultDepth = read("Depth2D", 20);
    Inclination = DefaultInclination = read("Inclination2D", 15);
    Rotation = DefaultRotation = read("Rotation", 10);
    PerspectiveDepth = DefaultPerspectiveDepth = static_cast<float>(read("PerspectiveDepth", 20));
    XRotation = DefaultXRotation = static_cast<float>(read("XRotation3D", 25));
    YRotation = DefaultYRotation = static_cast<float>(read("YRotation3D", 0));
    ZRotation = DefaultZRotation = static_cast<float>(read("ZRotation3D", 310));
}

void GraphData::SetDefaultColors(const store::IniFile& ini) {
    for (const GraphColorEntry& entry : graph_colors())
        ini.GetColor(k_default_colors_section, entry.ini_key, entry.initial, this->*entry.member);
}

void GraphData::SetUserDefaults(const store::IniFile* ini) {
    if (!ini) return;
    SetDefaultOrientation(*ini);
    SetDefaultColors(*ini);
}

bool GraphData::SaveDefaultColors(store::IniFile& ini) const {
    for (const GraphColorEntry& entry : graph_colors())
        if (!ini.WriteString(k_default_colors_section, entry.ini_key, color_text(this->*entry.member)))
            return false;
    return true;
}

} // namespace quorvex::graph
