#pragma once
#include "complex.h"

#include <vector>

namespace quorvex::engine {

// The operand stack of one run of a mapped expression, as its steps see it. A step never writes
// its result onto the stack: it reads its operands in place, leaves its value in `result` and
// says how many slots to drop; the run then drops them and puts `result` into the slot left on
// top. A step that pushes appends its value and makes it the result.
struct MachineState {
    std::vector<complex> stack;
    int top = -1;
    complex result{0, 0};
    int pending_pops = 0;
    bool compare_flag = true;
    complex saved_left{0, 0};
    // Set by a step whose failure ends the run at once with 0 as its value.
    bool abandoned = false;

    // The operand `below` places under the top (0 is the top); 0 where there is none.
    complex operand(int below = 0) const {
        const int index = top - below;
        return index >= 0 && index < static_cast<int>(stack.size()) ? stack[static_cast<size_t>(index)] : complex(0, 0);
    }
    // A step of n operands: the value replaces them.
    void replace(int n, complex value) {
        result = value;
        pending_pops = n - 1;
    }
    void push(complex value) {
        ++top;
        stack.push_back(value);
        result = value;
    }
};

} // namespace quorvex::engine
