#include "cli_options.h"

#include <cstdlib>
#include <cstring>

namespace quorvex::cli {

const char* usage_text() {
    return "Usage: quorvex-cli [OPTIONS] [FILE...]\n"
           "Evaluates lines of Quorvex expressions: the -e lines, then the files, then standard input\n"
           "when there is neither. All lines of one call share their variables.\n"
           "\n"
           "  -e, --eval TEXT     evaluate TEXT as one line (repeatable)\n"
           "      --answers       print one line per input line: the answer, an empty line when the\n"
           "                      line shows no answer, or \"error: MESSAGE\"\n"
           "      --angle deg|rad angle unit of the trigonometric functions (default deg)\n"
           "      --precision N   significant digits of answers, 1 to 14 (default 14)\n"
           "      --format dec|sci  decimal or scientific notation (default dec)\n"
           "      --fraction      show answers as fractions where possible\n"
           "      --zero TOL      answer parts smaller than TOL show as 0 (default 1e-12)\n"
           "      --point         always show the decimal point\n"
           "      --sign          write + in front of positive answers\n"
           "      --data-dir DIR  the user's folder: user function library, settings (default\n"
           "                      $XDG_DATA_HOME/Quorvex, else ~/.local/share/Quorvex)\n"
           "      --library-dir DIR  the folder of the system function library Quorvex.lib\n"
           "                      (default: the installed one)\n"
           "  -h, --help          show this text\n"
           "      --version       show the version\n"
           "\n"
           "Exit status: 0 every line evaluated, 1 a line failed, 2 usage or file error.\n";
}

std::optional<CliOptions> parse_options(int argc, char** argv, std::string& error) {
    CliOptions options;
    auto value_of = [&](int& i, const char* name) -> const char* {
        if (i + 1 >= argc) {
            error = std::string("option ") + name + " needs a value";
            return nullptr;
        }
        return argv[++i];
    };
    bool only_files = false;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (only_files || arg.empty() || arg[0] != '-' || arg == "-") {
            options.files.push_back(arg);
        } else if (arg == "--") {
            only_files = true;
        } else if (arg == "-e" || arg == "--eval") {
            const char* text = value_of(i, arg.c_str());
            if (!text) return std::nullopt;
            options.eval_lines.emplace_back(text);
        } else if (arg == "--answers") {
            options.answers = true;
        } else if (arg == "--angle") {
            const char* text = value_of(i, "--angle");
            if (!text) return std::nullopt;
            if (std::strcmp(text, "deg") == 0) options.angle_type = 0;
            else if (std::strcmp(text, "rad") == 0) options.angle_type = 1;
            else {
                error = "--angle takes deg or rad";
                return std::nullopt;
            }
        } else if (arg == "--precision") {
            const char* text = value_of(i, "--precision");
            if (!text) return std::nullopt;
            char* end = nullptr;
            const long digits = std::strtol(text, &end, 10);
            if (*text == '\0' || *end != '\0' || digits < 1 || digits > 14) {
                error = "--precision takes a whole number from 1 to 14";
                return std::nullopt;
            }
            options.precision = static_cast<int>(digits);
        } else if (arg == "--format") {
            const char* text = value_of(i, "--format");
            if (!text) return std::nullopt;
            if (std::strcmp(text, "dec") == 0) options.format = 0;
            else if (std::strcmp(text, "sci") == 0) options.format = 1;
            else {
                error = "--format takes dec or sci";
                return std::nullopt;
            }
        } else if (arg == "--fraction") {
            options.fraction = true;
        } else if (arg == "--zero") {
            const char* text = value_of(i, "--zero");
            if (!text) return std::nullopt;
            char* end = nullptr;
            const float tolerance = std::strtof(text, &end);
            if (*text == '\0' || *end != '\0' || !(tolerance >= 0) || tolerance > 1) {
                error = "--zero takes a tolerance from 0 to 1, such as 1e-20";
                return std::nullopt;
            }
            options.zero_tolerance = tolerance;
        } else if (arg == "--point") {
            options.point = true;
        } else if (arg == "--sign") {
            options.sign = true;
        } else if (arg == "--data-dir" || arg == "--library-dir") {
            const char* text = value_of(i, arg.c_str());
            if (!text) return std::nullopt;
            if (!*text) {
                error = arg + " needs a folder";
                return std::nullopt;
            }
            (arg == "--data-dir" ? options.data_dir : options.library_dir) = text;
        } else if (arg == "-h" || arg == "--help") {
            options.help = true;
        } else if (arg == "--version") {
            options.version = true;
        } else {
            error = "unknown option " + arg;
            return std::nullopt;
        }
    }
    return options;
}

} // namespace quorvex::cli
