// How a complex value becomes answer text or variable text.
#include "parser.h"

#include <cmath>

namespace quorvex::engine {

namespace {

void apply_format(std::ostringstream& out, const PrecformType& format) {
    out.flags(std::ios::dec | std::ios::internal);
    if (format.format == 1) out.setf(std::ios::scientific | std::ios::showbase);
    if (format.dec_point) out.setf(std::ios::showpoint);
    if (format.lead_sign) out.setf(std::ios::showpos);
    out.precision(format.precision);
}

// The sign between the parts is written by hand, so the magnitude never carries one of its own.
void write_magnitude(std::ostringstream& out, long double magnitude) {
    const auto flags = out.flags();
    out.unsetf(std::ios::showpos);
    out << magnitude;
    out.flags(flags);
}

} // namespace

void Parser::init_answer_stream(std::ostringstream& out) {
    m_answer_text.clear();
    apply_format(out, m_answer_format);
}

void Parser::stream_answer(complex& value, std::ostringstream& out, int precision, bool as_fraction) {
    m_math.round_zero(value, m_answer_format.zero_precision);
    const int digits = precision == -1 ? m_answer_format.precision : precision;
    out.precision(m_answer_format.format == 1 ? digits - 1 : digits);
    if (value.real() == 0 && value.imag() == 0) {
        out << 0.0L;
        return;
    }
    const bool real_is_integer = Mathematics::is_integer(value.real());
    if (value.real() != 0) {
        if (!as_fraction || real_is_integer) {
            out << value.real();
        } else {
            int status = 1;
            const Fraction fraction = m_math.DecToFrac(value.real(), 1e-12L, status);
            if (status == 0)
                out << fraction.numerator << '/' << fraction.denominator;
            else
                parser_exception(status == 2 ? 27 : (status == 4 ? 28 : 29));
        }
    }
    if (value.imag() != 0) {
        if (value.imag() > 0 && value.real() != 0) out << '+';
        if (value.imag() < 0) out << '-';
        const long double magnitude = std::fabs(static_cast<long double>(value.imag()));
        if (magnitude == 1) {
            out << 'i';
        } else if (as_fraction && !real_is_integer) {
            // The fraction of a complex answer is taken from its real part: 0.5+2i reads 1/2+1/2i.
            int status = 1;
            const Fraction fraction = m_math.DecToFrac(std::fabs(value.real()), 1e-12L, status);
            if (status == 2) parser_exception(27);
            if (status == 0) out << fraction.numerator << '/' << fraction.denominator << 'i';
        } else {
            write_magnitude(out, magnitude);
            out << 'i';
        }
    }
}

void Parser::stream_variable(complex& value, std::ostringstream& out, int precision) {
    if (precision == -1)
        m_math.round_zero(value, m_variable_format.zero_precision);
    else
        out.precision(precision);
    if (value.real() == 0 && value.imag() == 0) {
        out << 0.0L;
        return;
    }
    if (value.real() != 0) {
        // Just as many digits as the value has, up to the precision.
        const int digits = m_math.precision(value.real());
        if (precision == -1 || digits < precision) out.precision(digits);
        out << value.real();
    }
    if (value.imag() != 0) {
        if (value.imag() > 0 && value.real() != 0) out << '+';
        if (value.imag() < 0) out << '-';
        const long double magnitude = std::fabs(static_cast<long double>(value.imag()));
        if (magnitude != 1) write_magnitude(out, magnitude);
        out << 'i';
    }
}

} // namespace quorvex::engine
