// The matrix tool's logic: names, evaluation of the cells, each operation's checks and results on
// matrices whose answers are known by hand, the linear solver, the fraction form, and matrices
// kept in a saved document.
#include "desktop/matrix_tool.h"

#include "document/document.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

using namespace quorvex;
using namespace quorvex::desktop;
using numerics::QvxMatrix;

namespace {

QvxMatrix matrix_of(const std::string& name, const std::vector<std::vector<std::string>>& rows) {
    QvxMatrix matrix(name, static_cast<int>(rows.size()), static_cast<int>(rows.front().size()));
    for (size_t i = 0; i < rows.size(); ++i)
        for (size_t j = 0; j < rows[i].size(); ++j)
            matrix.SetStrValue(static_cast<int>(i), static_cast<int>(j), rows[i][j]);
    return matrix;
}

std::vector<std::vector<long double>> values_of(const QvxMatrix& matrix) {
    std::vector<std::vector<long double>> values(static_cast<size_t>(matrix.NumRows()));
    for (int i = 0; i < matrix.NumRows(); ++i)
        for (int j = 0; j < matrix.NumCols(); ++j) values[static_cast<size_t>(i)].push_back(matrix.GetValue(i, j));
    return values;
}

struct MatrixTool : ::testing::Test {
    engine::Parser parser{&functions::builtin_functions(), QUORVEX_DATA_DIR};
    std::vector<QvxMatrix> matrices;
    std::string error;

    std::optional<MatrixAnswer> run(const QvxMatrix& a, MatrixOperation operation, const QvxMatrix* b = nullptr,
                                    const std::string& scalar = {}) {
        error.clear();
        return run_matrix_operation(parser, matrices, a, operation, b, scalar, error);
    }
};

} // namespace

TEST_F(MatrixTool, DefaultNamesTakeTheLowestFreeNumberAndNamesStayUnique) {
    EXPECT_EQ(default_matrix_name(matrices, false), "Matrix1");
    matrices.push_back(matrix_of("Matrix1", {{"1"}}));
    matrices.push_back(matrix_of("Matrix3", {{"1"}}));
    EXPECT_EQ(default_matrix_name(matrices, false), "Matrix2");
    EXPECT_EQ(default_matrix_name(matrices, true), "Vector1");
    EXPECT_TRUE(is_default_matrix_name("Vector12"));
    EXPECT_FALSE(is_default_matrix_name("Matrix"));
    EXPECT_FALSE(is_default_matrix_name("Matrix1b"));
    EXPECT_EQ(unique_matrix_name(matrices, "Matrix3"), "Matrix3 #1");
    EXPECT_EQ(unique_matrix_name(matrices, "Other"), "Other");
}

TEST_F(MatrixTool, AThreeByThreeSystemSolvesToItsKnownSolution) {
    // 2x + y - z = 8, -3x - y + 2z = -11, -2x + y + 2z = -3 has the one solution (2, 3, -1).
    const QvxMatrix a = matrix_of("A", {{"2", "1", "-1"}, {"-3", "-1", "2"}, {"-2", "1", "2"}});
    const QvxMatrix b = matrix_of("B", {{"4*2"}, {"-11"}, {"-3"}});
    const auto x = solve_linear_system(parser, matrices, a, b, error);
    ASSERT_TRUE(x) << error;
    EXPECT_EQ(x->Name(), "Solution(A,B)");
    EXPECT_EQ(values_of(*x), (std::vector<std::vector<long double>>{{2}, {3}, {-1}}));

    // A singular system is refused with the reason, and so are sizes that do not fit.
    const QvxMatrix singular = matrix_of("S", {{"1", "2", "3"}, {"2", "4", "6"}, {"1", "0", "1"}});
    EXPECT_FALSE(solve_linear_system(parser, matrices, singular, b, error));
    EXPECT_NE(error.find("singular"), std::string::npos);
    EXPECT_FALSE(solve_linear_system(parser, matrices, a, matrix_of("B2", {{"1"}, {"2"}}), error));
    EXPECT_NE(error.find("Vector B"), std::string::npos);
    EXPECT_FALSE(solve_linear_system(parser, matrices, matrix_of("R", {{"1", "2"}}), b, error));
    EXPECT_NE(error.find("Matrix A"), std::string::npos);
}

TEST_F(MatrixTool, OperationsGiveTheirKnownAnswersUnderTheirNames) {
    const QvxMatrix a = matrix_of("A", {{"4", "7"}, {"2", "6"}}); // determinant 10
    const QvxMatrix b = matrix_of("B", {{"1", "2"}, {"3", "4"}});
    auto answer = run(a, MatrixOperation::Inverse);
    ASSERT_TRUE(answer) << error;
    ASSERT_EQ(answer->matrices.size(), 1u);
    EXPECT_EQ(answer->matrices[0].Name(), "Inverse(A)");
    EXPECT_EQ(values_of(answer->matrices[0]), (std::vector<std::vector<long double>>{{0.6L, -0.7L}, {-0.2L, 0.4L}}));

    answer = run(a, MatrixOperation::Multiply, &b);
    ASSERT_TRUE(answer) << error;
    EXPECT_EQ(answer->matrices[0].Name(), "(A)*(B)");
    EXPECT_EQ(values_of(answer->matrices[0]), (std::vector<std::vector<long double>>{{25, 36}, {20, 28}}));

    answer = run(a, MatrixOperation::Subtract, &b);
    ASSERT_TRUE(answer);
    EXPECT_EQ(values_of(answer->matrices[0]), (std::vector<std::vector<long double>>{{3, 5}, {-1, 2}}));

    answer = run(b, MatrixOperation::Scalar, nullptr, " -1/2 ");
    ASSERT_TRUE(answer) << error;
    EXPECT_EQ(answer->matrices[0].Name(), "(B)*(-1/2)");
    EXPECT_EQ(values_of(answer->matrices[0]), (std::vector<std::vector<long double>>{{-0.5L, -1}, {-1.5L, -2}}));

    answer = run(b, MatrixOperation::Adjugate);
    ASSERT_TRUE(answer);
    EXPECT_EQ(values_of(answer->matrices[0]), (std::vector<std::vector<long double>>{{4, -2}, {-3, 1}}));

    answer = run(a, MatrixOperation::Determinant);
    ASSERT_TRUE(answer && answer->number);
    EXPECT_EQ(*answer->number, 10);
    EXPECT_EQ(answer->number_name, "Determinant(A)");
    answer = run(b, MatrixOperation::Trace);
    ASSERT_TRUE(answer && answer->number);
    EXPECT_EQ(*answer->number, 5);
    answer = run(matrix_of("C", {{"1", "2"}, {"2", "4"}}), MatrixOperation::Rank);
    ASSERT_TRUE(answer && answer->number);
    EXPECT_EQ(*answer->number, 1);

    // LU of a 2 by 3 matrix: L 2 by 2, U 2 by 3, named by the operation.
    answer = run(matrix_of("W", {{"1", "2", "3"}, {"4", "5", "6"}}), MatrixOperation::LU);
    ASSERT_TRUE(answer) << error;
    ASSERT_EQ(answer->matrices.size(), 2u);
    EXPECT_EQ(answer->matrices[0].Name(), "LDecomp(W)");
    EXPECT_EQ(answer->matrices[0].NumRows() * 10 + answer->matrices[0].NumCols(), 22);
    EXPECT_EQ(answer->matrices[1].Name(), "UDecomp(W)");
    EXPECT_EQ(answer->matrices[1].NumRows() * 10 + answer->matrices[1].NumCols(), 23);

    // The stored matrices were worked on as copies.
    EXPECT_EQ(*a.GetStrValue(0, 0), "4");
}

TEST_F(MatrixTool, OperandsThatDoNotFitAreRefusedAndNothingIsMade) {
    const QvxMatrix square = matrix_of("Sq", {{"1", "2"}, {"3", "4"}});
    const QvxMatrix wide = matrix_of("Wide", {{"1", "2", "3"}});
    EXPECT_FALSE(run(square, MatrixOperation::Add, &wide));
    EXPECT_NE(error.find("same size"), std::string::npos);
    EXPECT_FALSE(run(wide, MatrixOperation::Multiply, &square));
    EXPECT_NE(error.find("columns"), std::string::npos);
    for (MatrixOperation needs_square : {MatrixOperation::Inverse, MatrixOperation::Cofactor, MatrixOperation::Adjugate,
                                         MatrixOperation::Trace, MatrixOperation::Determinant}) {
        EXPECT_FALSE(run(wide, needs_square)) << matrix_operation_caption(needs_square);
        EXPECT_NE(error.find("square"), std::string::npos);
    }
    EXPECT_FALSE(run(matrix_of("Sing", {{"1", "2"}, {"2", "4"}}), MatrixOperation::Inverse));
    EXPECT_NE(error.find("singular"), std::string::npos);
    EXPECT_FALSE(run(square, MatrixOperation::Scalar, nullptr, "  "));
    EXPECT_FALSE(run(square, MatrixOperation::Scalar, nullptr, "sqrt(-1)"));
    EXPECT_FALSE(run(QvxMatrix("Empty", 2, 2), MatrixOperation::Transpose));
    EXPECT_NE(error.find("no values"), std::string::npos);
    // A cell's expression that fails or is imaginary names the cell.
    EXPECT_FALSE(run(matrix_of("Bad", {{"1", "sqrt(-1)"}}), MatrixOperation::Transpose));
    EXPECT_NE(error.find("row 1 column 2"), std::string::npos);
    EXPECT_NE(error.find("imaginary"), std::string::npos);
}

TEST_F(MatrixTool, ValuesShowAtThePrecisionOrAsFractions) {
    EXPECT_EQ(matrix_value_text(0.5L, 14, true), "1/2");
    EXPECT_EQ(matrix_value_text(-2.0L / 3, 9, true), "-2/3");
    EXPECT_EQ(matrix_value_text(2.0L / 3, 4, false), "0.6667");
    EXPECT_EQ(matrix_value_text(3, 9, true), "3");
    bool fits = true;
    EXPECT_EQ(matrix_value_text(1e-11L + 2, 14, true, &fits), "2.00000000001");
    EXPECT_FALSE(fits);
}

TEST_F(MatrixTool, MatricesSurviveASaveAndAReload) {
    std::string text;
    {
        document::Document document(parser);
        document.Matrices.push_back(matrix_of("Matrix1", {{"1", "PI"}, {"", "2/3"}}));
        document.Matrices.push_back(matrix_of("Vector1", {{"5"}, {"6"}, {"7"}}));
        ASSERT_TRUE(document.Compose(text));
    }
    engine::Parser other{&functions::builtin_functions(), QUORVEX_DATA_DIR};
    document::Document reloaded(other);
    ASSERT_TRUE(reloaded.ReadText(text));
    ASSERT_EQ(reloaded.Matrices.size(), 2u);
    const QvxMatrix& m = reloaded.Matrices[0];
    EXPECT_EQ(m.Name(), "Matrix1");
    EXPECT_EQ(m.NumRows() * 10 + m.NumCols(), 22);
    EXPECT_EQ(*m.GetStrValue(0, 1), "PI");
    EXPECT_FALSE(m.GetStrValue(1, 0));
    EXPECT_EQ(reloaded.Matrices[1].NumCols(), 1);
    EXPECT_EQ(*reloaded.Matrices[1].GetStrValue(2, 0), "7");
}
