// Entries of the data-list functions: MEAN[{1, 2, 3}] and the like, and the list forms that take
// a number after the list.
#include "builtin_functions.h"
#include "builtin_index.h"
#include "builtin_kernels.h"
#include "engine/error_tables.h"
#include "engine/parser.h"
#include "ws_normality.h"

#include <cmath>

namespace quorvex::functions {

namespace {

using engine::Parser;
using Out = std::ostringstream;
using L = DataList;

template <long double (*Kernel)(const DataList&)>
long double plain(DataList& list, long double, Parser&) {
    return Kernel(list);
}
template <long double (*Kernel)(DataList&)>
long double sorting(DataList& list, long double, Parser&) {
    return Kernel(list);
}

using namespace statistics;

constexpr ListStep k_steps[] = {
    {MEAN, 69, false, plain<mean>},
    {GMEAN, 70, false, plain<gmean>},
    {HMEAN, 71, false, plain<hmean>},
    {QMEAN, 72, false, plain<qmean>},
    {MEDIAN, 73, false, sorting<median>},
    {MODE, 74, false, [](L& x, long double, Parser& p) { return mode(x, p); }},
    {MIN, 75, false, plain<minimum>},
    {MAX, 76, false, plain<maximum>},
    {SUMX, 77, false, plain<sumx>},
    {SUMXSQ, 78, false, plain<sumxsq>},
    {SUMDEV, 79, false, plain<sumdev>},
    {AVGDEV, 80, false, plain<avgdev>},
    {SUMDEVSQ, 81, false, plain<sumdevsq>},
    {RANGE, 82, false, plain<range>},
    {COUNT, 83, false, [](L& x, long double, Parser&) { return static_cast<long double>(x.size()); }},
    {RANK, 84, true, [](L& x, long double v, Parser&) { return rank(x, v); }},
    {SVAR, 85, false, plain<svariance>},
    {PVAR, 86, false, plain<pvariance>},
    {SSTDEV, 87, false, [](L& x, long double, Parser&) { return std::sqrt(svariance(x)); }},
    {PSTDEV, 88, false, [](L& x, long double, Parser&) { return std::sqrt(pvariance(x)); }},
    {STSTDEV, 89, false, plain<ststdev>},
    // WSNORM takes its alpha truncated to an integer and reads its tables from the system folder.
    {WSNORM, 95, true,
     [](L& x, long double alpha, Parser& p) {
         // A value no int can hold is no table's alpha either: refused as any other.
         const int whole = std::isfinite(alpha) && std::fabs(alpha) < 1e6 ? static_cast<int>(alpha) : 0;
         return wsnormtest(x, whole, p.system_dir(), p);
     }},
    {SKEW, 98, false, plain<skew>},
    {KURT, 99, false, plain<kurt>},
    {PRCTLE, 100, true,
     [](L& x, long double p, Parser& parser) {
         if (p < 0 || p > 100) {
             parser.mathlib_exception(engine::k_mathlib_percentile_range, PRCTLE);
             return 0.0L;
         }
         return percentile(x, p);
     }},
    {LQRTLE, 101, false, [](L& x, long double, Parser&) { return percentile(x, 25); }},
    {UQRTLE, 102, false, [](L& x, long double, Parser&) { return percentile(x, 75); }},
    {RMS, 107, false, plain<qmean>},
    {SRESIST, 191, false, plain<sumx>},
};

// The list begins, is read, and the kernel's step is recorded after the kernel ran.
complex list_only(Parser& p, Out& out, const ListStep& step) {
    const int f = step.function;
    p.check_no_right_bracket(2, f);
    p.record_instruction(194);
    DataList list;
    p.get_data(out, list, f);
    // The quartiles leave the closing bracket to the caller.
    if (f != LQRTLE && f != UQRTLE) p.check_right_bracket(0, f);
    if (list.empty()) return {0, 0}; // an error was reported without unwinding
    const long double value = step.kernel(list, 0, p);
    p.record_instruction(step.instruction);
    p.record_instruction(195);
    return {static_cast<double>(value), 0};
}

// A list, a comma, then one real number.
complex list_and_one(Parser& p, Out& out, const ListStep& step) {
    const int f = step.function;
    p.check_no_right_bracket(2, f);
    p.record_instruction(194);
    DataList list;
    p.get_data(out, list, f);
    p.check_no_right_bracket(3, f);
    p.check_comma(1, f);
    p.next_token();
    complex number;
    p.get_one_real_par(out, number, f);
    if (list.empty()) return {0, 0};
    const long double value = step.kernel(list, number.real(), p);
    p.record_instruction(step.instruction);
    p.record_instruction(195);
    return {static_cast<double>(value), 0};
}

complex list_call(Parser& p, Out& out, int f) {
    const ListStep& step = *list_step_for_function(f);
    return step.takes_number ? list_and_one(p, out, step) : list_only(p, out, step);
}

complex parallel_resistance(Parser& p, Out& out, int f) {
    p.check_no_right_bracket(2, f);
    p.record_instruction(194);
    DataList list;
    p.get_data(out, list, f);
    p.check_right_bracket(0, f);
    // 1 / (1/R1 + 1/R2 + ...), each step through the decimal division.
    engine::Mathematics& math = p.mathematics();
    complex sum(0, 0);
    for (long double r : list)
        sum = math.complex_add(sum, math.complex_div(complex(1, 0), complex(static_cast<double>(r), 0)));
    p.record_instruction(192);
    p.record_instruction(195);
    return math.complex_div(complex(1, 0), sum);
}

complex combinations(Parser& p, Out& out, int f) {
    complex n, r;
    p.get_two_real_pos_pars(out, n, r, f);
    p.check_no_other_parameter(8, f);
    if (p.IsAnError()) return {0, 0}; // reported without unwinding
    p.record_instruction(f == COMB ? 103 : 104);
    return combinations_value(p, f, n, r);
}

} // namespace

const ListStep* list_step_for_function(int function) {
    for (const ListStep& step : k_steps)
        if (step.function == function) return &step;
    return nullptr;
}

const ListStep* list_step_for_instruction(int instruction) {
    for (const ListStep& step : k_steps)
        if (step.instruction == instruction) return &step;
    return nullptr;
}

complex combinations_value(Parser& p, int f, const complex& n, const complex& r) {
    if (p.check_no_imag_compnts(13, f, n, r) || p.check_pos_integers(f, n, r)) return {0, 0};
    if (n.real() < r.real()) {
        p.mathlib_exception(27, f);
        return {0, 0};
    }
    const long double value = f == COMB ? binoco(n.real(), r.real()) : permutate(n.real(), r.real());
    return {static_cast<double>(value), 0};
}

Entry list_entry(int function) {
    if (function == PRESIST) return parallel_resistance;
    if (function == COMB || function == PERM) return combinations;
    return list_step_for_function(function) ? list_call : nullptr;
}

} // namespace quorvex::functions
