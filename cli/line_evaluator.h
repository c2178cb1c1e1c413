#pragma once
#include "cli_options.h"

#include "document/line_processor.h"
#include "engine/parser.h"

#include <ostream>
#include <string>

namespace quorvex::cli {

// Runs input lines through one Parser and prints each as the options ask: by default the line as
// the math editor leaves it, with --answers the answer of the line taken as one expression.
class LineEvaluator {
public:
    LineEvaluator(const CliOptions& options, engine::Parser& parser, std::ostream& out, std::ostream& err);

    // Processes one line and prints it; `where` ("data.txt:3") names it in an error message.
    // Returns false when the line failed.
    bool run(const std::string& line, const std::string& where = {});
    // The text behind "= " of the last answer shown, empty before the first.
    const std::string& last_answer() const { return m_last_answer; }

private:
    bool run_as_expression(const std::string& line);
    bool run_as_editor_line(const std::string& line, const std::string& where);

    const CliOptions& m_options;
    engine::Parser& m_parser;
    std::ostream& m_out;
    std::ostream& m_err;
    document::LineProcessor m_lines;
    std::string m_last_answer;
};

// A message on one line: line breaks become blanks.
std::string one_line(std::string text);

} // namespace quorvex::cli
