// The parser's own error state and the operations that raise errors in every layer.
#include "error_tables.h"
#include "evaluation_aborted.h"
#include "parser.h"
#include "text_format.h"

namespace quorvex::engine {

namespace {
constexpr const char* k_parser_caption = "Parser Error";
}

void Parser::set_reporter(Reporter* reporter) {
    m_reporter = reporter;
    m_math.set_reporter(reporter);
    m_statistics.set_reporter(reporter);
    m_deviates.set_reporter(reporter);
}

bool Parser::IsAnError() const {
    return m_error_flag || m_math.error_flag() || m_statistics.error_flag() || m_deviates.error_flag();
}

const char* Parser::GetLastError() const {
    if (m_last_error) return m_last_error->c_str();
    if (const char* text = m_statistics.GetLastError()) return text;
    if (const char* text = m_math.GetLastError()) return text;
    return m_deviates.GetLastError();
}

void Parser::ClearLastError() {
    m_error_code = -1;
    m_error_flag = false;
    m_unknown_name = false;
    m_last_error.reset();
    m_math.ClearLastError();
    m_statistics.ClearLastError();
    m_deviates.ClearLastError();
}

void Parser::SetLastError(const char* text, int code) {
    m_error_flag = true;
    m_error_code = code;
    if (text)
        m_last_error = text;
    else
        m_last_error.reset();
}

void Parser::SetSilentMode(bool silent) {
    m_silent = silent;
    m_math.set_silent(silent);
    m_statistics.set_silent(silent);
    m_deviates.set_silent(silent);
}

void Parser::SetSolvingMap(bool on) {
    m_solving_map = on;
    m_math.set_solving_map(on);
    m_statistics.set_solving_map(on);
    m_deviates.set_solving_map(on);
}

// Shared tail of every raise: a running map gets the error back once, anything else unwinds.
static void finish_raise(Parser& parser, bool solving_map) {
    if (!solving_map) throw EvaluationAborted{};
    parser.SetSolvingMap(false);
}

void Parser::parser_exception(int code) {
    SetLastError(parser_messages()[static_cast<size_t>(code)], code);
    if (!m_silent && m_reporter) m_reporter->report(*m_last_error, k_parser_caption, MessageKind::Warning);
    finish_raise(*this, m_solving_map);
}

void Parser::mathlib_exception(int code, int function_index, const char* text) {
    m_error_flag = true;
    m_error_code = code;
    const char* known = function_index >= 0 ? get_function_name(function_index) : nullptr;
    const char* name = known ? known : "";
    const char* row = mathlib_messages()[static_cast<size_t>(code)];
    // Formatted before last_error is replaced, since `text` may be the last error itself.
    std::string message = (text && *text) ? format_text(row, text, name) : format_text(row, name);
    m_last_error = std::move(message);
    if (!m_silent && m_reporter) m_reporter->report(*m_last_error, "MATH LIBRARY ERROR", MessageKind::Warning);
    finish_raise(*this, m_solving_map);
}

void Parser::special_exception(const char* format, const char* argument) {
    if (!format) return;
    m_last_error = argument ? format_text(format, argument) : std::string(format);
    special_exception();
}

void Parser::special_exception(const char* format, char c) {
    // Records only: the character is reported later, if at all, when the evaluator trips over it.
    m_last_error = format_text(format, c);
}

void Parser::special_exception() {
    m_error_flag = true;
    if (!m_silent && m_reporter && m_last_error)
        m_reporter->report(*m_last_error, k_parser_caption, MessageKind::Warning);
    finish_raise(*this, m_solving_map);
}

void Parser::mapper_exception(int code, bool quiet) {
    m_error_flag = true;
    m_last_error = mapper_messages()[static_cast<size_t>(code)];
    if (!quiet && m_reporter) m_reporter->report(*m_last_error, "EXPRESSION SOLVER", MessageKind::Warning);
    SetSolvingMap(false);
}

void Parser::warn_insignificant_mode() {
    if (m_statistics.silent() || !m_mode_warning || !m_reporter) return;
    const bool again = m_reporter->ask(
        "You are using a statistically insignificant number of data points to compute the mode with variable "
        "data, therefore the results may be inaccurate.\r\n\r\n If you do not want to see this message again, "
        "click the no button.",
        "Statistics Warning");
    if (!again) m_mode_warning = false;
}

void Parser::report_unknown_name(const std::string& name) {
    m_unknown_name = true;
    m_error_flag = true;
    m_last_error = format_text("' %s ' could not be identified as a variable or function.", name.c_str());
    if (!m_silent && m_reporter) m_reporter->report(*m_last_error, "VARIABLE", MessageKind::Question);
    finish_raise(*this, m_solving_map);
}

} // namespace quorvex::engine
