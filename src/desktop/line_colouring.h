#pragma once
#include <functional>
#include <string_view>
#include <vector>

namespace quorvex::desktop {

enum class SpanKind { Number, Name, BuiltinName, UserFunction, Comment, Answer };

struct ColourSpan {
    size_t start = 0;
    size_t length = 0;
    SpanKind kind = SpanKind::Name;
    bool operator==(const ColourSpan&) const = default;
};

// What the colouring asks about a name.
struct NameKinds {
    std::function<bool(std::string_view)> is_builtin;       // a built-in function or constant
    std::function<bool(std::string_view)> is_user_function; // a function of the document or a library
};

// The coloured pieces of one editor line, left to right: numbers (with exponents and an 'i'),
// names by kind, a "//" comment (a whole line from column 0, or behind blanks), and the answer
// behind the last '=' when the line ends in one (`answer_from`: where that answer begins, or npos).
std::vector<ColourSpan> colour_line(std::string_view line, const NameKinds& kinds, size_t answer_from);

// Where the text behind the last '=' ahead of a comment begins (blanks skipped), or npos: the
// answer's place when the line processor recognises the line as ending in one.
size_t answer_position(std::string_view line);

} // namespace quorvex::desktop
