#include "equation.h"

namespace quorvex::engine {

namespace {

// The codes whose text, when given, is kept as a name operand.
bool keeps_name(int code) { return (code >= 0 && code <= 4) || (code >= 6 && code <= 11); }

} // namespace

void Equation::set_instruction(int code, complex value, const char* text) {
    if (code != 11) instructions.push_back(code);
    if (code == 12) constants.push_back(value);
    if (text && keeps_name(code)) {
        names.emplace_back(text);
        variable_slots.clear();
    }
}

void Equation::clear_instructions() {
    if (instructions.empty()) return;
    instructions.clear();
    constants.clear();
    names.clear();
    variable_slots.clear();
}

void Equation::clear_data() {
    for (auto& list : data_lists) list.clear();
    data_level = -1;
}

} // namespace quorvex::engine
