// Entries of the data-list functions: MEAN[{1, 2, 3}] and the like, and the list forms that take
// parameters after the list.
#include "builtin_functions.h"
#include "builtin_index.h"
#include "engine/parser.h"
#include "statistics.h"
#include "ws_normality.h"

#include <cmath>

namespace quorvex::functions {

namespace {

using engine::complex;
using engine::Parser;
using Out = std::ostringstream;
using ListKernel = long double (*)(DataList&, Parser&);

// The list begins, is read, and the kernel's step is recorded after the kernel ran.
complex list_only(Parser& p, Out& out, int f, int instruction, ListKernel kernel, bool closing_bracket = true) {
    p.check_no_right_bracket(2, f);
    p.record_instruction(194);
    DataList list;
    p.get_data(out, list, f);
    if (closing_bracket) p.check_right_bracket(0, f);
    if (list.empty()) return {0, 0}; // an error was reported without unwinding
    const long double value = kernel(list, p);
    p.record_instruction(instruction);
    p.record_instruction(195);
    return {static_cast<double>(value), 0};
}

// A list, a comma, then one real parameter.
using ListAndOneKernel = long double (*)(DataList&, long double, Parser&);

complex list_and_one(Parser& p, Out& out, int f, int instruction, ListAndOneKernel kernel) {
    p.check_no_right_bracket(2, f);
    p.record_instruction(194);
    DataList list;
    p.get_data(out, list, f);
    p.check_no_right_bracket(3, f);
    p.check_comma(1, f);
    p.next_token();
    complex parameter;
    p.get_one_real_par(out, parameter, f);
    if (list.empty()) return {0, 0};
    const long double value = kernel(list, parameter.real(), p);
    p.record_instruction(instruction);
    p.record_instruction(195);
    return {static_cast<double>(value), 0};
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
    for (long double r : list) sum = math.complex_add(sum, math.complex_div(complex(1, 0), complex(static_cast<double>(r), 0)));
    p.record_instruction(192);
    p.record_instruction(195);
    return math.complex_div(complex(1, 0), sum);
}

complex combinations(Parser& p, Out& out, int f) {
    complex n, r;
    p.get_two_real_pos_pars(out, n, r, f);
    p.check_no_other_parameter(8, f);
    if (n.real() < r.real()) {
        p.mathlib_exception(27, f);
        return {0, 0};
    }
    p.record_instruction(f == COMB ? 103 : 104);
    const long double value =
        f == COMB ? statistics::binoco(n.real(), r.real()) : statistics::permutate(n.real(), r.real());
    return {static_cast<double>(value), 0};
}

template <long double (*Kernel)(const DataList&)>
long double plain(DataList& list, Parser&) {
    return Kernel(list);
}
template <long double (*Kernel)(DataList&)>
long double sorting(DataList& list, Parser&) {
    return Kernel(list);
}

} // namespace

Entry list_entry(int function) {
    using namespace statistics;
    switch (function) {
    case MEAN: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 69, plain<mean>); };
    case GMEAN: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 70, plain<gmean>); };
    case HMEAN: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 71, plain<hmean>); };
    case QMEAN: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 72, plain<qmean>); };
    case RMS: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 107, plain<qmean>); };
    case MEDIAN: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 73, sorting<median>); };
    case MODE: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 74, [](DataList& x, Parser& q) { return mode(x, q); }); };
    case MIN: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 75, plain<minimum>); };
    case MAX: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 76, plain<maximum>); };
    case SUMX: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 77, plain<sumx>); };
    case SUMXSQ: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 78, plain<sumxsq>); };
    case SUMDEV: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 79, plain<sumdev>); };
    case AVGDEV: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 80, plain<avgdev>); };
    case SUMDEVSQ: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 81, plain<sumdevsq>); };
    case RANGE: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 82, plain<range>); };
    case COUNT: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 83, [](DataList& x, Parser&) { return static_cast<long double>(x.size()); }); };
    case SVAR: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 85, plain<svariance>); };
    case PVAR: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 86, plain<pvariance>); };
    case SSTDEV: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 87, [](DataList& x, Parser&) { return std::sqrt(svariance(x)); }); };
    case PSTDEV: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 88, [](DataList& x, Parser&) { return std::sqrt(pvariance(x)); }); };
    case STSTDEV: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 89, plain<ststdev>); };
    case SKEW: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 98, plain<skew>); };
    case KURT: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 99, plain<kurt>); };
    // The quartiles leave the closing bracket to the caller.
    case LQRTLE: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 101, [](DataList& x, Parser&) { return percentile(x, 25); }, false); };
    case UQRTLE: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 102, [](DataList& x, Parser&) { return percentile(x, 75); }, false); };
    case SRESIST: return [](Parser& p, Out& o, int f) { return list_only(p, o, f, 191, plain<sumx>); };
    case PRESIST: return parallel_resistance;
    // WSNORM takes its alpha truncated to an integer and reads its tables from the system folder.
    case WSNORM: return [](Parser& p, Out& o, int f) { return list_and_one(p, o, f, 95, [](DataList& x, long double alpha, Parser& q) { return wsnormtest(x, static_cast<int>(alpha), q.system_dir(), q); }); };
    case RANK: return [](Parser& p, Out& o, int f) { return list_and_one(p, o, f, 84, [](DataList& x, long double v, Parser&) { return rank(x, v); }); };
    case PRCTLE: return [](Parser& p, Out& o, int f) { return list_and_one(p, o, f, 100, [](DataList& x, long double v, Parser&) { return percentile(x, v); }); };
    case COMB:
    case PERM: return combinations;
    default: return nullptr;
    }
}

} // namespace quorvex::functions
