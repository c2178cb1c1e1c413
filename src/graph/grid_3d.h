#pragma once
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace quorvex::graph {

// A cell value that is not drawn: the surface has a hole there.
inline constexpr double k_grid_hole = 1e308;

// The numbers of a 3-D graph: a value over each point of a grid of X lines by Y lines (the chart's
// Y is the graph's Z variable). A regular grid has an origin and even steps (what a sweep of a
// function makes); an irregular one carries its coordinates (data sets: the X values of the first
// set, one Y per set). Every value starts as the hole.
class Grid3D {
public:
    Grid3D() = default;
    static Grid3D regular(size_t nx, size_t ny, double x_origin, double y_origin, double x_step, double y_step);
    static Grid3D irregular(std::vector<double> xs, std::vector<double> ys);
    // Marks a grid whose coordinates step evenly (a sweep's, or one read back from a file).
    void mark_regular() { m_regular = true; }

    size_t nx() const { return m_xs.size(); }
    size_t ny() const { return m_ys.size(); }
    bool empty() const { return m_values.empty(); }
    bool is_regular() const { return m_regular; }
    double x(size_t i) const { return m_xs[i]; }
    double y(size_t j) const { return m_ys[j]; }
    double value(size_t i, size_t j) const { return m_values[i * ny() + j]; }
    void set(size_t i, size_t j, double value) { m_values[i * ny() + j] = value; }
    static bool is_hole(double value) { return !(value < k_grid_hole && value > -k_grid_hole); }

    // The smallest and largest values that are no holes; none when every value is one.
    std::optional<std::pair<double, double>> value_range() const;
    // Moves each value `factor` of the way towards the mean of its four neighbours, holes left out
    // on both sides, so that a rough surface reads better. 0 changes nothing, 1 replaces.
    void smooth(double factor);

private:
    std::vector<double> m_xs, m_ys;
    std::vector<double> m_values; // row i (an X line) after row i-1
    bool m_regular = true;
};

} // namespace quorvex::graph
