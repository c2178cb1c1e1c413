// What Enter does to a line: answers written, replaced and placed ahead of comments, statements
// cut at ';', errors that leave the line alone.
#include "document/line_processor.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

using quorvex::document::LineProcessor;
using quorvex::document::LineSettings;

namespace {

struct Editor {
    Editor() : parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR), lines(parser) {}
    std::string enter(const std::string& line) { return lines.process(line).text; }
    quorvex::engine::Parser parser;
    LineProcessor lines;
};

} // namespace

TEST(LineProcessor, WritesAnswersAndReplacesOldOnes) {
    Editor editor;
    EXPECT_EQ(editor.enter("1+1"), "1+1 = 2");
    EXPECT_EQ(editor.enter("1+1 = 2"), "1+1 = 2");            // one answer, not two
    EXPECT_EQ(editor.enter("1+1 = 7"), "1+1 = 2");
    EXPECT_EQ(editor.enter("x = 5"), "x = 5");                // an assignment of a number shows nothing
    EXPECT_EQ(editor.enter("x = 2+3"), "x = 2+3 = 5");
    EXPECT_EQ(editor.enter("x = 2+3 = 7"), "x = 2+3 = 5");
    EXPECT_EQ(editor.enter("2+3 // note"), "2+3 = 5 // note"); // ahead of the comment
    EXPECT_EQ(editor.enter("2+3 = 9 // note"), "2+3 = 5 // note");
    EXPECT_EQ(editor.enter("sqrt[4]"), "sqrt[4] = 2 : -2");   // two roots
    EXPECT_EQ(editor.enter("sqrt[4] = 2 : -2"), "sqrt[4] = 2 : -2");
    EXPECT_EQ(editor.lines.LastAnswer(), "2 : -2");
    EXPECT_EQ(editor.enter("SIN(30) = 5e3"), "SIN(30) = 0.5"); // a bracket makes it an old answer
}

TEST(LineProcessor, CutsStatementsAndSkipsBlankAndCommentLines) {
    Editor editor;
    EXPECT_EQ(editor.enter("a=1; b=2; a+b"), "a=1; b=2; a+b = 3");
    EXPECT_EQ(editor.enter("a=1; b=2; a+b = 3"), "a=1; b=2; a+b = 3");
    EXPECT_EQ(editor.enter("// c; 1+1"), "// c; 1+1");
    EXPECT_EQ(editor.enter("   "), "   ");
    const auto outcome = editor.lines.process("");
    EXPECT_FALSE(outcome.computed);

    // An error stops the statements behind it and leaves the line as it was.
    const auto failed = editor.lines.process("c=1; d=1/0; e=3");
    EXPECT_TRUE(failed.error);
    EXPECT_EQ(failed.text, "c=1; d=1/0; e=3");
    EXPECT_FALSE(editor.parser.is_variable("e"));
    EXPECT_EQ(failed.message, "Division By Zero Encountered!");
    EXPECT_FALSE(editor.parser.IsAnError()); // the message was taken, the engine is clear again

    // A failing recalculation keeps the line without its old answer.
    EXPECT_EQ(editor.lines.process("1/0 = 4").text, "1/0");
}

TEST(LineProcessor, ReportsWhatChangedAndWhereTheCaretGoes) {
    Editor editor;
    auto outcome = editor.lines.process("y = 4");
    EXPECT_TRUE(outcome.variables_changed);
    EXPECT_FALSE(outcome.functions_changed);
    outcome = editor.lines.process("f[x] = x^2");
    EXPECT_TRUE(outcome.functions_changed);
    EXPECT_FALSE(outcome.answered);
    outcome = editor.lines.process("f[3] // nine");
    EXPECT_EQ(outcome.text, "f[3] = 9 // nine");
    EXPECT_EQ(outcome.caret, 8u); // behind the answer, ahead of the comment
    EXPECT_FALSE(outcome.recalculated);
    // An old answer taken out is told, also when the new computation fails.
    EXPECT_TRUE(editor.lines.process("f[3] = 9 // nine").recalculated);
    EXPECT_TRUE(editor.lines.process("1/0 = 4").recalculated);
    EXPECT_FALSE(editor.lines.process("y = 4").recalculated);
    EXPECT_FALSE(editor.lines.process("z = 1 + 1 = 2; y").recalculated); // not the last statement
}

TEST(LineProcessor, RecognisesOldAnswersByTheirAlphabetAndLeftSide) {
    Editor editor;
    editor.enter("known = 1");
    const LineProcessor& lines = editor.lines;
    EXPECT_TRUE(lines.IsRecalculating("2+3 = 5"));
    EXPECT_TRUE(lines.IsRecalculating("2+3 = -1.5E+10 // why"));
    EXPECT_TRUE(lines.IsRecalculating("x^2 = 2+3i"));
    EXPECT_FALSE(lines.IsRecalculating("known = 5"));    // a known variable assigns
    EXPECT_FALSE(lines.IsRecalculating("newname = 5"));  // so does a new name
    EXPECT_FALSE(lines.IsRecalculating("2+3 == 5"));     // a comparison for the engine
    EXPECT_FALSE(lines.IsRecalculating("2+3 >= 5"));
    EXPECT_FALSE(lines.IsRecalculating("2+3 = x"));      // no answer's alphabet
    EXPECT_FALSE(lines.IsRecalculating("= 5"));
    EXPECT_FALSE(lines.IsRecalculating("1+1 = 1/2"));
    LineProcessor fractions(editor.parser, LineSettings{1, true});
    EXPECT_TRUE(fractions.IsRecalculating("1+1 = 1/2"));
}

TEST(LineProcessor, AssignsWithColonEqualsInTheThirdMethod) {
    Editor editor;
    editor.lines.set_settings(LineSettings{2, false});
    EXPECT_EQ(editor.enter("a:=2"), "a:=2");
    EXPECT_EQ(editor.parser.get_var_value("a"), quorvex::engine::complex(2, 0));
    EXPECT_EQ(editor.enter("a:=1+1"), "a:=1+1 = 2");
}
