#pragma once
#include "line_processor.h"

#include <functional>
#include <string>
#include <vector>

namespace quorvex::document {

// A line whose stored answer is not the answer its lines give now.
struct DifferingAnswer {
    size_t line = 0;    // counted from 1
    std::string stored; // the answer the text holds
    std::string now;    // the answer computed now, or "error: MESSAGE", or "no answer"
    bool operator==(const DifferingAnswer&) const = default;
};

// Computes `lines` top to bottom through `processor` as Enter would, and returns each line that
// held an answer which differs from the one computed now. The text is left as it is; the engine
// behind the processor takes every change the lines make, so give it one that may change (a
// scratch engine loaded with the document). Lines that hold no answer are computed but never
// differ. `progress`, when given, is told the count of lines done and may return false to stop.
std::vector<DifferingAnswer> check_answers(LineProcessor& processor, const std::vector<std::string>& lines,
                                           const std::function<bool(size_t done)>& progress = {});

// "3 answers differ", "1 answer differs", "All answers agree".
std::string check_summary(size_t differing);

} // namespace quorvex::document
