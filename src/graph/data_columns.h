#pragma once
#include "graph/data_points.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex::engine {
class Parser;
}

namespace quorvex::graph {

// Columns of values as text, a row a line, from a data file or a block pasted from another
// program. Each value stays the expression it was written as until it is used.
struct DataColumns {
    std::vector<std::vector<std::string>> rows;
    int columns = 0;      // the count of the widest row
    int header_lines = 0; // lines at the top skipped as a header
};

// Splits `text` into rows: values are separated by any run of blanks, commas and tabs, a line
// label such as "12)" is skipped, and an empty line is no row. Lines at the top holding a value
// that `is_value` refuses are a header ("x  y", the title lines of a published data set) and are
// skipped, up to the first line whose values are all accepted; when no such line comes within
// the first 200, nothing is skipped.
DataColumns split_data_columns(std::string_view text, const std::function<bool(const std::string&)>& is_value);

// A number written out in full, as `strtod` reads it to the end ("-0.4E-03", not "2*pi").
bool is_plain_number(const std::string& text);

// Whether a value of a data file can be read by `parser`: a plain number, or an expression that
// evaluates to a real number without declaring anything (a header's word is no value).
std::function<bool(const std::string&)> data_value_check(engine::Parser& parser);

// The text of a data file; false with `error` set to what the user is told.
bool read_data_text(const std::string& path, std::string& text, std::string& error);

// The points of two columns counted from 1; `y_column` 0 takes X values alone. A row too short
// for a column leaves that slot empty.
StrDataPnts points_from_columns(const DataColumns& columns, int x_column, int y_column);

// The values of a file of single values, X alone point by point; none with `error` set, naming
// the point, when a line of `table` (read from `path`) holds a second value.
std::optional<StrDataPnts> single_values(const DataColumns& table, const std::string& path, std::string& error);

// A data set as a data file holds it: a point a line, "X , Y" (X alone without `with_y`).
std::string data_points_text(const StrDataPnts& points, bool with_y);

} // namespace quorvex::graph
