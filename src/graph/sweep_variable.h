#pragma once
#include "engine/complex.h"

#include <optional>
#include <string>

namespace quorvex::engine {
class Host;
class Parser;
} // namespace quorvex::engine

namespace quorvex::graph {

struct SweepReport;

// The engine's variable of a sweep's name for the length of the sweep: an existing one gets its
// value back afterwards, a missing one is made and removed again, however the sweep ends.
class SweepVariable {
public:
    SweepVariable(engine::Parser& parser, const std::string& name);
    ~SweepVariable();
    SweepVariable(const SweepVariable&) = delete;
    SweepVariable& operator=(const SweepVariable&) = delete;
    void set(const engine::complex& value);

private:
    engine::Parser& m_parser;
    std::string m_name;
    bool m_existed = false;
    engine::complex m_saved;
};

// The value of a data set's coordinate text; none for an empty slot or one the engine fails on
// (its message is cleared: a data point that fails is a hole).
std::optional<engine::complex> evaluate_data_text(engine::Parser& parser, const std::string* text);

// Lets the host's window breathe and hears its Stop: false (and the report cancelled) once
// stopped.
bool keep_going(engine::Host* host, SweepReport& report);

} // namespace quorvex::graph
