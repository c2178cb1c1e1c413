#!/usr/bin/env python3
"""Writes the reference values of the decimal layer.

Run once by hand (python3 with mpmath); its output files are committed and read by the number
tests, so no test needs Python. Every expected value is the exact mathematical result (mpmath at
60 digits, or Python's decimal module where the result is a finite decimal) rounded half away
from zero to 15 significant digits, in the text form the decimal layer writes:
d.ddddddddddddddE+n.

  real.txt        FUNCTION ARG [ARG2] EXPECTED
  complex.txt     FUNCTION RE IM [RE2 IM2] EXPECTED_RE EXPECTED_IM
  arithmetic.txt  OP A B EXPECTED      A and B are doubles (shortest text), lifted to 14 digits

The arguments include values whose results sit next to a rounding boundary of the 15th digit
("near ties": the exact digits after the 15th start 5000... or 4999...), results that are exact
ties, huge arguments of the circular functions, and for the complex functions all four quadrants
plus the axes, the branch cuts and the neighbourhoods of the branch points.
"""
import decimal
import os
import random

import mpmath
from mpmath import mpf, mpc

mpmath.mp.dps = 60
decimal.getcontext().prec = 120
random.seed(20261122)
HERE = os.path.dirname(os.path.abspath(__file__))
D = decimal.Decimal


def text15(value):
    """The value rounded half away from zero to 15 significant digits, as d.dddE+n."""
    d = value if isinstance(value, D) else D(mpmath.nstr(mpf(value), 58, strip_zeros=False, min_fixed=1, max_fixed=0))
    if d == 0:
        return "0.00000000000000E+0"
    exponent = d.adjusted()
    q = d.scaleb(-exponent).quantize(D("1.00000000000000"), rounding=decimal.ROUND_HALF_UP)
    if abs(q) >= 10:
        exponent += 1
        q = d.scaleb(-exponent).quantize(D("1.00000000000000"), rounding=decimal.ROUND_HALF_UP)
    sign = "-" if q < 0 else ""
    return f"{sign}{format(abs(q), 'f')}E{'+' if exponent >= 0 else '-'}{abs(exponent)}"


def tail(value):
    """Significant digits 16 to 21 of the value: how close it lies to a rounding boundary."""
    s = mpmath.nstr(abs(mpf(value)), 40, strip_zeros=False, min_fixed=1, max_fixed=0)
    digits = s.split("e")[0].replace(".", "").lstrip("0")
    return digits[15:21]


def sig(x, digits):
    """x written with `digits` significant digits."""
    return mpmath.nstr(mpf(x), digits, strip_zeros=True, min_fixed=-5, max_fixed=25)


def random_decimal(low, high, digits=None):
    return sig(mpf(random.uniform(low, high)), digits or random.randint(1, 21))


def tie_target(low, high):
    """A 16-digit value ending in 5 inside (low, high): the exact tie of its 15-digit rounding."""
    if high / max(abs(low), 1e-300) > 1e3 or (low < 0 and high > 1e3):
        # Wide ranges are drawn on a log scale, so small magnitudes turn up too.
        x = mpf(10) ** random.uniform(-3 if low <= 0 else mpmath.log10(low), mpmath.log10(high))
        x = x if low >= 0 else x * random.choice((1, -1))
    else:
        x = mpf(random.uniform(low, high))
    e = int(mpmath.floor(mpmath.log10(abs(x))))
    mantissa = int(abs(x) / mpf(10) ** (e - 15)) // 10 * 10 + 5
    return mpmath.sign(x) * mpf(mantissa) * mpf(10) ** (e - 15)


# name: (function, random domain, inverse, domain of the inverse's argument)
REAL = {
    "sqrt": (mpmath.sqrt, (0, 1e6), lambda t: t * t, (1e-3, 1e4)),
    "exp": (mpmath.exp, (-50, 50), mpmath.log, (1e-20, 1e20)),
    "log": (mpmath.log, (1e-9, 1e10), mpmath.exp, (-20, 20)),
    "log10": (mpmath.log10, (1e-9, 1e10), lambda t: mpf(10) ** t, (-9, 9)),
    "sin": (mpmath.sin, (-100, 100), mpmath.asin, (-0.999, 0.999)),
    "cos": (mpmath.cos, (-100, 100), mpmath.acos, (-0.999, 0.999)),
    "tan": (mpmath.tan, (-100, 100), mpmath.atan, (-100, 100)),
    "asin": (mpmath.asin, (-1, 1), mpmath.sin, (-1.5, 1.5)),
    "acos": (mpmath.acos, (-1, 1), mpmath.cos, (0.01, 3.1)),
    "atan": (mpmath.atan, (-1000, 1000), mpmath.tan, (-1.5, 1.5)),
    "sinh": (mpmath.sinh, (-20, 20), mpmath.asinh, (-1e8, 1e8)),
    "cosh": (mpmath.cosh, (-20, 20), mpmath.acosh, (1.01, 1e8)),
    "tanh": (mpmath.tanh, (-5, 5), mpmath.atanh, (-0.99, 0.99)),
    "asinh": (mpmath.asinh, (-1e4, 1e4), mpmath.sinh, (-9, 9)),
    "acosh": (mpmath.acosh, (1, 1e4), mpmath.cosh, (0.01, 9)),
    "atanh": (mpmath.atanh, (-0.999, 0.999), mpmath.tanh, (-3, 3)),
}


def real_value(f, args):
    v = f(*[mpf(a) for a in args])
    return v if isinstance(v, mpf) and mpmath.isfinite(v) else None


def real_lines():
    lines = []

    def add(name, f, *args):
        v = real_value(f, args)
        # A rounded argument can land on a pole or outside the domain; that is no reference.
        if v is not None:
            lines.append(f"{name} {' '.join(args)} {text15(v)}")

    for name, (f, (low, high), inverse, (tlow, thigh)) in REAL.items():
        for _ in range(150):
            add(name, f, random_decimal(low, high))
        if low < 0 and name not in ("cos",):
            for _ in range(8):  # tiny arguments, where series and cancellation matter
                add(name, f, sig(mpf(random.uniform(-1, 1)) * mpf(10) ** random.randint(-30, -5), random.randint(1, 21)))
        # Near ties: an argument of 21 digits whose result is within about 1e-20 of the
        # tie t, so only true digits well past the 15th decide the rounding.
        found = 0
        while found < 25:
            t = tie_target(tlow, thigh)
            x = sig(inverse(t), 21)
            v = real_value(f, [x])
            if v is None or tail(v)[:3] not in ("500", "499"):
                continue
            add(name, f, x)
            found += 1

    # Results that are exact ties: roots of exact squares and exact powers.
    for _ in range(20):
        y = D(random.randint(10**15, 10**16 - 1) // 10 * 10 + 5).scaleb(-random.randint(5, 20))
        lines.append(f"sqrt {y * y} {text15(y)}")
        lines.append(f"pow {y * y} 0.5 {text15(y)}")
    for _ in range(20):  # an 8-digit x ending in 5 squares to 16 digits ending in 25
        x = D(random.randint(31622777, 99999999) // 10 * 10 + 5).scaleb(-random.randint(0, 10))
        lines.append(f"pow {x} 2 {text15(x * x)}")
    for base, exponent in (("2", "-22"), ("-2", "-22"), ("5", "22"), ("-5", "23"), ("0.5", "22"), ("-0.2", "22")):
        lines.append(f"pow {base} {exponent} {text15(D(base) ** int(exponent))}")

    # Huge arguments of the circular functions: the reduction needs hundreds of digits of pi.
    for name, f in (("sin", mpmath.sin), ("cos", mpmath.cos), ("tan", mpmath.tan)):
        for e in (7, 12, 15, 20, 22, 30, 50, 100, 200, 300):
            mpmath.mp.dps = 400
            add(name, f, sig(mpf(random.uniform(1, 10)) * mpf(10) ** e, random.randint(1, 21)))
            mpmath.mp.dps = 60

    for _ in range(200):
        add("pow", mpmath.power, random_decimal(0.01, 100), random_decimal(-10, 10))
    for _ in range(30):
        add("pow", mpmath.power, random_decimal(-20, -0.1), str(random.randint(-8, 8)))
    for _ in range(200):
        add("atan2", mpmath.atan2, random_decimal(-100, 100), random_decimal(-100, 100))
    for y, x in (("0", "-2"), ("0", "3"), ("5", "0"), ("-5", "0"), ("1e-30", "-1"), ("-1e-30", "-1")):
        add("atan2", mpmath.atan2, y, x)
    return lines


COMPLEX = {
    "sqrt": mpmath.sqrt, "exp": mpmath.exp, "log": mpmath.log, "log10": mpmath.log10,
    "sin": mpmath.sin, "cos": mpmath.cos, "tan": mpmath.tan,
    "sinh": mpmath.sinh, "cosh": mpmath.cosh, "tanh": mpmath.tanh,
    "asin": mpmath.asin, "acos": mpmath.acos, "atan": mpmath.atan,
    "asinh": mpmath.asinh, "acosh": mpmath.acosh, "atanh": mpmath.atanh,
}
PERIODIC = ("sin", "cos", "tan", "sinh", "cosh", "tanh", "exp")


def quadrant_arguments(scale):
    args = []
    for sre, sim in ((1, 1), (-1, 1), (-1, -1), (1, -1)):
        for _ in range(10):
            args.append((f"{sre * abs(float(random_decimal(0.05, scale))):.12g}",
                         f"{sim * abs(float(random_decimal(0.05, scale))):.12g}"))
    return args


# The axes (with the branch cuts of the inverse functions), the branch points' neighbourhoods,
# tiny and large arguments, and parts of very different sizes.
EDGE_POINTS = [
    ("2", "0"), ("-2", "0"), ("0", "2"), ("0", "-2"), ("0.5", "0"), ("-0.5", "0"), ("0", "0.5"),
    ("0", "-0.5"), ("1.0000000001", "0"), ("-1.0000000001", "0"), ("0", "1.0000000001"),
    ("1", "1e-12"), ("-1", "-1e-12"), ("1e-12", "1"), ("-1e-12", "-1"), ("1e-12", "-1e-12"),
    ("-3e-9", "2e-9"), ("1e6", "1e-6"), ("-1e6", "1e-6"), ("1e-6", "-1e6"), ("1e8", "1e8"),
    ("0.6", "0.8000000000001"), ("0.99999999999", "1e-11"), ("30", "1"), ("-1", "-30"),
    ("1e15", "-1e-15"), ("-1e15", "1e-15"), ("1e-20", "1"), ("1", "1e-20"), ("-1", "1e-20"),
]


def complex_lines():
    lines = []
    for name, f in COMPLEX.items():
        scale = 3 if name in PERIODIC else 20
        for re, im in quadrant_arguments(scale) + EDGE_POINTS:
            if name in PERIODIC and (abs(float(re)) > 1000 or abs(float(im)) > 1000):
                continue
            try:
                v = f(mpc(mpf(re), mpf(im)))
            except (ValueError, ZeroDivisionError):
                continue
            if not (mpmath.isfinite(v.real) and mpmath.isfinite(v.imag)):
                continue
            lines.append(f"{name} {re} {im} {text15(v.real)} {text15(v.imag)}")
    for name, f in (("pow", mpmath.power), ("div", lambda z, w: z / w)):
        for (re, im), (re2, im2) in zip(quadrant_arguments(5), quadrant_arguments(3)):
            v = f(mpc(mpf(re), mpf(im)), mpc(mpf(re2), mpf(im2)))
            lines.append(f"{name} {re} {im} {re2} {im2} {text15(v.real)} {text15(v.imag)}")
    return lines


def lift(x):
    """A double as the engine lifts it: its shortest text, rounded half away from zero to 14
    significant digits."""
    return D(repr(x)).quantize(D(1).scaleb(D(repr(x)).adjusted() - 13), rounding=decimal.ROUND_HALF_UP) if x else D(0)


def random_double():
    return float(random_decimal(0.1, 10, random.randint(1, 17))) * 10.0 ** random.randint(-20, 20) * random.choice((1, -1))


def arithmetic_lines():
    """The engine's operator path: two doubles lifted, one operation, 15 digits out."""
    operations = {"add": lambda a, b: a + b, "sub": lambda a, b: a - b, "mul": lambda a, b: a * b,
                  "div": lambda a, b: a / b}
    lines = []

    def add(op, a, b):
        lines.append(f"{op} {a!r} {b!r} {text15(operations[op](lift(a), lift(b)))}")

    for op in operations:
        for _ in range(150):
            add(op, random_double(), random_double())
        add(op, 0.1, 0.2)
    # Exact ties of the 15-digit rounding, found by search: sums, products and quotients whose
    # exact value has 16 significant digits ending in 5.
    for op, pick in (("add", lambda: (float(random_decimal(1, 10, 14)), float(f"{random.choice((1, 3, 5, 7, 9)) * 5}e-{random.randint(15, 16)}"))),
                     ("sub", lambda: (float(random_decimal(1, 10, 14)), float(f"{random.choice((1, 3, 5, 7, 9)) * 5}e-{random.randint(15, 16)}"))),
                     ("mul", lambda: (float(random_decimal(1, 10, 14)), random.choice((2.5, 0.5, 1.5, 7.5, 0.25)))),
                     ("div", lambda: (float(random_decimal(1, 10, 14)), random.choice((2.0, 4.0, 8.0, 16.0, 0.8, 3.2))))):
        found = 0
        while found < 40:
            a, b = pick()
            exact = operations[op](lift(a), lift(b))
            digits = format(abs(exact).normalize(), "e").split("e")[0].replace(".", "")
            if len(digits) == 16 and digits[-1] == "5":
                add(op, a, b)
                found += 1
    return lines


def write(name, lines):
    with open(os.path.join(HERE, name), "w", newline="\n") as out:
        out.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    write("real.txt", real_lines())
    write("complex.txt", complex_lines())
    write("arithmetic.txt", arithmetic_lines())
