#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace quorvex::desktop {

// One row of builtins.txt: how a built-in function or constant is called, what it does, and an
// expression that shows it at work. The group is the last "## TITLE" line above the row.
struct BuiltinText {
    std::string name;        // "SQRT", "e"
    std::string prototype;   // "SQRT[z]"; a constant's is its name
    std::string description;
    std::string example;     // "SQRT[4]"; its answer comes from the engine wherever it is shown
    std::string group;       // "Powers, logarithms and rounding"
    bool is_constant() const { return prototype == name; }
};

// The rows of builtins.txt's text: "NAME<TAB>PROTOTYPE<TAB>DESCRIPTION<TAB>EXAMPLE" per line (the
// example may be missing), "#" lines ignored but for "## TITLE", CR LF or LF line ends. Lines
// without a description are left out.
std::vector<BuiltinText> read_builtin_texts(std::string_view text);

} // namespace quorvex::desktop
