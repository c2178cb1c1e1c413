#pragma once
#include "chart_data.h"

#include <functional>

namespace quorvex::engine {
class Parser;
}

namespace quorvex::graph {

// The two branches of a function with a square root meet where the root is zero, which the
// sweep's points miss unless the variable lands on it exactly: the curve would show a gap
// between the branches there. Where the function turns complex between two neighbouring points
// of a branch, this finds the meeting point by bisection and puts it into the hole beside the
// branch's last real point, so that both branches end on it.
// The series holds the forward pass (the positive branch) in its first `forward` points and the
// way back (the negative branch) after them; `set_x` gives the sweep's variable a value, and
// values below `zero` are drawn as 0, as the sweep draws them.
void join_root_branches(engine::Parser& parser, int equation, const std::function<void(double)>& set_x,
                        ChartData& data, size_t series, size_t forward, double zero);

} // namespace quorvex::graph
