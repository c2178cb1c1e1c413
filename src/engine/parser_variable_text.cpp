// Variables by index and their texts, for the lists, the managers and documents.
#include "parser.h"
#include "table_order.h"

#include <algorithm>
#include <cstring>

namespace quorvex::engine {

Variable* Parser::mutable_variable_at(int index) { return const_cast<Variable*>(variable_at(index)); }

bool Parser::var_assigned(int index) {
    const Variable* variable = variable_at(index);
    return variable && variable->assigned();
}

bool Parser::var_incremented(int index) {
    const Variable* variable = variable_at(index);
    return variable && variable->incremented();
}

int Parser::max_var_length() const {
    size_t longest = 0;
    for (const auto& variable : m_variables) longest = std::max(longest, variable->name().size());
    return static_cast<int>(longest);
}

const char* Parser::get_var_name(int index) const {
    const Variable* variable = variable_at(index);
    return variable ? variable->name().c_str() : nullptr;
}

complex Parser::get_var_lowlimit(const char* name) {
    const Variable* v = find_var(name);
    return v ? v->low() : complex(0, 0);
}
complex Parser::get_var_lowlimit(int index) {
    const Variable* v = variable_at(index);
    return v ? v->low() : complex(0, 0);
}
complex Parser::get_var_hilimit(const char* name) {
    const Variable* v = find_var(name);
    return v ? v->high() : complex(0, 0);
}
complex Parser::get_var_hilimit(int index) {
    const Variable* v = variable_at(index);
    return v ? v->high() : complex(0, 0);
}
complex Parser::get_var_increment(const char* name) {
    const Variable* v = find_var(name);
    return v ? v->increment() : complex(0, 0);
}
complex Parser::get_var_increment(int index) {
    const Variable* v = variable_at(index);
    return v ? v->increment() : complex(0, 0);
}
long Parser::get_var_numpoints(const char* name) {
    const Variable* v = find_var(name);
    return v ? v->num_points() : 0;
}
long Parser::get_var_numpoints(int index) {
    const Variable* v = variable_at(index);
    return v ? v->num_points() : 0;
}

void Parser::switch_vars(int first, int second) {
    switch_entries(m_variables, first, second);
    invalidate_variable_index();
}

void Parser::move_var(int from, int to) {
    move_entry(m_variables, from, to);
    invalidate_variable_index();
}

void Parser::init_variable_stream(std::ostringstream& out) {
    m_variable_text.clear();
    out.flags(std::ios::dec | std::ios::internal);
    if (m_variable_format.format == 1) out.setf(std::ios::scientific | std::ios::showbase);
    if (m_variable_format.dec_point) out.setf(std::ios::showpoint);
    if (m_variable_format.lead_sign) out.setf(std::ios::showpos);
    out.precision(m_variable_format.precision);
}

const char* Parser::get_var_value(int index, int precision) {
    Variable* variable = mutable_variable_at(index);
    return variable ? variable->GetVarValueStr(precision, m_incremental_display) : nullptr;
}

const char* Parser::get_var_value(const char* name, int precision) {
    Variable* variable = find_var(name);
    return variable ? variable->GetVarValueStr(precision, m_incremental_display) : nullptr;
}

const char* Parser::get_var_inc_str_value(int index, int precision) {
    Variable* variable = mutable_variable_at(index);
    return variable ? variable->GetVarIncValueStr(precision) : nullptr;
}

const char* Parser::get_var_str_value(int index, int precision, bool definition) {
    const Variable* variable = variable_at(index);
    if (!variable) return nullptr;
    std::ostringstream out;
    init_variable_stream(out);
    if (definition)
        variable->GetVarDefStr(out, precision, m_incremental_display);
    else
        variable->GetVarValueStr(out, precision, m_incremental_display);
    m_variable_text = out.str();
    return m_variable_text.c_str();
}

const char* Parser::get_var_str_value(const char* name, int precision, bool definition) {
    const int index = find_variable(name);
    return index < 0 ? nullptr : get_var_str_value(index, precision, definition);
}

const char* Parser::get_var_str(int index, int precision, bool definition) {
    const Variable* variable = variable_at(index);
    if (!variable) return nullptr;
    const std::string name = variable->name();
    get_var_str_value(index, precision, definition);
    m_variable_text = name + " = " + m_variable_text;
    return m_variable_text.c_str();
}

size_t Parser::get_var_str_value_len(const char* name, int precision, bool definition) {
    const char* text = get_var_str_value(name, precision, definition);
    return text && *text ? std::strlen(text) + 1 : 0;
}

size_t Parser::get_var_str_value_len(int index, int precision, bool definition) {
    const char* text = get_var_str_value(index, precision, definition);
    return text && *text ? std::strlen(text) + 1 : 0;
}

char* Parser::get_var_dec_value(char* text) {
    if (!text) return nullptr;
    char* open = std::strrchr(text, '(');
    if (!open) return text;
    if (char* comma = std::strrchr(text, ',')) *comma = '\0';
    return open + 1;
}

} // namespace quorvex::engine
