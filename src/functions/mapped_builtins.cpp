// A mapped run hands every step of a built-in function to the table, which passes it on to the
// family that recorded it.
#include "builtin_functions.h"
#include "builtin_index.h"
#include "builtin_kernels.h"
#include "engine/parser.h"
#include "mapped_steps.h"

namespace quorvex::functions {

using engine::MachineState;
using engine::Parser;

bool BuiltinFunctions::run_instruction(int code, Parser& parser, MachineState& machine,
                                       std::vector<long double>& data) const {
    return run_scalar_step(code, parser, machine) || run_list_step(code, parser, machine, data) ||
           run_distribution_step(code, parser, machine, data) || run_deviate_step(code, parser, machine) ||
           run_capability_step(code, parser, machine, data) || run_logic_step(code, parser, machine);
}

bool real_operands(Parser& parser, MachineState& machine, int function, int count, long double* values) {
    for (int i = 0; i < count; ++i) {
        const complex z = machine.operand(count - 1 - i);
        if (z.imag() != 0) {
            parser.mathlib_exception(13, function);
            machine.abandoned = true;
            return false;
        }
        values[i] = z.real();
    }
    return true;
}

namespace {

// Refuses anything but an exact 0 or 1 (code 22) and ends the run with 0.
bool logical_operands(Parser& parser, MachineState& machine, int function, int count) {
    for (int i = 0; i < count; ++i) {
        if (!is_logical(machine.operand(i))) {
            parser.mathlib_exception(22, function);
            machine.abandoned = true;
            return false;
        }
    }
    return true;
}

complex truth(bool value) {
    return {value ? 1.0 : 0.0, 0};
}

} // namespace

// AND and OR combine two operands at a time, as a call of more parameters recorded them. IF has
// both branches on the stack: a run computes the branch it does not take as well.
bool run_logic_step(int code, Parser& parser, MachineState& machine) {
    switch (code) {
    case 187:
    case 188: {
        const int function = code == 187 ? AND : OR;
        if (!logical_operands(parser, machine, function, 2)) return true;
        const bool left = machine.operand(1).real() == 1, right = machine.operand().real() == 1;
        machine.replace(2, truth(code == 187 ? left && right : left || right));
        return true;
    }
    case 189:
        if (!logical_operands(parser, machine, NOT, 1)) return true;
        machine.replace(1, truth(machine.operand().real() == 0));
        return true;
    case 190: {
        const complex condition = machine.operand(2);
        if (!is_logical(condition)) {
            parser.mathlib_exception(22, IF);
            machine.abandoned = true;
            return true;
        }
        machine.replace(3, condition.real() == 1 ? machine.operand(1) : machine.operand());
        return true;
    }
    default:
        return false;
    }
}

} // namespace quorvex::functions
