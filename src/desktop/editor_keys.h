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

// Where the caret goes when a key that computed also brings its new line.
enum class AfterCompute {
    NewLine,    // a new line below the one computed
    NextLine,   // on to the line below, which is already there
    StayOnLine, // the line needs the user's attention
};

// A line that held an answer already (`recalculated`) and has lines below it is computed again in
// place and the caret moves on, so that a column of answers can be brought up to date with one
// key per line; a refusal there keeps the caret on the line. Everything else gets its new line.
AfterCompute after_compute(bool recalculated, bool error, bool last_line);

} // namespace quorvex::desktop
