#pragma once

namespace quorvex::engine {

// The rules an integral can be found by, in the order they are tried.
enum class IntegrationMethod { romberg, double_exponential, gauss_kronrod };

// An integral with how far it can be trusted: `error` is the method's own estimate of its
// absolute error; `converged` whether that met the accuracy asked for.
struct IntegralResult {
    long double value = 0;
    long double error = 0;
    bool converged = false;
    IntegrationMethod method = IntegrationMethod::romberg;
};

// One level of a double or triple integral: its variable and the numbers of the mapped equations
// that give its lower and upper limit.
struct IntegralLevel {
    const char* variable;
    int lower;
    int upper;
};

} // namespace quorvex::engine
