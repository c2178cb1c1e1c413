#pragma once
#include "engine/complex.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvex::engine {
class Host;
class Parser;
} // namespace quorvex::engine

namespace quorvex::desktop {

// What a tool asks of the user during a run.
struct ToolQuestions {
    // "Two solutions to this expression exist, ...": true computes both.
    std::function<bool(const std::string& text)> both_solutions;
    // A failed point: true goes on (the row shows the failure), false ends the run.
    std::function<bool(const std::string& text)> go_on_after_error;
};

// The range of a tool's variable as typed: start, end and number of points, each an expression.
struct ToolRange {
    std::string variable, start, end, points;
};

struct QuickCalcRow {
    double x = 0;
    engine::complex value;
    bool failed = false;
};

// The table of an expression over a range of one variable, complex values as they come.
struct QuickCalcTable {
    std::string expression, variable;
    std::vector<QuickCalcRow> rows;
    bool two_solutions = false;        // the rows go on along the second branch, back from the end
    bool imaginary_found = false;      // some value has an imaginary part above 1e-14
    bool large_imaginary_found = false; // ... that is also above the answers' zero threshold
    bool stopped = false;
};

// The text a failed row shows in place of a value.
inline constexpr const char* k_error_cell = "*****Error*****";

// Tabulates `expression` over the range: the expression is mapped once and run at each point of
// the variable's walk; with a square root taken and the user's yes, back along the negative
// branch too. The document's variable of that name is as it was afterwards, however the run
// ends. None, with `error` set to what the user is told, when the input can not run.
std::optional<QuickCalcTable> quick_calc(engine::Parser& parser, const std::string& expression, const ToolRange& range,
                                         const ToolQuestions& questions, engine::Host* host, std::string& error);

// The checks every calculus tool makes of its input before a run. The expression as the tool
// runs it: a function of the list cut to its call, or what follows the last "=" of a typed line.
std::string runnable_expression(engine::Parser& parser, const std::string& typed);

// What the checks of a tool's variable tell the user; each tool has its own words. "%1" stands
// for the variable, "%2" for the expression.
struct ToolVariableTexts {
    std::string missing = "You are missing or have not selected a variable.";
    std::string not_a_name = "' %1 ' is not a variable name.";
    std::string locked = "The variable ' %1 ' is in use by another computation: wait until it ends.";
    std::string not_a_function_of = "%2 is not a function of %1.";
    // x, y and z (in any case) pass without the expression using them: integrating a constant
    // over them gives a length, an area or a volume.
    bool xyz_always = false;
};
// Whether `name` can be the tool's variable for `expression`; false with `error` set.
bool check_tool_variable(engine::Parser& parser, const std::string& expression, const std::string& name,
                         std::string& error, const ToolVariableTexts& texts = {});

// What the checks of a limit tell the user. "%1" stands for the variable the limit may not use,
// "%2" for the engine's reason when the limit can not be computed.
struct ToolLimitTexts {
    std::string missing, uses_variable, failed, not_real;
};
// A limit's value: a real number that uses none of `variables`; none with `error` set.
std::optional<double> tool_limit(engine::Parser& parser, const std::string& text,
                                 const std::vector<std::string>& variables, const ToolLimitTexts& texts,
                                 std::string& error);
// The same in the words of a tool whose limit is called `which` ("start value").
std::optional<double> tool_limit(engine::Parser& parser, const std::string& text, const std::string& variable,
                                 const char* which, std::string& error);
// A number as the tools write it into their messages: the variable's value at a failed point.
std::string tool_number_text(double value);
// `text` with "%1" and "%2" replaced.
std::string fill_text(std::string text, const std::string& first, const std::string& second = {});

} // namespace quorvex::desktop
