#pragma once
#include "engine/parser.h"

#include <string>
#include <string_view>

namespace quorvex::document {

// How the editor computes: 0 Enter never computes, 1 Enter computes, 2 '=' computes too, so that
// an assignment is typed as ":=".
struct LineSettings {
    int calculation_method = 1;
    bool as_fraction = false;
};

// What processing a line did, for the caller to place the caret and update its lists.
struct LineOutcome {
    std::string text;           // the line as it stands afterwards
    bool computed = false;      // at least one statement reached the engine
    bool answered = false;      // an answer was written into the line
    bool recalculated = false;  // the last statement held an old answer, which was taken out
    bool error = false;         // a statement failed; `message` says why, the line is otherwise kept
    std::string message;
    bool variables_changed = false;
    bool functions_changed = false;
    size_t caret = 0;           // where the caret stands: behind the answer, or at the line's end
    // The last statement's answer as the line held it before ("5", "2 : -2"; held_answer tells
    // whether there was one) and as it is now (empty when none was written).
    bool held_answer = false;
    std::string old_answer;
    std::string answer;
};

// What Enter does to a line of the math editor, as logic on text: statements cut at ';', each
// given to the engine in turn, only the last one's answer written into the line (ahead of a "//"
// comment), an old answer recognised and replaced, two roots shown as "a : b".
class LineProcessor {
public:
    LineProcessor(engine::Parser& parser, LineSettings settings = {}) : m_parser(parser), m_settings(settings) {}

    void set_settings(const LineSettings& settings) { m_settings = settings; }
    const LineSettings& settings() const { return m_settings; }
    engine::Parser& parser() { return m_parser; }

    LineOutcome process(std::string_view line);
    // True when the text already ends in an answer (" = 5", " = 2 : -2") that a new one replaces.
    bool IsRecalculating(std::string_view text) const;
    // The text behind "= " of the last answer written.
    const std::string& LastAnswer() const { return m_last_answer; }

private:
    // One statement that stands at `offset` in the line; false on an error.
    bool Calculate(std::string& line, size_t offset, std::string statement, bool last, LineOutcome& outcome);

    engine::Parser& m_parser;
    LineSettings m_settings;
    std::string m_last_answer;
};

// The start of a "//" comment in `text` with the blanks before it, or npos.
size_t find_comment(std::string_view text);

} // namespace quorvex::document
