#include "number/decimal_functions.h"

#include <gtest/gtest.h>

#include <string>

using namespace quorvex::number;

TEST(DecimalText, ReaderTakesWhatFitsAndNothingElse) {
    EXPECT_EQ(Decimal14::from_text("").to_text(2), "0.00E+0");
    EXPECT_EQ(Decimal14::from_text(" \t-12.5e-3xyz").to_text(-1), "-1.25E-2");
    EXPECT_EQ(Decimal14::from_text("+.5").to_text(-1), "5E-1");
    EXPECT_EQ(Decimal14::from_text("7.").to_text(-1), "7E+0");
    EXPECT_EQ(Decimal14::from_text("1e").to_text(-1), "1E+0");
    EXPECT_EQ(Decimal14::from_text("1.2.3").to_text(-1), "1.2E+0");
    EXPECT_EQ(Decimal14::from_text("abc").to_text(0), "0E+0");
    EXPECT_EQ(Decimal14::from_text("-").to_text(0), "0E+0");
    EXPECT_EQ(Decimal14::from_text("\xff\x01\x85").to_text(0), "0E+0");
    EXPECT_EQ(Decimal14::from_text("1e99999999999999999999").to_text(0), "1E+100000");
}

TEST(DecimalText, WriterRoundsHalvesAwayFromZero) {
    EXPECT_EQ(Decimal14::from_text("2.5").to_text(0), "3E+0");
    EXPECT_EQ(Decimal14::from_text("-2.5").to_text(0), "-3E+0");
    EXPECT_EQ(Decimal14::from_text("0.125").to_text(1), "1.3E-1"); // half-even would give 1.2
    EXPECT_EQ(Decimal14::from_text("9.9995").to_text(3), "1.000E+1");
    EXPECT_EQ(Decimal14::from_text("1.00000000000000499").to_text(14), "1.00000000000000E+0");
    EXPECT_EQ(Decimal14::from_text("123").to_text(4), "1.2300E+2");
    EXPECT_EQ(Decimal14().to_text(3), "0.000E+0");
}

TEST(DecimalText, RoundTripThroughFifteenDigitsRemovesBinaryNoise) {
    EXPECT_EQ((Decimal14::lift(0.1) + Decimal14::lift(0.2)).to_double(), 0.3);
    EXPECT_EQ((Decimal14::lift(1.0) / Decimal14::lift(3.0)).to_double(), 0.333333333333333);
    EXPECT_EQ((Decimal14::lift(1.0000000000001) * Decimal14::lift(1.05)).to_text(14), "1.05000000000011E+0");
    EXPECT_EQ(Decimal14::lift(0.1 + 0.2).to_text(-1), "3E-1"); // 14 digits hide the binary tail
    EXPECT_EQ(Decimal14::lift(1.0 / 0.0).to_text(0), "0E+0");
    // A tie at the 15th digit goes away from zero, as the number was written.
    EXPECT_EQ(Decimal14::lift(123456789012345.0).to_text(-1), "1.2345678901235E+14");
    EXPECT_EQ(Decimal14::lift(-99999999999999.5).to_text(-1), "-1E+14");
    EXPECT_EQ(Decimal14::lift(5e-324).to_text(-1), "5E-324");
    EXPECT_EQ(Decimal21::from(Decimal50::from_text("0.12345678901234567890123")).to_text(-1),
              "1.2345678901234567890123E-1");
}

TEST(Decimal, IntegerOperations) {
    EXPECT_EQ(Decimal21(170).factorial().to_text(14), "7.25741561530800E+306");
    EXPECT_EQ(Decimal21(0).factorial().to_text(0), "1E+0");
    EXPECT_TRUE(Decimal21::from_text("2.5").factorial().is_zero());
    EXPECT_TRUE(Decimal21(-3).factorial().is_zero());
    Decimal21 q, r;
    Decimal21::integer_div_rem(Decimal21(-7), Decimal21(2), q, r);
    EXPECT_EQ(q.to_text(-1), "-3E+0");
    EXPECT_EQ(r.to_text(-1), "-1E+0");
    Decimal21::integer_div_rem(Decimal21::from_text("450"), Decimal21::from_text("360.0"), q, r);
    EXPECT_EQ(r.to_text(-1), "9E+1");
    EXPECT_EQ(Decimal21::from_text("-2.5").round().to_text(0), "-3E+0");
    EXPECT_EQ(Decimal21::from_text("-2.5").floor().to_text(0), "-3E+0");
    EXPECT_EQ(Decimal21::from_text("-2.5").ceil().to_text(0), "-2E+0");
    EXPECT_EQ(Decimal21::from_text("-2.5").trunc().to_text(0), "-2E+0");
    EXPECT_TRUE(Decimal21::from_text("1e20").is_integer());
    EXPECT_FALSE(Decimal21::from_text("1.5").is_integer());
    EXPECT_EQ(Decimal21(3).compare(Decimal21(4)), -1);
    EXPECT_TRUE((Decimal21(1) / Decimal21(0)).is_zero());
}

TEST(Decimal, DomainFaultsGiveZeroAndSayso) {
    bool fault = false;
    EXPECT_TRUE(log(Decimal21(0), &fault).is_zero());
    EXPECT_TRUE(fault);
    fault = false;
    EXPECT_TRUE(sqrt(Decimal21(-4), &fault).is_zero());
    EXPECT_TRUE(fault);
    fault = false;
    pow(Decimal21(-8), Decimal21::from_text("0.5"), &fault);
    EXPECT_TRUE(fault);
    fault = false;
    EXPECT_EQ(pow(Decimal21(-2), Decimal21(3), &fault).to_text(-1), "-8E+0");
    EXPECT_FALSE(fault);
    atanh(Decimal21(1), &fault);
    EXPECT_TRUE(fault);
    EXPECT_EQ(sin(Decimal50::from_text("30") * pi<50>() / Decimal50(180)).to_text(14), "5.00000000000000E-1");
}
