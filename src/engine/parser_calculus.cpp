// Integration, differentiation and root finding on a mapped equation. Every abscissa goes to the
// variable as a double; every step that decides convergence is decimal arithmetic rounded to 15
// significant digits (Mathematics::real_*), and comparisons lift their operands at 14 digits.
#include "parser.h"

#include "error_tables.h"
#include "evaluation_aborted.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace quorvex::engine {

namespace {

constexpr int k_romberg_stages = 20;
constexpr int k_ridders_size = 10;

// An error raised by the decimal arithmetic between runs unwinds like any error of the engine;
// the calculation then ends with its fallback value and the message stands.
template <typename Result, typename Work>
Result guarded(Parser& parser, Result fallback, Work&& work) {
    try {
        return work();
    } catch (const EvaluationAborted&) {
        parser.SetSolvingMap(false);
        return fallback;
    }
}

} // namespace

bool Parser::is_less(long double a, long double b) {
    return compare(relational::less, true, complex(static_cast<double>(a), 0), complex(static_cast<double>(b), 0));
}

bool Parser::is_less_equal(long double a, long double b) {
    return compare(relational::less_equal, true, complex(static_cast<double>(a), 0),
                   complex(static_cast<double>(b), 0));
}

bool Parser::breathe() {
    if (!m_host) return true;
    m_host->pump();
    m_host->refresh();
    return !m_host->aborted();
}

bool Parser::evaluate_at(int equation, const char* variable, long double x, long double& y) {
    set_var_value(complex(static_cast<double>(x), 0), variable);
    const complex value = solve_equation(equation, false, true, false);
    if (IsAnError()) return false;
    y = value.real();
    return true;
}

Parser::Sampler Parser::equation_sampler(int equation, const char* variable) {
    return [this, equation, variable](long double x, long double& y) { return evaluate_at(equation, variable, x, y); };
}

long double Parser::Trapazoid(int equation, const char* variable, long double lower, long double upper, int stage) {
    return trapezoid_stage(equation_sampler(equation, variable), lower, upper, stage, m_trapezoid_sum);
}

long double Parser::trapezoid_stage(const Sampler& f, long double lower, long double upper, int stage,
                                    long double& running) {
    Mathematics& m = m_math;
    if (stage == 1) {
        long double low = 0, high = 0;
        if (!f(lower, low)) return 0;
        if (!breathe()) return 0;
        if (!f(upper, high)) return 0;
        running = m.real_mult(m.real_mult(0.5L, m.real_sub(upper, lower)), m.real_add(low, high));
        return running;
    }
    const long double points = std::ldexp(1.0L, stage - 2);
    const long double width = m.real_div(m.real_sub(upper, lower), points);
    long double x = m.real_add(lower, m.real_mult(0.5L, width));
    long double sum = 0;
    for (long double i = 0; i < points; ++i) {
        if (!breathe()) return 0;
        long double y = 0;
        if (!f(x, y)) return 0;
        sum = m.real_add(sum, y);
        x = m.real_add(x, width);
    }
    running = m.real_mult(0.5L, m.real_add(running, m.real_div(m.real_mult(m.real_sub(upper, lower), sum), points)));
    return running;
}

void Parser::PolyInterpolate(const long double* xa, const long double* ya, int n, long double x, long double* y,
                             long double* dy) {
    Mathematics& m = m_math;
    std::array<long double, 32> c{}, d{};
    if (n < 1 || n >= static_cast<int>(c.size())) return;
    int ns = 1;
    long double nearest = m.real_abs(m.real_sub(x, xa[1]));
    for (int i = 1; i <= n; ++i) {
        const long double distance = m.real_abs(m.real_sub(x, xa[i]));
        if (is_less(distance, nearest)) {
            ns = i;
            nearest = distance;
        }
        c[static_cast<size_t>(i)] = d[static_cast<size_t>(i)] = ya[i];
    }
    *y = ya[ns--];
    for (int step = 1; step < n; ++step) {
        for (int i = 1; i <= n - step; ++i) {
            const long double ho = m.real_sub(xa[i], x);
            const long double hp = m.real_sub(xa[i + step], x);
            const long double w = m.real_sub(c[static_cast<size_t>(i + 1)], d[static_cast<size_t>(i)]);
            long double den = m.real_sub(ho, hp);
            if (den == 0) {
                mapper_exception(7, true);
                return;
            }
            den = m.real_div(w, den);
            d[static_cast<size_t>(i)] = m.real_mult(hp, den);
            c[static_cast<size_t>(i)] = m.real_mult(ho, den);
        }
        *dy = 2 * ns < n - step ? c[static_cast<size_t>(ns + 1)] : d[static_cast<size_t>(ns--)];
        *y = m.real_add(*y, *dy);
    }
}

const char* Parser::integral_not_converged_message() { return mapper_messages()[3]; }

long double Parser::RombIntegrate(int equation, const char* variable, long double lower, long double upper,
                                  long double accuracy, bool quiet) {
    ClearLastError();
    long double error = 0;
    bool exhausted = false;
    const long double value =
        romberg(equation_sampler(equation, variable), lower, upper, accuracy, k_romberg_stages, error, exhausted);
    if (exhausted) mapper_exception(3, quiet);
    return value;
}

long double Parser::romberg(const Sampler& f, long double lower, long double upper, long double accuracy, int stages,
                            long double& error, bool& exhausted) {
    m_integral_converged = false;
    exhausted = false;
    error = 0;
    return guarded(*this, 0.0L, [&]() -> long double {
        Mathematics& m = m_math;
        const long double zero = m_answer_format.zero_precision;
        std::array<long double, k_romberg_stages + 2> h{}, s{};
        h[1] = 1;
        long double ss = 0, dss = 0, previous = 0, last_ss = 0;
        bool first = true;
        long double running = 0; // the trapezoid sum, kept here so that integrals may nest
        const auto estimate = [&](long double change) {
            return std::max(std::fabs(dss), std::fabs(change));
        };
        for (int j = 1; j <= std::min(stages, k_romberg_stages); ++j) {
            s[static_cast<size_t>(j)] = trapezoid_stage(f, lower, upper, j, running);
            if (IsAnError() || stopped()) return 0;
            if (j >= 5) {
                // Element 1 of each view is stage j-4: the last five stages.
                PolyInterpolate(&h[static_cast<size_t>(j - 5)], &s[static_cast<size_t>(j - 5)], 5, 0, &ss, &dss);
                if (IsAnError() || stopped()) return 0;
                if (first) {
                    previous = dss;
                    first = false;
                }
                // The three tests, in this order. The extrapolation's own error estimate trusts an
                // error series in even powers of the step, which an integrand with a steep end
                // (1/sqrt(x) near 0) does not have: there the estimate shrinks while the value
                // still moves. So the estimate of the stage before must agree as well.
                const long double change = j > 5 ? m.real_sub(ss, last_ss) : ss;
                const bool settled = j > 5 && is_less_equal(m.real_abs(change), m.real_mult(accuracy, m.real_abs(ss)));
                last_ss = ss;
                error = estimate(change);
                if (settled && is_less_equal(m.real_abs(dss), m.real_mult(accuracy, m.real_abs(ss)))) {
                    m_integral_converged = true;
                    return ss;
                }
                if (is_less_equal(m.real_add(m.real_abs(dss), m.real_abs(ss)), zero)) {
                    m_integral_converged = true;
                    error = std::fabs(dss);
                    return 0;
                }
                // The estimate began to grow: the best value so far, which did not reach the
                // accuracy (integral_converged() stays false for the caller to say so).
                // An integral nested inside this one has set the flag since: it is this one's.
                if (is_less(m.real_abs(previous), m.real_abs(dss))) {
                    m_integral_converged = false;
                    return ss;
                }
                previous = dss;
            }
            h[static_cast<size_t>(j + 1)] = m.real_mult(0.25L, h[static_cast<size_t>(j)]);
        }
        m_integral_converged = false;
        exhausted = true;
        error = estimate(ss - last_ss);
        return ss;
    });
}

Parser::SlopeSample Parser::slope_sample(int equation, const char* variable, long double at, long double& value) {
    if (!breathe()) return SlopeSample::stopped;
    set_var_value(complex(static_cast<double>(at), 0), variable);
    const complex result = solve_equation(equation, false, true, false);
    if (IsAnError()) return SlopeSample::failed;
    // Only a positive imaginary part is caught here.
    if (result.imag() > 1e-14 && result.imag() > m_answer_format.zero_precision) {
        mapper_exception(6, true);
        return SlopeSample::failed;
    }
    value = result.real();
    return SlopeSample::taken;
}

bool Parser::Slope(int equation, const char* variable, const long double& x, const long double& offset,
                   const long double& /*step*/, int order, long double& /*tolerance*/, long double& slope,
                   bool /*refine*/) {
    Mathematics& m = m_math;
    const complex saved = get_var_value(variable);
    long double f1 = 0, f2 = 0;
    const auto restore = [&] { set_var_value(saved, variable); };
    if (order <= 1) {
        for (const auto& [at, value] : {std::pair{m.real_add(x, offset), &f1}, std::pair{m.real_sub(x, offset), &f2}}) {
            const SlopeSample sample = slope_sample(equation, variable, at, *value);
            if (sample != SlopeSample::taken) {
                restore();
                return sample == SlopeSample::failed;
            }
        }
    } else if (order >= 3) {
        // The third derivative from one central stencil, whose error is a series in even powers
        // of the step as the first difference's is, so that the same extrapolation applies:
        // (f(x+2h) - 2 f(x+h) + 2 f(x-h) - f(x-2h)) / (2 h^3). Differences of extrapolated second
        // derivatives, as the lower orders nest, lose the third derivative in their noise.
        const long double twice = m.real_mult(2, offset);
        long double values[4] = {};
        const long double points[4] = {m.real_add(x, twice), m.real_add(x, offset), m.real_sub(x, offset),
                                       m.real_sub(x, twice)};
        for (int k = 0; k < 4; ++k) {
            const SlopeSample sample = slope_sample(equation, variable, points[k], values[k]);
            if (sample != SlopeSample::taken) {
                restore();
                return sample == SlopeSample::failed;
            }
        }
        // Written as f1 - f2 over 2h, like the lower orders: f1 the outer pair, f2 the inner.
        f1 = m.real_sub(values[0], values[3]);
        f2 = m.real_mult(2, m.real_sub(values[1], values[2]));
        const long double h2 = m.real_mult(offset, offset);
        f1 = m.real_div(f1, h2);
        f2 = m.real_div(f2, h2);
    } else {
        // The second derivative from one central stencil, (f(x+h) - 2 f(x) + f(x-h)) / h^2, written
        // as f1 - f2 over 2h with f1 and f2 the two one-sided slopes doubled. Differences of
        // extrapolated first derivatives lose half the digits in their noise.
        long double values[3] = {};
        const long double points[3] = {m.real_add(x, offset), x, m.real_sub(x, offset)};
        for (int k = 0; k < 3; ++k) {
            const SlopeSample sample = slope_sample(equation, variable, points[k], values[k]);
            if (sample != SlopeSample::taken) {
                restore();
                return sample == SlopeSample::failed;
            }
        }
        f1 = m.real_div(m.real_mult(2, m.real_sub(values[0], values[1])), offset);
        f2 = m.real_div(m.real_mult(2, m.real_sub(values[1], values[2])), offset);
    }
    // Values that agree in all but their last two digits no longer tell the slope: what they
    // differ by is rounding. The nested orders meet this first, and exact ties there used to
    // look like a perfectly converged derivative of 0.
    m_slope_unresolved = m.real_abs(m.real_sub(f1, f2)) <= 1e-13L * std::max(m.real_abs(f1), m.real_abs(f2)) &&
                         (f1 != 0 || f2 != 0);
    slope = m.real_div(m.real_sub(f1, f2), m.real_mult(2, offset));
    restore();
    return IsAnError() && !stopped();
}

long double Parser::Derivative(int equation, const char* variable, const long double& x, const long double& step,
                               int order, long double& tolerance, bool refine) {
    return guarded(*this, 0.0L, [&]() -> long double {
        Mathematics& m = m_math;
        const long double zero = m_answer_format.zero_precision;
        long double best = 1e307L;
        if (step == 0) {
            // Every slope would divide by the zero step.
            mapper_exception(4, refine);
            return 0.0L;
        }
        if (static_cast<double>(x + step) == static_cast<double>(x) ||
            static_cast<double>(x - step) == static_cast<double>(x))
            special_exception("The step size is too small to move away from the point in the derivative algorithm!",
                              nullptr);
        // Where the function itself is not defined it has no derivative, whatever the slopes
        // around the point suggest: its own message is the answer.
        const complex saved = get_var_value(variable);
        long double at_point = 0;
        const bool defined = evaluate_at(equation, variable, x, at_point);
        set_var_value(saved, variable);
        if (!defined) return 0.0L;
        std::array<std::array<long double, k_ridders_size + 1>, k_ridders_size + 1> a{};
        // Higher orders divide by higher powers of the step, so a step ten times smaller makes
        // their rounding a hundred or a thousand times larger: they shrink it by 1.4.
        const long double ratio = 1.4L;
        const long double ratio_squared = m.real_mult(ratio, ratio);
        long double hh = step;
        if (Slope(equation, variable, x, hh, step, order, tolerance, a[1][1], true)) return 0.0L;
        long double answer = a[1][1];
        // The values are good to 15 digits, so a stencil over a step too small for its order
        // compares values that differ by little more than their rounding: that is noise, not a
        // derivative, and the user is told so rather than shown it.
        const long double scale = std::max(1.0L, std::fabs(x));
        const long double size = std::max(std::fabs(a[1][1]), std::fabs(at_point) / std::pow(scale, order));
        const long double noise = 3e-15L * std::fabs(at_point) / std::pow(std::fabs(step), std::min(order, 3));
        if (refine && noise > 1e-8L * size) {
            special_exception("The step is too small for a derivative of this order: the values it compares "
                              "differ by little more than their rounding. Use a larger step, or none for one "
                              "chosen automatically.",
                              nullptr);
            return 0.0L;
        }
        if (!refine) return answer; // the single slope, not extrapolated
        for (int i = 2; i <= k_ridders_size; ++i) {
            const size_t col = static_cast<size_t>(i);
            hh = m.real_div(hh, ratio);
            if (Slope(equation, variable, x, hh, step, order, tolerance, a[1][col], refine)) return answer;
            // A step too small for the values to tell the slope ends the refinement: the
            // columns from here on hold rounding, not information.
            if (m_slope_unresolved) break;
            long double factor = ratio_squared;
            for (size_t j = 2; j <= col; ++j) {
                a[j][col] = m.real_div(m.real_sub(m.real_mult(a[j - 1][col], factor), a[j - 1][col - 1]),
                                       m.real_sub(factor, 1));
                factor = m.real_mult(ratio_squared, factor);
                const long double error = std::max(m.real_abs(m.real_sub(a[j][col], a[j - 1][col])),
                                                   m.real_abs(m.real_sub(a[j][col], a[j - 1][col - 1])));
                if (stopped()) break;
                if (is_less_equal(error, best)) {
                    best = error;
                    answer = a[j][col];
                }
            }
            const long double d = m.real_abs(m.real_sub(a[col][col], a[col - 1][col - 1]));
            if (is_less_equal(m.real_abs(best), m.real_mult(tolerance, d))) break;
            if (is_less_equal(m.real_mult(2, best), d)) break;
            if (is_less_equal(m.real_add(m.real_abs(best), d), zero)) break;
            if (stopped()) break;
        }
        m_derivative_error = best;
        return answer;
    });
}

long double Parser::DerivativeAuto(int equation, const char* variable, const long double& x, int order,
                                   long double& tolerance) {
    // Large steps keep the stencils' rounding small and the extrapolation removes what the step
    // adds, as long as the function is smooth over the step: where the extrapolation's own error
    // stays large (EXP(x^2) grows too fast for a step of 1), or the step reaches where the
    // function fails (LN(x) near 0), the step is shrunk and the best answer kept.
    // The stencils reach a step on each side, the third's two: half the point's size at most.
    long double step = std::max(1.0L, std::fabs(x)) * (order >= 3 ? 0.25L : 0.5L);
    long double best = 0, best_error = -1, best_tolerance = tolerance;
    bool answered = false;
    for (int attempt = 0; attempt < 10; ++attempt, step /= 4) {
        ClearLastError();
        m_derivative_error = 1e307L;
        // The table is refined until its error estimate stops falling, not to a caller's tolerance.
        long double kept = std::min(tolerance, 1e-12L);
        const long double answer = Derivative(equation, variable, x, step, order, kept, true);
        if (stopped()) return answer;
        if (IsAnError()) {
            if (answered) break; // a smaller step will not reach a better answer than one already had
            continue;
        }
        // Smaller steps help while the extrapolation's error falls; once it grows, rounding rules.
        const long double error = std::fabs(m_derivative_error);
        if (answered && error >= best_error) break;
        best = answer, best_error = error, best_tolerance = kept, answered = true;
        if (error == 0) break;
    }
    if (!answered) return 0.0L; // the last failure's message stands
    ClearLastError();
    tolerance = best_tolerance;
    return best;
}

long double Parser::GetY(int equation, const char* variable, long double x, long double accuracy, long double& ymax,
                         long double& ymin, bool& converged) {
    if (!breathe()) return 0;
    long double y = 0;
    if (!evaluate_at(equation, variable, x, y)) return 0;
    if (is_less(ymax, y)) ymax = y;
    if (is_less(y, ymin)) ymin = y;
    // A root is judged against the range of values the search has seen.
    converged = is_less(m_math.real_abs(y), m_math.real_mult(accuracy, m_math.real_sub(ymax, ymin)));
    return y;
}

bool Parser::Root(int equation, const char* variable, long double x1, long double x2, long double accuracy,
                  int max_iterations, long double& root, bool) {
    // Brent's method: inverse quadratic interpolation and secant steps where they stay inside the
    // bracket and shrink it fast enough, bisection where they do not. The bracket always holds
    // a change of sign, so the answer lies between x1 and x2; a bracket that closes on a point
    // where the function fails or grows without bound (a pole) holds no root.
    ClearLastError();
    return guarded(*this, false, [&]() -> bool {
        const long double zero = m_answer_format.zero_precision;
        long double ymax = -1e-307L, ymin = 1e-307L;
        bool converged = false;
        const auto failed = [&] { return IsAnError() || stopped(); };
        const auto f = [&](long double x, long double& y) {
            y = GetY(equation, variable, x, accuracy, ymax, ymin, converged);
            return !failed();
        };

        long double fa = 0, fb = 0;
        if (!f(x1, fa)) return false;
        if (std::fabs(fa) <= zero) {
            root = x1;
            return true;
        }
        if (!f(x2, fb)) return false;
        if (std::fabs(fb) <= zero) {
            root = x2;
            return true;
        }
        if ((fa > 0) == (fb > 0)) return false; // no change of sign
        // How small the function must become for a root: far below its size at the ends.
        const long double small = std::max(zero, 1e-6L * std::min(std::fabs(fa), std::fabs(fb)));

        constexpr long double k_epsilon = std::numeric_limits<double>::epsilon();
        long double a = x1, b = x2, c = x2, fc = fb, d = b - a, e = d;
        for (int iteration = 0; iteration < max_iterations; ++iteration) {
            if ((fb > 0) == (fc > 0)) {
                c = a, fc = fa;
                e = d = b - a;
            }
            if (std::fabs(fc) < std::fabs(fb)) {
                a = b, b = c, c = a;
                fa = fb, fb = fc, fc = fa;
            }
            const long double tolerance = 2 * k_epsilon * std::fabs(b) + 0.5L * accuracy;
            const long double half = 0.5L * (c - b);
            if (std::fabs(half) <= tolerance || fb == 0) break;
            if (std::fabs(e) >= tolerance && std::fabs(fa) > std::fabs(fb)) {
                const long double s = fb / fa;
                long double p = 0, q = 0;
                if (a == c) {
                    p = 2 * half * s;
                    q = 1 - s;
                } else {
                    const long double qa = fa / fc, r = fb / fc;
                    p = s * (2 * half * qa * (qa - r) - (b - a) * (r - 1));
                    q = (qa - 1) * (r - 1) * (s - 1);
                }
                if (p > 0) q = -q;
                p = std::fabs(p);
                if (2 * p < std::min(3 * half * q - std::fabs(tolerance * q), std::fabs(e * q))) {
                    e = d;
                    d = p / q;
                } else {
                    d = half;
                    e = d;
                }
            } else {
                d = half;
                e = d;
            }
            a = b, fa = fb;
            b += std::fabs(d) > tolerance ? d : (half > 0 ? tolerance : -tolerance);
            // The function sees the abscissa as a double: the bracket is kept in the same values.
            b = static_cast<double>(b);
            if (!f(b, fb)) {
                // A failure inside the bracket, not at its ends: the change of sign runs across a
                // point where the function is not defined, so there is no root here.
                if (stopped()) return false;
                ClearLastError();
                return false;
            }
        }
        if (!(std::fabs(fb) <= small)) return false; // a pole or a jump, not a root
        root = b;
        return true;
    });
}

} // namespace quorvex::engine
