#pragma once
#include <set>
#include <string>

namespace quorvex::engine {

// The names an evaluation read and wrote, so that a program can tell which answers a change
// makes out of date. Variables and constants are kept by their names; functions by their short
// name followed by "[]" ("f[]"), so that a variable and a function of one name stay apart. A
// function's call reads the function and, as its body is written out in place of the call, the
// names the body reads; its parameters stand for the call's arguments, whose names are read
// instead.
struct NameUse {
    std::set<std::string> read;
    std::set<std::string> written;

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
