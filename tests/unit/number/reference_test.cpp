// The decimal layer against values computed independently (mpmath at 60 digits, Python's
// decimal module for the operators), rounded half away from zero to 15 significant digits. The
// data files and their generator live in tests/data/number; the generator says which
// arguments it picks (near ties, exact ties, huge angles, branch cuts...).
#include "number/complex_decimal.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

using namespace quorvex::number;
using D = Decimal21;
using Z = ComplexDecimal21;

namespace {

std::vector<std::vector<std::string>> read_rows(const char* file) {
    std::ifstream in(std::string(QUORVEX_NUMBER_DATA) + "/" + file);
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(in, line);) {
        std::istringstream fields(line);
        std::vector<std::string> row;
        for (std::string field; fields >> field;) row.push_back(field);
        if (!row.empty()) rows.push_back(row);
    }
    return rows;
}

D arg(const std::string& text) { return D::from_text(text); }

} // namespace

// The engine's operator path: two doubles lifted to 14 digits, one operation, 15 digits out,
// including sums, products and quotients whose exact value is a tie at the 15th digit.
TEST(Reference, OperatorsOnLiftedDoublesRoundTheExactResult) {
    const auto rows = read_rows("arithmetic.txt");
    ASSERT_GT(rows.size(), 700u);
    for (const auto& row : rows) {
        const Decimal14 a = Decimal14::lift(std::strtod(row[1].c_str(), nullptr));
        const Decimal14 b = Decimal14::lift(std::strtod(row[2].c_str(), nullptr));
        const Decimal14 result = row[0] == "add" ? a + b : row[0] == "sub" ? a - b : row[0] == "mul" ? a * b : a / b;
        EXPECT_EQ(result.to_text(14), row[3]) << row[0] << " " << row[1] << " " << row[2];
        EXPECT_EQ(result.to_double(), std::strtod(row[3].c_str(), nullptr)) << row[0] << " " << row[1] << " " << row[2];
    }
}

TEST(Reference, RealFunctionsAt21DigitsRoundLikeTheExactValue) {
    const std::map<std::string, std::function<D(const D&)>> one = {
        {"sqrt", [](const D& x) { return sqrt(x); }},   {"exp", [](const D& x) { return exp(x); }},
        {"log", [](const D& x) { return log(x); }},     {"log10", [](const D& x) { return log10(x); }},
        {"sin", [](const D& x) { return sin(x); }},     {"cos", [](const D& x) { return cos(x); }},
        {"tan", [](const D& x) { return tan(x); }},     {"asin", [](const D& x) { return asin(x); }},
        {"acos", [](const D& x) { return acos(x); }},   {"atan", [](const D& x) { return atan(x); }},
        {"sinh", [](const D& x) { return sinh(x); }},   {"cosh", [](const D& x) { return cosh(x); }},
        {"tanh", [](const D& x) { return tanh(x); }},   {"asinh", [](const D& x) { return asinh(x); }},
        {"acosh", [](const D& x) { return acosh(x); }}, {"atanh", [](const D& x) { return atanh(x); }},
    };
    const std::map<std::string, std::function<D(const D&, const D&)>> two = {
        {"pow", [](const D& x, const D& y) { return pow(x, y); }},
        {"atan2", [](const D& y, const D& x) { return atan2(y, x); }},
    };
    const auto rows = read_rows("real.txt");
    ASSERT_GT(rows.size(), 3000u);
    std::map<std::string, int> checked;
    for (const auto& row : rows) {
        const std::string& name = row[0];
        std::string actual;
        if (row.size() == 3) {
            ASSERT_TRUE(one.count(name)) << name;
            actual = one.at(name)(arg(row[1])).to_text(14);
        } else {
            ASSERT_TRUE(two.count(name)) << name;
            actual = two.at(name)(arg(row[1]), arg(row[2])).to_text(14);
        }
        EXPECT_EQ(actual, row.back()) << name << "(" << row[1] << (row.size() == 4 ? ", " + row[2] : "") << ")";
        ++checked[name];
    }
    EXPECT_EQ(checked.size(), one.size() + two.size()); // every function has its references
}

TEST(Reference, ComplexFunctionsInAllFourQuadrants) {
    const std::map<std::string, std::function<Z(const Z&)>> one = {
        {"sqrt", [](const Z& z) { return sqrt(z); }},
        {"exp", [](const Z& z) { return exp(z); }},
        {"log", [](const Z& z) { Z r; EXPECT_EQ(log(r, z), 0); return r; }},
        {"log10", [](const Z& z) { Z r; EXPECT_EQ(log10(r, z), 0); return r; }},
        {"sin", [](const Z& z) { return sin(z); }},
        {"cos", [](const Z& z) { return cos(z); }},
        {"tan", [](const Z& z) { Z r; EXPECT_EQ(tan(r, z), 0); return r; }},
        {"sinh", [](const Z& z) { return sinh(z); }},
        {"cosh", [](const Z& z) { return cosh(z); }},
        {"tanh", [](const Z& z) { Z r; EXPECT_EQ(tanh(r, z), 0); return r; }},
        {"asin", [](const Z& z) { return asin(z); }},
        {"acos", [](const Z& z) { return acos(z); }},
        {"atan", [](const Z& z) { Z r; EXPECT_EQ(atan(r, z), 0); return r; }},
        {"asinh", [](const Z& z) { return asinh(z); }},
        {"acosh", [](const Z& z) { Z r; EXPECT_EQ(acosh(r, z), 0); return r; }},
        {"atanh", [](const Z& z) { Z r; EXPECT_EQ(atanh(r, z), 0); return r; }},
    };
    const auto rows = read_rows("complex.txt");
    ASSERT_GT(rows.size(), 1000u);
    for (const auto& row : rows) {
        const std::string& name = row[0];
        const Z z{arg(row[1]), arg(row[2])};
        Z result;
        if (row.size() == 5) {
            ASSERT_TRUE(one.count(name)) << name;
            result = one.at(name)(z);
        } else {
            const Z w{arg(row[3]), arg(row[4])};
            if (name == "pow") EXPECT_EQ(pow(result, z, w), 0);
            else EXPECT_EQ(div(result, z, w), 0);
        }
        const std::string where = name + "(" + row[1] + (row[2][0] == '-' ? "" : "+") + row[2] + "i)";
        EXPECT_EQ(result.re.to_text(14), row[row.size() - 2]) << where << " real part";
        EXPECT_EQ(result.im.to_text(14), row[row.size() - 1]) << where << " imaginary part";
    }
}
