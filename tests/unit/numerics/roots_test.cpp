#include "numerics/polynomial_roots.h"
#include "numerics/roots.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

using quorvex::numerics::find_polynomial_roots;
using quorvex::numerics::LongComplex;
using quorvex::numerics::Roots;
using quorvex::numerics::RootsOutcome;
using Z = std::complex<long double>;

namespace {

struct Reference {
    std::vector<LongComplex> coefficients;
    std::vector<Z> roots; // repeated by multiplicity
};

// Test polynomials with reference roots computed once in high precision (see the file's header).
const std::map<std::string, Reference>& references() {
    static const std::map<std::string, Reference> table = [] {
        std::map<std::string, Reference> result;
        std::ifstream in(std::string(QUORVEX_FIXTURES) + "numerics/polynomial_roots.txt");
        std::string line, name;
        Reference current;
        while (std::getline(in, line)) {
            std::istringstream fields(line);
            std::string tag, re, im;
            fields >> tag;
            if (tag == "polynomial") {
                fields >> name;
                current = {};
            } else if (tag == "c") {
                fields >> re >> im;
                current.coefficients.push_back({std::stold(re), std::stold(im)});
            } else if (tag == "r") {
                int multiplicity = 0;
                fields >> re >> im >> multiplicity;
                current.roots.insert(current.roots.end(), multiplicity, Z(std::stold(re), std::stold(im)));
            } else if (tag == "end") {
                result[name] = current;
            }
        }
        return result;
    }();
    return table;
}

const Reference& reference(const std::string& name) {
    const auto found = references().find(name);
    EXPECT_NE(found, references().end()) << name;
    static const Reference none;
    return found == references().end() ? none : found->second;
}

std::vector<Z> as_roots(const std::vector<long double>& re, const std::vector<long double>& im, int count) {
    std::vector<Z> roots;
    for (int i = 0; i < count; ++i)
        roots.emplace_back(re[i], im[i]);
    return roots;
}

// The largest error of the computed roots against the reference, pairing closest first; an
// error is relative to the root, or absolute for a root at 0. Infinite when the counts differ.
long double worst_error(std::vector<Z> computed, const std::vector<Z>& expected) {
    if (computed.size() != expected.size()) return INFINITY;
    struct Pair {
        long double distance;
        size_t i, j;
    };
    std::vector<Pair> pairs;
    for (size_t i = 0; i < computed.size(); ++i)
        for (size_t j = 0; j < expected.size(); ++j)
            pairs.push_back({std::abs(computed[i] - expected[j]), i, j});
    std::sort(pairs.begin(), pairs.end(),
              [](const Pair& a, const Pair& b) { return a.distance < b.distance; });
    std::vector<bool> used_i(computed.size()), used_j(expected.size());
    long double worst = 0.0L;
    for (const Pair& p : pairs) {
        if (used_i[p.i] || used_j[p.j]) continue;
        used_i[p.i] = used_j[p.j] = true;
        const long double scale = std::abs(expected[p.j]) == 0.0L ? 1.0L : std::abs(expected[p.j]);
        worst = std::max(worst, p.distance / scale);
    }
    return worst;
}

// |p(z)| over the sum of the terms' moduli: about the round-off of evaluating p near a root.
long double relative_residual(const std::vector<LongComplex>& coefficients, Z z) {
    Z value = 0;
    long double size = 0;
    for (const LongComplex& c : coefficients) {
        value = value * z + Z(c.re, c.im);
        size = size * std::abs(z) + std::abs(Z(c.re, c.im));
    }
    return std::abs(value) / size;
}

std::vector<long double> real_parts(const std::vector<LongComplex>& coefficients) {
    std::vector<long double> result;
    for (const LongComplex& c : coefficients)
        result.push_back(c.re);
    return result;
}

std::vector<Z> jenkins_traub(const std::vector<long double>& coefficients, int* count = nullptr) {
    const int degree = static_cast<int>(coefficients.size()) - 1;
    std::vector<long double> re(degree), im(degree);
    Roots roots;
    const int found = roots.JenkinsTraubRoots(coefficients, degree, re, im);
    if (count) *count = found;
    return as_roots(re, im, std::max(found, 0));
}

std::vector<Z> laguerre(const std::vector<LongComplex>& coefficients, int& status) {
    const int degree = static_cast<int>(coefficients.size()) - 1;
    // One slot more than the degree, to see that nothing is written past the roots.
    std::vector<long double> re(degree + 1, 42.0L), im(degree + 1, 42.0L);
    Roots roots;
    roots.LaguerreRoots(coefficients, degree, re, im, status);
    EXPECT_EQ(re[degree], 42.0L);
    EXPECT_EQ(im[degree], 42.0L);
    return as_roots(re, im, degree);
}

} // namespace

TEST(JenkinsTraubRoots, LowDegreesUseTheDirectFormulas) {
    int count = 0;
    EXPECT_EQ(jenkins_traub({2, -3}, &count), std::vector<Z>{Z(1.5L, 0)});
    EXPECT_EQ(count, 1);
    // x^2 + 1: exactly 0 plus and minus i.
    const std::vector<Z> i = jenkins_traub({1, 0, 1}, &count);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(i[0], Z(0, 1));
    EXPECT_EQ(i[1], Z(0, -1));
    EXPECT_EQ(worst_error(jenkins_traub({1, 2, 5}), {Z(-1, 2), Z(-1, -2)}), 0.0L);
    EXPECT_LT(worst_error(jenkins_traub({1, -1e10L, 1}), {Z(1e10L, 0), Z(1e-10L, 0)}), 1e-18L);
}

TEST(JenkinsTraubRoots, TrailingZerosGiveExactZeroRootsFirstAndBadInputIsRefused) {
    int count = 0;
    const std::vector<Z> roots = jenkins_traub({1, -6, 11, -6, 0, 0}, &count);
    EXPECT_EQ(count, 5);
    EXPECT_EQ(roots[0], Z(0, 0));
    EXPECT_EQ(roots[1], Z(0, 0));
    EXPECT_LT(worst_error({roots.begin() + 2, roots.end()}, {1, 2, 3}), 1e-17L);
    EXPECT_EQ(jenkins_traub({4, 0, 0, 0}, &count), std::vector<Z>(3, Z(0, 0)));
    EXPECT_EQ(count, 3);

    jenkins_traub({0, 1, 2}, &count);
    EXPECT_EQ(count, -1);
    jenkins_traub({1, NAN, 1, 1}, &count);
    EXPECT_EQ(count, 0);
}

TEST(JenkinsTraubRoots, ExtremeCoefficientSizesAreScaledAway) {
    for (const long double scale : {1.0L, 1e-300L, 1e300L, 1e-4000L, 1e4000L}) {
        int count = 0;
        const std::vector<Z> roots = jenkins_traub({scale, -6 * scale, 11 * scale, -6 * scale}, &count);
        EXPECT_EQ(count, 3);
        EXPECT_LT(worst_error(roots, {1, 2, 3}), 1e-17L)
            << "scale " << static_cast<double>(std::log10(scale));
    }
}

TEST(JenkinsTraubRoots, ClusteredAndMultipleRootsAreAsAccurateAsTheirConditionAllows) {
    // (x - 1)^3 (x - 2): a triple root is found to about the cube root of the round-off.
    const std::vector<Z> roots = jenkins_traub({1, -5, 9, -7, 2});
    EXPECT_LT(worst_error(roots, {1, 1, 1, 2}), 1e-5L);
    const auto two = std::find_if(roots.begin(), roots.end(), [](Z z) { return std::abs(z - Z(2)) < 0.5L; });
    ASSERT_NE(two, roots.end());
    EXPECT_LT(std::abs(*two - Z(2)), 1e-15L);
}

TEST(JenkinsTraubRoots, ReferencePolynomials) {
    // Tolerances follow each case's conditioning: simple, separated roots to near round-off;
    // Wilkinson's polynomials and multiple roots (multiplicity m: about eps^(1/m)) looser. The
    // convergence tests assume double round-off, and roots found late in the degree-60 jt11a
    // carry the error of many deflations.
    const std::vector<std::pair<std::string, long double>> cases = {
        {"wilkinson10", 1e-10L}, {"wilkinson20", 1e-4L}, {"jt01a", 1e-15L}, {"jt01b", 1e-15L},
        {"jt03", 1e-14L},        {"jt04", 1e-4L},        {"jt05", 1e-4L},   {"jt08", 1e-3L},
        {"jt09", 1e-11L},        {"jt10c", 1e-15L},      {"jt11a", 2e-4L},  {"henrici", 1e-14L},
        {"igyp01", 1e-6L},       {"toh02", 1e-12L},      {"lgd05", 1e-15L}, {"uhlig06", 1e-15L},
        {"fib20", 1e-12L},       {"petk05", 1e-7L},      {"toh06b", 1e-8L}, {"fibsq04", 1e-6L},
    };
    for (const auto& [name, tolerance] : cases) {
        const Reference& polynomial = reference(name);
        int count = 0;
        const std::vector<Z> roots = jenkins_traub(real_parts(polynomial.coefficients), &count);
        EXPECT_EQ(count, static_cast<int>(polynomial.roots.size())) << name;
        EXPECT_LT(worst_error(roots, polynomial.roots), tolerance) << name;
    }
}

TEST(LaguerreRoots, ComplexCoefficientsGiveTheirRootsInIndicesZeroToDegreeLessOne) {
    int status = -1;
    // (1+2i) x + (-3+4i): root (3-4i)/(1+2i) = -1-2i, by the direct formula.
    EXPECT_EQ(laguerre({{1, 2}, {-3, 4}}, status), std::vector<Z>{Z(-1, -2)});
    EXPECT_EQ(status, 0);

    for (const std::string name : {"complex3", "complex8", "rotated_wilkinson7"}) {
        const Reference& polynomial = reference(name);
        const std::vector<Z> roots = laguerre(polynomial.coefficients, status);
        EXPECT_EQ(status, 0) << name;
        EXPECT_LT(worst_error(roots, polynomial.roots), 1e-12L) << name;
        for (const Z& z : roots)
            EXPECT_LT(relative_residual(polynomial.coefficients, z), 1e-13L) << name << " at " << z;
    }
}

// A root is accepted when the last step was below 1e-14 (or 1e-13) of it, and the quotient for the
// next root comes from the iterate before that step: later roots carry errors of about that size.
TEST(LaguerreRoots, RealCoefficientsWorkToo) {
    int status = -1;
    EXPECT_LT(worst_error(laguerre({{1, 0}, {0, 0}, {1, 0}}, status), {Z(0, 1), Z(0, -1)}), 1e-13L);
    EXPECT_EQ(status, 0);
    const Reference& wilkinson = reference("wilkinson10");
    EXPECT_LT(worst_error(laguerre(wilkinson.coefficients, status), wilkinson.roots), 1e-11L);
    EXPECT_EQ(status, 0);
    // The interface of the engine's values, widened.
    std::vector<long double> re(2), im(2);
    const std::vector<quorvex::engine::complex> engine_values = {{1, 0}, {-3, 0}, {2, 0}};
    Roots().LaguerreRoots(engine_values, 2, re, im, status);
    EXPECT_EQ(status, 0);
    EXPECT_LT(worst_error(as_roots(re, im, 2), {1, 2}), 1e-13L);
}

TEST(LaguerreRoots, FailureIsReportedAndRootsNotFoundAreNaN) {
    // (x - (1+2i))^2 (x - 1): the iteration closes on a double root only linearly, which the
    // tolerances do not wait for.
    const std::vector<LongComplex> double_root = {{1, 0}, {-3, -4}, {-1, 8}, {3, -4}};
    int status = 0;
    const std::vector<Z> roots = laguerre(double_root, status);
    EXPECT_EQ(status, 1);
    EXPECT_TRUE(std::any_of(roots.begin(), roots.end(), [](Z z) { return std::isnan(z.real()); }));
    for (const Z& z : roots) {
        if (!std::isnan(z.real())) {
            EXPECT_LT(relative_residual(double_root, z), 1e-15L) << z;
        }
    }

    laguerre({{0, 0}, {1, 0}, {1, 0}}, status);
    EXPECT_EQ(status, 1) << "leading zero";
    const std::vector<LongComplex> too_long(Roots::kLaguerreRowSize + 1, {1, 0});
    laguerre(too_long, status);
    EXPECT_EQ(status, 1) << "degree beyond the rows";
}

TEST(LaguerreRoots, AStartOnARootOfFullMultiplicityGivesThatRootForAll) {
    // (x - (1+2i))^3 from 1+2i: all derivatives but the last vanish, and the remaining roots are
    // taken as one multiple root, the mean of all.
    std::vector<LongComplex> a = {{1, 0}, {-3, -6}, {-9, 12}, {11, 2}};
    std::vector<LongComplex> slots(4);
    Roots roots;
    slots[0] = {1, 2};
    int status = -1;
    roots.CLAGUE(3, a, 10, 1e-14L, 1e-12L, status, slots);
    EXPECT_EQ(status, 0);
    for (int i = 1; i <= 3; ++i)
        EXPECT_EQ(Z(slots[i].re, slots[i].im), Z(1, 2));
}

TEST(LaguerreRoots, ComplexHelpers) {
    const auto z = [](const LongComplex& c) { return Z(c.re, c.im); };
    EXPECT_EQ(z(Roots::CSQRT({-4, 0})), Z(0, 2));
    EXPECT_EQ(z(Roots::CSQRT({-4, -0.0L})), Z(0, -2));
    EXPECT_EQ(z(Roots::CSQRT({3, 4})), Z(2, 1));
    EXPECT_EQ(z(Roots::CSQRT({-3, -4})), Z(1, -2));
    // Neither part of the divisor is squared, so huge and tiny values divide without overflow.
    EXPECT_LT(std::abs(z(Roots::CDIV({3e4000L, -4e4000L}, {1e4000L, 2e4000L})) - Z(-1, -2)), 1e-18L);
    EXPECT_LT(std::abs(z(Roots::CDIV({-3e-4000L, 4e-4000L}, {2e-4000L, 1e-4000L})) - Z(-0.4L, 2.2L)), 1e-18L);
    EXPECT_LT(std::fabs(Roots::CABS({3e4000L, 4e4000L}) / 5e4000L - 1), 1e-18L);
    EXPECT_EQ(z(Roots::CMUL(Roots::CADD({1, 2}, {2, 1}), Roots::CSUB({1, 1}, {0, 2}))), Z(6, 0));
}

TEST(FindPolynomialRoots, TheMethodFollowsTheImaginaryParts) {
    const auto real = find_polynomial_roots(std::vector<LongComplex>{{1, 0}, {0, 0}, {1, 0}});
    EXPECT_FALSE(real.laguerre);
    EXPECT_EQ(real.outcome, RootsOutcome::all_found);
    ASSERT_EQ(real.roots.size(), 2u);
    EXPECT_EQ(real.roots[0].im, 1.0L);

    const Reference& complex3 = reference("complex3");
    const auto complex = find_polynomial_roots(complex3.coefficients);
    EXPECT_TRUE(complex.laguerre);
    EXPECT_EQ(complex.outcome, RootsOutcome::all_found);
    std::vector<Z> roots;
    for (const LongComplex& c : complex.roots)
        roots.emplace_back(c.re, c.im);
    EXPECT_LT(worst_error(roots, complex3.roots), 1e-12L);
}

TEST(FindPolynomialRoots, ZeroRootsFailuresAndALeadingZero) {
    // Roots at 0 come off exactly before the Laguerre iteration, which could not confirm them.
    const auto zeros = find_polynomial_roots(std::vector<LongComplex>{{1, 0}, {-1, -2}, {0, 0}, {0, 0}});
    EXPECT_TRUE(zeros.laguerre);
    EXPECT_EQ(zeros.outcome, RootsOutcome::all_found);
    ASSERT_EQ(zeros.roots.size(), 3u);
    EXPECT_EQ(zeros.roots[0].re, 0.0L);
    EXPECT_EQ(zeros.roots[1].im, 0.0L);
    EXPECT_LT(std::abs(Z(zeros.roots[2].re, zeros.roots[2].im) - Z(1, 2)), 1e-18L);

    const auto failed = find_polynomial_roots(std::vector<LongComplex>{{1, 0}, {-3, -4}, {-1, 8}, {3, -4}});
    EXPECT_EQ(failed.outcome, RootsOutcome::not_converged);
    EXPECT_LT(failed.roots.size(), 3u);

    const auto leading = find_polynomial_roots(std::vector<LongComplex>{{0, 0}, {1, 0}, {2, 0}});
    EXPECT_EQ(leading.outcome, RootsOutcome::zero_leading_coefficient);
    EXPECT_TRUE(leading.roots.empty());
}
