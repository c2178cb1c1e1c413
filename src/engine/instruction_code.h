#pragma once

namespace quorvex::engine {

// The steps the evaluator records while it maps an expression for repeated runs.
enum InstructionCode : int {
    NEW_VARIABLE = 0,
    ASSIGN = 1,
    LOW_LIMIT = 2,
    HIGH_LIMIT = 3,
    NUM_POINTS = 4,
    LOAD_VARIABLE = 6,
    NEW_FUNCTION = 7,
    FUNCTION_VALUE = 8,
    FUNCTION_NAME = 9,
    LOAD_CONSTANT = 10,
    LOAD_LITERAL = 12,
    END_RELATION = 13,
    BEGIN_RELATION = 14,
    LESS = 15,
    LESS_EQUAL = 16,
    GREATER = 17,
    GREATER_EQUAL = 18,
    EQUAL = 19,
    NOT_EQUAL = 20,
    ADD = 21,
    SUBTRACT = 22,
    NEGATE = 23,
    MULTIPLY = 24,
    DIVIDE = 25,
    MODULUS = 26,
    FACTORIAL = 27,
    POWER = 33,
    END_OF_EXPRESSION = 201,
};

} // namespace quorvex::engine
