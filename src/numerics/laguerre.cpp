#include "roots.h"

#include <cmath>
#include <limits>
#include <stdexcept>
#include <vector>

namespace quorvex::numerics {

namespace {

constexpr int kIterationsPerTolerance = 10;
constexpr long double kFirstTolerance = 1e-14L;
constexpr long double kLastTolerance = 1e-12L;

LongComplex negated(const LongComplex& z) {
    return {-z.re, -z.im};
}

LongComplex scaled(long double factor, const LongComplex& z) {
    return {factor * z.re, factor * z.im};
}

} // namespace

long double Roots::CABS(const LongComplex& z) {
    return std::hypot(z.re, z.im);
}

LongComplex Roots::CADD(const LongComplex& a, const LongComplex& b) {
    return {a.re + b.re, a.im + b.im};
}

LongComplex Roots::CSUB(const LongComplex& a, const LongComplex& b) {
    return {a.re - b.re, a.im - b.im};
}

LongComplex Roots::CMUL(const LongComplex& a, const LongComplex& b) {
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}

// Divides through the larger part of the divisor, so neither overflow nor underflow comes from
// squaring it.
LongComplex Roots::CDIV(const LongComplex& a, const LongComplex& b) {
    if (std::fabs(b.re) >= std::fabs(b.im)) {
        const long double r = b.im / b.re;
        const long double den = b.re + r * b.im;
        return {(a.re + r * a.im) / den, (a.im - r * a.re) / den};
    }
    const long double r = b.re / b.im;
    const long double den = b.im + r * b.re;
    return {(a.re * r + a.im) / den, (a.im * r - a.re) / den};
}

LongComplex Roots::CSQRT(const LongComplex& z) {
    if (z.re == 0.0L && z.im == 0.0L) return {0.0L, 0.0L};
    const long double t = std::sqrt((std::fabs(z.re) + CABS(z)) / 2.0L);
    if (z.re >= 0.0L) return {t, z.im / (2.0L * t)};
    return {std::fabs(z.im) / (2.0L * t), std::copysign(t, z.im)};
}

void Roots::LaguerreRoots(std::span<const engine::complex> coefficients, int degree,
                          std::span<long double> re, std::span<long double> im, int& status) {
    std::vector<LongComplex> wide;
    wide.reserve(coefficients.size());
    for (const engine::complex& c : coefficients)
        wide.push_back(CMPLX(c.real(), c.imag()));
    LaguerreRoots(std::span<const LongComplex>(wide), degree, re, im, status);
}

void Roots::LaguerreRoots(std::span<const LongComplex> coefficients, int degree, std::span<long double> re,
                          std::span<long double> im, int& status) {
    if (degree < 0 || coefficients.size() < static_cast<size_t>(degree) + 1 ||
        re.size() < static_cast<size_t>(degree) || im.size() < static_cast<size_t>(degree))
        throw std::invalid_argument("LaguerreRoots: arrays shorter than the degree needs");
    const long double nan = std::numeric_limits<long double>::quiet_NaN();
    for (int i = 0; i < degree; ++i)
        re[i] = im[i] = nan;
    status = 1;
    if (degree < 1 || degree >= kLaguerreRowSize) return;
    if (coefficients[0].re == 0.0L && coefficients[0].im == 0.0L) return;

    std::vector<LongComplex> a(coefficients.begin(), coefficients.begin() + degree + 1);
    // Slots the iteration never reaches stay NaN, so a failed run cannot pass for roots.
    std::vector<LongComplex> roots(degree + 1, CMPLX(nan, nan));
    roots[0] = m_start;
    CLAGUE(degree, a, kIterationsPerTolerance, kFirstTolerance, kLastTolerance, status, roots);
    for (int i = 0; i < degree; ++i) {
        re[i] = roots[i + 1].re;
        im[i] = roots[i + 1].im;
    }
}

void Roots::CLAGUE(int degree, std::span<LongComplex> a, int iterations, long double first_tolerance,
                   long double last_tolerance, int& status, std::span<LongComplex> roots) {
    auto& b = m_laguerre_b;
    auto& c = m_laguerre_c;
    auto& d = m_laguerre_d;
    status = 0;
    CAssign(b[0], a[0]);
    CAssign(c[0], a[0]);
    CAssign(d[0], a[0]);
    if (degree == 1) {
        roots[1] = CDIV(negated(a[1]), a[0]);
        return;
    }

    // Deflation keeps the iterate: the next root starts where the last one was found.
    LongComplex x = roots[0];
    int n = degree;
    for (;;) {
        int count = 0;
        long double tolerance = first_tolerance;
        for (;;) {
            for (int i = 1; i <= n; ++i)
                b[i] = CADD(a[i], CMUL(x, b[i - 1]));
            for (int i = 1; i <= n - 1; ++i)
                c[i] = CADD(b[i], CMUL(x, c[i - 1]));
            for (int i = 1; i <= n - 2; ++i)
                d[i] = CADD(c[i], CMUL(x, d[i - 1]));
            // P is p(x), Q is p'(x) and R is p''(x) / 2 as the rows give them; with R at half the
            // second derivative the step is of Newton's order near a simple root.
            const LongComplex P = b[n];
            const LongComplex Q = c[n - 1];
            const LongComplex R = d[n - 2];

            const long double n1 = n - 1;
            const LongComplex n1Q = scaled(n1, Q);
            const LongComplex S = CSUB(CMUL(n1Q, n1Q), scaled(n1 * n, CMUL(P, R)));
            if (CABS(S) == 0.0L) {
                // The rest is one root of multiplicity n: the mean of the remaining roots.
                const LongComplex multiple = CDIV(negated(a[1]), scaled(n, a[0]));
                for (int i = n; i >= 1; --i)
                    roots[i] = multiple;
                return;
            }

            LongComplex D;
            if (CABS(Q) == 0.0L) {
                D = CSQRT(S);
            } else {
                const LongComplex W = CSQRT(S);
                const LongComplex D1 = CADD(Q, W);
                const LongComplex D2 = CSUB(Q, W);
                D = CABS(D1) < CABS(D2) ? D2 : D1;
            }
            if (CABS(D) == 0.0L) {
                x = CMPLX(x.re + 0.1L, x.im + 0.1L);
                continue;
            }

            ++count;
            const LongComplex next = CSUB(x, CDIV(scaled(n, P), D));
            const long double step = CABS(CSUB(next, x));
            x = next;
            if (step < tolerance * CABS(next)) break;
            if (count > iterations) {
                tolerance *= 10.0L;
                count = 0;
                if (tolerance >= last_tolerance) {
                    status = 1;
                    return;
                }
            }
        }

        roots[n] = x;
        --n;
        if (n == 1) break;
        // The quotient is that of the iterate before the last step, so later roots inherit an
        // error of about that step's size.
        for (int i = 0; i <= n; ++i)
            a[i] = b[i];
    }
    roots[1] = CDIV(negated(b[1]), b[0]);
}

} // namespace quorvex::numerics
