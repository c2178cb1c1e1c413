#include "line_colouring.h"

#include "document/line_processor.h"

#include <cctype>

namespace quorvex::desktop {

namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool starts_name(char c) { return std::isalpha(static_cast<unsigned char>(c)) || c == '_'; }
bool in_name(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

// The end of a number that starts at `at`: digits, a point, an exponent, an imaginary 'i'.
size_t number_end(std::string_view text, size_t at) {
    size_t i = at;
    while (i < text.size() && (is_digit(text[i]) || text[i] == '.')) ++i;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        size_t j = i + 1;
        if (j < text.size() && (text[j] == '+' || text[j] == '-')) ++j;
        if (j < text.size() && is_digit(text[j])) {
            i = j;
            while (i < text.size() && is_digit(text[i])) ++i;
        }
    }
    if (i < text.size() && text[i] == 'i' && (i + 1 >= text.size() || !in_name(text[i + 1]))) ++i;
    return i;
}

} // namespace

std::vector<ColourSpan> colour_line(std::string_view line, const NameKinds& kinds, size_t answer_from) {
    std::vector<ColourSpan> spans;
    const bool whole_comment = line.substr(0, 2) == "//";
    size_t comment = whole_comment ? 0 : document::find_comment(line);
    if (comment != std::string_view::npos) {
        while (comment < line.size() && line[comment] == ' ') ++comment;
    }
    const size_t code_end = comment == std::string_view::npos ? line.size() : comment;
    const size_t answer = answer_from < code_end ? answer_from : std::string_view::npos;
    const size_t names_end = answer == std::string_view::npos ? code_end : answer;

    for (size_t i = 0; i < names_end;) {
        const char c = line[i];
        if (is_digit(c) || (c == '.' && i + 1 < names_end && is_digit(line[i + 1]))) {
            const size_t end = std::min(number_end(line, i), names_end);
            spans.push_back({i, end - i, SpanKind::Number});
            i = end;
        } else if (starts_name(c)) {
            size_t end = i + 1;
            while (end < names_end && in_name(line[end])) ++end;
            const std::string_view name = line.substr(i, end - i);
            SpanKind kind = SpanKind::Name;
            if (kinds.is_builtin && kinds.is_builtin(name))
                kind = SpanKind::BuiltinName;
            else if (kinds.is_user_function && kinds.is_user_function(name))
                kind = SpanKind::UserFunction;
            spans.push_back({i, end - i, kind});
            i = end;
        } else {
            ++i;
        }
    }
    if (answer != std::string_view::npos) {
        size_t start = answer;
        size_t end = code_end;
        while (end > start && line[end - 1] == ' ') --end;
        if (end > start) spans.push_back({start, end - start, SpanKind::Answer});
    }
    if (comment != std::string_view::npos && comment < line.size())
        spans.push_back({comment, line.size() - comment, SpanKind::Comment});
    return spans;
}

size_t answer_position(std::string_view line) {
    const size_t comment = line.substr(0, 2) == "//" ? 0 : document::find_comment(line);
    const std::string_view code = line.substr(0, comment == std::string_view::npos ? line.size() : comment);
    size_t equal = code.rfind('=');
    if (equal == std::string_view::npos) return std::string_view::npos;
    ++equal;
    while (equal < code.size() && code[equal] == ' ') ++equal;
    return equal;
}

} // namespace quorvex::desktop
