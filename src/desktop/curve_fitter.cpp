#include "curve_fitter.h"

#include "desktop/quick_calc.h"

#include "engine/host.h"
#include "engine/parser.h"
#include "functions/frequency.h"
#include "functions/statistics.h"
#include "graph/sweep_variable.h"
#include "numerics/polynomial_fit.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace quorvex::desktop {

namespace {

constexpr double k_imaginary = 1e-14;
constexpr size_t k_smooth_steps = 100;

bool stopped(engine::Host* host) {
    if (!host) return false;
    host->pump();
    return host->aborted();
}

std::string point_number(int index) { return std::to_string(index + 1); }

// A term that stays below 1e-15 of the largest term anywhere on the data's x is what the
// rounding of the fit leaves where the true coefficient is 0 (the line through (1,2), (2,4),
// (3,6) comes back with a constant near 2e-19): double data can not tell it from 0, so it is 0.
void drop_rounding_noise(std::vector<long double>& coefficients, const std::vector<long double>& x) {
    long double reach = 0;
    for (const long double value : x) reach = std::max(reach, std::fabs(value));
    if (reach == 0) reach = 1;
    std::vector<long double> size(coefficients.size());
    long double largest = 0;
    for (size_t i = 0; i < coefficients.size(); ++i) {
        size[i] = std::fabs(coefficients[i]) * std::pow(reach, static_cast<long double>(i));
        largest = std::max(largest, size[i]);
    }
    for (size_t i = 0; i < coefficients.size(); ++i)
        if (size[i] < 1e-15L * largest) coefficients[i] = 0;
}

} // namespace

std::string fit_message(const char* text, const std::string& first, const std::string& second) {
    return fill_text(text, first, second);
}

std::string polynomial_text(engine::Parser& parser, const std::vector<long double>& coefficients, int precision,
                            bool* zero_terms) {
    std::string text;
    if (zero_terms) *zero_terms = false;
    // The coefficients are written with no zero threshold, so a small one is not rounded away.
    engine::PrecformType& format = parser.answer_format();
    const float threshold = format.zero_precision;
    format.zero_precision = 0;
    for (size_t i = 0; i < coefficients.size(); ++i) {
        if (coefficients[i] == 0) continue;
        // Shown in full, yet a document answer would read it as 0: worth a word to the user.
        if (zero_terms && std::fabs(coefficients[i]) < threshold) *zero_terms = true;
        engine::complex value(static_cast<double>(coefficients[i]), 0);
        std::ostringstream out;
        parser.stream_answer(value, out, precision, false);
        const std::string term = out.str();
        if (term == "0" || term.empty()) continue;
        if (!text.empty() && term.front() != '-') text += '+';
        text += term;
        if (i > 0) text += 'x';
        if (i > 1) text += '^' + std::to_string(i);
    }
    format.zero_precision = threshold;
    return text;
}

std::optional<std::vector<CurveFitRow>> data_values(engine::Parser& parser, const graph::StrDataPnts& data,
                                                    std::string& error) {
    std::vector<CurveFitRow> rows;
    const int last = data.GetMaxXYZPoint();
    rows.reserve(static_cast<size_t>(last + 1));
    const auto value_of = [&](const std::string& text, int index, long double& value) {
        engine::complex answer;
        parser.ClearLastError();
        parser.eval_exp(text.c_str(), answer, true, false, false);
        if (parser.IsAnError()) {
            const char* why = parser.GetLastError();
            error = fit_message(fit_texts::point_failed, point_number(index), why ? why : text);
            parser.ClearLastError();
            return false;
        }
        if (std::abs(answer.imag()) > k_imaginary) {
            error = fit_message(fit_texts::imaginary, text);
            return false;
        }
        value = answer.real();
        return true;
    };
    for (int i = 0; i <= last; ++i) {
        const std::string* x = data.GetXDataPoint(i);
        const std::string* y = data.GetYDataPoint(i);
        if (!x || !y) {
            error = fit_message(!x && !y ? fit_texts::no_coordinates : !x ? fit_texts::no_x : fit_texts::no_y,
                                point_number(i));
            return std::nullopt;
        }
        CurveFitRow row;
        if (!value_of(*x, i, row.x) || !value_of(*y, i, row.y)) return std::nullopt;
        rows.push_back(row);
    }
    return rows;
}

std::optional<std::vector<long double>> polynomial_values(engine::Parser& parser, const std::string& polynomial,
                                                          const std::vector<long double>& x, engine::Host* host,
                                                          std::string& error) {
    std::vector<long double> values;
    if (x.empty()) return values;
    graph::SweepVariable held(parser, "x");
    held.set({static_cast<double>(x.front()), 0});
    parser.ClearLastError();
    const int equation = parser.map_expression(polynomial.c_str());
    if (equation == 0) {
        const char* why = parser.GetLastError();
        error = why ? why : fit_texts::define_failed;
        parser.ClearLastError();
        return std::nullopt;
    }
    values.reserve(x.size());
    for (size_t i = 0; i < x.size(); ++i) {
        held.set({static_cast<double>(x[i]), 0});
        const engine::complex value = parser.solve_equation(equation, false, true);
        if (parser.IsAnError()) {
            const char* why = parser.GetLastError();
            error = why ? why : fit_texts::define_failed;
            parser.ClearLastError();
            parser.delete_equation(equation);
            return std::nullopt;
        }
        values.push_back(value.real());
        if (i % 256 == 255 && stopped(host)) {
            parser.delete_equation(equation);
            return std::nullopt; // an empty error: stopped
        }
    }
    parser.delete_equation(equation);
    return values;
}

long double determination(const std::vector<CurveFitRow>& rows) {
    if (rows.empty()) return 0;
    functions::DataList y;
    long double residuals = 0;
    for (const CurveFitRow& row : rows) {
        y.push_back(row.y);
        residuals += row.difference * row.difference;
    }
    return 1 - residuals / functions::statistics::sumdevsq(y);
}

std::optional<CurveFit> fit_curve(engine::Parser& parser, const graph::StrDataPnts& data, int coefficients,
                                  int precision, engine::Host* host, std::string& error) {
    error.clear();
    if (data.GetNumXYZPoints() < 2) return std::nullopt;
    std::optional<std::vector<CurveFitRow>> rows = data_values(parser, data, error);
    if (!rows) return std::nullopt;
    CurveFit fit;
    if (stopped(host)) {
        fit.stopped = true;
        return fit;
    }
    std::vector<long double> x, y;
    x.reserve(rows->size());
    y.reserve(rows->size());
    for (const CurveFitRow& row : *rows) x.push_back(row.x), y.push_back(row.y);
    const std::optional<numerics::PolynomialFit> result = numerics::fit_polynomial(x, y, coefficients, error);
    if (!result) return std::nullopt;
    fit.coefficients = result->coefficients;
    drop_rounding_noise(fit.coefficients, x);
    fit.correlation = result->correlation;
    fit.polynomial = polynomial_text(parser, fit.coefficients, precision, &fit.zero_terms);
    if (fit.polynomial.empty()) fit.polynomial = "0";
    const std::optional<std::vector<long double>> fitted = polynomial_values(parser, fit.polynomial, x, host, error);
    if (!fitted) {
        if (!error.empty()) return std::nullopt;
        fit.stopped = true;
        return fit;
    }
    for (size_t i = 0; i < rows->size(); ++i) {
        CurveFitRow& row = (*rows)[i];
        row.fitted = (*fitted)[i];
        row.difference = row.fitted - row.y;
    }
    fit.rows = std::move(*rows);
    fit.determination = determination(fit.rows);
    return fit;
}

std::vector<int> outlier_points(const std::vector<CurveFitRow>& rows, int sigma) {
    functions::DataList differences;
    differences.reserve(rows.size());
    for (const CurveFitRow& row : rows) differences.push_back(row.difference);
    const std::vector<bool> outside = functions::statistics::outlying_points(differences, sigma);
    std::vector<int> found;
    for (size_t i = 0; i < outside.size(); ++i)
        if (outside[i]) found.push_back(static_cast<int>(i));
    return found;
}

int remove_points(graph::StrDataPnts& data, const std::vector<int>& rows) {
    std::vector<int> order = rows;
    std::sort(order.rbegin(), order.rend());
    order.erase(std::unique(order.begin(), order.end()), order.end());
    int removed = 0;
    for (const int index : order) removed += data.DeleteDataPoint(index) ? 1 : 0;
    return removed;
}

std::string free_polynomial_name(engine::Parser& parser) {
    for (int n = 1;; ++n) {
        const std::string name = "PolyFunc" + std::to_string(n) + "[x]";
        if (parser.find_function(name.c_str()) < 0 && !parser.is_variable(("PolyFunc" + std::to_string(n)).c_str()))
            return name;
    }
}

bool define_polynomial(engine::Parser& parser, const std::string& name, const std::string& polynomial,
                       std::string& error) {
    parser.ClearLastError();
    parser.eval_exp((name + " = " + polynomial).c_str(), true, false, false);
    if (parser.IsAnError() || parser.find_function(name.c_str()) < 0) {
        const char* why = parser.GetLastError();
        error = why && *why ? why : fit_texts::define_failed;
        parser.ClearLastError();
        return false;
    }
    return true;
}

std::vector<long double> graph_x(const std::vector<CurveFitRow>& rows, bool smooth) {
    std::vector<long double> x;
    if (rows.empty()) return x;
    if (smooth && rows.size() < k_smooth_steps) {
        const long double first = rows.front().x, last = rows.back().x;
        for (size_t i = 0; i <= k_smooth_steps; ++i)
            x.push_back(first + (last - first) * static_cast<long double>(i) / k_smooth_steps);
        return x;
    }
    for (const CurveFitRow& row : rows) x.push_back(row.x);
    return x;
}

} // namespace quorvex::desktop
