#pragma once
#include "roots.h"

#include <span>
#include <vector>

namespace quorvex::numerics {

enum class RootsOutcome {
    all_found,
    not_converged,           // some or all roots could not be found; `roots` holds the others
    zero_leading_coefficient // the first coefficient is 0: the degree is not what was given
};

struct PolynomialRoots {
    std::vector<LongComplex> roots;
    RootsOutcome outcome = RootsOutcome::all_found;
    bool laguerre = false; // which method ran: Laguerre for complex coefficients, else Jenkins-Traub
};

// All roots of the polynomial with these coefficients, highest power first; its degree is one
// less than their count. Laguerre's method runs when any coefficient has an imaginary part,
// Jenkins-Traub otherwise. Trailing zero coefficients give exact roots 0 in both methods.
PolynomialRoots find_polynomial_roots(std::span<const LongComplex> coefficients);

} // namespace quorvex::numerics
