// Telling a line whose functions call each other without end from one whose functions merely
// write out to a very large text: the first has a cycle among the functions it reaches.
#include "parser.h"

#include <cctype>
#include <optional>
#include <unordered_map>
#include <vector>

namespace quorvex::engine {

namespace {

bool starts_name(char c) { return std::isalpha(static_cast<unsigned char>(c)) || c == '_'; }
bool continues_name(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '.'; }

// The names that `text` calls: a name with a bracket right behind it.
std::vector<std::string> called_names(const std::string& text) {
    std::vector<std::string> names;
    for (size_t p = 0; p < text.size();) {
        if (!starts_name(text[p])) {
            ++p;
            continue;
        }
        const size_t start = p;
        while (p < text.size() && continues_name(text[p])) ++p;
        if (p < text.size() && (text[p] == '[' || text[p] == '(')) names.push_back(text.substr(start, p - start));
    }
    return names;
}

} // namespace

std::optional<std::string> Parser::callee_body(const std::string& name) {
    const int index = find_function(name.c_str());
    if (index >= 0) return m_functions[static_cast<size_t>(index)]->value();
    if (is_internal_function(name.c_str()) || !is_library_function(name.c_str())) return std::nullopt;
    return m_cur_lib_function->value();
}

bool Parser::functions_form_a_cycle() {
    // The lookups below select functions as a call would; the call being expanded keeps its own.
    std::unique_ptr<Function> library_call = std::move(m_cur_lib_function);
    const int current = m_current_function;
    const bool cycle = reachable_functions_form_a_cycle();
    m_cur_lib_function = std::move(library_call);
    m_current_function = current;
    return cycle;
}

bool Parser::reachable_functions_form_a_cycle() {
    // Depth-first search over the functions the line reaches: a function met again while it is
    // still open on the path is inside its own expansion.
    enum class Mark { open, done };
    std::unordered_map<std::string, Mark> marks;
    struct Frame {
        std::string name;
        std::vector<std::string> callees;
        size_t next = 0;
    };
    std::vector<Frame> path;
    const auto enter = [&](const std::string& name) -> bool {
        const auto known = marks.find(name);
        if (known != marks.end()) return known->second == Mark::open; // open again: a cycle
        const std::optional<std::string> body = callee_body(name);
        if (!body) return false;
        marks.emplace(name, Mark::open);
        path.push_back({name, called_names(*body)});
        return false;
    };
    for (const std::string& start : called_names(m_expression)) {
        if (enter(start)) return true;
        while (!path.empty()) {
            Frame& top = path.back();
            if (top.next == top.callees.size()) {
                marks[top.name] = Mark::done;
                path.pop_back();
                continue;
            }
            if (enter(top.callees[top.next++])) return true;
        }
    }
    return false;
}

} // namespace quorvex::engine
