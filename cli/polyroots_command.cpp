// All roots of a polynomial given by its coefficients, highest power first.
#include "command_support.h"

#include "numerics/polynomial_roots.h"

namespace quorvex::cli {

namespace {

// Laguerre's rows bound the degree; the same bound holds for both methods, so that the choice of
// method never decides whether a polynomial is accepted.
constexpr size_t k_most_coefficients = numerics::Roots::kLaguerreRowSize;

} // namespace

int run_polyroots(CommandContext& context) {
    const auto& args = arguments(context, 2, k_most_coefficients);
    refuse_options(context, false, false);
    std::vector<numerics::LongComplex> coefficients;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string what = "the coefficient of x^" + std::to_string(args.size() - 1 - i);
        const engine::complex value = evaluate(context, args[i], what);
        coefficients.push_back({value.real(), value.imag()});
    }
    if (coefficients.front().re == 0 && coefficients.front().im == 0)
        usage_failure("the coefficient of the highest power, x^" + std::to_string(args.size() - 1) +
                      ", must not be 0" + zeroed_by_tolerance(context, args.front()));

    const numerics::PolynomialRoots result = numerics::find_polynomial_roots(coefficients);
    for (const numerics::LongComplex& root : result.roots)
        context.out << format_answer(context, engine::complex(static_cast<double>(root.re),
                                                              static_cast<double>(root.im)))
                    << '\n';
    if (result.outcome != numerics::RootsOutcome::all_found)
        calculation_failure("only " + std::to_string(result.roots.size()) + " of the " +
                            std::to_string(args.size() - 1) + " roots were found");
    return 0;
}

} // namespace quorvex::cli
