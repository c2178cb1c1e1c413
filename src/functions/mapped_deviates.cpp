// Mapped steps of the random deviates: a new draw on every run. RAND, NORDEV, EXPDEV and RAYDEV
// have a step with their parameters and one for the empty form, which pushes its draw.
#include "builtin_index.h"
#include "builtin_kernels.h"
#include "mapped_steps.h"

namespace quorvex::functions {

bool run_deviate_step(int code, engine::Parser& parser, engine::MachineState& machine) {
    int function = -1;
    bool standard = false;
    if (code >= 108 && code <= 115) {
        function = RAND + (code - 108) / 2;
        standard = (code - 108) % 2 == 1;
    } else if (code >= 117 && code <= 126) {
        function = BERDEV + (code - 117);
    } else {
        return false;
    }
    if (standard) {
        machine.push(standard_deviate(parser, function));
        return true;
    }
    const int count = deviate_parameter_count(function);
    long double v[2] = {};
    if (!real_operands(parser, machine, function, count, v)) return true;
    machine.replace(count, deviate_value(parser, function, v[0], v[1]));
    return true;
}

} // namespace quorvex::functions
