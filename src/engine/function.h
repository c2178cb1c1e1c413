#pragma once
#include <string>
#include <vector>

namespace quorvex::engine {

// A user function: a name, its dependent variables and a body kept as text. Functions are not
// called but expanded: each call is replaced by the body with the arguments put in place of the
// dependent variables (see ModFuncValue).
class Function {
public:
    Function(const std::string& full_name, const std::string& value);

    // "f[x,y]": the full name, the short name "f" and the variables x and y.
    void SetFuncName(const std::string& full_name);
    void SetFuncValue(const std::string& value);
    void SetFuncLabel(const std::string& label) { m_label = label; }

    const std::string& full_name() const { return m_full_name; }
    const std::string& short_name() const { return m_short_name; }
    const std::string& value() const { return m_value; }
    const std::string& mod_value() const { return m_mod_value; }
    const std::string& label() const { return m_label; }
    int num_variables() const { return static_cast<int>(m_variables.size()); }
    // The n-th dependent variable, counted from 1; empty outside.
    const std::string& GetFuncVariable(int n) const;
    bool IsFuncVariable(const std::string& name) const;
    // "f[x] = x^2"
    std::string GetFuncFullNameAndValue() const;

    // Replaces every whole-word occurrence of the n-th dependent variable in the working copy by
    // `text`; true when at least one was replaced (or the variable is `text` already).
    bool ModFuncValue(int n, const std::string& text);
    void ResetModFuncValue() { m_mod_value = m_value; }

private:
    std::string m_full_name;
    std::string m_short_name;
    std::vector<std::string> m_variables;
    std::string m_value;
    std::string m_mod_value;
    std::string m_label;
};

} // namespace quorvex::engine
