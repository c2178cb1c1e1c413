#pragma once
#include <string>
#include <vector>

namespace quorvex::engine {
class Parser;
}

namespace quorvex::desktop {

// The function solver's messages, shown under the caption "Function Solver".
namespace solver_text {
inline constexpr const char* caption = "Function Solver";
inline constexpr const char* imaginary =
    "Imaginary numbers or expressions that evaluate to imaginary numbers are not allowed.";
inline constexpr const char* missing_value = "Every parameter of the function needs a value before it can be solved.";
inline constexpr const char* nothing_to_solve = "There is nothing to solve: enter the function's values first.";
inline constexpr const char* value_in_error = "A value of the function is in error. Correct it before solving.";
inline constexpr const char* add_or_replace =
    "The list already holds data points.\n\nWould you like to add the file's data points to them? Choose No to "
    "replace them.";
inline constexpr const char* save_list =
    "You have modified or created a list of data points in the Function Solver.\n\nWould you like to save your data?";
inline constexpr const char* no_solution = "There is no solution to copy: solve the function first.";
} // namespace solver_text

// Checks one value typed for the solver by evaluating it quietly with the document's engine:
// empty when it is good, otherwise the engine's message, or the refusal of an imaginary value in
// a list of numbers. Conditions (`numeric` false) are only checked for errors.
std::string check_solver_value(engine::Parser& parser, const std::string& text, bool numeric);

// Evaluates the composed call with answers of `precision` significant digits, the engine's own
// precision put back afterwards. True with the answer (" 5", or " 2 : -2" for a function with two
// roots) in `text`; false with the engine's message.
bool solve_call(engine::Parser& parser, const std::string& call, int precision, std::string& text);

// The values of a data file for the solver's list: every value of a single column or a single
// line, the first column of a table. False (the engine has said why) when the file gives nothing.
bool read_solver_list(engine::Parser& parser, const std::string& path, std::vector<std::string>& values);

} // namespace quorvex::desktop
