#include "sweep_variable.h"

#include "sweep_2d.h"

#include "engine/host.h"
#include "engine/parser.h"

namespace quorvex::graph {

SweepVariable::SweepVariable(engine::Parser& parser, const std::string& name) : m_parser(parser), m_name(name) {
    m_existed = parser.is_variable(name.c_str());
    if (m_existed) {
        m_saved = parser.get_var_value(name.c_str());
    } else {
        parser.eval_exp((name + " = 0").c_str(), true, false, false);
        parser.ClearLastError();
    }
}

SweepVariable::~SweepVariable() {
    if (m_existed) {
        m_parser.set_var_value(m_saved, m_name.c_str());
    } else if (const int index = m_parser.find_variable(m_name.c_str()); index >= 0) {
        m_parser.delete_variable(index);
    }
}

void SweepVariable::set(const engine::complex& value) { m_parser.set_var_value(value, m_name.c_str()); }

std::optional<engine::complex> evaluate_data_text(engine::Parser& parser, const std::string* text) {
    if (!text || text->empty()) return std::nullopt;
    engine::complex value;
    parser.eval_exp(text->c_str(), value, true, false, false);
    if (parser.IsAnError()) {
        parser.ClearLastError();
        return std::nullopt;
    }
    return value;
}

bool keep_going(engine::Host* host, SweepReport& report) {
    if (!host) return true;
    host->pump();
    if (host->aborted()) report.cancelled = true;
    return !report.cancelled;
}

} // namespace quorvex::graph
