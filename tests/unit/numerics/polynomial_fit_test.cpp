// The least-squares polynomial against the NIST StRD polynomial sets: significant digits of the
// worst certified coefficient and of R squared, and the fit's refusals.
#include "numerics/polynomial_fit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>

using namespace quorvex::numerics;

namespace {

// A NIST StRD linear least-squares file: the certified coefficients B0, B1, ..., R squared, and
// the data (y before x on each line).
struct Certified {
    std::vector<long double> coefficients;
    long double r_squared = 0;
    std::vector<long double> x, y;
};

Certified read_nist(const std::string& name) {
    std::ifstream in(std::string(QUORVEX_FIXTURES) + "nist/" + name + ".dat");
    EXPECT_TRUE(in) << name;
    Certified set;
    const std::regex parameter(R"(^\s*B(\d+)\s+(\S+)\s+\S+\s*$)");
    const std::regex r_squared(R"(^\s*R-Squared\s+(\S+)\s*$)");
    bool data = false;
    std::string line;
    while (std::getline(in, line)) {
        std::smatch match;
        if (data) {
            std::istringstream row(line);
            long double y = 0, x = 0;
            if (row >> y >> x) set.y.push_back(y), set.x.push_back(x);
        } else if (std::regex_match(line, match, parameter)) {
            set.coefficients.push_back(std::stold(match[2].str()));
        } else if (std::regex_match(line, match, r_squared)) {
            set.r_squared = std::stold(match[1].str());
        } else if (std::regex_match(line, std::regex(R"(^Data:\s+y\s+x\s*$)"))) {
            data = true;
        }
    }
    return set;
}

// Correct significant digits of `value` against `certified` (an exact zero counts as 15).
double digits(long double value, long double certified) {
    if (value == certified) return 19;
    const long double error = std::fabs(value - certified) / std::fabs(certified);
    return -std::log10(static_cast<double>(error));
}

} // namespace

TEST(PolynomialFit, TheNistPolynomialSetsKeepTheirDigits) {
    const struct {
        const char* name;
        double coefficient_digits;
    } sets[] = {{"Norris", 14},   {"Pontius", 14.5}, {"Filip", 14},    {"Wampler1", 13},
                {"Wampler2", 16}, {"Wampler3", 12.5}, {"Wampler4", 13}, {"Wampler5", 11.5}};
    for (const auto& set : sets) {
        const Certified certified = read_nist(set.name);
        ASSERT_GT(certified.coefficients.size(), 1u) << set.name;
        ASSERT_FALSE(certified.x.empty()) << set.name;
        std::string error;
        const auto fit =
            fit_polynomial(certified.x, certified.y, static_cast<int>(certified.coefficients.size()), error);
        ASSERT_TRUE(fit) << set.name << ": " << error;
        double worst = 19;
        for (size_t k = 0; k < certified.coefficients.size(); ++k)
            worst = std::min(worst, digits(fit->coefficients[k], certified.coefficients[k]));
        EXPECT_GE(worst, set.coefficient_digits) << set.name;
        // R squared to 15 digits: exactly 1 for Wampler 1 and 2, whose data lie on the polynomial.
        EXPECT_GE(digits(fit->determination, certified.r_squared), 15) << set.name;
    }
}

TEST(PolynomialFit, ALineThroughExactPointsAndTheRefusals) {
    std::string error;
    const auto line = fit_polynomial({1, 2, 3}, {2, 4, 6}, 2, error);
    ASSERT_TRUE(line) << error;
    EXPECT_NEAR(static_cast<double>(line->coefficients[0]), 0, 1e-15);
    EXPECT_NEAR(static_cast<double>(line->coefficients[1]), 2, 1e-15);
    EXPECT_EQ(line->determination, 1);
    EXPECT_NEAR(static_cast<double>(line->correlation), 1, 1e-15);
    // A falling line has a negative correlation coefficient.
    const auto falling = fit_polynomial({1, 2, 3, 4}, {8, 6.1L, 3.9L, 2}, 2, error);
    ASSERT_TRUE(falling);
    EXPECT_LT(falling->correlation, -0.99);
    EXPECT_NEAR(static_cast<double>(polynomial_value(falling->coefficients, 2.5L)), 5, 1e-12);

    EXPECT_FALSE(fit_polynomial({1, 1, 2}, {1, 2, 3}, 3, error)); // two different x for a parabola
    EXPECT_NE(error.find("the data has 2"), std::string::npos) << error;
    EXPECT_FALSE(fit_polynomial({1, 2}, {1, 2}, 0, error));
    EXPECT_FALSE(fit_polynomial({1, NAN}, {1, 2}, 2, error));
}
