#include "line_processor.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace quorvex::document {

namespace {

constexpr const char* k_answer_alphabet = "0123456789 .+-eEi:";
constexpr const char* k_operator_characters = "!+-<>*/%^=()[]{},;:#$@&?~`'\"| \\";

bool is_blank(char c) { return c == ' ' || c == '\t'; }
bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool in(const char* set, char c) { return c != '\0' && std::strchr(set, c) != nullptr; }

// The answer behind "=" with the blanks around it taken off.
std::string bare_answer(std::string_view text) {
    const size_t equal = text.find('=');
    if (equal != std::string_view::npos) text.remove_prefix(equal + 1);
    while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
    while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
    return std::string(text);
}

// Where the old answer of a statement that ends in one begins (its '=' with the blanks ahead)
// and ends (at the comment or the end).
std::pair<size_t, size_t> old_answer_span(std::string_view statement, size_t comment) {
    size_t start = statement.rfind('=');
    while (start > 0 && is_blank(statement[start - 1])) --start;
    const size_t end = comment != std::string_view::npos && comment > start ? comment : statement.size();
    return {start, end};
}

// A '/' that, with a neighbour, makes "//" (never counting column 0 as the '/' itself).
bool is_comment_slash(std::string_view text, size_t i) {
    if (i == 0 || text[i] != '/') return false;
    return text[i - 1] == '/' || (i + 1 < text.size() && text[i + 1] == '/');
}

} // namespace

size_t find_comment(std::string_view text) {
    // Scanned from the end: the leftmost "//" wins, taken with the blanks ahead of it.
    size_t found = std::string_view::npos;
    for (size_t i = text.size(); i-- > 1;) {
        if (!is_comment_slash(text, i)) continue;
        size_t start = text[i - 1] == '/' ? i - 1 : i;
        while (start > 0 && is_blank(text[start - 1])) --start;
        found = start;
    }
    return found;
}

bool LineProcessor::IsRecalculating(std::string_view text) const {
    bool not_number = false;
    size_t equal = std::string_view::npos;
    for (size_t i = text.size(); i-- > 0;) {
        const char c = text[i];
        if (c == '=') {
            equal = i;
            break;
        }
        if (!in(k_answer_alphabet, c)) not_number = true;
        // A comment to the right is forgiven, and so is a fraction's bar between digits.
        if (is_comment_slash(text, i)) not_number = false;
        if (m_settings.as_fraction && c == '/' && i > 0 && i + 1 < text.size() && is_digit(text[i - 1]) &&
            is_digit(text[i + 1]))
            not_number = false;
    }
    if (equal == std::string_view::npos || not_number || equal == 0) return false;
    if (in("=!<>", text[equal - 1])) return false;

    std::string_view left = text.substr(0, equal);
    while (!left.empty() && is_blank(left.front())) left.remove_prefix(1);
    while (!left.empty() && is_blank(left.back())) left.remove_suffix(1);
    const std::string name(left);
    if (m_parser.is_variable(name.c_str())) return false; // "x = 5" assigns
    const bool operator_first = !left.empty() && (is_digit(left[0]) || left[0] == '.' || in(k_operator_characters, left[0]));
    bool holds_operator = false;
    for (const char c : left) holds_operator = holds_operator || in(k_operator_characters, c);
    return operator_first || holds_operator; // a new name being assigned is no old answer
}

bool LineProcessor::Calculate(std::string& piece, size_t lead, std::string statement, bool last, LineOutcome& outcome) {
    size_t caret = piece.size();
    if (m_settings.calculation_method == 2) {
        const size_t assign = statement.find(":=");
        if (assign != std::string::npos) statement[assign] = ' ';
    }
    const size_t comment = find_comment(statement);
    if (!IsRecalculating(statement)) {
        // The answer goes ahead of a comment.
        if (comment != std::string::npos) {
            caret = lead + comment;
            statement.resize(comment);
        }
    } else {
        // The old answer, from its '=' (with the blanks ahead of it) to the comment or the end.
        const auto [start, end] = old_answer_span(statement, comment);
        if (last) {
            outcome.held_answer = true;
            outcome.old_answer = bare_answer(std::string_view(statement).substr(start, end - start));
        }
        piece.erase(lead + start, end - start);
        statement.resize(start);
        caret = lead + start;
        if (last) outcome.recalculated = true;
    }

    outcome.computed = true;
    const char* first = m_parser.eval_exp(statement, true, true, m_settings.as_fraction);
    std::string answer = first ? first : "";
    if (!answer.empty() && m_parser.root_taken() && !m_parser.IsAnError()) {
        // An even root has two values: the second comes from the same line with negative roots.
        m_parser.set_neg_sqrt(true);
        const char* second = m_parser.eval_exp(statement, true, false, m_settings.as_fraction);
        m_parser.set_neg_sqrt(false);
        answer += " : ";
        answer += second ? second : "";
    }
    if (m_parser.IsAnError()) {
        const char* message = m_parser.GetLastError();
        outcome.error = true;
        outcome.message = message ? message : "";
        m_parser.ClearLastError();
        return false;
    }
    if (last && !answer.empty()) {
        outcome.answer = bare_answer(answer);
        piece.insert(caret, answer);
        caret += answer.size();
        outcome.answered = true;
    }
    const size_t equal = answer.find('=');
    if (equal != std::string::npos && answer.compare(equal, 2, "= ") == 0) m_last_answer = answer.substr(equal + 2);
    outcome.variables_changed = outcome.variables_changed || m_parser.var_changed();
    outcome.functions_changed = outcome.functions_changed || m_parser.func_declared();
    outcome.caret = caret;
    return true;
}

LineOutcome LineProcessor::process(std::string_view line) {
    LineOutcome outcome;
    outcome.text = std::string(line);
    outcome.caret = line.size();
    size_t first = 0;
    while (first < line.size() && (is_blank(line[first]) || line[first] == '\r' || line[first] == '\n')) ++first;
    if (first == line.size()) return outcome;       // nothing to compute
    if (line.substr(0, 2) == "//") return outcome;  // a comment line; only column 0 counts

    // Statements at every ';' (a ';' inside a comment cuts too); only the last one's answer shows.
    std::vector<std::string> pieces;
    for (size_t start = 0;;) {
        const size_t semicolon = line.find(';', start);
        pieces.emplace_back(line.substr(start, semicolon == std::string_view::npos ? std::string_view::npos
                                                                                  : semicolon - start));
        if (semicolon == std::string_view::npos) break;
        start = semicolon + 1;
    }
    size_t before_last = 0; // characters ahead of the last piece
    for (size_t i = 0; i + 1 < pieces.size(); ++i) before_last += pieces[i].size() + 1;
    for (size_t i = 0; i < pieces.size(); ++i) {
        std::string& piece = pieces[i];
        size_t lead = 0;
        while (lead < piece.size() && is_blank(piece[lead])) ++lead;
        const bool last = i + 1 == pieces.size();
        const size_t length_before = piece.size();
        const bool ok = Calculate(piece, lead, piece.substr(lead), last, outcome);
        if (!last) before_last += piece.size() - length_before; // an old answer may have gone
        if (!ok) {
            // A statement ahead of the last failed: what the last one held still counts.
            const std::string_view tail = std::string_view(pieces.back()).substr(
                std::min(pieces.back().find_first_not_of(" \t"), pieces.back().size()));
            if (!last && IsRecalculating(tail)) {
                const auto [start, end] = old_answer_span(tail, find_comment(tail));
                outcome.held_answer = true;
                outcome.old_answer = bare_answer(tail.substr(start, end - start));
            }
            break;
        }
    }
    outcome.text.clear();
    for (size_t i = 0; i < pieces.size(); ++i) outcome.text += (i ? ";" : "") + pieces[i];
    outcome.caret = outcome.answered ? before_last + outcome.caret : outcome.text.size();
    return outcome;
}

} // namespace quorvex::document
