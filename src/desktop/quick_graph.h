#pragma once
#include "desktop/quick_calc.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvex::graph {
class GraphData;
}

namespace quorvex::desktop {

// One curve of a family: the second variable's value and the expression's values along the
// first (real parts; a failed point is a hole).
struct QuickGraphCurve {
    double parameter = 0;
    std::vector<double> y;
};

// An expression over one variable, or a family of curves over a second one: what a quick graph
// draws. The X values are shared by every curve.
struct QuickGraphFamily {
    std::string expression, variable, parameter; // parameter empty: a single curve
    std::vector<double> x;
    std::vector<QuickGraphCurve> curves;
    std::vector<std::string> errors;    // one line for each failed point, "An error occured at ..."
    bool two_solutions = false;         // the curves go on along the second branch, back from the end
    bool imaginary_found = false;       // some value has an imaginary part above 1e-10
    bool large_imaginary_found = false; // ... that is also above the answers' zero threshold
    bool stopped = false;
};

// The largest family: curves times points.
inline constexpr long k_most_quick_graph_values = 2'000'000;
inline constexpr long k_most_quick_graph_curves = 1000;

// Computes the values of `expression` over `primary` and, when its variable is named, for each
// value of `secondary` (a family). The expression is mapped once (a first point it fails on is
// passed over for the next one); failed points are holes and are listed, not fatal. Both variables
// are as they were afterwards, however the run ends. None, with `error` set, for input that can
// not run.
std::optional<QuickGraphFamily> quick_graph_values(engine::Parser& parser, const std::string& expression,
                                                   const ToolRange& primary, const ToolRange& secondary,
                                                   const ToolQuestions& questions, engine::Host* host,
                                                   std::string& error);

// The legend text of a family's curve: "f[x,y] (y=1)", the value at 6 digits; the expression
// alone for a single curve.
std::string quick_graph_curve_label(const QuickGraphFamily& family, size_t curve);

// The family into a 2-D graph as data sets sharing their X values, one per curve. The curves an
// earlier run put there for the same expression and parameter are replaced; other series stay.
void put_family_2d(graph::GraphData& graph, const QuickGraphFamily& family);
// The family as a surface: each curve a row of the grid at its parameter's value along Z.
void put_family_3d(graph::GraphData& graph, const QuickGraphFamily& family);
// The default titles of a quick graph unless the user set them: header "Quick 2D Graph: %s" (or
// 3D), footer and Y title the expression, X title the variable (joined by " , " when the graph
// already shows others).
void title_quick_graph(graph::GraphData& graph, const QuickGraphFamily& family, bool surface);

// `base` when no graph has that name, else the first of "base:2", "base:3", ... that is free.
std::string unique_quick_graph_name(const std::string& base, const std::function<bool(const std::string&)>& taken);

} // namespace quorvex::desktop
