#include "interval_labels.h"

#include <algorithm>
#include <cmath>

namespace quorvex::graph {

std::optional<double> histogram_half_width(const ChartData& data, size_t series) {
    if (data.points(series) < 2) return std::nullopt;
    const double first = data.x(series, 0), second = data.x(series, 1);
    if (ChartData::is_hole(first) || ChartData::is_hole(second)) return std::nullopt;
    double half = std::abs(second - first) / 2;
    for (size_t p = 2; p < data.points(series); ++p) {
        const double x = data.x(series, p);
        if (!ChartData::is_hole(x)) half = std::min(half, std::abs(x - first) / 2);
    }
    return half;
}

std::vector<std::string> interval_labels(const ChartData& data, size_t series,
                                         const std::function<std::string(double)>& number) {
    std::vector<std::string> labels(data.points(series));
    const std::optional<double> half = histogram_half_width(data, series);
    if (!half) return labels;
    for (size_t p = 0; p < labels.size(); ++p) {
        const double x = data.x(series, p);
        if (ChartData::is_hole(x) || ChartData::is_hole(data.y(series, p))) continue;
        labels[p] = number(x - *half) + " to " + number(x + *half);
    }
    return labels;
}

std::vector<std::string> histogram_axis_labels(const ChartData& data, size_t first_set,
                                               const std::function<std::string(double)>& number) {
    std::vector<std::string> labels(data.points());
    for (size_t s = first_set; s < data.series(); ++s) {
        const std::vector<std::string> own = interval_labels(data, s, number);
        for (size_t p = 0; p < own.size(); ++p)
            if (!own[p].empty()) labels[p] = own[p];
    }
    return labels;
}

std::string histogram_point_label(bool pareto, const std::string& interval, const std::string& y) {
    return pareto ? " (" + y + ") " : " (" + interval + " , " + y + ") ";
}

std::optional<std::string> histogram_label_value(bool pareto, const std::string& label) {
    const size_t open = label.find('('), close = label.rfind(')');
    if (open == std::string::npos || close == std::string::npos || close <= open) return std::nullopt;
    const std::string inner = label.substr(open + 1, close - open - 1);
    if (pareto) return inner;
    const size_t separator = inner.rfind(" , ");
    if (separator == std::string::npos) return std::nullopt;
    return inner.substr(separator + 3);
}

void number_points_by_index(ChartData& data) {
    for (size_t s = 0; s < data.series(); ++s)
        for (size_t p = 0; p < data.points(s); ++p) data.set_x(s, p, static_cast<double>(p));
}

} // namespace quorvex::graph
