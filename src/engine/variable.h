#pragma once
#include "complex.h"

#include <memory>
#include <sstream>
#include <string>

namespace quorvex::engine {

// A named value that may also carry a range (low, high, number of points). An incremental
// variable holds one present value at a time; tools walk it through the range with Increment.
struct PreciseValue;

class Variable {
public:
    // Starts without a value whatever `assigned` says: setting the limits to zero clears it.
    Variable(std::string name, complex value, bool assigned);
    Variable(std::string name, complex low, complex high, long points);
    // A copy carries the value and the range, but no text, and it is never locked.
    Variable(const Variable& other);
    // Assignment leaves the target's point count and lock as they were: only a copy made
    // whole starts from the source's count.
    Variable& operator=(const Variable& other);

    const std::string& name() const { return m_name; }
    bool assigned() const { return m_assigned; }
    bool incremented() const { return m_incremented; }
    bool locked() const { return m_locked; }
    void set_locked(bool locked) { m_locked = locked; }
    complex value() const { return m_value; }
    complex low() const { return m_low; }
    complex high() const { return m_high; }
    complex increment() const { return m_increment; }
    long num_increments() const { return m_num_increments; }
    long num_points() const { return m_num_points; }

    void SetVarValue(complex value);
    // The value with its own digits, from precise arithmetic; a later change of the value by any
    // other way leaves the digits behind.
    void SetVarPreciseValue(complex value, std::shared_ptr<const PreciseValue> precise);
    std::shared_ptr<const PreciseValue> precise_value() const {
        return m_precise_of == m_value ? m_precise : nullptr;
    }
    bool SetVarLowLimit(complex low);
    bool SetVarHiLimit(complex high);
    bool SetVarNumIncrmnts(long n);
    void SetVarNumPoints(long n);
    void ResetIncrement();
    void SwapLimits();
    bool Increment();
    bool Decrement();

    // Text forms; an unassigned variable shows "?". The stream forms write with the stream's
    // own flags, so the caller decides the number format.
    const char* GetVarValueStr(int precision, bool show_range);
    const char* GetVarIncValueStr(int precision);
    void GetVarValueStr(std::ostringstream& out, int precision, bool show_range) const;
    void GetVarIncValueStr(std::ostringstream& out, int precision) const;
    void GetVarDefStr(std::ostringstream& out, int precision, bool show_range) const;
    static void StreamVariable(const complex& value, std::ostringstream& out, int precision);

private:
    void update_increment();
    bool set_limit(complex& limit, complex value);

    std::string m_name;
    std::string m_value_text; // last text made by GetVarValueStr or GetVarIncValueStr
    bool m_assigned = false;
    complex m_value{0, 0};
    complex m_low{0, 0};
    complex m_high{0, 0};
    complex m_increment{0, 0};
    long m_num_increments = 0;
    long m_num_points = 1;
    bool m_incremented = false;
    bool m_locked = false;
    std::shared_ptr<const PreciseValue> m_precise;
    complex m_precise_of{0, 0}; // the value the digits belong to
};

} // namespace quorvex::engine
