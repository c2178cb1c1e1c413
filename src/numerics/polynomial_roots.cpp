#include "polynomial_roots.h"

#include <algorithm>
#include <cmath>

namespace quorvex::numerics {

PolynomialRoots find_polynomial_roots(std::span<const LongComplex> coefficients) {
    PolynomialRoots result;
    if (coefficients.empty()) return result;
    const auto is_zero = [](const LongComplex& c) { return c.re == 0.0L && c.im == 0.0L; };
    if (is_zero(coefficients.front())) {
        result.outcome = RootsOutcome::zero_leading_coefficient;
        return result;
    }
    result.laguerre = std::any_of(coefficients.begin(), coefficients.end(),
                                  [](const LongComplex& c) { return c.im != 0.0L; });
    const int degree = static_cast<int>(coefficients.size()) - 1;
    Roots roots;

    if (!result.laguerre) {
        std::vector<long double> real(coefficients.size());
        std::transform(coefficients.begin(), coefficients.end(), real.begin(),
                       [](const LongComplex& c) { return c.re; });
        std::vector<long double> re(degree), im(degree);
        const int found = roots.JenkinsTraubRoots(real, degree, re, im);
        for (int i = 0; i < found; ++i)
            result.roots.push_back({re[i], im[i]});
        if (found < degree) result.outcome = RootsOutcome::not_converged;
        return result;
    }

    // The Laguerre iteration tests convergence relative to the root, which a root at 0 never
    // passes: such roots are taken off first, exactly.
    std::span<const LongComplex> rest = coefficients;
    while (is_zero(rest.back())) {
        result.roots.push_back({0.0L, 0.0L});
        rest = rest.first(rest.size() - 1);
    }
    const int rest_degree = static_cast<int>(rest.size()) - 1;
    if (rest_degree == 0) return result;
    std::vector<long double> re(rest_degree), im(rest_degree);
    int status = 0;
    roots.LaguerreRoots(rest, rest_degree, re, im, status);
    for (int i = 0; i < rest_degree; ++i) {
        if (!std::isnan(re[i]) && !std::isnan(im[i])) result.roots.push_back({re[i], im[i]});
    }
    if (status != 0) result.outcome = RootsOutcome::not_converged;
    return result;
}

} // namespace quorvex::numerics
