#include "line_evaluator.h"

namespace quorvex::cli {

namespace {

bool is_blank(const std::string& line) { return line.find_first_not_of(" \t\r\n\v\f") == std::string::npos; }

} // namespace

std::string one_line(std::string text) {
    for (char& c : text)
        if (c == '\n' || c == '\r') c = ' ';
    return text;
}

LineEvaluator::LineEvaluator(const CliOptions& options, engine::Parser& parser, std::ostream& out,
                             std::ostream& err)
    : m_options(options), m_parser(parser), m_out(out), m_err(err),
      m_lines(parser, {options.method, options.fraction}) {}

bool LineEvaluator::run(const std::string& line, const std::string& where) {
    const bool ok = m_options.answers ? run_as_expression(line) : run_as_editor_line(line, where);
    m_out.flush();
    return ok;
}

bool LineEvaluator::run_as_expression(const std::string& whole_line) {
    // A "//" comment is no part of the expression, as in the editor.
    const size_t comment = document::find_comment(whole_line);
    const std::string line = comment == std::string::npos ? whole_line : whole_line.substr(0, comment);
    // A blank line is no expression to evaluate: the editor leaves it alone, and so do we.
    if (is_blank(line)) {
        m_out << '\n';
        return true;
    }
    const char* answer = m_parser.eval_exp(line, true, true, m_options.fraction);
    if (m_parser.IsAnError()) {
        const char* message = m_parser.GetLastError();
        m_out << one_line(std::string("error: ") + (message ? message : "evaluation failed")) << '\n';
        return false;
    }
    std::string text = answer ? answer : "";
    if (text.rfind(" = ", 0) == 0) text.erase(0, 3);
    if (!text.empty()) m_last_answer = text;
    m_out << text << '\n';
    return true;
}

bool LineEvaluator::run_as_editor_line(const std::string& line, const std::string& where) {
    const document::LineOutcome outcome = m_lines.process(line);
    m_out << outcome.text << '\n';
    if (outcome.answered) m_last_answer = m_lines.LastAnswer();
    if (!outcome.error) return true;
    m_out.flush(); // the line before its message, when both go to one terminal
    m_err << (where.empty() ? "" : where + ": ") << "error: " << one_line(outcome.message) << '\n';
    return false;
}

} // namespace quorvex::cli
