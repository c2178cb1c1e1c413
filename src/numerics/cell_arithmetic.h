#pragma once
#include "engine/mathematics.h"

#include <cstdlib>
#include <string>

namespace quorvex::numerics {

// The decimal-text arithmetic of matrix cells. Each matrix operation makes one of these for its
// own duration rather than borrowing the parser's Mathematics: the operators take no further
// argument, the operations keep no state between calls, and a matrix reports by bool, so the
// instance is quiet and never unwinds into whatever evaluation is running. Nothing here divides
// by zero in practice (the decomposition replaces zero pivots, and a zero divisor is tested
// before the division), so the quiet error record is never the only sign of a failure.
class CellArithmetic {
public:
    CellArithmetic() {
        m_math.set_silent(true);
        m_math.set_solving_map(true);
    }

    std::string add(const char* a, const char* b) { return with_text(&engine::Mathematics::char_add, a, b); }
    std::string sub(const char* a, const char* b) { return with_text(&engine::Mathematics::char_sub, a, b); }
    std::string mult(const char* a, const char* b) {
        return with_text(&engine::Mathematics::char_mult, a, b);
    }
    // The caller makes sure the divisor is not zero.
    std::string div(const char* a, const char* b) { return with_text(&engine::Mathematics::char_div, a, b); }
    std::string abs(const char* a) {
        std::string text;
        m_math.char_abs(a, &text);
        return text;
    }
    // The magnitude of decimal text as a long double, for the thresholds.
    long double magnitude(const char* a) { return m_math.char_abs(a); }
    bool is_zero(const char* a) { return m_math.char_abs(a) == 0; }
    std::string real_string(long double x) { return m_math.real_string(x, 14); }

private:
    using Operation = long double (engine::Mathematics::*)(const char*, const char*, std::string*);
    std::string with_text(Operation operation, const char* a, const char* b) {
        std::string text;
        (m_math.*operation)(a, b, &text);
        return text;
    }

    engine::Mathematics m_math;
};

} // namespace quorvex::numerics
