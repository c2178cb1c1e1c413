#pragma once
#include "qvx_matrix.h"

#include <string>
#include <string_view>

namespace quorvex::numerics {

// The text form of a matrix: rows in brackets inside brackets, cells separated by commas, as
// "[[1,2],[3,4]]"; a vector is "[[1],[2]]". A cell is any text without a comma or bracket
// outside parentheses ("1.5", "-2", "1e3", "POW(2,3)"), blanks around it dropped; a cell with
// no text stays empty ("[[1,],[3,4]]").

// Reads the text into the matrix, which keeps its name. On failure the matrix is unchanged and
// the message says what is wrong and where (positions count characters from 1).
bool parse_matrix_text(std::string_view text, QvxMatrix& matrix, std::string& message);

// The used cells in the text form.
std::string write_matrix_text(const QvxMatrix& matrix);

} // namespace quorvex::numerics
