// Construction, cells, arithmetic and names of decimal-text matrices.
#include "qvx_matrix.h"

#include "cell_arithmetic.h"
#include "number/decimal_text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace quorvex::numerics {

namespace {

int clamp_size(int size) {
    return std::clamp(size, 1, QvxMatrix::MaxSize);
}

} // namespace

QvxMatrix::QvxMatrix(std::string_view name, int rows, int columns)
    : m_name(name), m_rows(clamp_size(rows)), m_cols(clamp_size(columns)) {
    InitMatrixArray();
}

QvxMatrix::QvxMatrix(std::string_view name, int rows) : QvxMatrix(name, rows, 1) {}

bool QvxMatrix::SetSize(int rows, int columns) {
    if (rows < 1 || rows > MaxSize || columns < 1 || columns > MaxSize) return false;
    m_rows = rows;
    m_cols = columns;
    return true;
}

bool QvxMatrix::IsMatrixEmpty() const {
    for (int i = 0; i < m_rows; ++i)
        for (int j = 0; j < m_cols; ++j)
            if (GetStrValue(i, j)) return false;
    return true;
}

bool QvxMatrix::Overflowed() const {
    for (int i = 0; i < m_rows; ++i)
        for (int j = 0; j < m_cols; ++j)
            if (GetStrValue(i, j) && !fits_a_double(GetValue(i, j))) return true;
    return false;
}

void QvxMatrix::InitMatrixArray() {
    for (auto& row : m_cells)
        for (auto& c : row)
            c.reset();
}

void QvxMatrix::SetNullValues(std::string_view value) {
    for (int i = 0; i < m_rows; ++i)
        for (int j = 0; j < m_cols; ++j)
            if (!cell(i, j) || cell(i, j)->empty()) cell(i, j) = std::string(value);
}

bool QvxMatrix::SetStrValue(int row, int column, std::optional<std::string_view> value) {
    if (!in_range(row, column)) return false;
    if (value)
        cell(row, column) = std::string(*value);
    else
        cell(row, column).reset();
    return true;
}

bool QvxMatrix::SetValue(int row, int column, long double value) {
    if (!in_range(row, column)) return false;
    cell(row, column) = CellArithmetic().real_string(value);
    return true;
}

const QvxMatrix::Cell& QvxMatrix::GetStrValue(int row, int column) const {
    static const Cell none;
    if (!in_range(row, column)) return none;
    return m_cells[static_cast<size_t>(row)][static_cast<size_t>(column)];
}

long double QvxMatrix::GetValue(int row, int column) const {
    if (!in_range(row, column)) return 0;
    // Read the way the decimal layer reads it, so text such as "0x10" is not taken as hex.
    return std::strtold(number::canonical_decimal(text(row, column)).c_str(), nullptr);
}

bool QvxMatrix::AddStrValue(int row, int column, std::string_view value) {
    if (!in_range(row, column)) return false;
    if (cell(row, column))
        cell(row, column)->append(value);
    else
        cell(row, column) = std::string(value);
    return true;
}

bool QvxMatrix::OpStrValue(int row, int column, std::optional<std::string_view> value, std::string_view op) {
    if (!in_range(row, column) || !value) return false;
    std::string expression = cell(row, column).value_or(std::string());
    expression.append(op).append("(").append(*value).append(")");
    cell(row, column) = std::move(expression);
    return true;
}

QvxMatrix& QvxMatrix::operator+=(const QvxMatrix& other) {
    if (m_rows != other.m_rows || m_cols != other.m_cols) return *this;
    CellArithmetic math;
    for (int i = 0; i < m_rows; ++i)
        for (int j = 0; j < m_cols; ++j)
            cell(i, j) = math.add(text(i, j), other.text(i, j));
    m_name = SumName(m_name, other.m_name);
    return *this;
}

QvxMatrix& QvxMatrix::operator-=(const QvxMatrix& other) {
    if (m_rows != other.m_rows || m_cols != other.m_cols) return *this;
    CellArithmetic math;
    for (int i = 0; i < m_rows; ++i)
        for (int j = 0; j < m_cols; ++j)
            cell(i, j) = math.sub(text(i, j), other.text(i, j));
    m_name = DifferenceName(m_name, other.m_name);
    return *this;
}

QvxMatrix& QvxMatrix::operator*=(const QvxMatrix& other) {
    if (m_cols != other.m_rows) return *this;
    CellArithmetic math;
    QvxMatrix product(ProductName(m_name, other.m_name), m_rows, other.m_cols);
    for (int i = 0; i < m_rows; ++i) {
        for (int j = 0; j < other.m_cols; ++j) {
            std::string sum = math.mult(text(i, 0), other.text(0, j));
            for (int k = 1; k < m_cols; ++k)
                sum = math.add(sum.c_str(), math.mult(text(i, k), other.text(k, j)).c_str());
            product.cell(i, j) = std::move(sum);
        }
    }
    return *this = product;
}

bool QvxMatrix::ScalarMult(QvxMatrix& matrix, std::optional<std::string_view> value) {
    if (!value) return false;
    CellArithmetic math;
    const std::string factor(*value);
    for (int i = 0; i < matrix.m_rows; ++i)
        for (int j = 0; j < matrix.m_cols; ++j)
            matrix.cell(i, j) = math.mult(matrix.text(i, j), factor.c_str());
    const bool negation = math.is_zero(math.add(factor.c_str(), "1").c_str());
    matrix.m_name = negation ? NegationName(matrix.m_name) : ProductName(matrix.m_name, factor);
    return true;
}

std::string QvxMatrix::SumName(std::string_view a, std::string_view b) {
    return "(" + std::string(a) + ")+(" + std::string(b) + ")";
}

std::string QvxMatrix::DifferenceName(std::string_view a, std::string_view b) {
    return "(" + std::string(a) + ")-(" + std::string(b) + ")";
}

std::string QvxMatrix::ProductName(std::string_view a, std::string_view b) {
    return "(" + std::string(a) + ")*(" + std::string(b) + ")";
}

std::string QvxMatrix::NegationName(std::string_view a) {
    return "-(" + std::string(a) + ")";
}

bool QvxMatrix::Trace(const QvxMatrix& matrix, std::string& result, long double& value) {
    if (!matrix.IsSquare()) return false;
    CellArithmetic math;
    std::string sum = "0.0";
    for (int i = 0; i < matrix.m_rows; ++i)
        sum = math.add(sum.c_str(), matrix.text(i, i));
    value = std::strtold(sum.c_str(), nullptr);
    result = std::move(sum);
    return true;
}

void QvxMatrix::Transpose(QvxMatrix& matrix) {
    // The whole array turns, unused cells included, so they stay with their row and column.
    for (int i = 0; i < MaxSize; ++i)
        for (int j = i + 1; j < MaxSize; ++j)
            std::swap(matrix.cell(i, j), matrix.cell(j, i));
    std::swap(matrix.m_rows, matrix.m_cols);
}

void QvxMatrix::swap_rows(int a, int b) {
    std::swap(m_cells[static_cast<size_t>(a)], m_cells[static_cast<size_t>(b)]);
}

} // namespace quorvex::numerics
