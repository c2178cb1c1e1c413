// Random deviates: one draw from a distribution per call, from the parser's own generator.
//   RAND[] or RAND[low, high]     uniform          NORDEV[] or NORDEV[mean, sd]   normal
//   EXPDEV[] or EXPDEV[a, s]      exponential from a, scale s
//   RAYDEV[] or RAYDEV[a, median] Rayleigh from the anchor a with the given median
//   BERDEV[p]  Bernoulli    BETADEV[a, b]  beta     BNLDEV[p, n]  binomial   CAUDEV[a, s]  Cauchy
//   CHIDEV[v]  chi-square   DEXPDEV[a, s]  Laplace  FDEV[v1, v2]  F          GAMDEV[a, b]  gamma
//   LOGDEV[a, s] logistic   NCHIDEV[v, lambda] non-central chi-square
#include "builtin_functions.h"
#include "builtin_index.h"
#include "builtin_kernels.h"
#include "engine/parser.h"

#include <cmath>
#include <random>

namespace quorvex::functions {

namespace {

using engine::Parser;
using Out = std::ostringstream;

// The deviate's message, from the deviates table, when a parameter makes the draw meaningless.
complex refuse(Parser& p, int code) {
    p.deviates_layer().raise(code);
    return {0, 0};
}

complex limit(Parser& p, int f, int code) {
    p.mathlib_exception(code, f);
    return {0, 0};
}

// A uniform draw in (0, 1): never 0, so logarithms of it are safe.
long double open_unit(std::mt19937_64& random) {
    std::uniform_real_distribution<long double> uniform(0.0L, 1.0L);
    long double u = 0;
    while (u == 0) u = uniform(random);
    return u;
}

long double draw(int f, long double a, long double b, std::mt19937_64& random) {
    switch (f) {
    case RAND: return a + (b - a) * std::uniform_real_distribution<long double>(0, 1)(random);
    case NORDEV: return std::normal_distribution<long double>(a, b)(random);
    case EXPDEV: return a - b * std::log(open_unit(random));
    case RAYDEV: {
        // The median of a Rayleigh distribution is its scale times sqrt(2 ln 2).
        const long double scale = (b - a) / std::sqrt(2 * std::log(2.0L));
        return a + scale * std::sqrt(-2 * std::log(open_unit(random)));
    }
    case BERDEV: return std::bernoulli_distribution(static_cast<double>(a))(random) ? 1 : 0;
    case BETADEV: {
        const long double x = std::gamma_distribution<long double>(a, 1)(random);
        const long double y = std::gamma_distribution<long double>(b, 1)(random);
        return x / (x + y);
    }
    case BNLDEV:
        return static_cast<long double>(
            std::binomial_distribution<long long>(static_cast<long long>(b), static_cast<double>(a))(random));
    case CAUDEV: return std::cauchy_distribution<long double>(a, b)(random);
    case CHIDEV: return std::chi_squared_distribution<long double>(a)(random);
    case DEXPDEV: {
        const long double u = open_unit(random) - 0.5L;
        return a - b * (u < 0 ? -1 : 1) * std::log(1 - 2 * std::fabs(u));
    }
    case FDEV: return std::fisher_f_distribution<long double>(a, b)(random);
    case GAMDEV: return std::gamma_distribution<long double>(a, b)(random);
    case LOGDEV: {
        const long double u = open_unit(random);
        return a + b * std::log(u / (1 - u));
    }
    default: { // NCHIDEV: a central part with one degree fewer, plus one shifted normal square
        const long double shifted = std::normal_distribution<long double>(std::sqrt(b), 1)(random);
        return std::chi_squared_distribution<long double>(a - 1)(random) + shifted * shifted;
    }
    }
}

// The code of the first parameter limit broken, 0 when none.
int broken_limit(int f, long double a, long double b) {
    switch (f) {
    case BERDEV: return a < 0 || a > 1 ? 41 : 0;
    case BNLDEV: return a < 0 || a > 1 ? 41 : (b <= 0 || b != std::trunc(b) ? 44 : 0);
    case BETADEV:
    case GAMDEV: return a <= 0 ? 42 : (b <= 0 ? 43 : 0);
    case CAUDEV:
    case DEXPDEV:
    case LOGDEV: return b <= 0 ? 49 : 0;
    case CHIDEV: return a <= 0 ? 45 : 0;
    case FDEV: return a <= 0 || b <= 0 ? 45 : 0;
    case NCHIDEV: return a <= 1 ? 46 : (b < 0 ? 48 : 0);
    case NORDEV: return b <= 0 ? 55 : 0;
    default: return 0;
    }
}

constexpr int k_first_instruction[] = {108, 110, 112, 114}; // RAND, NORDEV, EXPDEV, RAYDEV
constexpr long double k_standard[][2] = {{0, 1}, {0, 1}, {0, 1}, {0, 1.1774100225154747L}};

complex deviate(Parser& p, Out& out, int f) {
    const bool has_empty_form = f >= RAND && f <= RAYDEV;
    if (has_empty_form && p.token() == "]") {
        // The empty form draws from the standard distribution of the family.
        p.record_instruction(k_first_instruction[f - RAND] + 1);
        return standard_deviate(p, f);
    }
    complex x, y;
    if (deviate_parameter_count(f) == 1) {
        p.get_one_real_par(out, x, f);
    } else {
        p.get_two_real_pars(out, x, y, f);
        p.check_no_other_parameter(8, f);
    }
    p.record_instruction(has_empty_form ? k_first_instruction[f - RAND] : 117 + (f - BERDEV));
    return deviate_value(p, f, x.real(), y.real());
}

} // namespace

int deviate_parameter_count(int function) { return function == BERDEV || function == CHIDEV ? 1 : 2; }

complex deviate_value(Parser& p, int f, long double a, long double b) {
    if (const int code = broken_limit(f, a, b)) return limit(p, f, code);
    if (f == EXPDEV && b == 0) return refuse(p, 0);
    if (f == RAYDEV && a == b) return refuse(p, 1);
    return {static_cast<double>(draw(f, a, b, p.random_engine())), 0};
}

complex standard_deviate(Parser& p, int f) {
    const long double* standard = k_standard[f - RAND];
    return {static_cast<double>(draw(f, standard[0], standard[1], p.random_engine())), 0};
}

Entry deviate_entry(int function) { return function >= RAND && function <= NCHIDEV ? deviate : nullptr; }

} // namespace quorvex::functions
