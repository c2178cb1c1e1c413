#include "root_branches.h"

#include "engine/parser.h"

#include <cmath>
#include <optional>

namespace quorvex::graph {

namespace {

constexpr double k_imaginary_zero = 1e-10;
// Halvings of the gap between two points: from any step, past the digits a double holds.
constexpr int k_halvings = 64;

enum class Kind { Real, Complex, Failed };

struct Value {
    Kind kind = Kind::Failed;
    double y = 0;
};

Value evaluate(engine::Parser& parser, int equation, const std::function<void(double)>& set_x, double x,
               bool negative) {
    set_x(x);
    parser.set_neg_sqrt(negative);
    const engine::complex y = parser.solve_equation(equation, false, true);
    parser.set_neg_sqrt(false);
    if (parser.IsAnError()) {
        parser.ClearLastError();
        return {};
    }
    if (std::abs(y.imag()) > k_imaginary_zero) return {Kind::Complex, 0};
    return {Kind::Real, y.real()};
}

// Joins the branch held in points [first, last) of the series to the meeting point beside it.
void join_part(engine::Parser& parser, int equation, const std::function<void(double)>& set_x, ChartData& data,
               size_t series, size_t first, size_t last, bool negative, double zero) {
    const auto snap = [zero](double value) { return std::abs(value) < zero ? 0.0 : value; };
    for (size_t p = first; p + 1 < last; ++p) {
        const bool hole_here = ChartData::is_hole(data.y(series, p));
        if (hole_here == ChartData::is_hole(data.y(series, p + 1))) continue;
        const size_t hole = hole_here ? p : p + 1;
        const size_t real = hole_here ? p + 1 : p;
        const double drawn_x = data.x(series, real);
        double real_x = drawn_x, complex_x = data.x(series, hole);
        if (ChartData::is_hole(real_x) || ChartData::is_hole(complex_x)) continue;
        const double step = std::abs(complex_x - real_x);
        // Only a value turned complex: a failure (a pole) is a gap of its own, and a hole the
        // sweep left on purpose has a real value.
        if (evaluate(parser, equation, set_x, complex_x, negative).kind != Kind::Complex) continue;
        Value at_real = evaluate(parser, equation, set_x, real_x, negative);
        if (at_real.kind != Kind::Real) continue;
        for (int halving = 0; halving < k_halvings; ++halving) {
            const double middle = (real_x + complex_x) / 2;
            if (middle == real_x || middle == complex_x) break;
            const Value there = evaluate(parser, equation, set_x, middle, negative);
            if (there.kind == Kind::Real) {
                real_x = middle, at_real = there;
            } else if (there.kind == Kind::Complex) {
                complex_x = middle;
            } else {
                break; // a failure on the way: the nearest real value found is as close as it gets
            }
        }
        // The walk may have landed on the meeting point itself (0 of -10..10 in tenths): then the
        // branch ends there already.
        if (std::abs(real_x - drawn_x) <= 1e-9 * step) continue;
        data.set_x(series, hole, snap(real_x));
        data.set_y(series, hole, snap(at_real.y));
        ++p; // the hole holds a point now: the next pair starts beyond it
    }
}

} // namespace

void join_root_branches(engine::Parser& parser, int equation, const std::function<void(double)>& set_x,
                        ChartData& data, size_t series, size_t forward, double zero) {
    join_part(parser, equation, set_x, data, series, 0, forward, false, zero);
    join_part(parser, equation, set_x, data, series, forward, data.points(), true, zero);
}

} // namespace quorvex::graph
