#include "numerics/matrix_text.h"
#include "numerics/qvx_matrix.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using quorvex::numerics::parse_matrix_text;
using quorvex::numerics::QvxMatrix;
using quorvex::numerics::write_matrix_text;

namespace {

QvxMatrix matrix_of(std::string_view text, std::string_view name = "A") {
    QvxMatrix matrix(name, 1, 1);
    std::string message;
    EXPECT_TRUE(parse_matrix_text(text, matrix, message)) << message;
    return matrix;
}

std::string cell_text(const QvxMatrix& m, int row, int column) {
    return m.GetStrValue(row, column).value_or("<empty>");
}

void expect_identity(const QvxMatrix& m, long double tolerance) {
    ASSERT_TRUE(m.IsSquare());
    for (int i = 0; i < m.NumRows(); ++i)
        for (int j = 0; j < m.NumCols(); ++j)
            EXPECT_NEAR(m.GetValue(i, j), i == j ? 1.0L : 0.0L, tolerance) << "cell " << i << "," << j;
}

// Entries in halves, diagonally weighted; its determinant and the right side below were
// computed once with mpmath at 50 digits (both exact, since the entries are halves).
constexpr const char* k_ten = "[[14.5,2,-8,2.5,-5,8,-1,11,1,-4.5],[-4,9,2.5,-2,-9,3.5,0,-7,4.5,2],"
                              "[3,-0.5,15,-9,5,6,2,-1,-6,-10],[5,9,8,23.5,6,5,2,3,2,0.5],"
                              "[-6,-4,-1,0,22,2,6,8,5,-11],[1,3,11,-7,-1,23,8,-5,-5,0],"
                              "[4,-7,1,4.5,-6,2,25,-5,3,5.5],[-8,3,-4.5,2,-10,0.5,-11,20,5.5,-1],"
                              "[-1,-5,4,-5,4.5,0,-9,2.5,16,10],[3,0,-6,5.5,5,-1,-3.5,10,4,19]]";
constexpr long double k_ten_determinant = 9338858590189.75L;
// k_ten times (1,-2,3,-4,5,-6,7,-8,9,-10).
constexpr const char* k_ten_rhs = "[[-137.5],[4],[142],[-80],[230],[-36],[148],[-266],[24.5],[-264.5]]";

} // namespace

TEST(QvxMatrixCells, IndicesAndEmptyCells) {
    QvxMatrix m("M", 3, 3);
    EXPECT_TRUE(m.IsMatrixEmpty());
    EXPECT_TRUE(m.SetStrValue(0, 0, "1"));
    EXPECT_FALSE(m.SetStrValue(10, 0, "9"));
    EXPECT_FALSE(m.SetStrValue(0, 10, "9"));
    EXPECT_FALSE(m.SetStrValue(-1, 0, "9"));
    EXPECT_EQ(cell_text(m, 0, 0), "1");
    EXPECT_FALSE(m.GetStrValue(10, 0).has_value());
    EXPECT_FALSE(m.IsMatrixEmpty());

    EXPECT_TRUE(m.SetStrValue(0, 0, std::nullopt));
    EXPECT_FALSE(m.GetStrValue(0, 0).has_value());
    EXPECT_TRUE(m.IsMatrixEmpty());

    // A cell outside the used size holds text without making the matrix non-empty.
    EXPECT_TRUE(m.SetStrValue(5, 5, "7"));
    EXPECT_TRUE(m.IsMatrixEmpty());
    EXPECT_FALSE(m.SetSize(11, 2));
    EXPECT_TRUE(m.SetSize(6, 6));
    EXPECT_FALSE(m.IsMatrixEmpty());

    QvxMatrix v("V", 2);
    EXPECT_EQ(v.NumCols(), 1);
    EXPECT_TRUE(v.SetStrValue(1, "4.5"));
    EXPECT_EQ(v[1].value_or(""), "4.5");
    v.SetNullValues("0.0");
    EXPECT_EQ(cell_text(v, 0, 0), "0.0");
    EXPECT_EQ(cell_text(v, 1, 0), "4.5");
}

TEST(QvxMatrixCells, NumbersTextAndExpressions) {
    QvxMatrix m("M", 2, 2);
    EXPECT_TRUE(m.SetValue(0, 0, 0.1L));
    EXPECT_EQ(m.GetValue(0, 0), std::strtold("0.1", nullptr));
    EXPECT_TRUE(m.SetStrValue(0, 1, "1e3"));
    EXPECT_EQ(m.GetValue(0, 1), 1000);
    EXPECT_EQ(m.GetValue(1, 1), 0); // empty

    EXPECT_TRUE(m.OpStrValue(1, 0, "2", "SQRT"));
    EXPECT_EQ(cell_text(m, 1, 0), "SQRT(2)");
    EXPECT_TRUE(m.AddStrValue(1, 0, "+"));
    EXPECT_TRUE(m.OpStrValue(1, 0, "x", "SIN"));
    EXPECT_EQ(cell_text(m, 1, 0), "SQRT(2)+SIN(x)");
    EXPECT_FALSE(m.OpStrValue(1, 0, std::nullopt, "COS"));
    EXPECT_FALSE(m.OpStrValue(10, 0, "2", "COS"));
    EXPECT_EQ(cell_text(m, 1, 0), "SQRT(2)+SIN(x)");
}

TEST(QvxMatrixArithmetic, CellwiseAndProductsInDecimal) {
    QvxMatrix a = matrix_of("[[0.1,0.2],[0.3,0.4]]", "A");
    const QvxMatrix b = matrix_of("[[0.2,0.1],[0.7,0.6]]", "B");
    a += b;
    EXPECT_EQ(a.Name(), "(A)+(B)");
    EXPECT_EQ(a.GetValue(0, 0), std::strtold("0.3", nullptr)); // decimal, so no binary noise
    EXPECT_EQ(a.GetValue(1, 1), 1);
    a -= b;
    EXPECT_EQ(a.Name(), "((A)+(B))-(B)");
    EXPECT_EQ(a.GetValue(0, 1), std::strtold("0.2", nullptr));

    QvxMatrix p = matrix_of("[[1,2,3],[4,5,6]]", "P");
    p *= matrix_of("[[7,8],[9,10],[11,12]]", "Q");
    EXPECT_EQ(p.Name(), "(P)*(Q)");
    ASSERT_EQ(p.NumRows(), 2);
    ASSERT_EQ(p.NumCols(), 2);
    EXPECT_EQ(write_matrix_text(p), "[[5.80000000000000E+1,6.40000000000000E+1],"
                                    "[1.39000000000000E+2,1.54000000000000E+2]]");

    // Sizes that do not fit leave the matrix alone.
    QvxMatrix unchanged = matrix_of("[[1,2]]", "U");
    unchanged += matrix_of("[[1],[2]]");
    unchanged *= matrix_of("[[1,2]]");
    EXPECT_EQ(write_matrix_text(unchanged), "[[1,2]]");
    EXPECT_EQ(unchanged.Name(), "U");

    QvxMatrix s = matrix_of("[[1.5,-2]]", "S");
    EXPECT_TRUE(QvxMatrix::ScalarMult(s, "-1"));
    EXPECT_EQ(s.Name(), "-(S)");
    EXPECT_EQ(s.GetValue(0, 0), -1.5L);
    EXPECT_TRUE(QvxMatrix::ScalarMult(s, "2.5"));
    EXPECT_EQ(s.Name(), "(-(S))*(2.5)");
    EXPECT_EQ(s.GetValue(0, 1), 5);
    EXPECT_FALSE(QvxMatrix::ScalarMult(s, std::nullopt));
}

TEST(QvxMatrixDeterminant, ValuesAndSign) {
    std::string text;
    EXPECT_EQ(QvxMatrix::Determinant(matrix_of("[[1,2,3],[0,4,5],[1,0,6]]"), text), 22);
    EXPECT_EQ(std::strtold(text.c_str(), nullptr), 22);
    // One row swap: the sign must follow it.
    EXPECT_EQ(QvxMatrix::Determinant(matrix_of("[[0,1],[1,0]]"), text), -1);
    EXPECT_EQ(QvxMatrix::Determinant(matrix_of("[[2.5]]"), text), 2.5L);
    // Empty cells count as zero.
    QvxMatrix gaps = matrix_of("[[2,],[,3]]");
    EXPECT_EQ(QvxMatrix::Determinant(gaps, text), 6);

    const long double ten = QvxMatrix::Determinant(matrix_of(k_ten), text);
    EXPECT_NEAR(ten / k_ten_determinant, 1.0L, 1e-12L);
    EXPECT_NEAR(std::strtold(text.c_str(), nullptr) / k_ten_determinant, 1.0L, 1e-12L);
}

TEST(QvxMatrixDeterminant, SingularMatricesGiveZeroText) {
    std::string text;
    // Passes the row test, ends with a replaced pivot of 1e-14.
    EXPECT_EQ(QvxMatrix::Determinant(matrix_of("[[1,2,3],[4,5,6],[7,8,9]]"), text), 0);
    EXPECT_EQ(text, "0.0");
    EXPECT_EQ(QvxMatrix::Determinant(matrix_of("[[1,2],[2,4]]"), text), 0);
    EXPECT_EQ(text, "0.0");
    // Rounding leaves residues rather than zeros here (last pivots -5.3e-13 and 5e-14).
    EXPECT_EQ(QvxMatrix::Determinant(matrix_of("[[2,3,5],[7,11,13],[9,14,18]]"), text), 0);
    EXPECT_EQ(text, "0.0");
    EXPECT_EQ(QvxMatrix::Determinant(matrix_of("[[10,20,30],[40,50,60],[70,80,90]]"), text), 0);
    EXPECT_EQ(text, "0.0");
    // A zero row fails the decomposition itself.
    EXPECT_EQ(QvxMatrix::Determinant(matrix_of("[[0,0],[1,2]]"), text), 0);
    EXPECT_EQ(text, "0.0");
    // The threshold is relative to the matrix's own scale: 1e-15 of it is a rounding residue ...
    EXPECT_EQ(QvxMatrix::Determinant(matrix_of("[[1,1],[1,1.000000000000001]]"), text), 0);
    EXPECT_EQ(text, "0.0");
    // ... while a matrix of small cells is as regular as one of large cells.
    EXPECT_NEAR(QvxMatrix::Determinant(matrix_of("[[1e-10,0],[0,1e-10]]"), text), 1e-20L, 1e-33L);
    EXPECT_NEAR(QvxMatrix::Determinant(matrix_of("[[1,0],[0,1e-15]]"), text), 1e-15L, 1e-28L);
    // Not square.
    EXPECT_EQ(QvxMatrix::Determinant(matrix_of("[[1,2]]"), text), 0);
    EXPECT_EQ(text, "0.0");
    // Just above the threshold still counts.
    EXPECT_NEAR(QvxMatrix::Determinant(matrix_of("[[1,0],[0,1e-13]]"), text), 1e-13L, 1e-26L);
}

TEST(QvxMatrixDecomposition, LudcmpReplacesZeroPivotsAndFailsOnZeroRows) {
    QvxMatrix singular = matrix_of("[[1,2],[2,4]]");
    QvxMatrix::IndexVector index{};
    int sign = 0;
    ASSERT_TRUE(QvxMatrix::Ludcmp(singular, index, sign));
    EXPECT_EQ(cell_text(singular, 1, 1), "1.0E-14");

    QvxMatrix zero_row = matrix_of("[[1,2],[0,0]]");
    EXPECT_FALSE(QvxMatrix::Ludcmp(zero_row, index, sign));
    QvxMatrix wide = matrix_of("[[1,2]]");
    EXPECT_FALSE(QvxMatrix::Ludcmp(wide, index, sign));
}

TEST(QvxMatrixDecomposition, LUDcmpReproducesThePermutedMatrix) {
    for (const char* text : {"[[0,2,1],[1,1,1],[4,2,-3]]", "[[1,2],[3,4],[5,7]]", "[[0,1,2],[3,4,5]]",
                             "[[1,2,3],[2,4,6],[1,0,1]]"}) {
        const QvxMatrix a = matrix_of(text);
        QvxMatrix L("L", 1, 1), U("U", 1, 1), P("P", 1, 1);
        ASSERT_TRUE(QvxMatrix::LUDcmp(a, L, U, P));
        const int k = std::min(a.NumRows(), a.NumCols());
        EXPECT_EQ(P.NumRows(), a.NumRows());
        EXPECT_EQ(L.NumRows(), a.NumRows());
        EXPECT_EQ(L.NumCols(), k);
        EXPECT_EQ(U.NumRows(), k);
        EXPECT_EQ(U.NumCols(), a.NumCols());
        QvxMatrix pa = P;
        pa *= a;
        QvxMatrix lu = L;
        lu *= U;
        for (int i = 0; i < a.NumRows(); ++i) {
            for (int j = i; j < k; ++j)
                EXPECT_EQ(L.GetValue(i, j), i == j ? 1 : 0) << text;
            for (int j = 0; j < a.NumCols(); ++j) {
                EXPECT_NEAR(lu.GetValue(i, j), pa.GetValue(i, j), 1e-13L)
                    << text << " cell " << i << "," << j;
                if (j < i && i < k) {
                    EXPECT_EQ(U.GetValue(i, j), 0) << text;
                }
            }
        }
    }
}

TEST(QvxMatrixDecomposition, RankOfFullAndDeficientMatrices) {
    std::string text;
    EXPECT_EQ(QvxMatrix::Rank(matrix_of("[[1,2,3],[0,4,5],[1,0,6]]"), text), 3);
    EXPECT_EQ(text, "3");
    EXPECT_EQ(QvxMatrix::Rank(matrix_of("[[1,2,3],[2,4,6],[1,0,1]]"), text), 2);
    EXPECT_EQ(text, "2");
    EXPECT_EQ(QvxMatrix::Rank(matrix_of("[[0.1,0.2,0.3],[0.4,0.5,0.6],[0.7,0.8,0.9]]"), text), 2);
    EXPECT_EQ(QvxMatrix::Rank(matrix_of("[[2,3,5],[7,11,13],[9,14,18]]"), text), 2);
    EXPECT_EQ(QvxMatrix::Rank(matrix_of("[[1,2,3,4],[5,6,7,8],[9,10,11,12],[13,14,15,16]]"), text), 2);
    // Large entries leave larger residues; the threshold grows with them.
    EXPECT_EQ(QvxMatrix::Rank(matrix_of("[[2e4,3e4,5e4],[7e4,11e4,13e4],[9e4,14e4,18e4]]"), text), 2);
    EXPECT_EQ(QvxMatrix::Rank(matrix_of("[[1e-13,0],[0,1e-13]]"), text), 0);
    EXPECT_EQ(QvxMatrix::Rank(matrix_of("[[1,2],[2,4],[3,6]]"), text), 1);
    EXPECT_EQ(QvxMatrix::Rank(matrix_of("[[0,1,2],[0,2,4]]"), text), 1);
    EXPECT_EQ(QvxMatrix::Rank(matrix_of("[[0,0,1],[0,1,0],[1,0,0]]"), text), 3);
    EXPECT_EQ(QvxMatrix::Rank(matrix_of("[[0,0],[0,0]]"), text), 0);
    EXPECT_EQ(QvxMatrix::Rank(matrix_of("[[0,0,0,1]]"), text), 1);
    EXPECT_EQ(QvxMatrix::Rank(matrix_of(k_ten), text), 10);
}

TEST(QvxMatrixInverse, InverseTimesOriginalIsIdentity) {
    const QvxMatrix b = matrix_of("[[1.5,2,3],[4,5.25,6],[7,8,10]]", "B");
    QvxMatrix inverse = b;
    ASSERT_TRUE(QvxMatrix::Inverse(inverse));
    EXPECT_EQ(inverse.Name(), "B");
    // From mpmath: the exact inverse is rational with denominator 14 or 28.
    EXPECT_NEAR(inverse.GetValue(0, 0), -18.0L / 14, 1e-13L);
    EXPECT_NEAR(inverse.GetValue(2, 2), 1.0L / 28, 1e-13L);
    QvxMatrix product = inverse;
    product *= b;
    expect_identity(product, 1e-13L);

    const QvxMatrix ten = matrix_of(k_ten);
    QvxMatrix ten_inverse = ten;
    ASSERT_TRUE(QvxMatrix::Inverse(ten_inverse));
    QvxMatrix ten_product = ten;
    ten_product *= ten_inverse;
    expect_identity(ten_product, 1e-13L);
}

TEST(QvxMatrixInverse, ScaleDoesNotMakeAMatrixSingular) {
    QvxMatrix small = matrix_of("[[1e-100,0],[0,2e-100]]");
    ASSERT_TRUE(QvxMatrix::Inverse(small));
    EXPECT_NEAR(small.GetValue(0, 0), 1e100L, 1e87L);
    EXPECT_NEAR(small.GetValue(1, 1), 5e99L, 1e86L);
}

TEST(QvxMatrixInverse, SingularMatricesAreRefusedAndKept) {
    for (const char* text : {"[[1,2],[2,4]]", "[[1e-10,2e-10],[2e-10,4e-10]]", "[[1,2,3],[4,5,6],[7,8,9]]",
                             "[[2,3,5],[7,11,13],[9,14,18]]", "[[1,2]]"}) {
        QvxMatrix m = matrix_of(text);
        EXPECT_FALSE(QvxMatrix::Inverse(m)) << text;
        EXPECT_EQ(write_matrix_text(m), text);
    }
}

TEST(QvxMatrixLinsolve, KnownSolutions) {
    QvxMatrix x("x", 1);
    ASSERT_TRUE(
        QvxMatrix::Linsolve(matrix_of("[[2,1,-1],[-3,-1,2],[-2,1,2]]"), x, matrix_of("[[8],[-11],[-3]]")));
    EXPECT_EQ(x.Name(), "x");
    ASSERT_EQ(x.NumRows(), 3);
    EXPECT_NEAR(x.GetValue(0, 0), 2, 1e-13L);
    EXPECT_NEAR(x.GetValue(1, 0), 3, 1e-13L);
    EXPECT_NEAR(x.GetValue(2, 0), -1, 1e-13L);

    ASSERT_TRUE(QvxMatrix::Linsolve(matrix_of(k_ten), x, matrix_of(k_ten_rhs)));
    ASSERT_EQ(x.NumRows(), 10);
    for (int i = 0; i < 10; ++i)
        EXPECT_NEAR(x.GetValue(i, 0), (i % 2 ? -1 : 1) * (i + 1), 1e-12L) << i;

    // A right side with leading zeros takes the skipping path of the substitution.
    ASSERT_TRUE(QvxMatrix::Linsolve(matrix_of("[[4,1,0],[1,3,1],[0,1,2]]"), x, matrix_of("[[0],[0],[5]]")));
    EXPECT_NEAR(x.GetValue(0, 0), 5.0L / 18, 1e-13L);
    EXPECT_NEAR(x.GetValue(1, 0), -20.0L / 18, 1e-13L);
    EXPECT_NEAR(x.GetValue(2, 0), 55.0L / 18, 1e-13L);

    EXPECT_FALSE(QvxMatrix::Linsolve(matrix_of("[[1,2],[2,4]]"), x, matrix_of("[[1],[2]]")));
    EXPECT_FALSE(QvxMatrix::Linsolve(matrix_of("[[1,0],[0,1]]"), x, matrix_of("[[1],[2],[3]]")));
    EXPECT_FALSE(QvxMatrix::Linsolve(matrix_of("[[1,0,0],[0,1,0]]"), x, matrix_of("[[1],[2]]")));
}

TEST(QvxMatrixCofactors, MinorCofactorAdjugateAndTraceOfThreeByThree) {
    const QvxMatrix a = matrix_of("[[1,2,3],[0,4,5],[1,0,6]]");
    std::string text;
    ASSERT_TRUE(a.Minor(0, 1, text));
    EXPECT_EQ(std::strtold(text.c_str(), nullptr), -5);
    ASSERT_TRUE(a.Minor(2, 2, text));
    EXPECT_EQ(std::strtold(text.c_str(), nullptr), 4);
    EXPECT_FALSE(a.Minor(3, 0, text));

    // By hand: the signed minors, and their transpose.
    QvxMatrix cofactor = a;
    ASSERT_TRUE(QvxMatrix::Cofactor(cofactor));
    const long double expected[3][3] = {{24, 5, -4}, {-12, 3, 2}, {-2, -5, 4}};
    QvxMatrix adjugate = a;
    ASSERT_TRUE(QvxMatrix::Adjugate(adjugate));
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            EXPECT_EQ(cofactor.GetValue(i, j), expected[i][j]) << i << "," << j;
            EXPECT_EQ(adjugate.GetValue(j, i), expected[i][j]) << i << "," << j;
        }
    }
    // A zero minor stays "0.0" at a negative place.
    QvxMatrix z = matrix_of("[[1,2],[0,3]]");
    ASSERT_TRUE(QvxMatrix::Cofactor(z));
    EXPECT_EQ(cell_text(z, 0, 1), "0.0");

    long double value = 0;
    ASSERT_TRUE(QvxMatrix::Trace(a, text, value));
    EXPECT_EQ(value, 11);
    EXPECT_EQ(std::strtold(text.c_str(), nullptr), 11);

    QvxMatrix wide = matrix_of("[[1,2]]");
    EXPECT_FALSE(QvxMatrix::Cofactor(wide));
    EXPECT_FALSE(QvxMatrix::Adjugate(wide));
    EXPECT_FALSE(QvxMatrix::Trace(wide, text, value));
    EXPECT_FALSE(wide.Minor(0, 0, text));

    QvxMatrix t = matrix_of("[[1,2,3],[4,5,6]]");
    QvxMatrix::Transpose(t);
    EXPECT_EQ(write_matrix_text(t), "[[1,4],[2,5],[3,6]]");
}

TEST(MatrixText, ReadsAndWritesTheBracketForm) {
    QvxMatrix m = matrix_of(" [ [1.5, -2 ,1e3] ,[POW(2,3),,SQRT( 2 )] ] ", "M");
    EXPECT_EQ(m.Name(), "M");
    EXPECT_EQ(m.NumRows(), 2);
    EXPECT_EQ(m.NumCols(), 3);
    EXPECT_EQ(cell_text(m, 1, 0), "POW(2,3)");
    EXPECT_FALSE(m.GetStrValue(1, 1).has_value());
    EXPECT_EQ(write_matrix_text(m), "[[1.5,-2,1e3],[POW(2,3),,SQRT( 2 )]]");
    EXPECT_EQ(write_matrix_text(matrix_of(write_matrix_text(m))), write_matrix_text(m));
}

TEST(MatrixText, MalformedInputIsReportedAndChangesNothing) {
    const std::string eleven = "[1,2,3,4,5,6,7,8,9,10,11]";
    std::string eleven_rows = "[";
    for (int i = 0; i < 11; ++i)
        eleven_rows += i ? ",[1]" : "[1]";
    eleven_rows += "]";
    const struct {
        std::string text;
        std::string fragment;
    } cases[] = {
        {"", "starts with '['"},
        {"1,2", "starts with '['"},
        {"[]", "no rows"},
        {"[1,2]", "row 1 must start with '['"},
        {"[[1,2],[3]]", "row 2 has 1 cell but row 1 has 2"},
        {"[" + eleven + "]", "more than 10 columns"},
        {eleven_rows, "more than 10 rows"},
        {"[[1,2]] x", "unexpected text after the matrix (at position 9)"},
        {"[[1,2],[3,4]", "expected ',' or ']' after row 2"},
        {"[[1,2", "row 1 is not closed"},
        {"[[1,[2]]]", "unexpected '[' in row 1"},
        {"[[1,2)]]", "unmatched ')' in row 1"},
        {"[[SIN(1]]", "unclosed '(' in row 1"},
        {"[[1][2]]", "expected ',' or ']' after row 1"},
    };
    for (const auto& c : cases) {
        QvxMatrix m = matrix_of("[[7]]", "Keep");
        std::string message;
        EXPECT_FALSE(parse_matrix_text(c.text, m, message)) << c.text;
        EXPECT_NE(message.find(c.fragment), std::string::npos) << c.text << " -> " << message;
        EXPECT_EQ(write_matrix_text(m), "[[7]]");
    }
}
