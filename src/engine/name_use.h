#pragma once
#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex::engine {

// The names an evaluation read and wrote, so that a program can tell which answers a change
// makes out of date. Variables and constants are kept by their names; functions by their short
// name followed by "[]" ("f[]"), so that a variable and a function of one name stay apart. A
// function's call reads the function and, as its body is written out in place of the call, the
// names the body reads; its parameters stand for the call's arguments, whose names are read
// instead.
struct NameUse {
    // Names kept sorted and once each. A line reads a handful of names, so a vector serves them
    // with one allocation where a tree would make one per name on every evaluation.
    class Names {
    public:
        Names() = default;
        Names(std::initializer_list<std::string_view> names) {
            for (const std::string_view name : names) insert(name);
        }
        void insert(std::string_view name) {
            const auto at = std::lower_bound(m_names.begin(), m_names.end(), name);
            if (at != m_names.end() && *at == name) return;
            if (m_names.capacity() == 0) {
                m_names.reserve(k_first_capacity);
                m_names.emplace_back(name);
                return;
            }
            m_names.emplace(at, name);
        }
        bool contains(std::string_view name) const {
            return std::binary_search(m_names.begin(), m_names.end(), name);
        }
        auto begin() const { return m_names.begin(); }
        auto end() const { return m_names.end(); }
        size_t size() const { return m_names.size(); }
        bool empty() const { return m_names.empty(); }
        void clear() { m_names.clear(); }
        bool operator==(const Names&) const = default;

    private:
        static constexpr size_t k_first_capacity = 8; // most lines read fewer names
        std::vector<std::string> m_names;
    };

    Names read;
    Names written;

    static std::string function_key(const std::string& short_name) { return short_name + "[]"; }
    static bool is_function_key(const std::string& key) { return key.size() > 2 && key.ends_with("[]"); }
    // The name as the user writes it: "f" for "f[]".
    static std::string display_name(const std::string& key) {
        return is_function_key(key) ? key.substr(0, key.size() - 2) : key;
    }
    void clear() {
        read.clear();
        written.clear();
    }
};

} // namespace quorvex::engine
