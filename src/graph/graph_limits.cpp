#include "graph_limits.h"

#include "graph_types.h"

#include <algorithm>
#include <cstdint>

namespace quorvex::graph {

namespace {

bool continues_character(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

} // namespace

size_t graph_text_length(const std::string& text) {
    size_t length = 0;
    for (const char byte : text)
        if (!continues_character(byte)) ++length;
    return length;
}

bool cut_graph_text(std::string& text) {
    if (text.size() <= k_max_graph_text) return false; // never more characters than bytes
    size_t characters = 0;
    for (size_t at = 0; at < text.size(); ++at) {
        if (continues_character(text[at])) continue;
        if (characters == k_max_graph_text) {
            text.resize(at);
            return true;
        }
        ++characters;
    }
    return false;
}

std::string bounded_graph_text(std::string text) {
    cut_graph_text(text);
    return text;
}

std::string graph_text_cut_message(const std::string& what, const std::string& graph, size_t length) {
    return "The " + what + " of the graph \"" + graph + "\" had " + std::to_string(length) +
           " characters; a graph's titles, notes and labels hold at most " + std::to_string(k_max_graph_text) +
           ", so the rest was left out.";
}

std::vector<std::string> cut_graph_texts(GraphData& graph) {
    std::vector<std::string> messages;
    const auto cut = [&](std::string& text, const std::string& what) {
        const size_t length = graph_text_length(text);
        if (cut_graph_text(text)) messages.push_back(graph_text_cut_message(what, graph.Name, length));
    };
    cut(graph.Header, "header");
    cut(graph.Footer, "footer");
    cut(graph.XAxisTitle, "X axis title");
    cut(graph.YAxisTitle, "Y axis title");
    cut(graph.ZAxisTitle, "Z axis title");
    for (Function& function : graph.Functions) {
        std::string label = function.label();
        cut(label, "label of \"" + function.full_name() + "\"");
        function.SetFuncLabel(label);
    }
    for (StrDataPnts& set : graph.DataSets) cut(set.Label, "label of the data set \"" + set.Name + "\"");
    size_t n = 0;
    for (GraphNote& note : graph.Notes) {
        ++n;
        std::string text = note.Text;
        cut(text, std::string(note.IsNote ? "note " : "point label ") + std::to_string(n));
        if (text.size() != note.Text.size()) note.SetNote(text.c_str());
    }
    return messages;
}

size_t graph_work(const GraphData& graph) {
    // Saturating: a damaged file may ask for more than a size_t holds.
    const auto times = [](size_t a, size_t b) { return b != 0 && a > SIZE_MAX / b ? SIZE_MAX : a * b; };
    const auto points = [](const VariableCopy& variable) {
        return variable ? static_cast<size_t>(std::max(1L, variable->num_points())) : size_t{1};
    };
    size_t work = 0;
    if (!graph.Functions.empty() && (graph.XAxisVar || graph.ZAxisVar))
        work = times(times(graph.Functions.size(), points(graph.XAxisVar)), points(graph.ZAxisVar));
    for (const StrDataPnts& set : graph.DataSets) {
        const size_t length = std::max(set.XPoints.size(), set.YPoints.size());
        work = work > SIZE_MAX - length ? SIZE_MAX : work + length;
    }
    return work;
}

std::string graph_work_refusal(size_t work) {
    return "The graph asks for " + std::to_string(work) +
           " points (each function at each point of its variable, and each data point); one graph holds at most " +
           std::to_string(k_max_graph_work) + ". Give the axis variable fewer points, or graph fewer functions.";
}

std::string graph_work_question(size_t work) {
    return "The graph has " + std::to_string(work) +
           " points, which takes a while to compute and draw. Do you want to go on?";
}

std::optional<std::string> too_many_bars(int type, size_t series, size_t points) {
    const GraphTypeInfo* info = find_graph_type(type);
    const int drawn_as = info ? info->drawn_as : type;
    if (drawn_as == graph_type::Pie) {
        if (points <= k_max_slices) return std::nullopt;
        return "A pie graph draws at most " + std::to_string(k_max_slices) + " slices; this one would have " +
               std::to_string(points) + ". Give it fewer points, or draw it as another type of graph.";
    }
    if (drawn_as != graph_type::Bar && drawn_as != graph_type::StackingBar) return std::nullopt;
    const size_t bars = points != 0 && series > SIZE_MAX / points ? SIZE_MAX : series * points;
    if (bars <= k_max_bars) return std::nullopt;
    return "A " + std::string(info ? info->caption : "Bar") + " graph draws at most " + std::to_string(k_max_bars) +
           " bars (series times points); this one would have " + std::to_string(bars) +
           ". Give it fewer points, or draw it as a Plot or Line graph.";
}

std::optional<std::string> too_many_bars(const GraphData& graph) {
    size_t points = graph.XAxisVar ? static_cast<size_t>(std::max(1L, graph.XAxisVar->num_points())) : 0;
    for (const StrDataPnts& set : graph.DataSets) points = std::max({points, set.XPoints.size(), set.YPoints.size()});
    return too_many_bars(graph.Type, graph.Functions.size() + graph.DataSets.size(), points);
}

} // namespace quorvex::graph
