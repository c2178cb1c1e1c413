#pragma once
#include <optional>
#include <string>

namespace quorvex::desktop {

// One editor line as the keypad sees it: its text and the selection (start == end: the caret).
struct KeypadLine {
    std::string text;
    size_t start = 0, end = 0;
};

// A function put around the selection, or around the text from the caret to the line's end:
// "NAME[" (or "NAME[{" for a list argument) ... then "]" for kind 1, ",]" for kind 2 (a second
// argument to type), nothing for kind 0. The caret lands where the user types next.
KeypadLine insert_function(KeypadLine line, const std::string& name, int kind, bool brace);

// An operator applied to the operand (the selection, or the text from the caret to the line's
// end): `prefix` puts the text before it ("1/", "10^", "-"), otherwise after it ("^2", "!"). An
// operand holding + - * or / is put in parentheses first. The caret goes to the line's end.
KeypadLine apply_operator(KeypadLine line, const std::string& text, bool prefix);

// ±: a minus sign put before the operand (in parentheses when it holds an operator), or taken
// away again when the operand begins with one, so that a second press restores the line. The
// caret (or selection) stays on the operand.
KeypadLine toggle_sign(KeypadLine line);

// ( ): the operand in parentheses. A caret at the line's end lands inside the new "()"; otherwise
// the caret goes to the line's end.
KeypadLine wrap_parentheses(KeypadLine line);

// The y-th root of the operand: "^(1/)" after it, the caret before the ")" to type y.
KeypadLine inverse_power(KeypadLine line);

// The text memory of one editor: M+ appends, M- takes the last addition away again.
class KeypadMemory {
public:
    // MS (add false) or M+ (add true) of `text`; the message to show.
    std::string save(const std::string& text, bool add);
    // M-: the message to show.
    std::string remove_last();
    // MC: a message when something was cleared.
    std::optional<std::string> clear();
    const std::optional<std::string>& text() const { return m_memory; }

private:
    std::optional<std::string> m_memory;
    std::optional<std::string> m_last_saved;
};

} // namespace quorvex::desktop
