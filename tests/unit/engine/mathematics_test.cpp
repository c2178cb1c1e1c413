#include "engine/mathematics.h"

#include <gtest/gtest.h>

using namespace quorvex::engine;

TEST(Mathematics, RoundingHelpers) {
    EXPECT_TRUE(Mathematics::are_equal(1, 1.5, 0.5)); // the bounds count as equal
    EXPECT_FALSE(Mathematics::are_equal(1, 1.6, 0.5));
    EXPECT_EQ(Mathematics::round(2.5), 3);
    EXPECT_EQ(Mathematics::round(-2.5), -3);
    EXPECT_EQ(Mathematics::round(2.4), 2);
    EXPECT_EQ(Mathematics::trunc(-2.7), -2);
    EXPECT_TRUE(Mathematics::is_even(-4));
    EXPECT_FALSE(Mathematics::is_even(3));
    EXPECT_FALSE(Mathematics::is_even(2.5));
    EXPECT_EQ(Mathematics::sign(-0.1), -1);
    EXPECT_EQ(Mathematics::sign(0), 0);
}

TEST(Mathematics, RoundZeroClearsOnlyTheNegligiblePart) {
    Mathematics math;
    complex z(1e-20, 5);
    EXPECT_EQ(math.round_zero(z, 1e-12), complex(0, 5));
    complex tiny(1e-20, 1e-20);
    EXPECT_EQ(math.round_zero(tiny, 1e-12), complex(0, 0));
    long double x = -1e-13L;
    EXPECT_EQ(math.round_zero(x, 1e-12L), 0.0L);
}

TEST(Mathematics, SignificantFiguresIgnoreTrailingZerosButCountInnerOnes) {
    Mathematics math;
    EXPECT_EQ(math.numsigfig(100), 1);
    EXPECT_EQ(math.numsigfig(101), 3);
    EXPECT_EQ(math.numsigfig(-0.05), 1);
    EXPECT_EQ(math.numsigfig(1.0 / 3.0), 14); // the value enters at 14 digits
    EXPECT_EQ(math.precision(0.1), 1);
    EXPECT_EQ(math.precision(12.5), 3);
}

TEST(Mathematics, TextClassifiers) {
    EXPECT_TRUE(Mathematics::is_number(" 5"));
    EXPECT_TRUE(Mathematics::is_number("-2.5"));
    EXPECT_TRUE(Mathematics::is_number("1+2i"));
    EXPECT_FALSE(Mathematics::is_number("2+3"));
    EXPECT_FALSE(Mathematics::is_number("2i+1"));
    EXPECT_FALSE(Mathematics::is_number("x"));
    EXPECT_TRUE(Mathematics::is_integer("-42"));
    EXPECT_TRUE(Mathematics::is_integer("42,7"));
    EXPECT_FALSE(Mathematics::is_integer("4.2"));
    EXPECT_FALSE(Mathematics::is_integer("4x"));
    EXPECT_TRUE(Mathematics::is_real("-1.5e-3"));
    EXPECT_TRUE(Mathematics::is_real("2E+10 "));
    EXPECT_FALSE(Mathematics::is_real("e5"));
    EXPECT_FALSE(Mathematics::is_real("1.5x"));
    EXPECT_TRUE(Mathematics::is_delim('\0'));
    EXPECT_TRUE(Mathematics::is_delim('\t'));
    EXPECT_FALSE(Mathematics::is_delim('.'));
    EXPECT_FALSE(Mathematics::is_delim('_'));
}

TEST(Mathematics, IntegerFunctions) {
    Mathematics math;
    math.set_silent(true);
    EXPECT_EQ(Mathematics::gcd(12, 18), 6);
    EXPECT_EQ(Mathematics::lcm(4, 6), "12");
    // 15-digit operands: exact well past 32 and 64 bits.
    EXPECT_EQ(Mathematics::gcd(999999999999998, 499999999999999), 499999999999999);
    EXPECT_EQ(Mathematics::lcm(999999999999989, 999999999999947), "999999999999936000000000000583");
    EXPECT_EQ(Mathematics::basecon(1099511627776, 16), "10000000000");
    EXPECT_EQ(Mathematics::gcd(0, 0), 0);
    EXPECT_EQ(Mathematics::basecon(255, 16), "FF");
    EXPECT_EQ(Mathematics::basecon(0, 2), "0");
    EXPECT_EQ(Mathematics::basecon(10, 2), "1010");
    EXPECT_EQ(math.modulus(complex(-7, 0), complex(3, 0)), complex(-1, 0));
    math.set_solving_map(true);
    math.modulus(complex(7.5, 0), complex(2, 0));
    EXPECT_STREQ(math.GetLastError(), "Modulus Arguments Must Be Integers!");
    math.modulus(complex(7, 1), complex(2, 0));
    EXPECT_STREQ(math.GetLastError(), "Modulus Operator ' % ' Can Not Be Used With Complex Numbers!");
    EXPECT_EQ(math.modulus(complex(999999999999999, 0), complex(1000, 0)), complex(999, 0));
    math.modulus(complex(1e15, 0), complex(7, 0));
    EXPECT_STREQ(math.GetLastError(), "Modulus Arguments Must Be Integers Of At Most 15 Digits!");
}

TEST(Mathematics, DecimalRoundTripsHandBackTheirText) {
    Mathematics math;
    math.set_silent(true);
    std::string text;
    EXPECT_EQ(math.real_add(0.1L, 0.2L, &text), 0.3L);
    EXPECT_EQ(text, "3.00000000000000E-1");
    EXPECT_EQ(math.char_mult("1.0000000000001", "1.05", &text), math.real_mult(1.0000000000001L, 1.05L));
    EXPECT_EQ(text, "1.05000000000011E+0");
    EXPECT_EQ(math.char_div("1", "3"), math.real_div(1, 3));
    EXPECT_EQ(math.real_abs(-2.5L), 2.5L);
    EXPECT_EQ(math.char_abs("-7"), 7.0L);
    EXPECT_EQ(math.real_string(1.0L / 3.0L, 14), "3.33333333333330E-1"); // enters at 14 digits
    EXPECT_EQ(math.trunc_toprec(2.0L / 3.0L, 3), 0.6667L); // 3 digits behind the first
    math.set_solving_map(true);
    EXPECT_EQ(math.real_div(1, 0), 0);
    EXPECT_STREQ(math.GetLastError(), "Division By Zero Encountered!");
    EXPECT_EQ(math.complex_div(complex(1, 1), complex(0, 0)), complex(0, 0));
    const complex log100 = math.logarithm(complex(100, 0), 10);
    EXPECT_EQ(log100, complex(2, 0));
    EXPECT_EQ(math.logarithm(complex(8, 0), 2), complex(3, 0));
}

TEST(Mathematics, FractionsOfDecimals) {
    Mathematics math;
    int status = -1;
    EXPECT_EQ(math.DecToFrac(0.75, 1e-12L, status), (Fraction{3, 4}));
    EXPECT_EQ(status, 0);
    EXPECT_EQ(math.DecToFrac(-2.5, 1e-12L, status), (Fraction{-5, 2}));
    EXPECT_EQ(math.DecToFrac(1.0 / 7.0, 1e-12L, status), (Fraction{1, 7}));
    math.DecToFrac(3 + 1e-11, 1e-12L, status);
    EXPECT_EQ(status, 2);
}
