// The curve fitter's work without a window: the polynomial's text, the data's texts as numbers,
// the residuals and R squared of the written polynomial, outliers and the functions it defines.
// Expected values come from the data's construction (points on a known polynomial) or by hand.
#include "desktop/curve_fitter.h"

#include "engine/parser.h"
#include "engine/variable.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace quorvex;
using namespace quorvex::desktop;

namespace {

struct CurveFitter : ::testing::Test {
    engine::Parser parser{&functions::builtin_functions(), QUORVEX_DATA_DIR};
    std::string error;

    static graph::StrDataPnts points(const std::vector<std::pair<std::string, std::string>>& xy) {
        graph::StrDataPnts set;
        for (size_t i = 0; i < xy.size(); ++i) {
            if (!xy[i].first.empty()) set.PutXDataPoint(xy[i].first.c_str(), static_cast<int>(i));
            if (!xy[i].second.empty()) set.PutYDataPoint(xy[i].second.c_str(), static_cast<int>(i));
        }
        return set;
    }
    double value(const std::string& text) {
        engine::complex answer;
        parser.eval_exp(text.c_str(), answer, true, false, false);
        EXPECT_FALSE(parser.IsAnError()) << text;
        parser.ClearLastError();
        return answer.real();
    }
};

} // namespace

TEST_F(CurveFitter, ALineThroughThreePointsIsTwoXWithAPerfectFit) {
    const auto fit = fit_curve(parser, points({{"1", "2"}, {"2", "4"}, {"3", "6"}}), 2, 14, nullptr, error);
    ASSERT_TRUE(fit) << error;
    EXPECT_EQ(fit->polynomial, "2x");
    EXPECT_NEAR(static_cast<double>(fit->determination), 1.0, 1e-15);
    EXPECT_NEAR(static_cast<double>(fit->correlation), 1.0, 1e-15);
    ASSERT_EQ(fit->rows.size(), 3u);
    for (const CurveFitRow& row : fit->rows) {
        EXPECT_NEAR(static_cast<double>(row.fitted), 2 * static_cast<double>(row.x), 1e-13);
        EXPECT_NEAR(static_cast<double>(row.difference), 0.0, 1e-13);
    }
    // Two points and two coefficients: the line through them.
    const auto two = fit_curve(parser, points({{"0", "1"}, {"2", "-3"}}), 2, 14, nullptr, error);
    ASSERT_TRUE(two) << error;
    EXPECT_EQ(two->polynomial, "1-2x");
    EXPECT_NEAR(static_cast<double>(two->determination), 1.0, 1e-15);
}

TEST_F(CurveFitter, ThePolynomialTextReadsBackAsThePolynomial) {
    // Points of 1 + 2x - 3x^2 typed as expressions, fitted with three coefficients.
    const auto fit = fit_curve(parser, points({{"-1", "-4"}, {"0", "1"}, {"2/2", "0"}, {"2", "-7"}, {"sqrt(9)", "1+6-27"}}),
                               3, 14, nullptr, error);
    ASSERT_TRUE(fit) << error;
    EXPECT_EQ(fit->polynomial, "1+2x-3x^2");
    // Terms in ascending powers, exact zeros left out, small coefficients kept in full, and the
    // text evaluates to the polynomial.
    bool zero_terms = false;
    const std::string text = polynomial_text(parser, {0, -0.5L, 0, 2.5e-20L}, 6, &zero_terms);
    EXPECT_TRUE(zero_terms);
    EXPECT_EQ(text.rfind("-0.5x", 0), 0u) << text;
    EXPECT_NE(text.find("x^3"), std::string::npos) << text;
    parser.eval_exp("x = 2", true, false, false);
    EXPECT_NEAR(value(text), -1 + 2.5e-20 * 8, 1e-15);
    // Every term after the constant writes its coefficient, 1 included.
    EXPECT_EQ(polynomial_text(parser, {-1, 0, 1}, 14), "-1+1x^2");
}

TEST_F(CurveFitter, MissingOrImaginaryCoordinatesStopTheFitAtTheirPoint) {
    EXPECT_FALSE(fit_curve(parser, points({{"1", "2"}, {"2", ""}, {"3", "6"}}), 2, 14, nullptr, error));
    EXPECT_EQ(error, "Data point 2 has no y coordinate value, please correct this before continuing.");
    EXPECT_FALSE(fit_curve(parser, points({{"1", "2"}, {"2", "4"}, {"", "6"}}), 2, 14, nullptr, error));
    EXPECT_EQ(error, "Data point 3 has no x coordinate value, please correct this before continuing.");
    EXPECT_FALSE(fit_curve(parser, points({{"1", "2"}, {"2", "4"}, {"3", "2+3i"}}), 2, 14, nullptr, error));
    EXPECT_NE(error.find("The imaginary value 2+3i was found in the data."), std::string::npos) << error;
    EXPECT_FALSE(fit_curve(parser, points({{"1", "2"}, {"nowhere", "4"}}), 2, 14, nullptr, error));
    EXPECT_EQ(error.rfind("Data point 2 could not be computed:", 0), 0u) << error;
    // Fewer than two points: nothing to do and nothing to say.
    EXPECT_FALSE(fit_curve(parser, points({{"1", "2"}}), 2, 14, nullptr, error));
    EXPECT_TRUE(error.empty());
}

TEST_F(CurveFitter, TheVariableXIsPutBackHoweverTheFitGoes) {
    parser.eval_exp("x = 7", true, false, false);
    ASSERT_TRUE(fit_curve(parser, points({{"1", "3"}, {"2", "5"}, {"4", "9"}}), 2, 14, nullptr, error)) << error;
    EXPECT_EQ(value("x"), 7);
    engine::Parser fresh(&functions::builtin_functions(), QUORVEX_DATA_DIR);
    ASSERT_TRUE(fit_curve(fresh, points({{"1", "3"}, {"2", "5"}, {"4", "9"}}), 2, 14, nullptr, error)) << error;
    EXPECT_FALSE(fresh.is_variable("x"));
}

TEST_F(CurveFitter, APlantedOutlierIsFoundRemovedAndTheRefitFollowsTheRest) {
    // 40 points near y = 3x - 1 with a small alternating error, one of them moved far off.
    std::vector<std::pair<std::string, std::string>> xy;
    const int planted = 17;
    for (int i = 0; i < 40; ++i) {
        const double y = 3.0 * i - 1 + (i % 2 ? 0.05 : -0.05) + (i == planted ? 40 : 0);
        xy.emplace_back(std::to_string(i), std::to_string(y));
    }
    graph::StrDataPnts data = points(xy);
    const auto fit = fit_curve(parser, data, 2, 14, nullptr, error);
    ASSERT_TRUE(fit) << error;
    EXPECT_LT(fit->determination, 0.99);
    EXPECT_EQ(outlier_points(fit->rows, 3), std::vector<int>{planted});
    EXPECT_EQ(remove_points(data, outlier_points(fit->rows, 3)), 1);
    EXPECT_EQ(data.GetNumXYZPoints(), 39);
    EXPECT_EQ(*data.GetXDataPoint(planted), std::to_string(planted + 1));
    const auto refit = fit_curve(parser, data, 2, 14, nullptr, error);
    ASSERT_TRUE(refit) << error;
    EXPECT_NEAR(static_cast<double>(refit->coefficients[1]), 3.0, 1e-3);
    EXPECT_GT(refit->determination, 0.9999);
    EXPECT_TRUE(outlier_points(refit->rows, 3).empty());
}

TEST_F(CurveFitter, ThePolynomialBecomesTheNextFreePolyFunction) {
    EXPECT_EQ(free_polynomial_name(parser), "PolyFunc1[x]");
    ASSERT_TRUE(define_polynomial(parser, "PolyFunc1[x]", "1+2x-3x^2", error)) << error;
    EXPECT_EQ(value("PolyFunc1[2]"), 1 + 4 - 12);
    EXPECT_EQ(free_polynomial_name(parser), "PolyFunc2[x]");
    // Defining the kept name again replaces the function.
    ASSERT_TRUE(define_polynomial(parser, "PolyFunc1[x]", "5x", error)) << error;
    EXPECT_EQ(value("PolyFunc1[2]"), 10);
    EXPECT_FALSE(define_polynomial(parser, "PolyFunc3[x]", "1+", error));
    EXPECT_FALSE(error.empty());
}

TEST_F(CurveFitter, ASmoothGraphTakesEvenStepsBetweenTheFirstAndLastX) {
    const auto fit = fit_curve(parser, points({{"2", "1"}, {"4", "2"}, {"12", "3"}}), 2, 14, nullptr, error);
    ASSERT_TRUE(fit) << error;
    const std::vector<long double> smooth = graph_x(fit->rows, true);
    ASSERT_EQ(smooth.size(), 101u);
    EXPECT_EQ(smooth.front(), 2);
    EXPECT_EQ(smooth.back(), 12);
    EXPECT_NEAR(static_cast<double>(smooth[50]), 7.0, 1e-15);
    EXPECT_EQ(graph_x(fit->rows, false), (std::vector<long double>{2, 4, 12}));
    EXPECT_EQ(determination({}), 0);
}
