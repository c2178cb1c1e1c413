#include "engine/error_tables.h"
#include "engine/evaluation_aborted.h"
#include "engine/parser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace quorvex::engine;

namespace {

struct RecordingReporter : Reporter {
    struct Message {
        std::string text, caption;
        MessageKind kind;
    };
    std::vector<Message> messages;
    void report(std::string_view text, std::string_view caption, MessageKind kind) override {
        messages.push_back({std::string(text), std::string(caption), kind});
    }
};

} // namespace

TEST(ErrorModel, TablesKeepTheirNumbering) {
    EXPECT_EQ(parser_messages().size(), 31u);
    EXPECT_EQ(mathlib_messages().size(), 61u);
    EXPECT_EQ(mapper_messages().size(), 8u);
    EXPECT_EQ(mathematics_messages().size(), 7u);
    EXPECT_EQ(statistics_messages().size(), 76u);
    EXPECT_EQ(deviates_messages().size(), 14u);
    EXPECT_STREQ(parser_messages()[30], "Unbalanced function brackets in expression!");
    EXPECT_STREQ(mathlib_messages()[58], "An Exception Occured While Computing The ' %s ' Function!");
    EXPECT_STREQ(statistics_messages()[75], "No statistical Mode could be identified!");
}

TEST(ErrorModel, EachLayerReportsUnderItsOwnCaptionUnlessSilent) {
    Parser parser;
    RecordingReporter reporter;
    parser.set_reporter(&reporter);
    parser.eval_exp("2+", false, true, false);
    parser.eval_exp("1/0", false, true, false);
    parser.eval_exp("nobody", false, true, false);
    ASSERT_EQ(reporter.messages.size(), 3u);
    EXPECT_EQ(reporter.messages[0].caption, "Parser Error");
    EXPECT_EQ(reporter.messages[0].kind, MessageKind::Warning);
    EXPECT_EQ(reporter.messages[1].caption, "Mathematics Error");
    EXPECT_EQ(reporter.messages[1].text, "Division By Zero Encountered!");
    EXPECT_EQ(reporter.messages[2].caption, "VARIABLE");
    EXPECT_EQ(reporter.messages[2].kind, MessageKind::Question);
    EXPECT_TRUE(parser.unknown_name());

    reporter.messages.clear();
    EXPECT_STREQ(parser.eval_exp("1/0", true, true, false), "");
    EXPECT_TRUE(reporter.messages.empty());
    EXPECT_TRUE(parser.IsAnError());
    EXPECT_STREQ(parser.GetLastError(), "Division By Zero Encountered!");
}

TEST(ErrorModel, TheNextEvaluationOrClearLastErrorClearsEveryLayer) {
    Parser parser;
    parser.eval_exp("1/0", true, true, false);
    parser.eval_exp("2+3", true, true, false);
    EXPECT_FALSE(parser.IsAnError());
    EXPECT_EQ(parser.GetLastError(), nullptr);
    EXPECT_EQ(parser.error_code(), -1);
    parser.eval_exp("2.5.5", true, true, false);
    EXPECT_EQ(parser.error_code(), 18);
    parser.ClearLastError();
    EXPECT_FALSE(parser.IsAnError());
    EXPECT_EQ(parser.GetLastError(), nullptr);
}

TEST(ErrorModel, ParserTextComesBeforeLowerLayersAndTheLaterErrorWins) {
    Parser parser;
    parser.statistics_layer().SetLastError("statistics text");
    parser.mathematics().SetLastError("mathematics text");
    parser.deviates_layer().SetLastError("deviates text");
    EXPECT_STREQ(parser.GetLastError(), "statistics text");
    parser.SetLastError("parser text", 1);
    EXPECT_STREQ(parser.GetLastError(), "parser text");
    parser.ClearLastError();
    parser.deviates_layer().SetLastError("deviates text");
    EXPECT_STREQ(parser.GetLastError(), "deviates text");
    EXPECT_TRUE(parser.IsAnError());

    parser.SetSolvingMap(true);
    parser.SetSilentMode(true);
    parser.parser_exception(5);
    parser.SetSolvingMap(true);
    parser.parser_exception(1);
    EXPECT_STREQ(parser.GetLastError(), "Syntax error!");
}

TEST(ErrorModel, SolvingMapReturnsOnceThenUnwinds) {
    Parser parser;
    parser.SetSilentMode(true);
    parser.SetSolvingMap(true);
    EXPECT_NO_THROW(parser.parser_exception(1));
    EXPECT_TRUE(parser.IsAnError());
    EXPECT_THROW(parser.parser_exception(1), EvaluationAborted);

    // Lower layers keep their no-unwinding switch, so they return every time.
    parser.SetSolvingMap(true);
    EXPECT_NO_THROW(parser.mathematics().math_exception(0));
    EXPECT_NO_THROW(parser.mathematics().math_exception(2));
    EXPECT_STREQ(parser.mathematics().GetLastError(), "Modulus Arguments Must Be Integers!");
    parser.SetSolvingMap(false);
    EXPECT_THROW(parser.statistics_layer().raise(75), EvaluationAborted);
}

TEST(ErrorModel, MathlibMessagesTakeTheirTextBeforeTheFunctionName) {
    Parser parser;
    parser.SetSilentMode(true);
    parser.SetSolvingMap(true);
    parser.SetLastError("inner trouble", 1);
    parser.mathlib_exception(33, -1, parser.GetLastError());
    EXPECT_STREQ(parser.GetLastError(), "inner trouble : the error occured in  function call!");
    EXPECT_EQ(parser.error_code(), 33);
    parser.SetSolvingMap(true);
    parser.mapper_exception(4, true);
    EXPECT_STREQ(parser.GetLastError(), "Step size is zero in derivative algorithm!");
}

TEST(ErrorModel, IllegalCharactersAreRecordedAndReplacedBySyntaxError) {
    Parser parser;
    parser.eval_exp("a = 1 ; 2", true, true, false);
    EXPECT_STREQ(parser.GetLastError(), "Syntax error!");
    // Where a control byte ends the scan first, the answer stands and the note stays readable.
    complex answer;
    EXPECT_STREQ(parser.eval_exp("2 \x01 ;", answer, true, true, false), " = 2");
    EXPECT_FALSE(parser.IsAnError());
    EXPECT_STREQ(parser.GetLastError(), "' ; ' is not a legitimate mathematical character!");
}

TEST(ErrorModel, EmptyAndBlankLinesHaveNoExpression) {
    Parser parser;
    parser.eval_exp("", true, true, false);
    EXPECT_STREQ(parser.GetLastError(), "No expression present!");
    parser.eval_exp("   \t ", true, true, false);
    EXPECT_STREQ(parser.GetLastError(), "No expression present!");
    EXPECT_EQ(parser.error_code(), 4);
}
