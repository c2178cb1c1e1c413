// What loading and saving share: the line split, where the text ends, progress, messages and the
// quiet evaluations that test what a file holds.
#include "document.h"

#include "store/var_fun_ini_file.h"

#include <charconv>
#include <cmath>

namespace quorvex::document {

const FunctionStyle& DocumentGraph::StyleOf(size_t function) const {
    static const FunctionStyle k_default;
    return function < FunctionStyles.size() ? FunctionStyles[function] : k_default;
}

Document::Document(engine::Parser& parser, engine::Reporter* reporter, engine::Host* host)
    : m_parser(parser), m_reporter(reporter), m_host(host) {}

void Document::Clear() {
    Lines.clear();
    Font = {};
    Tools = {};
    Matrices.clear();
    Graphs.clear();
}

bool Document::step(std::string_view text, int percent) {
    if (m_progress) m_progress(text, percent);
    if (m_host) m_host->pump();
    return !cancelled();
}

void Document::report(const std::string& text, std::string_view caption) const {
    if (m_reporter) m_reporter->report(text, caption, engine::MessageKind::Warning);
}

bool Document::evaluate(const std::string& text, engine::complex& value) {
    m_parser.eval_exp(text, value, true, false, false);
    const bool ok = !m_parser.IsAnError();
    m_parser.ClearLastError();
    return ok;
}

bool Document::evaluate(const std::string& text) {
    engine::complex value;
    return evaluate(text, value);
}

bool Document::is_valid_value(const std::string& text) {
    // Most points are plain numbers; those need no trip through the engine.
    double number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error == std::errc() && stop == end && std::isfinite(number) && std::fabs(number) < 1e300) return true;
    return evaluate(text);
}

std::vector<std::string> split_lines(std::string_view text) {
    std::vector<std::string> lines;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        const size_t next = end == std::string_view::npos ? text.size() : end + 1;
        if (end == std::string_view::npos) end = text.size();
        size_t stop = end;
        if (stop > start && text[stop - 1] == '\r') --stop;
        lines.emplace_back(text.substr(start, stop - start));
        start = next;
    }
    return lines;
}

size_t start_of_declarations(std::string_view file) {
    // The scan counts characters as text-mode reading gives them, CR LF as one; turned back into
    // bytes here. "." names no regular file, so nothing is read from disk before the text is set.
    store::VarFunIniFile ini(".");
    ini.SetText(file);
    const long characters = ini.GetStartOfDecs();
    size_t bytes = 0;
    long counted = 0;
    while (counted < characters && bytes < file.size()) {
        if (file[bytes] != '\r') ++counted;
        ++bytes;
    }
    return bytes;
}

std::optional<size_t> first_cut_line(const std::vector<std::string>& lines, std::string_view file) {
    size_t text_bytes = 0;
    for (const std::string& line : lines) text_bytes += line.size() + 2;
    const size_t start = start_of_declarations(file);
    if (start >= text_bytes) return std::nullopt;
    size_t at = 0;
    for (size_t i = 0; i < lines.size(); ++i) {
        at += lines[i].size() + 2;
        if (at > start) return i;
    }
    return std::nullopt;
}

} // namespace quorvex::document
