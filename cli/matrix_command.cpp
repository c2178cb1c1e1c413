// Matrix operations on matrices written as [[1,2],[3,4]].
#include "command_support.h"

#include "numerics/matrix_text.h"
#include "numerics/qvx_matrix.h"

#include <array>
#include <cmath>

namespace quorvex::cli {

namespace {

using numerics::QvxMatrix;

std::string size_text(const QvxMatrix& matrix) {
    return std::to_string(matrix.NumRows()) + " by " + std::to_string(matrix.NumCols());
}

// The matrix of the text; each cell is evaluated by the Parser, so "1/3" and "PI" are cells too,
// and holds the value as decimal text. An empty cell stays empty and counts as 0.
QvxMatrix read_matrix(CommandContext& context, const std::string& text, const char* name) {
    QvxMatrix matrix(name, 1, 1);
    std::string message;
    if (!numerics::parse_matrix_text(text, matrix, message))
        usage_failure(std::string(name) + ": " + message);
    if (matrix.IsMatrixEmpty()) usage_failure(std::string(name) + ": the matrix has no values in its cells");
    for (int i = 0; i < matrix.NumRows(); ++i) {
        for (int j = 0; j < matrix.NumCols(); ++j) {
            const QvxMatrix::Cell& cell = matrix.GetStrValue(i, j);
            if (!cell) continue;
            const std::string where =
                std::string(name) + " row " + std::to_string(i + 1) + " column " + std::to_string(j + 1);
            matrix.SetValue(i, j, evaluate_real(context, *cell, where));
        }
    }
    return matrix;
}

constexpr const char* k_overflow = "A Floating Point Overflow Has Occured!";

// The matrix with its cells written as answers.
std::string matrix_answer(CommandContext& context, const QvxMatrix& matrix) {
    if (matrix.Overflowed()) calculation_failure(k_overflow);
    QvxMatrix shown(matrix);
    for (int i = 0; i < matrix.NumRows(); ++i)
        for (int j = 0; j < matrix.NumCols(); ++j)
            if (matrix.GetStrValue(i, j))
                shown.SetStrValue(i, j, format_answer(context, matrix.GetValue(i, j)));
    return numerics::write_matrix_text(shown);
}

void require_square(const QvxMatrix& matrix, std::string_view operation) {
    if (!matrix.IsSquare())
        usage_failure(std::string(operation) + " needs a square matrix; A is " + size_text(matrix));
}

enum class Operand { none, matrix, number };

struct Operation {
    std::string_view name;
    Operand second;
};

constexpr std::array<Operation, 13> k_operations{{
    {"det", Operand::none},
    {"inv", Operand::none},
    {"rank", Operand::none},
    {"trace", Operand::none},
    {"transpose", Operand::none},
    {"adjugate", Operand::none},
    {"cofactor", Operand::none},
    {"lu", Operand::none},
    {"add", Operand::matrix},
    {"sub", Operand::matrix},
    {"mul", Operand::matrix},
    {"solve", Operand::matrix},
    {"scale", Operand::number},
}};

const Operation& find_operation(const std::string& name) {
    for (const Operation& operation : k_operations)
        if (operation.name == name) return operation;
    usage_failure(
        "unknown operation " + name +
        "; one of det, inv, rank, trace, transpose, adjugate, cofactor, lu, add, sub, mul, solve, scale");
}

// The operations on A alone.
void run_unary(CommandContext& context, const std::string& name, QvxMatrix& a) {
    std::string text;
    if (name == "det") {
        require_square(a, name);
        const long double determinant = QvxMatrix::Determinant(a, text);
        if (!QvxMatrix::fits_a_double(determinant)) calculation_failure(k_overflow);
        context.out << format_answer(context, determinant) << '\n';
    } else if (name == "inv") {
        require_square(a, name);
        if (!QvxMatrix::Inverse(a)) calculation_failure("the matrix is singular: it has no inverse");
        context.out << matrix_answer(context, a) << '\n';
    } else if (name == "rank") {
        context.out << QvxMatrix::Rank(a, text) << '\n';
    } else if (name == "trace") {
        require_square(a, name);
        long double trace = 0;
        QvxMatrix::Trace(a, text, trace);
        if (!QvxMatrix::fits_a_double(trace)) calculation_failure(k_overflow);
        context.out << format_answer(context, trace) << '\n';
    } else if (name == "transpose") {
        QvxMatrix::Transpose(a);
        context.out << matrix_answer(context, a) << '\n';
    } else if (name == "adjugate" || name == "cofactor") {
        require_square(a, name);
        if (name == "adjugate")
            QvxMatrix::Adjugate(a);
        else
            QvxMatrix::Cofactor(a);
        context.out << matrix_answer(context, a) << '\n';
    } else { // lu
        QvxMatrix l("L", 1, 1), u("U", 1, 1), p("P", 1, 1);
        if (!QvxMatrix::LUDcmp(a, l, u, p)) calculation_failure("the matrix could not be decomposed");
        context.out << "L = " << matrix_answer(context, l) << "\nU = " << matrix_answer(context, u)
                    << "\nP = " << matrix_answer(context, p) << '\n';
    }
}

// The operations of A with the matrix B.
void run_binary(CommandContext& context, const std::string& name, QvxMatrix& a, const QvxMatrix& b) {
    if (name == "add" || name == "sub") {
        if (a.NumRows() != b.NumRows() || a.NumCols() != b.NumCols())
            usage_failure(name + " needs matrices of one size; A is " + size_text(a) + ", B is " +
                          size_text(b));
        if (name == "add")
            a += b;
        else
            a -= b;
        context.out << matrix_answer(context, a) << '\n';
    } else if (name == "mul") {
        if (a.NumCols() != b.NumRows())
            usage_failure("mul needs as many columns in A as rows in B; A is " + size_text(a) + ", B is " +
                          size_text(b));
        a *= b;
        context.out << matrix_answer(context, a) << '\n';
    } else { // solve
        require_square(a, name);
        if (b.NumRows() != a.NumRows() || b.NumCols() != 1)
            usage_failure("solve needs B to be one column with as many rows as A; A is " + size_text(a) +
                          ", B is " + size_text(b));
        QvxMatrix x("x", a.NumRows());
        if (!QvxMatrix::Linsolve(a, x, b))
            calculation_failure("the matrix is singular: A x = B has no single solution");
        context.out << matrix_answer(context, x) << '\n';
    }
}

} // namespace

int run_matrix(CommandContext& context) {
    const auto& args = arguments(context, 2, 3);
    refuse_options(context, false, false);
    const Operation& operation = find_operation(args[0]);
    const size_t wanted = operation.second == Operand::none ? 2 : 3;
    if (args.size() != wanted)
        usage_failure(args[0] + (wanted == 2 ? " takes the matrix A only" : " takes A and B"));

    QvxMatrix a = read_matrix(context, args[1], "A");
    if (operation.second == Operand::none) {
        run_unary(context, args[0], a);
    } else if (operation.second == Operand::matrix) {
        run_binary(context, args[0], a, read_matrix(context, args[2], "B"));
    } else {
        const long double factor = evaluate_real(context, args[2], "B");
        engine::Mathematics math;
        QvxMatrix::ScalarMult(a, math.real_string(factor, 14));
        context.out << matrix_answer(context, a) << '\n';
    }
    return 0;
}

} // namespace quorvex::cli
