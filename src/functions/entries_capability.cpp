// Process capability. Numbers:   CP[lsl, usl, sd]   CPL[lsl, mean, sd]   CPU[usl, mean, sd]
//                                CPK[lsl, usl, mean, sd]   CPM[lsl, usl, target, mean, sd]
// or a list of measurements:     CP[{x}, lsl, usl]  CPL[{x}, lsl]  CPU[{x}, usl]  CPK[{x}, lsl, usl]
//                                CPM[{x}, lsl, usl, target]
// The PP family takes the same shapes. From a list, the CP family measures spread short-term
// (STSTDEV, the mean range of groups of three), the PP family over all points (the sample
// standard deviation); given as numbers, both compute the same.
#include "builtin_functions.h"
#include "builtin_index.h"
#include "builtin_kernels.h"
#include "engine/parser.h"
#include "statistics.h"

#include <algorithm>
#include <cmath>

namespace quorvex::functions {

namespace {

using engine::Parser;
using Out = std::ostringstream;

// Row of the CP family that a PP row computes like.
int cp_row(int f) { return f >= PP ? f - (PP - CP) : f; }

// Limits (what is not used stays 0), the mean and the spread of one call.
struct Capability {
    long double lsl = 0, usl = 0, target = 0, mean = 0, sd = 0;
};

long double index_of(int row, const Capability& c) {
    switch (row) {
    case CP: return (c.usl - c.lsl) / (6 * c.sd);
    case CPL: return (c.mean - c.lsl) / (3 * c.sd);
    case CPU: return (c.usl - c.mean) / (3 * c.sd);
    case CPK: return std::min((c.mean - c.lsl) / (3 * c.sd), (c.usl - c.mean) / (3 * c.sd));
    default: return (c.usl - c.lsl) / (6 * std::sqrt(c.sd * c.sd + (c.mean - c.target) * (c.mean - c.target)));
    }
}

// How many limits a row takes before the mean and the spread, and where each goes.
int limit_count(int row) { return row == CP || row == CPK ? 2 : (row == CPM ? 3 : 1); }

void assign_limits(int row, const long double* values, Capability& c) {
    switch (row) {
    case CPL: c.lsl = values[0]; break;
    case CPU: c.usl = values[0]; break;
    case CPM: c.lsl = values[0], c.usl = values[1], c.target = values[2]; break;
    default: c.lsl = values[0], c.usl = values[1]; break;
    }
}

// The index of a row from its limits, mean and spread; the spread must be positive (code 55).
complex index_value(Parser& p, int f, const Capability& c) {
    if (c.sd <= 0) {
        p.mathlib_exception(55, f);
        return {0, 0};
    }
    return {static_cast<double>(index_of(cp_row(f), c)), 0};
}

complex capability(Parser& p, Out& out, int f) {
    const int limits = capability_limit_count(f);
    long double values[5] = {};
    const bool list_shape = p.token() == "{";
    DataList list;
    if (list_shape) {
        p.record_instruction(194);
        p.get_data(out, list, f);
        for (int i = 0; i < limits; ++i) {
            p.check_no_right_bracket(3, f);
            p.check_comma(1, f);
            p.next_token();
            p.check_no_comma(9, f);
            p.check_no_right_bracket(3, f);
            complex value;
            p.read_expression(value, out);
            if (p.check_no_imag_compnts(13, f, value)) return {0, 0};
            values[i] = value.real();
        }
        if (list.empty()) return {0, 0};
    } else {
        const int count = capability_number_count(f);
        complex v[5];
        if (count == 3) p.get_three_real_pars(out, v[0], v[1], v[2], f);
        else if (count == 4) p.get_four_real_pars(out, v[0], v[1], v[2], v[3], f);
        else p.get_five_real_pars(out, v[0], v[1], v[2], v[3], v[4], f);
        for (int i = 0; i < count; ++i) values[i] = v[i].real();
    }
    p.check_no_other_parameter(8, f);
    if (p.IsAnError()) return {0, 0}; // reported without unwinding
    p.record_instruction(169 + 2 * (f - CP) + (list_shape ? 1 : 0));
    const complex value = list_shape ? capability_from_list(p, f, list, values) : capability_from_numbers(p, f, values);
    if (list_shape) p.record_instruction(195);
    return value;
}

} // namespace

// The CP row itself has no mean: its numbers are two limits and the spread.
int capability_number_count(int function) {
    const int row = cp_row(function);
    return row == CP ? 3 : limit_count(row) + 2;
}

int capability_limit_count(int function) { return limit_count(cp_row(function)); }

complex capability_from_numbers(Parser& p, int f, const long double* numbers) {
    const int row = cp_row(f);
    const int count = capability_number_count(f);
    Capability c;
    c.sd = numbers[count - 1];
    if (row != CP) c.mean = numbers[count - 2];
    assign_limits(row, numbers, c);
    return index_value(p, f, c);
}

complex capability_from_list(Parser& p, int f, const DataList& list, const long double* limits) {
    Capability c;
    c.mean = statistics::mean(list);
    c.sd = f >= PP ? std::sqrt(statistics::svariance(list)) : statistics::ststdev(list);
    assign_limits(cp_row(f), limits, c);
    return index_value(p, f, c);
}

Entry capability_entry(int function) { return function >= CP && function <= PPK ? capability : nullptr; }

} // namespace quorvex::functions
