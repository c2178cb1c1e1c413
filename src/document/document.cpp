// What loading and saving share: the line split, where the text ends, progress, messages and the
// quiet evaluations that test what a file holds.
#include "document.h"

#include <charconv>
#include <cmath>

namespace quorvex::document {

const FunctionStyle& DocumentGraph::StyleOf(size_t function) const {
    static const FunctionStyle k_default;
    return function < FunctionStyles.size() ? FunctionStyles[function] : k_default;
}

Document::Document(engine::Parser& parser, engine::Reporter* reporter, engine::Host* host)
    : m_parser(parser), m_reporter(reporter), m_host(host), m_program_precise(parser.precise()) {}

void Document::set_precise_choice(std::optional<bool> choice) {
    // Until the document takes a choice of its own, the engine holds the program's option.
    if (!m_precise_choice) m_program_precise = m_parser.precise();
    m_precise_choice = choice;
    m_parser.set_precise(choice.value_or(m_program_precise));
}

void Document::set_program_precise(bool on) {
    m_program_precise = on;
    if (!m_precise_choice) m_parser.set_precise(on);
}

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
    // The text ends where the first declaration header stands, or, in a document without
    // declarations, the last "[SETUP]"; a header is a whole line equal to it, case included, and
    // a CR or an LF ends a line. Carriage returns right in front of the header go with it. A
    // plain scan of the lines: the ini store's indexing is not needed to find three headers.
    constexpr std::string_view k_variables = "[DECLARED VARIABLES]", k_functions = "[DECLARED FUNCTIONS]",
                               k_setup = "[SETUP]";
    std::optional<size_t> declarations, setup;
    for (size_t start = 0; start < file.size() && !declarations;) {
        size_t end = start;
        while (end < file.size() && file[end] != '\r' && file[end] != '\n') ++end;
        const std::string_view line = file.substr(start, end - start);
        if (line == k_variables || line == k_functions)
            declarations = start;
        else if (line == k_setup)
            setup = start;
        start = end;
        if (start < file.size() && file[start] == '\r') ++start;
        if (start < file.size() && file[start] == '\n') ++start;
    }
    size_t boundary = declarations ? *declarations : setup ? *setup : file.size();
    if (declarations || setup)
        while (boundary > 0 && file[boundary - 1] == '\r') --boundary;
    return boundary;
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
