#pragma once

namespace quorvex::number {

// Real sine, cosine, exponential and whole powers of a double by the engine's decimal rule: the
// argument lifted to 14 significant digits, the exact result rounded half away from zero to 15
// digits and read back as the nearest double. They work in long double and keep a bound of their
// error; when the bound leaves the rounding in doubt (the result lies too near a half-way point,
// too near zero, or outside the range handled here) they answer false and set nothing, and the
// caller takes the decimal path. So their answers are those of the decimal path, bit for bit,
// at a small fraction of its cost.
bool fast_sin(double x, bool degrees, double& result);
bool fast_cos(double x, bool degrees, double& result);
bool fast_exp(double x, double& result);
// x^n for a whole n from 2 to 64.
bool fast_power(double x, int n, double& result);

} // namespace quorvex::number
