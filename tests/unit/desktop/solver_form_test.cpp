// The function solver's form, read from a prototype, and the call it composes.
#include "desktop/solver_form.h"

#include <gtest/gtest.h>

using namespace quorvex::desktop;

TEST(SolverForm, PrototypesGiveFixedOrListFormsAndTheCallsComposeFromThem) {
    std::string error;
    auto form = read_prototype("CPOUND[P,I,N]", error);
    ASSERT_TRUE(form);
    EXPECT_FALSE(form->list);
    EXPECT_EQ(form->parameters, (std::vector<std::string>{"P", "I", "N"}));
    EXPECT_EQ(compose_call(*form, false, {}, {"1000", "0.05", "10"}), "CPOUND[1000,0.05,10]");

    form = read_prototype("PRCTLE[{list}, p]", error);
    ASSERT_TRUE(form);
    EXPECT_TRUE(form->list);
    EXPECT_EQ(form->list_caption, "Number");
    EXPECT_EQ(form->parameters, (std::vector<std::string>{"p"}));
    EXPECT_EQ(compose_call(*form, true, {"1", "2", "3"}, {"50"}), "PRCTLE[{1,2,3},50]");

    form = read_prototype("AND[logicalExp1,logicalExp2,...]", error);
    ASSERT_TRUE(form);
    EXPECT_EQ(form->list_caption, "Logical Expression");
    EXPECT_EQ(compose_call(*form, true, {"1<2", "3>2"}, {}), "AND[1<2,3>2]"); // no braces here

    form = read_prototype("MAX[a,b] or {number1,number2,...numberN}", error);
    ASSERT_TRUE(form);
    EXPECT_TRUE(form->list_alternative);
    EXPECT_EQ(compose_call(*form, false, {}, {"4", "9"}), "MAX[4,9]"); // braces only in list form
    EXPECT_EQ(compose_call(*form, true, {"4", "9", "2"}, {}), "MAX[{4,9,2}]");

    EXPECT_FALSE(read_prototype("PI", error));
    EXPECT_EQ(error, "Constants can not be evaluated in the Function Solver.");
    EXPECT_FALSE(read_prototype("F7[a,b,c,d,e,f,g]", error));
    EXPECT_NE(error.find("at most 6 parameters"), std::string::npos);

    EXPECT_EQ(list_file_text({"1", "2.5"}, "v.prn"), "1      2.5\r\n"); // six blanks
    EXPECT_EQ(list_file_text({"1", "2.5"}, "v.CSV"), "1,2.5\r\n");
    EXPECT_EQ(list_file_text({"1", "2.5"}, "v.txt"), "1\t2.5\r\n");
}
