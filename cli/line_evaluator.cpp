#include "line_evaluator.h"

namespace quorvex::cli {

namespace {

bool is_blank(const std::string& line) { return line.find_first_not_of(" \t\r\n\v\f") == std::string::npos; }

} // namespace

LineEvaluator::LineEvaluator(const CliOptions& options, engine::Parser& parser, std::ostream& out,
                             std::ostream& err)
    : m_options(options), m_parser(parser), m_out(out), m_err(err) {}

bool LineEvaluator::run(const std::string& line) {
    // A blank line is no expression to evaluate: the editor leaves it alone, and so do we.
    if (is_blank(line)) {
        m_out << (m_options.answers ? "" : line) << '\n';
        return true;
    }
    const char* answer = m_parser.eval_exp(line.c_str(), true, true, m_options.fraction);
    const bool failed = m_parser.IsAnError();
    const char* message = failed ? m_parser.GetLastError() : nullptr;
    std::string error_text = std::string("error: ") + (message ? message : "evaluation failed");
    // One output line per input line: a message that spans lines is joined with a blank.
    for (char& c : error_text)
        if (c == '\n' || c == '\r') c = ' ';
    if (m_options.answers) {
        if (failed) {
            m_out << error_text << '\n';
        } else {
            std::string text = answer ? answer : "";
            if (text.rfind(" = ", 0) == 0) text.erase(0, 3);
            m_out << text << '\n';
        }
    } else {
        m_out << line << (failed ? "" : answer) << '\n';
        if (failed) m_err << error_text << '\n';
    }
    m_out.flush();
    return !failed;
}

} // namespace quorvex::cli
