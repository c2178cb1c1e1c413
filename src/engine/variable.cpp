#include "variable.h"

#include "number/fast_decimal.h"

#include <cmath>
#include <utility>

namespace quorvex::engine {

Variable::Variable(std::string name, complex value, bool assigned) : m_name(std::move(name)) {
    SetVarLowLimit({0, 0});
    SetVarHiLimit({0, 0});
    SetVarNumIncrmnts(0);
    m_value = value;
    (void)assigned;
}

Variable::Variable(std::string name, complex low, complex high, long points) : m_name(std::move(name)) {
    SetVarLowLimit(low);
    SetVarHiLimit(high);
    SetVarNumPoints(points);
    m_value = low;
}

Variable::Variable(const Variable& other)
    : m_name(other.m_name), m_assigned(other.m_assigned), m_value(other.m_value), m_low(other.m_low),
      m_high(other.m_high), m_increment(other.m_increment), m_num_increments(other.m_num_increments),
      m_num_points(other.m_num_points), m_incremented(other.m_incremented), m_locked(false),
      m_precise(other.m_precise), m_precise_of(other.m_precise_of) {}

Variable& Variable::operator=(const Variable& other) {
    if (this == &other) return *this;
    m_name = other.m_name;
    m_low = other.m_low;
    m_high = other.m_high;
    m_num_increments = other.m_num_increments;
    m_increment = other.m_increment;
    m_incremented = other.m_incremented;
    m_value = other.m_value;
    m_assigned = other.m_assigned;
    m_precise = other.m_precise;
    m_precise_of = other.m_precise_of;
    m_value_text.clear();
    return *this;
}

void Variable::SetVarValue(complex value) {
    m_value = value;
    m_assigned = true;
}

void Variable::SetVarPreciseValue(complex value, std::shared_ptr<const PreciseValue> precise) {
    SetVarValue(value);
    m_precise = std::move(precise);
    m_precise_of = value;
}

namespace {

// A step of a walk is an arithmetic step like any other: through 15 significant digits, so that
// -10 + 0.1 + 0.1 + ... lands on 0 and on every tenth exactly instead of gathering binary error.
complex decimal_step(const complex& value, const complex& step, bool forward) {
    const auto part = [forward](double a, double b) {
        return forward ? number::decimal_add(a, b) : number::decimal_sub(a, b);
    };
    return {part(value.real(), step.real()), part(value.imag(), step.imag())};
}

} // namespace

void Variable::update_increment() {
    if (m_num_increments == 0) {
        m_incremented = false;
        return;
    }
    auto n = static_cast<double>(m_num_increments);
    const auto width = [n](double high, double low) {
        return number::decimal_div(number::decimal_sub(high, low), n);
    };
    m_increment = {width(m_high.real(), m_low.real()), width(m_high.imag(), m_low.imag())};
    m_incremented = m_low != m_high;
}

bool Variable::SetVarNumIncrmnts(long n) {
    if (n < 1) {
        m_num_increments = 0;
        m_num_points = 1;
        m_increment = {0, 0};
        m_assigned = m_incremented = false;
        return false;
    }
    m_num_increments = n;
    m_num_points = n + 1;
    if (m_low != m_high) {
        update_increment();
    } else {
        m_incremented = false;
    }
    m_value = m_low;
    m_assigned = true;
    return true;
}

void Variable::SetVarNumPoints(long n) { SetVarNumIncrmnts(n > 1 ? n - 1 : 0); }

bool Variable::set_limit(complex& limit, complex value) {
    if (value == limit) {
        // Setting an unchanged limit empties the variable.
        m_increment = {0, 0};
        m_assigned = m_incremented = false;
        return false;
    }
    limit = value;
    m_value = value;
    update_increment();
    m_assigned = true;
    return true;
}

bool Variable::SetVarHiLimit(complex high) { return set_limit(m_high, high); }

bool Variable::SetVarLowLimit(complex low) { return set_limit(m_low, low); }

void Variable::ResetIncrement() {
    if (m_incremented) m_value = m_low;
}

void Variable::SwapLimits() {
    std::swap(m_low, m_high);
    ResetIncrement();
}

bool Variable::Increment() {
    if (!m_assigned) {
        // The first call only positions the variable.
        m_value = m_low;
        m_assigned = true;
        return false;
    }
    if (!m_incremented) return false;
    double tolerance = std::abs(0.1 * m_increment);
    if (std::abs(m_high - m_value) <= tolerance) return false;
    // The last step snaps to the limit so that rounding never accumulates past it.
    if (std::abs(m_value - m_high + m_increment) <= tolerance)
        m_value = m_high;
    else
        m_value = decimal_step(m_value, m_increment, true);
    return true;
}

bool Variable::Decrement() {
    if (!m_incremented) return false;
    double tolerance = std::abs(0.1 * m_increment);
    if (std::abs(m_value - m_low) <= tolerance) return false;
    if (std::abs(m_value - m_low - m_increment) <= tolerance)
        m_value = m_low;
    else
        m_value = decimal_step(m_value, m_increment, false);
    return true;
}

void Variable::StreamVariable(const complex& value, std::ostringstream& out, int precision) {
    if (precision > 0) out.precision(precision);
    if (precision == 0) out.precision(1);
    if (value.real() == 0 && value.imag() == 0) {
        out << 0.0L;
        return;
    }
    if (value.real() != 0) out << value.real();
    if (value.imag() != 0) {
        if (value.imag() > 0 && value.real() != 0) out << '+';
        if (value.imag() < 0) out << '-';
        const double magnitude = std::fabs(value.imag());
        if (magnitude != 1) {
            const auto flags = out.flags();
            out.unsetf(std::ios::showpos);
            out << magnitude;
            out.flags(flags);
        }
        out << 'i';
    }
}

void Variable::GetVarValueStr(std::ostringstream& out, int precision, bool show_range) const {
    if (!m_assigned) {
        out << '?';
        return;
    }
    StreamVariable(m_value, out, precision);
    if (!(show_range && m_incremented)) return;
    out << " (";
    StreamVariable(m_low, out, precision);
    out << ',';
    StreamVariable(m_high, out, precision);
    out << ',' << m_num_points << ',';
    StreamVariable(m_increment, out, precision);
    out << ')';
}

void Variable::GetVarDefStr(std::ostringstream& out, int precision, bool show_range) const {
    if (!m_assigned) {
        out << '?';
        return;
    }
    if (!(show_range && m_incremented)) {
        StreamVariable(m_value, out, precision);
        return;
    }
    StreamVariable(m_low, out, precision);
    out << ',';
    StreamVariable(m_high, out, precision);
    out << ',' << m_num_points;
}

void Variable::GetVarIncValueStr(std::ostringstream& out, int precision) const {
    if (!m_incremented) {
        out << "0,0,0";
        return;
    }
    StreamVariable(m_low, out, precision);
    out << ',';
    StreamVariable(m_high, out, precision);
    out << ',' << m_num_points;
}

const char* Variable::GetVarValueStr(int precision, bool show_range) {
    std::ostringstream out;
    GetVarValueStr(out, precision, show_range);
    m_value_text = out.str();
    return m_value_text.c_str();
}

const char* Variable::GetVarIncValueStr(int precision) {
    std::ostringstream out;
    GetVarIncValueStr(out, precision);
    m_value_text = out.str();
    return m_value_text.c_str();
}

} // namespace quorvex::engine
