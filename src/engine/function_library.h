#pragma once
#include "function.h"

#include "store/var_fun_ini_file.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace quorvex::engine {

// A function library file (categories of "NAME[A,B]=body" entries, each with a "NAME=description"
// line), read once and kept in memory. A name is looked up by walking the categories in file
// order, as the file's listing rules say, and the first category that lists it gives its body.
// The file does not change while it is loaded, so each name's answer is kept: a line's names cost
// one hash lookup each after the first time. One evaluation at a time, like the Parser.
class FunctionLibrary {
public:
    explicit FunctionLibrary(std::string path);

    const std::string& path() const { return m_file.FileName(); }
    // The library's function of that name (the bare name, any case), or null.
    const Function* find(std::string_view name);
    store::VarFunIniFile& file() { return m_file; }
    // Entries whose name `reserved` claims (a built-in's, any case) are not found from then on.
    // Returns their names as the file writes them, in file order.
    std::vector<std::string> skip_reserved(const std::function<bool(std::string_view)>& reserved);
    // Numbers (from 1) of the lines that are neither blank, a ";" comment, a [category] nor an
    // entry "NAME=...": damage the lookups pass over, which the user should hear of.
    std::vector<int> unreadable_lines();

private:
    store::VarFunIniFile m_file;
    std::unordered_set<std::string> m_skipped; // upper case
    // Every name the file lists (full and bare, upper case), built once per revision of the
    // file, so that a name the library does not hold costs one lookup and is not kept: a
    // document of a million functions asks for each of them once.
    std::unordered_set<std::string> m_listed;
    size_t m_listed_revision = static_cast<size_t>(-1);
    bool lists(std::string_view name);
    std::unordered_map<std::string, std::unique_ptr<Function>> m_found; // null: not in the library
};

} // namespace quorvex::engine
