#include "graph_file_text.h"

#include "store/atomic_write.h"

#include <cstdio>
#include <cstdlib>

namespace quorvex::graph {

std::string first_line(const std::string& text) { return text.substr(0, text.find_first_of("\r\n")); }

std::string file_number(double value, bool hole) {
    if (hole) return "-";
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.17g", value);
    return buffer;
}

bool read_file_numbers(std::istringstream& in, size_t count, double hole, std::vector<double>& out) {
    out.assign(count, hole);
    std::string word;
    for (size_t k = 0; k < count; ++k) {
        if (!(in >> word)) return false;
        if (word == "-") continue;
        char* end = nullptr;
        out[k] = std::strtod(word.c_str(), &end);
        if (!end || *end != '\0') return false;
    }
    return true;
}

std::optional<std::string> read_graph_text(const std::string& path, const char* magic, const std::string& kind,
                                           std::string* error) {
    std::string bytes;
    if (!store::read_whole_file(path, bytes)) {
        if (error) *error = "The graph file \"" + path + "\" could not be read.";
        return std::nullopt;
    }
    const std::string line = first_line(bytes);
    if (line != magic) {
        if (error) *error = "\"" + path + "\" is no Quorvex " + kind + " file.";
        return std::nullopt;
    }
    return bytes;
}

} // namespace quorvex::graph
