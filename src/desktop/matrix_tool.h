#pragma once
#include "numerics/qvx_matrix.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvex::engine {
class Parser;
}

namespace quorvex::desktop {

// The operations of the matrix tool, in the order its list shows them.
enum class MatrixOperation { Add, Subtract, Multiply, Scalar, Inverse, Transpose, Cofactor, Adjugate, LU, Trace,
                             Rank, Determinant };
inline constexpr int k_matrix_operation_count = 12;

// The caption of an operation in the list ("+ (Add)").
const char* matrix_operation_caption(MatrixOperation operation);
// Whether the operation takes a second matrix.
bool takes_second_matrix(MatrixOperation operation);

// The lowest free default name: "Matrix1", "Matrix2"... or "Vector1"... for a matrix of one
// column.
std::string default_matrix_name(const std::vector<numerics::QvxMatrix>& matrices, bool vector);
// Whether the name is a default one ("Matrix3", "Vector12").
bool is_default_matrix_name(const std::string& name);
// `name`, or `name #1`, `name #2`... the first that no matrix has.
std::string unique_matrix_name(const std::vector<numerics::QvxMatrix>& matrices, const std::string& name);
// The index of the matrix of that name; -1 when there is none.
int find_matrix(const std::vector<numerics::QvxMatrix>& matrices, const std::string& name);

// A copy of the matrix with every used cell evaluated by the engine and holding its value as
// decimal text; an empty cell stays empty (it counts as 0). None with `error` set when a cell
// fails or holds an imaginary value.
std::optional<numerics::QvxMatrix> evaluate_matrix(engine::Parser& parser, const numerics::QvxMatrix& matrix,
                                                   std::string& error);

// What an operation gives: new matrices for the list (two for the LU decomposition), or a number
// with its caption ("Determinant(Matrix1)").
struct MatrixAnswer {
    std::vector<numerics::QvxMatrix> matrices;
    std::optional<long double> number;
    std::string number_name;
};

// Runs the operation on copies of the operands, so no stored matrix changes. `second` is the
// second matrix of the binary operations; `scalar` the text of the scalar value. Results are
// named as the operation makes them ("(Matrix1)+(Matrix2)", "Inverse(Matrix1)"), made unique
// among `matrices`. None with `error` set when the operands do not fit or the operation fails.
std::optional<MatrixAnswer> run_matrix_operation(engine::Parser& parser,
                                                 const std::vector<numerics::QvxMatrix>& matrices,
                                                 const numerics::QvxMatrix& first, MatrixOperation operation,
                                                 const numerics::QvxMatrix* second, const std::string& scalar,
                                                 std::string& error);

// The solution x of A x = B, a vector named "Solution(A,B)" made unique among `matrices`.
std::optional<numerics::QvxMatrix> solve_linear_system(engine::Parser& parser,
                                                       const std::vector<numerics::QvxMatrix>& matrices,
                                                       const numerics::QvxMatrix& a, const numerics::QvxMatrix& b,
                                                       std::string& error);

// A value as the tool shows it: at `precision` digits, or with `fractions` as "numerator/
// denominator" (a whole number as itself). A value too small for a fraction, below 5e-10, gives
// false in `fits` and is shown at the precision.
std::string matrix_value_text(long double value, int precision, bool fractions, bool* fits = nullptr);

// The matrix as text for the clipboard: a line per row, cells separated by tabs, each cell's
// value as matrix_value_text shows it (empty cells as 0).
std::string matrix_clipboard_text(const numerics::QvxMatrix& matrix, int precision, bool fractions);

} // namespace quorvex::desktop
