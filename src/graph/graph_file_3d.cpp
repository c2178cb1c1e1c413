#include "graph_file_3d.h"

#include "graph_colors.h"
#include "graph_file_text.h"
#include "graph_limits.h"

#include "store/atomic_write.h"
#include "store/ini_file.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace quorvex::graph {

namespace {

constexpr const char* k_magic = "QUORVEX 3D GRAPH DATA 1";
constexpr size_t k_max_lines = 100000;
constexpr size_t k_max_values = 10000000; // a file asking for more is damaged

std::string number(double value) { return file_number(value, Grid3D::is_hole(value)); }

bool read_values(std::istringstream& in, size_t count, std::vector<double>& out) {
    return read_file_numbers(in, count, k_grid_hole, out);
}

struct FloatKey {
    const char* key;
    float GraphData::*member;
    float fallback;
};
// Written in this order, "%.3f" each; a missing or unreadable one reads as the initial view.
constexpr FloatKey k_view_keys[] = {
    {"PerspectiveDepth", &GraphData::PerspectiveDepth, 20},
    {"XRotation", &GraphData::XRotation, 25},
    {"YRotation", &GraphData::YRotation, 0.34f},
    {"ZRotation", &GraphData::ZRotation, 310},
    {"XTranslate", &GraphData::XTranslate, 0},
    {"YTranslate", &GraphData::YTranslate, 0},
    {"Scale", &GraphData::Scale, 1},
    {"DefaultPerspectiveDepth", &GraphData::DefaultPerspectiveDepth, 20},
    {"DefaultXRotation", &GraphData::DefaultXRotation, 25},
    {"DefaultYRotation", &GraphData::DefaultYRotation, 0.34f},
    {"DefaultZRotation", &GraphData::DefaultZRotation, 310},
    {"DefaultXTranslate", &GraphData::DefaultXTranslate, 0},
    {"DefaultYTranslate", &GraphData::DefaultYTranslate, 0},
    {"DefaultScale", &GraphData::DefaultScale, 1},
};

// The fifteen 3-D colours, in writing order, with this file's spellings.
constexpr const char* k_color_keys[] = {
    "BackgroundColor",       "ForegroundColor",       "DataAreaBackgroundColor", "FooterBackgroundColor",
    "FooterForegroundColor", "GraphBackgroundColor",  "GraphForegrondColor",     "HeaderBackgroundColor",
    "HeaderForegroundColor", "LegendBackgroundColor", "LegendForegroundColor",   "MeshBottomColor",
    "MeshTopColor",          "SurfaceBottomColor",    "SurfaceTopColor"};

const GraphColorEntry* color_entry(const std::string& key) {
    for (const GraphColorEntry& entry : graph_colors())
        if (key == entry.document_key) return &entry;
    return nullptr;
}

constexpr const char* k_flag_keys[] = {"Mesh", "Shade", "Contour", "Zone", "Hidden"};

} // namespace

bool write_graph_file_3d(const std::string& path, const Grid3D& grid, const GraphData& graph, std::string* error) {
    std::ostringstream out;
    out << k_magic << "\r\n" << (grid.is_regular() ? "Regular" : "Irregular") << "\r\nX " << grid.nx();
    for (size_t i = 0; i < grid.nx(); ++i) out << ' ' << number(grid.x(i));
    out << "\r\nY " << grid.ny();
    for (size_t j = 0; j < grid.ny(); ++j) out << ' ' << number(grid.y(j));
    out << "\r\n";
    for (size_t i = 0; i < grid.nx(); ++i) {
        out << "Z";
        for (size_t j = 0; j < grid.ny(); ++j) out << ' ' << number(grid.value(i, j));
        out << "\r\n";
    }
    store::IniFile ini("");
    ini.SetText(out.str());
    const std::string section = graph.Name.empty() ? "Graph" : graph.Name;
    // The titles as the chart shows them: its Y axis carries the graph's Z variable.
    ini.WriteString(section, "Header", first_line(graph.Header));
    ini.WriteString(section, "Footer", first_line(graph.Footer));
    ini.WriteString(section, "XAxisTitle", graph.XAxisTitle);
    ini.WriteString(section, "YAxisTitle", graph.ZAxisTitle);
    ini.WriteString(section, "ZAxisTitle", graph.YAxisTitle);
    for (int position = 1; position <= 5; ++position)
        ini.WriteString(section, k_flag_keys[position - 1], std::to_string(graph.Get3DTypeBit(position)));
    const bool project = graph.Get3DTypeBit(type3d::Project) != 0;
    ini.WriteString(section, "ProjectZMin", project ? "1" : "0");
    ini.WriteString(section, "ProjectZMax", project ? "2" : "0");
    ini.WriteString(section, "Surface", std::to_string(graph.Get3DTypeBit(type3d::Surface)));
    for (const FloatKey& key : k_view_keys) {
        char text[64];
        std::snprintf(text, sizeof text, "%.3f", static_cast<double>(graph.*key.member));
        ini.WriteString(section, key.key, text);
    }
    for (const char* key : k_color_keys)
        if (const GraphColorEntry* entry = color_entry(key)) ini.WriteString(section, key, color_text(graph.*entry->member));
    return store::write_file_atomically(path, ini.Text(), error);
}

std::optional<GraphFile3D> read_graph_file_3d(const std::string& path, std::string* error,
                                              const store::IniFile* user_settings) {
    const auto fail = [&](const std::string& why) -> std::optional<GraphFile3D> {
        if (error) *error = why;
        return std::nullopt;
    };
    const std::optional<std::string> text = read_graph_text(path, k_magic, "3-D graph", error);
    if (!text) return std::nullopt;
    const std::string& bytes = *text;
    std::istringstream in(bytes);
    std::string line;
    std::getline(in, line);
    const std::string damaged = "The graph file \"" + path + "\" is damaged: ";
    std::string form, word;
    size_t nx = 0, ny = 0;
    std::vector<double> xs, ys, row;
    if (!(in >> form) || (form != "Regular" && form != "Irregular") || !(in >> word >> nx) || word != "X" ||
        nx > k_max_lines || !read_values(in, nx, xs) || !(in >> word >> ny) || word != "Y" || ny > k_max_lines ||
        nx * ny > k_max_values || !read_values(in, ny, ys))
        return fail(damaged + "its grid can not be read.");
    GraphFile3D file;
    file.grid = Grid3D::irregular(xs, ys);
    if (form == "Regular") file.grid.mark_regular();
    for (size_t i = 0; i < nx; ++i) {
        if (!(in >> word) || word != "Z" || !read_values(in, ny, row))
            return fail(damaged + "the values of X line " + std::to_string(i + 1) + " can not be read.");
        for (size_t j = 0; j < ny; ++j) file.grid.set(i, j, row[j]);
    }

    store::IniFile ini("");
    ini.SetText(bytes);
    const std::vector<std::string> sections = ini.GetSectionNames();
    if (sections.empty()) return fail(damaged + "its attributes are missing.");
    const std::string& section = sections.front();
    GraphData& graph = file.graph;
    graph.Name = section;
    graph.Header = ini.GetString(section, "Header");
    graph.Footer = ini.GetString(section, "Footer");
    graph.XAxisTitle = ini.GetString(section, "XAxisTitle");
    graph.ZAxisTitle = ini.GetString(section, "YAxisTitle");
    graph.YAxisTitle = ini.GetString(section, "ZAxisTitle");
    for (int position = 1; position <= 5; ++position)
        graph.Set3DTypeBit(position, ini.GetInt(section, k_flag_keys[position - 1], graph.Get3DTypeBit(position)) != 0);
    // Projection is asked for under a key the writer does not use, so a reopened picture has none.
    graph.Set3DTypeBit(type3d::Project, ini.GetInt(section, "Project", 0) != 0);
    graph.Set3DTypeBit(type3d::Surface, ini.GetInt(section, "Surface", 0) != 0);
    for (const FloatKey& key : k_view_keys) {
        const std::string text = ini.GetString(section, key.key);
        char* end = nullptr;
        const double value = std::strtod(text.c_str(), &end);
        graph.*key.member = text.empty() || !end || *end != '\0' ? key.fallback : static_cast<float>(value);
    }
    if (user_settings) graph.SetDefaultColors(*user_settings);
    for (const char* key : k_color_keys)
        if (const GraphColorEntry* entry = color_entry(key))
            ini.GetColor(section, key, graph.*entry->member, graph.*entry->member);
    file.messages = cut_graph_texts(graph);
    return file;
}

} // namespace quorvex::graph
