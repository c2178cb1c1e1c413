// The integer path of sums, differences and products must give the decimal type's answers bit
// for bit, whatever the operands: that is what lets the mapper use it.
#include "number/decimal.h"
#include "number/fast_decimal.h"
#include "number/lift_digits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <utility>
#include <vector>

using quorvex::number::Decimal14;

namespace {

double slow_add(double a, double b) { return (Decimal14::lift(a) + Decimal14::lift(b)).to_double(); }
double slow_sub(double a, double b) { return (Decimal14::lift(a) - Decimal14::lift(b)).to_double(); }
double slow_mul(double a, double b) { return (Decimal14::lift(a) * Decimal14::lift(b)).to_double(); }
double slow_div(double a, double b) { return (Decimal14::lift(a) / Decimal14::lift(b)).to_double(); }

// Operands of every kind that matters: short and long digit strings, wide and narrow exponent
// gaps, near-equal values (cancellation), halves at the 15th digit, integers, signs, extremes.
std::vector<double> operands(std::mt19937_64& random, size_t count) {
    std::vector<double> values = {0.0, -0.0, 1.0, -1.0, 0.5, 0.1, 0.2, 0.3, 1e308, -1e308, 1.7976931348623157e308,
                                  4.9e-324, 2.2250738585072014e-308, 1e-300, 123456789012345.0, 99999999999999.5,
                                  1.00000000000005, 0.999999999999995, 5e-15, 1e15, 1e16, 9007199254740993.0};
    std::uniform_int_distribution<int> kind(0, 5), exponent(-320, 308), small_exponent(-20, 20), digits(1, 17);
    std::uniform_real_distribution<double> unit(1.0, 10.0);
    while (values.size() < count) {
        switch (kind(random)) {
        case 0: values.push_back(unit(random) * std::pow(10.0, exponent(random))); break;
        case 1: values.push_back(unit(random) * std::pow(10.0, small_exponent(random))); break;
        case 2: values.push_back(std::round(unit(random) * std::pow(10.0, digits(random)))); break;
        case 3: {
            // A value and a neighbour a few units of the 14th or 15th digit away.
            const double base = values[random() % values.size()];
            values.push_back(base * (1 + (static_cast<int>(random() % 11) - 5) * 1e-14));
            break;
        }
        case 4: values.push_back((static_cast<double>(random() % 2000001) - 1000000) / 1000.0); break;
        default: values.push_back(-values[random() % values.size()]); break;
        }
    }
    return values;
}

} // namespace

TEST(FastDecimal, SumsDifferencesAndProductsMatchTheDecimalTypeBitForBit) {
    std::mt19937_64 random(20261122);
    const std::vector<double> values = operands(random, 3000);
    int checked = 0, ties = 0;
    for (int trial = 0; trial < 120000; ++trial) {
        const double a = values[random() % values.size()], b = values[random() % values.size()];
        // Compared as bits, so a zero's sign and a value's last bit both count.
        const auto same = [](double x, double y) { return std::memcmp(&x, &y, sizeof x) == 0 || (std::isnan(x) && std::isnan(y)); };
        ASSERT_TRUE(same(quorvex::number::decimal_add(a, b), slow_add(a, b))) << a << " + " << b;
        ASSERT_TRUE(same(quorvex::number::decimal_sub(a, b), slow_sub(a, b))) << a << " - " << b;
        ASSERT_TRUE(same(quorvex::number::decimal_mul(a, b), slow_mul(a, b))) << a << " * " << b;
        if (b != 0 && !same(quorvex::number::decimal_div(a, b), slow_div(a, b))) {
            // The decimal type's division is not exact: an exact tie (2.3870238512214 / 96 =
            // 0.02486483178355625) comes out a hair below and rounds down. The integer path
            // keeps the rule and rounds it away from zero; nothing else may differ.
            const std::string text = (Decimal14::lift(a) / Decimal14::lift(b)).to_text(19);
            std::string digits;
            for (const char c : text.substr(0, text.find_first_of("Ee")))
                if (c >= '0' && c <= '9') digits += c;
            ASSERT_EQ(digits.substr(digits.find_first_not_of('0') + 15, 5), "50000") << a << " / " << b << " = " << text;
            ++ties;
        }
        ++checked;
    }
    EXPECT_EQ(checked, 120000);
    EXPECT_LT(ties, 100);
    // The rule itself, on the classic cases.
    EXPECT_EQ(quorvex::number::decimal_add(0.1, 0.2), 0.3);
    EXPECT_EQ(quorvex::number::decimal_mul(1.1, 1.1), 1.21);
    EXPECT_EQ(quorvex::number::decimal_sub(1.0, 0.9), 0.1);
    EXPECT_EQ(quorvex::number::decimal_div(2, 3), 0.666666666666667);
    EXPECT_EQ(quorvex::number::decimal_div(2.3870238512214, 96), 0.0248648317835563);
    // 0.1250000000000125 exactly: the half rounds away from zero.
    EXPECT_EQ(quorvex::number::decimal_div(1.0000000000001, 8), 0.125000000000013);
    EXPECT_EQ(quorvex::number::decimal_div(-1.0000000000001, 8), -0.125000000000013);
}

TEST(FastDecimal, TheLiftWithoutTextGivesTheDigitsOfTheShortestText) {
    std::mt19937_64 random(314);
    const auto value_of = [](std::int64_t mantissa, int exponent) {
        // Trailing zeros moved into the exponent, so that equal values compare equal.
        while (mantissa != 0 && mantissa % 10 == 0) {
            mantissa /= 10;
            ++exponent;
        }
        return std::pair{mantissa, exponent};
    };
    std::vector<double> values = operands(random, 200000);
    // Doubles whose shortest text is a half-way point of the 14th digit, or next to one.
    for (int i = 0; i < 2000; ++i) {
        const double tie = (static_cast<double>(random() % 90000000000000 + 10000000000000) + 0.5) *
                           std::pow(10.0, static_cast<int>(random() % 40) - 30);
        values.insert(values.end(), {tie, std::nextafter(tie, 0.0), std::nextafter(tie, 1e300)});
    }
    for (const double x : values) {
        std::int64_t fast_mantissa = 0, text_mantissa = 0;
        int fast_exponent = 0, text_exponent = 0;
        const bool fast = quorvex::number::lift_digits(x, fast_mantissa, fast_exponent);
        ASSERT_EQ(fast, quorvex::number::lift_digits_by_text(x, text_mantissa, text_exponent)) << x;
        if (fast) {
            ASSERT_EQ(value_of(fast_mantissa, fast_exponent), value_of(text_mantissa, text_exponent)) << x;
        }
    }
}
