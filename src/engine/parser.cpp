// Construction and the entry point of an evaluation.
#include "parser.h"

#include "error_tables.h"
#include "evaluation_aborted.h"
#include "function_library.h"

#include <new>
#include <stdexcept>

namespace quorvex::engine {

Parser::Parser(const BuiltinTable* builtins, std::string system_dir, std::string user_dir)
    : m_builtins(builtins), m_statistics(statistics_messages(), "Statistics Error"), m_deviates(deviates_messages(), "Deviate Error"),
      m_system_dir(system_dir) {
    set_library_dirs(system_dir, user_dir);
}

Parser::~Parser() { reset(); }

void Parser::reset() {
    m_token.clear();
    m_var_name.clear();
    m_expression.clear();
    m_input_pos = m_input_start = 0;
    m_scanning = false;
    m_mapping = false;
    m_cur_lib_function.reset();
}

const char* Parser::eval_exp(const char* text, bool silent, bool show_equal, bool as_fraction) {
    if (!text) return nullptr;
    complex answer{0, 0};
    return eval_exp(text, answer, silent, show_equal, as_fraction);
}

const char* Parser::eval_exp(std::string_view text, bool silent, bool show_equal, bool as_fraction) {
    complex answer{0, 0};
    return eval_exp(text, answer, silent, show_equal, as_fraction);
}

const char* Parser::eval_exp(std::string_view text, complex& answer, bool silent, bool show_equal, bool as_fraction) {
    m_expression.assign(text);
    return eval_exp(nullptr, answer, silent, show_equal, as_fraction);
}

const char* Parser::eval_exp(const char* text, complex& answer, bool silent, bool show_equal, bool as_fraction) {
    // A null text evaluates the expression already in place (the mapper prepares one that way).
    if (text) m_expression = text;
    open_libraries(); // a missing library is reported at the first evaluation, once
    m_error_code = -1;
    m_root_taken = false;
    m_check_digits = false;
    m_expansions = 0;
    m_original_length = m_expression.size();
    SetSilentMode(silent);
    m_show_equal = show_equal;
    m_data_chain_refused = false;
    m_call_arguments.clear();
    ClearLastError();

    std::ostringstream out;
    init_answer_stream(out);
    try {
        // A NUL inside the text would silently end it for every scan below.
        if (m_expression.find('\0') != std::string::npos)
            special_exception("' NUL ' is not a legitimate mathematical character!", nullptr);
        remove_end_spaces(m_expression);
        insert_brackets(m_expression, 1);
        check_valid_input(m_expression);
        check_balanced_parens(m_expression);
        m_input_start = m_input_pos = 0;
        m_scanning = true;
        m_implied_mult = m_var_changed = m_func_declared = false;
        m_depth = 0;
        Operand value{answer, nullptr};
        eval_exp0(value, out);
        answer = value.z;

        if (!m_token.empty()) parser_exception(m_token == ")" ? 2 : 1);
        if (m_mapping) record_instruction(END_OF_EXPRESSION);
        if (out.tellp() == 0) {
            if (show_equal) out << " = ";
            if (m_precise) {
                complex shown = precise_shown(value, m_answer_format.precision);
                stream_answer(shown, out, -1, as_fraction);
            } else {
                stream_answer(answer, out, -1, as_fraction);
            }
        } else if (m_var_changed) {
            // "FLAG": the line assigned a plain number and shows no answer.
            m_vars_saved = false;
            out.str("");
        }
        if (m_beep && m_reporter) m_reporter->beep();
    } catch (const EvaluationAborted&) {
        m_error_flag = true;
        out.str("");
    } catch (const std::bad_alloc&) {
        SetLastError(parser_messages()[0], 0);
        out.str("");
    } catch (const std::length_error&) {
        SetLastError(parser_messages()[0], 0);
        out.str("");
    }
    // A declaration ends by unwinding, and yet it is no error.
    if (m_func_declared) {
        m_funcs_saved = false;
        m_error_flag = false;
    }
    reset();
    m_answer_text = out.str();
    return m_answer_text.c_str();
}

void Parser::record_instruction(int code, complex value, const char* text) {
    if (m_mapping && m_current_equation) m_current_equation->set_instruction(code, value, text);
}

int Parser::internal_function(const char* name) const {
    return m_builtins && name ? m_builtins->function_index(name) : -1;
}

const char* Parser::get_function_name(int index) const {
    return m_builtins ? m_builtins->function_name(index) : nullptr;
}

int Parser::constant_index(const char* name) const {
    return m_builtins && name ? m_builtins->constant_index(name) : -1;
}

const char* Parser::get_constant_name(int index) const {
    return m_builtins ? m_builtins->constant_name(index) : "";
}

long double Parser::get_constant_value(const char* name) {
    const int index = constant_index(name);
    if (index < 0) return 0;
    record_instruction(LOAD_CONSTANT, {}, name);
    return m_builtins->constant_value(index);
}

} // namespace quorvex::engine
