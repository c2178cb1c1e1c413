// The equation mapper: an expression evaluated once while its steps are recorded, then run again
// and again from the recording, without scanning its text.
#include "parser.h"

#include "evaluation_aborted.h"

#include <cmath>

namespace quorvex::engine {

namespace {

constexpr int k_last_code = 201;
constexpr int k_deepest_data_level = 4;

} // namespace

int Parser::new_equation() {
    m_equations.push_back(std::make_unique<Equation>());
    m_current_equation = m_equations.back().get();
    return equation_count();
}

int Parser::map_expression(const char* text) {
    const int number = new_equation();
    ClearLastError();
    m_mapping = true;
    complex value;
    eval_exp(text, value, true, false, false);
    if (IsAnError()) {
        m_equations.pop_back();
        m_current_equation = nullptr;
        return 0;
    }
    return number;
}

void Parser::delete_equation(int equation) {
    if (equation < 1) return;
    if (equation > equation_count()) {
        // Reported, not unwound: no evaluation is running to unwind to.
        SetSolvingMap(true);
        parser_exception(20);
        return;
    }
    const auto doomed = m_equations.begin() + (equation - 1);
    if (doomed->get() == m_current_equation) m_current_equation = nullptr;
    m_equations.erase(doomed);
}

const char* Parser::solve_symbolic(int, bool, bool) { return nullptr; }

const std::string& Parser::next_name(Equation& equation) {
    static const std::string none;
    if (equation.name_cursor >= equation.names.size()) return none;
    return equation.names[equation.name_cursor++];
}

const Variable* Parser::next_variable(Equation& equation) {
    const size_t at = equation.name_cursor;
    const std::string& name = next_name(equation);
    if (at >= equation.names.size()) return nullptr;
    if (equation.variable_layout != m_variable_layout || equation.variable_slots.size() != equation.names.size()) {
        equation.variable_slots.assign(equation.names.size(), -1);
        equation.variable_layout = m_variable_layout;
    }
    int& slot = equation.variable_slots[at];
    // A name not found is looked up again on each run: the variable may be created later.
    if (slot < 0) return (slot = find_variable(name.c_str())) < 0 ? nullptr : m_variables[static_cast<size_t>(slot)].get();
    // What a lookup by name does besides: the variable becomes the current one.
    m_current_variable = slot;
    return m_variables[static_cast<size_t>(slot)].get();
}

complex Parser::solve_equation(int equation, bool reset, bool quiet, bool) {
    // The operand stack keeps its storage from run to run: a run per point should not allocate.
    MachineState machine;
    machine.stack.swap(m_machine_stack);
    machine.stack.clear();
    struct GiveBack {
        std::vector<complex>& kept;
        std::vector<complex>& used;
        ~GiveBack() { kept.swap(used); }
    } give_back{m_machine_stack, machine.stack};
    m_root_taken = false;
    m_quiet = quiet;
    ClearLastError();
    if (equation != 0) {
        if (equation > equation_count() || equation < 0) {
            mapper_exception(1, quiet);
            return {0, 0};
        }
        m_current_equation = m_equations[static_cast<size_t>(equation - 1)].get();
    }
    if (!m_current_equation) {
        mapper_exception(1, quiet);
        return {0, 0};
    }
    Equation& program = *m_current_equation;
    program.clear_data();

    size_t stop = program.instructions.size();
    if (reset && program.reset_cursor < program.resets.size()) {
        const InstReset& from = program.resets[program.reset_cursor];
        program.instruction_cursor = static_cast<size_t>(from.instruction);
        program.constant_cursor = static_cast<size_t>(from.constant);
        program.name_cursor = static_cast<size_t>(from.name);
        stop = static_cast<size_t>(from.end);
    } else {
        program.instruction_cursor = program.constant_cursor = program.name_cursor = 0;
    }

    // Messages of the run are shown only when it is not quiet; the evaluation's own setting
    // comes back afterwards.
    const bool saved_silent = m_silent;
    SetSilentMode(quiet);
    m_max_stack_depth = 0;
    SetSolvingMap(true);
    bool returned_at_once = false;
    while (program.instruction_cursor < stop && program.instruction_cursor < program.instructions.size()) {
        const int code = program.instructions[program.instruction_cursor];
        if (code < 0 || code > k_last_code || !run_step(code, program, machine)) {
            if (code < 0 || code > k_last_code) mapper_exception(5, quiet);
            returned_at_once = true;
            break;
        }
        // The common tail: drop the operands a step used and put its result in their place.
        if (machine.top >= 0 && machine.pending_pops > 0) {
            for (int i = 0; i < machine.pending_pops && !machine.stack.empty(); ++i) machine.stack.pop_back();
            machine.top -= machine.pending_pops;
        }
        if (machine.top >= 0 && machine.top < static_cast<int>(machine.stack.size()) &&
            machine.stack[static_cast<size_t>(machine.top)] != machine.result)
            machine.stack[static_cast<size_t>(machine.top)] = machine.result;
        machine.pending_pops = 0;
        if (machine.top + 1 > m_max_stack_depth) m_max_stack_depth = machine.top + 1;
        ++program.instruction_cursor;
        if (IsAnError()) break;
        // A step whose result left the range of a double overflowed: the run fails, as the
        // evaluator does, rather than carry an infinity that later reads as 0.
        if (machine.top >= 0 && machine.top < static_cast<int>(machine.stack.size())) {
            const complex& top = machine.stack[static_cast<size_t>(machine.top)];
            if (!std::isfinite(top.real()) || !std::isfinite(top.imag())) {
                parser_exception(26);
                break;
            }
        }
    }
    SetSolvingMap(false);
    SetSilentMode(saved_silent);
    if (returned_at_once) return {0, 0};
    return machine.top >= 0 ? machine.operand() : complex(0, 0);
}

bool Parser::run_step(int code, Equation& program, MachineState& machine) {
    const auto relation_of = [](int step) { return static_cast<char>(relational::less + (step - LESS)); };
    switch (code) {
    case NEW_VARIABLE: {
        const std::string& name = next_name(program);
        if (!is_variable(name.c_str())) add_variable(name);
        return true;
    }
    case ASSIGN: set_var_value(machine.operand(), next_name(program).c_str()); return true;
    case LOW_LIMIT: set_var_lowlimit(machine.operand(), next_name(program).c_str()); return true;
    case HIGH_LIMIT: set_var_hilimit(machine.operand(), next_name(program).c_str()); return true;
    case NUM_POINTS:
        set_var_numpoints(static_cast<long>(machine.operand().real()), next_name(program).c_str());
        return true;
    case 5: machine.push(complex(find_variable(next_name(program).c_str()), 0)); return true;
    case LOAD_VARIABLE: {
        // A variable deleted since the mapping reads as 0, with no error.
        const Variable* variable = next_variable(program);
        machine.push(variable ? variable->value() : complex(0, 0));
        return true;
    }
    case NEW_FUNCTION: {
        const std::string& name = next_name(program);
        if (find_function(name.c_str()) < 0) {
            add_function(std::make_unique<Function>(name, ""));
        }
        return true;
    }
    case FUNCTION_VALUE: set_func_value(nullptr, next_name(program).c_str()); return true;
    case FUNCTION_NAME: find_function(next_name(program).c_str()); return true;
    case LOAD_CONSTANT: {
        const int index = constant_index(next_name(program).c_str());
        machine.push(complex(index >= 0 ? static_cast<double>(m_builtins->constant_value(index)) : 0.0, 0));
        return true;
    }
    case LOAD_LITERAL:
        machine.push(program.constant_cursor < program.constants.size() ? program.constants[program.constant_cursor++]
                                                                        : complex(0, 0));
        return true;
    case END_RELATION: machine.compare_flag = true; return true;
    case BEGIN_RELATION: machine.saved_left = machine.operand(); return true;
    case LESS:
    case LESS_EQUAL:
    case GREATER:
    case GREATER_EQUAL:
    case EQUAL:
    case NOT_EQUAL:
        // The left side is the one saved at the start of the chain, for every link of it.
        machine.compare_flag = compare(relation_of(code), machine.compare_flag, machine.saved_left, machine.operand());
        machine.replace(2, complex(machine.compare_flag ? 1 : 0, 0));
        return true;
    case ADD: machine.replace(2, checked(m_math.complex_add(machine.operand(1), machine.operand()))); return true;
    case SUBTRACT: machine.replace(2, checked(m_math.complex_sub(machine.operand(1), machine.operand()))); return true;
    case MULTIPLY: machine.replace(2, checked(m_math.complex_mult(machine.operand(1), machine.operand()))); return true;
    case DIVIDE: machine.replace(2, checked(m_math.complex_div(machine.operand(1), machine.operand()))); return true;
    case NEGATE: {
        const complex value = machine.operand();
        machine.replace(1, complex(0.0 - value.real(), 0.0 - value.imag()));
        return true;
    }
    case MODULUS:
        if (machine.operand() == complex(0, 0)) {
            m_math.math_exception(0);
            return true;
        }
        machine.replace(2, m_math.modulus(machine.operand(1), machine.operand()));
        return true;
    case FACTORIAL: {
        complex value = machine.operand();
        machine.replace(1, _factorial(value));
        return true;
    }
    case POWER: {
        complex base = machine.operand(1), exponent = machine.operand();
        machine.replace(2, checked(_pow(base, exponent)));
        return true;
    }
    case 194:
        if (program.data_level >= k_deepest_data_level) {
            mapper_exception(2, m_quiet);
            return false;
        }
        ++program.data_level;
        return true;
    case 195: --program.data_level; return true;
    case 196: {
        const complex item = machine.operand();
        if (item.imag() != 0) {
            mapper_exception(0, m_quiet);
            return false;
        }
        program.active_list().push_back(item.real());
        if (machine.top >= 1) machine.result = machine.operand(1);
        machine.pending_pops = 1;
        return true;
    }
    case 197: get_file_data(program.active_list(), next_name(program).c_str(), -1); return true;
    case 199:
        program.resets.push_back({static_cast<int>(program.constants.size()) + 1,
                                  static_cast<int>(program.constants.size()) + 1,
                                  static_cast<int>(program.names.size()) + 1, 0});
        return true;
    case 200:
        if (program.reset_cursor < program.resets.size())
            program.resets[program.reset_cursor].end = static_cast<int>(program.instruction_cursor) - 1;
        return true;
    case END_OF_EXPRESSION: return true;
    default:
        if (m_builtins && m_builtins->run_instruction(code, *this, machine, program.active_list()))
            return !machine.abandoned;
        mapper_exception(5, m_quiet);
        return false;
    }
}

} // namespace quorvex::engine
