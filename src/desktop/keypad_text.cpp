#include "keypad_text.h"

#include <algorithm>
#include <string_view>

namespace quorvex::desktop {

namespace {

bool holds_operator(const std::string& text) { return text.find_first_of("+-*/") != std::string::npos; }

void normalise(KeypadLine& line) {
    line.start = std::min(line.start, line.text.size());
    line.end = std::min(line.end, line.text.size());
    if (line.start > line.end) std::swap(line.start, line.end);
}

} // namespace

KeypadLine insert_function(KeypadLine line, const std::string& name, int kind, bool brace) {
    normalise(line);
    const size_t length = line.text.size();
    const bool selection = line.start != line.end;
    const bool at_end = line.end == length;
    const std::string saved = line.text.substr(line.start, line.end - line.start);
    const std::string rest = line.text.substr(line.end);
    // The name and its bracket replace the selection, which follows them again.
    std::string text = line.text.substr(0, line.start) + name + (brace ? "[{" : "[") + saved;
    // Without a selection the call closes at the line's end, around what followed the caret.
    text += rest;
    size_t caret = selection ? text.size() - rest.size() : text.size();
    std::string closing = kind == 1 ? (brace ? "}]" : "]") : kind == 2 ? (brace ? ",}]" : ",]") : "";
    text.insert(caret, closing);
    const size_t line_end = text.size();
    if (kind == 2) {
        const size_t back = at_end ? (brace ? 3 : 2) : (brace ? 2 : 1);
        caret = line_end - back;
    } else if (kind == 1) {
        caret = !selection && at_end ? line_end - 1 : line_end;
    } else {
        caret += closing.size();
    }
    return {text, caret, caret};
}

KeypadLine apply_operator(KeypadLine line, const std::string& text, bool prefix) {
    normalise(line);
    const size_t length = line.text.size();
    const bool selection = line.start != line.end;
    std::string operand;
    std::string out = line.text;
    size_t place = line.end;
    bool brackets = false;
    if (selection) {
        operand = out.substr(line.start, line.end - line.start);
        out.erase(line.start, line.end - line.start);
        place = line.start;
        brackets = holds_operator(operand);
    } else if (line.end < length) {
        // The operand is the rest of the line, left where it is; whether it needs brackets is
        // judged on the whole line.
        brackets = holds_operator(line.text);
    }
    std::string before = prefix ? text : "";
    if (brackets) before += "(";
    out.insert(place, before);
    size_t at = place + before.size();
    if (selection) {
        out.insert(at, operand);
        at += operand.size();
    } else {
        at = out.size();
    }
    std::string after = brackets ? ")" : "";
    if (!prefix) after += text;
    out.insert(at, after);
    return {out, out.size(), out.size()};
}

namespace {

// The operand of the sign and bracket keys: the selection, or the caret to the line's end.
std::pair<size_t, size_t> operand_of(const KeypadLine& line) {
    return {line.start, line.start != line.end ? line.end : line.text.size()};
}

// Whether `text` is "(...)" with the first bracket closed by the last one.
bool wrapped_whole(const std::string& text) {
    if (text.size() < 2 || text.front() != '(' || text.back() != ')') return false;
    int depth = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        depth += text[i] == '(' ? 1 : text[i] == ')' ? -1 : 0;
        if (depth == 0 && i + 1 < text.size()) return false;
    }
    return true;
}

} // namespace

KeypadLine toggle_sign(KeypadLine line) {
    normalise(line);
    if (line.text.empty()) return line;
    const bool selection = line.start != line.end;
    auto [from, to] = operand_of(line);
    // The sign the key put just before the caret belongs to the operand, so that a second press
    // takes it away again; a minus after a value ("5-3") is a subtraction and is left alone.
    if (!selection && from > 0 && line.text[from - 1] == '-' &&
        (from == 1 || std::string_view("(=,+-*/^<>!").find(line.text[from - 2]) != std::string_view::npos))
        --from;
    std::string operand = line.text.substr(from, to - from);
    if (!operand.empty() && operand[0] == '-') {
        operand.erase(0, 1);
        // "-(a+b)" goes back to "a+b"; a bracket the user typed, as in "-(a)", stays.
        if (wrapped_whole(operand) && holds_operator(operand.substr(1, operand.size() - 2)))
            operand = operand.substr(1, operand.size() - 2);
    } else {
        operand = holds_operator(operand) ? "-(" + operand + ")" : "-" + operand;
    }
    const bool adding = operand.size() > static_cast<size_t>(to - from);
    line.text.replace(from, to - from, operand);
    // A new sign takes the caret one place on, so it stays before the operand it was before (and
    // behind the sign when there is no operand yet, to type one); a sign taken away leaves it
    // where it was.
    if (!selection) line.start = adding ? from + 1 : from;
    line.end = selection ? from + operand.size() : line.start;
    return line;
}

KeypadLine wrap_parentheses(KeypadLine line) {
    normalise(line);
    const bool at_end = line.start == line.end && line.end == line.text.size();
    const auto [from, to] = operand_of(line);
    line.text.insert(to, ")");
    line.text.insert(from, "(");
    line.start = line.end = at_end ? line.text.size() - 1 : line.text.size();
    return line;
}

KeypadLine inverse_power(KeypadLine line) {
    const size_t operand = std::min({line.start, line.end, line.text.size()});
    KeypadLine out = apply_operator(std::move(line), "^(1/)", false);
    // The first "^(1/)" from the operand on is the one just put behind it.
    const size_t inserted = out.text.find("^(1/)", operand);
    if (inserted != std::string::npos) out.start = out.end = inserted + 4;
    return out;
}

std::string KeypadMemory::save(const std::string& text, bool add) {
    const std::optional<std::string> old = add ? m_memory : std::nullopt;
    if (!text.empty()) m_last_saved = text;
    m_memory = old ? *old + text : text;
    return "The mathematical text string \"" + *m_memory + "\" has been saved into memory.";
}

std::string KeypadMemory::remove_last() {
    if (!m_memory || !m_last_saved)
        return "There is currently no items saved into memory to delete, use the MS button to save an item into "
               "memory.";
    const std::string message =
        "The mathematical text string \"" + *m_last_saved + "\" has been removed from the currently saved string.";
    if (*m_memory == *m_last_saved) {
        m_memory.reset();
        m_last_saved.reset();
        return message;
    }
    const size_t at = m_memory->rfind(*m_last_saved);
    if (at != std::string::npos) {
        m_memory->erase(at); // what followed the last copy goes with it
        m_last_saved.reset();
    }
    return message;
}

std::optional<std::string> KeypadMemory::clear() {
    m_last_saved.reset();
    if (!m_memory) return std::nullopt;
    m_memory.reset();
    return std::string("The memory has been cleared.");
}

} // namespace quorvex::desktop
