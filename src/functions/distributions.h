#pragma once
#include <optional>

namespace quorvex::functions {

// The continuous distributions of the language, fourteen families of three functions each:
// ...CDF[x, ...], ...PDF[x, ...] and ...X[p, ...], the quantile. Parameters, after x or p:
//   BETA a, b (shapes)            CAUCHY a, s (location, scale)   DBLEXP a, s (Laplace)
//   EXP lambda (rate)             GAMMA alpha, beta (shape, scale) LOGISTIC a, b (location, scale)
//   LOGNORM m, s (of the log)     RAYLEIGH s (scale)               UNIFORM a, b (bounds)
//   WEIBULL gamma, beta (shape, scale)  CHISQ v (dof)  FRATIO v1, v2 (dof)  NORMAL m, s  STUDT v (dof)
namespace distributions {

enum class Kind { Cdf = 0, Pdf = 1, Quantile = 2 };

// Family of a row from BETACDF to STUDTX, counted from 0, and what the row computes.
int family_of(int function);
Kind kind_of(int function);
// Number of parameters after x or p: 1 or 2.
int shape_count(int family);
// The message code of the first parameter limit the call breaks, if any.
std::optional<int> broken_limit(int function, long double x, long double a, long double b);
// The value; nothing when the computation itself failed (an overflow, say).
std::optional<long double> evaluate(int function, long double x, long double a, long double b);

} // namespace distributions

} // namespace quorvex::functions
