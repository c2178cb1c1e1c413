#pragma once
#include "line_evaluator.h"

#include "engine/parser.h"

#include <ostream>
#include <string>
#include <vector>

namespace quorvex::cli {

// What a line typed at the prompt means: a session command such as ":vars", or a line for the
// engine. Kept apart from the terminal so that it can be driven by tests.
class InteractiveSession {
public:
    InteractiveSession(LineEvaluator& evaluator, engine::Parser& parser, std::ostream& out);

    enum class Next { more, quit };
    // Handles one typed line; `recall` receives a text for the user to edit next (":last").
    Next handle(const std::string& line, std::string& recall);
    // False once a line of the session failed.
    bool all_ok() const { return m_all_ok; }

private:
    void list_variables();
    void list_functions();
    void list_history();
    // ":precise" tells whether precise arithmetic is on; with "on" or "off" it switches first.
    void precise(const std::string& argument);

    LineEvaluator& m_evaluator;
    engine::Parser& m_parser;
    std::ostream& m_out;
    std::vector<std::string> m_history;
    bool m_all_ok = true;
};

// The prompt on a terminal, with line editing and history, until ":quit" or the end of input.
bool run_interactive(LineEvaluator& evaluator, engine::Parser& parser, const char* version);

} // namespace quorvex::cli
