#include "graph_note.h"

#include <string_view>

namespace quorvex::graph {

namespace {

std::string replace_all(const std::string& text, std::string_view from, std::string_view to) {
    std::string result;
    result.reserve(text.size());
    size_t start = 0;
    for (size_t found = text.find(from); found != std::string::npos; found = text.find(from, start)) {
        result.append(text, start, found - start);
        result.append(to);
        start = found + from.size();
    }
    result.append(text, start, std::string::npos);
    return result;
}

bool is_blank(char c) {
    return c == ' ' || c == '\t';
}

constexpr std::string_view k_separator = " , ";

} // namespace

std::string note_text_from_ini(const std::string& text) {
    return replace_all(text, "||", "\r\n");
}
std::string note_text_to_ini(const std::string& text) {
    return replace_all(text, "\r\n", "||");
}

GraphNote::GraphNote(const char* text, int x, int y, int index, bool is_note)
    : PosY(y), PosX(x), Index(index), IsNote(is_note) {
    SetNote(text);
}

void GraphNote::SetNote(const char* text) {
    if (!text) return;
    Text = note_text_from_ini(text);
    IniText = note_text_to_ini(Text);
    SetValues(Text.c_str());
}

std::string GraphNote::GetIniNote() const {
    return note_text_to_ini(Text);
}

bool GraphNote::SetValues(const char* text) {
    XStr.clear();
    YStr.clear();
    ZStr.clear();
    if (IsNote || !text) return false;

    std::string_view label(text);
    while (!label.empty() && is_blank(label.front()))
        label.remove_prefix(1);
    if (!label.empty() && is_blank(label.back())) label.remove_suffix(1);
    if (label.size() < 2 || label.front() != '(' || label.back() != ')') return false;

    // Between the brackets: "x , y" or "x , y , z". Only the separators with their blanks cut, so
    // a coordinate may itself hold commas and brackets, as in "max(1,2)".
    const std::string_view inner = label.substr(1, label.size() - 2);
    const size_t first = inner.find(k_separator);
    if (first == std::string_view::npos) return false;
    const size_t y_start = first + k_separator.size();
    const size_t second = inner.find(k_separator, y_start);
    XStr = inner.substr(0, first);
    if (second == std::string_view::npos) {
        YStr = inner.substr(y_start);
    } else {
        YStr = inner.substr(y_start, second - y_start);
        ZStr = inner.substr(second + k_separator.size());
    }
    return true;
}

void GraphNote::SetIsNote(bool is_note) {
    IsNote = is_note;
    SetValues(Text.c_str());
}

} // namespace quorvex::graph
