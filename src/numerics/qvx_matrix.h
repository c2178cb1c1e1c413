#pragma once
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace quorvex::numerics {

// A named matrix of at most 10 by 10 whose cells are decimal text, so that a matrix keeps the
// digits the user typed and a cell may hold an expression for the matrix tool to evaluate. An
// empty cell (no text) is no value; arithmetic reads it as zero. A matrix of one column is a
// vector. Every cell operation runs through the decimal-text arithmetic of Mathematics at 14
// digits; numbers are compared with thresholds only as long doubles.
//
// Failures are reported by bool; sizes are the caller's to check before arithmetic (the
// operators leave the matrix unchanged when the sizes do not fit).
class QvxMatrix {
public:
    static constexpr int MaxSize = 10;
    using Cell = std::optional<std::string>;
    using IndexVector = std::array<int, MaxSize>;

    // All cells empty; sizes outside 1..10 are brought to the nearest bound. Copies take the
    // name, the size and every cell, used or not.
    QvxMatrix(std::string_view name, int rows, int columns);
    QvxMatrix(std::string_view name, int rows); // a vector: one column

    const std::string& Name() const { return m_name; }
    int NumRows() const { return m_rows; }
    int NumCols() const { return m_cols; }
    bool IsSquare() const { return m_rows == m_cols; }

    void SetName(std::string_view name) { m_name = name; }
    // Rows and columns from 1 to 10, else false and nothing changes. Cells outside the new size
    // keep their texts, so shrinking and growing again loses nothing.
    bool SetSize(int rows, int columns);
    // True when no cell within the used size holds text.
    bool IsMatrixEmpty() const;
    // True when a used cell holds a value beyond the range of a double: an operation overflowed.
    bool Overflowed() const;
    // Whether a value read from a cell (a long double, whose range is wider) fits a double.
    static bool fits_a_double(long double value) {
        return std::fabs(value) <= static_cast<long double>(std::numeric_limits<double>::max());
    }
    // Empties every cell, used or not.
    void InitMatrixArray();
    // Gives each empty cell within the used size the text.
    void SetNullValues(std::string_view text);

    // An index outside 0..9 gives false and changes nothing; no text (std::nullopt) empties the
    // cell and gives true.
    bool SetStrValue(int row, int column, std::optional<std::string_view> text);
    bool SetStrValue(int row, std::optional<std::string_view> text) { return SetStrValue(row, 0, text); }
    // The number as decimal text at 14 digits.
    bool SetValue(int row, int column, long double value);
    // The cell's text, or no text for an empty cell or an index outside 0..9.
    const Cell& GetStrValue(int row, int column) const;
    // The cell read as a decimal number; an empty cell or text without digits gives 0.
    long double GetValue(int row, int column) const;
    // Appends to the cell's text; an empty cell takes the text.
    bool AddStrValue(int row, int column, std::string_view text);
    // Wraps a value in an operation inside the cell: an empty cell becomes "op(value)", a cell
    // with text becomes "text" "op(value)". No value or an index outside 0..9 gives false.
    bool OpStrValue(int row, int column, std::optional<std::string_view> value, std::string_view op);

    // The cell of column 0 of a vector.
    const Cell& operator[](int row) const { return GetStrValue(row, 0); }

    // Cell by cell; the result is named "(this)+(other)" and "(this)-(other)".
    QvxMatrix& operator+=(const QvxMatrix& other);
    QvxMatrix& operator-=(const QvxMatrix& other);
    // The matrix product, rows of this by columns of other; named "(this)*(other)".
    QvxMatrix& operator*=(const QvxMatrix& other);
    // Each cell times the value. A value of -1 names the result "-(name)", another value
    // "(name)*(value)". No value gives false.
    static bool ScalarMult(QvxMatrix& matrix, std::optional<std::string_view> value);

    // The names of the results of arithmetic.
    static std::string SumName(std::string_view a, std::string_view b);
    static std::string DifferenceName(std::string_view a, std::string_view b);
    static std::string ProductName(std::string_view a, std::string_view b);
    static std::string NegationName(std::string_view a);

    // The number of rows of the echelon form U with a cell above 1e-12 in magnitude (times the
    // largest magnitude of the matrix when that exceeds 1); the text is the count.
    static int Rank(const QvxMatrix& matrix, std::string& text);
    // The determinant as text and as a value. A magnitude below 1e-14 of the product of each
    // row's largest magnitude (the matrix's own scale), a zero row, a pivot below 1e-12 of the
    // largest cell of its row (zero, or a residue of the 15-digit rounding) or a matrix that is
    // not square gives "0.0" and 0.
    static long double Determinant(const QvxMatrix& matrix, std::string& text);
    // The sum of the diagonal; square matrices only.
    static bool Trace(const QvxMatrix& matrix, std::string& text, long double& value);
    // Replaces the matrix by its inverse. False, with the matrix unchanged, when it is not
    // square or its determinant, as Determinant gives it, is 0.
    static bool Inverse(QvxMatrix& matrix);
    static void Transpose(QvxMatrix& matrix);
    // The transpose of the cofactor matrix; square matrices only.
    static bool Adjugate(QvxMatrix& matrix);
    // Each cell replaced by its signed minor; square matrices only.
    static bool Cofactor(QvxMatrix& matrix);
    // The determinant of this matrix without the row and the column. A 1 by 1 matrix has the
    // empty minor, whose determinant is 1.
    bool Minor(int row, int column, std::string& text) const;
    // Solves A x = B for the first column of B; x becomes a vector of A's rows. False when A is
    // not square, B has another row count, or A is singular as for Inverse.
    static bool Linsolve(const QvxMatrix& A, QvxMatrix& x, const QvxMatrix& B);
    // Forward and back substitution with a matrix decomposed by Ludcmp, on column 0 of b.
    // False when the decomposition has a zero on its diagonal.
    static bool Lubksb(const QvxMatrix& lu, const IndexVector& index, QvxMatrix& b);
    // P A = L U with partial pivoting, for any shape m by n: P is m by m, L is m by k with a
    // unit diagonal, U is k by n in echelon form, k the smaller of m and n. A column whose
    // remaining cells are all within the rank's threshold of zero is passed over, so
    // rank-deficient matrices decompose too.
    static bool LUDcmp(const QvxMatrix& matrix, QvxMatrix& L, QvxMatrix& U, QvxMatrix& P);
    // Crout's decomposition with implicit pivoting, in place: the strict lower part holds L
    // (unit diagonal implied), the rest U; index records the row swaps and sign their parity.
    // False for a matrix that is not square or has a row without a non-zero cell. A pivot that
    // is empty or zero becomes 1e-14, so that a singular matrix ends with a negligible
    // determinant instead of a division by zero.
    static bool Ludcmp(QvxMatrix& matrix, IndexVector& index, int& sign);

private:
    static bool in_range(int row, int column) {
        return row >= 0 && row < MaxSize && column >= 0 && column < MaxSize;
    }
    // The text the decimal operations read: an empty cell reads as zero.
    const char* text(int row, int column) const {
        const Cell& cell = m_cells[static_cast<size_t>(row)][static_cast<size_t>(column)];
        return cell ? cell->c_str() : "";
    }
    Cell& cell(int row, int column) { return m_cells[static_cast<size_t>(row)][static_cast<size_t>(column)]; }
    void swap_rows(int a, int b);
    // Ludcmp, telling also whether a pivot was zero or a rounding residue, below 1e-12 of the
    // largest cell of its row.
    static bool crout(QvxMatrix& matrix, IndexVector& index, int& sign, bool& negligible);

    std::string m_name;
    int m_rows = 1;
    int m_cols = 1;
    std::array<std::array<Cell, MaxSize>, MaxSize> m_cells;
};

} // namespace quorvex::numerics
