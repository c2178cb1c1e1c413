// Entries of the scalar functions: fetch the parameters, record the step for the mapper, call
// the kernel.
#include "builtin_functions.h"
#include "builtin_index.h"
#include "builtin_kernels.h"

#include <cmath>

namespace quorvex::functions {

namespace {

using engine::Parser;
using Out = std::ostringstream;
using K = ScalarKernels;
using Z = const complex&;

constexpr ScalarStep k_steps[] = {
    {SQRT, 28, 1, [](K& k, Z z, Z, int) { return k._sqrt(z); }},
    {LN, 29, 1, [](K& k, Z z, Z, int f) { return k._log(z, f); }},
    {LOG10, 30, 1, [](K& k, Z z, Z, int f) { return k._log10(z, f); }},
    {LOG, 31, 2, [](K& k, Z a, Z b, int f) { return k._logarithm(a, b, f); }},
    {EXP, 32, 1, [](K& k, Z z, Z, int) { return k._exp(z); }},
    {POW, 33, 2,
     [](K& k, Z a, Z b, int) {
         complex x = a, y = b;
         return k.parser()._pow(x, y);
     }},
    {ABS, 34, 1, [](K& k, Z z, Z, int) { return k._abs(z); }},
    {ROUND, 35, 1, [](K& k, Z z, Z, int) { return k._round(z); }},
    {TRUNC, 36, 1, [](K& k, Z z, Z, int) { return k._trunc(z); }},
    {REM, 39, 2, [](K& k, Z a, Z b, int f) { return k._fmod(a, b, f); }},
    {FLOOR, 40, 1, [](K& k, Z z, Z, int f) { return k._floor(z, f); }},
    {CEIL, 41, 1, [](K& k, Z z, Z, int f) { return k._ceil(z, f); }},
    {GCD, 42, 2, [](K& k, Z a, Z b, int f) { return k._gcd(a, b, f); }},
    {LCM, 43, 2, [](K& k, Z a, Z b, int f) { return k._lcm(a, b, f); }},
    {RTOP, 44, 2, [](K& k, Z a, Z b, int f) { return k._rtop(a, b, f); }},
    {PTOR, 45, 2, [](K& k, Z a, Z b, int f) { return k._ptor(a, b, f); }},
    // Without a text to write the digits to, only base 10 can become a value.
    {BASECON, 46, 2, [](K& k, Z a, Z b, int f) { return k._basecon(a, b, f, nullptr); }},
    {REAL, 47, 1, [](K&, Z z, Z, int) { return complex(z.real(), 0); }},
    {IMAG, 48, 1, [](K&, Z z, Z, int) { return complex(z.imag(), 0); }},
    {NORM, 49, 1, [](K&, Z z, Z, int) { return complex(std::norm(z), 0); }},
    {CMAG, 50, 1,
     [](K&, Z z, Z, int) {
         // The square is taken in long double, whose range holds it: a magnitude that fits a
         // double must not overflow on the way.
         const long double re = z.real(), im = z.imag();
         return complex(static_cast<double>(std::sqrt(re * re + im * im)), 0);
     }},
    {CANGLE, 51, 1, [](K& k, Z z, Z, int) { return k._angle(z); }},
    {PTOC, 52, 2, [](K& k, Z a, Z b, int f) { return k._polar(a, b, f); }},
    {CONJ, 53, 1, [](K&, Z z, Z, int) { return complex(z.real(), 0.0 - z.imag()); }},
    {DEG, 54, 1, [](K& k, Z z, Z, int) { return k._degree(z); }},
    {RAD, 55, 1, [](K& k, Z z, Z, int) { return k._radian(z); }},
    {SIN, 56, 1, [](K& k, Z z, Z, int f) { return k._trig_func(z, f); }},
    {COS, 57, 1, [](K& k, Z z, Z, int f) { return k._trig_func(z, f); }},
    {TAN, 58, 1, [](K& k, Z z, Z, int f) { return k._trig_func(z, f); }},
    {SINH, 59, 1, [](K& k, Z z, Z, int f) { return k._hyp_trig_func(z, f); }},
    {COSH, 60, 1, [](K& k, Z z, Z, int f) { return k._hyp_trig_func(z, f); }},
    {TANH, 61, 1, [](K& k, Z z, Z, int f) { return k._hyp_trig_func(z, f); }},
    {ASIN, 62, 1, [](K& k, Z z, Z, int f) { return k._arc_trig_func(z, f); }},
    {ACOS, 63, 1, [](K& k, Z z, Z, int f) { return k._arc_trig_func(z, f); }},
    {ATAN, 64, 1, [](K& k, Z z, Z, int f) { return k._arc_trig_func(z, f); }},
    {ASINH, 65, 1, [](K& k, Z z, Z, int f) { return k._arc_hyp_trig_func(z, f); }},
    {ACOSH, 66, 1, [](K& k, Z z, Z, int f) { return k._arc_hyp_trig_func(z, f); }},
    {ATANH, 67, 1, [](K& k, Z z, Z, int f) { return k._arc_hyp_trig_func(z, f); }},
    {HYPOT, 68, 2, [](K& k, Z a, Z b, int f) { return k._hypot(a, b, f); }},
    {CUBERT, 193, 1, [](K& k, Z z, Z, int) { return k._cubert(z); }},
};

// One complex parameter; the step is recorded before the kernel runs.
complex one(Parser& p, Out& out, const ScalarStep& step) {
    const int f = step.function;
    complex a;
    // Only the trigonometric functions and REM limit the digits of their literal parameters.
    const bool limit_digits = f == SIN || f == COS || f == TAN;
    p.set_check_digits(limit_digits);
    p.get_one_par(out, a, f);
    p.set_check_digits(false);
    p.record_instruction(step.instruction);
    ScalarKernels kernels(p);
    return step.kernel(kernels, a, {}, f);
}

complex two(Parser& p, Out& out, const ScalarStep& step) {
    const int f = step.function;
    complex a, b;
    p.set_check_digits(f == REM);
    if (f == HYPOT || f == PTOC)
        p.get_two_real_pars(out, a, b, f);
    else
        p.get_two_pars(out, a, b, f);
    p.set_check_digits(false);
    p.check_no_other_parameter(8, f);
    p.record_instruction(step.instruction);
    ScalarKernels kernels(p);
    return step.kernel(kernels, a, b, f);
}

complex scalar_call(Parser& p, Out& out, int f) {
    const ScalarStep& step = *scalar_step_for_function(f);
    return step.operands == 1 ? one(p, out, step) : two(p, out, step);
}

// RTOP, PTOR and BASECON print their answer and cannot stand inside a larger expression.
complex whole_line(Parser& p, Out& out, int f) {
    const char* name = p.get_function_name(f);
    if (!p.line_begins_with(name)) {
        p.mathlib_exception(20, f);
        return {0, 0};
    }
    complex a, b;
    p.get_two_real_pars(out, a, b, f);
    p.check_no_other_parameter(8, f);
    if (!p.at_last_bracket()) {
        p.mathlib_exception(20, f);
        return {0, 0};
    }
    p.record_instruction(scalar_step_for_function(f)->instruction);
    ScalarKernels kernels(p);
    if (f == BASECON) {
        std::string digits;
        const complex value = kernels._basecon(a, b, f, &digits);
        if (p.show_equal()) out << " = ";
        out << digits;
        return value;
    }
    const complex pair = f == RTOP ? kernels._rtop(a, b, f) : kernels._ptor(a, b, f);
    out << " = (" << pair.real() << ", " << pair.imag() << ")";
    return pair;
}

} // namespace

const ScalarStep* scalar_step_for_function(int function) {
    for (const ScalarStep& step : k_steps)
        if (step.function == function) return &step;
    return nullptr;
}

const ScalarStep* scalar_step_for_instruction(int instruction) {
    for (const ScalarStep& step : k_steps)
        if (step.instruction == instruction) return &step;
    return nullptr;
}

Entry scalar_entry(int function) {
    if (function == RTOP || function == PTOR || function == BASECON) return whole_line;
    return scalar_step_for_function(function) ? scalar_call : nullptr;
}

} // namespace quorvex::functions
