#pragma once
#include <complex>

namespace quorvex::engine {

// Every value during evaluation: a pair of doubles, real part first.
using complex = std::complex<double>;

} // namespace quorvex::engine
