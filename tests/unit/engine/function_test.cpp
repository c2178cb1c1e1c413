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

TEST(ParserFunctions, TableOperationsAndDisplayForms) {
    Parser parser;
    for (const char* line : {"area[w,h] = w*h", "f[x] = area(x,2)", "g[t] = (t+1)^2"}) parser.eval_exp(line, true, true, false);
    ASSERT_EQ(parser.function_count(), 3);
    parser.switch_funcs(0, 1); // f, area, g
    EXPECT_EQ(parser.max_func_length(), 9);
    EXPECT_TRUE(parser.is_func_variable("area", "h"));
    EXPECT_FALSE(parser.is_func_variable("area", "x"));
    EXPECT_STREQ(parser.get_func_variable(1, true), "w");
    EXPECT_STREQ(parser.get_func_variable(1, false), "h");
    EXPECT_EQ(parser.get_func_variable(1, false), nullptr);
    // The body keeps the square brackets of a call; the display form shows parentheses.
    EXPECT_STREQ(parser.get_func_value(0), "area[x,2]");
    EXPECT_STREQ(parser.get_func_str_ex(0), "f(x) = area(x,2)");
    EXPECT_STREQ(parser.get_func_name_ex(1), "area(w,h)");
    EXPECT_EQ(parser.get_func_value_len(0), 10u);
    EXPECT_EQ(parser.get_tot_func_value_len(), 10u + 4u + 8u);

    parser.switch_funcs(0, 2);
    EXPECT_STREQ(parser.get_func_short_name(0), "g");
    parser.move_func(0, 2); // area, f, g
    EXPECT_STREQ(parser.get_func_short_name(2), "g");
    parser.set_func_value("g", "t*3");
    EXPECT_STREQ(parser.eval_exp("g[2]", true, false, false), "6");
    EXPECT_TRUE(parser.modify_func_value(1, "(5)", 2));
    EXPECT_STREQ(parser.get_func_modvalue(2), "(5)*3");
    parser.reset_func_modvalue(2);
    EXPECT_STREQ(parser.get_func_modvalue(2), "t*3");
    parser.delete_function(0);
    EXPECT_EQ(parser.find_function("area"), -1);
    EXPECT_EQ(parser.function_count(), 2);
}
