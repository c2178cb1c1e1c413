#include "graph_file.h"

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

// The data part: a first line that names the format, the sizes, then per series its X and Y rows.
constexpr const char* k_magic = "QUORVEX 2D GRAPH DATA 1";
constexpr size_t k_max_points = 10000000; // a file asking for more is damaged

std::string number(double value) { return file_number(value, ChartData::is_hole(value)); }

bool read_row(std::istringstream& in, const char* tag, size_t points, std::vector<double>& row) {
    std::string word;
    return (in >> word) && word == tag && read_file_numbers(in, points, k_chart_hole, row);
}

struct IntKey {
    const char* key;
    int GraphData::*member;
};
constexpr IntKey k_view_keys[] = {
    {"DefaultDepth", &GraphData::DefaultDepth},
    {"Depth", &GraphData::Depth},
    {"DefaultInclination", &GraphData::DefaultInclination},
    {"Inclination", &GraphData::Inclination},
    {"DefaultRotation", &GraphData::DefaultRotation},
    {"Rotation", &GraphData::Rotation},
    {"DefaultMarginBottom2D", &GraphData::DefaultMarginBottom2D},
    {"MarginBottom2D", &GraphData::MarginBottom2D},
    {"DefaultMarginTop2D", &GraphData::DefaultMarginTop2D},
    {"MarginTop2D", &GraphData::MarginTop2D},
    {"DefaultMarginLeft2D", &GraphData::DefaultMarginLeft2D},
    {"MarginLeft2D", &GraphData::MarginLeft2D},
    {"DefaultMarginRight2D", &GraphData::DefaultMarginRight2D},
    {"MarginRight2D", &GraphData::MarginRight2D},
};

// The twelve 2-D colours; this file spells "GraphForegroundColor" in full.
std::string file_key(const GraphColorEntry& entry) {
    const std::string key = entry.document_key;
    return key == "GraphForegrondColor" ? "GraphForegroundColor" : key;
}

bool is_2d_color(const GraphColorEntry& entry) {
    const std::string key = entry.document_key;
    return key.rfind("Mesh", 0) != 0 && key.rfind("Surface", 0) != 0;
}

} // namespace

bool write_graph_file(const std::string& path, const ChartData& data, const GraphData& graph, std::string* error) {
    std::ostringstream out;
    out << k_magic << "\r\nSeries " << data.series() << "\r\nPoints " << data.points() << "\r\n";
    for (size_t s = 0; s < data.series(); ++s) {
        out << "X";
        for (size_t p = 0; p < data.points(); ++p) out << ' ' << number(data.x(s, p));
        out << "\r\nY";
        for (size_t p = 0; p < data.points(); ++p) out << ' ' << number(data.y(s, p));
        out << "\r\n";
    }
    store::IniFile ini("");
    ini.SetText(out.str());
    const std::string section = graph.Name.empty() ? "Graph" : graph.Name;
    ini.WriteString(section, "Header", first_line(graph.Header));
    ini.WriteString(section, "Footer", first_line(graph.Footer));
    ini.WriteString(section, "XAxisTitle", graph.XAxisTitle);
    ini.WriteString(section, "YAxisTitle", graph.YAxisTitle);
    ini.WriteString(section, "Type", std::to_string(graph.Type));
    for (const IntKey& key : k_view_keys) ini.WriteString(section, key.key, std::to_string(graph.*key.member));
    for (const GraphColorEntry& entry : graph_colors())
        if (is_2d_color(entry)) ini.WriteString(section, file_key(entry), color_text(graph.*entry.member));
    ini.WriteString(section, "NumDataSets", std::to_string(data.series()));
    for (size_t s = 0; s < data.series(); ++s) ini.WriteString(section, "SetLabel" + std::to_string(s + 1), data.label(s));
    return store::write_file_atomically(path, ini.Text(), error);
}

std::optional<GraphFile2D> read_graph_file(const std::string& path, std::string* error,
                                           const store::IniFile* user_settings) {
    const auto fail = [&](const std::string& why) -> std::optional<GraphFile2D> {
        if (error) *error = why;
        return std::nullopt;
    };
    const std::optional<std::string> text = read_graph_text(path, k_magic, "graph", error);
    if (!text) return std::nullopt;
    const std::string& bytes = *text;
    std::istringstream in(bytes);
    std::string line;
    std::getline(in, line);
    std::string word;
    size_t series = 0, points = 0;
    if (!(in >> word >> series) || word != "Series" || !(in >> word >> points) || word != "Points" || series > 1000 ||
        points > k_max_points || series * points > k_max_points)
        return fail("The graph file \"" + path + "\" is damaged: its sizes can not be read.");
    GraphFile2D file;
    file.data = ChartData(2, series, points);
    std::vector<double> xs, ys;
    for (size_t s = 0; s < series; ++s) {
        if (!read_row(in, "X", points, xs) || !read_row(in, "Y", points, ys))
            return fail("The graph file \"" + path + "\" is damaged: the values of series " + std::to_string(s + 1) +
                        " can not be read.");
        for (size_t p = 0; p < points; ++p) {
            file.data.set_x(s, p, xs[p]);
            file.data.set_y(s, p, ys[p]);
        }
    }

    store::IniFile ini("");
    ini.SetText(bytes);
    const std::vector<std::string> sections = ini.GetSectionNames();
    if (sections.empty()) return fail("The graph file \"" + path + "\" is damaged: its attributes are missing.");
    const std::string& section = sections.front();
    GraphData& graph = file.graph;
    graph.Name = section;
    graph.Header = ini.GetString(section, "Header");
    graph.Footer = ini.GetString(section, "Footer");
    graph.XAxisTitle = ini.GetString(section, "XAxisTitle");
    graph.YAxisTitle = ini.GetString(section, "YAxisTitle");
    graph.Type = ini.GetInt(section, "Type", graph.Type);
    for (const IntKey& key : k_view_keys) graph.*key.member = ini.GetInt(section, key.key, graph.*key.member);
    if (user_settings) graph.SetDefaultColors(*user_settings);
    for (const GraphColorEntry& entry : graph_colors())
        if (is_2d_color(entry)) ini.GetColor(section, file_key(entry), graph.*entry.member, graph.*entry.member);
    for (size_t s = 0; s < series; ++s) {
        std::string label = ini.GetString(section, "SetLabel" + std::to_string(s + 1));
        const size_t length = graph_text_length(label);
        if (cut_graph_text(label))
            file.messages.push_back(graph_text_cut_message("label of series " + std::to_string(s + 1), graph.Name, length));
        file.data.set_label(s, std::move(label));
    }
    std::vector<std::string> cut = cut_graph_texts(graph);
    file.messages.insert(file.messages.begin(), cut.begin(), cut.end());
    return file;
}

} // namespace quorvex::graph
