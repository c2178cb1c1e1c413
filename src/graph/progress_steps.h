#pragma once
#include <cstddef>

namespace quorvex::graph {

// The percentage a computation of `total` steps shows: each step is 100 / total percent; with
// more than a hundred steps the percentage moves by one each time the steps add up to a whole
// percent, so that the bar is redrawn at most a hundred times.
class ProgressSteps {
public:
    explicit ProgressSteps(size_t total);
    // One step done; true when the percentage shown changed.
    bool step();
    int percent() const { return m_percent; }

private:
    double m_step;
    double m_fraction = 0;
    int m_percent = 0;
};

} // namespace quorvex::graph
