#pragma once
#include "chart_data.h"

#include <functional>
#include <optional>

namespace quorvex::graph {

// Marks where a function's line must not join two neighbouring points of a sweep: its value
// changes sign between them through a pole (1/x between -0.05 and 0.05), which a line would join
// with a stroke across the whole graph. The point halfway tells a pole from a steep but continuous
// change: at a pole the function fails there, or is larger in size than at either end. Points
// `first` to `end` (not included) of the series are looked at; `value_at` computes the function,
// none where it fails or is complex. The number of breaks made.
size_t break_at_poles(ChartData& data, size_t series, size_t first, size_t end,
                      const std::function<std::optional<double>(double)>& value_at);

} // namespace quorvex::graph
