// The integer path of sums, differences and products must give the decimal type's answers bit
// for bit, whatever the operands: that is what lets the mapper use it.
#include "number/decimal.h"
#include "number/fast_decimal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

using quorvex::number::Decimal14;

namespace {

double slow_add(double a, double b) { return (Decimal14::lift(a) + Decimal14::lift(b)).to_double(); }
double slow_sub(double a, double b) { return (Decimal14::lift(a) - Decimal14::lift(b)).to_double(); }
double slow_mul(double a, double b) { return (Decimal14::lift(a) * Decimal14::lift(b)).to_double(); }

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
    int checked = 0;
    for (int trial = 0; trial < 120000; ++trial) {
        const double a = values[random() % values.size()], b = values[random() % values.size()];
        // Compared as bits, so a zero's sign and a value's last bit both count.
        const auto same = [](double x, double y) { return std::memcmp(&x, &y, sizeof x) == 0 || (std::isnan(x) && std::isnan(y)); };
        ASSERT_TRUE(same(quorvex::number::decimal_add(a, b), slow_add(a, b))) << a << " + " << b;
        ASSERT_TRUE(same(quorvex::number::decimal_sub(a, b), slow_sub(a, b))) << a << " - " << b;
        ASSERT_TRUE(same(quorvex::number::decimal_mul(a, b), slow_mul(a, b))) << a << " * " << b;
        ++checked;
    }
    EXPECT_EQ(checked, 120000);
    // The rule itself, on the classic cases.
    EXPECT_EQ(quorvex::number::decimal_add(0.1, 0.2), 0.3);
    EXPECT_EQ(quorvex::number::decimal_mul(1.1, 1.1), 1.21);
    EXPECT_EQ(quorvex::number::decimal_sub(1.0, 0.9), 0.1);
}
