#include "name_catalog.h"

#include "builtin_texts.h"

#include "engine/builtin_table.h"
#include "engine/function_library.h"
#include "engine/parser.h"
#include "store/atomic_write.h"

#include <unordered_map>

namespace quorvex::desktop {

namespace {

void add_library(engine::FunctionLibrary* library, std::vector<CatalogEntry>& entries) {
    if (!library) return;
    store::VarFunIniFile& file = library->file();
    for (const std::string& category : file.GetFunctionCatagories()) {
        std::vector<std::string> keys;
        if (!file.GetFunctionNames(keys, category)) continue;
        for (const std::string& key : keys) {
            CatalogEntry entry;
            entry.name = key.substr(0, key.find('['));
            entry.prototype = key;
            entry.category = category;
            entry.kind = NameKind::LibraryFunction;
            file.GetFunctionValue(entry.name, entry.description, category);
            if (library->find(entry.name)) entries.push_back(std::move(entry)); // skipped entries are not offered
        }
    }
}

} // namespace

std::vector<CatalogEntry> document_functions(engine::Parser& parser) {
    std::vector<CatalogEntry> entries;
    for (int i = 0; i < parser.function_count(); ++i) {
        CatalogEntry entry;
        const char* name = parser.get_func_short_name(i);
        const char* whole = parser.get_func_str(i);
        entry.name = name ? name : "";
        entry.prototype = whole ? whole : entry.name;
        entry.category = "Document";
        entry.kind = NameKind::UserFunction;
        if (!entry.name.empty()) entries.push_back(std::move(entry));
    }
    return entries;
}

std::string completion_text(const CatalogEntry& entry) {
    // The bracket every prototype is written with, and the keypad's too.
    return entry.kind == NameKind::Constant ? entry.name : entry.name + "[";
}

std::vector<CatalogEntry> catalog_names(engine::Parser& parser) {
    std::vector<CatalogEntry> entries;
    // builtins.txt beside the system library: prototypes and descriptions.
    std::unordered_map<std::string, std::pair<std::string, std::string>> described;
    std::string text;
    if (store::read_whole_file(parser.system_dir() + "builtins.txt", text))
        for (BuiltinText& row : read_builtin_texts(text))
            described[row.name] = {std::move(row.prototype), std::move(row.description)};
    const auto add_builtin = [&](const std::string& name, NameKind kind, const char* category) {
        const auto found = described.find(name);
        CatalogEntry entry{name, kind == NameKind::Constant ? name : name + "[ ]", {}, category, kind};
        if (found != described.end()) {
            entry.prototype = found->second.first;
            entry.description = found->second.second;
        }
        entries.push_back(std::move(entry));
    };
    if (const engine::BuiltinTable* table = parser.builtins()) {
        for (int i = 0; const char* name = table->function_name(i); ++i)
            add_builtin(name, NameKind::BuiltinFunction, "Built-in functions");
        for (int i = 0;; ++i) {
            const std::string name = table->constant_name(i);
            if (name.empty()) break;
            add_builtin(name, NameKind::Constant, "Constants");
        }
    }
    add_library(parser.system_library(), entries);
    add_library(parser.user_library(), entries);
    for (CatalogEntry& entry : document_functions(parser)) entries.push_back(std::move(entry));
    return entries;
}

} // namespace quorvex::desktop
