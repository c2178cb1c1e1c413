#pragma once
// The text of a real answer without the answer stream: a run of millions of rows (map) spends
// more on building a stream per number than on the numbers.
#include "command_support.h"

#include "engine/mathematics.h"

#include <string>

namespace quorvex::cli {

// Appends a number as format_answer writes it, where that is certain: the default (general)
// format without forced point or sign, no fractions, the classic locale. There the answer stream
// writes printf's "%.*g" of the double, which std::to_chars with the same precision is defined
// to equal. Everything else (and a value next to the zero tolerance, which the engine settles in
// decimal) is left to format_answer: append returns false and writes nothing.
class AnswerText {
public:
    explicit AnswerText(CommandContext& context);
    bool append(std::string& line, double value);
    bool append(std::string& line, const engine::complex& value);

private:
    bool m_usable = false;
    int m_digits = 0;
    long double m_tolerance = 0;
    engine::Mathematics m_math;
};

} // namespace quorvex::cli
