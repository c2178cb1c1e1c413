#include "function_library.h"

#include <algorithm>
#include <cctype>

namespace quorvex::engine {

namespace {

std::string upper(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return result;
}

} // namespace

FunctionLibrary::FunctionLibrary(std::string path) : m_file(std::move(path)) {}

std::vector<std::string> FunctionLibrary::skip_reserved(const std::function<bool(std::string_view)>& reserved) {
    std::vector<std::string> skipped;
    std::vector<std::string> names;
    for (const std::string& category : m_file.GetFunctionCatagories()) {
        m_file.GetFunctionNames(names, category);
        for (const std::string& full_name : names) {
            const std::string name = full_name.substr(0, full_name.find('['));
            if (!reserved(name) || !m_skipped.insert(upper(name)).second) continue;
            skipped.push_back(name);
        }
    }
    m_found.clear();
    return skipped;
}

bool FunctionLibrary::lists(std::string_view name) {
    if (m_listed_revision != m_file.Revision()) {
        m_listed.clear();
        std::vector<std::string> keys;
        for (const std::string& category : m_file.GetFunctionCatagories()) {
            m_file.GetFunctionNames(keys, category);
            for (const std::string& key : keys) {
                m_listed.insert(upper(key));
                m_listed.insert(upper(key.substr(0, key.find('['))));
            }
        }
        m_listed_revision = m_file.Revision();
        m_found.clear();
    }
    return m_listed.count(upper(name)) != 0;
}

std::vector<int> FunctionLibrary::unreadable_lines() {
    // Text ahead of the first category, and after a blank line that ends one, is the file's own
    // notes; inside a category every line is an entry.
    std::vector<int> lines;
    const std::string& text = m_file.Text();
    int number = 0;
    bool in_category = false;
    for (size_t start = 0; start < text.size();) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        std::string_view line(text.data() + start, end - start);
        start = end + 1;
        ++number;
        while (!line.empty() && std::isspace(static_cast<unsigned char>(line.back()))) line.remove_suffix(1);
        while (!line.empty() && std::isspace(static_cast<unsigned char>(line.front()))) line.remove_prefix(1);
        if (line.empty() || line.front() == ';') {
            in_category = false;
            continue;
        }
        if (line.front() == '[' && line.back() == ']') {
            in_category = true;
            continue;
        }
        const size_t equal = line.find('=');
        if (in_category && (equal == std::string_view::npos || equal == 0)) lines.push_back(number);
    }
    return lines;
}

const Function* FunctionLibrary::find(std::string_view name) {
    if (!m_skipped.empty() && m_skipped.count(upper(name))) return nullptr;
    const std::string key(name);
    const auto known = m_found.find(key);
    if (known != m_found.end()) return known->second.get();
    if (!lists(name)) return nullptr;

    std::unique_ptr<Function> function;
    for (const std::string& category : m_file.GetFunctionCatagories()) {
        m_file.SetFunctionFlagStr(category);
        if (!m_file.IsFunction(name)) continue;
        std::string full_name, value;
        if (!m_file.GetFuncFullName(name, full_name)) continue;
        m_file.GetFunctionValue(full_name, value);
        function = std::make_unique<Function>(full_name, value);
        function->SetFuncLabel(category);
        break;
    }
    return m_found.emplace(key, std::move(function)).first->second.get();
}

} // namespace quorvex::engine
