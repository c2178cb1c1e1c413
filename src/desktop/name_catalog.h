#pragma once
#include <string>
#include <vector>

namespace quorvex::engine {
class Parser;
}

namespace quorvex::desktop {

enum class NameKind { BuiltinFunction, Constant, LibraryFunction, UserFunction };

// A name the editor can offer while the user types: what it is called, how it is called, and
// what it does when something says so.
struct CatalogEntry {
    std::string name;        // as written in the table, library or document: "SIN", "COT", "f"
    std::string prototype;   // "COT[X]", "f[x] = x^2"; a built-in's name with its brackets
    std::string description; // a library's description line; empty for the others
    std::string category;    // the library category, "Built-in functions", "Constants", "Document"
    NameKind kind = NameKind::BuiltinFunction;
};

// Every name of the engine's built-in table, of its system and user function libraries (opened
// on the way when not yet), and of the document's functions, in that order.
std::vector<CatalogEntry> catalog_names(engine::Parser& parser);

// The document's functions alone (they change as lines are computed).
std::vector<CatalogEntry> document_functions(engine::Parser& parser);

// What choosing `entry` while typing puts into the line: a constant's name, or a function's name
// with its opening bracket.
std::string completion_text(const CatalogEntry& entry);

} // namespace quorvex::desktop
