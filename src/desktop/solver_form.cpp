#include "solver_form.h"

#include <algorithm>
#include <cctype>

namespace quorvex::desktop {

namespace {

std::string trim(const std::string& text) {
    size_t first = 0, last = text.size();
    while (first < last && std::isspace(static_cast<unsigned char>(text[first]))) ++first;
    while (last > first && std::isspace(static_cast<unsigned char>(text[last - 1]))) --last;
    return text.substr(first, last - first);
}

std::vector<std::string> split_names(const std::string& text) {
    std::vector<std::string> names;
    size_t start = 0;
    while (start <= text.size()) {
        const size_t comma = text.find(',', start);
        const std::string name = trim(text.substr(start, comma == std::string::npos ? std::string::npos : comma - start));
        if (!name.empty()) names.push_back(name);
        if (comma == std::string::npos) break;
        start = comma + 1;
    }
    return names;
}

bool ends_with(const std::string& text, const std::string& tail) {
    return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

// What one bracket of a prototype holds: a list (in braces, or any number of conditions) and the
// names of the fixed parameters.
struct Bracket {
    bool list = false;
    bool braces = true;
    bool logical = false;
    std::vector<std::string> names;
};

Bracket read_bracket(const std::string& text) {
    Bracket bracket;
    const std::string inside = trim(text);
    if (inside.empty()) return bracket; // no parameters at all
    if (inside[0] == '{') {
        bracket.list = true;
        const size_t close = inside.find('}');
        if (close != std::string::npos) {
            const size_t comma = inside.find(',', close);
            if (comma != std::string::npos) bracket.names = split_names(inside.substr(comma + 1));
        }
        return bracket;
    }
    bracket.names = split_names(inside);
    // "logicalExp1,logicalExp2,..." or "c1, c2, ...": any number of conditions, without braces.
    if (inside.rfind("logicalExp1", 0) == 0 || (!bracket.names.empty() && ends_with(bracket.names.back(), "..."))) {
        bracket.list = true;
        bracket.braces = false;
        bracket.logical = true;
        bracket.names.clear();
    }
    return bracket;
}

} // namespace

std::optional<SolverForm> read_prototype(const std::string& prototype, std::string& error) {
    const size_t open = prototype.find('[');
    if (open == std::string::npos) {
        error = "Constants can not be evaluated in the Function Solver.";
        return std::nullopt;
    }
    SolverForm form;
    form.name = trim(prototype.substr(0, open));
    const size_t close = prototype.find(']', open);
    const Bracket main = read_bracket(prototype.substr(open + 1, close == std::string::npos ? std::string::npos
                                                                                             : close - open - 1));
    const std::string after = close == std::string::npos ? std::string() : trim(prototype.substr(close + 1));
    if (main.list) {
        form.list = true;
        form.list_caption = main.logical ? "Logical Expression" : "Number";
        form.list_in_braces = main.braces;
        form.list_parameters = main.names;
    } else {
        form.parameters = main.names;
        // "... or {number1,...}" or "... or NAME[{list}, x]": a list form beside the fixed one;
        // "NAME[] or NAME[a, b]": parameters that may all be left out.
        if (after.rfind("or", 0) == 0) {
            const std::string rest = trim(after.substr(2));
            const size_t bracket = rest.find('[');
            const size_t end = rest.rfind(']');
            const std::string inside = rest[0] == '{' ? rest
                                       : bracket != std::string::npos && end != std::string::npos && end > bracket
                                           ? rest.substr(bracket + 1, end - bracket - 1)
                                           : std::string();
            const Bracket other = read_bracket(inside);
            if (!inside.empty() && other.list && other.braces) {
                form.list_alternative = true;
                form.list_caption = "Number";
                form.list_parameters = other.names;
            } else if (!inside.empty() && !other.list && form.parameters.empty()) {
                form.parameters = other.names;
                form.parameters_optional = true;
            }
        }
    }
    const size_t count = std::max(form.parameters.size(), form.list_parameters.size());
    if (count > k_max_solver_parameters) {
        error = "The Function Solver can take at most 6 parameters; ' " + form.name + " ' has " +
                std::to_string(count) + ".";
        return std::nullopt;
    }
    return form;
}

bool takes_condition(const std::string& name) {
    if (name == "c" || name == "condition" || name.rfind("logicalExp", 0) == 0) return true;
    return name.size() > 1 && name[0] == 'c' &&
           std::all_of(name.begin() + 1, name.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

std::string compose_call(const SolverForm& form, bool as_list, const std::vector<std::string>& list_values,
                         const std::vector<std::string>& fixed_values) {
    std::string call = form.name + "[";
    const auto join = [](const std::vector<std::string>& values) {
        std::string joined;
        for (size_t i = 0; i < values.size(); ++i) joined += (i ? "," : "") + values[i];
        return joined;
    };
    if (as_list) {
        const bool braces = form.list_in_braces;
        call += (braces ? "{" : "") + join(list_values) + (braces ? "}" : "");
        for (const std::string& value : fixed_values) call += "," + value;
    } else if (!form.parameters_optional ||
               !std::all_of(fixed_values.begin(), fixed_values.end(), [](const std::string& v) { return v.empty(); })) {
        call += join(fixed_values);
    }
    return call + "]";
}

std::string list_file_text(const std::vector<std::string>& values, const std::string& path) {
    std::string lower = path;
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const std::string separator = ends_with(lower, ".csv") ? "," : ends_with(lower, ".prn") ? "      " : "\t";
    std::string text;
    for (size_t i = 0; i < values.size(); ++i) text += (i ? separator : "") + values[i];
    return text + "\r\n";
}

} // namespace quorvex::desktop
