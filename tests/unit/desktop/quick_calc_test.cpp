// The quick calc table against the engine: values over a range, both square-root branches,
// failed points, the checks of its input, Stop, and the document's variable left as it was.
#include "desktop/quick_calc.h"

#include "engine/host.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

using namespace quorvex;
using namespace quorvex::desktop;

namespace {

struct QuickCalc : ::testing::Test {
    engine::Parser parser{&functions::builtin_functions(), QUORVEX_DATA_DIR};
    ToolQuestions yes{[](const std::string&) { return true; }, [](const std::string&) { return true; }};
    std::string error;

    void declare(const char* line) {
        parser.eval_exp(line, true, false, false);
        ASSERT_FALSE(parser.IsAnError()) << line;
    }
    std::optional<QuickCalcTable> run(const std::string& expression, ToolRange range, engine::Host* host = nullptr) {
        error.clear();
        return quick_calc(parser, expression, range, yes, host, error);
    }
};

struct StopAfter : engine::Host {
    explicit StopAfter(int points) : left(points) {}
    bool aborted() const override { return left <= 0; }
    void pump() override { --left; }
    int left;
};

} // namespace

TEST_F(QuickCalc, ATableOverTheRangeInDecimalStepsAndTheVariableComesBack) {
    declare("x = 7");
    declare("sq[x] = x^2 + 1");
    const auto table = run("sq[x] = x^2 + 1", {"x", "-1", "2/2", "5"});
    ASSERT_TRUE(table) << error;
    EXPECT_EQ(table->expression, "sq[x]");
    ASSERT_EQ(table->rows.size(), 5u);
    const double xs[] = {-1, -0.5, 0, 0.5, 1};
    for (size_t r = 0; r < 5; ++r) {
        EXPECT_EQ(table->rows[r].x, xs[r]);
        EXPECT_DOUBLE_EQ(table->rows[r].value.real(), xs[r] * xs[r] + 1);
    }
    EXPECT_FALSE(table->imaginary_found);
    EXPECT_EQ(parser.get_var_value("x").real(), 7);

    // A typed expression of a variable the document does not have: made for the run, then gone.
    const auto typed = run("t^3", {"t", "0", "1", "3"});
    ASSERT_TRUE(typed) << error;
    EXPECT_DOUBLE_EQ(typed->rows[1].value.real(), 0.125);
    EXPECT_FALSE(parser.is_variable("t"));
    EXPECT_EQ(parser.equation_count(), 0);
}

TEST_F(QuickCalc, ASquareRootGoesBackAlongItsSecondBranchAndComplexValuesAreMarked) {
    const auto table = run("SQRT(x)", {"x", "-1", "1", "5"});
    ASSERT_TRUE(table) << error;
    EXPECT_TRUE(table->two_solutions);
    ASSERT_EQ(table->rows.size(), 9u); // out and back: 2n - 1
    EXPECT_TRUE(table->imaginary_found && table->large_imaginary_found);
    EXPECT_DOUBLE_EQ(table->rows[0].value.imag(), 1); // SQRT(-1) = i
    EXPECT_EQ(table->rows[5].x, 0.5);                  // the way back starts below the end
    EXPECT_DOUBLE_EQ(table->rows[5].value.real(), -std::sqrt(0.5));

    ToolQuestions no = yes;
    no.both_solutions = [](const std::string&) { return false; };
    const auto once = quick_calc(parser, "SQRT(x)", {"x", "-1", "1", "5"}, no, nullptr, error);
    ASSERT_TRUE(once);
    EXPECT_EQ(once->rows.size(), 5u);
}

TEST_F(QuickCalc, AFailedPointIsARowOrEndsTheRunAsTheUserSays) {
    std::string asked;
    ToolQuestions ask = yes;
    ask.go_on_after_error = [&asked](const std::string& text) {
        asked = text;
        return true;
    };
    auto table = quick_calc(parser, "1/x", {"x", "-1", "1", "3"}, ask, nullptr, error);
    ASSERT_TRUE(table) << error;
    ASSERT_EQ(table->rows.size(), 3u);
    EXPECT_TRUE(table->rows[1].failed);
    EXPECT_EQ(asked.rfind("An error occured while computing the function at x = 0 : ", 0), 0u) << asked;
    ask.go_on_after_error = [](const std::string&) { return false; };
    table = quick_calc(parser, "1/x", {"x", "-1", "1", "3"}, ask, nullptr, error);
    ASSERT_TRUE(table);
    EXPECT_EQ(table->rows.size(), 1u);

    StopAfter stop(4);
    table = run("x*2", {"x", "0", "1", "1000"}, &stop);
    ASSERT_TRUE(table);
    EXPECT_TRUE(table->stopped);
    EXPECT_EQ(table->rows.size(), 4u);
    EXPECT_FALSE(parser.is_variable("x"));
}

TEST_F(QuickCalc, TheInputIsCheckedBeforeARun) {
    declare("f[x] = x + 1");
    const struct {
        const char* expression;
        ToolRange range;
        const char* said;
    } refused[] = {
        {"", {"x", "0", "1", "3"}, "You have not yet defined a function or expression."},
        {"x+1", {"", "0", "1", "3"}, "missing or have not selected a variable"},
        {"x+1", {"2x", "0", "1", "3"}, "' 2x ' is not a variable name."},
        {"x+1", {"PI", "0", "1", "3"}, "is not a variable name"},
        {"f[x]", {"y", "0", "1", "3"}, "f[x] is not a function of y."},
        {"y+1", {"x", "0", "1", "3"}, "y+1 is not a function of x."},
        {"x+1", {"x", "x-1", "1", "3"}, "The start value can not be a function of x."},
        {"x+1", {"x", "0", "", "3"}, "The end value is missing."},
        {"x+1", {"x", "0", "SQRT(-4)", "3"}, "The end value must be a real number."},
        {"x+1", {"x", "0", "1", "0"}, "from 1 to"},
        {"x+1", {"x", "0", "1", "2.5"}, "whole number"},
        {"x+1", {"x", "1", "1", "3"}, "are equal"},
    };
    for (const auto& each : refused) {
        EXPECT_FALSE(run(each.expression, each.range)) << each.expression;
        EXPECT_NE(error.find(each.said), std::string::npos) << each.expression << ": " << error;
    }
    const auto reversed = run("x+1", {"x", "2", "0", "3"});
    ASSERT_TRUE(reversed);
    EXPECT_EQ(reversed->rows.front().x, 0); // put the right way round
}
