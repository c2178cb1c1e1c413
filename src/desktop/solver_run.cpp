#include "solver_run.h"

#include "engine/parser.h"

namespace quorvex::desktop {

namespace {

// The engine's message after a failed evaluation, the error cleared for the next one.
std::string take_error(engine::Parser& parser) {
    const char* message = parser.GetLastError();
    std::string text = message ? message : "";
    parser.ClearLastError();
    return text;
}

} // namespace

std::string check_solver_value(engine::Parser& parser, const std::string& text, bool numeric) {
    engine::complex value;
    parser.eval_exp(text.c_str(), value, true, false, false);
    if (parser.IsAnError()) return take_error(parser);
    if (numeric && value.imag() != 0) return solver_text::imaginary;
    return {};
}

bool solve_call(engine::Parser& parser, const std::string& call, int precision, std::string& text) {
    engine::PrecformType& format = parser.answer_format();
    const int kept = format.precision;
    format.precision = precision;
    const char* first = parser.eval_exp(call.c_str(), true, false, false);
    text = " " + std::string(first ? first : "");
    if (!parser.IsAnError() && parser.root_taken()) {
        // An even root has two values: the second comes from the same call with negative roots.
        parser.set_neg_sqrt(true);
        const char* second = parser.eval_exp(call.c_str(), true, false, false);
        parser.set_neg_sqrt(false);
        text += " : " + std::string(second ? second : "");
    }
    format.precision = kept;
    if (!parser.IsAnError()) return true;
    text = take_error(parser);
    return false;
}

bool read_solver_list(engine::Parser& parser, const std::string& path, std::vector<std::string>& values) {
    std::vector<std::string> read;
    const int columns = parser.get_file_data(read, path.c_str(), -1);
    if (columns <= 0 || read.empty()) return false;
    // A table keeps its first column, the others taken away from the last one down; a single
    // line (as the solver saves a list) is the list itself.
    const bool table = read.size() > static_cast<size_t>(columns);
    for (int column = columns; table && column > 1; --column) engine::Parser::rem_data_column(read, column, column);
    values.insert(values.end(), read.begin(), read.end());
    return true;
}

} // namespace quorvex::desktop
