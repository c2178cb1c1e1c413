#pragma once
#include "engine/mapped_machine.h"
#include "statistics.h"

namespace quorvex::engine {
class Parser;
}

// The steps of a mapped run that belong to the built-in functions, one family per function.
// Each runs the codes its family records and answers false for any other code. Operands are read
// in place and the value goes to the machine's result (see MachineState); a list form works on
// `data`, the list of the nesting level that is open.
namespace quorvex::functions {

bool run_scalar_step(int code, engine::Parser& parser, engine::MachineState& machine);
bool run_list_step(int code, engine::Parser& parser, engine::MachineState& machine, DataList& data);
bool run_distribution_step(int code, engine::Parser& parser, engine::MachineState& machine, DataList& data);
bool run_deviate_step(int code, engine::Parser& parser, engine::MachineState& machine);
bool run_capability_step(int code, engine::Parser& parser, engine::MachineState& machine, DataList& data);
bool run_logic_step(int code, engine::Parser& parser, engine::MachineState& machine);

// The real parts of the top `count` operands into `values`, first parameter first. A complex
// operand is refused for `function` (code 13) and ends the run with 0: the answer is then false.
bool real_operands(engine::Parser& parser, engine::MachineState& machine, int function, int count,
                   long double* values);

} // namespace quorvex::functions
