#!/usr/bin/env python3
"""Writes library_samples.txt: one call of every function of data/Quorvex.lib at a sample point,
with its value computed here, independently of the program, by mpmath at 40 digits.

Each line: CALL<TAB>VALUE (15 significant digits). Angles are in degrees, the program's default.
Run from the repository root: python3 tests/data/library/make_library_samples.py
"""
import mpmath as mp

mp.mp.dps = 40
d = mp.radians
GRAVITY, GRAVCON, PLANK, LIGHT, GAS = mp.mpf('9.80665'), mp.mpf('6.6732e-11'), mp.mpf('6.6262e-34'), mp.mpf(299792458), mp.mpf('8.31434')
ABSTEMP = mp.mpf('-273.15')
PI = mp.pi

samples = {
    'COT': ([35], lambda x: 1 / mp.tan(d(x))),
    'SEC': ([35], lambda x: 1 / mp.cos(d(x))),
    'CSC': ([35], lambda x: 1 / mp.sin(d(x))),
    'ACOT': ([2], lambda x: mp.degrees(mp.atan(1 / x))),
    'ASEC': ([2], lambda x: mp.degrees(mp.acos(1 / x))),
    'ACSC': ([2], lambda x: mp.degrees(mp.asin(1 / x))),
    'COTH': ([0.5], lambda x: 1 / mp.tanh(x)),
    'SECH': ([0.5], lambda x: 1 / mp.cosh(x)),
    'CSCH': ([0.5], lambda x: 1 / mp.sinh(x)),
    'VERSIN': ([35], lambda x: 1 - mp.cos(d(x))),
    'HAVERSIN': ([35], lambda x: (1 - mp.cos(d(x))) / 2),
    'EXSEC': ([35], lambda x: 1 / mp.cos(d(x)) - 1),
    'QUADROOT1': ([2, -7, 3], lambda a, b, c: (-b + mp.sqrt(b * b - 4 * a * c)) / (2 * a)),
    'QUADROOT2': ([2, -7, 3], lambda a, b, c: (-b - mp.sqrt(b * b - 4 * a * c)) / (2 * a)),
    'DISCRIM': ([2, -7, 3], lambda a, b, c: b * b - 4 * a * c),
    'NTHROOT': ([81, 4], lambda x, n: mp.power(x, 1 / mp.mpf(n))),
    'LOGB': ([100, 3], lambda x, b: mp.log(x) / mp.log(b)),
    'HYPOT3': ([1, 2, 3], lambda a, b, c: mp.sqrt(a * a + b * b + c * c)),
    'SUMN': ([100], lambda n: n * (n + 1) / 2),
    'SUMSQN': ([10], lambda n: n * (n + 1) * (2 * n + 1) / 6),
    'ARITHSUM': ([3, 2, 10], lambda a, dd, n: n * (2 * a + (n - 1) * dd) / 2),
    'GEOSUM': ([1, 0.5, 10], lambda a, r, n: a * (1 - mp.power(r, n)) / (1 - r)),
    'SIGMOID': ([1.5], lambda x: 1 / (1 + mp.exp(-x))),
    'CIRCLEAREA': ([2.5], lambda r: PI * r * r),
    'CIRCUMFERENCE': ([2.5], lambda r: 2 * PI * r),
    'SPHEREVOL': ([2.5], lambda r: 4 * PI * r ** 3 / 3),
    'SPHEREAREA': ([2.5], lambda r: 4 * PI * r * r),
    'CYLVOL': ([2, 5], lambda r, h: PI * r * r * h),
    'CONEVOL': ([2, 5], lambda r, h: PI * r * r * h / 3),
    'TRIAREA': ([3, 7], lambda b, h: mp.mpf(b) * h / 2),
    'HERON': ([5, 6, 7], lambda a, b, c: mp.sqrt((a + b + c) * (-a + b + c) * (a - b + c) * (a + b - c)) / 4),
    'ELLIPSEAREA': ([3, 2], lambda a, b: PI * a * b),
    'DIST2D': ([1, 2, 4, 6], lambda x1, y1, x2, y2: mp.sqrt((x2 - x1) ** 2 + (y2 - y1) ** 2)),
    'DIST3D': ([1, 2, 3, 4, 6, 8], lambda x1, y1, z1, x2, y2, z2: mp.sqrt((x2 - x1) ** 2 + (y2 - y1) ** 2 + (z2 - z1) ** 2)),
    'POLYANGLE': ([7], lambda n: mp.mpf(180) * (n - 2) / n),
    'KINETIC': ([2, 3], lambda m, v: mp.mpf(m) * v * v / 2),
    'POTENTIAL': ([2, 10], lambda m, h: m * GRAVITY * h),
    'MOMENTUM': ([2, 3], lambda m, v: mp.mpf(m) * v),
    'FREEFALLT': ([20], lambda h: mp.sqrt(2 * h / GRAVITY)),
    'PENDULUM': ([1], lambda l: 2 * PI * mp.sqrt(l / GRAVITY)),
    'GRAVFORCE': ([5.97e24, 7.35e22, 3.84e8], lambda m1, m2, r: GRAVCON * mp.mpf(m1) * mp.mpf(m2) / mp.mpf(r) ** 2),
    'PHOTONENERGY': ([5e14], lambda f: PLANK * f),
    'WAVELENGTH': ([5e14], lambda f: LIGHT / f),
    'IDEALGASP': ([1, 300, 0.025], lambda n, t, v: n * GAS * t / mp.mpf(v)),
    'LORENTZ': ([1e8], lambda v: 1 / mp.sqrt(1 - (v / LIGHT) ** 2)),
    'DENSITY': ([10, 4], lambda m, v: mp.mpf(m) / v),
    'POWERVI': ([12, 2.5], lambda v, i: v * mp.mpf(i)),
    'POWERIR': ([2.5, 4], lambda i, r: mp.mpf(i) ** 2 * r),
    'POWERVR': ([12, 4], lambda v, r: mp.mpf(v) ** 2 / r),
    'XL': ([60, 0.1], lambda f, l: 2 * PI * f * mp.mpf(l)),
    'XC': ([60, 1e-6], lambda f, c: 1 / (2 * PI * f * mp.mpf(c))),
    'RESONANCE': ([0.01, 1e-6], lambda l, c: 1 / (2 * PI * mp.sqrt(mp.mpf(l) * mp.mpf(c)))),
    'RCTAU': ([1000, 1e-6], lambda r, c: r * mp.mpf(c)),
    'RLTAU': ([100, 0.5], lambda r, l: mp.mpf(l) / r),
    'CAPENERGY': ([1e-6, 12], lambda c, v: mp.mpf(c) * v * v / 2),
    'INDENERGY': ([0.5, 2], lambda l, i: mp.mpf(l) * i * i / 2),
    'VDIVIDER': ([12, 1000, 2000], lambda v, r1, r2: mp.mpf(v) * r2 / (r1 + r2)),
    'DBPOWER': ([1, 50], lambda p1, p2: 10 * mp.log10(mp.mpf(p2) / p1)),
    'DBVOLT': ([1, 50], lambda v1, v2: 20 * mp.log10(mp.mpf(v2) / v1)),
    'CPOUND': ([1000, 0.05, 10], lambda p, i, n: p * mp.power(1 + mp.mpf(i), n)),
    'PVALUE': ([1000, 0.05, 10], lambda f, i, n: f / mp.power(1 + mp.mpf(i), n)),
    'CONTCOMP': ([1000, 0.05, 10], lambda p, r, t: p * mp.exp(mp.mpf(r) * t)),
    'PAYMENT': ([200000, 0.005, 360], lambda p, i, n: p * mp.mpf(i) / (1 - mp.power(1 + mp.mpf(i), -n))),
    'FVANNUITY': ([100, 0.01, 12], lambda a, i, n: a * (mp.power(1 + mp.mpf(i), n) - 1) / mp.mpf(i)),
    'PVANNUITY': ([100, 0.01, 12], lambda a, i, n: a * (1 - mp.power(1 + mp.mpf(i), -n)) / mp.mpf(i)),
    'EFFRATE': ([0.06, 12], lambda r, m: mp.power(1 + mp.mpf(r) / m, m) - 1),
    'DOUBLETIME': ([0.07], lambda i: mp.log(2) / mp.log(1 + mp.mpf(i))),
    'SIMPLEINT': ([1000, 0.05, 3], lambda p, i, n: p * mp.mpf(i) * n),
    'DEPRSL': ([10000, 1000, 5], lambda c, s, n: mp.mpf(c - s) / n),
    'MARGIN': ([80, 100], lambda c, p: mp.mpf(p - c) / p * 100),
    'CTOF': ([37], lambda c: mp.mpf(c) * 9 / 5 + 32),
    'FTOC': ([98.6], lambda f: (mp.mpf('98.6') - 32) * 5 / 9),
    'CTOK': ([25], lambda c: c - ABSTEMP),
    'KTOC': ([300], lambda k: k + ABSTEMP),
    'INTOCM': ([12], lambda x: x * mp.mpf('2.54')),
    'CMTOIN': ([12], lambda x: x / mp.mpf('2.54')),
    'FTTOM': ([12], lambda x: x * mp.mpf('0.3048')),
    'MTOFT': ([12], lambda x: x / mp.mpf('0.3048')),
    'MITOKM': ([12], lambda x: x * mp.mpf('1.609344')),
    'KMTOMI': ([12], lambda x: x / mp.mpf('1.609344')),
    'LBTOKG': ([12], lambda x: x * mp.mpf('0.45359237')),
    'KGTOLB': ([12], lambda x: x / mp.mpf('0.45359237')),
    'GALTOL': ([12], lambda x: x * mp.mpf('3.785411784')),
    'LTOGAL': ([12], lambda x: x / mp.mpf('3.785411784')),
    'HPTOKW': ([12], lambda x: x * mp.mpf('0.745699872')),
    'KWTOHP': ([12], lambda x: x / mp.mpf('0.745699872')),
    'PSITOKPA': ([12], lambda x: x * mp.mpf('6.894757293')),
    'KPATOPSI': ([12], lambda x: x / mp.mpf('6.894757293')),
    'BINOMPMF': ([10, 3, 0.4], lambda n, k, p: mp.binomial(n, k) * mp.power(mp.mpf(p), k) * mp.power(1 - mp.mpf(p), n - k)),
    'POISSONPMF': ([2.5, 3], lambda l, k: mp.power(mp.mpf(l), k) * mp.exp(-mp.mpf(l)) / mp.factorial(k)),
    'GEOMPMF': ([0.2, 4], lambda p, k: mp.mpf(p) * mp.power(1 - mp.mpf(p), k - 1)),
    'STDERR': ([2.5, 30], lambda s, n: s / mp.sqrt(n)),
    'ZTEST': ([52, 50, 6, 36], lambda x, m, s, n: (x - m) / (s / mp.sqrt(n))),
    'COEFVAR': ([2.5, 40], lambda s, m: mp.mpf(s) / m * 100),
}


def text(value):
    return mp.nstr(value, 15, strip_zeros=True, min_fixed=-5, max_fixed=16)


with open('tests/data/library/library_samples.txt', 'w') as out:
    out.write('# CALL<TAB>VALUE: every function of data/Quorvex.lib at a sample point, values from mpmath.\n')
    for name, (args, formula) in samples.items():
        call = '%s[%s]' % (name, ','.join(repr(a) if isinstance(a, float) else str(a) for a in args))
        out.write('%s\t%s\n' % (call, text(formula(*[mp.mpf(repr(a)) if isinstance(a, float) else a for a in args]))))
