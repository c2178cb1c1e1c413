// The differentiation table against the engine: a function and its derivatives compared with the
// derivatives worked out by hand, the refusal of trigonometric functions in degrees mode, the
// checks of the input, failed points, columns filled one at a time, and Stop.
#include "desktop/differentiation_tool.h"

#include "engine/host.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace quorvex;
using namespace quorvex::desktop;

namespace {

constexpr DifferentiationColumns k_all{true, true, true, true};

struct Differentiation : ::testing::Test {
    engine::Parser parser{&functions::builtin_functions(), QUORVEX_DATA_DIR};
    std::string error;
    std::vector<std::string> steps; // the progress texts, each once in the order shown

    void SetUp() override { parser.set_angle_type(1); } // radians unless a test says otherwise
    void declare(const char* line) {
        parser.eval_exp(line, true, false, false);
        ASSERT_FALSE(parser.IsAnError()) << line;
    }
    std::optional<DifferentiationTable> lay_out(const std::string& expression, const ToolRange& range) {
        error.clear();
        return differentiation_table(parser, expression, range, error);
    }
    bool fill(DifferentiationTable& table, const DifferentiationColumns& wanted = k_all,
              engine::Host* host = nullptr) {
        error.clear();
        const ToolProgress progress = [this](const std::string& text, int) {
            if (steps.empty() || steps.back() != text) steps.push_back(text);
        };
        return fill_differentiation(parser, table, wanted, host, progress, error);
    }
    // The table of `expression` with every column, or a failed assertion.
    DifferentiationTable full(const std::string& expression, const ToolRange& range) {
        std::optional<DifferentiationTable> table = lay_out(expression, range);
        EXPECT_TRUE(table) << error;
        if (!table) return {};
        EXPECT_TRUE(fill(*table)) << error;
        return *table;
    }
};

struct StopAfter : engine::Host {
    explicit StopAfter(int pumps) : left(pumps) {}
    bool aborted() const override { return left <= 0; }
    void pump() override { --left; }
    int left;
};

// The automatic step gives some ten digits, a few fewer for the third derivative, whose stencil
// divides by the cube of its step.
void expect_close(double actual, double expected, const char* what, double digits = 1e-9) {
    EXPECT_NEAR(actual, expected, digits * std::max(1.0, std::abs(expected))) << what;
}

} // namespace

TEST_F(Differentiation, TheFunctionAndItsDerivativesAgreeWithTheirClosedForms) {
    // One step is the derivatives at the start value: x^3 at 2 is 8, then 3x^2, 6x and 6.
    declare("x = 7");
    const DifferentiationTable point = full("x^3", {"x", "2", "2", "1"});
    ASSERT_EQ(point.x.size(), 1u);
    EXPECT_EQ(point.x[0], 2);
    expect_close(point.columns[FunctionColumn][0], 8, "x^3");
    expect_close(point.columns[FirstDerivative][0], 12, "3x^2");
    expect_close(point.columns[SecondDerivative][0], 12, "6x");
    expect_close(point.columns[ThirdDerivative][0], 6, "6", 1e-7);
    EXPECT_EQ(steps, (std::vector<std::string>{
                         "Computing the function values", "Computing the first derivative values",
                         "Computing the second derivative values", "Computing the third derivative values"}));
    EXPECT_EQ(parser.get_var_value("x").real(), 7);
    EXPECT_FALSE(parser.is_var_locked("x"));
    EXPECT_EQ(parser.equation_count(), 0);

    // A reversed range runs from its low end; a function of the document is named by its short name.
    declare("lg[t] = LN(t)");
    const DifferentiationTable range = full("lg[t] = LN(t)", {"t", "5", "1", "5"});
    EXPECT_EQ(range.expression, "lg[t]");
    EXPECT_EQ(differentiation_heading(range, FunctionColumn), "lg (t)");
    EXPECT_EQ(differentiation_heading(range, ThirdDerivative), "lg '''(t)");
    ASSERT_EQ(range.x, (std::vector<double>{1, 2, 3, 4, 5}));
    for (size_t n = 0; n < 5; ++n) {
        const double t = range.x[n];
        expect_close(range.columns[FunctionColumn][n], std::log(t), "ln t");
        expect_close(range.columns[FirstDerivative][n], 1 / t, "1/t");
        expect_close(range.columns[SecondDerivative][n], -1 / (t * t), "-1/t^2");
        expect_close(range.columns[ThirdDerivative][n], 2 / (t * t * t), "2/t^3", 1e-7);
    }
    EXPECT_FALSE(parser.is_variable("t")); // made for the run, then gone

    const DifferentiationTable sine = full("SIN(x)", {"x", "0", "0", "1"});
    expect_close(sine.columns[FirstDerivative][0], 1, "cos 0");
    expect_close(sine.columns[ThirdDerivative][0], -1, "-cos 0", 1e-7);
}

TEST_F(Differentiation, TrigonometricFunctionsAreRefusedInDegreesModeWhereverTheyAreCalled) {
    parser.set_angle_type(0);
    declare("g[x] = 2*sin(x)");
    declare("h[x] = g[x] + x^2");
    const struct {
        const char* expression;
        const char* named;
    } refused[] = {{"SIN(x)", "SIN"}, {"x*Tan(x)", "Tan"}, {"h[x]", "sin"}, {"ASEC(x)", "ACOS"}};
    for (const auto& each : refused) {
        EXPECT_FALSE(lay_out(each.expression, {"x", "0", "1", "3"})) << each.expression;
        EXPECT_EQ(error,
                  std::string("You can not differentiate the trigonometric function ") + each.named +
                      " while in degrees mode, you must change to radians to differentiate this function.  "
                      "Use the Mathematical Options dialog to change this setting.")
            << each.expression;
    }
    // Hyperbolic functions do not depend on the angle unit.
    EXPECT_TRUE(lay_out("SINH(x)", {"x", "0", "1", "3"})) << error;

    // A table laid out in radians is not filled once the mode is degrees.
    parser.set_angle_type(1);
    std::optional<DifferentiationTable> table = lay_out("COS(x)", {"x", "0", "1", "3"});
    ASSERT_TRUE(table) << error;
    parser.set_angle_type(0);
    EXPECT_FALSE(fill(*table));
    EXPECT_NE(error.find("trigonometric function COS"), std::string::npos) << error;
}

TEST_F(Differentiation, TheInputIsCheckedBeforeARun) {
    declare("f[x] = x + 1");
    declare("busy = 1");
    parser.set_var_lock("busy", true);
    const struct {
        const char* expression;
        ToolRange range;
        const char* said;
    } refused[] = {
        {"", {"x", "0", "1", "3"}, "You have not yet defined a function or expression."},
        {"x+1", {"", "0", "1", "3"}, "missing or have not selected a variable"},
        {"f[x]",
         {"y", "0", "1", "3"},
         "f[x] is not a function of y and can not be differentiated with respect to it."},
        {"busy*2", {"busy", "0", "1", "3"}, "' busy ' is in use by another computation"},
        {"x+1", {"x", "0", "", "3"}, "A differentiation limit is missing."},
        {"x+1", {"x", "", "1", "3"}, "A differentiation limit is missing."},
        {"x+1", {"x", "SQRT(-4)", "1", "3"}, "CAN NOT be imaginary numbers"},
        {"x+1", {"x", "x", "1", "3"}, "can not be a function of x"},
        {"x+1", {"x", "0", "1", "0"}, "can not be 0"},
        {"x+1", {"x", "0", "1", "0.5"}, "can not be 0"},
        {"x+1", {"x", "1", "1", "3"}, "are equal"},
    };
    for (const auto& each : refused) {
        EXPECT_FALSE(lay_out(each.expression, each.range)) << each.expression;
        EXPECT_NE(error.find(each.said), std::string::npos) << each.expression << ": " << error;
    }
    // A fractional count of steps is cut to its whole part.
    const auto cut = lay_out("x+1", {"x", "0", "1", "3.9"});
    ASSERT_TRUE(cut) << error;
    EXPECT_EQ(cut->x, (std::vector<double>{0, 0.5, 1}));
}

TEST_F(Differentiation, AFailedPointEndsTheRunAndNamesThePoint) {
    // A complex function value: the run stops at the first point below zero.
    std::optional<DifferentiationTable> root = lay_out("SQRT(x)", {"x", "-2", "2", "5"});
    ASSERT_TRUE(root) << error;
    EXPECT_FALSE(fill(*root));
    EXPECT_NE(error.find("x = -2"), std::string::npos) << error;
    for (int column = 0; column < k_differentiation_columns; ++column)
        EXPECT_FALSE(root->filled(column));
    EXPECT_FALSE(parser.is_variable("x"));

    // A derivative at a pole: the function's column is not asked for, so the first derivative fails there.
    std::optional<DifferentiationTable> pole = lay_out("1/x", {"x", "-1", "1", "3"});
    ASSERT_TRUE(pole) << error;
    EXPECT_FALSE(fill(*pole, {false, true, true, true}));
    EXPECT_EQ(error.rfind("An error occured while computing the first differential at x = 0 : ", 0), 0u)
        << error;

    // A name the document does not have is explained.
    std::optional<DifferentiationTable> unknown = lay_out("x*k", {"x", "0", "1", "3"});
    ASSERT_TRUE(unknown) << error;
    EXPECT_FALSE(fill(*unknown));
    EXPECT_NE(error.find("You may either differentiate with respect to this variable"), std::string::npos)
        << error;
}

TEST_F(Differentiation, AColumnAskedForLaterIsComputedAloneAndTheOthersAreKept) {
    std::optional<DifferentiationTable> table = lay_out("EXP(x)", {"x", "0", "1", "3"});
    ASSERT_TRUE(table) << error;
    ASSERT_TRUE(fill(*table, {false, true, true, true})) << error;
    EXPECT_FALSE(table->filled(FunctionColumn));
    EXPECT_TRUE(table->filled(FirstDerivative) && table->filled(ThirdDerivative));

    // A mark in a kept column shows whether it was computed again.
    table->columns[FirstDerivative][0] = -1;
    steps.clear();
    ASSERT_TRUE(fill(*table)) << error;
    EXPECT_EQ(steps, std::vector<std::string>{"Computing the function values"});
    EXPECT_EQ(table->columns[FirstDerivative][0], -1);
    for (size_t n = 0; n < 3; ++n)
        expect_close(table->columns[FunctionColumn][n], std::exp(table->x[n]), "e^x");
}

TEST_F(Differentiation, StopKeepsTheFinishedColumnsAndGivesTheVariableBack) {
    declare("x = 0, 4, 5"); // incremental: its value, range and count come back as they were
    parser.set_var_value({3, 0}, "x");
    const engine::complex value = parser.get_var_value("x");
    std::optional<DifferentiationTable> table = lay_out("x^2", {"x", "0", "1", "50"});
    ASSERT_TRUE(table) << error;
    StopAfter stop(60); // past the function's 50 points, inside the first derivative's
    EXPECT_TRUE(fill(*table, k_all, &stop));
    EXPECT_TRUE(table->stopped);
    EXPECT_TRUE(table->filled(FunctionColumn));
    EXPECT_FALSE(table->filled(FirstDerivative));
    EXPECT_FALSE(table->filled(SecondDerivative));
    EXPECT_EQ(parser.get_var_value("x"), value);
    EXPECT_TRUE(parser.var_incremented("x"));
    EXPECT_EQ(parser.get_var_hilimit("x").real(), 4);
    EXPECT_EQ(parser.get_var_numpoints("x"), 5);
    EXPECT_FALSE(parser.is_var_locked("x"));
    EXPECT_EQ(parser.equation_count(), 0);
    EXPECT_EQ(parser.host(), nullptr);
}
