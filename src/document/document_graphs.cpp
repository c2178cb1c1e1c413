// The graphs of a document: the list in [GRAPHS] and one section per graph, whose keys carry
// everything a graph window needs to draw it again.
#include "document.h"
#include "section_writer.h"

#include "graph/graph_colors.h"
#include "graph/graph_limits.h"
#include "graph/graph_types.h"
#include "store/ini_file.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace quorvex::document {

namespace {

constexpr const char* k_graphs = "GRAPHS";
constexpr const char* k_open_caption = "File Open";

struct IntField {
    const char* key;
    int graph::GraphData::*member;
    int fallback;
};
// The 2-D block, in saved order; the three switches are bools and handled beside it.
constexpr IntField k_2d_fields[] = {
    {"Depth", &graph::GraphData::Depth, 20},
    {"Inclination", &graph::GraphData::Inclination, 15},
    {"Rotation", &graph::GraphData::Rotation, 10},
    {"DefaultInclination", &graph::GraphData::DefaultInclination, 15},
    {"DefaultRotation", &graph::GraphData::DefaultRotation, 10},
    {"MarginBottom2D", &graph::GraphData::MarginBottom2D, 75},
    {"MarginTop2D", &graph::GraphData::MarginTop2D, 16},
    {"MarginLeft2D", &graph::GraphData::MarginLeft2D, 67},
    {"MarginRight2D", &graph::GraphData::MarginRight2D, 9},
    {"DefaultMarginBottom2D", &graph::GraphData::DefaultMarginBottom2D, 75},
    {"DefaultMarginTop2D", &graph::GraphData::DefaultMarginTop2D, 16},
    {"DefaultMarginLeft2D", &graph::GraphData::DefaultMarginLeft2D, 67},
    {"DefaultMarginRight2D", &graph::GraphData::DefaultMarginRight2D, 9},
    {"XAxisLogarithmic", &graph::GraphData::XAxisLogarithmic, 0},
    {"YAxisLogarithmic", &graph::GraphData::YAxisLogarithmic, 0},
};
struct FlagField {
    const char* key;
    bool graph::GraphData::*member;
};
constexpr FlagField k_2d_flags[] = {
    {"GraphTwoSolutions", &graph::GraphData::GraphTwoSolutions},
    {"AskGraphTwoSolutions", &graph::GraphData::AskGraphTwoSolutions},
    {"ApplyAllLineWidths", &graph::GraphData::ApplyAllLineWidths},
};
constexpr bool k_2d_flag_defaults[] = {true, true, false};

struct FloatField {
    const char* key;
    float graph::GraphData::*member;
    float fallback;
};
constexpr FloatField k_3d_fields[] = {
    {"PerspectiveDepth", &graph::GraphData::PerspectiveDepth, 20.0f},
    {"XRotation", &graph::GraphData::XRotation, 25.0f},
    {"YRotation", &graph::GraphData::YRotation, 0.34f},
    {"ZRotation", &graph::GraphData::ZRotation, 310.0f},
    {"XTranslate", &graph::GraphData::XTranslate, 0.0f},
    {"YTranslate", &graph::GraphData::YTranslate, 0.0f},
    {"Scale", &graph::GraphData::Scale, 1.0f},
    {"DefaultPerspectiveDepth", &graph::GraphData::DefaultPerspectiveDepth, 20.0f},
    {"DefaultXRotation", &graph::GraphData::DefaultXRotation, 25.0f},
    {"DefaultYRotation", &graph::GraphData::DefaultYRotation, 0.34f},
    {"DefaultZRotation", &graph::GraphData::DefaultZRotation, 310.0f},
    {"DefaultXTranslate", &graph::GraphData::DefaultXTranslate, 0.0f},
    {"DefaultYTranslate", &graph::GraphData::DefaultYTranslate, 0.0f},
    {"DefaultScale", &graph::GraphData::DefaultScale, 1.0f},
};

std::string numbered(const char* key, size_t n) { return key + std::to_string(n); }

std::string float_text(float value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.3f", static_cast<double>(value));
    return text;
}

std::string axis_variable_text(const graph::VariableCopy& variable) {
    std::ostringstream out;
    out << variable->name() << '(';
    variable->GetVarIncValueStr(out, 14);
    out << ')';
    return out.str();
}

bool is_2d_color(const char* key) { return std::string_view(key) == "DataAreaForegroundColor"; }
bool is_3d_color(const char* key) {
    const std::string_view k(key);
    return k == "MeshBottomColor" || k == "MeshTopColor" || k == "SurfaceBottomColor" || k == "SurfaceTopColor";
}

} // namespace

bool Document::WriteGraphs(SectionWriter& out) {
    if (Graphs.empty()) return true;
    if (!step("Writing And Saving Graphs", 0)) return false;
    out.Begin(k_graphs);
    for (size_t i = 0; i < Graphs.size(); ++i) out.Put(numbered("Graph", i + 1), Graphs[i].Data.Name);
    const int share = 100 / static_cast<int>(Graphs.size());
    for (size_t i = 0; i < Graphs.size(); ++i) {
        if (cancelled()) return false;
        out.Begin(numbered("Graph", i + 1));
        WriteGraph(out, Graphs[i]);
        if (!step("Writing And Saving Graphs", static_cast<int>(i + 1) * share)) return false;
    }
    return true;
}

void Document::WriteGraph(SectionWriter& out, const DocumentGraph& graph) {
    const graph::GraphData& data = graph.Data;
    const int kind = data.GetGraphType();
    if (!data.Header.empty()) out.Put("Header", data.Header);
    if (!data.Footer.empty()) out.Put("Footer", data.Footer);
    if (!data.XAxisTitle.empty()) out.Put("XAxisTitle", data.XAxisTitle);
    if (!data.YAxisTitle.empty()) out.Put("YAxisTitle", data.YAxisTitle);
    if (!data.ZAxisTitle.empty()) out.Put("ZAxisTitle", data.ZAxisTitle);
    if (data.XAxisVar) out.Put("XAxisVariable", axis_variable_text(data.XAxisVar));
    if (data.ZAxisVar) out.Put("ZAxisVariable", axis_variable_text(data.ZAxisVar));
    if (kind == 1) out.PutInt("Type", data.Type);
    if (kind == 2) out.PutInt("Type", static_cast<long>(data.Type3D));

    for (const graph::GraphColorEntry& color : graph::graph_colors()) {
        if (is_2d_color(color.document_key)) {
            out.PutInt("ShowGridLines", data.ShowGridLines); // stands among the colours
            if (kind != 1) continue;
        }
        if (is_3d_color(color.document_key) && kind != 2) continue;
        out.Put(color.document_key, graph::color_text(data.*color.member));
    }

    if (kind == 1) {
        for (const IntField& field : k_2d_fields) out.PutInt(field.key, data.*field.member);
        for (const FlagField& flag : k_2d_flags) out.PutInt(flag.key, data.*flag.member ? 1 : 0);
    } else if (kind == 2) {
        for (const FloatField& field : k_3d_fields) out.Put(field.key, float_text(data.*field.member));
    }

    for (size_t i = 0; i < data.Functions.size(); ++i) {
        const engine::Function& function = data.Functions[i];
        // The engine's definition wins: the user may have changed the function since it was graphed.
        const int known = m_parser.find_function(function.full_name().c_str());
        const char* value = known >= 0 ? m_parser.get_func_value(known) : nullptr;
        out.Put(numbered("Function", i + 1), function.full_name() + "=" + (value ? value : function.value()));
        if (!function.label().empty()) out.Put(numbered("Label", i + 1), function.label());
        const FunctionStyle& style = graph.StyleOf(i);
        if (style.LineColor) out.Put(numbered("FuncLineColor", i + 1), graph::color_text(*style.LineColor));
        out.PutInt(numbered("FuncLineWidth", i + 1), style.LineWidth);
    }

    if (!data.DataSets.empty()) {
        out.PutInt("NumDataSets", static_cast<long>(data.DataSets.size()));
        int n = 1;
        for (const graph::StrDataPnts& set : data.DataSets) WriteDataSet(out, set, n++);
    }
    if (!data.Notes.empty()) {
        out.PutInt("NumNotes", static_cast<long>(data.Notes.size()));
        size_t n = 1;
        for (const graph::GraphNote& note : data.Notes) {
            const std::string text = note.GetIniNote();
            if (!text.empty()) out.Put(numbered("NoteText", n), text);
            out.PutInt(numbered("NoteXPoint", n), note.PosX);
            out.PutInt(numbered("NoteYPoint", n), note.PosY);
            out.PutInt(numbered("NoteIsNote", n), note.IsNote ? 1 : 0);
            ++n;
        }
    }
}

bool Document::ReadGraphs(const store::IniFile& ini) {
    Graphs.clear();
    const std::vector<std::string> keys = ini.GetKeyNames(k_graphs);
    if (keys.empty()) return true;
    if (!step("Reading And Defining Graphs, Please Wait!", 10)) return false;
    const int share = 90 / static_cast<int>(keys.size());
    int percent = 10;
    for (const std::string& key : keys) {
        if (cancelled()) return false;
        // The key names the graph's section: a line "=" of a damaged list names none.
        if (key.empty()) continue;
        DocumentGraph graph;
        const std::string name = ini.GetString(k_graphs, key);
        graph.Data.SetName(name.empty() ? key.c_str() : name.c_str());
        ReadGraph(ini, key, graph);
        Graphs.push_back(std::move(graph));
        percent += share;
        if (!step("Reading And Defining Graphs, Please Wait!", percent)) return false;
    }
    return true;
}

namespace {

// "name(start,end,steps)" split into its four parts; false for another form.
bool split_axis_variable(const std::string& text, std::string parts[4]) {
    const size_t open = text.find('(');
    const size_t close = text.rfind(')');
    if (open == std::string::npos || close == std::string::npos || close < open) return false;
    parts[0] = std::string(store::trim_blanks(std::string_view(text).substr(0, open)));
    const std::string inside = text.substr(open + 1, close - open - 1);
    const size_t first = inside.find(',');
    const size_t second = first == std::string::npos ? first : inside.find(',', first + 1);
    if (second == std::string::npos) return false;
    parts[1] = inside.substr(0, first);
    parts[2] = inside.substr(first + 1, second - first - 1);
    parts[3] = inside.substr(second + 1);
    return !parts[0].empty();
}

} // namespace

void Document::ReadGraph(const store::IniFile& ini, const std::string& section, DocumentGraph& graph) {
    graph::GraphData& data = graph.Data;
    const std::string& title = data.Name;
    data.Header = ini.GetString(section, "Header");
    data.Footer = ini.GetString(section, "Footer");
    data.XAxisTitle = ini.GetString(section, "XAxisTitle");
    data.YAxisTitle = ini.GetString(section, "YAxisTitle");
    data.ZAxisTitle = ini.GetString(section, "ZAxisTitle");

    for (size_t n = 1;; ++n) {
        const std::string text = ini.GetString(section, numbered("Function", n));
        if (text.empty()) break;
        const size_t equal = text.find('=');
        if (equal == 0 || equal == std::string::npos) {
            report("File data for function " + std::to_string(n) + " of graph \"" + title +
                       "\" could not be loaded. Your file may be corrupt!",
                   k_open_caption);
            continue;
        }
        engine::Function function(text.substr(0, equal), text.substr(equal + 1));
        function.SetFuncLabel(ini.GetString(section, numbered("Label", n)));
        FunctionStyle style;
        store::TColor color = 0;
        if (ini.GetColor(section, numbered("FuncLineColor", n), 0, color)) style.LineColor = color;
        style.LineWidth = ini.GetInt(section, numbered("FuncLineWidth", n), 1);
        data.Functions.push_back(std::move(function));
        graph.FunctionStyles.push_back(style);
    }

    if (!data.Functions.empty()) {
        bool failed = false;
        for (const char* key : {"XAxisVariable", "ZAxisVariable"}) {
            const std::string text = ini.GetString(section, key);
            if (text.empty()) continue;
            std::string parts[4];
            engine::complex low, high, steps;
            if (!split_axis_variable(text, parts) || !evaluate(parts[1], low) || !evaluate(parts[2], high) ||
                !evaluate(parts[3], steps) || !(steps.real() >= 1 && steps.real() <= 1e7)) {
                failed = true;
                continue;
            }
            const engine::Variable variable(parts[0], low, high, static_cast<long>(steps.real()));
            (key[0] == 'X' ? data.XAxisVar : data.ZAxisVar) = graph::VariableCopy(variable);
        }
        if (failed)
            report("File data for the variables in graph \"" + title +
                       "\" could not be completely loaded, your file may be corrupt!",
                   k_open_caption);
    }

    // Counts beyond the keys the section holds can only come from damage; they are not walked.
    const int key_count = static_cast<int>(std::min<size_t>(ini.CountKeys(section), INT_MAX));
    const int sets = std::min(ini.GetInt(section, "NumDataSets", 0), key_count);
    for (int n = 1; n <= sets; ++n) {
        graph::StrDataPnts set;
        if (ReadDataSet(set, ini, section, title, n)) data.DataSets.push_back(std::move(set));
    }
    const int notes = std::min(ini.GetInt(section, "NumNotes", 0), key_count);
    for (int n = 1; n <= notes; ++n) {
        graph::GraphNote note;
        if (ReadNote(note, ini, section, title, n)) data.Notes.push_back(std::move(note));
    }

    for (const graph::GraphColorEntry& color : graph::graph_colors())
        ini.GetColor(section, color.document_key, color.initial, data.*color.member);

    const int type = ini.GetInt(section, "Type", 1);
    const int kind = data.GetGraphType();
    if (kind == 1) {
        if (type != 0 && !graph::find_graph_type(type))
            report("File data for the type of graph \"" + title + "\" is not valid, your file may be corrupt!",
                   k_open_caption);
        else
            data.Type = type;
        if (type != 0) {
            for (const IntField& field : k_2d_fields) data.*field.member = ini.GetInt(section, field.key, field.fallback);
            for (size_t i = 0; i < std::size(k_2d_flags); ++i)
                data.*k_2d_flags[i].member = ini.GetInt(section, k_2d_flags[i].key, k_2d_flag_defaults[i]) != 0;
        }
    } else if (kind == 2) {
        if (type >= 0) data.Type3D = static_cast<unsigned long>(type);
        if (type != 0) {
            for (const FloatField& field : k_3d_fields) {
                const std::string text = ini.GetString(section, field.key);
                char* end = nullptr;
                const float value = text.empty() ? field.fallback : std::strtof(text.c_str(), &end);
                data.*field.member = std::isfinite(value) ? value : field.fallback;
            }
        }
    }
    data.ShowGridLines = ini.GetInt(section, "ShowGridLines", 1);
    // Titles and notes are laid out by the chart at a cost that grows with the square of their
    // length: a damaged or hostile file must not hand it a megabyte of header.
    for (const std::string& message : graph::cut_graph_texts(data)) report(message, k_open_caption);
}

} // namespace quorvex::document
