#!/usr/bin/env python3
"""Writes the Wilks-Shapiro tables wstableA1 (coefficients) and wstableA2 (critical values).

Run once by hand with python3 and mpmath; the two files are committed in data/, where the program looks for them.
One line per n from 3 to 99, in the form "n) v1, v2, ...":
  wstableA1: the coefficients a_n, a_(n-1), ..., a_(n-k+1), k = n // 2
  wstableA2: the critical values W at alpha 1%, 2%, 5% and 10%
For n up to 50 the values are the published ones of Shapiro and Wilk (1965), from the reference
transcription in ../shared/refdata/shapiro_wilk. Above 50 no printed table exists, and the values
come from Royston's approximations: the coefficients (1992) and the normalising transformation of
W for the critical values (1995).
"""
import csv
import os

import mpmath

HERE = os.path.dirname(os.path.abspath(__file__))
REFDATA = os.path.join(HERE, "..", "..", "..", "shared", "refdata", "shapiro_wilk")
mpmath.mp.dps = 30


def read_table(name):
    rows = {}
    with open(os.path.join(REFDATA, name)) as f:
        lines = [l for l in f if not l.startswith("#")]
    for row in csv.DictReader(lines, delimiter="\t"):
        rows[int(row["n"])] = row
    return rows


def royston_coefficients(n):
    m = [mpmath.sqrt(2) * mpmath.erfinv(2 * ((i - mpmath.mpf(3) / 8) / (n + mpmath.mpf(1) / 4)) - 1) for i in range(1, n + 1)]
    msum = sum(v * v for v in m)
    u = 1 / mpmath.sqrt(n)
    an = m[-1] / mpmath.sqrt(msum) + 0.221157 * u - 0.147981 * u**2 - 2.071190 * u**3 + 4.434685 * u**4 - 2.706056 * u**5
    an1 = m[-2] / mpmath.sqrt(msum) + 0.042981 * u - 0.293762 * u**2 - 1.752461 * u**3 + 5.682633 * u**4 - 3.582633 * u**5
    phi = (msum - 2 * m[-1] ** 2 - 2 * m[-2] ** 2) / (1 - 2 * an**2 - 2 * an1**2)
    coefficients = [an, an1] + [m[n - i] / mpmath.sqrt(phi) for i in range(3, n // 2 + 1)]
    return ["%.4f" % c for c in coefficients]


def royston_critical(n, alpha):
    ln = mpmath.log(n)
    mu = 0.0038915 * ln**3 - 0.083751 * ln**2 - 0.31082 * ln - 1.5861
    sigma = mpmath.exp(0.0030302 * ln**2 - 0.082676 * ln - 0.4803)
    z = mpmath.sqrt(2) * mpmath.erfinv(1 - 2 * alpha)  # the upper alpha point of N(0, 1)
    return "%.3f" % (1 - mpmath.exp(mu + sigma * z))


def main():
    coefficients = read_table("sw1965_table5_coefficients_wide.tsv")
    critical = read_table("sw1965_table6_percentage_points.tsv")
    a1, a2 = [], []
    for n in range(3, 100):
        if n <= 50:
            row = coefficients[n]
            a = [row[f"i{i}"] for i in range(1, n // 2 + 1)]
            w = [critical[n][f"W_{p}"] for p in ("0.01", "0.02", "0.05", "0.10")]
        else:
            a = royston_coefficients(n)
            w = [royston_critical(n, alpha) for alpha in (0.01, 0.02, 0.05, 0.10)]
        a1.append(f"{n}) " + ", ".join(a))
        a2.append(f"{n}) " + ", ".join(w))
    for name, lines in (("wstableA1", a1), ("wstableA2", a2)):
        with open(os.path.join(HERE, "..", name), "w", newline="\r\n") as out:
            out.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
