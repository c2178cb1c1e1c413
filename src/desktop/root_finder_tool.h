#pragma once
#include "desktop/quick_calc.h"
#include "engine/complex.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quorvex::engine {
class Host;
class Parser;
} // namespace quorvex::engine

namespace quorvex::graph {
class GraphData;
} // namespace quorvex::graph

namespace quorvex::desktop {

// What the root finder asks of the user, and where it tells how far a scan has come.
struct RootFinderQuestions {
    // Fewer than 101 steps: true scans all the same.
    std::function<bool(const std::string& text)> few_steps;
    // The scan's progress text and percent. May be empty.
    std::function<void(const std::string& text, int percent)> progress;
};

// Why a run did not start: the message (under `caption`), or the name the engine could not
// identify (the user may declare it), or the user's own No.
struct RootFinderRefusal {
    std::string message;
    std::string caption = "Root Finder Utility";
    std::string unknown_name;
    int coefficient_power = -1; // the coefficient that could not be evaluated
    bool declined = false;
};

struct RootRow {
    engine::complex root;
    engine::complex value; // the function's (or the polynomial's) value at the root
    bool value_failed = false;
};

// The roots a run found, as the table shows them.
struct RootTable {
    std::string expression; // what was solved: the expression, or the polynomial as text
    std::string variable;
    std::vector<RootRow> rows;
    int precision = 6;        // the digits the roots were told apart and evaluated at
    double low = 0, high = 0; // the scanned range (real roots)
    long points = 0;
    bool two_solutions = false; // the scan went on along the negative square roots
    bool laguerre = false;      // complex coefficients: Laguerre's method ran, else Jenkins-Traub
    bool stopped = false;
    std::string failure; // what ended the run early, after the rows found before it
};

// The text of a root finder number at `precision` significant digits ("1.5", "-2i", "0.5+0.8i").
std::string root_text(const engine::complex& value, int precision);

// The real roots of `expression` = 0 in the range: the range's `points` grid points bound the
// intervals on which a change of sign is searched; roots that print alike at `precision` are one,
// and a root where the value keeps an imaginary part is none. A square root in the expression
// brings a second pass along its negative branch. The document's variable is as it was
// afterwards, however the run ends. None, with `refusal` set, when the run does not start.
std::optional<RootTable> find_real_roots(engine::Parser& parser, const std::string& expression,
                                         const ToolRange& range, int precision,
                                         const RootFinderQuestions& questions, engine::Host* host,
                                         RootFinderRefusal& refusal);

// All roots of the polynomial whose coefficients are given by power (`by_power[p]` multiplies
// x^p), each an expression. Blanks above the highest coefficient given are skipped, blanks below
// it are 0. Each row's value is the polynomial evaluated at the root as printed.
std::optional<RootTable> find_complex_roots(engine::Parser& parser, std::span<const std::string> by_power,
                                            const std::string& variable, int precision,
                                            RootFinderRefusal& refusal);

// The plot of a real-root scan, named "Root Plot for: " and the expression: a function of the
// document by its own curve over the scanned range with the roots as a set of points of their
// own; any other expression by its values at the scan's grid points (failures are holes) with the
// roots in their places along them (or, on two branches, as a set of their own). Each root whose
// value is below 1e-10 is labelled " (x , value) ". False with `error` set when there is nothing
// to plot or the values can not be computed.
bool root_plot(engine::Parser& parser, const RootTable& table, engine::Host* host, graph::GraphData& plot,
               std::string& error);

} // namespace quorvex::desktop
