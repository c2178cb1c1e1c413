// Mapped steps of the scalar functions: the kernel of the entry on one or two operands.
#include "builtin_kernels.h"
#include "mapped_steps.h"

namespace quorvex::functions {

bool run_scalar_step(int code, engine::Parser& parser, engine::MachineState& machine) {
    const ScalarStep* step = scalar_step_for_instruction(code);
    if (!step) return false;
    ScalarKernels kernels(parser);
    if (step->operands == 1)
        machine.replace(1, step->kernel(kernels, machine.operand(), {}, step->function));
    else
        machine.replace(2, step->kernel(kernels, machine.operand(1), machine.operand(), step->function));
    return true;
}

} // namespace quorvex::functions
