// The tokeniser and the checks that refuse what cannot be an expression before evaluation.
#include "parser.h"

#include "evaluation_aborted.h"

#include <cstdio>
#include <cstring>
#include <vector>

namespace quorvex::engine {

namespace {

// The characters that end a name and stand alone as one-character tokens.
constexpr const char* k_token_delimiters = "!+-<>*/%^=()[]{},;:#$@&?~`'\"|\\ ";
// Characters that no expression may contain.
constexpr const char* k_illegal = ";#$@&?~`'\"|";
constexpr unsigned char k_extra_delimiter = 0x85;

bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_token_delimiter(char c) { return c != '\0' && std::strchr(k_token_delimiters, c) != nullptr; }

} // namespace

size_t Parser::skip_spaces(size_t pos) const {
    while (is_space(at(pos))) ++pos;
    return pos;
}

void Parser::remove_end_spaces(std::string& text) {
    size_t end = text.size();
    while (end > 0 && is_space(text[end - 1])) --end;
    text.resize(end);
}

void Parser::replace_brackets(std::string& text, int mode) {
    for (char& c : text) {
        if (mode == 0) {
            if (c == '[') c = '(';
            if (c == ']') c = ')';
        } else {
            if (c == '(') c = '[';
            if (c == ')') c = ']';
        }
    }
}

const char* Parser::get_token() {
    m_token_kind = DELIMITER;
    m_token.clear();
    if (!m_scanning || at(m_input_pos) == '\0') return nullptr;
    m_input_pos = skip_spaces(m_input_pos);
    const char c = at(m_input_pos);
    const char next = at(m_input_pos + 1);

    if (c == '!' || c == '<' || c == '>' || c == '=') {
        char code = 0;
        size_t length = 1;
        if (next == '=') {
            length = 2;
            code = c == '!'   ? relational::not_equal
                   : c == '=' ? relational::equal
                   : c == '<' ? relational::less_equal
                              : relational::greater_equal;
        } else if (c == '<') {
            code = relational::less;
        } else if (c == '>') {
            code = relational::greater;
        }
        if (code) {
            m_token.assign(length, code);
            m_input_pos += length;
            return m_token.c_str();
        }
    }

    if (is_token_delimiter(c) || static_cast<unsigned char>(c) == k_extra_delimiter) {
        m_token = c;
        ++m_input_pos;
        return m_token.c_str();
    }
    if (c == '\0') return m_token.c_str(); // only trailing blanks were left

    if ((is_letter(c) || c == '_') && !(c == 'i' && !is_letter(next))) {
        // Digits, dots, control characters and bytes from 0x80 up all stay inside a name.
        size_t end = m_input_pos;
        while (at(end) != '\0' && !is_token_delimiter(at(end))) ++end;
        m_token.assign(m_expression, m_input_pos, end - m_input_pos);
        m_input_pos = end;
        m_token_kind = VARIABLE;
        return m_token.c_str();
    }

    if (is_digit(c) || c == 'i' || c == '.') {
        m_token_kind = NUMBER;
        if (c == 'i') {
            m_token = "i";
            ++m_input_pos;
            return m_token.c_str();
        }
        // The exponent is never part of the number: the evaluator reads it on its own.
        bool seen_point = false;
        for (char d = at(m_input_pos); !Mathematics::is_delim(d) && !is_letter(d); d = at(m_input_pos)) {
            if (d == '.') {
                if (seen_point) {
                    parser_exception(18);
                    return nullptr;
                }
                seen_point = true;
            }
            m_token += d;
            ++m_input_pos;
        }
        const char after = at(m_input_pos);
        if (m_token[0] == '.' && !is_digit(m_token.size() > 1 ? m_token[1] : '\0') &&
            (Mathematics::is_delim(after) || is_letter(after))) {
            parser_exception(19);
            return nullptr;
        }
        return m_token.c_str();
    }
    // Anything else ends the scan: an empty token that does not advance.
    return m_token.c_str();
}

void Parser::putback() {
    m_input_pos = m_token.size() <= m_input_pos ? m_input_pos - m_token.size() : 0;
}

void Parser::copy_token(char& kind, std::string& name) const {
    kind = m_token_kind;
    name = m_token;
}

void Parser::copy_token_back(char kind, const std::string& name) {
    m_token_kind = kind;
    m_token = name;
}

void Parser::insert_brackets(std::string& text, int mode) {
    // The scanner works on m_expression; other texts are scanned in its place for the duration.
    const bool own_text = &text == &m_expression;
    std::string saved;
    if (!own_text) std::swap(saved, m_expression), m_expression = text;
    const char open = mode == 1 ? '(' : '[';
    // Each opening bracket's partner, whatever the shapes: the first closing bracket behind it at
    // its own depth. Found in one pass, so that a line of many calls costs no more than its length.
    std::vector<size_t> partner(m_expression.size(), std::string::npos);
    std::vector<size_t> opened;
    for (size_t p = 0; p < m_expression.size(); ++p) {
        const char c = m_expression[p];
        if (c == '(' || c == '[') {
            opened.push_back(p);
        } else if ((c == ')' || c == ']') && !opened.empty()) {
            partner[opened.back()] = p;
            opened.pop_back();
        }
    }
    // Only a text with an '=' can declare a function; the test is made once, not for every name.
    const bool may_declare = m_expression.find('=') != std::string::npos;
    m_input_start = m_input_pos = 0;
    m_scanning = true;
    while (get_token() && !m_token.empty()) {
        if (m_token_kind != VARIABLE) continue;
        const size_t behind = m_input_pos;
        // A blank between the name and its bracket means no call: "sin (x)" stays as it is. A call
        // opened with the other shape keeps it, and its partner is still matched: "sin[x)" balances.
        if (at(behind) != '(' && at(behind) != '[') continue;
        const bool function = is_function(m_token.c_str()) || is_internal_function(m_token.c_str()) ||
                              is_library_function(m_token.c_str()) || (may_declare && is_function_declaration());
        m_input_pos = behind;
        if (!function) continue;
        if (at(behind) == open) m_expression[behind] = mode == 1 ? '[' : '(';
        const size_t close = partner[behind];
        if (close == std::string::npos) continue;
        if (mode == 1 && m_expression[close] == ')') m_expression[close] = ']';
        if (mode == 0 && m_expression[close] == ']') m_expression[close] = ')';
    }
    m_input_pos = 0;
    if (!own_text) text = m_expression, std::swap(saved, m_expression);
}

void Parser::check_valid_input(const std::string& text) {
    if (text.empty()) parser_exception(4);
    if (at(skip_spaces(0)) == '=') parser_exception(11);
    int depth = 0;
    for (const char c : text) {
        if (c != '\0' && std::strchr(k_illegal, c))
            special_exception("' %c ' is not a legitimate mathematical character!", c);
        // A byte beyond ASCII (a letter of another script, or text that is not UTF-8 at all) is
        // named by its value, since it may not print.
        if (static_cast<unsigned char>(c) >= 0x80) {
            char byte[8];
            std::snprintf(byte, sizeof byte, "0x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
            special_exception("The byte ' %s ' is not a legitimate mathematical character: expressions are written "
                              "in ASCII!",
                              byte);
        }
        if (c == '[') {
            ++depth;
        } else if (c == ']') {
            --depth;
        } else if (c == ',' && depth == 0) {
            if (comma_starts_incremental_declaration()) return;
            special_exception("A comma ' , ' can only be used to separate function parameters or define an "
                              "incremental variable!",
                              nullptr);
        }
    }
}

bool Parser::comma_starts_incremental_declaration() {
    // A line that starts as an assignment, "name = ...", is a declaration of an incremental
    // variable once a comma follows at the top level: its three parts are then checked by the
    // declaration itself, whose messages name what is wrong with them (a negative count, a limit
    // out of range). Any other comma at the top level belongs to nothing.
    const size_t saved = m_input_pos;
    m_input_pos = 0;
    const bool passes = get_token() && m_token_kind == VARIABLE && get_token() && m_token == "=";
    m_input_pos = saved;
    return passes;
}

void Parser::check_balanced_parens(const std::string& text) {
    int round = 0, square = 0;
    for (const char c : text) {
        round += c == '(' ? 1 : (c == ')' ? -1 : 0);
        square += c == '[' ? 1 : (c == ']' ? -1 : 0);
    }
    if (round != 0) parser_exception(2);
    else if (square != 0) parser_exception(30);
}

long Parser::get_token(const char* source, std::string& out, char& kind) {
    m_error_flag = false;
    SetSolvingMap(true);
    long behind = -1;
    if (source) {
        m_expression = source;
        m_input_start = m_input_pos = 0;
        m_scanning = true;
        try {
            if (get_token() && !m_error_flag) {
                out = m_token;
                kind = m_token_kind;
                behind = static_cast<long>(m_input_pos);
            }
        } catch (const EvaluationAborted&) {
            behind = -1;
        }
    }
    reset();
    SetSolvingMap(false);
    return behind;
}

bool Parser::find_token(const char* text, const char* name, char) {
    m_error_flag = false;
    SetSolvingMap(true);
    bool found = false;
    if (text && name) {
        m_expression = text;
        m_input_start = m_input_pos = 0;
        m_scanning = true;
        try {
            while (!found && get_token() && !m_token.empty() && !m_error_flag)
                found = m_token_kind == VARIABLE && m_token == name;
        } catch (const EvaluationAborted&) {
            found = false;
        }
    }
    reset();
    SetSolvingMap(false);
    return found;
}

} // namespace quorvex::engine
