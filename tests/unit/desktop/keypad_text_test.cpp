// The keypad's text operations on one line: functions around the selection or the rest of the
// line, operators with the parentheses they need, the text memory.
#include "desktop/keypad_text.h"

#include <gtest/gtest.h>

using namespace quorvex::desktop;

TEST(KeypadText, FunctionsWrapTheSelectionOrTheRestOfTheLine) {
    // At the line's end: an empty call with the caret inside.
    KeypadLine line = insert_function({"2+", 2, 2}, "SQRT", 1, false);
    EXPECT_EQ(line.text, "2+SQRT[]");
    EXPECT_EQ(line.end, 7u);
    // Around a selection: the caret after the closing bracket.
    line = insert_function({"x=a+b*2", 2, 5}, "ABS", 1, false);
    EXPECT_EQ(line.text, "x=ABS[a+b]*2");
    EXPECT_EQ(line.end, 12u);
    // Mid-line without a selection: the call runs to the line's end.
    line = insert_function({"2*3+4", 2, 2}, "LN", 1, false);
    EXPECT_EQ(line.text, "2*LN[3+4]");
    // Two arguments: the caret stops before the comma, for the first one.
    line = insert_function({"", 0, 0}, "POW", 2, false);
    EXPECT_EQ(line.text, "POW[,]");
    EXPECT_EQ(line.end, 4u);
    // A list argument: braces inside the brackets.
    line = insert_function({"", 0, 0}, "MEAN", 2, true);
    EXPECT_EQ(line.text, "MEAN[{,}]");
    EXPECT_EQ(line.end, 6u);
}

TEST(KeypadText, OperatorsTakeParenthesesOnlyWhenTheOperandNeedsThem) {
    EXPECT_EQ(apply_operator({"a+b", 0, 3}, "^2", false).text, "(a+b)^2");
    EXPECT_EQ(apply_operator({"ab", 0, 2}, "^2", false).text, "ab^2");
    EXPECT_EQ(apply_operator({"x=3", 2, 3}, "1/", true).text, "x=1/3");
    EXPECT_EQ(apply_operator({"5+y", 0, 0}, "10^", true).text, "10^(5+y)"); // the rest of the line
    EXPECT_EQ(apply_operator({"5", 1, 1}, "!", false).text, "5!");          // at the end: no operand
}

TEST(KeypadText, SignTogglesBackAndBracketsWrapTheOperand) {
    // Twice restores the line, with and without an operator in the operand.
    for (const KeypadLine& start : {KeypadLine{"x=a+b", 2, 2}, KeypadLine{"x=4", 2, 2}, KeypadLine{"2*y+1", 2, 3},
                                    KeypadLine{"(a+b)", 0, 0}}) {
        const KeypadLine once = toggle_sign(start);
        EXPECT_NE(once.text, start.text);
        EXPECT_EQ(toggle_sign(once).text, start.text) << start.text;
    }
    EXPECT_EQ(toggle_sign({"x=a+b", 2, 2}).text, "x=-(a+b)");
    EXPECT_EQ(toggle_sign({"2*y+1", 2, 3}).text, "2*-y+1"); // the selection alone
    EXPECT_EQ(toggle_sign({"-(a)", 0, 0}).text, "(a)");     // a bracket the user typed stays
    EXPECT_EQ(toggle_sign({"", 0, 0}).text, "");
    // The caret goes one place on with a new sign, and back with the sign taken away.
    KeypadLine signed_once = toggle_sign({"x=4", 2, 2});
    EXPECT_EQ(signed_once.text, "x=-4");
    EXPECT_EQ(signed_once.start, 3u);
    const KeypadLine signed_twice = toggle_sign(signed_once);
    EXPECT_EQ(signed_twice.text, "x=4");
    EXPECT_EQ(signed_twice.start, 2u);
    EXPECT_EQ(toggle_sign({"5-3", 2, 2}).text, "5--3"); // a subtraction's minus is no sign
    KeypadLine sign = toggle_sign({"5*", 2, 2}); // at the line's end: the operand is typed after it
    EXPECT_EQ(sign.text, "5*-");
    EXPECT_EQ(sign.start, 3u);
    EXPECT_EQ(sign.end, 3u);

    KeypadLine line = wrap_parentheses({"2*", 2, 2}); // at the end: the caret inside
    EXPECT_EQ(line.text, "2*()");
    EXPECT_EQ(line.end, 3u);
    line = wrap_parentheses({"2*3+4", 2, 2}); // mid-line: to the line's end
    EXPECT_EQ(line.text, "2*(3+4)");
    EXPECT_EQ(line.end, 7u);
    EXPECT_EQ(wrap_parentheses({"a+b*c", 2, 5}).text, "a+(b*c)");

    line = inverse_power({"27", 2, 2});
    EXPECT_EQ(line.text, "27^(1/)");
    EXPECT_EQ(line.end, 6u); // before the ")", for the root's degree
    line = inverse_power({"a^(1/)+b", 7, 8}); // an earlier empty root on the line is not the new one
    EXPECT_EQ(line.text, "a^(1/)+b^(1/)");
    EXPECT_EQ(line.end, 12u);
    line = inverse_power({"x+8=1", 0, 3});
    EXPECT_EQ(line.text, "(x+8)^(1/)=1");
    EXPECT_EQ(line.end, 9u);
}

TEST(KeypadText, MemoryAddsAndTakesBackItsLastAddition) {
    KeypadMemory memory;
    EXPECT_NE(memory.remove_last().find("no items saved"), std::string::npos);
    EXPECT_EQ(memory.save("2*x", false), "The mathematical text string \"2*x\" has been saved into memory.");
    memory.save("+1", true);
    memory.save("+1", true);
    EXPECT_EQ(*memory.text(), "2*x+1+1");
    EXPECT_NE(memory.remove_last().find("\"+1\" has been removed"), std::string::npos);
    EXPECT_EQ(*memory.text(), "2*x+1"); // only the last copy went
    EXPECT_NE(memory.remove_last().find("no items saved"), std::string::npos); // the last addition is known once
    EXPECT_EQ(memory.clear(), std::optional<std::string>("The memory has been cleared."));
    EXPECT_FALSE(memory.clear());
}
