// Mapped steps of process capability: each of CP, CPL, CPU, CPK, CPM, PP, PPL, PPU and PPK has a
// step for its numeric shape and, next to it, one for its list shape, which measures the open
// data list.
#include "builtin_index.h"
#include "builtin_kernels.h"
#include "mapped_steps.h"

namespace quorvex::functions {

bool run_capability_step(int code, engine::Parser& parser, engine::MachineState& machine, DataList& data) {
    constexpr int first = 169, last = 186;
    if (code < first || code > last) return false;
    const int function = CP + (code - first) / 2;
    const bool list_shape = (code - first) % 2 == 1;
    const int count = list_shape ? capability_limit_count(function) : capability_number_count(function);
    long double values[5] = {};
    if (!real_operands(parser, machine, function, count, values)) return true;
    if (!list_shape) {
        machine.replace(count, capability_from_numbers(parser, function, values));
        return true;
    }
    const complex value = data.empty() ? complex(0, 0) : capability_from_list(parser, function, data, values);
    machine.replace(count, value);
    return true;
}

} // namespace quorvex::functions
