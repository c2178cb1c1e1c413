#include "progress_steps.h"

#include <algorithm>

namespace quorvex::graph {

ProgressSteps::ProgressSteps(size_t total) : m_step(total ? 100.0 / static_cast<double>(total) : 100.0) {}

bool ProgressSteps::step() {
    m_fraction += m_step;
    if (m_fraction < 1) return false;
    // Whole percents only; what is left over counts towards the next one.
    const int whole = static_cast<int>(m_fraction);
    m_fraction -= whole;
    const int before = m_percent;
    m_percent = std::min(100, m_percent + whole);
    return m_percent != before;
}

} // namespace quorvex::graph
