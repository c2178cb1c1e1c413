// Mapped steps of the distributions, ERF and ERFC, and the normal helpers NORDIST, NORPROB, NORMX
// and ZSCORE, whose list forms take the mean and spread of the open data list.
#include "builtin_index.h"
#include "builtin_kernels.h"
#include "distributions.h"
#include "mapped_steps.h"

namespace quorvex::functions {

using engine::MachineState;
using engine::Parser;

namespace {

constexpr int k_first_distribution_step = 127;
constexpr int k_last_distribution_step = 168;

// A normal helper: the row, how many operands it takes, whether the list stands in for the mean
// and spread, and its value from the leading numbers, the mean and the spread.
struct NormalStep {
    int instruction;
    int function;
    int operands;
    bool from_list;
    complex (*value)(Parser& parser, int function, const long double* leading, long double mean,
                     long double sd);
};

complex nordist(Parser& p, int f, const long double* v, long double m, long double s) {
    return nordist_value(p, f, v[0], m, s);
}
complex norprob(Parser& p, int f, const long double* v, long double m, long double s) {
    return norprob_value(p, f, v[0], v[1], m, s);
}
complex normx(Parser& p, int f, const long double* v, long double m, long double s) {
    return normx_value(p, f, v[0], m, s);
}
complex zscore(Parser& p, int f, const long double* v, long double m, long double s) {
    return zscore_value(p, f, v[0], m, s);
}

constexpr NormalStep k_normal_steps[] = {
    {90, NORDIST, 3, false, nordist}, {91, NORPROB, 4, false, norprob}, {92, NORPROB, 2, true, norprob},
    {93, NORMX, 3, false, normx},     {94, NORMX, 1, true, normx},      {96, ZSCORE, 3, false, zscore},
    {97, ZSCORE, 1, true, zscore},
};

bool run_normal_step(const NormalStep& step, Parser& parser, MachineState& machine, const DataList& data) {
    long double values[4] = {};
    if (!real_operands(parser, machine, step.function, step.operands, values)) return true;
    long double mean = 0, sd = 0;
    if (step.from_list) {
        if (!data.empty()) list_mean_and_spread(data, mean, sd);
    } else {
        mean = values[step.operands - 2];
        sd = values[step.operands - 1];
    }
    machine.replace(step.operands, step.value(parser, step.function, values, mean, sd));
    return true;
}

} // namespace

bool run_distribution_step(int code, Parser& parser, MachineState& machine, DataList& data) {
    if (code >= k_first_distribution_step && code <= k_last_distribution_step) {
        const int function = BETACDF + (code - k_first_distribution_step);
        const int count = 1 + distributions::shape_count(distributions::family_of(function));
        long double v[3] = {};
        if (!real_operands(parser, machine, function, count, v)) return true;
        machine.replace(count, distribution_value(parser, function, v[0], v[1], v[2]));
        return true;
    }
    if (code == 105 || code == 106) {
        const int function = code == 105 ? ERF : ERFC;
        long double x = 0;
        if (!real_operands(parser, machine, function, 1, &x)) return true;
        machine.replace(1, error_function_value(function, x));
        return true;
    }
    for (const NormalStep& step : k_normal_steps)
        if (step.instruction == code) return run_normal_step(step, parser, machine, data);
    return false;
}

} // namespace quorvex::functions
