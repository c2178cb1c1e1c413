// How a built-in entry reads its parameters: full expressions separated by commas, with a check
// and a message of its own for every way a call can be malformed.
#include "parser.h"

#include "evaluation_aborted.h"

#include <cctype>
#include <strings.h>

namespace quorvex::engine {

void Parser::check_no_right_bracket(int code, int function) {
    if (m_token == "]" || m_token.empty()) mathlib_exception(code, function);
}
void Parser::check_right_bracket(int code, int function) {
    if (m_token != "]") mathlib_exception(code, function);
}
void Parser::check_no_right_brace(int code, int function) {
    if (m_token == "}" || m_token.empty()) mathlib_exception(code, function);
}
void Parser::check_left_brace(int code, int function) {
    if (m_token != "{") mathlib_exception(code, function);
}
void Parser::check_comma(int code, int function) {
    if (m_token != ",") mathlib_exception(code, function);
}
void Parser::check_no_comma(int code, int function) {
    if (m_token == ",") mathlib_exception(code, function);
}
void Parser::check_no_other_parameter(int code, int function) {
    if (m_token == ",") mathlib_exception(code, function);
}
void Parser::check_more(int code, int function) {
    if (m_token.empty()) mathlib_exception(code, function);
}

bool Parser::check_no_imag_compnts(int code, int function, const complex& a, const complex& b, const complex& c,
                                   const complex& d, const complex& e) {
    if (a.imag() == 0 && b.imag() == 0 && c.imag() == 0 && d.imag() == 0 && e.imag() == 0) return false;
    mathlib_exception(code, function);
    return true;
}

bool Parser::check_pos_integers(int function, const complex& a, const complex& b) {
    for (const complex& z : {a, b}) {
        if (z.real() < 0 || !Mathematics::is_integer(z.real())) {
            mathlib_exception(19, function);
            return true;
        }
    }
    return false;
}

void Parser::get_one_par(std::ostringstream& out, complex& a, int function) {
    check_no_right_bracket(3, function);
    eval_exp1(a, out);
    check_no_other_parameter(8, function);
}

namespace {
// Codes for a missing parameter, by the number of parameters the function takes.
constexpr int k_missing_code[] = {0, 3, 4, 5, 6, 7};
} // namespace

// Reads `count` parameters, each a full expression, with the checks between them.
static void read_parameters(Parser& parser, std::ostringstream& out, complex* const* values, int count,
                            int function) {
    const int missing = k_missing_code[count];
    for (int i = 0; i < count; ++i) {
        parser.check_no_right_bracket(i == 0 ? 2 : missing, function);
        parser.read_expression(*values[i], out);
        if (i + 1 == count) break;
        parser.check_no_right_bracket(missing, function);
        parser.check_comma(1, function);
        parser.next_token();
        parser.check_no_comma(9, function);
    }
}

void Parser::get_two_pars(std::ostringstream& out, complex& a, complex& b, int function) {
    complex* values[] = {&a, &b};
    read_parameters(*this, out, values, 2, function);
}
void Parser::get_three_pars(std::ostringstream& out, complex& a, complex& b, complex& c, int function) {
    complex* values[] = {&a, &b, &c};
    read_parameters(*this, out, values, 3, function);
}
void Parser::get_four_pars(std::ostringstream& out, complex& a, complex& b, complex& c, complex& d, int function) {
    complex* values[] = {&a, &b, &c, &d};
    read_parameters(*this, out, values, 4, function);
}
void Parser::get_five_pars(std::ostringstream& out, complex& a, complex& b, complex& c, complex& d, complex& e,
                           int function) {
    complex* values[] = {&a, &b, &c, &d, &e};
    read_parameters(*this, out, values, 5, function);
}

void Parser::get_one_real_par(std::ostringstream& out, complex& a, int function) {
    get_one_par(out, a, function);
    check_no_imag_compnts(13, function, a);
}
void Parser::get_two_real_pars(std::ostringstream& out, complex& a, complex& b, int function) {
    get_two_pars(out, a, b, function);
    check_no_imag_compnts(13, function, a, b);
}
void Parser::get_three_real_pars(std::ostringstream& out, complex& a, complex& b, complex& c, int function) {
    get_three_pars(out, a, b, c, function);
    check_no_imag_compnts(13, function, a, b, c);
}
void Parser::get_four_real_pars(std::ostringstream& out, complex& a, complex& b, complex& c, complex& d,
                                int function) {
    get_four_pars(out, a, b, c, d, function);
    check_no_imag_compnts(13, function, a, b, c, d);
}
void Parser::get_five_real_pars(std::ostringstream& out, complex& a, complex& b, complex& c, complex& d, complex& e,
                                int function) {
    get_five_pars(out, a, b, c, d, e, function);
    check_no_imag_compnts(13, function, a, b, c, d, e);
    check_no_other_parameter(8, function);
}
void Parser::get_two_real_pos_pars(std::ostringstream& out, complex& a, complex& b, int function) {
    get_two_pars(out, a, b, function);
    if (!check_no_imag_compnts(13, function, a, b)) check_pos_integers(function, a, b);
}

bool Parser::line_begins_with(const char* name) const {
    const size_t start = skip_spaces(m_input_start);
    const size_t length = std::char_traits<char>::length(name);
    return m_expression.size() >= start + length &&
           strncasecmp(m_expression.c_str() + start, name, length) == 0;
}

bool Parser::at_last_bracket() const { return m_token == "]" && at(skip_spaces(m_input_pos)) == '\0'; }

} // namespace quorvex::engine

namespace quorvex::engine {

void Parser::get_data(std::ostringstream& out, std::vector<long double>& list, int function) {
    check_left_brace(12, function);
    check_no_right_brace(10, function);
    // The raw text of the braces. The byte right behind "{" is taken unseen, so "{}" runs on
    // past its brace to the end of the text.
    // An empty list is a list without points, not a list without its brace.
    if (at(skip_spaces(m_input_pos)) == '}') {
        mathlib_exception(10, function);
        return;
    }
    size_t end = m_input_pos;
    if (at(end) != '\0') ++end;
    while (at(end) != '\0' && at(end) != '}') ++end;
    if (at(end) == '\0') {
        mathlib_exception(12, function);
        return;
    }
    const char behind = at(end + 1);
    if (behind != ']' && behind != ',') {
        mathlib_exception(11, function);
        return;
    }
    const std::string inside = m_expression.substr(m_input_pos, end - m_input_pos);
    get_token();
    // A drive or a backslash names a file, and so does a slash in front, as paths are written on
    // Linux; otherwise a name with a point and no comma does ({data.txt}, but not {x.y, 2}).
    const size_t first = inside.find_first_not_of(" \t");
    const bool names_a_file = inside.find_first_of(":\\") != std::string::npos ||
                              (first != std::string::npos && inside[first] == '/') ||
                              (inside.find('.') != std::string::npos && inside.find(',') == std::string::npos &&
                               m_token_kind == VARIABLE);
    if (names_a_file) {
        std::string name = inside;
        remove_end_spaces(name);
        name.erase(0, name.find_first_not_of(" \t"));
        if (!get_file_data(list, name.c_str(), function)) {
            // The reader has told what went wrong; the evaluation ends here.
            if (!m_solving_map) throw EvaluationAborted{};
            SetSolvingMap(false);
            return;
        }
        m_input_pos = end + 1;
        get_token();
        return;
    }
    get_comline_data(out, list, function);
    get_token();
}

void Parser::get_comline_data(std::ostringstream& out, std::vector<long double>& list, int function) {
    bool first = true;
    while (m_token != "}") {
        check_no_right_bracket(11, function);
        complex point;
        eval_exp1(point, out);
        check_no_imag_compnts(14, function, point);
        list.push_back(point.real());
        if (first) check_no_right_brace(10, function); // a list holds two points at least
        first = false;
        check_no_right_bracket(11, function);
        if (m_token != "}") {
            check_more(0, function);
            check_comma(1, function);
            get_token();
            check_no_comma(9, function);
            check_no_right_brace(9, function);
        }
        record_instruction(196);
        if (IsAnError()) return; // an error reported without unwinding ends the list
    }
}

} // namespace quorvex::engine
