// The reference integrals: the digits each reaches, and that no wrong answer claims to converge.
#include "integral_references.h"

#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>

using namespace quorvex::engine;

namespace {

using quorvex::testing::k_references;
using quorvex::testing::Reference;

long double evaluate(Parser& parser, const char* text) {
    complex value;
    parser.eval_exp(text, value, true, false, false);
    EXPECT_FALSE(parser.IsAnError()) << text;
    return value.real();
}

int map(Parser& parser, const char* text) {
    complex value;
    parser.eval_exp("x = 0.5", value, true, false, false);
    return parser.map_expression(text);
}

// Correct significant digits of `value` against the reference.
double digits_of(long double value, long double reference) {
    const long double relative = std::fabs(value - reference) / std::fabs(reference);
    return relative == 0 ? 20 : -std::log10(static_cast<double>(relative));
}

} // namespace

TEST(IntegralBattery, EachReferenceIntegralReachesItsDigitsAndNoWrongAnswerClaimsToConverge) {
    Parser parser(&quorvex::functions::builtin_functions());
    parser.set_angle_type(1);
    for (const Reference& reference : k_references) {
        const long double expected = std::stold(reference.value);
        const int equation = map(parser, reference.expression);
        ASSERT_FALSE(parser.IsAnError()) << reference.expression;
        const long double low = evaluate(parser, reference.lower), high = evaluate(parser, reference.upper);
        const IntegralResult found = parser.integrate(equation, "x", low, high, 1e-12L, true);
        const std::string what = std::string(reference.expression) + " over " + reference.lower + ".." + reference.upper;
        EXPECT_GE(digits_of(found.value, expected), reference.digits) << what << " = " << static_cast<double>(found.value);
        EXPECT_EQ(found.converged, reference.converges) << what;
        // An answer given as converged is right to the accuracy asked for, at every accuracy.
        for (const long double accuracy : {1e-12L, 1e-8L, 1e-4L}) {
            const IntegralResult at = parser.integrate(equation, "x", low, high, accuracy, true);
            if (at.converged)
                EXPECT_LE(std::fabs(at.value - expected), 10 * accuracy * std::fabs(expected))
                    << what << " at " << static_cast<double>(accuracy);
            else
                EXPECT_STREQ(parser.GetLastError(), Parser::integral_not_converged_message()) << what;
        }
        parser.delete_equation(equation);
    }
}

namespace {
struct StoppingHost : Host {
    long outer_points = 0;
    long stop_after = 0;
    bool aborted() const override { return stop_after > 0 && outer_points >= stop_after; }
    void progress(long done, long) override { outer_points = done; }
};
} // namespace

TEST(NestedIntegrals, InnerLimitsFollowTheOuterVariablesAndStopWorks) {
    Parser parser(&quorvex::functions::builtin_functions());
    parser.set_angle_type(1);
    complex value;
    parser.eval_exp("y = 0.5", value, true, false, false);
    parser.eval_exp("z = 0.5", value, true, false, false);
    const int integrand = map(parser, "x*y");
    const int zero = parser.map_expression("0"), one = parser.map_expression("1");
    const int up_to_y = parser.map_expression("y"), up_to_z = parser.map_expression("z");
    // The integral of x*y over 0 <= x <= y <= 1 is 1/8; with a third level 0 <= y <= z <= 1 of
    // x*y it is 1/40.
    IntegralResult found = parser.integrate_nested(integrand, {{"x", zero, up_to_y}, {"y", zero, one}}, 1e-10L, true);
    EXPECT_TRUE(found.converged);
    EXPECT_NEAR(static_cast<double>(found.value), 0.125, 1e-11);
    found = parser.integrate_nested(integrand, {{"x", zero, up_to_y}, {"y", zero, up_to_z}, {"z", zero, one}}, 1e-8L,
                                    true);
    EXPECT_TRUE(found.converged);
    EXPECT_NEAR(static_cast<double>(found.value), 1.0 / 40, 1e-10);
    // The quarter disc: the outer integrand SQRT(1-y^2) has a steep end that Romberg cannot
    // settle, so the outer integral must not take the inner integrals' success as its own.
    const int disc = parser.map_expression("SQRT(1-y^2)"), unit = map(parser, "1");
    found = parser.integrate_nested(unit, {{"x", zero, disc}, {"y", zero, one}}, 1e-10L, true);
    EXPECT_TRUE(found.converged);
    EXPECT_NEAR(static_cast<double>(found.value), std::numbers::pi / 4, 1e-9);

    // A stop between outer points ends the run: no answer, no message.
    StoppingHost host;
    host.stop_after = 5;
    parser.set_host(&host);
    found = parser.integrate_nested(integrand, {{"x", zero, up_to_y}, {"y", zero, one}}, 1e-10L, true);
    EXPECT_FALSE(found.converged);
    EXPECT_EQ(host.outer_points, 5);
    EXPECT_FALSE(parser.IsAnError());
}
