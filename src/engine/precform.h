#pragma once

namespace quorvex::engine {

// How a number becomes text: one record for answers, one for variable values.
struct PrecformType {
    float zero_precision = 1e-12f; // a part of smaller magnitude counts as zero
    int precision = 14;            // significant digits
    int format = 0;                // 0 decimal (general notation), 1 scientific notation
    bool dec_point = false;        // keep the point and trailing zeros
    bool lead_sign = false;        // write + on positive numbers
};

} // namespace quorvex::engine
