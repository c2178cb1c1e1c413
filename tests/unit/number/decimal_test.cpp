#include "number/decimal_functions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
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
    EXPECT_EQ(Decimal14::from_text("1e99999999999999999999").to_text(0), "1E+67108864"); // saturated
    EXPECT_TRUE(Decimal14::from_text("-7e-99999999999").is_zero());
    EXPECT_EQ(Decimal14::from_text("0.000123e+5").to_text(-1), "1.23E+1");
    EXPECT_EQ(Decimal14::from_text("2e-3.5").to_text(-1), "2E-3");
}

TEST(DecimalText, ReaderSurvivesAnyBytes) {
    std::mt19937 random(12345);
    const std::string alphabet = "0123456789.eE+- \t";
    for (int i = 0; i < 3000; ++i) {
        std::string text(static_cast<size_t>(random() % 40), '\0');
        for (char& c : text)
            c = i % 2 ? alphabet[random() % alphabet.size()] : static_cast<char>(random() % 256);
        const Decimal21 value = Decimal21::from_text(text);
        const std::string written = value.to_text(14);
        // Whatever was read writes out as a number that reads back as itself.
        EXPECT_EQ(Decimal21::from_text(written).to_text(14), written) << text;
        EXPECT_FALSE(std::isnan(value.to_double()));
    }
    EXPECT_EQ(Decimal21::from_text(std::string(5000, '7')).to_text(3), "7.778E+4999");
}

TEST(DecimalText, WriterRoundsHalvesAwayFromZero) {
    EXPECT_EQ(Decimal14::from_text("2.5").to_text(0), "3E+0");
    EXPECT_EQ(Decimal14::from_text("-2.5").to_text(0), "-3E+0");
    EXPECT_EQ(Decimal14::from_text("0.125").to_text(1), "1.3E-1"); // half-even would give 1.2
    EXPECT_EQ(Decimal14::from_text("9.9995").to_text(3), "1.000E+1");
    EXPECT_EQ(Decimal14::from_text("1.00000000000000499").to_text(14), "1.00000000000000E+0");
    EXPECT_EQ(Decimal14::from_text("123").to_text(4), "1.2300E+2");
    EXPECT_EQ(Decimal14().to_text(3), "0.000E+0");
    // Past 17 places the writer works on the backend's full digit string; the rule is the same.
    EXPECT_EQ(Decimal21::from_text("1.000000000000000000005").to_text(20), "1.00000000000000000001E+0");
    EXPECT_EQ(Decimal21::from_text("-2.5e-400").to_text(0), "-3E-400");
    EXPECT_EQ((Decimal21(1) / Decimal21(3)).to_text(30), "3.333333333333333333333333333333E-1");
}

TEST(DecimalText, RoundTripThroughFifteenDigitsRemovesBinaryNoise) {
    EXPECT_EQ((Decimal14::lift(0.1) + Decimal14::lift(0.2)).to_double(), 0.3);
    EXPECT_EQ((Decimal14::lift(1.0) / Decimal14::lift(3.0)).to_double(), 0.333333333333333);
    EXPECT_EQ((Decimal14::lift(1.0000000000001) * Decimal14::lift(1.05)).to_text(14), "1.05000000000011E+0");
    EXPECT_EQ(Decimal14::lift(0.1 + 0.2).to_text(-1), "3E-1"); // 14 digits hide the binary tail
    // An overflow stays one: an infinity lifts to the largest value and lands as an infinity.
    EXPECT_EQ(Decimal14::lift(-HUGE_VAL).to_double(), -HUGE_VAL);
    EXPECT_EQ((Decimal14::lift(HUGE_VAL) * Decimal14::lift(1e-300)).to_double(), HUGE_VAL);
    // A tie at the 15th digit goes away from zero, as the number was written.
    EXPECT_EQ(Decimal14::lift(123456789012345.0).to_text(-1), "1.2345678901235E+14");
    EXPECT_EQ(Decimal14::lift(-99999999999999.5).to_text(-1), "-1E+14");
    EXPECT_EQ(Decimal14::lift(5e-324).to_text(-1), "5E-324");
    EXPECT_EQ(Decimal21::from(Decimal50::from_text("0.12345678901234567890123")).to_text(-1),
              "1.2345678901234567890123E-1");
    // A long double holding a double's value lifts as that double; one with more bits is
    // rounded from its own shortest text.
    EXPECT_EQ(Decimal14::lift(static_cast<long double>(0.1 + 0.2)).to_text(-1), "3E-1");
    EXPECT_EQ(Decimal14::lift(static_cast<long double>(123456789012345.0)).to_text(-1), "1.2345678901235E+14");
    EXPECT_EQ(Decimal14::lift(1.0L / 3).to_text(-1), "3.3333333333333E-1");
    EXPECT_EQ(Decimal14::lift(-1e4000L).to_text(-1), "-1E+4000");
    EXPECT_EQ(Decimal14::lift(2.0L / 3).to_long_double(), 0.666666666666670L);
}

TEST(Decimal, OverflowSaturatesAndNothingBecomesNaN) {
    const Decimal21 huge = exp(Decimal21(200000000)); // beyond the decimal range
    EXPECT_EQ(huge.to_double(), std::numeric_limits<double>::infinity());
    EXPECT_EQ((-huge).to_double(), -std::numeric_limits<double>::infinity());
    EXPECT_EQ((huge * huge).to_text(2), "1.00E+67108864");
    EXPECT_TRUE((huge * huge - huge * huge).is_zero());
    EXPECT_TRUE(exp(Decimal21(-200000000)).is_zero());
    EXPECT_EQ(sinh(Decimal21(-1000000000)).to_double(), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(Decimal21::from_text("1e400").to_double(), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Decimal21::from_text("1e-400").to_double(), 0.0);
    // Still within the range, e^x keeps its digits however large x is.
    EXPECT_EQ(exp(Decimal21(100000)).to_text(14), "2.80666336042612E+43429");
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
    // The quotient 628101.999... comes out of the division as 628102; the remainder must not
    // go negative for it.
    Decimal21::integer_div_rem(Decimal21::from_text("24495977.99999999999999999999999999999999999999999961"),
                               Decimal21(39), q, r);
    EXPECT_EQ(q.to_text(-1), "6.28101E+5");
    EXPECT_EQ(r.to_text(-1), "3.899999999999999999999999999999999999999999961E+1");
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
    EXPECT_EQ(pow(Decimal21(-1), Decimal21::from_text("1e30"), &fault).to_text(-1), "1E+0");
    EXPECT_EQ(pow(Decimal21(-1), Decimal21::from_text("1000000000000000000000000000001"), &fault).to_text(-1), "-1E+0");
    EXPECT_EQ(pow(Decimal21(0), Decimal21(2), &fault).to_text(-1), "0E+0");
    EXPECT_FALSE(fault);
    pow(Decimal21(0), Decimal21(0), &fault);
    EXPECT_TRUE(fault);
    fault = false;
    EXPECT_TRUE(log10(Decimal21::from_text("1e-5")).is_integer()); // exact, not -4.999...
    EXPECT_TRUE(log1p(Decimal21(-1), &fault).is_zero());
    EXPECT_TRUE(fault);
    fault = false;
    atanh(Decimal21(1), &fault);
    EXPECT_TRUE(fault);
    EXPECT_EQ(sin(Decimal50::from_text("30") * pi<50>() / Decimal50(180)).to_text(14), "5.00000000000000E-1");
}
