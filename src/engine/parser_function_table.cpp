// The Parser's table of user functions by index and name, for the lists and the managers.
#include "parser.h"
#include "table_order.h"

#include <algorithm>

namespace quorvex::engine {

namespace {
const char* or_null(const Function* function, const std::string& (Function::*part)() const) {
    return function ? (function->*part)().c_str() : nullptr;
}
} // namespace

void Parser::switch_funcs(int first, int second) {
    switch_entries(m_functions, first, second);
    invalidate_function_index();
}

void Parser::move_func(int from, int to) {
    move_entry(m_functions, from, to);
    invalidate_function_index();
}

int Parser::max_func_length() const {
    size_t longest = 0;
    for (const auto& function : m_functions) longest = std::max(longest, function->full_name().size());
    return static_cast<int>(longest);
}

bool Parser::is_func_variable(const char* function, const char* variable) {
    const int index = find_function(function);
    return index >= 0 && variable && m_functions[static_cast<size_t>(index)]->IsFuncVariable(variable);
}

int Parser::get_num_func_vars(int index) const {
    const Function* function = function_at(index);
    return function ? function->num_variables() : 0;
}

const char* Parser::get_func_name(int index) const { return or_null(function_at(index), &Function::full_name); }
const char* Parser::get_func_short_name(int index) const { return or_null(function_at(index), &Function::short_name); }
const char* Parser::get_func_value(int index) { return or_null(function_at(index), &Function::value); }
const char* Parser::get_func_modvalue(int index) const { return or_null(function_at(index), &Function::mod_value); }

const char* Parser::get_func_value(const char* name) {
    const int index = find_function(name);
    return index < 0 ? nullptr : get_func_value(index);
}

void Parser::set_func_value(const char* name, const char* value) {
    const int index = name ? find_function(name) : m_current_function;
    if (index < 0 || index >= function_count() || !value) return;
    m_functions[static_cast<size_t>(index)]->SetFuncValue(value);
}

void Parser::set_func_name(const char* full_name, int index) {
    if (index == -1) index = m_current_function;
    if (index < 0 || index >= function_count() || !full_name) return;
    m_functions[static_cast<size_t>(index)]->SetFuncName(full_name);
    invalidate_function_index(); // the short name may have changed
}

bool Parser::modify_func_value(int variable, const char* text, int index) {
    if (index == -1) index = m_current_function;
    if (index < 0 || index >= function_count() || !text) return false;
    return m_functions[static_cast<size_t>(index)]->ModFuncValue(variable, text);
}

void Parser::reset_func_modvalue(int index) {
    if (index == -1) index = m_current_function;
    if (index >= 0 && index < function_count()) m_functions[static_cast<size_t>(index)]->ResetModFuncValue();
}

const char* Parser::get_func_name_value(int index) { return get_func_str(index); }

const char* Parser::get_func_variable(int index, bool first) {
    const Function* function = function_at(index);
    if (!function) return nullptr;
    m_function_variable_cursor = first ? 1 : m_function_variable_cursor + 1;
    if (m_function_variable_cursor > function->num_variables()) return nullptr;
    return function->GetFuncVariable(m_function_variable_cursor).c_str();
}

size_t Parser::get_func_value_len(int index) const {
    const Function* function = function_at(index);
    return function && !function->value().empty() ? function->value().size() + 1 : 0;
}

size_t Parser::get_tot_func_value_len() const {
    size_t total = 0;
    for (int i = 0; i < function_count(); ++i) total += get_func_value_len(i);
    return total;
}

const char* Parser::with_parentheses(const char* text) {
    if (!text) return nullptr;
    m_extended_text = text;
    replace_brackets(m_extended_text, 0);
    return m_extended_text.c_str();
}

const char* Parser::get_func_name_ex(int index) { return with_parentheses(get_func_name(index)); }
const char* Parser::get_func_value_ex(int index) { return with_parentheses(get_func_value(index)); }
const char* Parser::get_func_str_ex(int index) { return with_parentheses(get_func_str(index)); }

} // namespace quorvex::engine
