// AND, OR, NOT and IF. Every parameter is evaluated: there is no short cut, so an error in a
// branch that is not taken still ends the evaluation.
#include "builtin_functions.h"
#include "builtin_index.h"
#include "builtin_kernels.h"
#include "engine/parser.h"

namespace quorvex::functions {

namespace {

using engine::Parser;
using Out = std::ostringstream;

complex read_logical(Parser& p, Out& out, int f) {
    complex value;
    p.read_expression(value, out);
    if (!is_logical(value)) p.mathlib_exception(22, f);
    return value;
}

// Between parameters: something must follow, separated by exactly one comma.
void next_parameter(Parser& p, int f) {
    p.check_more(0, f);
    p.check_comma(1, f);
    p.next_token();
    p.check_no_comma(9, f);
    p.check_no_right_bracket(9, f);
}

complex and_or(Parser& p, Out& out, int f) {
    p.check_no_right_bracket(2, f);
    bool result = read_logical(p, out, f).real() == 1;
    while (p.token() == ",") {
        next_parameter(p, f);
        const bool operand = read_logical(p, out, f).real() == 1;
        result = f == AND ? (result && operand) : (result || operand);
        p.record_instruction(f == AND ? 187 : 188);
    }
    return {result ? 1.0 : 0.0, 0};
}

complex logical_not(Parser& p, Out& out, int f) {
    p.check_no_right_bracket(3, f);
    const complex value = read_logical(p, out, f);
    p.check_no_other_parameter(8, f);
    p.record_instruction(189);
    return {value.real() == 1 ? 0.0 : 1.0, 0};
}

complex logical_if(Parser& p, Out& out, int f) {
    p.check_no_right_bracket(23, f);
    const complex condition = read_logical(p, out, f);
    complex when_true, when_false;
    next_parameter(p, f);
    p.read_expression(when_true, out);
    next_parameter(p, f);
    p.read_expression(when_false, out);
    p.check_no_other_parameter(8, f);
    p.record_instruction(190);
    return condition.real() == 1 ? when_true : when_false;
}

} // namespace

bool is_logical(const complex& z) { return z.imag() == 0 && (z.real() == 0 || z.real() == 1); }

Entry logic_entry(int function) {
    switch (function) {
    case AND:
    case OR: return and_or;
    case NOT: return logical_not;
    case IF: return logical_if;
    default: return nullptr;
    }
}

} // namespace quorvex::functions
