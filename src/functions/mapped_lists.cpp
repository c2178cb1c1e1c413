// Mapped steps of the data-list functions, and of COMB and PERM. A list form works on the open
// data list of the run, which holds every item recorded at its nesting level so far, and pushes
// its value; a form with a number after the list replaces that number.
#include "builtin_index.h"
#include "builtin_kernels.h"
#include "engine/parser.h"
#include "mapped_steps.h"

namespace quorvex::functions {

using engine::MachineState;
using engine::Parser;

namespace {

constexpr int k_comb_step = 103;
constexpr int k_perm_step = 104;
constexpr int k_percentile_step = 100;
constexpr int k_parallel_resistance_step = 192;

// A list is never empty in a run that got this far; should one be, its value is 0, not a fault.
long double list_value(const ListStep& step, DataList& data, long double number, Parser& parser) {
    return data.empty() ? 0.0L : step.kernel(data, number, parser);
}

} // namespace

bool run_list_step(int code, Parser& parser, MachineState& machine, DataList& data) {
    if (code == k_comb_step || code == k_perm_step) {
        const int function = code == k_comb_step ? COMB : PERM;
        long double unused[2];
        if (!real_operands(parser, machine, function, 2, unused)) return true;
        machine.replace(2, combinations_value(parser, function, machine.operand(1), machine.operand()));
        return true;
    }
    // A mapped PRESIST is the plain sum of its list, like SRESIST, not the reciprocal sum that a
    // direct call gives.
    if (code == k_parallel_resistance_step) {
        machine.push({static_cast<double>(statistics::sumx(data)), 0});
        return true;
    }
    const ListStep* step = list_step_for_instruction(code);
    if (!step) return false;
    if (!step->takes_number) {
        machine.push({static_cast<double>(list_value(*step, data, 0, parser)), 0});
        return true;
    }
    long double number = 0;
    if (!real_operands(parser, machine, step->function, 1, &number)) return true;
    const complex value(static_cast<double>(list_value(*step, data, number, parser)), 0);
    machine.replace(1, value);
    // PRCTLE also leaves its value in the slot above the top, where no later step reads it.
    if (code == k_percentile_step) machine.stack.push_back(value);
    return true;
}

} // namespace quorvex::functions
