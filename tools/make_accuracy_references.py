#!/usr/bin/env python3
"""Writes the reference values of the accuracy test (tests/fixtures/accuracy/*.txt).

Run once by hand (python3 with mpmath, Debian's python3-mpmath); the output is committed and
no build or test runs Python. The seed is fixed, so a second run writes the same files.

Each data line is   ANGLE <TAB> EXPRESSION <TAB> TRUE VALUE <TAB> ROUNDED
  ANGLE       rad or deg: the angle unit the expression is evaluated in
  EXPRESSION  a line of the program's language
  TRUE VALUE  the exact value of the expression, 50 significant digits, from mpmath
  ROUNDED     the true value rounded to 14 significant digits, halves away from zero

The expressions keep to what the program and mpmath read alike: operands are short positive
decimals (a negative operand stands in parentheses), the exponent of ^ is one operand, since
a unary minus binds tighter than ^ in the program (-2^2 is 4), a fractional power has a positive
base (the program's power of a negative base is real), and implied multiplication, which the
program ranks with * and /, is written only where it starts a product. Results stay between
1e-9 and 1e14, clear of the zero tolerance and of the scientific form.
"""

import os
import random
import re
import sys

import mpmath
from mpmath import mp, mpf

mp.dps = 80
OUT = sys.argv[1] if len(sys.argv) > 1 else os.path.join(
    os.path.dirname(__file__), "..", "tests", "fixtures", "accuracy")


class Skip(Exception):
    """The sample leaves the ground both readers share; draw another."""


def rounded14(v):
    if v == 0:
        return "0"
    sign = "-" if v < 0 else ""
    a = abs(v)
    e = int(mpmath.floor(mpmath.log10(a)))
    while a / mpf(10) ** (e - 13) >= mpf(10) ** 14:
        e += 1
    while a / mpf(10) ** (e - 13) < mpf(10) ** 13:
        e -= 1
    m = int(mpmath.floor(a / mpf(10) ** (e - 13) + mpf("0.5")))
    if m == 10 ** 14:
        m //= 10
        e += 1
    d = str(m)
    return "%s%s.%se%+d" % (sign, d[0], d[1:], e)


def true50(v):
    if v == 0:
        return "0"
    return mpmath.nstr(v, 50, min_fixed=1, max_fixed=0, strip_zeros=False)


def acceptable(v):
    if isinstance(v, mpmath.mpc) or not mpmath.isfinite(v):
        return False
    return v == 0 or mpf("1e-9") <= abs(v) < mpf("1e14")


# --- random chained expressions ---------------------------------------------------------------

def operand(rng):
    kind = rng.random()
    if kind < 0.25:
        text = str(rng.randint(1, 999))
    elif kind < 0.6:
        text = "%d.%0*d" % (rng.randint(0, 99), rng.randint(1, 3), rng.randint(1, 999))
    elif kind < 0.8:
        text = "0.%0*d" % (rng.randint(2, 4), rng.randint(1, 99))
    else:
        text = "%d.%d" % (rng.randint(100, 99999), rng.randint(1, 9))
    return text, mpf(text)


def factor(rng, depth):
    """A factor: an operand, a power, a parenthesised chain or a built-in call."""
    r = rng.random()
    if depth <= 0 or r < 0.45:
        text, v = operand(rng)
        if rng.random() < 0.12:
            text, v = "(-%s)" % text, -v
    elif r < 0.6:
        inner, v = chain(rng, depth - 1)
        text = "(%s)" % inner
    elif r < 0.75:
        base, bv = operand(rng) if rng.random() < 0.6 else (lambda t: ("(%s)" % t[0], t[1]))(chain(rng, depth - 1))
        choice = rng.random()
        if choice < 0.6:
            k = rng.choice([2, 2, 3, 3, 4, 5])
            text, v = "%s^%d" % (base, k), bv ** k
        elif choice < 0.75:
            k = rng.choice([1, 2, 3])
            if bv == 0:
                raise Skip
            text, v = "%s^(-%d)" % (base, k), bv ** (-k)
        else:
            if bv <= 0:
                raise Skip
            w = rng.choice(["0.5", "1.5", "0.25", "2.5", "0.3", "1.2"])
            text, v = "%s^%s" % (base, w), bv ** mpf(w)
    else:
        inner, x = chain(rng, depth - 1)
        name = rng.choice(["SQRT", "LN", "EXP", "SIN", "COS", "ABS", "ATAN", "LOG10"])
        if name in ("SQRT", "LN", "LOG10") and x <= 0:
            raise Skip
        if name == "EXP" and abs(x) > 30:
            raise Skip
        if name in ("SIN", "COS") and abs(x) > 1000:
            raise Skip
        v = {"SQRT": mpmath.sqrt, "LN": mpmath.ln, "EXP": mpmath.exp, "SIN": mpmath.sin,
             "COS": mpmath.cos, "ABS": abs, "ATAN": mpmath.atan, "LOG10": mpmath.log10}[name](x)
        text = "%s[%s]" % (name, inner)
    if not mpmath.isfinite(v) or abs(v) > mpf("1e15"):
        raise Skip
    return text, v


def term(rng, depth):
    # An implied product: a number followed by a parenthesised chain, only at a term's start.
    if depth > 0 and rng.random() < 0.1:
        left, lv = operand(rng)
        inner, iv = chain(rng, depth - 1)
        text, v = "%s(%s)" % (left, inner), lv * iv
    else:
        text, v = factor(rng, depth)
    for _ in range(rng.choice([0, 0, 1, 1, 2, 3])):
        op = rng.choice("**/")
        rt, rv = factor(rng, depth)
        if op == "/":
            if abs(rv) < mpf("1e-6"):
                raise Skip
            v = v / rv
        else:
            v = v * rv
        text += op + rt
    return text, v


def chain(rng, depth):
    text, v = term(rng, depth)
    for _ in range(rng.choice([0, 1, 1, 2, 2, 3])):
        op = rng.choice("+-")
        rt, rv = term(rng, depth)
        v = v + rv if op == "+" else v - rv
        text += op + rt
    return text, v


def chained_expressions(count, rng):
    rows, seen = [], set()
    while len(rows) < count:
        try:
            text, v = chain(rng, rng.choice([1, 1, 2, 2, 3]))
        except Skip:
            continue
        ops = sum(text.count(c) for c in "+-*/^[(")
        if ops < 2 or text in seen or not acceptable(v):
            continue
        seen.add(text)
        rows.append(("rad", text, v))
    return rows


# --- every real built-in over its domain ------------------------------------------------------

def num(rng, lo, hi, digits=6):
    """A decimal between lo and hi of at most `digits` significant digits, as text and value."""
    x = mpf(lo) + (mpf(hi) - mpf(lo)) * rng.random()
    if x == 0:
        return "0", mpf(0)
    text = mpmath.nstr(x, rng.randint(2, digits), min_fixed=-20, max_fixed=20)
    if "e" in text:
        raise Skip
    if text.endswith(".0"):
        text = text[:-2]
    return text, mpf(text)


def normal_quantile(p):
    return mpmath.sqrt(2) * mpmath.erfinv(2 * p - 1)


def quantile(cdf, p, lo, hi):
    """The x in (lo, hi) with cdf(x) = p: bisection, then Anderson's rule on the narrowed bracket."""
    lo, hi = mpf(lo), mpf(hi)
    for _ in range(80):
        mid = (lo + hi) / 2
        if cdf(mid) < p:
            lo = mid
        else:
            hi = mid
    return mpmath.findroot(lambda t: cdf(t) - p, (lo, hi), solver="anderson")


def t_cdf(x, v):
    tail = mpmath.betainc(v / 2, mpf("0.5"), 0, v / (v + x * x), regularized=True) / 2
    return 1 - tail if x >= 0 else tail


def t_pdf(x, v):
    return mpmath.gamma((v + 1) / 2) / (mpmath.sqrt(v * mpmath.pi) * mpmath.gamma(v / 2)) * \
        (1 + x * x / v) ** (-(v + 1) / 2)


def f_cdf(x, a, b):
    return mpmath.betainc(a / 2, b / 2, 0, a * x / (a * x + b), regularized=True)


def f_pdf(x, a, b):
    return mpmath.sqrt((a * x) ** a * b ** b / (a * x + b) ** (a + b)) / (x * mpmath.beta(a / 2, b / 2))


def beta_cdf(x, a, b):
    return mpmath.betainc(a, b, 0, x, regularized=True)


def gamma_cdf(x, a, s):
    return mpmath.gammainc(a, 0, x / s, regularized=True)


def chisq_cdf(x, v):
    return mpmath.gammainc(v / 2, 0, x / 2, regularized=True)


def laplace_cdf(x, a, s):
    return mpmath.exp((x - a) / s) / 2 if x < a else 1 - mpmath.exp(-(x - a) / s) / 2


def stats_list(rng, n_lo=2, n_hi=12, lo=0.1, hi=100):
    values = [num(rng, lo, hi, 5) for _ in range(rng.randint(n_lo, n_hi))]
    return "{" + ", ".join(t for t, _ in values) + "}", [v for _, v in values]


def mean(xs):
    return sum(xs) / len(xs)


def svar(xs):
    m = mean(xs)
    return sum((x - m) ** 2 for x in xs) / (len(xs) - 1)


def pvar(xs):
    m = mean(xs)
    return sum((x - m) ** 2 for x in xs) / len(xs)


def spread(xs):
    return mpmath.sqrt(svar(xs) if len(xs) < 31 else pvar(xs))


def median(xs):
    s, n = sorted(xs), len(xs)
    return s[n // 2] if n % 2 else (s[n // 2 - 1] + s[n // 2]) / 2


def percentile(xs, p):
    s, n = sorted(xs), len(xs)
    f = (n + 1) * p / 100 - 1
    if f >= n - 1:
        return s[-1]
    if f <= 0:
        return s[0]
    lo = int(mpmath.floor(f))
    return s[lo] + (f - lo) * (s[lo + 1] - s[lo])


def short_term_spread(xs):
    if len(xs) == 2:
        pairs = [abs(xs[0] - xs[1])]
    else:
        pairs = [max(abs(g[0] - g[1]), abs(g[0] - g[2]), abs(g[1] - g[2]))
                 for g in (xs[i:i + 3] for i in range(0, len(xs) - 2, 3))]
    return sum(pairs) / len(pairs) / mpf("1.69")


def list_sample(rng, name):
    text, xs = stats_list(rng)
    if name in ("SKEW", "KURT") and len(xs) < 3:
        raise Skip
    if name == "RANK":
        pick = rng.choice(xs)
        return "RANK[%s, %s]" % (text, mpmath.nstr(pick, 10)), list_true(name, xs, [pick])
    if name == "PRCTLE":
        p, pv = num(rng, 1, 99, 2)
        return "PRCTLE[%s, %s]" % (text, p), list_true(name, xs, [pv])
    return "%s[%s]" % (name, text), list_true(name, xs, [])


def list_true(name, xs, extra):
    """The true value of a list function of the values xs and its further parameters."""
    m = mean(xs)
    simple = {
        "MEAN": lambda: m,
        "GMEAN": lambda: mpmath.exp(sum(mpmath.ln(x) for x in xs) / len(xs)),
        "HMEAN": lambda: len(xs) / sum(1 / x for x in xs),
        "QMEAN": lambda: mpmath.sqrt(sum(x * x for x in xs) / len(xs)),
        "RMS": lambda: mpmath.sqrt(sum(x * x for x in xs) / len(xs)),
        "MEDIAN": lambda: median(xs),
        "MIN": lambda: min(xs),
        "MAX": lambda: max(xs),
        "SUMX": lambda: sum(xs),
        "SUMXSQ": lambda: sum(x * x for x in xs),
        "AVGDEV": lambda: sum(abs(x - m) for x in xs) / len(xs),
        "SUMDEVSQ": lambda: sum((x - m) ** 2 for x in xs),
        "RANGE": lambda: max(xs) - min(xs),
        "COUNT": lambda: mpf(len(xs)),
        "SVAR": lambda: svar(xs),
        "PVAR": lambda: pvar(xs),
        "SSTDEV": lambda: mpmath.sqrt(svar(xs)),
        "PSTDEV": lambda: mpmath.sqrt(pvar(xs)),
        "STSTDEV": lambda: short_term_spread(xs),
        "SKEW": lambda: sum(((x - m) / spread(xs)) ** 3 for x in xs) / len(xs),
        "KURT": lambda: sum(((x - m) / spread(xs)) ** 4 for x in xs) / len(xs) - 3,
        "LQRTLE": lambda: percentile(xs, 25),
        "UQRTLE": lambda: percentile(xs, 75),
        "SRESIST": lambda: sum(xs),
        "PRESIST": lambda: 1 / sum(1 / x for x in xs),
    }
    if name in simple:
        return simple[name]()
    if name == "RANK":
        ordered = sorted(xs)
        if extra[0] not in ordered:
            return mpf(0)
        return ordered.index(extra[0]) + mpf(ordered.count(extra[0]) - 1) / 2 + 1
    if name == "PRCTLE":
        return percentile(xs, extra[0])
    raise KeyError(name)


LIST_FUNCTIONS = ["MEAN", "GMEAN", "HMEAN", "QMEAN", "RMS", "MEDIAN", "MIN", "MAX", "SUMX", "SUMXSQ",
                  "AVGDEV", "SUMDEVSQ", "RANGE", "COUNT", "RANK", "SVAR", "PVAR", "SSTDEV", "PSTDEV",
                  "STSTDEV", "SKEW", "KURT", "PRCTLE", "LQRTLE", "UQRTLE", "SRESIST", "PRESIST"]


def scalar_samplers():
    """name -> (angle, sampler(rng) -> (argument texts, values), true value from the values)."""
    pi = mpmath.pi

    def one(lo, hi, digits=6):
        return lambda rng: [num(rng, lo, hi, digits)]

    def several(*ranges):
        return lambda rng: [num(rng, lo, hi, d) for lo, hi, d in ranges]

    def ints(*ranges):
        return lambda rng: [(str(k), mpf(k)) for k in (rng.randint(lo, hi) for lo, hi in ranges)]

    def ordered_ints(lo, hi):
        def draw(rng):
            n = rng.randint(lo, hi)
            r = rng.randint(0, n)
            return [(str(n), mpf(n)), (str(r), mpf(r))]
        return draw

    def prob():
        return (mpf("0.001"), mpf("0.999"), 4)

    s = {}
    s["SQRT"] = ("rad", one(0.0001, 1e6), mpmath.sqrt)
    s["LN"] = ("rad", one(0.0001, 1e6), mpmath.ln)
    s["LOG10"] = ("rad", one(0.0001, 1e6), mpmath.log10)
    s["LOG"] = ("rad", lambda rng: [num(rng, 0.01, 1e5), (str(rng.randint(2, 20)), None)],
                lambda x, b: mpmath.ln(x) / mpmath.ln(b))
    s["EXP"] = ("rad", one(-25, 25), mpmath.exp)
    s["POW"] = ("rad", several((0.01, 100, 5), (-6, 6, 3)),
                lambda x, w: x ** w if x >= 0 else -(-x) ** w)  # the real root of a negative base
    s["ABS"] = ("rad", one(-1000, 1000), abs)
    s["ROUND"] = ("rad", one(-1000, 1000), lambda x: mpmath.sign(x) * mpmath.floor(abs(x) + mpf("0.5")))
    s["TRUNC"] = ("rad", one(-1000, 1000), lambda x: mpmath.sign(x) * mpmath.floor(abs(x)))
    s["FLOOR"] = ("rad", one(-1000, 1000), mpmath.floor)
    s["CEIL"] = ("rad", one(-1000, 1000), mpmath.ceil)
    s["REM"] = ("rad", ints((-5000, 5000), (1, 97)), lambda a, b: mpmath.sign(a) * (abs(a) % b))
    s["GCD"] = ("rad", ints((1, 100000), (1, 100000)), lambda a, b: mpf(__import__("math").gcd(int(a), int(b))))
    s["LCM"] = ("rad", ints((1, 10000), (1, 10000)),
                lambda a, b: mpf(int(a) * int(b) // __import__("math").gcd(int(a), int(b))))
    s["CUBERT"] = ("rad", one(-1e6, 1e6), lambda x: mpmath.sign(x) * mpmath.cbrt(abs(x)))
    s["DEG"] = ("rad", one(-10, 10), lambda x: x * 180 / pi)
    s["RAD"] = ("rad", one(-720, 720), lambda x: x * pi / 180)
    s["SIN"] = ("rad", one(-10, 10), mpmath.sin)
    s["COS"] = ("rad", one(-10, 10), mpmath.cos)
    s["TAN"] = ("rad", one(-1.5, 1.5), mpmath.tan)
    s["SINH"] = ("rad", one(-10, 10), mpmath.sinh)
    s["COSH"] = ("rad", one(-10, 10), mpmath.cosh)
    s["TANH"] = ("rad", one(-5, 5), mpmath.tanh)
    s["ASIN"] = ("rad", one(-0.999, 0.999), mpmath.asin)
    s["ACOS"] = ("rad", one(-0.999, 0.999), mpmath.acos)
    s["ATAN"] = ("rad", one(-100, 100), mpmath.atan)
    s["ASINH"] = ("rad", one(-1000, 1000), mpmath.asinh)
    s["ACOSH"] = ("rad", one(1.001, 1000), mpmath.acosh)
    s["ATANH"] = ("rad", one(-0.999, 0.999), mpmath.atanh)
    s["HYPOT"] = ("rad", several((-1000, 1000, 5), (-1000, 1000, 5)), lambda x, y: mpmath.hypot(x, y))
    s["ERF"] = ("rad", one(-3, 3), mpmath.erf)
    s["ERFC"] = ("rad", one(-3, 4), mpmath.erfc)
    s["COMB"] = ("rad", ordered_ints(1, 60), lambda n, r: mpmath.binomial(n, r))
    s["PERM"] = ("rad", ordered_ints(1, 25), lambda n, r: mpmath.factorial(n) / mpmath.factorial(n - r))
    # The trigonometric functions in degrees too: the conversion is part of what is measured.
    s["SIN@deg"] = ("deg", one(-360, 360), lambda x: mpmath.sin(x * pi / 180))
    s["COS@deg"] = ("deg", one(-360, 360), lambda x: mpmath.cos(x * pi / 180))
    s["TAN@deg"] = ("deg", one(-85, 85), lambda x: mpmath.tan(x * pi / 180))
    s["ASIN@deg"] = ("deg", one(-0.999, 0.999), lambda x: mpmath.asin(x) * 180 / pi)
    s["ACOS@deg"] = ("deg", one(-0.999, 0.999), lambda x: mpmath.acos(x) * 180 / pi)
    s["ATAN@deg"] = ("deg", one(-100, 100), lambda x: mpmath.atan(x) * 180 / pi)
    # Real answers of complex arguments.
    s["CMAG"] = ("rad", several((-100, 100, 4), (-100, 100, 4)), lambda a, b: mpmath.hypot(a, b))
    s["NORM"] = ("rad", several((-100, 100, 4), (-100, 100, 4)), lambda a, b: a * a + b * b)
    s["CANGLE"] = ("rad", several((-100, 100, 4), (-100, 100, 4)), lambda a, b: mpmath.atan2(b, a))

    # The normal distribution and scores, numeric shapes.
    s["NORDIST"] = ("rad", several((-5, 5, 4), (-2, 2, 3), (0.2, 3, 3)), lambda x, m, sd: mpmath.npdf(x, m, sd))
    s["NORPROB"] = ("rad", several((-3, 0, 3), (0, 3, 3), (-1, 1, 3), (0.5, 2, 3)),
                    lambda a, b, m, sd: mpmath.ncdf(b, m, sd) - mpmath.ncdf(a, m, sd))
    s["NORMX"] = ("rad", several(prob(), (-5, 5, 3), (0.2, 3, 3)), lambda p, m, sd: m + sd * normal_quantile(p))
    s["ZSCORE"] = ("rad", several((-10, 10, 4), (-5, 5, 3), (0.2, 3, 3)), lambda x, m, sd: (x - m) / sd)
    cap = lambda lsl, usl, sd: (usl - lsl) / (6 * sd)
    capl = lambda lsl, m, sd: (m - lsl) / (3 * sd)
    capu = lambda usl, m, sd: (usl - m) / (3 * sd)
    capk = lambda lsl, usl, m, sd: min(capl(lsl, m, sd), capu(usl, m, sd))
    s["CP"] = ("rad", several((0, 5, 3), (10, 20, 3), (0.2, 3, 3)), cap)
    s["PP"] = s["CP"]
    s["CPL"] = ("rad", several((0, 5, 3), (8, 12, 3), (0.2, 3, 3)), capl)
    s["PPL"] = s["CPL"]
    s["CPU"] = ("rad", several((14, 20, 3), (8, 12, 3), (0.2, 3, 3)), capu)
    s["PPU"] = s["CPU"]
    s["CPK"] = ("rad", several((0, 5, 3), (14, 20, 3), (8, 12, 3), (0.2, 3, 3)), capk)
    s["PPK"] = s["CPK"]
    s["CPM"] = ("rad", several((0, 5, 3), (14, 20, 3), (8, 12, 3), (8, 12, 3), (0.2, 3, 3)),
                lambda lsl, usl, t, m, sd: (usl - lsl) / (6 * mpmath.sqrt(sd * sd + (m - t) ** 2)))

    # Distributions: CDF, PDF and quantile of each.
    s["BETACDF"] = ("rad", several((0.01, 0.99, 4), (0.5, 6, 3), (0.5, 6, 3)), beta_cdf)
    s["BETAPDF"] = ("rad", several((0.01, 0.99, 4), (0.5, 6, 3), (0.5, 6, 3)),
                    lambda x, a, b: x ** (a - 1) * (1 - x) ** (b - 1) / mpmath.beta(a, b))
    s["BETAX"] = ("rad", several(prob(), (0.5, 6, 3), (0.5, 6, 3)),
                  lambda p, a, b: quantile(lambda t: beta_cdf(t, a, b), p, 0, 1))
    s["CAUCHYCDF"] = ("rad", several((-20, 20, 4), (-2, 2, 3), (0.2, 3, 3)),
                      lambda x, a, sc: mpf("0.5") + mpmath.atan((x - a) / sc) / pi)
    s["CAUCHYPDF"] = ("rad", several((-20, 20, 4), (-2, 2, 3), (0.2, 3, 3)),
                      lambda x, a, sc: 1 / (pi * sc * (1 + ((x - a) / sc) ** 2)))
    s["CAUCHYX"] = ("rad", several(prob(), (-2, 2, 3), (0.2, 3, 3)),
                    lambda p, a, sc: a + sc * mpmath.tan(pi * (p - mpf("0.5"))))
    s["DBLEXPCDF"] = ("rad", several((-10, 10, 4), (-2, 2, 3), (0.2, 3, 3)), laplace_cdf)
    s["DBLEXPPDF"] = ("rad", several((-10, 10, 4), (-2, 2, 3), (0.2, 3, 3)),
                      lambda x, a, sc: mpmath.exp(-abs(x - a) / sc) / (2 * sc))
    s["DBLEXPX"] = ("rad", several(prob(), (-2, 2, 3), (0.2, 3, 3)),
                    lambda p, a, sc: a + sc * mpmath.ln(2 * p) if p < mpf("0.5") else a - sc * mpmath.ln(2 * (1 - p)))
    s["EXPCDF"] = ("rad", several((0.01, 10, 4), (0.1, 5, 3)), lambda x, lam: 1 - mpmath.exp(-lam * x))
    s["EXPPDF"] = ("rad", several((0.01, 10, 4), (0.1, 5, 3)), lambda x, lam: lam * mpmath.exp(-lam * x))
    s["EXPX"] = ("rad", several(prob(), (0.1, 5, 3)), lambda p, lam: -mpmath.ln(1 - p) / lam)
    s["GAMMACDF"] = ("rad", several((0.05, 20, 4), (0.5, 8, 3), (0.3, 3, 3)), gamma_cdf)
    s["GAMMAPDF"] = ("rad", several((0.05, 20, 4), (0.5, 8, 3), (0.3, 3, 3)),
                     lambda x, a, sc: x ** (a - 1) * mpmath.exp(-x / sc) / (mpmath.gamma(a) * sc ** a))
    s["GAMMAX"] = ("rad", several(prob(), (0.5, 8, 3), (0.3, 3, 3)),
                   lambda p, a, sc: quantile(lambda t: gamma_cdf(t, a, sc), p, mpf("1e-30"), 500))
    s["LOGISTICCDF"] = ("rad", several((-10, 10, 4), (-2, 2, 3), (0.2, 3, 3)),
                        lambda x, a, b: 1 / (1 + mpmath.exp(-(x - a) / b)))
    s["LOGISTICPDF"] = ("rad", several((-10, 10, 4), (-2, 2, 3), (0.2, 3, 3)),
                        lambda x, a, b: mpmath.exp(-(x - a) / b) / (b * (1 + mpmath.exp(-(x - a) / b)) ** 2))
    s["LOGISTICX"] = ("rad", several(prob(), (-2, 2, 3), (0.2, 3, 3)),
                      lambda p, a, b: a + b * mpmath.ln(p / (1 - p)))
    s["LOGNORMCDF"] = ("rad", several((0.05, 20, 4), (-1, 1, 3), (0.2, 2, 3)),
                       lambda x, m, sd: mpmath.ncdf((mpmath.ln(x) - m) / sd))
    s["LOGNORMPDF"] = ("rad", several((0.05, 20, 4), (-1, 1, 3), (0.2, 2, 3)),
                       lambda x, m, sd: mpmath.npdf((mpmath.ln(x) - m) / sd) / (x * sd))
    s["LOGNORMX"] = ("rad", several(prob(), (-1, 1, 3), (0.2, 2, 3)),
                     lambda p, m, sd: mpmath.exp(m + sd * normal_quantile(p)))
    s["RAYLEIGHCDF"] = ("rad", several((0.01, 10, 4), (0.2, 3, 3)),
                        lambda x, sc: 1 - mpmath.exp(-x * x / (2 * sc * sc)))
    s["RAYLEIGHPDF"] = ("rad", several((0.01, 10, 4), (0.2, 3, 3)),
                        lambda x, sc: x / (sc * sc) * mpmath.exp(-x * x / (2 * sc * sc)))
    s["RAYLEIGHX"] = ("rad", several(prob(), (0.2, 3, 3)),
                      lambda p, sc: sc * mpmath.sqrt(-2 * mpmath.ln(1 - p)))
    s["UNIFORMCDF"] = ("rad", several((0.5, 9.5, 4), (-5, 0, 3), (10, 20, 3)), lambda x, a, b: (x - a) / (b - a))
    s["UNIFORMPDF"] = ("rad", several((0.5, 9.5, 4), (-5, 0, 3), (10, 20, 3)), lambda x, a, b: 1 / (b - a))
    s["UNIFORMX"] = ("rad", several(prob(), (-5, 0, 3), (10, 20, 3)), lambda p, a, b: a + p * (b - a))
    s["WEIBULLCDF"] = ("rad", several((0.01, 5, 4), (0.5, 5, 3), (0.3, 3, 3)),
                       lambda x, g, b: 1 - mpmath.exp(-(x / b) ** g))
    s["WEIBULLPDF"] = ("rad", several((0.01, 5, 4), (0.5, 5, 3), (0.3, 3, 3)),
                       lambda x, g, b: g / b * (x / b) ** (g - 1) * mpmath.exp(-(x / b) ** g))
    s["WEIBULLX"] = ("rad", several(prob(), (0.5, 5, 3), (0.3, 3, 3)),
                     lambda p, g, b: b * (-mpmath.ln(1 - p)) ** (1 / g))
    s["CHISQCDF"] = ("rad", lambda rng: [num(rng, 0.05, 30, 4), (str(rng.randint(1, 20)), None)], chisq_cdf)
    s["CHISQPDF"] = ("rad", lambda rng: [num(rng, 0.05, 30, 4), (str(rng.randint(1, 20)), None)],
                     lambda x, v: x ** (v / 2 - 1) * mpmath.exp(-x / 2) / (2 ** (v / 2) * mpmath.gamma(v / 2)))
    s["CHISQX"] = ("rad", lambda rng: [num(rng, *prob()), (str(rng.randint(1, 20)), None)],
                   lambda p, v: quantile(lambda t: chisq_cdf(t, v), p, mpf("1e-30"), 200))
    dof2 = lambda rng: [num(rng, 0.05, 8, 4), (str(rng.randint(1, 20)), None), (str(rng.randint(1, 30)), None)]
    s["FRATIOCDF"] = ("rad", dof2, f_cdf)
    s["FRATIOPDF"] = ("rad", dof2, f_pdf)
    s["FRATIOX"] = ("rad", lambda rng: [num(rng, 0.01, 0.99, 3), (str(rng.randint(1, 20)), None),
                                        (str(rng.randint(2, 30)), None)],
                    lambda p, a, b: quantile(lambda t: f_cdf(t, a, b), p, mpf("1e-30"), 1e4))
    s["NORMALCDF"] = ("rad", several((-5, 5, 4), (-2, 2, 3), (0.2, 3, 3)), lambda x, m, sd: mpmath.ncdf(x, m, sd))
    s["NORMALPDF"] = ("rad", several((-5, 5, 4), (-2, 2, 3), (0.2, 3, 3)), lambda x, m, sd: mpmath.npdf(x, m, sd))
    s["NORMALX"] = ("rad", several(prob(), (-5, 5, 3), (0.2, 3, 3)), lambda p, m, sd: m + sd * normal_quantile(p))
    tdof = lambda lo, hi, d: lambda rng: [num(rng, lo, hi, d), (str(rng.randint(1, 30)), None)]
    s["STUDTCDF"] = ("rad", tdof(-6, 6, 4), t_cdf)
    s["STUDTPDF"] = ("rad", tdof(-6, 6, 4), t_pdf)
    s["STUDTX"] = ("rad", tdof(0.01, 0.99, 3),
                   lambda p, v: quantile(lambda t: t_cdf(t, v), p, -1e4, 1e4))
    return s


def call_text(name, texts):
    if name in ("CMAG", "NORM", "CANGLE"):
        re, im = texts
        return "%s[%s%s%si]" % (name, re, "" if im.startswith("-") else "+", im)
    return "%s[%s]" % (name, ", ".join(texts))


def builtin_samples(rng, per_function):
    rows = []
    for key, (angle, draw, true) in scalar_samplers().items():
        name = key.split("@")[0]
        seen, tries = set(), 0
        while len([r for r in rows if r[3] == key]) < per_function and tries < 50 * per_function:
            tries += 1
            try:
                pars = draw(rng)
            except Skip:
                continue
            texts = [t for t, _ in pars]
            values = [mpf(t) if v is None else v for t, v in pars]
            text = call_text(name, texts)
            if text in seen:
                continue
            try:
                v = true(*values)
            except (ZeroDivisionError, ValueError):
                continue
            if not acceptable(v):
                continue
            seen.add(text)
            rows.append((angle, text, v, key))
    for name in LIST_FUNCTIONS:
        seen, count = set(), 0
        while count < per_function // 2:
            try:
                text, v = list_sample(rng, name)
            except Skip:
                continue
            if text in seen or not acceptable(v):
                continue
            seen.add(text)
            count += 1
            rows.append(("rad", text, v, name))
    return [(a, t, v) for a, t, v, _ in rows]


# Examples of the documentation: answers quoted in the program's texts and the manual's example of
# each built-in (data/builtins.txt), all in degrees, the program's default angle unit.
QUOTED_EXAMPLES = [
    ("0.1+0.2", lambda: mpf("0.3")),
    ("1/3", lambda: mpf(1) / 3),
    ("2/4", lambda: mpf("0.5")),
    ("1/3*3", lambda: mpf(1)),
    ("1/3+1/3+1/3", lambda: mpf(1)),
    ("LOG[8,2]", lambda: mpf(3)),
    ("LOGB[8,2]", lambda: mpf(3)),
    ("e*e", lambda: mpmath.e ** 2),
    ("EXP(2)", lambda: mpmath.exp(2)),
    ("SQRT(4)", lambda: mpf(2)),
    ("SIN(30)", lambda: mpf("0.5")),
    ("CUBERT(-8)", lambda: mpf(-2)),
    ("(-8)^(1/3)", lambda: mpf(-2)),
    ("2^-1", lambda: mpf("0.5")),
    ("-2^2", lambda: mpf(4)),
    ("2--3", lambda: mpf(5)),
    ("1e+2", lambda: mpf(100)),
    ("1E-2", lambda: mpf("0.01")),
    ("MEAN[{1,2}]", lambda: mpf("1.5")),
]

# Built-ins whose example is complex, random, logical, printed or takes another shape.
NOT_MEASURED = {"REAL", "IMAG", "NORM", "CMAG", "CONJ", "CANGLE", "PTOC", "MODE", "WSNORM", "SUMDEV", "AND",
                "OR", "NOT", "IF", "RTOP", "PTOR", "BASECON", "e", "PLANK", "BOLTZMANN"}
TRIG_IN_DEGREES = {"SIN", "COS", "TAN", "ASIN", "ACOS", "ATAN"}


def example_value(text):
    """The value of one parameter of a manual example: a number, a sum or PI/2."""
    return eval(re.sub(r"(\d+(\.\d*)?)", r"mpf('\1')", text).replace("PI", "mpmath.pi").replace("^", "**"),
                {"mpf": mpf, "mpmath": mpmath})


def manual_examples(builtins_file):
    samplers = scalar_samplers()
    constants = {"PI": mpmath.pi, "EULER": mpmath.euler}
    rows = []
    for line in open(builtins_file):
        if line.startswith("#"):
            continue
        name, _, _, example = line.rstrip("\n").split("\t")
        if name in NOT_MEASURED or "DEV[" in example or name == "RAND" or re.search(r"\di\b", example):
            continue
        if name in constants:
            rows.append(("deg", example, constants[name]))
            continue
        if "[" not in example:
            continue  # a physical constant: its value is its definition
        call = re.fullmatch(r"(\w+)\[(\{[^}]*\})?(?:, )?(.*)\]", example)
        if not call:
            rows.append(("deg", example, example_value(example)))
            continue
        listed = [example_value(t) for t in call.group(2)[1:-1].split(",")] if call.group(2) else None
        pars = [example_value(t) for t in call.group(3).split(",")] if call.group(3) else []
        if listed is None:
            key = name + "@deg" if name in TRIG_IN_DEGREES else name
            value = samplers[key][2](*pars)
        elif name in ("CP", "PP"):
            spread_of_list = short_term_spread(listed) if name == "CP" else mpmath.sqrt(svar(listed))
            value = (pars[1] - pars[0]) / (6 * spread_of_list)
        else:
            value = list_true(name, listed, pars)
        rows.append(("deg", example, value))
    return rows


def documented_examples():
    rows = [("deg", text, value()) for text, value in QUOTED_EXAMPLES]
    return rows + manual_examples(os.path.join(os.path.dirname(__file__), "..", "data", "builtins.txt"))


def write(path, title, rows):
    with open(path, "w") as f:
        f.write("# %s\n" % title)
        f.write("# Made by tools/make_accuracy_references.py with mpmath %s; do not edit by hand.\n" % mpmath.__version__)
        f.write("# angle<TAB>expression<TAB>true value (50 digits)<TAB>true value rounded to 14 digits\n")
        for angle, text, v in rows:
            f.write("%s\t%s\t%s\t%s\n" % (angle, text, true50(v), rounded14(v)))


def main():
    os.makedirs(OUT, exist_ok=True)
    write(os.path.join(OUT, "chained.txt"), "Random chained expressions with their true values.",
          chained_expressions(2000, random.Random(33)))
    write(os.path.join(OUT, "functions.txt"), "The real built-in functions over their domains with their true values.",
          builtin_samples(random.Random(3333), 40))
    write(os.path.join(OUT, "examples.txt"), "The answers quoted in the documentation and the manual's examples.",
          documented_examples())


if __name__ == "__main__":
    main()
