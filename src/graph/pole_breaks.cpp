#include "pole_breaks.h"

#include <algorithm>
#include <cmath>

namespace quorvex::graph {

size_t break_at_poles(ChartData& data, size_t series, size_t first, size_t end,
                      const std::function<std::optional<double>(double)>& value_at) {
    size_t made = 0;
    for (size_t p = std::max<size_t>(first, 1); p < end; ++p) {
        const double xa = data.x(series, p - 1), ya = data.y(series, p - 1);
        const double xb = data.x(series, p), yb = data.y(series, p);
        if (ChartData::is_hole(xa) || ChartData::is_hole(ya) || ChartData::is_hole(xb) || ChartData::is_hole(yb)) continue;
        if (!((ya < 0 && yb > 0) || (ya > 0 && yb < 0))) continue;
        const std::optional<double> middle = value_at((xa + xb) / 2);
        if (!middle || std::abs(*middle) > std::max(std::abs(ya), std::abs(yb))) {
            data.add_break(series, p);
            ++made;
        }
    }
    return made;
}

} // namespace quorvex::graph
