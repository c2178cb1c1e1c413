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

} // namespace

std::optional<SolverForm> read_prototype(const std::string& prototype, std::string& error) {
    const size_t open = prototype.find('[');
    if (open == std::string::npos) {
        error = "Constants can not be evaluated in the Function Solver.";
        return std::nullopt;
    }
    SolverForm form;
    form.name = trim(prototype.substr(0, open));
    std::string inside = prototype.substr(open + 1);
    const size_t close = inside.rfind(']');
    const std::string after = close == std::string::npos ? std::string() : trim(inside.substr(close + 1));
    if (close != std::string::npos) inside = inside.substr(0, close);
    inside = trim(inside);
    if (inside.empty() || inside[0] == '{' || inside.rfind("logicalExp1", 0) == 0) {
        form.list = true;
        const bool logical = inside.rfind("logicalExp1", 0) == 0;
        form.list_caption = logical ? "Logical Expression" : "Number";
        form.list_in_braces = !logical;
        // "{number1,...numberN},p,q": what follows the list is fixed.
        const size_t list_end = inside.find("},");
        if (!logical && list_end != std::string::npos) form.parameters = split_names(inside.substr(list_end + 2));
    } else {
        form.parameters = split_names(inside);
        const std::string rest = trim(after);
        if (rest.rfind("or", 0) == 0 && trim(rest.substr(2)).find("{number1") != std::string::npos) {
            form.list_alternative = true;
            form.list_caption = "Number";
        }
    }
    if (form.parameters.size() > k_max_solver_parameters) {
        error = "The Function Solver can take at most 6 parameters; ' " + form.name + " ' has " +
                std::to_string(form.parameters.size()) + ".";
        return std::nullopt;
    }
    return form;
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
    } else {
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
