// Precise arithmetic as a user meets it: answers, variables, comparisons, errors and the shown
// precision, next to the default rules. (Its accuracy over many expressions: accuracy_test.cpp.)
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <string>

using quorvex::engine::complex;
using quorvex::engine::Parser;

namespace {

struct PreciseParser : Parser {
    PreciseParser() : Parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR) {
        set_precise(true);
        set_angle_type(1);
    }
    std::string shown(const char* line) {
        const std::string answer = eval_exp(line, true, false, false);
        return IsAnError() ? std::string("error: ") + GetLastError() : answer;
    }
};

TEST(PreciseArithmetic, CarriedDigitsMakeTheShownAnswerTheTrueValue) {
    PreciseParser p;
    EXPECT_EQ(p.shown("1/3*3"), "1");
    EXPECT_EQ(p.shown("1/3+1/3+1/3"), "1");
    EXPECT_EQ(p.shown("0.1+0.2"), "0.3");
    EXPECT_EQ(p.shown("e*e-EXP(2)"), "0");
    EXPECT_EQ(p.shown("LOG(8,2)"), "3");
    // What cancels below the carried digits is zero, not a remnant.
    EXPECT_EQ(p.shown("1/3*3-1"), "0");
    EXPECT_EQ(p.shown("SIN(PI)"), "0");
    EXPECT_EQ(p.shown("((1+1E-20)-1)*1E+20"), "1");
    EXPECT_EQ(p.shown("2^0.5*2^0.5"), "2");
    EXPECT_EQ(p.shown("20!"), "2.4329020081766e+18");
    p.set_angle_type(0);
    EXPECT_EQ(p.shown("SIN(30)"), "0.5");
    EXPECT_EQ(p.shown("COS(90)"), "0");
    EXPECT_EQ(p.shown("ATAN(1)*4"), "180");

    // The same lines by the default rules, which the option leaves as they were.
    p.set_precise(false);
    p.set_angle_type(1);
    EXPECT_EQ(p.shown("1/3*3"), "0.99999999999999");
    EXPECT_EQ(p.shown("0.1+0.2"), "0.3");
}

TEST(PreciseArithmetic, ComparisonsAndIntegerTestsSeeTheValueAsShown) {
    PreciseParser p;
    EXPECT_EQ(p.shown("0.1+0.2==0.3"), "1");
    EXPECT_EQ(p.shown("1/3*3==1"), "1");
    EXPECT_EQ(p.shown("1/3*3<1"), "0");
    EXPECT_EQ(p.shown("1+1E-13>1"), "1");
    EXPECT_EQ(p.shown("1+1E-15>1"), "0"); // equal to 14 digits
    EXPECT_EQ(p.shown("(1/3*3)!"), "1");
    EXPECT_EQ(p.shown("(-8)^(1/3)"), "-2");
    EXPECT_EQ(p.shown("4^0.5"), "2");
}

TEST(PreciseArithmetic, VariablesKeepTheirDigitsUntilSetAnotherWay) {
    PreciseParser p;
    p.eval_exp("x = 1/3", true, false, false);
    EXPECT_EQ(p.shown("x*3"), "1");
    EXPECT_EQ(p.shown("x"), "0.33333333333333");
    // A value put in by a tool is the double it was given: its digits are those of the double.
    p.set_var_value(complex(0.25, 0), "x");
    EXPECT_EQ(p.shown("x*4"), "1");
    p.eval_exp("f[t] = t/7", true, false, false);
    EXPECT_EQ(p.shown("f[1]*7"), "1");
}

TEST(PreciseArithmetic, ErrorsBranchesAndComplexValuesAreThoseOfTheDefaultRules) {
    PreciseParser p;
    EXPECT_EQ(p.shown("1/0").rfind("error: ", 0), 0u);
    EXPECT_EQ(p.shown("LN(0)").rfind("error: ", 0), 0u);
    EXPECT_EQ(p.shown("SQRT(-4)"), "2i");
    EXPECT_EQ(p.shown("(1+2i)*(3-i)"), "5+5i");
    EXPECT_EQ(p.shown("(1+2i)/(3+4i)"), "0.44+0.08i");
    // Complex arguments keep their digits too (by default: 0.99999999999998+1i).
    EXPECT_EQ(p.shown("SQRT(1+i)^2"), "1+i");
    EXPECT_NE(p.shown("ACOS(2)").find("must be between -1 and 1"), std::string::npos);
    p.set_neg_sqrt(true);
    EXPECT_EQ(p.shown("SQRT(2)*SQRT(2)"), "2");
    EXPECT_EQ(p.shown("SQRT(9)"), "-3");
}

TEST(PreciseArithmetic, TheAnswerIsRoundedOnceToTheDigitsShown) {
    PreciseParser p;
    p.answer_format().precision = 5;
    EXPECT_EQ(p.shown("2/3"), "0.66667");
    // A tie rounds half away from zero, from the exact digits.
    EXPECT_EQ(p.shown("1.00005"), "1.0001");
    EXPECT_EQ(p.shown("-0.000123455"), "-0.00012346");
    p.answer_format().precision = 14;
    // 0.1 + 0.2 * 10^-14 lies on a tie of the 14th digit; the default's 15-digit step and the
    // double underneath would be free to go either way.
    EXPECT_EQ(p.shown("0.12345678901234+5E-15"), "0.12345678901235");
    EXPECT_EQ(p.shown("-(0.12345678901234+5E-15)"), "-0.12345678901235");
}

} // namespace

namespace {

// The mapper keeps its double arithmetic: a program mapped in precise arithmetic gives the points
// the default one gives.
TEST(PreciseArithmetic, MappedExpressionsRunAsInTheDefaultMode) {
    for (const char* text : {"x^3-2x+1/x", "SIN(x)*EXP(-x/10)+x^2", "SQRT(x)+x!", "PI*x+e^x-(x>2)+POW(x,2)"}) {
        PreciseParser precise;
        Parser plain(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
        plain.set_angle_type(1);
        for (Parser* p : {static_cast<Parser*>(&precise), &plain}) p->eval_exp("x = 1", true, false, false);
        const int precise_equation = precise.map_expression(text);
        const int plain_equation = plain.map_expression(text);
        ASSERT_NE(precise_equation, 0) << text;
        ASSERT_NE(plain_equation, 0) << text;
        for (double x : {1.0, 2.0, 3.0, 5.0}) {
            precise.set_var_value({x, 0}, "x");
            plain.set_var_value({x, 0}, "x");
            EXPECT_EQ(precise.solve_equation(precise_equation, false, true),
                      plain.solve_equation(plain_equation, false, true)) << text << " at " << x;
        }
    }
}

} // namespace
