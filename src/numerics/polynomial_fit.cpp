#include "polynomial_fit.h"

#include <Eigen/Dense>
#include <boost/multiprecision/cpp_bin_float.hpp>

#include <algorithm>
#include <cmath>
#include <set>

namespace quorvex::numerics {

namespace {

using Matrix = Eigen::Matrix<long double, Eigen::Dynamic, Eigen::Dynamic>;
using Vector = Eigen::Matrix<long double, Eigen::Dynamic, 1>;
using Wide = boost::multiprecision::cpp_bin_float_50;

// Coefficients of powers of t = (x - centre) / scale, carried to powers of x:
// sum_k b_k ((x - c) / s)^k = sum_j x^j sum_{k>=j} b_k C(k, j) (-c)^(k-j) / s^k.
std::vector<long double> to_powers_of_x(const Vector& b, long double centre, long double scale) {
    const auto m = static_cast<size_t>(b.size());
    std::vector<Wide> a(m, Wide(0));
    const Wide c(centre), s(scale);
    Wide s_power(1);
    for (size_t k = 0; k < m; ++k) {
        const Wide term = Wide(b(static_cast<Eigen::Index>(k))) / s_power;
        // term * (x - c)^k, expanded by the binomial theorem.
        Wide binomial(1), c_power(1);
        for (size_t j = k + 1; j-- > 0;) {
            a[j] += term * binomial * c_power;
            binomial = binomial * Wide(j) / Wide(k - j + 1);
            c_power *= -c;
        }
        s_power *= s;
    }
    std::vector<long double> out(m);
    for (size_t j = 0; j < m; ++j) out[j] = a[j].convert_to<long double>();
    return out;
}

long double correlation_of(const std::vector<long double>& u, const std::vector<long double>& v) {
    const size_t n = u.size();
    long double mean_u = 0, mean_v = 0;
    for (size_t i = 0; i < n; ++i) mean_u += u[i], mean_v += v[i];
    mean_u /= static_cast<long double>(n);
    mean_v /= static_cast<long double>(n);
    long double uv = 0, uu = 0, vv = 0;
    for (size_t i = 0; i < n; ++i) {
        const long double du = u[i] - mean_u, dv = v[i] - mean_v;
        uv += du * dv, uu += du * du, vv += dv * dv;
    }
    return uu > 0 && vv > 0 ? uv / std::sqrt(uu * vv) : 0;
}

} // namespace

long double polynomial_value(const std::vector<long double>& coefficients, long double x) {
    long double value = 0;
    for (size_t k = coefficients.size(); k-- > 0;) value = value * x + coefficients[k];
    return value;
}

std::optional<PolynomialFit> fit_polynomial(const std::vector<long double>& x, const std::vector<long double>& y,
                                            int coefficients, std::string& error) {
    const size_t n = std::min(x.size(), y.size());
    if (coefficients < 1 || coefficients > k_most_fit_coefficients) {
        error = "The number of coefficients must be from 1 to " + std::to_string(k_most_fit_coefficients) + ".";
        return std::nullopt;
    }
    const auto m = static_cast<size_t>(coefficients);
    for (size_t i = 0; i < n; ++i)
        if (!std::isfinite(x[i]) || !std::isfinite(y[i])) {
            error = "Data point " + std::to_string(i + 1) + " is not a finite number.";
            return std::nullopt;
        }
    const std::set<long double> distinct(x.begin(), x.begin() + static_cast<std::ptrdiff_t>(n));
    if (distinct.size() < m) {
        error = "A polynomial of " + std::to_string(m) + " coefficients needs at least " + std::to_string(m) +
                " points with different x values; the data has " + std::to_string(distinct.size()) + ".";
        return std::nullopt;
    }

    // Centred and scaled, the powers of t stay between -1 and 1 and the design stays well
    // conditioned where powers of x itself would not be.
    const long double low = *distinct.begin(), high = *distinct.rbegin();
    const long double centre = (low + high) / 2;
    const long double scale = high > low ? (high - low) / 2 : 1;
    Matrix design(static_cast<Eigen::Index>(n), static_cast<Eigen::Index>(m));
    Vector values(static_cast<Eigen::Index>(n));
    for (size_t i = 0; i < n; ++i) {
        const long double t = (x[i] - centre) / scale;
        long double power = 1;
        for (size_t k = 0; k < m; ++k) {
            design(static_cast<Eigen::Index>(i), static_cast<Eigen::Index>(k)) = power;
            power *= t;
        }
        values(static_cast<Eigen::Index>(i)) = y[i];
    }
    const Eigen::HouseholderQR<Matrix> qr(design);
    Vector b = qr.solve(values);
    // One refinement against the residuals recovers what the first solve rounded away.
    const Vector residual = values - design * b;
    b += qr.solve(residual);

    PolynomialFit fit;
    fit.coefficients = to_powers_of_x(b, centre, scale);
    const Vector fitted = design * b;
    fit.fitted.assign(fitted.data(), fitted.data() + fitted.size());
    long double mean = 0;
    for (size_t i = 0; i < n; ++i) mean += y[i];
    mean /= static_cast<long double>(n);
    long double residual_squares = 0, total_squares = 0;
    for (size_t i = 0; i < n; ++i) {
        residual_squares += (y[i] - fit.fitted[i]) * (y[i] - fit.fitted[i]);
        total_squares += (y[i] - mean) * (y[i] - mean);
    }
    fit.determination = total_squares > 0 ? 1 - residual_squares / total_squares : (residual_squares == 0 ? 1 : 0);
    const std::vector<long double> xs(x.begin(), x.begin() + static_cast<std::ptrdiff_t>(n));
    const std::vector<long double> ys(y.begin(), y.begin() + static_cast<std::ptrdiff_t>(n));
    fit.correlation = m == 2 ? correlation_of(xs, ys) : correlation_of(ys, fit.fitted);
    return fit;
}

} // namespace quorvex::numerics
