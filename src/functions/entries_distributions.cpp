// Entries of the distributions and of the normal-distribution helpers ERF, ERFC, NORDIST,
// NORPROB, NORMX and ZSCORE.
#include "builtin_functions.h"
#include "builtin_index.h"
#include "builtin_kernels.h"
#include "distributions.h"
#include "engine/parser.h"
#include "statistics.h"

#include <boost/math/distributions/normal.hpp>
#include <boost/math/special_functions/erf.hpp>

#include <optional>

namespace quorvex::functions {

namespace {

using engine::Parser;
using Out = std::ostringstream;

complex to_value(Parser& p, int f, std::optional<long double> value) {
    if (!value) {
        p.mathlib_exception(58, f);
        return {0, 0};
    }
    return {static_cast<double>(*value), 0};
}

complex distribution(Parser& p, Out& out, int f) {
    complex x, a, b;
    if (distributions::shape_count(distributions::family_of(f)) == 1)
        p.get_two_real_pars(out, x, a, f);
    else
        p.get_three_real_pars(out, x, a, b, f);
    p.check_no_other_parameter(8, f);
    if (p.check_no_imag_compnts(13, f, x, a, b)) return {0, 0};
    p.record_instruction(127 + (f - BETACDF));
    return distribution_value(p, f, x.real(), a.real(), b.real());
}

complex error_function(Parser& p, Out& out, int f) {
    complex x;
    p.get_one_real_par(out, x, f);
    p.record_instruction(f == ERF ? 105 : 106);
    return error_function_value(f, x.real());
}

long double normal(Parser& p, int f, long double mean, long double sd, distributions::Kind kind, long double x) {
    if (sd <= 0) {
        p.mathlib_exception(55, f);
        return 0;
    }
    const boost::math::normal_distribution<long double> d(mean, sd);
    if (kind == distributions::Kind::Pdf) return boost::math::pdf(d, x);
    if (kind == distributions::Kind::Cdf) return boost::math::cdf(d, x);
    return boost::math::quantile(d, x);
}

// NORDIST[x, mean, sd]: the normal density.
complex nordist(Parser& p, Out& out, int f) {
    complex x, m, s;
    p.get_three_real_pars(out, x, m, s, f);
    p.check_no_other_parameter(8, f);
    p.record_instruction(90);
    return nordist_value(p, f, x.real(), m.real(), s.real());
}

// The two shapes: numbers, or a list whose mean and spread stand in for the last two numbers.
// Returns how many numbers were read; the list shape fills mean and sd from the data.
int two_shapes(Parser& p, Out& out, int f, int numbers, int after_list, complex* values, long double& mean,
               long double& sd) {
    if (p.token() == "{") {
        DataList list;
        p.get_data(out, list, f);
        p.check_no_right_bracket(3, f);
        for (int i = 0; i < after_list; ++i) {
            p.check_comma(1, f);
            p.next_token();
            p.check_no_comma(9, f);
            p.check_no_right_bracket(3, f);
            p.read_expression(values[i], out);
        }
        if (!list.empty()) list_mean_and_spread(list, mean, sd);
        return after_list;
    }
    if (numbers == 3)
        p.get_three_real_pars(out, values[0], values[1], values[2], f);
    else
        p.get_four_real_pars(out, values[0], values[1], values[2], values[3], f);
    mean = values[numbers - 2].real();
    sd = values[numbers - 1].real();
    return numbers;
}

// What a call in either shape leaves: its leading numbers, the mean and spread, and the shape.
struct NormalCall {
    complex values[4];
    long double mean = 0, sd = 0;
    bool list = false;
};

// Reads a call in either shape; `leading` numbers come before the mean and spread. Nothing when
// an error was reported without unwinding. The list shape records the start of its list.
std::optional<NormalCall> read_normal_call(Parser& p, Out& out, int f, int leading) {
    NormalCall call;
    call.list = p.token() == "{";
    if (call.list) p.record_instruction(194);
    two_shapes(p, out, f, leading + 2, leading, call.values, call.mean, call.sd);
    p.check_no_other_parameter(8, f);
    if (p.check_no_imag_compnts(13, f, call.values[0], leading > 1 ? call.values[1] : complex{})) return std::nullopt;
    return call;
}

// The step of the shape that was read, and the end of its list.
complex recorded(Parser& p, const NormalCall& call, int numeric_step, complex value) {
    if (call.list) {
        p.record_instruction(numeric_step + 1);
        p.record_instruction(195);
    } else {
        p.record_instruction(numeric_step);
    }
    return value;
}

// NORPROB[a, b, mean, sd] or NORPROB[{list}, a, b]: the probability of a value between a and b.
complex norprob(Parser& p, Out& out, int f) {
    const auto call = read_normal_call(p, out, f, 2);
    if (!call) return {0, 0};
    return recorded(p, *call, 91,
                    norprob_value(p, f, call->values[0].real(), call->values[1].real(), call->mean, call->sd));
}

// NORMX[p, mean, sd] or NORMX[{list}, p]: the value below which the probability p lies.
complex normx(Parser& p, Out& out, int f) {
    const auto call = read_normal_call(p, out, f, 1);
    if (!call) return {0, 0};
    return recorded(p, *call, 93, normx_value(p, f, call->values[0].real(), call->mean, call->sd));
}

// ZSCORE[x, mean, sd] or ZSCORE[{list}, x]: how many deviations x lies from the mean.
complex zscore(Parser& p, Out& out, int f) {
    const auto call = read_normal_call(p, out, f, 1);
    if (!call) return {0, 0};
    return recorded(p, *call, 96, zscore_value(p, f, call->values[0].real(), call->mean, call->sd));
}

// The normal helpers need a positive spread (code 55).
bool refuse_spread(Parser& p, int f, long double sd) {
    if (sd > 0) return false;
    p.mathlib_exception(55, f);
    return true;
}

} // namespace

complex distribution_value(Parser& p, int f, long double x, long double a, long double b) {
    if (const auto code = distributions::broken_limit(f, x, a, b)) {
        p.mathlib_exception(*code, f);
        return {0, 0};
    }
    return to_value(p, f, distributions::evaluate(f, x, a, b));
}

complex error_function_value(int f, long double x) {
    return {static_cast<double>(f == ERF ? boost::math::erf(x) : boost::math::erfc(x)), 0};
}

void list_mean_and_spread(const DataList& list, long double& mean, long double& sd) {
    mean = statistics::mean(list);
    sd = statistics::spread(list);
}

complex nordist_value(Parser& p, int f, long double x, long double mean, long double sd) {
    return {static_cast<double>(normal(p, f, mean, sd, distributions::Kind::Pdf, x)), 0};
}

complex norprob_value(Parser& p, int f, long double low, long double high, long double mean, long double sd) {
    if (refuse_spread(p, f, sd)) return {0, 0};
    const auto cdf = [&](long double x) { return normal(p, f, mean, sd, distributions::Kind::Cdf, x); };
    return {static_cast<double>(cdf(high) - cdf(low)), 0};
}

complex normx_value(Parser& p, int f, long double probability, long double mean, long double sd) {
    if (refuse_spread(p, f, sd)) return {0, 0};
    if (probability > 1 || probability < 0) {
        p.mathlib_exception(probability > 1 ? 32 : 41, f);
        return {0, 0};
    }
    return to_value(p, f, distributions::evaluate(NORMALX, probability, mean, sd));
}

complex zscore_value(Parser& p, int f, long double x, long double mean, long double sd) {
    if (refuse_spread(p, f, sd)) return {0, 0};
    return {static_cast<double>((x - mean) / sd), 0};
}

Entry distribution_entry(int function) {
    if (function >= BETACDF && function <= STUDTX) return distribution;
    switch (function) {
    case ERF:
    case ERFC: return error_function;
    case NORDIST: return nordist;
    case NORPROB: return norprob;
    case NORMX: return normx;
    case ZSCORE: return zscore;
    default: return nullptr;
    }
}

} // namespace quorvex::functions
