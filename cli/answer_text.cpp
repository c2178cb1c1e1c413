#include "answer_text.h"

#include <charconv>
#include <cmath>
#include <locale>

namespace quorvex::cli {

namespace {

// Precisions the short path was compared for against the stream (tests/unit/cli).
constexpr int k_fewest_digits = 1;
constexpr int k_most_digits = 20;
// The engine compares a magnitude with the zero tolerance after a round trip through 14 and 15
// significant digits, which moves it by less than 1e-13 of itself: outside this band around the
// tolerance the double's own magnitude gives the same verdict.
constexpr long double k_tolerance_band = 1e-12L;

} // namespace

AnswerText::AnswerText(CommandContext& context) {
    const engine::PrecformType& format = context.parser.answer_format();
    m_digits = format.precision;
    m_tolerance = format.zero_precision;
    m_usable = format.format != 1 && !format.dec_point && !format.lead_sign && !context.options.fraction &&
               m_digits >= k_fewest_digits && m_digits <= k_most_digits && std::locale() == std::locale::classic();
    m_math.set_silent(true);
}

bool AnswerText::append(std::string& line, double value) {
    if (!m_usable || !std::isfinite(value)) return false;
    const long double magnitude = std::fabs(static_cast<long double>(value));
    bool zero = false;
    if (magnitude < m_tolerance * (1 - k_tolerance_band))
        zero = true;
    else if (!(magnitude > m_tolerance * (1 + k_tolerance_band)))
        zero = m_math.real_abs(value) < m_tolerance;
    if (zero || value == 0) {
        line += '0';
        return true;
    }
    char text[64];
    const auto written = std::to_chars(text, text + sizeof text, value, std::chars_format::general, m_digits);
    if (written.ec != std::errc()) return false;
    line.append(text, written.ptr);
    return true;
}

bool AnswerText::append(std::string& line, const engine::complex& value) {
    return value.imag() == 0 && append(line, value.real());
}

} // namespace quorvex::cli
