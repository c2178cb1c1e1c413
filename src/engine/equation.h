#pragma once
#include "complex.h"

#include <array>
#include <string>
#include <vector>

namespace quorvex::engine {

// Where a resumed run starts in the three lists, and the instruction it stops at.
struct InstReset {
    int instruction = 0;
    int constant = 0;
    int name = 0;
    int end = 0;
};

// One mapped expression: the postfix program that the evaluator recorded while it evaluated the
// expression once. An instruction is a bare code; literals and names are its operands, taken in
// program order from their own lists, so the program stays a plain array of integers.
class Equation {
public:
    static constexpr int k_data_levels = 10; // only 5 can be used; the rest is a margin

    // Appends a step. Code 11 appends only its name (a file to read); literals go with 12; names
    // go with the codes that read one.
    void set_instruction(int code, complex value = {}, const char* text = nullptr);
    // Empties the program, its literals and its names; an empty program keeps the other lists.
    void clear_instructions();
    void clear_data();
    std::vector<long double>& active_list() { return data_lists[static_cast<size_t>(data_level < 0 ? 0 : data_level)]; }

    int data_level = -1;
    std::array<std::vector<long double>, k_data_levels> data_lists;
    std::vector<int> instructions;
    std::vector<complex> constants;
    std::vector<std::string> names;
    std::vector<InstReset> resets;
    // Per entry of `names`, where the Parser found that variable, valid while its table keeps the
    // layout counted in `variable_layout`; -1 where not looked up or not found.
    std::vector<int> variable_slots;
    unsigned variable_layout = 0;
    // Cursors of a run, walked in step.
    size_t instruction_cursor = 0;
    size_t constant_cursor = 0;
    size_t name_cursor = 0;
    size_t reset_cursor = 0;
};

} // namespace quorvex::engine
