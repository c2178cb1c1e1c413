#include "launch_options.h"

#include <cstdio>

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
        } else if (!only_files && arg == "--export-graph") {
            if (i + 2 >= args.size()) {
                error = "--export-graph needs a graph (its name or number) and a picture file";
                return std::nullopt;
            }
            options.export_graph = args[++i];
            options.export_path = args[++i];
        } else if (!only_files && arg == "--size") {
            int width = 0, height = 0;
            char by = 0, rest = 0;
            if (i + 1 >= args.size() ||
                std::sscanf(args[i + 1].c_str(), "%d%c%d%c", &width, &by, &height, &rest) != 3 ||
                (by != 'x' && by != 'X') || width < 16 || height < 16 || width > 20000 || height > 20000) {
                error = "--size needs WIDTHxHEIGHT in pixels, 16 to 20000 each, such as 800x600";
                return std::nullopt;
            }
            ++i;
            options.export_width = width;
            options.export_height = height;
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
    if (!options.export_graph.empty() && options.file.empty()) {
        error = "--export-graph needs the document: quorvex --export-graph NAME OUT FILE.qvx";
        return std::nullopt;
    }
    return options;
}

std::string launch_usage() {
    return "Usage: quorvex [OPTIONS] [FILE.qvx]\n"
           "       quorvex --export-graph NAME OUT.png|svg|pdf FILE.qvx [--size WxH]\n"
           "Opens the Quorvex math editor, with FILE.qvx when given.\n"
           "\n"
           "      --data-dir DIR   the user's folder: settings (Quorvex.ini), user function\n"
           "                       library, autosaved documents\n"
           "      --new-instance   start a program of its own even when one is running\n"
           "      --export-graph NAME OUT [--size WxH]\n"
           "                       draw the document's graph NAME (its name or number in\n"
           "                       the document's list of graphs) into OUT (.png, .svg or\n"
           "                       .pdf, 800x600 unless --size says) without a display, and end\n"
           "  -h, --help           this text\n"
           "      --version        the version\n";
}

} // namespace quorvex::desktop
