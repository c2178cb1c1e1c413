#pragma once
#include "engine/parser.h"

#include <string>

namespace quorvex::functions {

using engine::complex;

// The kernels of the built-in scalar functions. Each lifts its operands into decimal through 14
// significant digits, computes at 21 digits (angle reduction and conversion at 50), and comes back
// through 15 significant digits, so SQRT(4) is exactly 2 and SIN(30) in degrees exactly 0.5.
// Refusals report through the parser and give 0. `function` is the caller's row index.
class ScalarKernels {
public:
    explicit ScalarKernels(engine::Parser& parser) : m_parser(parser) {}
    engine::Parser& parser() { return m_parser; }

    complex _sqrt(const complex& z);
    complex _cubert(const complex& z);
    complex _log(const complex& z, int function);
    complex _log10(const complex& z, int function);
    complex _logarithm(const complex& z, const complex& base, int function);
    complex _exp(const complex& z);
    complex _abs(const complex& z);
    complex _round(const complex& z);
    complex _trunc(const complex& z);
    complex _floor(const complex& z, int function);
    complex _ceil(const complex& z, int function);
    complex _fmod(const complex& z, const complex& w, int function);
    complex _gcd(const complex& a, const complex& b, int function);
    complex _lcm(const complex& a, const complex& b, int function);
    complex _hypot(const complex& x, const complex& y, int function);
    complex _rtop(const complex& x, const complex& y, int function);
    complex _ptor(const complex& r, const complex& a, int function);
    complex _polar(const complex& r, const complex& a, int function);
    complex _angle(const complex& z);
    complex _degree(const complex& z);
    complex _radian(const complex& z);
    // With `text`, the digits in the base go there; without, only base 10 can become a value.
    complex _basecon(const complex& z, const complex& w, int function, std::string* text);

    complex _trig_func(const complex& z, int function);
    complex _hyp_trig_func(const complex& z, int function);
    complex _arc_trig_func(const complex& z, int function);
    complex _arc_hyp_trig_func(const complex& z, int function);

private:
    bool degrees() const { return m_parser.angle_type() == 0; }
    // True, after the message, when an operand of an integer function has more than 15 digits.
    bool refuse_inexact_integers(const complex& a, const complex& b, int function);
    engine::Parser& m_parser;
};

} // namespace quorvex::functions
