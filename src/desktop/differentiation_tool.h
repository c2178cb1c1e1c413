#pragma once
#include "desktop/quick_calc.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvex::engine {
class Host;
class Parser;
} // namespace quorvex::engine

namespace quorvex::desktop {

// The columns of the differentiation table after the variable's, in the order they are shown.
enum DifferentiationColumn { FunctionColumn = 0, FirstDerivative, SecondDerivative, ThirdDerivative };
inline constexpr int k_differentiation_columns = 4;
using DifferentiationColumns = std::array<bool, k_differentiation_columns>;

// A function and its first three derivatives over the points of a range. A column is either
// whole (one value per point) or empty: a run that fails or is stopped inside a column leaves it
// empty and keeps the columns it finished.
struct DifferentiationTable {
    std::string expression; // as it is mapped: a function of the document by its call ("f[x]")
    std::string name;       // what the headings call it: a function's short name, else the expression
    std::string variable;
    std::vector<double> x;
    std::array<std::vector<double>, k_differentiation_columns> columns;
    bool stopped = false;

    bool filled(int column) const {
        return !x.empty() && columns[static_cast<size_t>(column)].size() == x.size();
    }
};

// What a long run shows while it works: the step being done and the share of it done.
using ToolProgress = std::function<void(const std::string& text, int percent)>;

// The most points a table may have.
inline constexpr long k_most_differentiation_points = 1'000'000;

// Checks the input and lays out the points: the range from start to end in `range.points` points
// (a fractional count is cut to its whole part), put the right way round when it is reversed.
// One point is the derivatives at the start value alone, whatever the end value says; equal start
// and end values with more points are refused. None, with `error` set to what the user is told,
// when the input can not run; nothing is computed yet.
std::optional<DifferentiationTable> differentiation_table(engine::Parser& parser,
                                                          const std::string& expression,
                                                          const ToolRange& range, std::string& error);

// Computes the wanted columns the table does not hold yet, the function's values first and then
// the derivatives by order; columns already filled are kept as they are. The expression is
// mapped once for the run and the document's variable of that name is as it was afterwards,
// however the run ends. False, with `error` set, when a point fails: the run ends there. Stop
// ends it too, with `table.stopped` set and true returned.
bool fill_differentiation(engine::Parser& parser, DifferentiationTable& table,
                          const DifferentiationColumns& wanted, engine::Host* host,
                          const ToolProgress& progress, std::string& error);

// The heading of a value column: "f (x)", "f '(x)", "f ''(x)" or "f '''(x)".
std::string differentiation_heading(const DifferentiationTable& table, int column);

// In degrees mode a derivative of a trigonometric function would be in the wrong unit: the name
// of the first one the expression uses, looking into the user and library functions it calls;
// empty when there is none.
std::string trigonometric_function_used(engine::Parser& parser, const std::string& expression);

} // namespace quorvex::desktop
