#include "manager_checks.h"

namespace quorvex::desktop {

namespace {

bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::string_view skip_leading_blanks(std::string_view text) {
    size_t start = 0;
    while (start < text.size() && is_blank(text[start])) ++start;
    return text.substr(start);
}

bool is_digit(char c) { return c >= '0' && c <= '9'; }

} // namespace

std::optional<std::string> variable_name_problem(std::string_view name) {
    if (!name.empty() && is_digit(name.front())) return "The first character of a variable can not be a number!";
    static constexpr std::string_view k_illegal = "\t!+-<>/*%^=()[]{},;:#$@&?~`'\"|\\";
    for (const char c : skip_leading_blanks(name)) {
        if (c == ' ' || c == '\r' || c == '\n') return "No spaces are allowed in the variables name!";
        if (k_illegal.find(c) != std::string_view::npos)
            return "'" + std::string(1, c) + "' is not a legitimate character for a variable's name!";
    }
    return std::nullopt;
}

std::optional<std::string> variable_value_problem(std::string_view value) {
    static constexpr std::string_view k_illegal = "\t;:#$@&?~`'\"|\\";
    for (const char c : skip_leading_blanks(value)) {
        if (c == ' ' || c == '\r' || c == '\n') return "No spaces are allowed between digits in the variables value!";
        if (k_illegal.find(c) != std::string_view::npos)
            return "'" + std::string(1, c) + "' is not a legitimate character for mathematical expression or value!";
    }
    return std::nullopt;
}

std::optional<std::string> function_name_problem(std::string_view name) {
    std::string compact;
    for (const char c : name)
        if (c != ' ') compact += c;
    if (!compact.empty() && is_digit(compact.front())) return "The first character of a function can not be a number!";
    const size_t open = compact.find_first_of("[(");
    const size_t close = compact.find_first_of("])");
    if (open == std::string::npos && close == std::string::npos)
        return "Brackets of type [ and ] or ( or ) are used to define a function but could not be found! These "
               "brackets must contain the parameter list.";
    if (open == std::string::npos || close == std::string::npos)
        return "A bracket of type [ or ] or ( or ) could not be found! These brackets must contain the parameter list.";
    if (close < open || open == 0) return "The function name is invalid!";
    return std::nullopt;
}

} // namespace quorvex::desktop
