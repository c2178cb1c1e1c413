#include "engine/parser.h"

#include <gtest/gtest.h>

#include <string>

using namespace quorvex::engine;

namespace {

std::string answer(Parser& parser, const char* text, bool fraction = false) {
    return parser.eval_exp(text, true, false, fraction);
}

} // namespace

TEST(AnswerFormat, PrecisionAndNotation) {
    Parser parser;
    EXPECT_EQ(answer(parser, "1/3"), "0.33333333333333");
    EXPECT_EQ(answer(parser, "2/4"), "0.5");
    parser.answer_format().precision = 5;
    parser.answer_format().format = 1;
    EXPECT_EQ(answer(parser, "1234.5678"), "1.2346e+03");
    parser.answer_format().format = 0;
    EXPECT_EQ(answer(parser, "1234.5678"), "1234.6");
    parser.answer_format().dec_point = true;
    EXPECT_EQ(answer(parser, "2"), "2.0000");
    parser.answer_format() = PrecformType{};
    parser.answer_format().lead_sign = true;
    EXPECT_EQ(answer(parser, "0"), "+0");
    EXPECT_EQ(answer(parser, "1+2i"), "+1+2i");
    EXPECT_EQ(answer(parser, "-2i"), "-2i");
}

TEST(AnswerFormat, SmallPartsRoundToZeroInTheTextAndInTheValue) {
    Parser parser;
    complex value;
    EXPECT_STREQ(parser.eval_exp("1e-13", value, true, false, false), "0");
    EXPECT_STREQ(parser.eval_exp("1+1e-13i", value, true, false, false), "1");
    EXPECT_EQ(value, complex(1, 0));
    parser.answer_format().zero_precision = 1e-20f;
    EXPECT_EQ(answer(parser, "1e-13"), "1e-13");
}

TEST(AnswerFormat, FractionDisplay) {
    Parser parser;
    EXPECT_EQ(answer(parser, "1/3", true), "1/3");
    EXPECT_EQ(answer(parser, "0.25", true), "1/4");
    EXPECT_EQ(answer(parser, "-2.5", true), "-5/2");
    EXPECT_EQ(answer(parser, "2", true), "2");
    // The fraction of a complex answer is made from its real part.
    EXPECT_EQ(answer(parser, "0.5+2i", true), "1/2+1/2i");
    parser.answer_format().zero_precision = 1e-20f;
    EXPECT_EQ(answer(parser, "1+1e-11", true), "");
    EXPECT_STREQ(parser.GetLastError(),
                 "Fractional display of values less than 0.0000000005 (5e-10) are not supported!");
}
