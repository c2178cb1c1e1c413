#include "engine/parser.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using namespace quorvex::engine;

namespace {

// All tokens of a text through the public one-shot scanner, as (text, kind) pairs.
std::vector<std::pair<std::string, int>> tokens_of(Parser& parser, const std::string& text) {
    std::vector<std::pair<std::string, int>> tokens;
    size_t offset = 0;
    while (offset <= text.size()) {
        std::string token;
        char kind = 0;
        const long behind = parser.get_token(text.c_str() + offset, token, kind);
        if (behind < 0 || token.empty()) break;
        tokens.emplace_back(token, kind);
        offset += static_cast<size_t>(behind);
    }
    return tokens;
}

using Tokens = std::vector<std::pair<std::string, int>>;

} // namespace

TEST(Tokeniser, NumbersAndNamesSplitWhereTheLanguageSays) {
    Parser parser;
    EXPECT_EQ(tokens_of(parser, "2x"), (Tokens{{"2", NUMBER}, {"x", VARIABLE}}));
    EXPECT_EQ(tokens_of(parser, "x2"), (Tokens{{"x2", VARIABLE}}));
    EXPECT_EQ(tokens_of(parser, "1e+5"), (Tokens{{"1", NUMBER}, {"e", VARIABLE}, {"+", DELIMITER}, {"5", NUMBER}}));
    EXPECT_EQ(tokens_of(parser, ".5+x_1.2"), (Tokens{{".5", NUMBER}, {"+", DELIMITER}, {"x_1.2", VARIABLE}}));
    // A tab is no delimiter: it joins the name it follows, but ends a number.
    EXPECT_EQ(tokens_of(parser, "x\t+1"), (Tokens{{"x\t", VARIABLE}, {"+", DELIMITER}, {"1", NUMBER}}));
    EXPECT_EQ(tokens_of(parser, "1\t+1"), (Tokens{{"1", NUMBER}, {"+", DELIMITER}, {"1", NUMBER}}));
}

TEST(Tokeniser, LowerCaseIIsTheImaginaryUnitUnlessALetterFollows) {
    Parser parser;
    EXPECT_EQ(tokens_of(parser, "i2"), (Tokens{{"i", NUMBER}, {"2", NUMBER}}));
    EXPECT_EQ(tokens_of(parser, "i_a"), (Tokens{{"i", NUMBER}, {"_a", VARIABLE}}));
    EXPECT_EQ(tokens_of(parser, "i.5"), (Tokens{{"i", NUMBER}, {".5", NUMBER}}));
    EXPECT_EQ(tokens_of(parser, "if"), (Tokens{{"if", VARIABLE}}));
    EXPECT_EQ(tokens_of(parser, "ix"), (Tokens{{"ix", VARIABLE}}));
    EXPECT_EQ(tokens_of(parser, "I"), (Tokens{{"I", VARIABLE}}));
}

TEST(Tokeniser, RelationalOperatorsAreStoredAsControlCodes) {
    Parser parser;
    EXPECT_EQ(tokens_of(parser, "a<b"), (Tokens{{"a", VARIABLE}, {"\x01", DELIMITER}, {"b", VARIABLE}}));
    EXPECT_EQ(tokens_of(parser, "<="), (Tokens{{"\x02\x02", DELIMITER}}));
    EXPECT_EQ(tokens_of(parser, ">"), (Tokens{{"\x03", DELIMITER}}));
    EXPECT_EQ(tokens_of(parser, ">="), (Tokens{{"\x04\x04", DELIMITER}}));
    EXPECT_EQ(tokens_of(parser, "=="), (Tokens{{"\x05\x05", DELIMITER}}));
    EXPECT_EQ(tokens_of(parser, "!="), (Tokens{{"\x06\x06", DELIMITER}}));
    // Typed apart, they are two tokens, and the second is an assignment.
    EXPECT_EQ(tokens_of(parser, "< ="), (Tokens{{"\x01", DELIMITER}, {"=", DELIMITER}}));
    EXPECT_EQ(tokens_of(parser, "3!"), (Tokens{{"3", NUMBER}, {"!", DELIMITER}}));
}

TEST(Tokeniser, UnclassifiedBytesEndTheScanWithoutError) {
    Parser parser;
    EXPECT_EQ(tokens_of(parser, "2 \x01 3"), (Tokens{{"2", NUMBER}}));
    EXPECT_EQ(tokens_of(parser, "\xff"), Tokens{});
    EXPECT_EQ(tokens_of(parser, "\x85"), (Tokens{{"\x85", DELIMITER}}));
    EXPECT_FALSE(parser.IsAnError());
}

TEST(Tokeniser, DecimalPointErrorsStopTheOneShotScan) {
    Parser parser;
    std::string token;
    char kind = 0;
    EXPECT_LT(parser.get_token("2.5.1", token, kind), 0);
    EXPECT_STREQ(parser.GetLastError(), "Too many decimal points found in number!");
    EXPECT_EQ(parser.error_code(), 18);
    EXPECT_LT(parser.get_token(".+", token, kind), 0);
    EXPECT_STREQ(parser.GetLastError(), "Improper use of decimal point");
    // The one-shot form switches the no-unwinding mode off again when it ends.
    EXPECT_GE(parser.get_token("7", token, kind), 0);
    EXPECT_EQ(token, "7");
}

TEST(Tokeniser, FindTokenMatchesWholeNamesOnly) {
    Parser parser;
    EXPECT_TRUE(parser.find_token("2*alpha+1", "alpha"));
    EXPECT_FALSE(parser.find_token("2*alphabet", "alpha"));
    EXPECT_FALSE(parser.find_token("2*Alpha", "alpha"));
    EXPECT_FALSE(parser.find_token("1.2.3+alpha", "alpha")); // the scan stops at the error
}

TEST(Tokeniser, BracketHelpers) {
    std::string text = "f[x]+(y)  \t ";
    Parser::remove_end_spaces(text);
    EXPECT_EQ(text, "f[x]+(y)");
    Parser::replace_brackets(text, 0);
    EXPECT_EQ(text, "f(x)+(y)");
    Parser::replace_brackets(text, 1);
    EXPECT_EQ(text, "f[x]+[y]");
    std::string blank = "   ";
    Parser::remove_end_spaces(blank);
    EXPECT_EQ(blank, "");
}

TEST(Tokeniser, CallBracketsFindTheirPartnersAtAnyDepthInOnePass) {
    Parser parser;
    parser.eval_exp("f(x) = x*2", true, false, false);
    std::string text = "f(f[f(1)) + (2)] + g(3)";
    parser.insert_brackets(text, 1);
    EXPECT_EQ(text, "f[f[f[1]] + (2)] + g(3)"); // only calls change; g is no function
    parser.insert_brackets(text, 0);
    EXPECT_EQ(text, "f(f(f(1)) + (2)) + g(3)");
    // A line of a hundred thousand open calls is refused at once (the search for partners used to
    // take a quarter of a minute), and a deep but balanced line still gets its own message.
    std::string open_calls;
    for (int i = 0; i < 100000; ++i) open_calls += "f(";
    parser.eval_exp(open_calls.c_str(), true, false, false);
    EXPECT_STREQ(parser.GetLastError(), "Unbalanced function brackets in expression!");
    std::string deep = "1";
    for (int i = 0; i < 5000; ++i) deep = "f(" + deep + ")";
    parser.eval_exp(deep.c_str(), true, false, false);
    EXPECT_TRUE(parser.IsAnError());
}
