// quorvex-cli: the command-line face of the engine, for batch and interactive use.
#include "check_files.h"
#include "cli_options.h"
#include "commands.h"
#include "data_folders.h"
#include "document_files.h"
#include "interactive.h"
#include "line_evaluator.h"
#include "line_reader.h"
#include "parser_setup.h"

#include "engine/parser.h"
#include "functions/builtin_functions.h"
#include "document/app_settings.h"
#include "store/atomic_write.h"
#include "store/ini_file.h"
#include "store/user_library.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
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

// Every line of `in` through the evaluator, its errors named "SOURCE:LINE". A line too long to
// read is an error of its own; the lines after it go on.
bool run_lines(quorvex::cli::LineEvaluator& evaluator, quorvex::cli::LineReader& reader, const std::string& source,
               bool* line_dropped = nullptr) {
    bool all_ok = true;
    std::string line;
    for (;;) {
        const auto read = reader.next(line);
        if (read == quorvex::cli::LineReader::Read::end) break;
        const std::string where = source + ":" + std::to_string(reader.number());
        if (read != quorvex::cli::LineReader::Read::line) {
            std::cout.flush();
            std::cerr << where << ": error: " << quorvex::cli::too_long_message(reader, read) << '\n';
            all_ok = false;
            if (line_dropped) *line_dropped = true;
            continue;
        }
        all_ok = evaluator.run(line, where) && all_ok;
    }
    return all_ok;
}

bool run_lines(quorvex::cli::LineEvaluator& evaluator, std::istream& in, const std::string& source) {
    quorvex::cli::LineReader reader(in);
    return run_lines(evaluator, reader, source);
}

// Only a regular file or a pipe is read as lines: a folder has none, and a device may never end.
bool readable_as_lines(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return true; // opening it tells what is wrong
    if (S_ISREG(info.st_mode) || S_ISFIFO(info.st_mode)) return true;
    std::cerr << "quorvex-cli: " << path << " is "
              << (S_ISDIR(info.st_mode) ? "a folder" : S_ISSOCK(info.st_mode) ? "a socket" : "a device")
              << ", not a file of lines\n";
    return false;
}

// A file processed line by line and written back as it stands afterwards: the lines as the
// editor leaves them, the file's own line ends kept (CR LF when its first line has one).
bool process_in_place(const quorvex::cli::CliOptions& options, quorvex::engine::Parser& parser,
                      const std::string& path, int& status) {
    std::string bytes;
    if (!readable_as_lines(path)) {
        status = 2;
        return false;
    }
    if (!quorvex::store::read_whole_file(path, bytes)) {
        std::cerr << "quorvex-cli: cannot open " << path << '\n';
        status = 2;
        return false;
    }
    const bool final_line_end = !bytes.empty() && (bytes.back() == '\n' || bytes.back() == '\r');
    std::istringstream in(bytes);
    std::ostringstream out;
    quorvex::cli::LineEvaluator evaluator(options, parser, out, std::cerr);
    quorvex::cli::LineReader reader(in);
    bool line_dropped = false;
    const bool all_ok = run_lines(evaluator, reader, path, &line_dropped);
    if (line_dropped) {
        std::cerr << "quorvex-cli: " << path << " was not written back: a line of it could not be read\n";
        status = 2;
        return false;
    }
    std::string text = out.str();
    if (!final_line_end && !text.empty()) text.pop_back();
    // The file's own line ends are kept: those of its first line.
    const std::string line_end = reader.first_line_end().empty() ? "\n" : reader.first_line_end();
    if (line_end != "\n") {
        std::string converted;
        for (const char c : text) {
            if (c == '\n') converted += line_end;
            else converted += c;
        }
        text.swap(converted);
    }
    std::string error;
    if (text != bytes && !quorvex::store::write_file_atomically(path, text, &error)) {
        std::cerr << "quorvex-cli: " << path << ": " << error << '\n';
        status = 2;
        return false;
    }
    return all_ok;
}

} // namespace

int main(int argc, char** argv) {
    std::string usage_error;
    const auto options = quorvex::cli::parse_options(argc, argv, usage_error);
    if (!options) {
        // The one line that says what is wrong; the whole help is one option away.
        std::cerr << "quorvex-cli: " << usage_error << "\n(quorvex-cli --help lists every option)\n";
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
    // The system data (statistics tables) lies beside the installed library, else in the source tree.
    // The user library is made on first use; if that fails, the Parser says the file is missing.
    const std::string data_dir = options->data_dir.empty() ? quorvex::cli::default_data_dir() : options->data_dir;
    if (!data_dir.empty()) quorvex::store::ensure_user_library(data_dir);
    const auto prepare = [&](quorvex::engine::Parser& engine) {
        engine.set_reporter(&reporter);
        engine.set_library_dirs(options->library_dir.empty() ? quorvex::cli::default_library_dir() : options->library_dir,
                                data_dir);
        // The user's settings first (a missing file gives the defaults), the command line over them.
        if (!data_dir.empty()) {
            const quorvex::store::IniFile settings(quorvex::document::settings_path(data_dir));
            quorvex::document::ApplyToNewParser(quorvex::document::ReadAppSettings(settings), engine);
            quorvex::document::ReadGlobalSettings(settings, engine);
        }
        quorvex::cli::apply_answer_options(engine, *options);
    };
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions(), quorvex::cli::default_library_dir() + "/");
    prepare(parser);
    if (!options->command.empty()) return quorvex::cli::run_command(*options, parser, std::cout, std::cerr);
    if (options->check) {
        // Each file is checked on its own, from the engine as the settings leave it.
        int worst = 0;
        for (const auto& path : options->files) {
            if (path != "-" && !readable_as_lines(path)) return 2;
            quorvex::engine::Parser checking(&quorvex::functions::builtin_functions(),
                                             quorvex::cli::default_library_dir() + "/");
            prepare(checking);
            const int status = quorvex::cli::check_file(*options, checking, reporter, path, std::cout, std::cerr);
            if (status == 2) return 2;
            worst = std::max(worst, status);
        }
        return worst;
    }
    if (!options->dump.empty()) return quorvex::cli::dump_document(parser, reporter, options->dump, std::cout, std::cerr);

    quorvex::cli::LineEvaluator evaluator(*options, parser, std::cout, std::cerr);
    bool all_ok = true;
    for (size_t i = 0; i < options->eval_lines.size(); ++i)
        all_ok = evaluator.run(options->eval_lines[i], "-e:" + std::to_string(i + 1)) && all_ok;

    int status = 0;
    for (const auto& path : options->files) {
        if (quorvex::cli::is_document_path(path) && !options->answers) {
            const int document_status =
                quorvex::cli::process_document(*options, parser, reporter, path, std::cout, std::cerr);
            if (document_status == 2) return 2;
            all_ok = document_status == 0 && all_ok;
            continue;
        }
        if (options->in_place) {
            all_ok = process_in_place(*options, parser, path, status) && all_ok;
            if (status != 0) return status;
            continue;
        }
        if (path != "-" && !readable_as_lines(path)) return 2;
        std::ifstream file;
        if (path != "-") file.open(path, std::ios::binary);
        if (path != "-" && !file) {
            // A bare word that opens nothing was most likely meant as a command.
            const bool bare_word = path.find_first_of("/.") == std::string::npos;
            std::cerr << "quorvex-cli: cannot open " << path
                      << (bare_word ? " (nor is it a command, see --help)" : "") << '\n';
            return 2;
        }
        all_ok = run_lines(evaluator, path == "-" ? std::cin : file, path) && all_ok;
    }

    if (options->interactive || (options->eval_lines.empty() && options->files.empty())) {
        if (options->interactive || isatty(STDIN_FILENO))
            all_ok = quorvex::cli::run_interactive(evaluator, parser, k_version) && all_ok;
        else
            all_ok = run_lines(evaluator, std::cin, "-") && all_ok;
    }
    return all_ok ? 0 : 1;
}
