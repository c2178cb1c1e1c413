#include "error_layer.h"

#include "evaluation_aborted.h"

namespace quorvex::engine {

ErrorLayer::ErrorLayer(std::span<const char* const> table, const char* caption)
    : m_table(table), m_caption(caption) {}

void ErrorLayer::raise(int code) {
    SetLastError(m_table[static_cast<size_t>(code)]);
    if (!m_silent && m_reporter) m_reporter->report(*m_last_error, m_caption, MessageKind::Warning);
    // Unlike the parser, a lower layer keeps its no-unwinding switch as it was.
    if (!m_solving_map) {
        release_before_unwind();
        throw EvaluationAborted{};
    }
}

void ErrorLayer::SetLastError(const char* text) {
    m_error_flag = true;
    if (text)
        m_last_error = text;
    else
        m_last_error.reset();
}

void ErrorLayer::ClearLastError() {
    m_error_flag = false;
    m_last_error.reset();
}

} // namespace quorvex::engine
