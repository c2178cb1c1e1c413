// Integrals that converge: Romberg answers smooth integrands in few points; an end where the
// integrand or a derivative is singular (1/sqrt(x), ln(x), sqrt(1-x^2)) or an end that cannot be
// evaluated goes to the double-exponential rule, which never evaluates the ends and crowds its
// points towards them; kinks and narrow peaks inside the interval go to adaptive Gauss-Kronrod.
// Each answer carries an error estimate, and only one within the accuracy counts as converged.
#include "parser.h"

#include "evaluation_aborted.h"

#include <boost/math/quadrature/gauss_kronrod.hpp>
#include <boost/math/quadrature/tanh_sinh.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace quorvex::engine {

namespace {

// Romberg's first try: enough stages for smooth integrands to 1e-12 (2^10 strips), not the
// thousands of milliseconds that its full twenty stages spend on a singular end.
constexpr int k_first_romberg_stages = 12;
// Evaluations each of the other rules may spend before it gives its best estimate.
constexpr long k_rule_budget = 20000;
constexpr std::size_t k_tanh_sinh_levels = 10;
constexpr unsigned k_kronrod_depth = 15;
// The double-exponential rule comes no closer to an end than this share of half the interval:
// the engine computes no number below 1e-307.
constexpr double k_closest_to_end = 1e-290;
// How many times the value next to an end, times the distance the rule cannot come closer by,
// counts as the error of the sliver it cannot see.
constexpr long double k_end_sliver_factor = 10;
// An inner integral of a double or triple one is found this much more accurately than the
// outer one, so that its error does not look like a feature of the outer integrand.
constexpr long double k_inner_accuracy_factor = 0.1L;
constexpr long double k_finest_inner_accuracy = 1e-13L;

// Unwinds a rule out of Boost: the integrand failed, the user stopped, or the budget ran out.
struct SamplingEnded {};

// What a rule has seen next to one end: the closest point it evaluated and the value there.
struct EndWatch {
    long double end;
    long double nearest = std::numeric_limits<long double>::infinity();
    long double value = 0;

    void see(long double x, long double y) {
        const long double distance = std::fabs(x - end);
        if (distance < nearest) {
            nearest = distance;
            value = y;
        }
    }
    // The part of the integral between the end and the closest point, which no rule in doubles
    // sees: next to a singular end the values grow and this is what limits the digits. The
    // engine tells values apart at 15 significant digits, so an end is never closer than that.
    long double sliver(long double middle) const {
        if (!std::isfinite(nearest)) return 0;
        const long double resolution = std::max(nearest, std::fabs(end) * 1e-15L);
        return k_end_sliver_factor * std::fabs(value - middle) * resolution;
    }
};

// Whether the engine can tell `x` from the end: it keeps 15 significant digits and computes no
// number below 1e-307.
bool near_end(long double x, long double end) {
    return std::fabs(x - end) <= std::max(std::fabs(end) * 1e-14L, 1e-300L);
}

} // namespace

std::optional<IntegralResult> Parser::integrate_by_rule(IntegrationMethod method, const Sampler& f, long double lower,
                                                        long double upper, long double accuracy) {
    const double a = static_cast<double>(lower), b = static_cast<double>(upper);
    if (!(a < b)) return std::nullopt;
    long double middle = 0;
    if (!f(0.5L * (lower + upper), middle)) {
        // A failure in the middle of the interval is the expression's own error.
        return std::nullopt;
    }
    EndWatch low{lower}, high{upper};
    long samples = 0;
    const auto sample = [&](double x) -> double {
        // A point the double cannot tell from an end is taken just inside it: the rule's weight
        // there is far below any digit it can show.
        if (x <= a) x = std::nextafter(a, b);
        if (x >= b) x = std::nextafter(b, a);
        if (++samples > k_rule_budget || !breathe()) throw SamplingEnded{};
        long double y = 0;
        if (!f(x, y)) {
            if (stopped()) throw SamplingEnded{};
            // Where the engine cannot tell the point from an end, the end's own failure (a pole,
            // a logarithm of zero) is no failure of the integral: the point is left out, and
            // the sliver beside the end counts in the error.
            if (!near_end(x, lower) && !near_end(x, upper)) throw SamplingEnded{};
            ClearLastError();
            return 0.0;
        }
        (x - a < b - x ? low : high).see(x, y);
        return static_cast<double>(y);
    };
    double value = 0, error = 0, l1 = 0;
    // The rules stop on an estimate relative to the integral of |f|; the answer must meet it
    // relative to the integral itself, checked below.
    double tolerance = static_cast<double>(accuracy);
    for (int attempt = 0;; ++attempt) {
    try {
        if (method == IntegrationMethod::double_exponential) {
            // Not const: this form of integrate is not declared so.
            boost::math::quadrature::tanh_sinh<double> rule(k_tanh_sinh_levels, k_closest_to_end);
            value = rule.integrate([&](double x, double) { return sample(x); }, a, b, tolerance, &error, &l1);
        } else {
            value = boost::math::quadrature::gauss_kronrod<double, 15>::integrate(sample, a, b, k_kronrod_depth, tolerance,
                                                                                  &error, &l1);
        }
    } catch (const SamplingEnded&) {
        if (IsAnError() || stopped()) return std::nullopt;
        // Out of budget: no estimate worth keeping.
        return std::nullopt;
    } catch (const std::exception&) {
        // Boost refuses a sum that is no longer finite: the integral diverges.
        return std::nullopt;
    }
    if (!std::isfinite(value) || !std::isfinite(error)) return std::nullopt;
    IntegralResult result;
    result.method = method;
    result.value = value;
    result.error = error + low.sliver(middle) + high.sliver(middle);
    result.converged = result.error <= accuracy * std::fabs(result.value) ||
                       std::fabs(result.value) + result.error <= m_answer_format.zero_precision;
    // An oscillating integrand cancels: the rule met the accuracy against the integral of |f|,
    // and once more, asked for as much more as the cancellation takes, it meets it against the
    // integral itself.
    const double cancelled = std::fabs(value) / l1;
    if (result.converged || attempt > 0 || !(cancelled < 1) || !(cancelled > 1e-4)) return result;
    tolerance *= cancelled;
    }
}

void Parser::confirm_by_halves(IntegrationMethod method, const Sampler& f, long double lower, long double upper,
                               long double accuracy, IntegralResult& found) {
    // A rule's estimate compares its own levels, which an integrand that oscillates far faster
    // than the points can follow fools alike (SIN(x) over a million radians): the same rule on
    // the two halves lays its points elsewhere, and only an answer they agree with is taken.
    const long double middle = 0.5L * (lower + upper);
    const std::optional<IntegralResult> left = integrate_by_rule(method, f, lower, middle, accuracy);
    const std::optional<IntegralResult> right =
        left ? integrate_by_rule(method, f, middle, upper, accuracy) : std::nullopt;
    const long double difference =
        left && right ? std::fabs(left->value + right->value - found.value) : std::numeric_limits<long double>::max();
    found.error = std::max(found.error, difference);
    found.converged = found.error <= accuracy * std::fabs(found.value) ||
                      std::fabs(found.value) + found.error <= m_answer_format.zero_precision;
}

IntegralResult Parser::integrate_sampled(const Sampler& f, long double lower, long double upper,
                                         long double accuracy) {
    IntegralResult best;
    best.error = std::numeric_limits<long double>::infinity();
    if (lower == upper) {
        best.error = 0;
        best.converged = true;
        return best;
    }
    // A failure at an end sends the integral to the rules that never evaluate the ends.
    long double failed_at = std::numeric_limits<long double>::quiet_NaN();
    const Sampler watched = [&](long double x, long double& y) {
        if (f(x, y)) return true;
        failed_at = x;
        return false;
    };
    bool exhausted = false;
    long double error = 0;
    const long double value = romberg(watched, lower, upper, accuracy, k_first_romberg_stages, error, exhausted);
    if (stopped()) return {};
    if (IsAnError()) {
        if (failed_at != lower && failed_at != upper) return {};
        ClearLastError();
    } else {
        best = {value, error, m_integral_converged, IntegrationMethod::romberg};
        if (best.converged) return best;
    }
    const bool reversed = upper < lower;
    for (const IntegrationMethod method : {IntegrationMethod::double_exponential, IntegrationMethod::gauss_kronrod}) {
        std::optional<IntegralResult> found =
            reversed ? integrate_by_rule(method, f, upper, lower, accuracy) : integrate_by_rule(method, f, lower, upper, accuracy);
        if (stopped()) return {};
        if (IsAnError()) return {};
        if (!found) continue;
        if (found->converged) confirm_by_halves(method, f, std::min(lower, upper), std::max(lower, upper), accuracy, *found);
        if (stopped() || IsAnError()) return {};
        if (reversed) found->value = -found->value;
        if (found->converged) return *found;
        if (found->error < best.error) best = *found;
    }
    if (!std::isfinite(best.error)) best.error = std::numeric_limits<long double>::max();
    return best;
}

IntegralResult Parser::integrate(int equation, const char* variable, long double lower, long double upper,
                                 long double accuracy, bool quiet) {
    ClearLastError();
    IntegralResult result;
    try {
        result = integrate_sampled(equation_sampler(equation, variable), lower, upper, accuracy);
    } catch (const EvaluationAborted&) {
        SetSolvingMap(false);
        result = {};
    }
    m_integral_converged = result.converged;
    if (!result.converged && !IsAnError() && !stopped()) mapper_exception(3, quiet);
    return result;
}

IntegralResult Parser::integrate_nested(int equation, const std::vector<IntegralLevel>& levels, long double accuracy,
                                        bool quiet) {
    ClearLastError();
    if (levels.empty()) return {};
    bool inner_converged = true;
    long outer_samples = 0;
    // The integrand of level k: the innermost runs the equation, the others integrate the level
    // inside them between the limits that the outer variables now give.
    std::function<bool(size_t, long double, long double&)> level_value = [&](size_t k, long double x,
                                                                           long double& y) -> bool {
        const IntegralLevel& level = levels[k];
        set_var_value(complex(static_cast<double>(x), 0), level.variable);
        if (k == 0) {
            const complex value = solve_equation(equation, false, true, false);
            if (IsAnError()) return false;
            y = value.real();
            return true;
        }
        const IntegralLevel& inner = levels[k - 1];
        const complex low = solve_equation(inner.lower, false, true, false);
        if (IsAnError()) return false;
        const complex high = solve_equation(inner.upper, false, true, false);
        if (IsAnError()) return false;
        const long double inner_accuracy = std::max(accuracy * k_inner_accuracy_factor, k_finest_inner_accuracy);
        const IntegralResult found = integrate_sampled(
            [&](long double t, long double& v) { return level_value(k - 1, t, v); }, low.real(), high.real(),
            inner_accuracy);
        if (IsAnError() || stopped()) return false;
        inner_converged = inner_converged && found.converged;
        y = found.value;
        return true;
    };
    const size_t outermost = levels.size() - 1;
    const IntegralLevel& outer = levels[outermost];
    IntegralResult result;
    try {
        const complex low = solve_equation(outer.lower, false, true, false);
        const complex high = IsAnError() ? complex() : solve_equation(outer.upper, false, true, false);
        if (!IsAnError()) {
            result = integrate_sampled(
                [&](long double x, long double& y) {
                    if (m_host) m_host->progress(++outer_samples, 0);
                    return level_value(outermost, x, y);
                },
                low.real(), high.real(), accuracy);
        }
    } catch (const EvaluationAborted&) {
        SetSolvingMap(false);
        result = {};
    }
    result.converged = result.converged && inner_converged && !IsAnError() && !stopped();
    m_integral_converged = result.converged;
    if (!result.converged && !IsAnError() && !stopped()) mapper_exception(3, quiet);
    return result;
}

} // namespace quorvex::engine
