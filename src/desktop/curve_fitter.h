#pragma once
#include "graph/data_points.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvex::engine {
class Host;
class Parser;
} // namespace quorvex::engine

namespace quorvex::desktop {

// What the curve fitter tells the user. "%1" stands for a point's number (from 1) or a value,
// "%2" for a second value.
namespace fit_texts {
inline constexpr const char* no_coordinates =
    "Data point %1 has no x or y coordinate values, please correct this before continuing.";
inline constexpr const char* no_x = "Data point %1 has no x coordinate value, please correct this before continuing.";
inline constexpr const char* no_y = "Data point %1 has no y coordinate value, please correct this before continuing.";
inline constexpr const char* imaginary =
    "The imaginary value %1 was found in the data. Imaginary data point values can not be processed in the Curve "
    "Fitting Utility.";
inline constexpr const char* point_failed = "Data point %1 could not be computed: %2";
inline constexpr const char* three_d = "The data file holds 3-D data: the Curve Fitting Utility fits y over x only.";
inline constexpr const char* too_few = "At least 2 data points are needed for a fit.";
inline constexpr const char* zero_terms =
    "Some coefficients of the polynomial are smaller than the zero threshold of the answers: the polynomial shows "
    "them, but answers computed with it treat such parts as 0.";
inline constexpr const char* too_long =
    "The polynomial is too long to be saved with the document: it is shown, but a reopened document will not hold it.";
inline constexpr const char* no_polynomial = "There is no polynomial to define as a function: compute a fit first.";
inline constexpr const char* defined = "The polynomial is now the function %1.";
inline constexpr const char* redefine =
    "The function %1 was defined from an earlier fit. Do you want to redefine it? (No defines a new function.)";
inline constexpr const char* define_failed = "The polynomial could not be defined as a function.";
inline constexpr const char* recompute =
    "The number of coefficients has changed since the last fit. Do you want to compute the fit again first?";
inline constexpr const char* compute_again =
    "The outliers were removed from the data. Press Compute to find the polynomial of the remaining points.";
inline constexpr const char* already_removed =
    "You have already removed the outliers and found a new Polynomial based on the removal of these points.";
inline constexpr const char* no_fit = "Compute a fit of the current data first: outliers are found from its residuals.";
inline constexpr const char* no_outliers = "No data points lie beyond %1 standard deviations of the residuals.";
inline constexpr const char* no_outliers_few =
    "No data points lie beyond %1 standard deviations of the residuals. With fewer than 30 points the residuals' "
    "spread is a rough guide, so outliers are found less accurately.";
inline constexpr const char* remove_outliers = "%1 data points lie beyond %2 standard deviations of the residuals. "
                                                "Do you want to remove them from the data?";
inline constexpr const char* remove_outliers_few =
    "%1 data points lie beyond %2 standard deviations of the residuals. With fewer than 30 points the residuals' "
    "spread is a rough guide, so outliers are found less accurately. Do you want to remove them from the data?";
inline constexpr const char* outliers_changed =
    "The outliers found the second time differ from the first count: no point was removed.";
inline constexpr const char* threshold_open = "Close the Outlier Removal Threshold window first.";
inline constexpr const char* clear = "Do you want to clear the data points and the fit?";
inline constexpr const char* copy_table =
    "Do you want to add the table of x, y, F(x) and F(x)-y to the polynomial in the math editor?";
} // namespace fit_texts

// One data point with the fit's value there.
struct CurveFitRow {
    long double x = 0, y = 0, fitted = 0, difference = 0; // difference: F(x) - y
};

// A fitted polynomial over a data set, with how well it fits.
struct CurveFit {
    std::vector<long double> coefficients; // of x^0, x^1, ..., the rounding noise of the fit set to 0
    std::string polynomial;                // "1+2x-3x^2", as the document can read it
    bool zero_terms = false;               // a coefficient lies below the document's zero threshold
    long double correlation = 0;
    long double determination = 0; // from the residuals of the polynomial as written
    std::vector<CurveFitRow> rows;
    bool stopped = false; // Stop was pressed: no fit
};

// The polynomial as text in ascending powers of x: each coefficient at `precision` digits with no
// zero threshold (small coefficients stay), a coefficient that shows as 0 left out, "+" ahead of
// later positive terms, the product with x implicit ("1+2x-3x^2"). `zero_terms` tells whether a
// coefficient lies below the document's zero threshold, where its answers would show it as 0.
std::string polynomial_text(engine::Parser& parser, const std::vector<long double>& coefficients, int precision,
                            bool* zero_terms = nullptr);

// The data set's points as numbers: every coordinate text evaluated. None, with `error` set, at
// the first point without both coordinates, that fails, or that has an imaginary part.
std::optional<std::vector<CurveFitRow>> data_values(engine::Parser& parser, const graph::StrDataPnts& data,
                                                    std::string& error);

// The polynomial's text evaluated at each x: mapped once, x held for the run and put back.
std::optional<std::vector<long double>> polynomial_values(engine::Parser& parser, const std::string& polynomial,
                                                          const std::vector<long double>& x, engine::Host* host,
                                                          std::string& error);

// Fits a polynomial of `coefficients` coefficients to the data, writes it at `precision`, and
// evaluates the written polynomial at the data's points (a coefficient that only the fit's rounding
// left where the true one is 0 is written as 0): their residuals and R squared. None
// with `error` set when the data can not be fitted (an empty error: fewer than 2 points).
std::optional<CurveFit> fit_curve(engine::Parser& parser, const graph::StrDataPnts& data, int coefficients,
                                  int precision, engine::Host* host, std::string& error);

// 1 less the residuals' sum of squares over y's sum of squared deviations; 0 without points.
long double determination(const std::vector<CurveFitRow>& rows);

// The points whose residual lies beyond `sigma` standard deviations from the residuals' mean, by
// index in the rows.
std::vector<int> outlier_points(const std::vector<CurveFitRow>& rows, int sigma);
// Removes the points of those rows from the data set, whose points with both coordinates are the
// rows in order; the number removed.
int remove_points(graph::StrDataPnts& data, const std::vector<int>& rows);

// The first function name "PolyFunc1[x]", "PolyFunc2[x]", ... that the document does not use.
std::string free_polynomial_name(engine::Parser& parser);
// Defines `name` ("PolyFunc1[x]") as the polynomial; false with the engine's reason in `error`.
bool define_polynomial(engine::Parser& parser, const std::string& name, const std::string& polynomial,
                       std::string& error);

// Where the graph of the fit is evaluated: with `smooth` and fewer than 100 points, 100 even
// steps from the first x to the last; otherwise the data's own x.
std::vector<long double> graph_x(const std::vector<CurveFitRow>& rows, bool smooth);

// `text` with "%1" and "%2" replaced.
std::string fit_message(const char* text, const std::string& first, const std::string& second = {});

} // namespace quorvex::desktop
