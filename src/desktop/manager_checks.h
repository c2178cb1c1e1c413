#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace quorvex::desktop {

// The checks the variable and function managers make on what the user typed, before anything
// reaches the engine; each gives the message of the first failure, or none.

// A variable's name: no digit first, no blank after the leading ones, none of the operator and
// punctuation characters.
std::optional<std::string> variable_name_problem(std::string_view name);
// A variable's value: no blank after the leading ones, none of ; : # $ @ & ? ~ ` ' " | \ or a tab.
std::optional<std::string> variable_value_problem(std::string_view value);
// A function's name with its parameter list: no digit first, brackets present and in order.
std::optional<std::string> function_name_problem(std::string_view name);

} // namespace quorvex::desktop
