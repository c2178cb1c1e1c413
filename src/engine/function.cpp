#include "function.h"

#include "mathematics.h"

#include <cstring>

namespace quorvex::engine {

namespace {

constexpr const char* k_token_delimiters = "!+-<>*/%^=()[]{},;:#$@&?~`'\"|\\ ";

bool ends_word(char c) { return c == '\0' || std::strchr(k_token_delimiters, c) != nullptr; }
bool is_digit_or_point(char c) { return (c >= '0' && c <= '9') || c == '.'; }

} // namespace

Function::Function(const std::string& full_name, const std::string& value) {
    SetFuncName(full_name);
    SetFuncValue(value);
}

void Function::SetFuncName(const std::string& full_name) {
    m_full_name = full_name;
    const size_t open = full_name.find('[');
    m_short_name = full_name.substr(0, open);
    m_variables.clear();
    if (open == std::string::npos) return;
    std::string current;
    for (size_t i = open + 1; i < full_name.size(); ++i) {
        const char c = full_name[i];
        if (c == ',' || c == ']') {
            if (!current.empty()) m_variables.push_back(current);
            current.clear();
            if (c == ']') break;
        } else if (c != ' ') {
            current += c;
        }
    }
}

void Function::SetFuncValue(const std::string& value) {
    m_value = value;
    m_mod_value = value;
}

const std::string& Function::GetFuncVariable(int n) const {
    static const std::string none;
    return n >= 1 && n <= num_variables() ? m_variables[static_cast<size_t>(n - 1)] : none;
}

bool Function::IsFuncVariable(const std::string& name) const {
    for (const auto& variable : m_variables)
        if (variable == name) return true;
    return false;
}

std::string Function::GetFuncFullNameAndValue() const { return m_full_name + " = " + m_value; }

bool Function::ModFuncValue(int n, const std::string& text) {
    if (n < 1 || n > num_variables()) return false;
    const std::string& variable = GetFuncVariable(n);
    if (variable == text) return true;
    bool replaced = false;
    size_t from = 0;
    while ((from = m_mod_value.find(variable, from)) != std::string::npos) {
        // A word starts at the beginning, or after a delimiter, once any digits and points in
        // front of it are passed over: x, 2x, 2.5x and a+x qualify; bx does not.
        size_t before = from;
        while (before > 0 && is_digit_or_point(m_mod_value[before - 1])) --before;
        const bool starts = before == 0 || ends_word(m_mod_value[before - 1]);
        const size_t end = from + variable.size();
        const bool whole = end >= m_mod_value.size() || ends_word(m_mod_value[end]);
        if (starts && whole) {
            m_mod_value.replace(from, variable.size(), text);
            from += text.size();
            replaced = true;
        } else {
            from += 1;
        }
    }
    return replaced;
}

} // namespace quorvex::engine
