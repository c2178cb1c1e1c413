#pragma once
#include "engine/complex.h"

#include <functional>
#include <string>
#include <vector>

namespace quorvex::engine {

class Parser;

// A real root a scan found: where it lies, its text as it is shown, and the function's value there.
struct ScannedRoot {
    long double x = 0;
    std::string text;
    complex value;
};

// What a scan asks of the program that runs it.
struct RootScanCalls {
    // Grid point `i` of the scan, asked in order from 0 on each pass.
    std::function<long double(long i)> point;
    // Gives the scan's variable a value before the function is run at a root.
    std::function<void(long double x)> set_variable;
    // A root as shown. Two roots whose texts are alike are one: a root on a grid point is found
    // from both of its intervals.
    std::function<std::string(long double x)> text;
    // Before interval `i` of `intervals` on a pass (`negative`: the negative branch of the square
    // roots): false stops the scan. May be empty.
    std::function<bool(long i, long intervals, bool negative)> going_on;
    // Each new root as it is found. May be empty.
    std::function<void(const ScannedRoot&)> found;
};

enum class RootScanEnd { finished, stopped, failed };

struct RootScanResult {
    std::vector<ScannedRoot> roots;
    RootScanEnd end = RootScanEnd::finished;
    // Where the function failed (the left end of an interval, or a root) and the engine's message.
    long double failed_at = 0;
    std::string error;
};

inline constexpr long double k_root_scan_accuracy = 1e-14L;
inline constexpr int k_root_scan_iterations = 500;
// A root of the real part alone is no root: the value's imaginary part must stay below this.
inline constexpr double k_root_scan_imaginary = 1e-10;

// Looks for real roots of mapped `equation` in `variable` on each interval between `points` grid
// points, by Parser::Root to 1e-14 in at most 500 iterations. With `both_branches` (the mapping
// took a square root) a second pass runs with the negative square roots, which may add roots.
// The Parser's negative-root setting is off again afterwards; the variable is left to the caller.
RootScanResult scan_roots(Parser& parser, int equation, const std::string& variable, long points,
                          bool both_branches, const RootScanCalls& calls);

} // namespace quorvex::engine
