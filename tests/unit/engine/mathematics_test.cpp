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
    EXPECT_EQ(Mathematics::lcm(4, 6), 12);
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
}
