// The least-squares polynomial through the points of a data file.
#include "command_support.h"

#include "graph/data_columns.h"
#include "numerics/polynomial_fit.h"

#include <cstdlib>

namespace quorvex::cli {

namespace {

// "X,Y": two column numbers from 1.
std::pair<int, int> fit_columns(const std::string& text) {
    const size_t comma = text.find(',');
    const auto number = [](const std::string& part) {
        char* end = nullptr;
        const long value = std::strtol(part.c_str(), &end, 10);
        return !part.empty() && *end == '\0' && value >= 1 && value <= 1000 ? static_cast<int>(value) : 0;
    };
    const int x = comma == std::string::npos ? 0 : number(text.substr(0, comma));
    const int y = comma == std::string::npos ? 0 : number(text.substr(comma + 1));
    if (x == 0 || y == 0) usage_failure("--columns takes two column numbers from 1, such as 2,1");
    return {x, y};
}

// A value of the file: a number as written, read to the last digit; an expression by the Parser.
long double point_value(CommandContext& context, const std::string& text, const std::string& what) {
    if (graph::is_plain_number(text)) return std::strtold(text.c_str(), nullptr);
    return evaluate_real(context, text, what);
}

} // namespace

int run_fit(CommandContext& context) {
    const std::string& file = arguments(context, 1, 1).front();
    refuse_options(context, false, false);
    const long degree =
        context.options.degree ? evaluate_count(context, *context.options.degree, "--degree", 1,
                                                numerics::k_most_fit_coefficients - 1)
                               : 1;
    const auto [x_column, y_column] = context.options.columns ? fit_columns(*context.options.columns) : std::pair{1, 2};

    std::string text, error;
    if (!graph::read_data_text(file, text, error)) usage_failure(error);
    const graph::DataColumns table = graph::split_data_columns(text, graph::data_value_check(context.parser));
    std::vector<long double> x, y;
    x.reserve(table.rows.size());
    y.reserve(table.rows.size());
    for (size_t r = 0; r < table.rows.size(); ++r) {
        const std::vector<std::string>& row = table.rows[r];
        const std::string point = "point " + std::to_string(r + 1) + " of " + file;
        if (row.size() < static_cast<size_t>(std::max(x_column, y_column)))
            usage_failure(point + " has no column " + std::to_string(std::max(x_column, y_column)));
        x.push_back(point_value(context, row[static_cast<size_t>(x_column - 1)], "the x of " + point));
        y.push_back(point_value(context, row[static_cast<size_t>(y_column - 1)], "the y of " + point));
    }
    const std::optional<numerics::PolynomialFit> fit =
        numerics::fit_polynomial(x, y, static_cast<int>(degree) + 1, error);
    if (!fit) calculation_failure(error);
    // A coefficient is written in full however small: the zero threshold of answers would turn
    // Pontius's -3.2e-15 for x^2 into 0.
    float& threshold = context.parser.answer_format().zero_precision;
    const float kept = threshold;
    threshold = 0;
    for (size_t k = 0; k < fit->coefficients.size(); ++k)
        context.out << "x^" << k << '\t' << format_answer(context, fit->coefficients[k]) << '\n';
    threshold = kept;
    context.out << "correlation\t" << format_answer(context, fit->correlation) << '\n';
    context.out << "determination\t" << format_answer(context, fit->determination) << '\n';
    return 0;
}

} // namespace quorvex::cli
