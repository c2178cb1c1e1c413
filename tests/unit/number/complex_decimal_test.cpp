#include "number/complex_decimal.h"

#include <gtest/gtest.h>

using namespace quorvex::number;
using Z = ComplexDecimal21;

namespace {
Z z(const char* re, const char* im) { return {Decimal21::from_text(re), Decimal21::from_text(im)}; }
std::string text(const Z& value) { return value.re.to_text(-1) + " " + value.im.to_text(-1); }
} // namespace

TEST(ComplexDecimal, FaultsLeaveTheResultUntouched) {
    Z result = z("7", "7");
    EXPECT_EQ(div(result, z("1", "1"), z("0", "0")), -1);
    EXPECT_EQ(log(result, z("0", "0")), -1);
    EXPECT_EQ(pow(result, z("0", "0"), z("-1", "0")), -1);
    EXPECT_EQ(mod(result, z("5", "0"), z("0.4", "0")), -1); // the divisor rounds to zero
    EXPECT_EQ(atanh(result, z("1", "0")), -1);
    EXPECT_EQ(atan(result, z("0", "1")), -1);
    // cos a and sinh b both zero to the working precision: a pole of tan and tanh.
    EXPECT_EQ(tan(result, z("-1.570796326794896619231321691639751442", "0")), -1);
    EXPECT_EQ(tanh(result, z("1e-30", "4.712388980384689857693965074919254326")), -1);
    EXPECT_EQ(text(result), "7E+0 7E+0");
    EXPECT_EQ(pow(result, z("0", "0"), z("2", "0")), 0);
    EXPECT_TRUE(is0(result));
}

TEST(ComplexDecimal, SquareRootsOnTheAxesAreExact) {
    EXPECT_EQ(text(sqrt(z("-4", "0"))), "0E+0 2E+0");
    EXPECT_EQ(text(sqrt(z("4", "0"))), "2E+0 0E+0");
    EXPECT_EQ(text(sqrt(z("0", "-2"))), "1E+0 -1E+0");
    Z product;
    EXPECT_EQ(div(product, z("1", "2"), z("1", "-2")), 0);
    EXPECT_EQ(text(product), "-6E-1 8E-1");
}

TEST(ComplexDecimal, TangentsNearPolesAndFarFromTheAxis) {
    Z result;
    // pi/2 to 23 digits is not a pole at 21: the value is large but known.
    ASSERT_EQ(tan(result, z("1.5707963267948966192313", "0")), 0);
    EXPECT_EQ(result.re.to_text(14), "4.61007102947816E+22");
    // sinh^2 b would overflow; the parts are their limits.
    ASSERT_EQ(tan(result, z("1", "-1e9")), 0);
    EXPECT_EQ(text(result), "0E+0 -1E+0");
    ASSERT_EQ(tanh(result, z("1e9", "1")), 0);
    EXPECT_EQ(text(result), "1E+0 0E+0");
}

TEST(ComplexDecimal, ComparisonsArePartByPart) {
    EXPECT_FALSE(gt(z("1", "2"), z("2", "1")));
    EXPECT_FALSE(lt(z("1", "2"), z("2", "1")));
    EXPECT_TRUE(gt(z("2", "2"), z("2", "1")));
    EXPECT_FALSE(gt(z("2", "1"), z("2", "1")));
    EXPECT_TRUE(ge(z("2", "1"), z("2", "1")));
    EXPECT_TRUE(le(z("1", "1"), z("2", "1")));
    EXPECT_TRUE(eq(z("0.10", "0"), z("0.1", "0")));
    EXPECT_TRUE(neq(z("0.1", "0"), z("0.1", "1e-20")));
}

TEST(ComplexDecimal, ModulusAndRoundingWorkOnRoundedIntegerParts) {
    Z r;
    EXPECT_EQ(mod(r, z("7", "0"), z("3", "0")), 0);
    EXPECT_EQ(text(r), "1E+0 0E+0");
    EXPECT_EQ(mod(r, z("7.5", "0"), z("2.5", "0")), 0); // 8 mod 3
    EXPECT_EQ(text(r), "2E+0 0E+0");
    EXPECT_EQ(mod(r, z("-7", "0"), z("3", "0")), 0);
    EXPECT_EQ(text(r), "-1E+0 0E+0");
    EXPECT_EQ(text(round(z("2.5", "-2.5"))), "3E+0 -3E+0");
    EXPECT_EQ(text(fix(z("2.7", "-2.7"))), "2E+0 -2E+0");
    EXPECT_EQ(text(floor(z("2.7", "-2.2"))), "2E+0 -3E+0");
    EXPECT_EQ(text(ceil(z("2.2", "-2.7"))), "3E+0 -2E+0");
}

TEST(ComplexDecimal, InverseFunctionsKeepTheirDigitsForLargeAndTinyArguments) {
    // asin(1e6 i) = i asinh(1e6): no cancellation in either branch.
    EXPECT_EQ(asin(z("0", "1e6")).im.to_text(14), asinh(Decimal21::from_text("1e6")).to_text(14));
    EXPECT_EQ(asin(z("0", "-1e6")).im.to_text(14), asinh(Decimal21::from_text("-1e6")).to_text(14));
    EXPECT_EQ(asin(z("1e-12", "1e-12")).re.to_text(14), "1.00000000000000E-12");
    EXPECT_EQ(asinh(z("-1e-12", "1e-12")).im.to_text(14), "1.00000000000000E-12");
}
