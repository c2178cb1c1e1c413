#pragma once
#include <string>
#include <vector>

namespace quorvex::graph {

// One numbered tick of a linear axis.
struct AxisTick {
    double value = 0;
    std::string label;
};

// The ticks of a linear axis shown from `from` to `to`: about six, on whole multiples of a step of
// 1, 2 or 5 times a power of ten. Each value is its multiple of the step taken at once (never a sum
// of steps, whose rounding errors pile up), so a tick at zero is exactly zero; each label is
// written from the multiple's decimal digits, so it reads "0.6" or "0" and never shows the binary
// rounding of the value. Labels read as short numbers do: "-0.4", "1500", "2.5e+06", "1e-07".
// None when the range is empty or not finite.
std::vector<AxisTick> linear_ticks(double from, double to);

} // namespace quorvex::graph
