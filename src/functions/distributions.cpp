#include "distributions.h"

#include "builtin_index.h"

#include <boost/math/distributions.hpp>

#include <cmath>
#include <stdexcept>

namespace quorvex::functions::distributions {

namespace {

enum Family { BETA, CAUCHY, DBLEXP, EXPONENTIAL, GAMMA, LOGISTIC, LOGNORM, RAYLEIGH, UNIFORM, WEIBULL, CHISQ, FRATIO, NORMAL, STUDT };

// Outside its support a distribution has density 0 and a cumulative probability of 0 or 1;
// Boost refuses such arguments, the language answers them.
template <typename Distribution>
long double compute(const Distribution& d, Kind kind, long double x) {
    if (kind == Kind::Quantile) return boost::math::quantile(d, x);
    const auto [low, high] = boost::math::support(d);
    if (x < low) return 0;
    if (x > high) return kind == Kind::Cdf ? 1 : 0;
    return kind == Kind::Cdf ? boost::math::cdf(d, x) : boost::math::pdf(d, x);
}

long double dispatch(int family, Kind kind, long double x, long double a, long double b) {
    using namespace boost::math;
    switch (family) {
    case BETA: return compute(beta_distribution<long double>(a, b), kind, x);
    case CAUCHY: return compute(cauchy_distribution<long double>(a, b), kind, x);
    case DBLEXP: return compute(laplace_distribution<long double>(a, b), kind, x);
    case EXPONENTIAL: return compute(exponential_distribution<long double>(a), kind, x);
    case GAMMA: return compute(gamma_distribution<long double>(a, b), kind, x);
    case LOGISTIC: return compute(logistic_distribution<long double>(a, b), kind, x);
    case LOGNORM: return compute(lognormal_distribution<long double>(a, b), kind, x);
    case RAYLEIGH: return compute(rayleigh_distribution<long double>(a), kind, x);
    case UNIFORM: return compute(uniform_distribution<long double>(a, b), kind, x);
    case WEIBULL: return compute(weibull_distribution<long double>(a, b), kind, x);
    case CHISQ: return compute(chi_squared_distribution<long double>(a), kind, x);
    case FRATIO: return compute(fisher_f_distribution<long double>(a, b), kind, x);
    case NORMAL: return compute(normal_distribution<long double>(a, b), kind, x);
    default: return compute(students_t_distribution<long double>(a), kind, x);
    }
}

// Beyond this many degrees of freedom the Student density is a normal one in all shown digits,
// and its gamma-function form no longer evaluates.
constexpr long double k_student_dof_limit = 1e8L;

} // namespace

int family_of(int function) { return (function - BETACDF) / 3; }
Kind kind_of(int function) { return static_cast<Kind>((function - BETACDF) % 3); }

int shape_count(int family) {
    return family == EXPONENTIAL || family == RAYLEIGH || family == CHISQ || family == STUDT ? 1 : 2;
}

std::optional<int> broken_limit(int function, long double x, long double a, long double b) {
    const int family = family_of(function);
    const Kind kind = kind_of(function);
    if (kind == Kind::Quantile && (x < 0 || x > 1)) return 41;
    switch (family) {
    case BETA:
    case GAMMA:
        if (a <= 0) return 42;
        if (b <= 0) return 43;
        if (function == BETAPDF && x > 1) return 56;
        if (function == GAMMAPDF && x <= 0) return 57;
        break;
    case CAUCHY:
    case DBLEXP:
        if (b <= 0) return 49;
        break;
    case RAYLEIGH:
        if (a <= 0) return 49;
        break;
    case EXPONENTIAL:
        if (a <= 0) return 54;
        break;
    case LOGISTIC:
        if (b <= 0) return 43;
        break;
    case LOGNORM:
    case NORMAL:
        if (b <= 0) return 55;
        break;
    case UNIFORM:
        if (a > b) return 52;
        break;
    case WEIBULL:
        if (a <= 0) return 53;
        if (b <= 0) return 43;
        break;
    case CHISQ:
    case STUDT:
        if (a <= 0) return 45;
        if (function == STUDTPDF && a > k_student_dof_limit) return 47;
        break;
    case FRATIO:
        if (a <= 0 || b <= 0) return 45;
        break;
    default: break;
    }
    return std::nullopt;
}

std::optional<long double> evaluate(int function, long double x, long double a, long double b) {
    try {
        const long double value = dispatch(family_of(function), kind_of(function), x, a, b);
        if (!std::isfinite(value)) return std::nullopt;
        return value;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

} // namespace quorvex::functions::distributions
