#include "builtin_texts.h"

namespace quorvex::desktop {

std::vector<BuiltinText> read_builtin_texts(std::string_view text) {
    std::vector<BuiltinText> rows;
    std::string group;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (line.starts_with("## ")) {
            group = line.substr(3);
            continue;
        }
        if (line.empty() || line[0] == '#') continue;
        std::vector<std::string_view> fields;
        for (size_t start = 0;;) {
            const size_t tab = line.find('\t', start);
            fields.push_back(line.substr(start, tab - start));
            if (tab == std::string_view::npos) break;
            start = tab + 1;
        }
        if (fields.size() < 3 || fields[0].empty() || fields[2].empty()) continue;
        rows.push_back({std::string(fields[0]), std::string(fields[1]), std::string(fields[2]),
                        fields.size() > 3 ? std::string(fields[3]) : std::string(), group});
    }
    return rows;
}

} // namespace quorvex::desktop
