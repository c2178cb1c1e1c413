#include "interactive.h"
#include "line_reader.h"

#include <editline/readline.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>

namespace quorvex::cli {

namespace {

constexpr const char* k_help =
    "Type an expression, an assignment (x = 2, or x = 0, 10, 1 for a range) or a function\n"
    "(f[x] = x^2) and press Enter. Several statements go on one line with ';', and text behind\n"
    "\"//\" is a comment. The line is shown as the math editor leaves it, with its answer.\n"
    "  :vars     the variables and their values\n"
    "  :funcs    the functions\n"
    "  :last     the last answer, shown and put in the history: Up edits it\n"
    "  :history  the lines of this session (Up and Down recall them too)\n"
    "  :precise  whether precise arithmetic is on; :precise on|off switches it (values\n"
    "            carry about 34 digits between steps, each answer correctly rounded)\n"
    "  :help     this text\n"
    "  :quit     end the session (also Ctrl-D)\n";

bool is_blank(const std::string& line) { return line.find_first_not_of(" \t") == std::string::npos; }

std::string trimmed(const std::string& line) {
    const size_t first = line.find_first_not_of(" \t");
    const size_t last = line.find_last_not_of(" \t");
    return first == std::string::npos ? std::string() : line.substr(first, last - first + 1);
}

} // namespace

InteractiveSession::InteractiveSession(LineEvaluator& evaluator, engine::Parser& parser, std::ostream& out)
    : m_evaluator(evaluator), m_parser(parser), m_out(out) {}

InteractiveSession::Next InteractiveSession::handle(const std::string& line, std::string& recall) {
    recall.clear();
    if (is_blank(line)) return Next::more;
    const std::string command = trimmed(line);
    if (command[0] != ':') {
        m_history.push_back(line);
        m_all_ok = m_evaluator.run(line, "line " + std::to_string(m_history.size())) && m_all_ok;
        return Next::more;
    }
    if (command == ":quit" || command == ":q") return Next::quit;
    if (command == ":help" || command == ":h") {
        m_out << k_help;
    } else if (command == ":vars") {
        list_variables();
    } else if (command == ":funcs") {
        list_functions();
    } else if (command == ":history") {
        list_history();
    } else if (command == ":precise" || command.rfind(":precise ", 0) == 0 || command.rfind(":precise\t", 0) == 0) {
        precise(trimmed(command.substr(8)));
    } else if (command == ":last") {
        if (m_evaluator.last_answer().empty())
            m_out << "There is no answer yet: compute an expression first.\n";
        else
            recall = m_evaluator.last_answer();
    } else {
        m_out << "Unknown command " << command << "; :help lists the commands.\n";
    }
    m_out.flush();
    return Next::more;
}

void InteractiveSession::precise(const std::string& argument) {
    if (argument == "on" || argument == "off") m_parser.set_precise(argument == "on");
    else if (!argument.empty()) {
        m_out << ":precise takes on or off.\n";
        return;
    }
    m_out << "Precise arithmetic is " << (m_parser.precise() ? "on" : "off") << ".\n";
}

void InteractiveSession::list_variables() {
    if (m_parser.variable_count() == 0) {
        m_out << "No variables yet.\n";
        return;
    }
    const int precision = m_parser.answer_format().precision;
    for (int i = 0; i < m_parser.variable_count(); ++i) m_out << m_parser.get_var_str(i, precision, true) << '\n';
}

void InteractiveSession::list_functions() {
    if (m_parser.function_count() == 0) {
        m_out << "No functions yet.\n";
        return;
    }
    for (int i = 0; i < m_parser.function_count(); ++i) m_out << m_parser.get_func_str(i) << '\n';
}

void InteractiveSession::list_history() {
    for (size_t i = 0; i < m_history.size(); ++i) m_out << (i + 1) << "  " << m_history[i] << '\n';
}

namespace {

// The recalled text becomes the newest history entry: Up brings it to the line to edit.
void recall_into_history(const std::string& text) {
    if (text.empty()) return;
    add_history(text.c_str());
    std::cout << text << "   (Up edits it)\n";
}

} // namespace

bool run_interactive(LineEvaluator& evaluator, engine::Parser& parser, const char* version) {
    std::cout << version << ": type an expression and press Enter; :help lists the commands, :quit ends.\n";
    InteractiveSession session(evaluator, parser, std::cout);
    std::string recall;
    // Line editing is for a terminal; piped input is read as plain lines (the editing library
    // is not made for long or binary input that does not come from a keyboard).
    const bool terminal = isatty(STDIN_FILENO);
    LineReader piped(std::cin);
    std::string line;
    const auto next_line = [&]() -> bool {
        if (!terminal) {
            std::cout << "> " << std::flush;
            for (;;) {
                const LineReader::Read read = piped.next(line);
                if (read == LineReader::Read::line) return true;
                if (read == LineReader::Read::end) return false;
                std::cerr << "line " << piped.number() << ": error: " << too_long_message(piped, read) << '\n';
            }
        }
        char* raw = readline("> ");
        if (!raw) return false;
        line = raw;
        std::free(raw);
        return true;
    };
    while (next_line()) {
        if (!is_blank(line)) add_history(line.c_str());
        if (session.handle(line, recall) == InteractiveSession::Next::quit) break;
        recall_into_history(recall);
    }
    return session.all_ok();
}

} // namespace quorvex::cli
