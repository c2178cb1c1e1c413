// The integration tool against the engine: single, double and triple integrals with known values,
// the checks of its input and their messages, and the document's variables as they were after a
// run, a failure or a stop.
#include "desktop/integration_tool.h"

#include "engine/host.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using namespace quorvex;
using namespace quorvex::desktop;

namespace {

struct Integration : ::testing::Test {
    engine::Parser parser{&functions::builtin_functions(), QUORVEX_DATA_DIR};
    IntegrationFailure failure;

    void declare(const char* line) {
        parser.eval_exp(line, true, false, false);
        ASSERT_FALSE(parser.IsAnError()) << line;
    }
    std::optional<IntegrationAnswer> run(const std::string& expression, std::array<IntegrationAxis, 3> axes,
                                         int order = 1, int position = 20, engine::Host* host = nullptr) {
        failure = {};
        return integrate_expression(parser, {order, expression, std::move(axes), position}, host, failure);
    }
    // The value, or NaN after saying why the run was refused.
    double value(const std::string& expression, std::array<IntegrationAxis, 3> axes, int order = 1,
                 int position = 20) {
        const auto answer = run(expression, std::move(axes), order, position);
        if (!answer) ADD_FAILURE() << expression << ": " << failure.message;
        return answer ? answer->value : std::nan("");
    }
};

// Stops the run once the engine has asked `pumps` times.
struct StopAfter : engine::Host {
    explicit StopAfter(int pumps) : left(pumps) {}
    bool aborted() const override { return left <= 0; }
    void pump() override { --left; }
    int left;
};

constexpr double k_close = 1e-9;

} // namespace

TEST_F(Integration, SingleDoubleAndTripleIntegralsMeetTheirClosedForms) {
    parser.set_angle_type(1); // radians
    EXPECT_NEAR(value("SIN(x)", {{{"x", "0", "PI"}}}, 1, 60), 2, k_close);
    EXPECT_NEAR(value("x*y", {{{"x", "0", "1"}, {"y", "0", "1"}}}, 2, 60), 0.25, k_close);
    EXPECT_NEAR(value("x*y*z", {{{"x", "0", "1"}, {"y", "0", "1"}, {"z", "0", "1"}}}, 3, 60), 0.125, k_close);
    // A function of the document by its call, over its own variable.
    declare("decay[t] = EXP(-t)");
    EXPECT_NEAR(value("decay[t] = EXP(-t)", {{{"t", "0", "1"}}}, 1, 60), 1 - std::exp(-1.0), k_close);
    // The default accuracy still gives the digits shown by default.
    EXPECT_NEAR(value("EXP(-x*y)", {{{"x", "0", "1"}, {"y", "0", "1"}}}, 2), 0.796599599297053, 1e-6);
}

TEST_F(Integration, LimitsMayUseOuterVariablesAndAreTurnedRoundSilently) {
    // The area under y = x over 0..1 with the empty expression, which integrates 1.
    EXPECT_NEAR(value("", {{{"x", "0", "y"}, {"y", "0", "1"}}}, 2, 60), 0.5, k_close);
    // The quarter disc: its inner range depends on the outer variable, and is 0 at the end.
    EXPECT_NEAR(value("", {{{"x", "0", "SQRT(1-y^2)"}, {"y", "0", "1"}}}, 2, 80), std::numbers::pi / 4, 1e-9);
    // The tetrahedron x + y + z <= 1 has volume 1/6.
    EXPECT_NEAR(value("1", {{{"x", "0", "1-y-z"}, {"y", "0", "1-z"}, {"z", "0", "1"}}}, 3, 60), 1.0 / 6,
                k_close);
    EXPECT_NEAR(value("", {{{"x", "0", "2"}}}), 2, k_close);
    EXPECT_NEAR(value("x^2", {{{"x", "2", "0"}}}, 1, 60), 8.0 / 3, k_close);
    // An inner range upside down is turned round at every outer point too, not negated.
    EXPECT_NEAR(value("", {{{"x", "y", "0"}, {"y", "0", "1"}}}, 2, 60), 0.5, k_close);
}

TEST_F(Integration, TheInputIsCheckedWithTheToolsOwnMessages) {
    declare("f[t] = t^2");
    const struct {
        const char* expression;
        std::array<IntegrationAxis, 3> axes;
        int order;
        const char* said;
        IntegrationField field;
        int axis;
    } refused[] = {
        {"x",
         {{{"", "0", "1"}}},
         1,
         "You are missing or have not selected an integration parameter.",
         IntegrationField::parameter,
         0},
        {"x*y",
         {{{"x", "0", "1"}, {" ", "0", "1"}}},
         2,
         "You are missing or have not selected an integration parameter.",
         IntegrationField::parameter,
         1},
        {"a+1", {{{"a b", "0", "1"}}}, 1, "' a b '", IntegrationField::parameter, 0},
        {"q+1",
         {{{"t", "0", "1"}}},
         1,
         "q+1 is not a function of t and can not be integrated with respect to it.",
         IntegrationField::parameter,
         0},
        {"f[t]",
         {{{"w", "0", "1"}}},
         1,
         "f[t] is not a function of w and can not be integrated with respect to it.",
         IntegrationField::parameter,
         0},
        {"x", {{{"x", "0", " "}}}, 1, "An Integration limit is missing.", IntegrationField::upper, 0},
        {"x",
         {{{"x", "x", "1"}}},
         1,
         "The integration limit can not be a function of x.",
         IntegrationField::lower,
         0},
        {"x*y",
         {{{"x", "0", "1"}, {"y", "0", "x+1"}}},
         2,
         "The integration limit can not be a function of x.",
         IntegrationField::upper,
         1},
        {"x*y",
         {{{"x", "0", "2*x"}, {"y", "0", "1"}}},
         2,
         "The integration limit can not be a function of x.",
         IntegrationField::upper,
         0},
        {"x*y",
         {{{"x", "", "y"}, {"y", "0", "1"}}},
         2,
         "An Integration limit is missing.",
         IntegrationField::lower,
         0},
        {"x",
         {{{"x", "0", "SQRT(-4)"}}},
         1,
         "The integration limits CAN NOT be imaginary number, they must be real numbers.",
         IntegrationField::upper,
         0},
        {"x*y",
         {{{"x", "0", "SQRT(-y)"}, {"y", "0", "1"}}},
         2,
         "The integration limits CAN NOT be imaginary number, they must be real numbers.",
         IntegrationField::upper,
         0},
        {"x", {{{"x", "1", "2/2"}}}, 1, "equal", IntegrationField::lower, 0},
        {"x*x", {{{"x", "0", "1"}, {"x", "0", "1"}}}, 2, "' x '", IntegrationField::parameter, 1},
        {"c*x",
         {{{"x", "0", "1"}}},
         1,
         "' c ' could not be identified as a variable or a constant! You may either integrate with repsect "
         "to this "
         "variable, or you must assign this variable a value.",
         IntegrationField::expression,
         0},
    };
    for (const auto& each : refused) {
        EXPECT_FALSE(run(each.expression, each.axes, each.order)) << each.expression;
        EXPECT_NE(failure.message.find(each.said), std::string::npos)
            << each.expression << ": " << failure.message;
        EXPECT_EQ(failure.field, each.field) << each.expression << ": " << failure.message;
        EXPECT_EQ(failure.axis, each.axis) << each.expression << ": " << failure.message;
    }
    // x, y and z need not appear in the expression: a constant over them is a length.
    EXPECT_NEAR(value("3", {{{"z", "0", "2"}}}), 6, k_close);
    // A variable that another run holds is refused.
    declare("x = 1");
    parser.set_var_lock("x", true);
    EXPECT_FALSE(run("x", {{{"x", "0", "1"}}}));
    EXPECT_NE(failure.message.find("' x '"), std::string::npos) << failure.message;
    parser.set_var_lock("x", false);
    EXPECT_FALSE(parser.is_variable("c") || parser.is_variable("y"));
    EXPECT_EQ(parser.equation_count(), 0);
}

TEST_F(Integration, TheVariablesAreAsTheyWereAfterARunAFailureAndAStop) {
    declare("y = 7");
    declare("t = 0, 1, 11");
    ASSERT_TRUE(parser.var_incremented("t"));
    // The run's y, not the document's 7.
    EXPECT_NEAR(value("x*y", {{{"x", "0", "1"}, {"y", "0", "1"}}}, 2), 0.25, 1e-6);
    // An expression that fails inside the range: its own error, and nothing left behind.
    EXPECT_FALSE(run("1/(y-0.5)", {{{"x", "0", "1"}, {"y", "0", "1"}}}, 2));
    EXPECT_NE(failure.message.find("Division By Zero"), std::string::npos) << failure.message;
    EXPECT_EQ(failure.field, IntegrationField::expression);

    StopAfter stop(50);
    const auto stopped =
        run("SIN(x*y)*t", {{{"x", "0", "y"}, {"y", "0", "1"}, {"t", "0", "1"}}}, 3, 100, &stop);
    ASSERT_TRUE(stopped) << failure.message;
    EXPECT_TRUE(stopped->stopped);
    EXPECT_LE(stop.left, 0);

    EXPECT_EQ(parser.get_var_value("y").real(), 7);
    EXPECT_FALSE(parser.is_variable("x"));
    EXPECT_TRUE(parser.var_incremented("t"));
    EXPECT_EQ(parser.get_var_numpoints("t"), 11);
    EXPECT_EQ(parser.get_var_hilimit("t").real(), 1);
    EXPECT_EQ(parser.get_var_value("t").real(), 0);
    EXPECT_FALSE(parser.is_var_locked("y") || parser.is_var_locked("t"));
    EXPECT_EQ(parser.equation_count(), 0);
}

TEST_F(Integration, TheRunsVariablesAreLockedAgainstOtherLinesWhileItGoes) {
    // What a line typed while the integral runs finds.
    struct Typing : engine::Host {
        engine::Parser* parser = nullptr;
        std::string refused;
        void pump() override {
            if (!refused.empty()) return;
            parser->eval_exp("x + 1", true, false, false);
            if (parser->IsAnError()) refused = parser->GetLastError();
            parser->ClearLastError();
        }
    } typing;
    typing.parser = &parser;
    const auto answer = run("x^3", {{{"x", "0", "1"}}}, 1, 20, &typing);
    ASSERT_TRUE(answer) << failure.message;
    EXPECT_NEAR(answer->value, 0.25, 1e-9);
    EXPECT_NE(typing.refused.find("locked"), std::string::npos) << typing.refused;
}

TEST_F(Integration, AnIntegralShortOfItsAccuracyGivesItsBestEstimateMarked) {
    // The end where the integrand is infinite keeps the last digits out of reach.
    const auto answer = run("1/SQRT(1-x^2)", {{{"x", "0", "1"}}}, 1, 100);
    ASSERT_TRUE(answer) << failure.message;
    EXPECT_FALSE(answer->converged);
    EXPECT_NEAR(answer->value, std::numbers::pi / 2, 1e-6);
    const auto easy = run("1/SQRT(1-x^2)", {{{"x", "0", "1"}}}, 1, 20);
    ASSERT_TRUE(easy);
    EXPECT_TRUE(easy->converged);
    EXPECT_FALSE(parser.IsAnError());
}

TEST_F(Integration, TheSliderAsksATenthOfTheToleranceEveryTenSteps) {
    EXPECT_DOUBLE_EQ(static_cast<double>(integration_tolerance(0)), 0.01);
    EXPECT_DOUBLE_EQ(static_cast<double>(integration_tolerance(20)), 1e-4);
    EXPECT_DOUBLE_EQ(static_cast<double>(integration_tolerance(29)), 1e-4);
    EXPECT_DOUBLE_EQ(static_cast<double>(integration_tolerance(100)), 1e-12);
    // The gauge grows with the points and never claims the end before the run is over.
    EXPECT_EQ(integration_percent(1), 0);
    EXPECT_LT(integration_percent(9), integration_percent(65));
    EXPECT_LT(integration_percent(1'000'000), 100);
}
