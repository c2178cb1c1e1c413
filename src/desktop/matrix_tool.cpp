#include "matrix_tool.h"

#include "engine/mathematics.h"
#include "engine/parser.h"
#include "engine/variable.h"
#include "quick_calc.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <sstream>

namespace quorvex::desktop {

using numerics::QvxMatrix;

namespace {

constexpr double k_imaginary = 1e-14;

constexpr std::array<const char*, k_matrix_operation_count> k_captions{
    "+ (Add)",   "- (Subract)", "* (Multiply)", "* (Scalar)", "Inverse", "Transpose",
    "Cofactor",  "Adjugate",    "LU Decomp",    "Trace",      "Rank",    "Determinant"};

std::string size_text(const QvxMatrix& matrix) {
    return std::to_string(matrix.NumRows()) + " by " + std::to_string(matrix.NumCols());
}

// A name given the parentheses of a pattern such as "Inverse(%1)".
std::string named(const char* pattern, const std::string& first, const std::string& second = {}) {
    return fill_text(pattern, first, second);
}

bool is_empty(const QvxMatrix& matrix, const std::string& which, std::string& error) {
    if (!matrix.IsMatrixEmpty()) return false;
    error = "The " + which + " matrix ' " + matrix.Name() + " ' has no values: enter its values first.";
    return true;
}

} // namespace

const char* matrix_operation_caption(MatrixOperation operation) {
    return k_captions[static_cast<size_t>(operation)];
}

bool takes_second_matrix(MatrixOperation operation) {
    return operation == MatrixOperation::Add || operation == MatrixOperation::Subtract ||
           operation == MatrixOperation::Multiply;
}

std::string default_matrix_name(const std::vector<QvxMatrix>& matrices, bool vector) {
    const std::string stem = vector ? "Vector" : "Matrix";
    for (int n = 1;; ++n) {
        const std::string name = stem + std::to_string(n);
        if (find_matrix(matrices, name) < 0) return name;
    }
}

bool is_default_matrix_name(const std::string& name) {
    for (const char* stem : {"Matrix", "Vector"}) {
        const std::string prefix(stem);
        if (name.size() > prefix.size() && name.compare(0, prefix.size(), prefix) == 0 &&
            std::all_of(name.begin() + static_cast<long>(prefix.size()), name.end(),
                        [](char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }))
            return true;
    }
    return false;
}

std::string unique_matrix_name(const std::vector<QvxMatrix>& matrices, const std::string& name) {
    if (find_matrix(matrices, name) < 0) return name;
    for (int n = 1;; ++n) {
        const std::string candidate = name + " #" + std::to_string(n);
        if (find_matrix(matrices, candidate) < 0) return candidate;
    }
}

int find_matrix(const std::vector<QvxMatrix>& matrices, const std::string& name) {
    for (size_t i = 0; i < matrices.size(); ++i)
        if (matrices[i].Name() == name) return static_cast<int>(i);
    return -1;
}

std::optional<QvxMatrix> evaluate_matrix(engine::Parser& parser, const QvxMatrix& matrix, std::string& error) {
    QvxMatrix evaluated(matrix);
    for (int i = 0; i < matrix.NumRows(); ++i)
        for (int j = 0; j < matrix.NumCols(); ++j) {
            const QvxMatrix::Cell& cell = matrix.GetStrValue(i, j);
            if (!cell || cell->find_first_not_of(" \t") == std::string::npos) {
                evaluated.SetStrValue(i, j, std::nullopt);
                continue;
            }
            const std::string where =
                "' " + matrix.Name() + " ' row " + std::to_string(i + 1) + " column " + std::to_string(j + 1);
            engine::complex value;
            parser.ClearLastError();
            parser.eval_exp(cell->c_str(), value, true, false, false);
            if (parser.IsAnError()) {
                const char* why = parser.GetLastError();
                error = "The value of " + where + " can not be computed: " + (why ? why : "");
                parser.ClearLastError();
                return std::nullopt;
            }
            if (std::abs(value.imag()) > k_imaginary) {
                error = "The value of " + where + " is imaginary: matrices hold real numbers only.";
                return std::nullopt;
            }
            if (!std::isfinite(value.real())) {
                error = "The value of " + where + " is too large.";
                return std::nullopt;
            }
            evaluated.SetValue(i, j, value.real());
        }
    return evaluated;
}

std::optional<MatrixAnswer> run_matrix_operation(engine::Parser& parser, const std::vector<QvxMatrix>& matrices,
                                                 const QvxMatrix& first, MatrixOperation operation,
                                                 const QvxMatrix* second, const std::string& scalar,
                                                 std::string& error) {
    if (is_empty(first, "first", error)) return std::nullopt;
    if (takes_second_matrix(operation)) {
        if (!second) {
            error = "Select the second matrix of the operation.";
            return std::nullopt;
        }
        if (is_empty(*second, "second", error)) return std::nullopt;
    }
    const std::string& a_name = first.Name();
    const std::string b_name = second ? second->Name() : std::string();
    const bool same_size =
        second && first.NumRows() == second->NumRows() && first.NumCols() == second->NumCols();
    const auto square = [&](const char* what) {
        if (first.IsSquare()) return true;
        error = std::string("The ") + what + " needs a square matrix: ' " + a_name + " ' is " + size_text(first) + ".";
        return false;
    };
    switch (operation) {
    case MatrixOperation::Add:
    case MatrixOperation::Subtract:
        if (!same_size) {
            error = std::string("Matrices must be of the same size to be ") +
                    (operation == MatrixOperation::Add ? "added" : "subtracted") + ": ' " + a_name + " ' is " +
                    size_text(first) + ", ' " + b_name + " ' is " + size_text(*second) + ".";
            return std::nullopt;
        }
        break;
    case MatrixOperation::Multiply:
        if (first.NumCols() != second->NumRows()) {
            error = "To multiply, the first matrix needs as many columns as the second has rows: ' " + a_name +
                    " ' is " + size_text(first) + ", ' " + b_name + " ' is " + size_text(*second) + ".";
            return std::nullopt;
        }
        break;
    case MatrixOperation::Scalar:
        if (scalar.find_first_not_of(" \t") == std::string::npos) {
            error = "Enter the number to multiply by in the Scalar Value box.";
            return std::nullopt;
        }
        break;
    case MatrixOperation::Inverse:
        if (!square("inverse")) return std::nullopt;
        break;
    case MatrixOperation::Cofactor:
        if (!square("cofactor")) return std::nullopt;
        break;
    case MatrixOperation::Adjugate:
        if (!square("adjugate")) return std::nullopt;
        break;
    case MatrixOperation::Trace:
        if (!square("trace")) return std::nullopt;
        break;
    case MatrixOperation::Determinant:
        if (!square("determinant")) return std::nullopt;
        break;
    case MatrixOperation::Transpose:
    case MatrixOperation::LU:
    case MatrixOperation::Rank: break;
    }

    std::optional<QvxMatrix> a = evaluate_matrix(parser, first, error);
    if (!a) return std::nullopt;
    std::optional<QvxMatrix> b;
    if (takes_second_matrix(operation)) {
        b = evaluate_matrix(parser, *second, error);
        if (!b) return std::nullopt;
    }

    MatrixAnswer answer;
    std::string text;
    const auto add = [&](QvxMatrix matrix, const std::string& name) {
        matrix.SetName(unique_matrix_name(matrices, name));
        answer.matrices.push_back(std::move(matrix));
    };
    switch (operation) {
    case MatrixOperation::Add: *a += *b; add(*a, named("(%1)+(%2)", a_name, b_name)); break;
    case MatrixOperation::Subtract: *a -= *b; add(*a, named("(%1)-(%2)", a_name, b_name)); break;
    case MatrixOperation::Multiply: *a *= *b; add(*a, named("(%1)*(%2)", a_name, b_name)); break;
    case MatrixOperation::Scalar: {
        engine::complex value;
        parser.ClearLastError();
        parser.eval_exp(scalar.c_str(), value, true, false, false);
        if (parser.IsAnError() || std::abs(value.imag()) > k_imaginary || !std::isfinite(value.real())) {
            const char* why = parser.IsAnError() ? parser.GetLastError() : nullptr;
            error = std::string("The scalar value must be a real number") + (why ? std::string(": ") + why : ".");
            parser.ClearLastError();
            return std::nullopt;
        }
        engine::Mathematics math;
        QvxMatrix::ScalarMult(*a, math.real_string(value.real(), 14));
        std::string shown = scalar;
        shown.erase(0, shown.find_first_not_of(" \t"));
        shown.erase(shown.find_last_not_of(" \t") + 1);
        add(*a, named("(%1)*(%2)", a_name, shown));
        break;
    }
    case MatrixOperation::Inverse:
        if (!QvxMatrix::Inverse(*a)) {
            error = "The matrix ' " + a_name + " ' is singular (its determinant is 0): it has no inverse.";
            return std::nullopt;
        }
        add(*a, named("Inverse(%1)", a_name));
        break;
    case MatrixOperation::Transpose: QvxMatrix::Transpose(*a); add(*a, named("Transpose(%1)", a_name)); break;
    case MatrixOperation::Cofactor: QvxMatrix::Cofactor(*a); add(*a, named("Cofactor(%1)", a_name)); break;
    case MatrixOperation::Adjugate: QvxMatrix::Adjugate(*a); add(*a, named("Adjugate(%1)", a_name)); break;
    case MatrixOperation::LU: {
        QvxMatrix l("L", 1, 1), u("U", 1, 1), p("P", 1, 1);
        if (!QvxMatrix::LUDcmp(*a, l, u, p)) {
            error = "The matrix ' " + a_name + " ' could not be decomposed.";
            return std::nullopt;
        }
        add(l, named("LDecomp(%1)", a_name));
        add(u, unique_matrix_name(answer.matrices, named("UDecomp(%1)", a_name)));
        break;
    }
    case MatrixOperation::Trace: {
        long double value = 0;
        QvxMatrix::Trace(*a, text, value);
        answer.number = value;
        answer.number_name = named("Trace(%1)", a_name);
        break;
    }
    case MatrixOperation::Rank:
        answer.number = QvxMatrix::Rank(*a, text);
        answer.number_name = named("Rank(%1)", a_name);
        break;
    case MatrixOperation::Determinant:
        answer.number = QvxMatrix::Determinant(*a, text);
        answer.number_name = named("Determinant(%1)", a_name);
        break;
    }
    for (const QvxMatrix& matrix : answer.matrices)
        if (matrix.Overflowed()) {
            error = "A Floating Point Overflow Has Occured!";
            return std::nullopt;
        }
    if (answer.number && !QvxMatrix::fits_a_double(*answer.number)) {
        error = "A Floating Point Overflow Has Occured!";
        return std::nullopt;
    }
    return answer;
}

std::optional<QvxMatrix> solve_linear_system(engine::Parser& parser, const std::vector<QvxMatrix>& matrices,
                                             const QvxMatrix& a, const QvxMatrix& b, std::string& error) {
    if (is_empty(a, "coefficient", error) || is_empty(b, "right-hand side", error)) return std::nullopt;
    if (!a.IsSquare()) {
        error = "Matrix A must have as many rows as columns: ' " + a.Name() + " ' is " + size_text(a) + ".";
        return std::nullopt;
    }
    if (b.NumCols() != 1 || b.NumRows() != a.NumRows()) {
        error = "Vector B must be one column with as many rows as Matrix A: ' " + a.Name() + " ' is " +
                size_text(a) + ", ' " + b.Name() + " ' is " + size_text(b) + ".";
        return std::nullopt;
    }
    std::optional<QvxMatrix> a_values = evaluate_matrix(parser, a, error);
    if (!a_values) return std::nullopt;
    std::optional<QvxMatrix> b_values = evaluate_matrix(parser, b, error);
    if (!b_values) return std::nullopt;
    QvxMatrix x("x", a.NumRows());
    if (!QvxMatrix::Linsolve(*a_values, x, *b_values)) {
        error = "The matrix ' " + a.Name() + " ' is singular: the system has no single solution.";
        return std::nullopt;
    }
    if (x.Overflowed()) {
        error = "A Floating Point Overflow Has Occured!";
        return std::nullopt;
    }
    x.SetName(unique_matrix_name(matrices, "Solution(" + a.Name() + "," + b.Name() + ")"));
    return x;
}

std::string matrix_value_text(long double value, int precision, bool fractions, bool* fits) {
    if (fits) *fits = true;
    std::ostringstream out;
    engine::Variable::StreamVariable({static_cast<double>(value), 0}, out, precision);
    const std::string shown = out.str();
    if (!fractions) return shown;
    const long double rounded = std::strtold(shown.c_str(), nullptr);
    if (rounded == std::trunc(rounded)) return shown;
    engine::Mathematics math;
    int status = 1;
    const long double tolerance =
        std::max(1e-14L, 0.5L * std::pow(10.0L, -precision) * std::max(1.0L, std::fabs(rounded)));
    const engine::Fraction fraction = math.DecToFrac(rounded, tolerance, status);
    if (status != 0) {
        if (fits) *fits = false;
        return shown;
    }
    return std::to_string(fraction.numerator) + "/" + std::to_string(fraction.denominator);
}

std::string matrix_clipboard_text(const QvxMatrix& matrix, int precision, bool fractions) {
    std::string text;
    for (int i = 0; i < matrix.NumRows(); ++i) {
        for (int j = 0; j < matrix.NumCols(); ++j) {
            if (j > 0) text += '\t';
            text += matrix_value_text(matrix.GetValue(i, j), precision, fractions);
        }
        text += '\n';
    }
    return text;
}

} // namespace quorvex::desktop
