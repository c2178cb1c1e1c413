#include "graph_limits.h"

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

} // namespace quorvex::graph
