// The root finder against the engine: the scan for real roots (each root once, the negative
// branch of a square root, values with imaginary parts dropped, Stop, the variable left as it
// was) and all roots of a polynomial by its coefficients. Reference roots come from factored
// forms: (x-1)(x-2)(x-3), (x-1)(x+1), x^2+1 = (x-i)(x+i), (x-1)(x-(1+2i)).
#include "desktop/root_finder_tool.h"

#include "engine/host.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"
#include "graph/graph_data.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

using namespace quorvex;
using namespace quorvex::desktop;

namespace {

struct RootFinder : ::testing::Test {
    engine::Parser parser{&functions::builtin_functions(), QUORVEX_DATA_DIR};
    RootFinderQuestions questions{[](const std::string&) { return true; }, {}};
    RootFinderRefusal refusal;
    std::array<std::string, 100> coefficients;

    std::optional<RootTable> scan(const std::string& expression, ToolRange range, int precision = 6,
                                  engine::Host* host = nullptr) {
        refusal = {};
        return find_real_roots(parser, expression, range, precision, questions, host, refusal);
    }
    std::optional<RootTable> polynomial(int precision = 6) {
        refusal = {};
        return find_complex_roots(parser, coefficients, "x", precision, refusal);
    }
    static std::vector<double> real_roots(const RootTable& table) {
        std::vector<double> xs;
        for (const RootRow& row : table.rows)
            xs.push_back(row.root.real());
        std::sort(xs.begin(), xs.end());
        return xs;
    }
};

struct StopAfter : engine::Host {
    explicit StopAfter(int pumps) : left(pumps) {}
    bool aborted() const override { return left <= 0; }
    void pump() override { --left; }
    int left;
};

} // namespace

TEST_F(RootFinder, EachRealRootOnceWithItsValueAndTheVariableComesBack) {
    parser.eval_exp("x = 7", true, false, false);
    // 150 steps put no grid point on a root; 401 put every root on one, found from both sides.
    for (const char* steps : {"150", "401"}) {
        const auto table = scan("x^3-6x^2+11x-6", {"x", "0", "4", steps});
        ASSERT_TRUE(table) << refusal.message;
        const std::vector<double> xs = real_roots(*table);
        ASSERT_EQ(xs.size(), 3u) << steps;
        for (int k = 0; k < 3; ++k)
            EXPECT_NEAR(xs[static_cast<size_t>(k)], k + 1, 1e-12) << steps;
        for (const RootRow& row : table->rows)
            EXPECT_LT(std::abs(row.value), 1e-12);
        EXPECT_FALSE(table->two_solutions);
    }
    EXPECT_EQ(parser.get_var_value("x").real(), 7);
    EXPECT_EQ(parser.equation_count(), 0);

    const auto pair = scan("t^2-1", {"t", "2", "-2", "101"}); // reversed limits are swapped
    ASSERT_TRUE(pair) << refusal.message;
    EXPECT_EQ(real_roots(*pair), (std::vector<double>{-1, 1}));
    EXPECT_FALSE(parser.is_variable("t"));

    const auto none = scan("x^2+1", {"x", "-3", "3", "101"});
    ASSERT_TRUE(none);
    EXPECT_TRUE(none->rows.empty());
}

TEST_F(RootFinder, RootsThatPrintAlikeAreOneAndComplexValuesAreNoRoots) {
    // Roots at 1 and 1.001 differ at 6 digits and read "1" alike at 3.
    EXPECT_EQ(scan("(x-1)*(x-1.001)", {"x", "0.5", "1.5", "1001"}, 6)->rows.size(), 2u);
    EXPECT_EQ(scan("(x-1)*(x-1.001)", {"x", "0.5", "1.5", "1001"}, 3)->rows.size(), 1u);
    // The real part changes sign at 0, but the value there is i.
    const auto complex_valued = scan("x+SQRT(-1)", {"x", "-1", "1.5", "101"});
    ASSERT_TRUE(complex_valued) << refusal.message;
    EXPECT_TRUE(complex_valued->rows.empty());
}

TEST_F(RootFinder, ASquareRootAddsTheNegativeBranchPass) {
    // SQRT(x)-1 is 0 at 1; on the negative branch -SQRT(x)-1 is never 0: nothing more.
    const auto table = scan("SQRT(x)-1", {"x", "0", "4", "101"});
    ASSERT_TRUE(table) << refusal.message;
    EXPECT_TRUE(table->two_solutions);
    EXPECT_EQ(real_roots(*table), std::vector<double>{1});
    // SQRT(x)+1 is never 0 on the positive branch; its root 1 lies on the negative one.
    const auto negative_only = scan("SQRT(x)+1", {"x", "0", "4", "101"});
    ASSERT_TRUE(negative_only) << refusal.message;
    EXPECT_EQ(real_roots(*negative_only), std::vector<double>{1});
    // The positive square roots are back afterwards.
    engine::complex value;
    parser.eval_exp("SQRT(4)", value, true, false, false);
    EXPECT_EQ(value.real(), 2);
}

TEST_F(RootFinder, StopEndsTheScanAndAFailureKeepsTheRootsBeforeIt) {
    StopAfter stop(30);
    const auto stopped = scan("SIN(x)", {"x", "0", "100", "10001"}, 6, &stop);
    ASSERT_TRUE(stopped) << refusal.message;
    EXPECT_TRUE(stopped->stopped);
    EXPECT_TRUE(stopped->rows.size() < 31u);
    EXPECT_FALSE(parser.is_variable("x"));
    EXPECT_EQ(parser.equation_count(), 0);

    // 1/x fails at the grid point 0, the right end of the interval from -0.02, after the root
    // at -0.5 was found.
    const auto failed = scan("(x+0.5)/x", {"x", "-1", "1", "101"});
    ASSERT_TRUE(failed) << refusal.message;
    EXPECT_EQ(real_roots(*failed), std::vector<double>{-0.5});
    EXPECT_EQ(failed->failure.rfind(
                  "An error occured while computing the function at x = -0.02 : Division By Zero", 0),
              0u)
        << failed->failure;

    std::string said;
    questions.progress = [&said](const std::string& text, int) { said = text; };
    const auto roots = scan("(x+0.5)*(x-0.5)", {"x", "-1", "1", "101"});
    ASSERT_TRUE(roots);
    EXPECT_EQ(said, "Searching for real root values - 2 real roots found");
}

TEST_F(RootFinder, TheInputIsCheckedBeforeAScan) {
    EXPECT_FALSE(scan("", {"x", "0", "1", "101"}));
    EXPECT_EQ(refusal.message, "You have not yet defined a function or expression.");
    EXPECT_FALSE(scan("x-1", {"x", "2", "2", "101"}));
    EXPECT_NE(refusal.message.find("are equal"), std::string::npos);
    EXPECT_FALSE(scan("x-1", {"x", "0", "2", "0.5"}));
    EXPECT_EQ(refusal.message, "The number of steps can not be 0.");
    // An unknown name is told apart, so that the user may declare it.
    EXPECT_FALSE(scan("x+yy", {"x", "0", "2", "101"}));
    EXPECT_EQ(refusal.unknown_name, "yy");

    std::string asked;
    questions.few_steps = [&asked](const std::string& text) {
        asked = text;
        return false;
    };
    EXPECT_FALSE(scan("x-1", {"x", "0", "2", "100"}));
    EXPECT_TRUE(refusal.declined && refusal.message.empty());
    EXPECT_EQ(asked.rfind("It is recommended that a minimum of 101 steps be used", 0), 0u);
}

TEST_F(RootFinder, RealCoefficientsThroughJenkinsTraub) {
    coefficients[2] = "1";
    coefficients[0] = "2/2"; // x^2 + 1, the blank at x^1 is 0
    const auto table = polynomial();
    ASSERT_TRUE(table) << refusal.message;
    EXPECT_FALSE(table->laguerre);
    EXPECT_EQ(table->expression, "x^2 + (2/2)");
    ASSERT_EQ(table->rows.size(), 2u);
    std::vector<double> imaginary{table->rows[0].root.imag(), table->rows[1].root.imag()};
    std::sort(imaginary.begin(), imaginary.end());
    EXPECT_NEAR(imaginary[0], -1, 1e-14);
    EXPECT_NEAR(imaginary[1], 1, 1e-14);
    for (const RootRow& row : table->rows) {
        EXPECT_NEAR(row.root.real(), 0, 1e-14);
        EXPECT_FALSE(row.value_failed);
        EXPECT_LT(std::abs(row.value), 1e-12);
    }

    coefficients = {};
    coefficients[2] = "1"; // x^2: blanks below count 0
    const auto square = polynomial();
    ASSERT_TRUE(square) << refusal.message;
    ASSERT_EQ(square->rows.size(), 2u);
    for (const RootRow& row : square->rows)
        EXPECT_EQ(row.root, engine::complex());

    // The value is the residual of the root as printed: 1.26^3 - 2 = 0.000376.
    coefficients = {};
    coefficients[3] = "1";
    coefficients[0] = "-2";
    const auto cube = polynomial(3);
    ASSERT_TRUE(cube) << refusal.message;
    const auto real = std::find_if(cube->rows.begin(), cube->rows.end(),
                                   [](const RootRow& row) { return row.root.imag() == 0; });
    ASSERT_NE(real, cube->rows.end());
    EXPECT_EQ(root_text(real->root, 3), "1.26");
    EXPECT_NEAR(real->value.real(), 0.000376, 1e-15);
}

TEST_F(RootFinder, AComplexCoefficientSwitchesToLaguerre) {
    // (x-1)(x-(1+2i)) = x^2 - (2+2i)x + 1+2i
    coefficients[2] = "1";
    coefficients[1] = "-(2+2i)";
    coefficients[0] = "1+2i";
    const auto table = polynomial();
    ASSERT_TRUE(table) << refusal.message;
    EXPECT_TRUE(table->laguerre);
    ASSERT_EQ(table->rows.size(), 2u);
    std::vector<engine::complex> roots{table->rows[0].root, table->rows[1].root};
    std::sort(roots.begin(), roots.end(), [](auto a, auto b) { return a.imag() < b.imag(); });
    EXPECT_LT(std::abs(roots[0] - engine::complex(1, 0)), 1e-12);
    EXPECT_LT(std::abs(roots[1] - engine::complex(1, 2)), 1e-12);
}

TEST_F(RootFinder, CoefficientsAreCheckedBeforeASearch) {
    EXPECT_FALSE(polynomial());
    EXPECT_NE(refusal.message.find("coefficients"), std::string::npos);
    coefficients[4] = "1";
    coefficients[1] = "2+";
    EXPECT_FALSE(polynomial());
    EXPECT_EQ(refusal.caption, "Parser Error");
    EXPECT_EQ(refusal.coefficient_power, 1);
    coefficients[1] = "";
    coefficients[4] = "1-1";
    EXPECT_FALSE(polynomial());
    EXPECT_EQ(refusal.coefficient_power, 4);
}

TEST_F(RootFinder, ThePlotShowsTheCurveAndLabelsEachRoot) {
    const auto table = scan("x^2-2", {"x", "-2", "2", "101"});
    ASSERT_TRUE(table) << refusal.message;
    graph::GraphData plot;
    std::string error;
    ASSERT_TRUE(root_plot(parser, *table, nullptr, plot, error)) << error;
    EXPECT_EQ(plot.Header, "Root Plot for: x^2-2");
    EXPECT_EQ(plot.Footer, "Roots for: x^2-2");
    // A typed expression: its values at the 101 grid points with the two roots (+-1.41421) in
    // their places, 0.04 apart: after -1.44 and after 1.4.
    ASSERT_EQ(plot.DataSets.size(), 1u);
    EXPECT_EQ(plot.DataSets.front().GetNumXYZPoints(), 103);
    ASSERT_EQ(plot.Notes.size(), 2u);
    std::vector<int> at;
    for (const graph::GraphNote& label : plot.Notes) {
        EXPECT_FALSE(label.IsNote);
        EXPECT_EQ(label.PosX, 0);
        EXPECT_NE(label.Text.find("1.41421 , "), std::string::npos) << label.Text;
        at.push_back(label.PosY);
    }
    std::sort(at.begin(), at.end());
    EXPECT_EQ(at, (std::vector<int>{15, 87}));

    parser.eval_exp("g[t] = t^2-2", true, false, false);
    const auto named = scan("g[t]", {"t", "-2", "2", "101"});
    ASSERT_TRUE(named) << refusal.message;
    graph::GraphData function_plot;
    ASSERT_TRUE(root_plot(parser, *named, nullptr, function_plot, error)) << error;
    EXPECT_EQ(function_plot.Functions.size(), 1u); // drawn by its own curve
    EXPECT_EQ(function_plot.Notes.size(), 2u);
    EXPECT_EQ(function_plot.Notes.front().PosX, 1);
}
