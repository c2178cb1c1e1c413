// Decompositions of decimal-text matrices and what is built on them: determinant, inverse,
// linear solution, rank, minors and cofactors.
#include "cell_arithmetic.h"
#include "qvx_matrix.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>
#include <utility>

namespace quorvex::numerics {

namespace {

// Below this magnitude a determinant is taken for zero: the matrix is singular.
constexpr long double k_singular = 1e-14L;
// What an empty or zero pivot becomes, so the decomposition goes on without dividing by zero.
constexpr const char* k_tiny_pivot = "1.0E-14";
// Every step rounds to 15 digits, so the elimination of a singular matrix seldom leaves an exact
// zero: [[2,3,5],[7,11,13],[9,14,18]] leaves a last pivot of -5.3e-13. A pivot this small beside
// the largest cell of its row is such a residue, and the matrix is singular; the rank, with the
// same 1e-12, agrees.
constexpr long double k_negligible_pivot = 1e-12L;
// Below this magnitude, times the largest magnitude of the matrix when that exceeds 1, a cell of
// the echelon form counts as zero for the rank; scaling keeps rounding residues of matrices with
// large entries from counting.
constexpr long double k_rank_zero = 1e-12L;

long double rank_threshold(const QvxMatrix& matrix, CellArithmetic& math) {
    long double largest = 1;
    for (int i = 0; i < matrix.NumRows(); ++i)
        for (int j = 0; j < matrix.NumCols(); ++j) {
            const QvxMatrix::Cell& cell = matrix.GetStrValue(i, j);
            if (cell) largest = std::max(largest, math.magnitude(cell->c_str()));
        }
    return k_rank_zero * largest;
}

} // namespace

bool QvxMatrix::Ludcmp(QvxMatrix& a, IndexVector& index, int& sign) {
    bool negligible = false;
    return crout(a, index, sign, negligible);
}

bool QvxMatrix::crout(QvxMatrix& a, IndexVector& index, int& sign, bool& negligible) {
    negligible = false;
    const int n = a.m_rows;
    if (a.m_cols != n) return false;
    CellArithmetic math;
    // Implicit pivoting: each row is compared as if scaled to a largest magnitude of 1.
    std::array<std::string, MaxSize> scale;
    for (int i = 0; i < n; ++i) {
        int widest = -1;
        long double largest = 0;
        for (int j = 0; j < n; ++j) {
            const long double size = math.magnitude(a.text(i, j));
            if (size > largest) largest = size, widest = j;
        }
        if (widest < 0) return false;
        scale[static_cast<size_t>(i)] = math.abs(math.div("1", a.text(i, widest)).c_str());
    }

    sign = 1;
    for (int j = 0; j < n; ++j) {
        for (int i = 0; i < j; ++i) {
            std::string sum = a.text(i, j);
            for (int k = 0; k < i; ++k)
                sum = math.sub(sum.c_str(), math.mult(a.text(i, k), a.text(k, j)).c_str());
            a.cell(i, j) = std::move(sum);
        }
        int pivot = j;
        long double largest = 0;
        for (int i = j; i < n; ++i) {
            std::string sum = a.text(i, j);
            for (int k = 0; k < j; ++k)
                sum = math.sub(sum.c_str(), math.mult(a.text(i, k), a.text(k, j)).c_str());
            const long double merit =
                math.magnitude(math.mult(scale[static_cast<size_t>(i)].c_str(), sum.c_str()).c_str());
            a.cell(i, j) = std::move(sum);
            if (merit >= largest) largest = merit, pivot = i;
        }
        if (pivot != j) {
            a.swap_rows(pivot, j);
            sign = -sign;
            scale[static_cast<size_t>(pivot)] = scale[static_cast<size_t>(j)];
        }
        index[static_cast<size_t>(j)] = pivot;
        if (largest < k_negligible_pivot) negligible = true;
        if (math.is_zero(a.text(j, j))) a.cell(j, j) = k_tiny_pivot;
        for (int i = j + 1; i < n; ++i)
            a.cell(i, j) = math.div(a.text(i, j), a.text(j, j));
    }
    return true;
}

bool QvxMatrix::Lubksb(const QvxMatrix& lu, const IndexVector& index, QvxMatrix& b) {
    const int n = lu.m_rows;
    CellArithmetic math;
    for (int i = 0; i < n; ++i)
        if (math.is_zero(lu.text(i, i))) return false;
    // Forward substitution; the work starts at the first non-zero of the right side.
    int first = -1;
    for (int i = 0; i < n; ++i) {
        const int swapped = index[static_cast<size_t>(i)];
        std::string sum = b.text(swapped, 0);
        b.cell(swapped, 0) = b.GetStrValue(i, 0);
        if (first >= 0) {
            for (int j = first; j < i; ++j)
                sum = math.sub(sum.c_str(), math.mult(lu.text(i, j), b.text(j, 0)).c_str());
        } else if (!math.is_zero(sum.c_str())) {
            first = i;
        }
        b.cell(i, 0) = std::move(sum);
    }
    for (int i = n - 1; i >= 0; --i) {
        std::string sum = b.text(i, 0);
        for (int j = i + 1; j < n; ++j)
            sum = math.sub(sum.c_str(), math.mult(lu.text(i, j), b.text(j, 0)).c_str());
        b.cell(i, 0) = math.div(sum.c_str(), lu.text(i, i));
    }
    return true;
}

bool QvxMatrix::LUDcmp(const QvxMatrix& matrix, QvxMatrix& L, QvxMatrix& U, QvxMatrix& P) {
    const int m = matrix.m_rows;
    const int n = matrix.m_cols;
    const int k = std::min(m, n);
    CellArithmetic math;
    const long double zero = rank_threshold(matrix, math);
    QvxMatrix work(matrix);
    work.SetNullValues("0.0");
    QvxMatrix multipliers("", m, m);
    multipliers.SetNullValues("0.0");
    std::array<int, MaxSize> order{};
    std::iota(order.begin(), order.end(), 0);

    int row = 0;
    for (int column = 0; column < n && row < m; ++column) {
        int pivot = row;
        long double largest = 0;
        for (int i = row; i < m; ++i) {
            const long double size = math.magnitude(work.text(i, column));
            if (size > largest) largest = size, pivot = i;
        }
        if (largest <= zero) {
            // Nothing to pivot on: the column is zero below the rows already placed.
            for (int i = row; i < m; ++i)
                work.cell(i, column) = "0.0";
            continue;
        }
        if (pivot != row) {
            work.swap_rows(row, pivot);
            multipliers.swap_rows(row, pivot);
            std::swap(order[static_cast<size_t>(row)], order[static_cast<size_t>(pivot)]);
        }
        for (int i = row + 1; i < m; ++i) {
            const std::string factor = math.div(work.text(i, column), work.text(row, column));
            for (int j = column + 1; j < n; ++j)
                work.cell(i, j) =
                    math.sub(work.text(i, j), math.mult(factor.c_str(), work.text(row, j)).c_str());
            work.cell(i, column) = "0.0";
            multipliers.cell(i, row) = factor;
        }
        ++row;
    }

    P.SetSize(m, m);
    P.InitMatrixArray();
    L.SetSize(m, k);
    L.InitMatrixArray();
    U.SetSize(k, n);
    U.InitMatrixArray();
    for (int i = 0; i < m; ++i) {
        for (int j = 0; j < m; ++j)
            P.cell(i, j) = j == order[static_cast<size_t>(i)] ? "1.0" : "0.0";
        for (int j = 0; j < k; ++j)
            L.cell(i, j) = i == j ? "1.0" : (j < i ? *multipliers.cell(i, j) : "0.0");
    }
    for (int i = 0; i < k; ++i)
        for (int j = 0; j < n; ++j)
            U.cell(i, j) = *work.cell(i, j);
    return true;
}

int QvxMatrix::Rank(const QvxMatrix& matrix, std::string& text) {
    QvxMatrix L("L", 1, 1), U("U", 1, 1), P("P", 1, 1);
    LUDcmp(matrix, L, U, P);
    CellArithmetic math;
    const long double zero = rank_threshold(matrix, math);
    int rank = 0;
    for (int i = 0; i < U.m_rows; ++i) {
        for (int j = 0; j < U.m_cols; ++j) {
            if (math.magnitude(U.text(i, j)) > zero) {
                ++rank;
                break;
            }
        }
    }
    text = std::to_string(rank);
    return rank;
}

long double QvxMatrix::Determinant(const QvxMatrix& matrix, std::string& text) {
    QvxMatrix work(matrix);
    work.SetNullValues("0.0");
    IndexVector index{};
    int sign = 1;
    bool negligible = false;
    text = "0.0";
    // A zero pivot means a zero determinant: its stand-in of 1e-14 keeps the decomposition going,
    // but times the other pivots it could pass the threshold. So could a rounding residue.
    if (!crout(work, index, sign, negligible) || negligible) return 0;
    CellArithmetic math;
    std::string product = math.real_string(sign);
    for (int j = 0; j < work.m_rows; ++j)
        product = math.mult(product.c_str(), work.text(j, j));
    // Negligible against the size of the matrix, not against 1: the product of each row's largest
    // magnitude bounds the determinant, so a diagonal of 1e-10 is as regular as one of 1.
    std::string bound = "1";
    for (int i = 0; i < matrix.m_rows; ++i) {
        long double largest = 0;
        int widest = 0;
        for (int j = 0; j < matrix.m_cols; ++j) {
            const long double size = math.magnitude(matrix.text(i, j));
            if (size > largest) largest = size, widest = j;
        }
        bound = math.mult(bound.c_str(), math.abs(matrix.text(i, widest)).c_str());
    }
    if (math.magnitude(product.c_str()) < k_singular * math.magnitude(bound.c_str())) return 0;
    text = std::move(product);
    return std::strtold(text.c_str(), nullptr);
}

bool QvxMatrix::Inverse(QvxMatrix& matrix) {
    if (!matrix.IsSquare()) return false;
    QvxMatrix work(matrix);
    work.SetNullValues("0.0");
    std::string determinant;
    if (Determinant(work, determinant) == 0) return false;
    IndexVector index{};
    int sign = 1;
    if (!Ludcmp(work, index, sign)) return false;

    const int n = matrix.m_rows;
    QvxMatrix inverse(matrix);
    for (int j = 0; j < n; ++j) {
        QvxMatrix unit("", n);
        for (int i = 0; i < n; ++i)
            unit.cell(i, 0) = i == j ? "1.0" : "0.0";
        if (!Lubksb(work, index, unit)) return false;
        for (int i = 0; i < n; ++i)
            inverse.cell(i, j) = unit.cell(i, 0);
    }
    matrix = std::move(inverse);
    return true;
}

bool QvxMatrix::Linsolve(const QvxMatrix& A, QvxMatrix& x, const QvxMatrix& B) {
    const int n = A.m_rows;
    if (!A.IsSquare() || B.m_rows != n) return false;
    QvxMatrix work(A);
    work.SetNullValues("0.0");
    std::string determinant;
    if (Determinant(work, determinant) == 0) return false;
    IndexVector index{};
    int sign = 1;
    if (!Ludcmp(work, index, sign)) return false;

    QvxMatrix solution(x.m_name, n);
    for (int i = 0; i < n; ++i)
        solution.cell(i, 0) = B.GetStrValue(i, 0);
    solution.SetNullValues("0.0");
    if (!Lubksb(work, index, solution)) return false;
    x = std::move(solution);
    return true;
}

bool QvxMatrix::Minor(int row, int column, std::string& text) const {
    const int n = m_rows;
    if (!IsSquare() || row < 0 || row >= n || column < 0 || column >= n) return false;
    if (n == 1) {
        text = "1.0";
        return true;
    }
    QvxMatrix sub("", n - 1, n - 1);
    for (int i = 0, si = 0; i < n; ++i) {
        if (i == row) continue;
        for (int j = 0, sj = 0; j < n; ++j) {
            if (j == column) continue;
            sub.cell(si, sj++) = GetStrValue(i, j);
        }
        ++si;
    }
    Determinant(sub, text);
    return true;
}

bool QvxMatrix::Cofactor(QvxMatrix& matrix) {
    if (!matrix.IsSquare()) return false;
    CellArithmetic math;
    QvxMatrix cofactors(matrix);
    for (int i = 0; i < matrix.m_rows; ++i) {
        for (int j = 0; j < matrix.m_cols; ++j) {
            std::string minor;
            matrix.Minor(i, j, minor);
            // A zero minor keeps its "0.0" whatever the sign of its place.
            const bool negate = (i + j) % 2 != 0 && !math.is_zero(minor.c_str());
            cofactors.cell(i, j) = negate ? math.mult(minor.c_str(), "-1.0") : minor;
        }
    }
    matrix = std::move(cofactors);
    return true;
}

bool QvxMatrix::Adjugate(QvxMatrix& matrix) {
    if (!Cofactor(matrix)) return false;
    Transpose(matrix);
    return true;
}

} // namespace quorvex::numerics
