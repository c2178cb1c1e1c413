#pragma once
#include "engine/variable.h"

#include <memory>

namespace quorvex::graph {

// An owned copy of an engine variable, or none. Copies are made whole by the copy constructor of
// Variable: its assignment keeps the target's point count, which would be wrong for a copy.
class VariableCopy {
public:
    VariableCopy() = default;
    explicit VariableCopy(const engine::Variable& variable)
        : m_variable(std::make_unique<engine::Variable>(variable)) {}
    VariableCopy(const VariableCopy& other) : m_variable(clone(other)) {}
    VariableCopy& operator=(const VariableCopy& other) {
        if (this != &other) m_variable = clone(other);
        return *this;
    }
    VariableCopy(VariableCopy&&) noexcept = default;
    VariableCopy& operator=(VariableCopy&&) noexcept = default;

    explicit operator bool() const { return m_variable != nullptr; }
    engine::Variable* get() const { return m_variable.get(); }
    engine::Variable* operator->() const { return m_variable.get(); }
    engine::Variable& operator*() const { return *m_variable; }
    void reset() { m_variable.reset(); }

private:
    static std::unique_ptr<engine::Variable> clone(const VariableCopy& other) {
        return other.m_variable ? std::make_unique<engine::Variable>(*other.m_variable) : nullptr;
    }

    std::unique_ptr<engine::Variable> m_variable;
};

} // namespace quorvex::graph
