#include "launch_options.h"

namespace quorvex::desktop {

std::optional<LaunchOptions> parse_launch_options(const std::vector<std::string>& args, std::string& error) {
    LaunchOptions options;
    bool only_files = false;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (!only_files && arg == "--") {
            only_files = true;
        } else if (!only_files && (arg == "--help" || arg == "-h")) {
            options.help = true;
        } else if (!only_files && arg == "--version") {
            options.version = true;
        } else if (!only_files && arg == "--new-instance") {
            options.new_instance = true;
        } else if (!only_files && (arg == "--data-dir" || arg.rfind("--data-dir=", 0) == 0)) {
            const bool joined = arg.size() > 10;
            if (!joined && i + 1 >= args.size()) {
                error = "--data-dir needs a folder";
                return std::nullopt;
            }
            options.data_dir = joined ? arg.substr(11) : args[++i];
            if (options.data_dir.empty()) {
                error = "--data-dir needs a folder";
                return std::nullopt;
            }
        } else if (!only_files && arg.size() > 1 && arg[0] == '-') {
            error = "unknown option " + arg;
            return std::nullopt;
        } else if (options.file.empty()) {
            options.file = arg;
        } else {
            error = "one document at a time: " + options.file + " and " + arg;
            return std::nullopt;
        }
    }
    return options;
}

std::string launch_usage() {
    return "Usage: quorvex [OPTIONS] [FILE.qvx]\n"
           "Opens the Quorvex math editor, with FILE.qvx when given.\n"
           "\n"
           "      --data-dir DIR   the user's folder: settings (Quorvex.ini), user function\n"
           "                       library, autosaved documents\n"
           "      --new-instance   start a program of its own even when one is running\n"
           "  -h, --help           this text\n"
           "      --version        the version\n";
}

} // namespace quorvex::desktop
