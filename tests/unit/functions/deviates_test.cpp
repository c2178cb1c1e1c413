#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <string>

using quorvex::engine::complex;
using quorvex::engine::Parser;
using quorvex::functions::builtin_functions;

namespace {

// The mean of many draws of one call; the generator is seeded, so the outcome is fixed.
double mean_of_draws(Parser& parser, const std::string& call, int draws = 4000) {
    double total = 0;
    for (int i = 0; i < draws; ++i) {
        complex value;
        parser.eval_exp(call.c_str(), value, true, true, false);
        EXPECT_FALSE(parser.IsAnError()) << call << ": " << parser.GetLastError();
        total += value.real();
    }
    return total / draws;
}

} // namespace

TEST(Deviates, DrawsFollowTheirDistributions) {
    Parser parser(&builtin_functions());
    parser.random_engine().seed(2026);
    EXPECT_NEAR(mean_of_draws(parser, "RAND[]"), 0.5, 0.02);
    EXPECT_NEAR(mean_of_draws(parser, "RAND[10, 20]"), 15, 0.2);
    EXPECT_NEAR(mean_of_draws(parser, "NORDEV[]"), 0, 0.06);
    EXPECT_NEAR(mean_of_draws(parser, "NORDEV[5, 2]"), 5, 0.12);
    EXPECT_NEAR(mean_of_draws(parser, "EXPDEV[1, 2]"), 3, 0.12);
    EXPECT_NEAR(mean_of_draws(parser, "BERDEV[0.3]"), 0.3, 0.03);
    EXPECT_NEAR(mean_of_draws(parser, "BNLDEV[0.5, 10]"), 5, 0.1);
    EXPECT_NEAR(mean_of_draws(parser, "BETADEV[2, 2]"), 0.5, 0.02);
    EXPECT_NEAR(mean_of_draws(parser, "CHIDEV[4]"), 4, 0.15);
    EXPECT_NEAR(mean_of_draws(parser, "GAMDEV[2, 3]"), 6, 0.25);
    EXPECT_NEAR(mean_of_draws(parser, "DEXPDEV[1, 1]"), 1, 0.08);
    EXPECT_NEAR(mean_of_draws(parser, "LOGDEV[2, 1]"), 2, 0.1);
    EXPECT_NEAR(mean_of_draws(parser, "NCHIDEV[3, 2]"), 5, 0.2);
    // Half of all Rayleigh draws lie below the median.
    double below = 0;
    for (int i = 0; i < 4000; ++i) {
        complex value;
        parser.eval_exp("RAYDEV[1, 3]", value, true, true, false);
        below += value.real() < 3 ? 1 : 0;
    }
    EXPECT_NEAR(below / 4000, 0.5, 0.03);
}

TEST(Deviates, RefuseParametersThatMakeNoDistribution) {
    Parser parser(&builtin_functions());
    const std::pair<const char*, const char*> cases[] = {
        {"EXPDEV[1, 0]", "Shape Parameter In Exponential Deviate Function Can Not Be Zero."},
        {"RAYDEV[2, 2]", "Median Is Equal To The Anchor In Rayleigh Deviate Function."},
        {"BERDEV[1.5]", "The probability parameter in the BERDEV must be between the values of 0 and 1!"},
        {"BNLDEV[0.5, 0]", "The number of trials must be greater than 0 in the BNLDEV function."},
        {"NCHIDEV[1, 2]", "The degrees of freedom (dof) must be greater than 1 in the NCHIDEV function."},
        {"NCHIDEV[3, -1]", "The non-centralized parameter must be greater than or equal to 0 in the NCHIDEV function."},
        {"GAMDEV[0, 1]", "The value of alpha must be greater than 0 in the GAMDEV function."},
        {"RAND[1]", "Two parameters required in RAND function call!"},
    };
    for (const auto& [call, message] : cases) {
        parser.eval_exp(call, true, true, false);
        EXPECT_STREQ(parser.GetLastError(), message) << call;
    }
}
