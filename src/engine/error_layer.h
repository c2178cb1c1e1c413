#pragma once
#include "reporter.h"

#include <optional>
#include <span>
#include <string>

namespace quorvex::engine {

// The error state of one layer of the engine (mathematics, statistics, deviates): a flag, the
// last message, a silent switch and a no-unwinding switch. Raising a code stores its message,
// tells the reporter unless silent, and abandons the evaluation unless the layer is solving a map.
class ErrorLayer {
public:
    ErrorLayer(std::span<const char* const> table, const char* caption);
    virtual ~ErrorLayer() = default;

    // Raises a code of this layer's table. Returns only when the layer is solving a map.
    void raise(int code);

    void SetLastError(const char* text);
    void ClearLastError();
    const char* GetLastError() const { return m_last_error ? m_last_error->c_str() : nullptr; }
    bool error_flag() const { return m_error_flag; }

    void set_silent(bool silent) { m_silent = silent; }
    bool silent() const { return m_silent; }
    void set_solving_map(bool on) { m_solving_map = on; }
    bool solving_map() const { return m_solving_map; }
    void set_reporter(Reporter* reporter) { m_reporter = reporter; }
    Reporter* reporter() const { return m_reporter; }

protected:
    // Called before unwinding, so a layer can drop the decimal temporaries it holds.
    virtual void release_before_unwind() {}

private:
    std::span<const char* const> m_table;
    const char* m_caption;
    Reporter* m_reporter = nullptr;
    bool m_error_flag = false;
    bool m_silent = false;
    bool m_solving_map = false;
    std::optional<std::string> m_last_error;
};

} // namespace quorvex::engine
