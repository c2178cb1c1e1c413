#pragma once

namespace quorvex::desktop {

enum class EditorKey { Enter, ShiftEnter, Equals, F4 };

// What a key does in the math editor. `compute`: the caret's line is evaluated; `type`: the key
// then reaches the text as usual (a new line, an '='); `stay`: the caret stays on the line.
struct KeyDecision {
    bool compute = false;
    bool type = true;
    bool stay = false;
};

// By the calculation method (0 Shift+Enter computes, 1 Enter computes, 2 Enter or '=' computes).
// With method 2 an '=' after ':', '!', '>' or '<' is typed, so that ":=", "!=", ">=" and "<=" can
// still be entered; `before_caret` is the character before the caret, 0 at a line's start.
KeyDecision decide_key(EditorKey key, int calculation_method, char before_caret);

} // namespace quorvex::desktop
