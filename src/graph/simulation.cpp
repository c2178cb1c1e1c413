#include "simulation.h"

#include <algorithm>

namespace quorvex::graph {

Simulation::Simulation(const ChartData& data) {
    size_t widest = 0;
    for (size_t s = 0; s < data.series(); ++s) widest = std::max(widest, data.label(s).size());
    m_frames.reserve(data.series());
    for (size_t s = 0; s < data.series(); ++s) {
        Frame frame;
        const size_t points = data.points(s);
        frame.x.reserve(points);
        frame.y.reserve(points);
        for (size_t p = 0; p < points; ++p) {
            frame.x.push_back(data.x(s, p));
            frame.y.push_back(data.y(s, p));
        }
        frame.label = data.label(s);
        frame.label.resize(widest, ' ');
        m_frames.push_back(std::move(frame));
    }
}

const Simulation::Frame& Simulation::advance() {
    m_current = m_frames.empty() ? 0 : (m_current + 1) % m_frames.size();
    return m_frames[m_current];
}

void Simulation::slower() {
    if (m_delay < k_longest_delay) m_delay += k_delay_step;
}

void Simulation::faster() {
    if (m_delay > 0) m_delay -= k_delay_step;
}

} // namespace quorvex::graph
