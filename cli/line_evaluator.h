#pragma once
#include "cli_options.h"

#include "engine/parser.h"

#include <ostream>
#include <string>

namespace quorvex::cli {

// Runs input lines through one Parser and prints each as the options ask.
class LineEvaluator {
public:
    LineEvaluator(const CliOptions& options, engine::Parser& parser, std::ostream& out, std::ostream& err);

    // Evaluates one line and prints its result; returns false when the line failed.
    bool run(const std::string& line);

private:
    const CliOptions& m_options;
    engine::Parser& m_parser;
    std::ostream& m_out;
    std::ostream& m_err;
};

} // namespace quorvex::cli
