#!/usr/bin/env python3
"""Writes the reference values of the decimal layer's elementary functions.

Run once by hand (python3 with mpmath); its output files are committed and read by the number
tests, so no test needs Python. Every expected value is the exact mathematical result (mpmath at
60 digits) rounded half away from zero to 15 significant digits, in the text form the decimal
layer writes: d.ddddddddddddddE+n.

  real.txt     FUNCTION ARG [ARG2] EXPECTED
  complex.txt  FUNCTION RE IM [RE2 IM2] EXPECTED_RE EXPECTED_IM
"""
import decimal
import os
import random

import mpmath

mpmath.mp.dps = 60
decimal.getcontext().prec = 80
random.seed(20261122)
HERE = os.path.dirname(os.path.abspath(__file__))


def text15(value):
    """The value rounded half away from zero to 15 significant digits, as d.dddE+n."""
    if isinstance(value, decimal.Decimal):
        d = value  # exact already: no trip through binary
    else:
        d = decimal.Decimal(mpmath.libmp.to_str(mpmath.mpf(value)._mpf_, 55))
    if d == 0:
        return "0.00000000000000E+0"
    exponent = d.adjusted()
    q = d.scaleb(-exponent).quantize(decimal.Decimal("1.00000000000000"), rounding=decimal.ROUND_HALF_UP)
    if abs(q) >= 10:
        exponent += 1
        q = d.scaleb(-exponent).quantize(decimal.Decimal("1.00000000000000"), rounding=decimal.ROUND_HALF_UP)
    sign = "-" if q < 0 else ""
    digits = format(abs(q), "f")
    return f"{sign}{digits}E{'+' if exponent >= 0 else '-'}{abs(exponent)}"


def digits_after_15(value):
    """Digits 16 to 19 of the value: how close it lies to a rounding boundary."""
    s = mpmath.libmp.to_str(mpmath.mpf(abs(value))._mpf_, 30).replace(".", "").lstrip("0")
    s = s.split("e")[0]
    return s[15:19]


def random_decimal(low, high, digits=None):
    digits = digits or random.randint(1, 15)
    x = mpmath.mpf(random.uniform(low, high))
    s = mpmath.nstr(x, digits, min_fixed=-30, max_fixed=30)
    return s if "e" not in s else mpmath.nstr(x, digits, min_fixed=-400, max_fixed=400)


REAL = {
    "sqrt": (mpmath.sqrt, (0, 1e6)),
    "exp": (mpmath.exp, (-50, 50)),
    "log": (mpmath.log, (1e-9, 1e10)),
    "log10": (mpmath.log10, (1e-9, 1e10)),
    "sin": (mpmath.sin, (-100, 100)),
    "cos": (mpmath.cos, (-100, 100)),
    "tan": (mpmath.tan, (-100, 100)),
    "asin": (mpmath.asin, (-1, 1)),
    "acos": (mpmath.acos, (-1, 1)),
    "atan": (mpmath.atan, (-1000, 1000)),
    "sinh": (mpmath.sinh, (-20, 20)),
    "cosh": (mpmath.cosh, (-20, 20)),
    "tanh": (mpmath.tanh, (-5, 5)),
    "asinh": (mpmath.asinh, (-1e4, 1e4)),
    "acosh": (mpmath.acosh, (1, 1e4)),
    "atanh": (mpmath.atanh, (-0.999, 0.999)),
}


def real_lines():
    lines = []
    for name, (f, (low, high)) in REAL.items():
        args = [random_decimal(low, high) for _ in range(200)]
        # Small arguments, where series and cancellation matter.
        if low < 0 and name != "acosh":
            args += [random_decimal(-1e-6, 1e-6) for _ in range(10)]
        # Arguments whose results lie next to a rounding boundary of the 15th digit.
        near, tries = [], 0
        while len(near) < 15 and tries < 200000:
            tries += 1
            a = random_decimal(low, high, 15)
            v = f(mpmath.mpf(a))
            if not (isinstance(v, mpmath.mpf) and mpmath.isfinite(v)):
                continue
            tail = digits_after_15(v)
            if tail in ("4999", "5000"):
                near.append(a)
        args += near
        for a in args:
            v = f(mpmath.mpf(a))
            # Rounded arguments can land on a pole or outside the domain; those are no references.
            if isinstance(v, mpmath.mpf) and mpmath.isfinite(v):
                lines.append(f"{name} {a} {text15(v)}")
    # sqrt at exact half-way points: the square of a 16-digit number ending in 5.
    for _ in range(20):
        y = decimal.Decimal(random.randint(10**15, 10**16 - 1) // 10 * 10 + 5).scaleb(-random.randint(10, 20))
        lines.append(f"sqrt {y * y} {text15(y)}")
    for _ in range(200):
        x, y = random_decimal(0.01, 100), random_decimal(-10, 10)
        lines.append(f"pow {x} {y} {text15(mpmath.power(mpmath.mpf(x), mpmath.mpf(y)))}")
    for _ in range(30):
        x, y = random_decimal(-20, -0.1), str(random.randint(-8, 8))
        lines.append(f"pow {x} {y} {text15(mpmath.power(mpmath.mpf(x), mpmath.mpf(y)))}")
    for _ in range(200):
        y, x = random_decimal(-100, 100), random_decimal(-100, 100)
        lines.append(f"atan2 {y} {x} {text15(mpmath.atan2(mpmath.mpf(y), mpmath.mpf(x)))}")
    return lines


COMPLEX = {
    "sqrt": mpmath.sqrt, "exp": mpmath.exp, "log": mpmath.log, "log10": mpmath.log10,
    "sin": mpmath.sin, "cos": mpmath.cos, "tan": mpmath.tan,
    "sinh": mpmath.sinh, "cosh": mpmath.cosh, "tanh": mpmath.tanh,
    "asin": mpmath.asin, "acos": mpmath.acos, "atan": mpmath.atan,
    "asinh": mpmath.asinh, "acosh": mpmath.acosh, "atanh": mpmath.atanh,
}


def quadrant_arguments(scale):
    args = []
    for sre, sim in ((1, 1), (-1, 1), (-1, -1), (1, -1)):
        for _ in range(10):
            args.append((f"{sre * abs(float(random_decimal(0.05, scale))):.12g}",
                         f"{sim * abs(float(random_decimal(0.05, scale))):.12g}"))
    return args


def complex_lines():
    lines = []
    for name, f in COMPLEX.items():
        scale = 3 if name in ("sin", "cos", "tan", "sinh", "cosh", "tanh", "exp") else 20
        for re, im in quadrant_arguments(scale):
            v = f(mpmath.mpc(mpmath.mpf(re), mpmath.mpf(im)))
            lines.append(f"{name} {re} {im} {text15(v.real)} {text15(v.imag)}")
    for name, f in (("pow", mpmath.power), ("div", lambda z, w: z / w)):
        for (re, im), (re2, im2) in zip(quadrant_arguments(5), quadrant_arguments(3)):
            v = f(mpmath.mpc(mpmath.mpf(re), mpmath.mpf(im)), mpmath.mpc(mpmath.mpf(re2), mpmath.mpf(im2)))
            lines.append(f"{name} {re} {im} {re2} {im2} {text15(v.real)} {text15(v.imag)}")
    return lines


def write(name, lines):
    with open(os.path.join(HERE, name), "w", newline="\n") as out:
        out.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    write("real.txt", real_lines())
    write("complex.txt", complex_lines())
