// Entries of the scalar functions: fetch the parameters, record the step for the mapper, call
// the kernel.
#include "builtin_functions.h"
#include "builtin_index.h"
#include "scalar_kernels.h"

#include <cmath>

namespace quorvex::functions {

namespace {

using engine::Parser;
using Out = std::ostringstream;
using OneKernel = complex (*)(ScalarKernels&, const complex&, int function);
using TwoKernel = complex (*)(ScalarKernels&, const complex&, const complex&, int function);

// One complex parameter; the step is recorded before the kernel runs.
complex one(Parser& p, Out& out, int f, int instruction, OneKernel kernel) {
    complex a;
    // Only the trigonometric functions and REM limit the digits of their literal parameters.
    const bool limit_digits = f == SIN || f == COS || f == TAN;
    p.set_check_digits(limit_digits);
    p.get_one_par(out, a, f);
    p.set_check_digits(false);
    p.record_instruction(instruction);
    ScalarKernels kernels(p);
    return kernel(kernels, a, f);
}

complex two(Parser& p, Out& out, int f, int instruction, TwoKernel kernel, bool real) {
    complex a, b;
    p.set_check_digits(f == REM);
    if (real)
        p.get_two_real_pars(out, a, b, f);
    else
        p.get_two_pars(out, a, b, f);
    p.set_check_digits(false);
    p.check_no_other_parameter(8, f);
    p.record_instruction(instruction);
    ScalarKernels kernels(p);
    return kernel(kernels, a, b, f);
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

Entry scalar_entry(int function) {
    switch (function) {
    case SQRT: return [](Parser& p, Out& o, int f) { return one(p, o, f, 28, [](ScalarKernels& k, const complex& z, int) { return k._sqrt(z); }); };
    case LN: return [](Parser& p, Out& o, int f) { return one(p, o, f, 29, [](ScalarKernels& k, const complex& z, int g) { return k._log(z, g); }); };
    case LOG10: return [](Parser& p, Out& o, int f) { return one(p, o, f, 30, [](ScalarKernels& k, const complex& z, int g) { return k._log10(z, g); }); };
    case EXP: return [](Parser& p, Out& o, int f) { return one(p, o, f, 32, [](ScalarKernels& k, const complex& z, int) { return k._exp(z); }); };
    case ABS: return [](Parser& p, Out& o, int f) { return one(p, o, f, 34, [](ScalarKernels& k, const complex& z, int) { return k._abs(z); }); };
    case ROUND: return [](Parser& p, Out& o, int f) { return one(p, o, f, 35, [](ScalarKernels& k, const complex& z, int) { return k._round(z); }); };
    case TRUNC: return [](Parser& p, Out& o, int f) { return one(p, o, f, 36, [](ScalarKernels& k, const complex& z, int) { return k._trunc(z); }); };
    case FLOOR: return [](Parser& p, Out& o, int f) { return one(p, o, f, 40, [](ScalarKernels& k, const complex& z, int g) { return k._floor(z, g); }); };
    case CEIL: return [](Parser& p, Out& o, int f) { return one(p, o, f, 41, [](ScalarKernels& k, const complex& z, int g) { return k._ceil(z, g); }); };
    case CUBERT: return [](Parser& p, Out& o, int f) { return one(p, o, f, 193, [](ScalarKernels& k, const complex& z, int) { return k._cubert(z); }); };
    case REAL: return [](Parser& p, Out& o, int f) { return one(p, o, f, 47, [](ScalarKernels&, const complex& z, int) { return complex(z.real(), 0); }); };
    case IMAG: return [](Parser& p, Out& o, int f) { return one(p, o, f, 48, [](ScalarKernels&, const complex& z, int) { return complex(z.imag(), 0); }); };
    case NORM: return [](Parser& p, Out& o, int f) { return one(p, o, f, 49, [](ScalarKernels&, const complex& z, int) { return complex(std::norm(z), 0); }); };
    case CMAG: return [](Parser& p, Out& o, int f) { return one(p, o, f, 50, [](ScalarKernels&, const complex& z, int) { return complex(static_cast<double>(std::sqrt(static_cast<long double>(std::norm(z)))), 0); }); };
    case CANGLE: return [](Parser& p, Out& o, int f) { return one(p, o, f, 51, [](ScalarKernels& k, const complex& z, int) { return k._angle(z); }); };
    case CONJ: return [](Parser& p, Out& o, int f) { return one(p, o, f, 53, [](ScalarKernels&, const complex& z, int) { return complex(z.real(), 0.0 - z.imag()); }); };
    case DEG: return [](Parser& p, Out& o, int f) { return one(p, o, f, 54, [](ScalarKernels& k, const complex& z, int) { return k._degree(z); }); };
    case RAD: return [](Parser& p, Out& o, int f) { return one(p, o, f, 55, [](ScalarKernels& k, const complex& z, int) { return k._radian(z); }); };
    case SIN: return [](Parser& p, Out& o, int f) { return one(p, o, f, 56, [](ScalarKernels& k, const complex& z, int g) { return k._trig_func(z, g); }); };
    case COS: return [](Parser& p, Out& o, int f) { return one(p, o, f, 57, [](ScalarKernels& k, const complex& z, int g) { return k._trig_func(z, g); }); };
    case TAN: return [](Parser& p, Out& o, int f) { return one(p, o, f, 58, [](ScalarKernels& k, const complex& z, int g) { return k._trig_func(z, g); }); };
    case SINH: return [](Parser& p, Out& o, int f) { return one(p, o, f, 59, [](ScalarKernels& k, const complex& z, int g) { return k._hyp_trig_func(z, g); }); };
    case COSH: return [](Parser& p, Out& o, int f) { return one(p, o, f, 60, [](ScalarKernels& k, const complex& z, int g) { return k._hyp_trig_func(z, g); }); };
    case TANH: return [](Parser& p, Out& o, int f) { return one(p, o, f, 61, [](ScalarKernels& k, const complex& z, int g) { return k._hyp_trig_func(z, g); }); };
    case ASIN: return [](Parser& p, Out& o, int f) { return one(p, o, f, 62, [](ScalarKernels& k, const complex& z, int g) { return k._arc_trig_func(z, g); }); };
    case ACOS: return [](Parser& p, Out& o, int f) { return one(p, o, f, 63, [](ScalarKernels& k, const complex& z, int g) { return k._arc_trig_func(z, g); }); };
    case ATAN: return [](Parser& p, Out& o, int f) { return one(p, o, f, 64, [](ScalarKernels& k, const complex& z, int g) { return k._arc_trig_func(z, g); }); };
    case ASINH: return [](Parser& p, Out& o, int f) { return one(p, o, f, 65, [](ScalarKernels& k, const complex& z, int g) { return k._arc_hyp_trig_func(z, g); }); };
    case ACOSH: return [](Parser& p, Out& o, int f) { return one(p, o, f, 66, [](ScalarKernels& k, const complex& z, int g) { return k._arc_hyp_trig_func(z, g); }); };
    case ATANH: return [](Parser& p, Out& o, int f) { return one(p, o, f, 67, [](ScalarKernels& k, const complex& z, int g) { return k._arc_hyp_trig_func(z, g); }); };
    case LOG: return [](Parser& p, Out& o, int f) { return two(p, o, f, 31, [](ScalarKernels& k, const complex& a, const complex& b, int g) { return k._logarithm(a, b, g); }, false); };
    case POW: return [](Parser& p, Out& o, int f) { return two(p, o, f, 33, [](ScalarKernels& k, const complex& a, const complex& b, int) { complex x = a, y = b; return k.parser()._pow(x, y); }, false); };
    case REM: return [](Parser& p, Out& o, int f) { return two(p, o, f, 39, [](ScalarKernels& k, const complex& a, const complex& b, int g) { return k._fmod(a, b, g); }, false); };
    case HYPOT: return [](Parser& p, Out& o, int f) { return two(p, o, f, 68, [](ScalarKernels& k, const complex& a, const complex& b, int g) { return k._hypot(a, b, g); }, true); };
    case PTOC: return [](Parser& p, Out& o, int f) { return two(p, o, f, 52, [](ScalarKernels& k, const complex& a, const complex& b, int g) { return k._polar(a, b, g); }, true); };
    case GCD: return [](Parser& p, Out& o, int f) { return two(p, o, f, 42, [](ScalarKernels& k, const complex& a, const complex& b, int g) { return k._gcd(a, b, g); }, false); };
    case LCM: return [](Parser& p, Out& o, int f) { return two(p, o, f, 43, [](ScalarKernels& k, const complex& a, const complex& b, int g) { return k._lcm(a, b, g); }, false); };
    case RTOP:
    case PTOR:
    case BASECON: return whole_line;
    default: return nullptr;
    }
}

} // namespace quorvex::functions
