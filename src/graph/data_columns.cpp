#include "data_columns.h"

#include "engine/parser.h"
#include "store/atomic_write.h"

#include <cstdlib>
#include <filesystem>

namespace quorvex::graph {

namespace {

constexpr int k_most_header_lines = 200;

bool is_separator(char c) { return c == ' ' || c == ',' || c == '\t' || c == '\r'; }

// "12)" numbers a line of a listing; "f(2)" is a value.
bool is_line_label(std::string_view token) {
    return token.size() > 1 && token.back() == ')' && token.find('(') == std::string_view::npos;
}

std::vector<std::string> split_line(std::string_view line) {
    std::vector<std::string> values;
    size_t at = 0;
    while (at < line.size()) {
        while (at < line.size() && is_separator(line[at])) ++at;
        const size_t begin = at;
        while (at < line.size() && !is_separator(line[at])) ++at;
        if (at == begin) break;
        const std::string_view token = line.substr(begin, at - begin);
        if (!is_line_label(token)) values.emplace_back(token);
    }
    return values;
}

} // namespace

bool is_plain_number(const std::string& text) {
    if (text.empty()) return false;
    char* end = nullptr;
    std::strtod(text.c_str(), &end);
    return end == text.c_str() + text.size();
}

DataColumns split_data_columns(std::string_view text, const std::function<bool(const std::string&)>& is_value) {
    DataColumns table;
    for (size_t begin = 0; begin < text.size();) {
        size_t end = text.find('\n', begin);
        if (end == std::string_view::npos) end = text.size();
        std::vector<std::string> row = split_line(text.substr(begin, end - begin));
        if (!row.empty()) table.rows.push_back(std::move(row));
        begin = end + 1;
    }
    if (is_value) {
        const size_t search = std::min(table.rows.size(), static_cast<size_t>(k_most_header_lines));
        for (size_t r = 0; r < search; ++r) {
            bool all = true;
            for (const std::string& value : table.rows[r])
                if (!is_value(value)) {
                    all = false;
                    break;
                }
            if (all) {
                table.header_lines = static_cast<int>(r);
                table.rows.erase(table.rows.begin(), table.rows.begin() + static_cast<long>(r));
                break;
            }
        }
    }
    for (const std::vector<std::string>& row : table.rows)
        table.columns = std::max(table.columns, static_cast<int>(row.size()));
    return table;
}

std::function<bool(const std::string&)> data_value_check(engine::Parser& parser) {
    return [&parser](const std::string& text) {
        if (is_plain_number(text)) return true;
        // A word would otherwise become a variable where names are declared on first use.
        const bool declaring = parser.auto_declare();
        parser.set_auto_declare(false);
        engine::complex value;
        parser.ClearLastError();
        parser.eval_exp(text.c_str(), value, true, false, false);
        parser.set_auto_declare(declaring);
        const bool failed = parser.IsAnError();
        parser.ClearLastError();
        return !failed && std::abs(value.imag()) <= 1e-14;
    };
}

bool read_data_text(const std::string& path, std::string& text, std::string& error) {
    std::error_code code;
    if (!std::filesystem::is_regular_file(path, code) || !store::read_whole_file(path, text)) {
        error = "Data File ' " + path + " ' Could Not Be Located!";
        return false;
    }
    if (text.find_first_not_of(" \t\r\n,") == std::string::npos) {
        error = "No Data Found In The ' " + path + " ' Data File!";
        return false;
    }
    return true;
}

StrDataPnts points_from_columns(const DataColumns& columns, int x_column, int y_column) {
    StrDataPnts points;
    const auto column = [](const std::vector<std::string>& row, int number) -> std::optional<std::string> {
        if (number < 1 || static_cast<size_t>(number) > row.size()) return std::nullopt;
        return row[static_cast<size_t>(number - 1)];
    };
    points.XPoints.reserve(columns.rows.size());
    if (y_column > 0) points.YPoints.reserve(columns.rows.size());
    for (const std::vector<std::string>& row : columns.rows) {
        points.XPoints.push_back(column(row, x_column));
        if (y_column > 0) points.YPoints.push_back(column(row, y_column));
    }
    points.CompactArrays();
    return points;
}

std::optional<StrDataPnts> single_values(const DataColumns& table, const std::string& path, std::string& error) {
    for (size_t r = 0; r < table.rows.size(); ++r)
        if (table.rows[r].size() > 1) {
            error = "Invalid data found in the ' " + path + " ' data file at point number " + std::to_string(r + 1) +
                    ". There were y value coordinates found.  Only single data values are valid, please remove the "
                    "y data values in this file.";
            return std::nullopt;
        }
    return points_from_columns(table, 1, 0);
}

std::string data_points_text(const StrDataPnts& points, bool with_y) {
    std::string text;
    const int last = points.GetMaxXYZPoint();
    for (int i = 0; i <= last; ++i) {
        const std::string* x = points.GetXDataPoint(i);
        const std::string* y = points.GetYDataPoint(i);
        text += x ? *x : std::string();
        if (with_y) text += " , " + (y ? *y : std::string());
        text += '\n';
    }
    return text;
}

} // namespace quorvex::graph
