#include "engine/function.h"
#include "engine/parser.h"

#include <gtest/gtest.h>

using namespace quorvex::engine;

TEST(Function, NameSplitsIntoShortNameAndVariables) {
    Function f("area[w, h]", "w*h");
    EXPECT_EQ(f.short_name(), "area");
    EXPECT_EQ(f.num_variables(), 2);
    EXPECT_EQ(f.GetFuncVariable(1), "w");
    EXPECT_EQ(f.GetFuncVariable(2), "h");
    EXPECT_EQ(f.GetFuncVariable(3), "");
    EXPECT_TRUE(f.IsFuncVariable("h"));
    EXPECT_EQ(f.GetFuncFullNameAndValue(), "area[w, h] = w*h");
}

TEST(Function, ArgumentsReplaceWholeWordsOnly) {
    Function f("f[x]", "x+2x+2.5x+bx+x2+SIN[x]");
    EXPECT_TRUE(f.ModFuncValue(1, "(7)"));
    EXPECT_EQ(f.mod_value(), "(7)+2(7)+2.5(7)+bx+x2+SIN[(7)]");
    f.ResetModFuncValue();
    EXPECT_EQ(f.mod_value(), f.value());
    EXPECT_TRUE(f.ModFuncValue(1, "x")); // the variable itself: nothing to do
    EXPECT_FALSE(f.ModFuncValue(2, "(1)"));
    Function g("g[y]", "ab");
    EXPECT_FALSE(g.ModFuncValue(1, "(1)"));
}

TEST(ParserFunctions, DeclarationsAreNoErrorAndShowNoAnswer) {
    Parser parser;
    complex value;
    EXPECT_STREQ(parser.eval_exp("f[x,y] = x*y", value, true, true, false), "");
    EXPECT_FALSE(parser.IsAnError());
    EXPECT_TRUE(parser.func_declared());
    EXPECT_FALSE(parser.funcs_saved());
    EXPECT_EQ(parser.find_function("f"), 0);
    EXPECT_EQ(parser.find_function("f(a, b)"), 0);
    EXPECT_EQ(parser.find_function("f[x] = 3"), 0);
    EXPECT_EQ(parser.find_function("f[x] + 3"), -1);
    EXPECT_EQ(parser.find_function("g"), -1);
    EXPECT_STREQ(parser.get_func_str(0), "f[x,y] = x*y");
    parser.eval_exp("f[2,3]", value, true, true, false);
    EXPECT_EQ(value, complex(6, 0));
    EXPECT_FALSE(parser.func_declared());
    parser.eval_exp("lt[a] = a <= 1", true, true, false);
    EXPECT_STREQ(parser.get_func_str(1), "lt[a] = a<=1"); // relations spelled out, blanks dropped
    parser.delete_all_funcs();
    EXPECT_EQ(parser.function_count(), 0);
}
