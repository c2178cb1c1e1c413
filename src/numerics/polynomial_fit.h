#pragma once
#include <optional>
#include <string>
#include <vector>

namespace quorvex::numerics {

// A least-squares polynomial through data points.
struct PolynomialFit {
    // Of x^0, x^1, ... in turn: as many as were asked for.
    std::vector<long double> coefficients;
    // The fitted values at the data's x, in the data's order.
    std::vector<long double> fitted;
    // The correlation coefficient: of x and y for a line (its sign that of the slope), of y and
    // the fitted values for a higher degree.
    long double correlation = 0;
    // R squared: 1 less the residuals' sum of squares over y's sum of squared deviations.
    long double determination = 0;
};

// The most coefficients a fit takes.
inline constexpr int k_most_fit_coefficients = 99;

// Fits a polynomial of `coefficients` coefficients (its degree one less) to the points (x, y) by
// least squares. The design is built on x centred and scaled to [-1, 1] and solved by a
// Householder QR decomposition in long double, refined once against its residuals, never through
// the normal equations; the coefficients are then carried back to powers of x in 50 digits, so
// that high degrees keep their digits. None, with `error` set, when the points can not determine
// such a polynomial.
std::optional<PolynomialFit> fit_polynomial(const std::vector<long double>& x, const std::vector<long double>& y,
                                            int coefficients, std::string& error);

// The polynomial's value at x (coefficients of ascending powers), by Horner's rule.
long double polynomial_value(const std::vector<long double>& coefficients, long double x);

} // namespace quorvex::numerics
