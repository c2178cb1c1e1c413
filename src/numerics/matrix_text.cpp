#include "matrix_text.h"

#include <optional>
#include <vector>

namespace quorvex::numerics {

namespace {

using Row = std::vector<QvxMatrix::Cell>;

std::string_view trim(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    const auto last = text.find_last_not_of(" \t\r\n");
    return text.substr(first, last - first + 1);
}

std::string cells(size_t count) {
    return std::to_string(count) + (count == 1 ? " cell" : " cells");
}

class MatrixTextReader {
public:
    explicit MatrixTextReader(std::string_view text) : m_text(text) {}

    // The rows read, or nothing with the message set.
    std::optional<std::vector<Row>> read(std::string& message) {
        std::vector<Row> rows;
        skip_blanks();
        if (!take('[')) return fail(message, "a matrix starts with '['");
        skip_blanks();
        if (peek() == ']') return fail(message, "the matrix has no rows");
        for (;;) {
            const int number = static_cast<int>(rows.size()) + 1;
            skip_blanks();
            if (!take('[')) return fail(message, "row " + std::to_string(number) + " must start with '['");
            Row row;
            if (!read_row(number, row, message)) return std::nullopt;
            if (row.size() > QvxMatrix::MaxSize)
                return fail(message, "row " + std::to_string(number) + " has more than " +
                                         std::to_string(QvxMatrix::MaxSize) + " columns");
            if (!rows.empty() && row.size() != rows.front().size())
                return fail(message, "row " + std::to_string(number) + " has " + cells(row.size()) +
                                         " but row 1 has " + std::to_string(rows.front().size()));
            rows.push_back(std::move(row));
            if (rows.size() > QvxMatrix::MaxSize)
                return fail(message,
                            "the matrix has more than " + std::to_string(QvxMatrix::MaxSize) + " rows");
            skip_blanks();
            if (take(']')) break;
            if (!take(',')) return fail(message, "expected ',' or ']' after row " + std::to_string(number));
        }
        skip_blanks();
        if (m_position < m_text.size()) return fail(message, "unexpected text after the matrix");
        return rows;
    }

private:
    // Cells up to the row's closing bracket, which is consumed.
    bool read_row(int number, Row& row, std::string& message) {
        const std::string where = " in row " + std::to_string(number);
        size_t start = m_position;
        int depth = 0;
        for (;;) {
            if (m_position >= m_text.size()) {
                fail(message, depth > 0 ? "unclosed '('" + where
                                        : "row " + std::to_string(number) + " is not closed with ']'");
                return false;
            }
            const char c = m_text[m_position];
            if (c == '(') {
                ++depth;
            } else if (c == ')') {
                if (--depth < 0) {
                    fail(message, "unmatched ')'" + where);
                    return false;
                }
            } else if (depth == 0 && c == '[') {
                fail(message, "unexpected '['" + where);
                return false;
            } else if (depth == 0 && (c == ',' || c == ']')) {
                const std::string_view cell = trim(m_text.substr(start, m_position - start));
                row.push_back(cell.empty() ? QvxMatrix::Cell() : QvxMatrix::Cell(std::string(cell)));
                ++m_position;
                if (c == ']') return true;
                start = m_position;
                continue;
            }
            ++m_position;
        }
    }

    std::nullopt_t fail(std::string& message, const std::string& what) const {
        message = what + " (at position " + std::to_string(m_position + 1) + ")";
        return std::nullopt;
    }
    void skip_blanks() {
        while (m_position < m_text.size() && (m_text[m_position] == ' ' || m_text[m_position] == '\t' ||
                                              m_text[m_position] == '\r' || m_text[m_position] == '\n'))
            ++m_position;
    }
    char peek() const { return m_position < m_text.size() ? m_text[m_position] : '\0'; }
    bool take(char c) {
        if (peek() != c) return false;
        ++m_position;
        return true;
    }

    std::string_view m_text;
    size_t m_position = 0;
};

} // namespace

bool parse_matrix_text(std::string_view text, QvxMatrix& matrix, std::string& message) {
    const std::optional<std::vector<Row>> rows = MatrixTextReader(text).read(message);
    if (!rows) return false;
    matrix.SetSize(static_cast<int>(rows->size()), static_cast<int>(rows->front().size()));
    matrix.InitMatrixArray();
    for (size_t i = 0; i < rows->size(); ++i) {
        const Row& row = (*rows)[i];
        for (size_t j = 0; j < row.size(); ++j) {
            const QvxMatrix::Cell& cell = row[j];
            matrix.SetStrValue(static_cast<int>(i), static_cast<int>(j),
                               cell ? std::optional<std::string_view>(*cell) : std::nullopt);
        }
    }
    message.clear();
    return true;
}

std::string write_matrix_text(const QvxMatrix& matrix) {
    std::string text = "[";
    for (int i = 0; i < matrix.NumRows(); ++i) {
        text += i ? ",[" : "[";
        for (int j = 0; j < matrix.NumCols(); ++j) {
            if (j) text += ',';
            if (const QvxMatrix::Cell& cell = matrix.GetStrValue(i, j)) text += *cell;
        }
        text += ']';
    }
    return text + "]";
}

} // namespace quorvex::numerics
