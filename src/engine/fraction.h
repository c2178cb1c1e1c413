#pragma once
#include <cstdint>

namespace quorvex::engine {

// A rational pair for the fraction display of answers.
struct Fraction {
    std::int64_t numerator = 0;
    std::int64_t denominator = 1;
};

} // namespace quorvex::engine
