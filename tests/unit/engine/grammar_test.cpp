#include "engine/parser.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace quorvex::engine;

namespace {

complex value_of(Parser& parser, const char* text) {
    complex answer{0, 0};
    parser.eval_exp(text, answer, true, true, false);
    EXPECT_FALSE(parser.IsAnError()) << text << ": " << (parser.GetLastError() ? parser.GetLastError() : "");
    return answer;
}

} // namespace

TEST(Grammar, AnswerTextAndReturnedValueAgree) {
    Parser parser;
    complex answer;
    EXPECT_STREQ(parser.eval_exp("2+3", answer, true, true, false), " = 5");
    EXPECT_EQ(answer, complex(5, 0));
    EXPECT_STREQ(parser.eval_exp("2+3", answer, true, false, false), "5");
    EXPECT_STREQ(parser.eval_exp("(1+2i)*(3-i)", answer, true, false, false), "5+5i");
    EXPECT_EQ(answer, complex(5, 5));
    EXPECT_EQ(parser.eval_exp(nullptr, true, true, false), nullptr);
}

TEST(Grammar, SignBindsTighterThanPowerAndPowerDoesNotChain) {
    Parser parser;
    EXPECT_EQ(value_of(parser, "-2^2"), complex(4, 0));
    EXPECT_EQ(value_of(parser, "2^-2"), complex(0.25, 0));
    EXPECT_STREQ(parser.eval_exp("(-8)^(1/3)", true, false, false), "-2");
    parser.eval_exp("2^3^2", true, true, false);
    EXPECT_STREQ(parser.GetLastError(), "Syntax error!");
}

TEST(Grammar, RelationalChainYieldsOneOrZeroAndPassesPlainValuesThrough) {
    Parser parser;
    EXPECT_EQ(value_of(parser, "1 < 2 < 3"), complex(1, 0));
    EXPECT_EQ(value_of(parser, "3 > 2 > 2"), complex(0, 0));
    EXPECT_EQ(value_of(parser, "0.1+0.2 == 0.3"), complex(1, 0));
    // Complex values are ordered part by part: differing in opposite directions is neither.
    EXPECT_EQ(value_of(parser, "1+2i > 2+i"), complex(0, 0));
    EXPECT_EQ(value_of(parser, "1+2i < 2+i"), complex(0, 0));
    EXPECT_EQ(value_of(parser, "2+2i > 2+i"), complex(1, 0));
    EXPECT_EQ(value_of(parser, "2+i >= 2+i"), complex(1, 0));
}

TEST(Grammar, AssignmentShowsAnAnswerOnlyForComputedValues) {
    Parser parser;
    EXPECT_STREQ(parser.eval_exp("x = 5", true, true, false), "");
    EXPECT_TRUE(parser.var_changed());
    EXPECT_FALSE(parser.vars_saved());
    parser.set_vars_saved(true);
    EXPECT_STREQ(parser.eval_exp("x = 2+3", true, true, false), " = 5");
    EXPECT_TRUE(parser.var_changed());
    EXPECT_TRUE(parser.vars_saved()); // only a plain number clears it
    EXPECT_STREQ(parser.eval_exp("y = 1+2i", true, true, false), "");
    EXPECT_STREQ(parser.eval_exp("x", true, true, false), " = 5");
    EXPECT_FALSE(parser.var_changed());
}

TEST(Grammar, IncrementalDeclarationLeavesTheVariableAtItsLowLimit) {
    Parser parser;
    EXPECT_STREQ(parser.eval_exp("x = 0, 10, 5", true, true, false), "");
    const Variable* x = parser.find_var("x");
    ASSERT_NE(x, nullptr);
    EXPECT_TRUE(x->incremented());
    EXPECT_EQ(x->value(), complex(0, 0));
    EXPECT_EQ(x->increment(), complex(2.5, 0));
    EXPECT_EQ(x->num_points(), 5);
    // Each part may be an expression; the shallow comma check lets this shape through.
    EXPECT_STREQ(parser.eval_exp("z = 1, 2+1, 3", true, true, false), "");
    EXPECT_EQ(parser.find_var("z")->high(), complex(3, 0));
    parser.eval_exp("w = 0, 4+3", true, true, false);
    EXPECT_STREQ(parser.GetLastError(),
                 "Comma expected after high limit in incremental variable declaration Of ' w '");
}

TEST(Grammar, AutoDeclareCreatesUnassignedVariables) {
    Parser parser;
    parser.set_auto_declare(true);
    EXPECT_STREQ(parser.eval_exp("fresh", true, true, false), "");
    EXPECT_FALSE(parser.IsAnError());
    ASSERT_TRUE(parser.is_variable("fresh"));
    EXPECT_FALSE(parser.var_assigned("fresh"));
}

TEST(Grammar, LockedVariablesCannotBeReadButCanBeAssigned) {
    Parser parser;
    parser.eval_exp("v = 3", true, true, false);
    parser.set_var_lock("v", true);
    parser.eval_exp("2*v", true, true, false);
    EXPECT_STREQ(parser.GetLastError(), "Variable ' v ' has been temporarily locked by another running process!");
    EXPECT_STREQ(parser.eval_exp("v = 4", true, true, false), "");
    EXPECT_FALSE(parser.IsAnError());
    parser.set_var_lock("v", false);
    EXPECT_EQ(value_of(parser, "2*v"), complex(8, 0));
}

TEST(Grammar, AFailedLineKeepsWhatItAssignedAndTheNextLineWorks) {
    Parser parser;
    parser.eval_exp("a = 1", true, true, false);
    parser.eval_exp("b = 1/0", true, true, false);
    EXPECT_TRUE(parser.IsAnError());
    EXPECT_FALSE(parser.is_variable("b"));
    EXPECT_EQ(value_of(parser, "a+1"), complex(2, 0));
    EXPECT_FALSE(parser.IsAnError());
}

TEST(Grammar, HostileInputGivesAnAnswerOrAMessageAndNeverBreaksTheParser) {
    Parser parser;
    const std::string long_sum = [] {
        std::string text = "1";
        while (text.size() < 100000) text += "+1";
        return text;
    }();
    EXPECT_EQ(value_of(parser, long_sum.c_str()), complex(50001, 0));

    const std::string deep(50000, '(');
    parser.eval_exp((deep + "1" + std::string(50000, ')')).c_str(), true, true, false);
    EXPECT_STREQ(parser.GetLastError(), "The expression is nested too deeply to be evaluated!");
    std::string imaginary_chain;
    for (int k = 0; k < 30000; ++k) imaginary_chain += "i ";
    parser.eval_exp(imaginary_chain.c_str(), true, true, false);
    EXPECT_TRUE(parser.IsAnError());

    std::string long_name(100000, 'q');
    parser.eval_exp(long_name.c_str(), true, true, false);
    EXPECT_TRUE(parser.IsAnError());
    parser.eval_exp(std::string(100000, '9').c_str(), true, true, false);
    EXPECT_STREQ(parser.GetLastError(), "Numbers greater than 1.0e+307 can not be computed!");

    std::mt19937 random(12345);
    for (int line = 0; line < 2000; ++line) {
        std::string bytes(random() % 64, ' ');
        for (char& c : bytes) c = static_cast<char>(1 + random() % 255);
        complex answer;
        const char* text = parser.eval_exp(bytes.c_str(), answer, true, true, false);
        ASSERT_NE(text, nullptr);
        if (parser.IsAnError()) {
            ASSERT_NE(parser.GetLastError(), nullptr);
            EXPECT_STREQ(text, "");
        }
    }
    EXPECT_EQ(value_of(parser, "2+3"), complex(5, 0));
}
