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
// Whether `name` can be the tool's variable for `expression`; false with `error` set. A tool
// that says more when the expression does not use the variable gives the end of that sentence
// in `not_used` (" and can not be differentiated with respect to it").
bool check_tool_variable(engine::Parser& parser, const std::string& expression, const std::string& name,
                         std::string& error, const std::string& not_used = {});
// What a limit's refusals say where a tool words them its own way; empty texts keep the usual.
struct LimitWording {
    std::string missing;   // the limit's field is empty
    std::string imaginary; // the limit has an imaginary part
};
// A limit's value: a real number that does not use the variable; none with `error` set.
std::optional<double> tool_limit(engine::Parser& parser, const std::string& text, const std::string& variable,
                                 const char* which, std::string& error, const LimitWording& wording = {});
// A number as the tools write it into their messages: the variable's value at a failed point.
std::string tool_number_text(double value);

} // namespace quorvex::desktop
