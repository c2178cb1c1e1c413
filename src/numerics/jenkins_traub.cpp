#include "roots.h"

#include <cmath>
#include <numbers>
#include <stdexcept>

// The three-stage Jenkins-Traub method for real polynomials: a few steps of the K-polynomial
// recurrence without shift, then a fixed quadratic shift until the shift sequences show
// convergence, then variable-shift iterations on a real root or a quadratic factor. Found roots
// are divided out and the process repeats on the quotient.

namespace quorvex::numerics {

namespace {

constexpr long double kEta = 2.22e-16L;     // the unit round-off the convergence tests assume
constexpr long double kInfinity = 3.4e38L;  // the largest number that may be formed
constexpr long double kSmallest = 1.2e-38L; // the smallest positive normal number
constexpr long double kBase = 2.0L;         // scaling keeps coefficients exact in this base
constexpr int kShifts = 20;                 // quadratic shifts tried before giving up
constexpr int kNoShiftSteps = 5;
constexpr long double kRotationDegrees = 94.0L;

} // namespace

int Roots::JenkinsTraubRoots(std::span<const long double> coefficients, int degree, std::span<long double> re,
                             std::span<long double> im) {
    if (degree < 0 || coefficients.size() < static_cast<size_t>(degree) + 1 ||
        re.size() < static_cast<size_t>(degree) || im.size() < static_cast<size_t>(degree))
        throw std::invalid_argument("JenkinsTraubRoots: arrays shorter than the degree needs");

    m_eta = kEta;
    m_are = m_eta;
    m_mre = m_eta;
    const long double lo = kSmallest / m_eta;
    // The first shift lies on the bound's circle at -45 degrees; each try turns it by 94.
    long double xx = std::sqrt(0.5L);
    long double yy = -xx;
    const long double rotation = kRotationDegrees * std::numbers::pi_v<long double> / 180.0L;
    const long double cosr = std::cos(rotation);
    const long double sinr = std::sin(rotation);

    m_n = degree;
    m_nn = m_n + 1;
    if (coefficients[0] == 0.0L) return -1;
    // The bound's search would never end on a NaN, and nothing can be found with an infinity.
    for (int i = 0; i < m_nn; ++i) {
        if (!std::isfinite(coefficients[i])) return 0;
    }

    while (coefficients[m_nn - 1] == 0.0L) {
        const int j = degree - m_n;
        re[j] = 0.0L;
        im[j] = 0.0L;
        --m_nn;
        --m_n;
    }

    m_p.assign(coefficients.begin(), coefficients.begin() + m_nn);
    m_qp.assign(m_nn, 0.0L);
    m_k.assign(m_nn, 0.0L);
    m_qk.assign(m_nn, 0.0L);
    m_svk.assign(m_nn, 0.0L);
    std::vector<long double> saved_k(m_nn, 0.0L);
    std::vector<long double> pt(m_nn, 0.0L);

    for (;;) {
        if (m_n < 1) return degree;
        if (m_n == 1) {
            re[degree - 1] = -m_p[1] / m_p[0];
            im[degree - 1] = 0.0L;
            return degree;
        }
        if (m_n == 2) {
            Quad(m_p[0], m_p[1], m_p[2], re[degree - 2], im[degree - 2], re[degree - 1], im[degree - 1]);
            return degree;
        }

        long double largest = 0.0L;
        long double smallest = kInfinity;
        for (int i = 0; i < m_nn; ++i) {
            const long double x = std::fabs(m_p[i]);
            if (x > largest) largest = x;
            if (x != 0.0L && x < smallest) smallest = x;
        }

        // Scale by a power of the base so that neither overflow nor an unnoticed underflow can
        // disturb the convergence tests; the roots do not change.
        long double sc = lo / smallest;
        bool scale = false;
        if (sc > 1.0L) {
            scale = kInfinity / sc >= largest;
        } else if (largest >= 10.0L) {
            if (sc == 0.0L) sc = kSmallest;
            scale = true;
        }
        if (scale) {
            const int l = static_cast<int>(std::log(sc) / std::log(kBase) + 0.5L);
            const long double factor = std::pow(kBase, l);
            if (factor != 1.0L) {
                for (int i = 0; i < m_nn; ++i)
                    m_p[i] *= factor;
            }
        }

        // A lower bound on the moduli of the roots: the positive root of the polynomial whose
        // coefficients are the moduli, with the constant term negated (Cauchy).
        for (int i = 0; i < m_nn; ++i)
            pt[i] = std::fabs(m_p[i]);
        pt[m_nn - 1] = -pt[m_nn - 1];
        long double x = std::exp((std::log(-pt[m_nn - 1]) - std::log(pt[0])) / m_n);
        if (pt[m_n - 1] != 0.0L) {
            const long double newton = -pt[m_nn - 1] / pt[m_n - 1];
            if (newton < x) x = newton;
        }
        for (;;) {
            const long double xm = x * 0.1L;
            long double ff = pt[0];
            for (int i = 1; i < m_nn; ++i)
                ff = ff * xm + pt[i];
            if (ff <= 0.0L) break;
            x = xm;
        }
        long double dx = x;
        while (std::fabs(dx / x) > 0.005L) {
            long double ff = pt[0];
            long double df = ff;
            for (int i = 1; i < m_n; ++i) {
                ff = ff * x + pt[i];
                df = df * x + ff;
            }
            ff = ff * x + pt[m_nn - 1];
            dx = ff / df;
            x -= dx;
        }
        const long double bnd = x;

        // Stage one: K starts as the derivative over n and takes steps with no shift, which
        // brings out the roots of smallest modulus.
        for (int i = 1; i < m_n; ++i)
            m_k[i] = static_cast<long double>(m_nn - 1 - i) * m_p[i] / m_n;
        m_k[0] = m_p[0];
        const long double aa = m_p[m_nn - 1];
        const long double bb = m_p[m_n - 1];
        bool zerok = m_k[m_n - 1] == 0.0L;
        for (int step = 0; step < kNoShiftSteps; ++step) {
            const long double cc = m_k[m_n - 1];
            if (!zerok) {
                const long double t = -aa / cc;
                for (int i = m_n - 1; i >= 1; --i)
                    m_k[i] = t * m_k[i - 1] + m_p[i];
                m_k[0] = m_p[0];
                zerok = std::fabs(m_k[m_n - 1]) <= std::fabs(bb) * m_eta * 10.0L;
            } else {
                for (int i = m_n - 1; i >= 1; --i)
                    m_k[i] = m_k[i - 1];
                m_k[0] = 0.0L;
                zerok = m_k[m_n - 1] == 0.0L;
            }
        }
        for (int i = 0; i < m_n; ++i)
            saved_k[i] = m_k[i];

        bool found = false;
        for (int attempt = 1; attempt <= kShifts && !found; ++attempt) {
            const long double turned = cosr * xx - sinr * yy;
            yy = sinr * xx + cosr * yy;
            xx = turned;
            m_sr = bnd * xx;
            m_si = bnd * yy;
            m_u = -2.0L * m_sr;
            // The fixed shift's quadratic takes the bound itself as its constant term.
            m_v = bnd;
            int nz = 0;
            Fxshfr(kShifts * attempt, nz);
            if (nz != 0) {
                const int j = degree - m_n;
                re[j] = m_szr;
                im[j] = m_szi;
                m_nn -= nz;
                m_n = m_nn - 1;
                for (int i = 0; i < m_nn; ++i)
                    m_p[i] = m_qp[i];
                if (nz != 1) {
                    re[j + 1] = m_lzr;
                    im[j + 1] = m_lzi;
                }
                found = true;
            } else {
                for (int i = 0; i < m_n; ++i)
                    m_k[i] = saved_k[i];
            }
        }
        if (!found) return degree - m_n;
    }
}

// Stage two, with at most `l2` fixed-shift steps. When the sequences of real-root estimates s
// or of quadratic constants v settle, stage three starts on the faster one; `nz` returns the
// number of roots found (0, 1 or 2).
void Roots::Fxshfr(int l2, int& nz) {
    nz = 0;
    long double betav = 0.25L;
    long double betas = 0.25L;
    long double oss = m_sr;
    long double ovv = m_v;
    long double otv = 0.0L;
    long double ots = 0.0L;
    long double ui = 0.0L;
    long double vi = 0.0L;
    int type = 0;
    Quadsd(m_nn, m_u, m_v, m_p, m_qp, m_a, m_b);
    Calcsc(type);
    for (int j = 1; j <= l2; ++j) {
        Nextk(type);
        Calcsc(type);
        Newest(type, ui, vi);
        const long double vv = vi;
        long double ss = 0.0L;
        if (m_k[m_n - 1] != 0.0L) ss = -m_p[m_nn - 1] / m_k[m_n - 1];
        long double tv = 1.0L;
        long double ts = 1.0L;
        if (j != 1 && type != 3) {
            if (vv != 0.0L) tv = std::fabs((vv - ovv) / vv);
            if (ss != 0.0L) ts = std::fabs((ss - oss) / ss);
            // Two successive decreasing measures multiply, so one lucky step does not pass.
            const long double tvv = tv < otv ? tv * otv : 1.0L;
            const long double tss = ts < ots ? ts * ots : 1.0L;
            const bool vpass = tvv < betav;
            const bool spass = tss < betas;
            if (spass || vpass) {
                const long double svu = m_u;
                const long double svv = m_v;
                for (int i = 0; i < m_n; ++i)
                    m_svk[i] = m_k[i];
                long double s = ss;
                bool vtry = false;
                bool stry = false;
                enum class Next { quadratic, linear, resume };
                Next next = (spass && (!vpass || tss < tvv)) ? Next::linear : Next::quadratic;
                while (next != Next::resume) {
                    if (next == Next::quadratic) {
                        Quadit(ui, vi, nz);
                        if (nz > 0) return;
                        // Failed: demand more of the v sequence before it is tried again.
                        vtry = true;
                        betav *= 0.25L;
                        if (stry || !spass) {
                            next = Next::resume;
                        } else {
                            for (int i = 0; i < m_n; ++i)
                                m_k[i] = m_svk[i];
                            next = Next::linear;
                        }
                    } else {
                        int iflag = 0;
                        Realit(s, nz, iflag);
                        if (nz > 0) return;
                        stry = true;
                        betas *= 0.25L;
                        if (iflag == 0) {
                            next = Next::resume;
                        } else {
                            // An almost double real root: a quadratic factor around it.
                            ui = -(s + s);
                            vi = s * s;
                            next = Next::quadratic;
                        }
                    }
                    if (next == Next::resume) {
                        m_u = svu;
                        m_v = svv;
                        for (int i = 0; i < m_n; ++i)
                            m_k[i] = m_svk[i];
                        if (vpass && !vtry) next = Next::quadratic;
                    }
                }
                Quadsd(m_nn, m_u, m_v, m_p, m_qp, m_a, m_b);
                Calcsc(type);
            }
        }
        ovv = vv;
        oss = ss;
        otv = tv;
        ots = ts;
    }
}

// Variable-shift iteration on the quadratic factor x^2 + uu x + vv.
void Roots::Quadit(long double uu, long double vv, int& nz) {
    nz = 0;
    bool tried = false;
    m_u = uu;
    m_v = vv;
    int j = 0;
    long double omp = 0.0L;
    long double relstp = 0.0L;
    int type = 0;
    for (;;) {
        Quad(1.0L, m_u, m_v, m_szr, m_szi, m_lzr, m_lzi);
        // Real roots that are neither nearly equal nor nearly opposite belong to the linear
        // iteration.
        if (std::fabs(std::fabs(m_szr) - std::fabs(m_lzr)) > 0.01L * std::fabs(m_lzr)) return;
        Quadsd(m_nn, m_u, m_v, m_p, m_qp, m_a, m_b);
        const long double mp = std::fabs(m_a - m_szr * m_b) + std::fabs(m_szi * m_b);
        // A rigorous bound on the rounding error of evaluating p at the quadratic's roots.
        const long double zm = std::sqrt(std::fabs(m_v));
        long double ee = 2.0L * std::fabs(m_qp[0]);
        const long double t = -m_szr * m_b;
        for (int i = 1; i < m_n; ++i)
            ee = ee * zm + std::fabs(m_qp[i]);
        ee = ee * zm + std::fabs(m_a + t);
        ee = (5.0L * m_mre + 4.0L * m_are) * ee -
             (5.0L * m_mre + 2.0L * m_are) * (std::fabs(m_a + t) + std::fabs(m_b) * zm) +
             2.0L * m_are * std::fabs(t);
        if (mp <= 20.0L * ee) {
            nz = 2;
            return;
        }
        ++j;
        if (j > 20) return;
        if (j >= 2 && !(relstp > 0.01L || mp < omp || tried)) {
            // A cluster seems to stall the iteration: take five fixed-shift steps from a
            // quadratic close to it.
            if (relstp < m_eta) relstp = m_eta;
            relstp = std::sqrt(relstp);
            m_u -= m_u * relstp;
            m_v += m_v * relstp;
            Quadsd(m_nn, m_u, m_v, m_p, m_qp, m_a, m_b);
            for (int i = 0; i < 5; ++i) {
                Calcsc(type);
                Nextk(type);
            }
            tried = true;
            j = 0;
        }
        omp = mp;
        Calcsc(type);
        Nextk(type);
        Calcsc(type);
        long double ui = 0.0L;
        long double vi = 0.0L;
        Newest(type, ui, vi);
        if (vi == 0.0L) return;
        relstp = std::fabs((vi - m_v) / vi);
        m_u = ui;
        m_v = vi;
    }
}

// Variable-shift iteration on a real root from `sss`. `iflag` 1 asks for a quadratic iteration
// instead, because a cluster near the real axis has stalled this one (`sss` then holds the
// iterate).
void Roots::Realit(long double& sss, int& nz, int& iflag) {
    nz = 0;
    long double s = sss;
    iflag = 0;
    int j = 0;
    long double omp = 0.0L;
    long double t = 0.0L;
    for (;;) {
        long double pv = m_p[0];
        m_qp[0] = pv;
        for (int i = 1; i < m_nn; ++i) {
            pv = pv * s + m_p[i];
            m_qp[i] = pv;
        }
        const long double mp = std::fabs(pv);
        // A rigorous bound on the rounding error of evaluating p at s.
        const long double ms = std::fabs(s);
        long double ee = (m_mre / (m_are + m_mre)) * std::fabs(m_qp[0]);
        for (int i = 1; i < m_nn; ++i)
            ee = ee * ms + std::fabs(m_qp[i]);
        if (mp <= 20.0L * ((m_are + m_mre) * ee - m_mre * mp)) {
            nz = 1;
            m_szr = s;
            m_szi = 0.0L;
            return;
        }
        ++j;
        if (j > 10) return;
        if (j >= 2 && !(std::fabs(t) > 0.001L * std::fabs(s - t) || mp <= omp)) {
            iflag = 1;
            sss = s;
            return;
        }
        omp = mp;
        long double kv = m_k[0];
        m_qk[0] = kv;
        for (int i = 1; i < m_n; ++i) {
            kv = kv * s + m_k[i];
            m_qk[i] = kv;
        }
        if (std::fabs(kv) > std::fabs(m_k[m_n - 1]) * 10.0L * m_eta) {
            t = -pv / kv;
            m_k[0] = m_qp[0];
            for (int i = 1; i < m_n; ++i)
                m_k[i] = t * m_qk[i - 1] + m_qp[i];
        } else {
            m_k[0] = 0.0L;
            for (int i = 1; i < m_n; ++i)
                m_k[i] = m_qk[i - 1];
        }
        kv = m_k[0];
        for (int i = 1; i < m_n; ++i)
            kv = kv * s + m_k[i];
        t = 0.0L;
        if (std::fabs(kv) > std::fabs(m_k[m_n - 1]) * 10.0L * m_eta) t = -pv / kv;
        s += t;
    }
}

// Divides K by the current quadratic and forms the scalars of the next K and of the new
// quadratic. `type` 3: the quadratic almost divides K; 2: the formulas are divided by d; 1: by c.
void Roots::Calcsc(int& type) {
    Quadsd(m_n, m_u, m_v, m_k, m_qk, m_c, m_d);
    if (std::fabs(m_c) <= std::fabs(m_k[m_n - 1]) * 100.0L * m_eta &&
        std::fabs(m_d) <= std::fabs(m_k[m_n - 2]) * 100.0L * m_eta) {
        type = 3;
        return;
    }
    if (std::fabs(m_d) >= std::fabs(m_c)) {
        type = 2;
        m_e = m_a / m_d;
        m_f = m_c / m_d;
        m_g = m_u * m_b;
        m_h = m_v * m_b;
        m_a3 = (m_a + m_g) * m_e + m_h * (m_b / m_d);
        m_a1 = m_b * m_f - m_a;
        m_a7 = (m_f + m_u) * m_a + m_h;
        return;
    }
    type = 1;
    m_e = m_a / m_c;
    m_f = m_d / m_c;
    m_g = m_u * m_e;
    m_h = m_v * m_b;
    m_a3 = m_a * m_e + (m_h / m_c + m_g) * m_b;
    m_a1 = m_b - m_a * (m_d / m_c);
    m_a7 = m_a + m_g * m_d + m_h * m_f;
}

// The next K polynomial from the scalars of Calcsc.
void Roots::Nextk(int type) {
    if (type == 3) {
        m_k[0] = 0.0L;
        m_k[1] = 0.0L;
        for (int i = 2; i < m_n; ++i)
            m_k[i] = m_qk[i - 2];
        return;
    }
    const long double temp = type == 1 ? m_b : m_a;
    if (std::fabs(m_a1) <= std::fabs(temp) * m_eta * 10.0L) {
        // a1 nearly zero: the unscaled recurrence.
        m_k[0] = 0.0L;
        m_k[1] = -m_a7 * m_qp[0];
        for (int i = 2; i < m_n; ++i)
            m_k[i] = m_a3 * m_qk[i - 2] - m_a7 * m_qp[i - 1];
        return;
    }
    m_a7 /= m_a1;
    m_a3 /= m_a1;
    m_k[0] = m_qp[0];
    m_k[1] = m_qp[1] - m_a7 * m_qp[0];
    for (int i = 2; i < m_n; ++i)
        m_k[i] = m_a3 * m_qk[i - 2] - m_a7 * m_qp[i - 1] + m_qp[i];
}

// The new estimate (uu, vv) of the quadratic factor; zeros mean there is none.
void Roots::Newest(int type, long double& uu, long double& vv) {
    if (type == 3) {
        uu = 0.0L;
        vv = 0.0L;
        return;
    }
    if (type == 2) {
        m_a4 = (m_a + m_g) * m_f + m_h;
        m_a5 = (m_f + m_u) * m_c + m_v * m_d;
    } else {
        m_a4 = m_a + m_u * m_b + m_h * m_f;
        m_a5 = m_c + (m_u + m_v * m_f) * m_d;
    }
    const long double b1 = -m_k[m_n - 1] / m_p[m_nn - 1];
    const long double b2 = -(m_k[m_n - 2] + b1 * m_p[m_n - 1]) / m_p[m_nn - 1];
    const long double c1 = m_v * b2 * m_a1;
    const long double c2 = b1 * m_a7;
    const long double c3 = b1 * b1 * m_a3;
    const long double c4 = c1 - c2 - c3;
    const long double temp = m_a5 + b1 * m_a4 - c4;
    if (temp == 0.0L) {
        uu = 0.0L;
        vv = 0.0L;
        return;
    }
    uu = m_u - (m_u * (c3 + c2) + m_v * (b1 * m_a1 + b2 * m_a7)) / temp;
    vv = m_v * (1.0L + c4 / temp);
}

// Divides the first nn coefficients of p by x^2 + u x + v: the quotient goes to q, the
// remainder is b (x + u) + a, with b and a also left in q's last two places.
void Roots::Quadsd(int nn, long double u, long double v, const std::vector<long double>& p,
                   std::vector<long double>& q, long double& a, long double& b) {
    b = p[0];
    q[0] = b;
    a = p[1] - u * b;
    q[1] = a;
    for (int i = 2; i < nn; ++i) {
        const long double c = p[i] - u * a - v * b;
        q[i] = c;
        b = a;
        a = c;
    }
}

// The roots of a x^2 + b1 x + c: (sr, si) the smaller, (lr, li) the larger; the discriminant is
// formed without overflow.
void Roots::Quad(long double a, long double b1, long double c, long double& sr, long double& si,
                 long double& lr, long double& li) {
    if (a == 0.0L) {
        sr = b1 != 0.0L ? -c / b1 : 0.0L;
        lr = 0.0L;
        si = 0.0L;
        li = 0.0L;
        return;
    }
    if (c == 0.0L) {
        sr = 0.0L;
        lr = -b1 / a;
        si = 0.0L;
        li = 0.0L;
        return;
    }
    const long double b = b1 / 2.0L;
    long double e;
    long double d;
    if (std::fabs(b) >= std::fabs(c)) {
        e = 1.0L - (a / b) * (c / b);
        d = std::sqrt(std::fabs(e)) * std::fabs(b);
    } else {
        e = c < 0.0L ? -a : a;
        e = b * (b / std::fabs(c)) - e;
        d = std::sqrt(std::fabs(e)) * std::sqrt(std::fabs(c));
    }
    if (e >= 0.0L) {
        if (b >= 0.0L) d = -d;
        lr = (-b + d) / a;
        sr = lr != 0.0L ? (c / lr) / a : 0.0L;
        si = 0.0L;
        li = 0.0L;
        return;
    }
    sr = -b / a;
    lr = sr;
    si = std::fabs(d / a);
    li = -si;
}

} // namespace quorvex::numerics
