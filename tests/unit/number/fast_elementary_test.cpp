// The long double path of sine, cosine, exponential and whole powers must give the decimal
// path's answers bit for bit, or step aside; and it must not step aside so often that it is no
// faster.
#include "number/complex_decimal.h"
#include "number/fast_elementary.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <utility>

using quorvex::number::ComplexDecimal21;
using quorvex::number::ComplexDecimal50;
using quorvex::number::Decimal21;
using quorvex::number::Decimal50;

namespace {

// The decimal path as the kernels take it: degrees turned into radians at 50 digits.
ComplexDecimal21 angle(double x, bool degrees) {
    ComplexDecimal50 wide = ComplexDecimal50::lift(x, 0);
    if (degrees)
        wide.re = wide.re * Decimal50::from_text("0.01745329251994329576923690768488612713442871888541725456097191440171009");
    return {Decimal21::from(wide.re), Decimal21::from(wide.im)};
}

double slow_sin(double x, bool degrees) { return quorvex::number::sin(angle(x, degrees)).re.to_double(); }
double slow_cos(double x, bool degrees) { return quorvex::number::cos(angle(x, degrees)).re.to_double(); }
double slow_exp(double x) { return quorvex::number::exp(ComplexDecimal21::lift(x, 0)).re.to_double(); }
double slow_power(double x, int n) {
    return quorvex::number::pow(Decimal21::lift(x), Decimal21(n)).to_double();
}

bool same(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

// Counts how often the fast path answered, and fails on the first answer that differs.
struct Tally {
    int answered = 0;
    int asked = 0;
    template <class Fast>
    void check(Fast fast_path, double slow, const char* what, double x) {
        ++asked;
        double fast = 0;
        if (!fast_path(fast)) return;
        ++answered;
        ASSERT_TRUE(same(fast, slow)) << what << " of " << x << ": " << fast << " against " << slow;
    }
};

} // namespace

TEST(FastElementary, SineCosineAndExponentialMatchTheDecimalPath) {
    std::mt19937_64 random(20261123);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    std::uniform_int_distribution<int> decade(-12, 2);
    Tally trig, exponential;
    for (int trial = 0; trial < 6000; ++trial) {
        const double x = unit(random) * std::pow(10.0, decade(random));
        // Whole degrees and simple fractions of them are the angles people type.
        const double typed = std::round(unit(random) * 1e6) / (trial % 3 == 0 ? 1 : 4);
        // Radian arguments far from zero lose digits in binary, so only degrees go that far.
        for (const auto& [value, degrees] : {std::pair{x, false}, std::pair{x, true}, std::pair{typed, true}}) {
            trig.check([&](double& r) { return quorvex::number::fast_sin(value, degrees, r); },
                       slow_sin(value, degrees), "sin", value);
            trig.check([&](double& r) { return quorvex::number::fast_cos(value, degrees, r); },
                       slow_cos(value, degrees), "cos", value);
        }
        const double e = unit(random) * 50;
        exponential.check([&](double& r) { return quorvex::number::fast_exp(e, r); }, slow_exp(e), "exp", e);
        exponential.check([&](double& r) { return quorvex::number::fast_exp(x, r); }, slow_exp(x), "exp", x);
    }
    // Exact answers stay exact: SIN(30) = 0.5 in degrees. Zeros of the sine are left to the
    // decimal path, whose 50-digit conversion knows them.
    double fast = 0;
    EXPECT_TRUE(quorvex::number::fast_sin(30, true, fast));
    EXPECT_EQ(fast, 0.5);
    EXPECT_FALSE(quorvex::number::fast_sin(180, true, fast));
    EXPECT_FALSE(quorvex::number::fast_cos(90, true, fast));
    EXPECT_FALSE(quorvex::number::fast_exp(1e6, fast)); // beyond a double

    // Zeros and the few angles whose sine lies near a half-way point (SIN(137)) go the slow way.
    EXPECT_GT(trig.answered, trig.asked * 90 / 100);
    EXPECT_GT(exponential.answered, exponential.asked * 95 / 100);
}

TEST(FastElementary, WholePowersMatchTheDecimalPathAndStepAsideOnTies) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> unit(-10.0, 10.0);
    std::uniform_int_distribution<int> decade(-6, 6), exponent(2, 12);
    Tally powers;
    for (int trial = 0; trial < 20000; ++trial) {
        const double x = unit(random) * std::pow(10.0, decade(random));
        const int n = exponent(random);
        powers.check([&](double& r) { return quorvex::number::fast_power(x, n, r); }, slow_power(x, n), "power", x);
    }
    EXPECT_GT(powers.answered, powers.asked * 95 / 100);

    // 40000005^2 = 1600000400000025: the 16th digit is an exact half, which rounds up.
    for (int k = 0; k < 50; ++k) {
        for (const double scale : {1.0, 1e-4, 1e-9}) {
            const double x = (40000005.0 + 10.0 * k) * scale;
            double fast = 0;
            EXPECT_FALSE(quorvex::number::fast_power(x, 2, fast)) << x;
        }
    }
    double fast = 0;
    EXPECT_FALSE(quorvex::number::fast_power(2, 1, fast));
    EXPECT_FALSE(quorvex::number::fast_power(1e200, 2, fast));
    EXPECT_TRUE(quorvex::number::fast_power(-3, 3, fast));
    EXPECT_EQ(fast, -27);
}
