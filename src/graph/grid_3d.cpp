#include "grid_3d.h"

#include <algorithm>

namespace quorvex::graph {

Grid3D Grid3D::regular(size_t nx, size_t ny, double x_origin, double y_origin, double x_step, double y_step) {
    std::vector<double> xs(nx), ys(ny);
    for (size_t i = 0; i < nx; ++i) xs[i] = x_origin + static_cast<double>(i) * x_step;
    for (size_t j = 0; j < ny; ++j) ys[j] = y_origin + static_cast<double>(j) * y_step;
    Grid3D grid = irregular(std::move(xs), std::move(ys));
    grid.m_regular = true;
    return grid;
}

Grid3D Grid3D::irregular(std::vector<double> xs, std::vector<double> ys) {
    Grid3D grid;
    grid.m_values.assign(xs.size() * ys.size(), k_grid_hole);
    grid.m_xs = std::move(xs);
    grid.m_ys = std::move(ys);
    grid.m_regular = false;
    return grid;
}

std::optional<std::pair<double, double>> Grid3D::value_range() const {
    std::optional<std::pair<double, double>> range;
    for (double value : m_values) {
        if (is_hole(value)) continue;
        if (!range)
            range.emplace(value, value);
        else
            range = {std::min(range->first, value), std::max(range->second, value)};
    }
    return range;
}

void Grid3D::smooth(double factor) {
    if (factor <= 0 || empty()) return;
    factor = std::min(factor, 1.0);
    const std::vector<double> before = m_values;
    const auto at = [&](size_t i, size_t j) { return before[i * ny() + j]; };
    for (size_t i = 0; i < nx(); ++i) {
        for (size_t j = 0; j < ny(); ++j) {
            if (is_hole(at(i, j))) continue;
            double sum = 0;
            int count = 0;
            const auto take = [&](size_t a, size_t b) {
                if (!is_hole(at(a, b))) {
                    sum += at(a, b);
                    ++count;
                }
            };
            if (i > 0) take(i - 1, j);
            if (i + 1 < nx()) take(i + 1, j);
            if (j > 0) take(i, j - 1);
            if (j + 1 < ny()) take(i, j + 1);
            if (count > 0) set(i, j, at(i, j) + factor * (sum / count - at(i, j)));
        }
    }
}

} // namespace quorvex::graph
