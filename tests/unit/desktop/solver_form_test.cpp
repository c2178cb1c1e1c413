// The function solver's form, read from a prototype, the call it composes, and its work with the
// engine: values checked, calls solved at a precision, lists read from data files.
#include "desktop/solver_form.h"
#include "desktop/solver_run.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

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
    EXPECT_EQ(form->list_parameters, (std::vector<std::string>{"p"}));
    EXPECT_EQ(compose_call(*form, true, {"1", "2", "3"}, {"50"}), "PRCTLE[{1,2,3},50]");

    form = read_prototype("AND[c1, c2, ...]", error); // any number of conditions
    ASSERT_TRUE(form);
    EXPECT_TRUE(form->list);
    EXPECT_FALSE(form->list_in_braces);
    EXPECT_EQ(form->list_caption, "Logical Expression");

    form = read_prototype("ZSCORE[x, mean, sd] or ZSCORE[{list}, x]", error);
    ASSERT_TRUE(form);
    EXPECT_TRUE(form->list_alternative);
    EXPECT_EQ(form->parameters, (std::vector<std::string>{"x", "mean", "sd"}));
    EXPECT_EQ(form->list_parameters, (std::vector<std::string>{"x"}));
    EXPECT_EQ(compose_call(*form, true, {"1", "3"}, {"2"}), "ZSCORE[{1,3},2]");

    form = read_prototype("RAND[] or RAND[low, high]", error); // all parameters, or none
    ASSERT_TRUE(form);
    EXPECT_FALSE(form->list);
    EXPECT_TRUE(form->parameters_optional);
    EXPECT_EQ(form->parameters, (std::vector<std::string>{"low", "high"}));
    EXPECT_EQ(compose_call(*form, false, {}, {"", ""}), "RAND[]");
    EXPECT_EQ(compose_call(*form, false, {}, {"1", "6"}), "RAND[1,6]");
    form = read_prototype("f[]", error);
    ASSERT_TRUE(form);
    EXPECT_FALSE(form->list);
    EXPECT_TRUE(form->parameters.empty());
    EXPECT_TRUE(takes_condition("condition"));
    EXPECT_TRUE(takes_condition("c2"));
    EXPECT_FALSE(takes_condition("count"));

    form = read_prototype("NTHROOT[X,N] = POW[X,1/(N)]", error); // a library function with its body
    ASSERT_TRUE(form);
    EXPECT_EQ(form->parameters, (std::vector<std::string>{"X", "N"}));
    EXPECT_FALSE(form->list_alternative);

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

TEST(SolverRun, ValuesAreCheckedCallsSolvedAndListsReadWithTheEngine) {
    quorvex::engine::Parser parser{&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR};
    EXPECT_EQ(check_solver_value(parser, "2*3", true), "");
    EXPECT_EQ(check_solver_value(parser, "1+2i", true), solver_text::imaginary);
    EXPECT_EQ(check_solver_value(parser, "1+2i", false), ""); // conditions are not numbers to list
    EXPECT_NE(check_solver_value(parser, "nosuchname*2", true), "");
    EXPECT_FALSE(parser.IsAnError()); // the refusal does not linger into the next evaluation

    std::string answer;
    ASSERT_TRUE(solve_call(parser, "NTHROOT[27,3]", 14, answer));
    EXPECT_EQ(answer, " 3");
    ASSERT_TRUE(solve_call(parser, "SQRT[16]", 14, answer));
    EXPECT_EQ(answer, " 4 : -4"); // two roots
    const int kept = parser.answer_format().precision;
    ASSERT_TRUE(solve_call(parser, "1/3", 4, answer));
    EXPECT_EQ(answer, " 0.3333");
    EXPECT_EQ(parser.answer_format().precision, kept);
    EXPECT_FALSE(solve_call(parser, "LOGB[8,", 14, answer));
    EXPECT_FALSE(answer.empty());

    const auto path = std::filesystem::temp_directory_path() / "quorvex-solver-list.txt";
    std::ofstream(path) << "1\t10\n2\t20\n3\t30\n";
    std::vector<std::string> values{"7"};
    ASSERT_TRUE(read_solver_list(parser, path.string(), values));
    EXPECT_EQ(values, (std::vector<std::string>{"7", "1", "2", "3"})); // the first column, appended
    std::ofstream(path) << "4      5      6\r\n"; // one line, as a list is saved
    values.clear();
    ASSERT_TRUE(read_solver_list(parser, path.string(), values));
    EXPECT_EQ(values, (std::vector<std::string>{"4", "5", "6"}));
    std::filesystem::remove(path);
}
