// The Parser's table of variables, kept in order of creation.
#include "parser.h"

#include <cstring>

namespace quorvex::engine {

int Parser::find_variable(const char* name) {
    if (!name || !*name) return -1;
    if (!m_variable_index_valid) {
        m_variable_index.clear();
        for (size_t i = 0; i < m_variables.size(); ++i) m_variable_index.emplace(m_variables[i]->name(), static_cast<int>(i));
        m_variable_index_valid = true;
    }
    const auto found = m_variable_index.find(name);
    if (found == m_variable_index.end()) return -1;
    // The entry found stays current, so the -1 forms reach it afterwards.
    m_current_variable = found->second;
    return m_current_variable;
}

Variable* Parser::find_var(const char* name) {
    const int index = find_variable(name);
    return index < 0 ? nullptr : m_variables[static_cast<size_t>(index)].get();
}

Variable* Parser::variable_for(const char* name) {
    if (name) return find_var(name);
    if (m_current_variable < 0 || m_current_variable >= variable_count()) return nullptr;
    return m_variables[static_cast<size_t>(m_current_variable)].get();
}

const Variable* Parser::variable_at(int index) const {
    if (index == -1) index = m_current_variable;
    if (index < 0 || index >= variable_count()) return nullptr;
    return m_variables[static_cast<size_t>(index)].get();
}

bool Parser::is_variable(const char* name) { return find_variable(name) >= 0; }

bool Parser::var_assigned(const char* name) {
    const Variable* variable = find_var(name);
    return variable && variable->assigned();
}

bool Parser::var_incremented(const char* name) {
    const Variable* variable = find_var(name);
    return variable && variable->incremented();
}

void Parser::add_variable(const std::string& name) {
    m_variables.push_back(std::make_unique<Variable>(name, complex(0, 0), false));
    m_current_variable = variable_count() - 1;
    if (m_variable_index_valid) m_variable_index.emplace(m_variables.back()->name(), m_current_variable);
}

complex Parser::get_var_value(const char* name) {
    const Variable* variable = find_var(name);
    if (!variable) return {0, 0};
    record_instruction(LOAD_VARIABLE, {}, name);
    return variable->value();
}

void Parser::set_var_value(complex value, const char* name) {
    if (Variable* variable = variable_for(name)) variable->SetVarValue(value);
}

void Parser::set_var_lowlimit(complex value, const char* name) {
    if (Variable* variable = variable_for(name)) variable->SetVarLowLimit(value);
}

void Parser::set_var_hilimit(complex value, const char* name) {
    if (Variable* variable = variable_for(name)) variable->SetVarHiLimit(value);
}

void Parser::set_var_numpoints(long points, const char* name) {
    if (Variable* variable = variable_for(name)) variable->SetVarNumPoints(points);
}

bool Parser::is_var_locked(const char* name) {
    const Variable* variable = find_var(name);
    return variable && variable->locked();
}

void Parser::set_var_lock(const char* name, bool locked) {
    if (Variable* variable = find_var(name)) variable->set_locked(locked);
}

void Parser::delete_variable(int index) {
    if (index == -1) index = m_current_variable;
    if (index < 0 || index >= variable_count()) return;
    m_variables.erase(m_variables.begin() + index);
    invalidate_variable_index();
    m_current_variable = -1;
    m_vars_saved = false;
    if (m_beep && m_reporter) m_reporter->beep();
}

void Parser::delete_all_vars() {
    m_variables.clear();
    invalidate_variable_index();
    m_current_variable = -1;
    m_vars_saved = false;
    if (m_beep && m_reporter) m_reporter->beep();
}

} // namespace quorvex::engine
