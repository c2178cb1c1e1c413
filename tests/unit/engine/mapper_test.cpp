// The mapper: an expression mapped once and run again at new values, with the differences
// between the mapping pass and a run that the machine's rules give.
#include "engine/parser.h"

#include <gtest/gtest.h>

using namespace quorvex::engine;

namespace {

complex evaluate(Parser& parser, const char* text) {
    complex value;
    parser.eval_exp(text, value, true, false, false);
    return value;
}

} // namespace

TEST(Mapper, RunsFollowTheVariablesAndRepeatAssignments) {
    Parser parser;
    evaluate(parser, "x = 2");
    const int square = parser.map_expression("x^2+3*x-1");
    ASSERT_EQ(square, 1);
    for (double x : {-1.5, 0.0, 4.0, 10.0}) {
        parser.set_var_value(complex(x, 0), "x");
        const complex value = parser.solve_equation(square, false, true);
        EXPECT_FALSE(parser.IsAnError());
        EXPECT_DOUBLE_EQ(value.real(), x * x + 3 * x - 1) << x;
    }
    EXPECT_EQ(parser.max_stack_depth(), 3); // x^2 waits while 3*x is computed

    // An assignment maps too, and each run assigns again.
    const int assign = parser.map_expression("y = x*2");
    parser.set_var_value(complex(7, 0), "x");
    parser.solve_equation(assign, false, true);
    EXPECT_EQ(parser.get_var_value("y"), complex(14, 0));
    parser.set_var_value(complex(1, 0), "y");
    parser.solve_equation(assign, false, true);
    EXPECT_EQ(parser.get_var_value("y"), complex(14, 0));

    // A variable deleted since the mapping reads as 0, with no error.
    parser.delete_variable(parser.find_variable("x"));
    EXPECT_EQ(parser.solve_equation(square, false, true), complex(-1, 0));
    EXPECT_FALSE(parser.IsAnError());
    // Created again, it is found again.
    evaluate(parser, "x = 1");
    EXPECT_EQ(parser.solve_equation(square, false, true), complex(3, 0));
}

// A run finds its variables by where they stood on the last run, so it must notice the table
// being reordered or shrunk between runs.
TEST(Mapper, RunsFindTheirVariablesAfterTheTableChanges) {
    Parser parser;
    evaluate(parser, "a = 10");
    evaluate(parser, "b = 3");
    evaluate(parser, "c = 100");
    const int difference = parser.map_expression("a-b");
    EXPECT_EQ(parser.solve_equation(difference, false, true), complex(7, 0));
    parser.switch_vars(parser.find_variable("a"), parser.find_variable("b"));
    EXPECT_EQ(parser.solve_equation(difference, false, true), complex(7, 0));
    parser.move_var(parser.find_variable("c"), 0);
    EXPECT_EQ(parser.solve_equation(difference, false, true), complex(7, 0));
    parser.delete_variable(parser.find_variable("c"));
    EXPECT_EQ(parser.solve_equation(difference, false, true), complex(7, 0));
    parser.delete_all_vars();
    evaluate(parser, "b = 1");
    evaluate(parser, "a = 2");
    EXPECT_EQ(parser.solve_equation(difference, false, true), complex(1, 0));
}

TEST(Mapper, ComparisonChainsCompareEveryLinkWithTheFirstOperandWhenRun) {
    Parser parser;
    EXPECT_EQ(evaluate(parser, "3 > 2 > 2.5"), complex(0, 0)); // 3 > 2, then 2 > 2.5
    const int chain = parser.map_expression("3 > 2 > 2.5");
    EXPECT_EQ(parser.solve_equation(chain, false, true), complex(1, 0)); // 3 > 2, then 3 > 2.5
    const int failing = parser.map_expression("1 > 2 < 3");
    EXPECT_EQ(parser.solve_equation(failing, false, true), complex(0, 0)); // once false, stays false
    EXPECT_EQ(parser.solve_equation(chain, false, true), complex(1, 0));  // a new run starts true
}

TEST(Mapper, ErrorsOfARunAreRecordedNotThrown) {
    Parser parser;
    evaluate(parser, "x = 1");
    const int reciprocal = parser.map_expression("1/x");
    ASSERT_GT(reciprocal, 0);
    parser.set_var_value(complex(0, 0), "x");
    parser.solve_equation(reciprocal, false, true);
    EXPECT_TRUE(parser.IsAnError());
    parser.set_var_value(complex(4, 0), "x");
    EXPECT_EQ(parser.solve_equation(reciprocal, false, true), complex(0.25, 0));
    EXPECT_FALSE(parser.IsAnError()); // each run starts clean

    // A failed mapping keeps nothing; unknown numbers are mapper errors, not crashes.
    EXPECT_EQ(parser.map_expression("1/0"), 0);
    EXPECT_EQ(parser.equation_count(), 1);
    EXPECT_EQ(parser.solve_equation(7, false, true), complex(0, 0));
    EXPECT_STREQ(parser.GetLastError(), "Equation mapper is trying to solve an expression that has not been mapped!");
}

TEST(Mapper, EquationsAreNumberedInOrderAndRenumberedOnDeletion) {
    Parser parser;
    const int one = parser.map_expression("1+1");
    const int two = parser.map_expression("2*3");
    EXPECT_EQ(two, 2);
    EXPECT_EQ(parser.solve_equation(0, false, true), complex(6, 0)); // 0: the current equation
    EXPECT_EQ(parser.solve_equation(one, false, true), complex(2, 0));
    parser.delete_equation(one);
    EXPECT_EQ(parser.solve_equation(1, false, true), complex(6, 0));
    parser.delete_equation(5); // reported, never thrown
    EXPECT_TRUE(parser.IsAnError());
    parser.delete_equation(0); // ignored
    EXPECT_EQ(parser.equation_count(), 1);

    // An empty program leaves nothing on the stack: 0.
    const int empty = parser.new_equation();
    EXPECT_EQ(parser.solve_equation(empty, false, true), complex(0, 0));
    EXPECT_EQ(parser.solve_symbolic(1, false, true), nullptr);
}

TEST(Mapper, RunsNegationFactorialModulusAndImaginaryValues) {
    Parser parser;
    evaluate(parser, "n = 4");
    const int mixed = parser.map_expression("-(n!) + 17 % n + (2+3i)*n");
    ASSERT_GT(mixed, 0);
    parser.set_var_value(complex(5, 0), "n");
    EXPECT_EQ(parser.solve_equation(mixed, false, true), evaluate(parser, "-(5!) + 17 % 5 + (2+3i)*5"));
    parser.set_var_value(complex(0, 0), "n");
    parser.solve_equation(mixed, false, true);
    EXPECT_TRUE(parser.IsAnError()); // 17 % 0
}
