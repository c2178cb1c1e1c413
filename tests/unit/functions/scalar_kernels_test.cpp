#include "functions/builtin_functions.h"
#include "functions/builtin_index.h"
#include "functions/scalar_kernels.h"

#include <gtest/gtest.h>

using namespace quorvex::functions;
using quorvex::engine::complex;
using quorvex::engine::Parser;

TEST(ScalarKernels, EvenRootsReportTheirSecondValueAndCanDeliverIt) {
    Parser parser(&builtin_functions());
    parser.eval_exp("SQRT(9)", true, true, false);
    EXPECT_TRUE(parser.root_taken());
    parser.eval_exp("SQRT(9i)", true, true, false);
    EXPECT_FALSE(parser.root_taken());
    parser.eval_exp("16^0.25", true, true, false);
    EXPECT_TRUE(parser.root_taken());
    parser.eval_exp("8^(1/3)", true, true, false);
    EXPECT_FALSE(parser.root_taken());

    parser.set_neg_sqrt(true);
    EXPECT_STREQ(parser.eval_exp("SQRT(9)", true, false, false), "-3");
    EXPECT_STREQ(parser.eval_exp("SQRT(-4)", true, false, false), "-2i");
    EXPECT_STREQ(parser.eval_exp("16^0.25", true, false, false), "-2");
    EXPECT_STREQ(parser.eval_exp("2^3", true, false, false), "8");
}

TEST(ScalarKernels, RunningWithoutUnwindingTheyReturnZeroAfterReporting) {
    Parser parser(&builtin_functions());
    parser.SetSilentMode(true);
    ScalarKernels kernels(parser);
    parser.SetSolvingMap(true);
    EXPECT_EQ(kernels._log(complex(0, 0), LN), complex(0, 0));
    EXPECT_STREQ(parser.GetLastError(), "Can not compute the LN of zero, calculation aborted!");
    parser.SetSolvingMap(true);
    EXPECT_EQ(kernels._trig_func(complex(90, 0), TAN), complex(0, 0));
    EXPECT_STREQ(parser.GetLastError(),
                 "90 is not a valid parameter for the function TAN, the function can not be evaluated at this value!");
    parser.SetSolvingMap(true);
    // Without a text to write into, only base 10 can become a value.
    EXPECT_EQ(kernels._basecon(complex(255, 0), complex(10, 0), BASECON, nullptr), complex(255, 0));
    EXPECT_EQ(kernels._basecon(complex(255, 0), complex(16, 0), BASECON, nullptr), complex(0, 0));
    EXPECT_STREQ(parser.GetLastError(),
                 "Only base 10 mathematics are currently supported. The BASECON function call is not using base 10");
}

TEST(ScalarKernels, AngleModesAndPolarForms) {
    Parser parser(&builtin_functions());
    ScalarKernels kernels(parser);
    EXPECT_EQ(kernels._trig_func(complex(30, 0), SIN), complex(0.5, 0));
    EXPECT_EQ(kernels._arc_trig_func(complex(0.5, 0), ASIN), complex(30, 0));
    EXPECT_NEAR(kernels._angle(complex(-1, 0)).real(), 180, 1e-12); // never -180
    // The polar forms work in long double and round only what falls below the zero limit.
    EXPECT_NEAR(std::abs(kernels._rtop(complex(0, 0), complex(2, 0), RTOP) - complex(2, 90)), 0, 1e-12);
    EXPECT_EQ(kernels._ptor(complex(2, 0), complex(90, 0), PTOR).real(), 0);
    EXPECT_NEAR(kernels._ptor(complex(2, 0), complex(90, 0), PTOR).imag(), 2, 1e-15);
    parser.set_angle_type(1);
    EXPECT_EQ(kernels._trig_func(complex(0, 0), COS), complex(1, 0));
    EXPECT_EQ(kernels._arc_trig_func(complex(1, 0), ACOS), complex(0, 0));
    // PTOC takes radians in either mode.
    EXPECT_EQ(kernels._polar(complex(2, 0), complex(0, 0), PTOC), complex(2, 0));
    EXPECT_EQ(kernels._degree(complex(3.141592653589793, 0)), complex(180, 0));
}

TEST(ScalarKernels, TheDigitLimitOnLiteralsEndsWithTheCallEvenAfterAnError) {
    Parser parser(&builtin_functions());
    parser.eval_exp("SIN(123456789012345)", true, true, false);
    EXPECT_TRUE(parser.IsAnError());
    EXPECT_STREQ(parser.eval_exp("123456789012345+1", true, false, false), "1.2345678901235e+14");
}
