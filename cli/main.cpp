// quorvex-cli: the command-line face of the engine, for batch and interactive use.
#include "cli_options.h"
#include "commands.h"
#include "data_folders.h"
#include "line_evaluator.h"
#include "parser_setup.h"

#include "engine/parser.h"
#include "functions/builtin_functions.h"
#include "store/user_library.h"

#include <editline/readline.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

namespace {

constexpr const char* k_version = "quorvex-cli 0.1.0";

class StderrReporter : public quorvex::engine::Reporter {
public:
    void report(std::string_view text, std::string_view caption, quorvex::engine::MessageKind) override {
        std::cerr << caption << ": " << text << '\n';
    }
};

// Splits text into lines; a CR before the LF belongs to the line end, not to the line.
template <typename Handler>
bool for_each_line(std::istream& in, Handler&& handle) {
    bool all_ok = true;
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        all_ok = handle(line) && all_ok;
    }
    return all_ok;
}

bool run_interactive(quorvex::cli::LineEvaluator& evaluator) {
    std::cout << k_version << ": type an expression and press Enter; :quit or Ctrl-D ends.\n";
    bool all_ok = true;
    while (char* raw = readline("> ")) {
        std::string line(raw);
        std::free(raw);
        if (line == ":quit" || line == ":q") break;
        if (line.find_first_not_of(" \t") == std::string::npos) continue;
        add_history(line.c_str());
        all_ok = evaluator.run(line) && all_ok;
    }
    return all_ok;
}

} // namespace

int main(int argc, char** argv) {
    std::string usage_error;
    const auto options = quorvex::cli::parse_options(argc, argv, usage_error);
    if (!options) {
        std::cerr << "quorvex-cli: " << usage_error << "\n" << quorvex::cli::usage_text();
        return 2;
    }
    if (options->help) {
        std::cout << quorvex::cli::usage_text();
        return 0;
    }
    if (options->version) {
        std::cout << k_version << '\n';
        return 0;
    }

    StderrReporter reporter;
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
    parser.set_reporter(&reporter);
    // The user library is made on first use; if that fails, the Parser says the file is missing.
    const std::string data_dir = options->data_dir.empty() ? quorvex::cli::default_data_dir() : options->data_dir;
    if (!data_dir.empty()) quorvex::store::ensure_user_library(data_dir);
    parser.set_library_dirs(options->library_dir.empty() ? quorvex::cli::default_library_dir() : options->library_dir,
                            data_dir);
    quorvex::cli::apply_answer_options(parser, *options);
    if (!options->command.empty()) return quorvex::cli::run_command(*options, parser, std::cout, std::cerr);

    quorvex::cli::LineEvaluator evaluator(*options, parser, std::cout, std::cerr);
    bool all_ok = true;
    for (const auto& line : options->eval_lines) all_ok = evaluator.run(line) && all_ok;

    for (const auto& path : options->files) {
        std::ifstream file;
        if (path != "-") file.open(path, std::ios::binary);
        if (path != "-" && !file) {
            // A bare word that opens nothing was most likely meant as a command.
            const bool bare_word = path.find_first_of("/.") == std::string::npos;
            std::cerr << "quorvex-cli: cannot open " << path
                      << (bare_word ? " (nor is it a command, see --help)" : "") << '\n';
            return 2;
        }
        std::istream& in = path == "-" ? std::cin : file;
        all_ok = for_each_line(in, [&](const std::string& line) { return evaluator.run(line); }) && all_ok;
    }

    if (options->eval_lines.empty() && options->files.empty()) {
        if (isatty(STDIN_FILENO))
            all_ok = run_interactive(evaluator) && all_ok;
        else
            all_ok = for_each_line(std::cin, [&](const std::string& line) { return evaluator.run(line); }) && all_ok;
    }
    return all_ok ? 0 : 1;
}
