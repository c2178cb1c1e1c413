#include "name_catalog.h"

#include "engine/builtin_table.h"
#include "engine/function_library.h"
#include "engine/parser.h"

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

std::vector<CatalogEntry> catalog_names(engine::Parser& parser) {
    std::vector<CatalogEntry> entries;
    if (const engine::BuiltinTable* table = parser.builtins()) {
        for (int i = 0; const char* name = table->function_name(i); ++i)
            entries.push_back({name, std::string(name) + "[ ]", {}, "Built-in functions", NameKind::BuiltinFunction});
        for (int i = 0;; ++i) {
            const std::string name = table->constant_name(i);
            if (name.empty()) break;
            entries.push_back({name, name, {}, "Constants", NameKind::Constant});
        }
    }
    add_library(parser.system_library(), entries);
    add_library(parser.user_library(), entries);
    for (CatalogEntry& entry : document_functions(parser)) entries.push_back(std::move(entry));
    return entries;
}

} // namespace quorvex::desktop
