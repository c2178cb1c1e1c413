// Integration, differentiation and the root search on mapped equations.
#include "engine/parser.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace quorvex::engine;

namespace {

// Counts the moments the calculation gives the interface, and stops it after a number of them.
struct CountingHost : Host {
    int pumps = 0;
    int stop_after = -1;
    bool aborted() const override { return stop_after >= 0 && pumps >= stop_after; }
    void pump() override { ++pumps; }
};

int map(Parser& parser, const char* text) {
    complex value;
    parser.eval_exp("x = 1", value, true, false, false);
    return parser.map_expression(text);
}

} // namespace

TEST(Calculus, RombergIntegratesPolynomialsExactlyAndStopsOnRequest) {
    Parser parser;
    EXPECT_EQ(parser.RombIntegrate(map(parser, "x^3"), "x", -1, 1, 1e-10L, true), 0); // odd, symmetric
    EXPECT_NEAR(static_cast<double>(parser.RombIntegrate(map(parser, "x^2"), "x", 0, 3, 1e-10L, true)), 9, 1e-12);
    EXPECT_EQ(parser.RombIntegrate(map(parser, "5"), "x", 0, 2, 1e-10L, true), 10); // stage 5 settles a constant
    // 1/x from 1 to e is 1.
    EXPECT_NEAR(static_cast<double>(parser.RombIntegrate(map(parser, "1/x"), "x", 1, 2.718281828459045L, 1e-12L, true)),
                1, 1e-11);
    EXPECT_FALSE(parser.IsAnError());

    CountingHost host;
    host.stop_after = 10;
    parser.set_host(&host);
    EXPECT_EQ(parser.RombIntegrate(map(parser, "1/x"), "x", 1, 3, 1e-14L, true), 0);
    EXPECT_FALSE(parser.IsAnError()); // stopped, not failed: no message

    // An error in the expression ends the integration with its own message.
    parser.set_host(nullptr);
    EXPECT_EQ(parser.RombIntegrate(map(parser, "1/x"), "x", 0, 1, 1e-10L, true), 0);
    EXPECT_TRUE(parser.IsAnError());
}

TEST(Calculus, DerivativesOfEachOrderExtrapolateToTheExactValue) {
    Parser parser;
    const int cube = map(parser, "x^3");
    long double tolerance = 1e-10L;
    EXPECT_NEAR(static_cast<double>(parser.Derivative(cube, "x", 2, 0.1L, 1, tolerance, true)), 12, 1e-9);
    EXPECT_NEAR(static_cast<double>(parser.Derivative(cube, "x", 2, 0.1L, 2, tolerance, true)), 12, 1e-6);
    EXPECT_NEAR(static_cast<double>(parser.Derivative(cube, "x", 2, 0.1L, 3, tolerance, true)), 6, 1e-7);
    EXPECT_EQ(parser.get_var_value("x"), complex(1, 0)); // the variable is put back
    EXPECT_FALSE(parser.IsAnError());

    // A complex value (a positive imaginary part) is refused by the slope.
    parser.Derivative(map(parser, "i*x"), "x", 1, 0.1L, 1, tolerance, true);
    EXPECT_STREQ(parser.GetLastError(),
                 "Complex numbers have been encountered in the slope computation of the differential algorithm!");
}

TEST(Calculus, RootSearchFindsSignChangesAndRefusesIntervalsWithout) {
    Parser parser;
    const int square = map(parser, "x^2-2");
    long double root = 0;
    ASSERT_TRUE(parser.Root(square, "x", 1.3L, 1.5L, 1e-12L, 100, root, false));
    EXPECT_NEAR(static_cast<double>(root), std::sqrt(2.0), 1e-12);
    // Over a wide interval too: the bracket is kept, so the answer is the root and not where an
    // iteration count ran out.
    ASSERT_TRUE(parser.Root(square, "x", 0, 2, 1e-12L, 100, root, false));
    EXPECT_NEAR(static_cast<double>(root), std::sqrt(2.0), 1e-12);
    EXPECT_FALSE(parser.Root(square, "x", 2, 3, 1e-12L, 100, root, false)); // no change of sign
    EXPECT_FALSE(parser.Root(square, "x", 3, 3, 1e-12L, 100, root, false));

    // An end already at a root costs one evaluation.
    CountingHost host;
    parser.set_host(&host);
    const int line = map(parser, "x-1");
    ASSERT_TRUE(parser.Root(line, "x", 1, 5, 1e-12L, 100, root, false));
    EXPECT_EQ(root, 1);
    EXPECT_EQ(host.pumps, 1);

    // A change of sign across a pole or a jump is no root, whether the bracket closes on a point
    // where the function fails or where it grows without bound; the failure inside the bracket
    // is no error of the search.
    for (const char* no_root : {"1/x", "1/x^3", "x/(x^2)^0.5"}) {
        EXPECT_FALSE(parser.Root(map(parser, no_root), "x", -0.3L, 0.7L, 1e-14L, 500, root, false)) << no_root;
        EXPECT_FALSE(parser.IsAnError()) << no_root;
    }
    // Every root found lies in its bracket and makes the function vanish there.
    const int sine = map(parser, "SIN(x*180/PI)");
    for (long double low = -100; low < 100; low += 2) {
        if (!parser.Root(sine, "x", low, low + 2, 1e-14L, 500, root, false)) continue;
        EXPECT_TRUE(root >= low && root <= low + 2) << low;
        EXPECT_NEAR(std::sin(static_cast<double>(root)), 0, 1e-12) << low;
    }

    // A cubic with three roots: each bracket finds its own.
    parser.set_host(nullptr);
    const int cubic = map(parser, "(x-1)*(x-2)*(x-3)");
    for (double expected : {1.0, 2.0, 3.0}) {
        ASSERT_TRUE(parser.Root(cubic, "x", expected - 0.05, expected + 0.1, 1e-12L, 100, root, false));
        EXPECT_NEAR(static_cast<double>(root), expected, 1e-9);
    }
}

TEST(Calculus, NevilleInterpolationGivesTheValueAndTheLastCorrection) {
    Parser parser;
    // Points of y = 2x^2 + 1 at x = 1..4: the cubic through them is the quadratic itself.
    const long double xa[] = {0, 1, 2, 3, 4}, ya[] = {0, 3, 9, 19, 33};
    long double y = 0, dy = 0;
    parser.PolyInterpolate(xa, ya, 4, 2.5L, &y, &dy);
    EXPECT_NEAR(static_cast<double>(y), 13.5, 1e-12);
    EXPECT_NEAR(static_cast<double>(dy), 0, 1e-12);
    const long double repeated[] = {0, 1, 1, 2};
    parser.PolyInterpolate(repeated, ya, 3, 0.5L, &y, &dy);
    EXPECT_STREQ(parser.GetLastError(), "An error occurred while interpolating between two point values!");
}
