#pragma once
#include "engine/complex.h"

#include <array>
#include <span>
#include <vector>

namespace quorvex::numerics {

// The polynomial solvers' own complex value, real part first, kept in long double throughout.
struct LongComplex {
    long double re = 0.0L;
    long double im = 0.0L;
};

// All roots of a polynomial, coefficients from the highest power down. Laguerre's method with
// deflation works on complex coefficients; the Jenkins-Traub three-stage method (RPOLY) on real
// ones. Roots come back in indices 0 to degree - 1 of the caller's arrays. Nothing is reported
// to the user from here: the caller reads the status or the root count.
class Roots {
public:
    // Rows of the Laguerre iteration hold the polynomial and two derivative rows of this many
    // coefficients, which bounds its degree at kLaguerreRowSize - 1.
    static constexpr int kLaguerreRowSize = 100;

    // Off both axes and no short binary fraction. At 0 (where x^n + c has p' = p'' = 0) or
    // exactly on a multiple root the first step meets S = 0 and takes all remaining roots for
    // one multiple root.
    static constexpr LongComplex kDefaultStart{0.3L, 0.7L};

    explicit Roots(LongComplex start = kDefaultStart) : m_start(start) {}

    // The first Laguerre iterate; each later root starts from the root found before it.
    LongComplex start_value() const { return m_start; }
    void set_start_value(LongComplex start) { m_start = start; }

    // Sets `status` to 1 when the iteration did not converge (roots not found are NaN), when
    // the leading coefficient is zero, or when the degree is outside 1 to kLaguerreRowSize - 1.
    void LaguerreRoots(std::span<const engine::complex> coefficients, int degree, std::span<long double> re,
                       std::span<long double> im, int& status);
    // The same on coefficients that are long double already.
    void LaguerreRoots(std::span<const LongComplex> coefficients, int degree, std::span<long double> re,
                       std::span<long double> im, int& status);

    // Laguerre's method on a[0] (highest power) to a[degree], deflating `a` in place. roots[0]
    // holds the first iterate; roots 1 to degree receive the roots, the first found in the
    // highest slot.
    // Each tolerance gets `iterations` steps; after that the tolerance grows tenfold, and
    // reaching `last_tolerance` means failure (`status` 1).
    void CLAGUE(int degree, std::span<LongComplex> a, int iterations, long double first_tolerance,
                long double last_tolerance, int& status, std::span<LongComplex> roots);

    // Returns the number of roots found (degree when all converged, fewer when the shifts ran
    // out, none for a coefficient that is not finite) and -1 when the leading coefficient is
    // zero. Each trailing zero coefficient gives an exact root 0, listed first.
    int JenkinsTraubRoots(std::span<const long double> coefficients, int degree, std::span<long double> re,
                          std::span<long double> im);

    // The complex helpers of the Laguerre iteration.
    static long double CABS(const LongComplex& z);
    static LongComplex CADD(const LongComplex& a, const LongComplex& b);
    static void CAssign(LongComplex& target, const LongComplex& value) { target = value; }
    static LongComplex CDIV(const LongComplex& a, const LongComplex& b);
    static LongComplex CMUL(const LongComplex& a, const LongComplex& b);
    static LongComplex CMPLX(long double re, long double im) { return {re, im}; }
    static LongComplex CSQRT(const LongComplex& z); // principal branch
    static LongComplex CSUB(const LongComplex& a, const LongComplex& b);

private:
    // The three stages and their helpers.
    void Fxshfr(int l2, int& nz);
    void Quadit(long double uu, long double vv, int& nz);
    void Realit(long double& sss, int& nz, int& iflag);
    void Calcsc(int& type);
    void Nextk(int type);
    void Newest(int type, long double& uu, long double& vv);
    static void Quadsd(int nn, long double u, long double v, const std::vector<long double>& p,
                       std::vector<long double>& q, long double& a, long double& b);
    static void Quad(long double a, long double b1, long double c, long double& sr, long double& si,
                     long double& lr, long double& li);

    LongComplex m_start;

    // Laguerre rows: the polynomial and its two derivatives at the current iterate.
    std::array<LongComplex, kLaguerreRowSize> m_laguerre_b{};
    std::array<LongComplex, kLaguerreRowSize> m_laguerre_c{};
    std::array<LongComplex, kLaguerreRowSize> m_laguerre_d{};

    // RPOLY state: the polynomial, its quotient, the K polynomial, its quotient and its saved
    // copy; the current shift (sr, si) and quadratic (u, v); the synthetic division remainders
    // and the recurrence scalars; the zeros of the last quadratic.
    std::vector<long double> m_p, m_qp, m_k, m_qk, m_svk;
    long double m_sr = 0, m_si = 0, m_u = 0, m_v = 0;
    long double m_a = 0, m_b = 0, m_c = 0, m_d = 0;
    long double m_a1 = 0, m_a3 = 0, m_a4 = 0, m_a5 = 0, m_a7 = 0;
    long double m_e = 0, m_f = 0, m_g = 0, m_h = 0;
    long double m_szr = 0, m_szi = 0, m_lzr = 0, m_lzi = 0;
    long double m_eta = 0, m_are = 0, m_mre = 0;
    int m_n = 0, m_nn = 0;
};

} // namespace quorvex::numerics
