#pragma once
#include "chart_data.h"

#include <string>
#include <vector>

namespace quorvex::graph {

// A family of curves played one after another in the first series' place: the frames are the
// series of a drawn graph, taken once when the simulation starts, so playing computes nothing.
class Simulation {
public:
    static constexpr int k_initial_delay = 100; // milliseconds between frames
    static constexpr int k_delay_step = 50;
    static constexpr int k_longest_delay = 600;

    struct Frame {
        std::vector<double> x, y;
        std::string label; // padded with blanks to the longest, so the legend keeps its width
    };

    // Every series of `data` becomes a frame, in series order; a layout-1 chart's shared X is
    // copied into each.
    explicit Simulation(const ChartData& data);

    // A family has at least two curves; with fewer there is nothing to play.
    bool playable() const { return m_frames.size() >= 2; }
    size_t frame_count() const { return m_frames.size(); }
    const Frame& frame(size_t index) const { return m_frames[index]; }
    // The frame shown now, and the step to the next one (after the last, the first again).
    size_t current() const { return m_current; }
    const Frame& advance();

    int delay() const { return m_delay; }
    // Slower adds a step while the delay is below the longest; faster takes one off while it is
    // above none.
    void slower();
    void faster();

private:
    std::vector<Frame> m_frames;
    size_t m_current = 0;
    int m_delay = k_initial_delay;
};

} // namespace quorvex::graph
