#pragma once
#include <optional>
#include <string>
#include <vector>

namespace quorvex::desktop {

// What the function solver reads from a function's prototype ("COT[X]", "MEAN[{list}]",
// "PRCTLE[{list}, p]", "AND[c1, c2, ...]", "ZSCORE[x, mean, sd] or ZSCORE[{list}, x]") to build
// its form: fixed parameters each with a field, or a list of values (numbers, or conditions when
// the function takes any number of them) possibly followed by fixed parameters.
struct SolverForm {
    std::string name;                          // the text before "["
    bool list = false;                         // the list form only
    bool list_alternative = false;             // a fixed form with a list form beside it ("or ...")
    std::string list_caption;                  // "Number" or "Logical Expression"
    bool list_in_braces = true;                // numbers go in {...}; conditions do not
    std::vector<std::string> parameters;       // the fixed form's parameters, in order
    std::vector<std::string> list_parameters;  // the list form's parameters after the list
    bool parameters_optional = false;          // "NAME[] or NAME[a, b]": all of them, or none
};

// Whether a parameter of that name takes a condition ("c", "condition", "c1", "logicalExp1"), in
// which '=' is part of what is typed ("==", ">=").
bool takes_condition(const std::string& name);

inline constexpr size_t k_max_solver_parameters = 6;

// The form of a prototype; none with `error` set for a constant (no "[") or more than six
// fixed parameters.
std::optional<SolverForm> read_prototype(const std::string& prototype, std::string& error);

// The call as the engine reads it: "NAME[a,b]", or "NAME[{v1,v2},p]" in list form, where
// `fixed_values` are those of the list form's parameters.
std::string compose_call(const SolverForm& form, bool as_list, const std::vector<std::string>& list_values,
                         const std::vector<std::string>& fixed_values);

// A list written to a data file: values separated as the extension says (".csv" a comma, ".prn"
// six blanks, otherwise a tab), one line.
std::string list_file_text(const std::vector<std::string>& values, const std::string& path);

} // namespace quorvex::desktop
