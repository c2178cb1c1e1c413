#pragma once
#include <optional>
#include <string>
#include <vector>

namespace quorvex::desktop {

// What the command line of the desktop program asks for.
struct LaunchOptions {
    std::string file;          // a document to open
    std::string data_dir;      // the user's folder instead of the usual one
    bool new_instance = false; // do not hand the file to a program already running
    bool help = false;
    bool version = false;
    // --export-graph NAME OUT: draw the document's graph NAME (or its number) into OUT and end.
    std::string export_graph;
    std::string export_path;
    int export_width = 800, export_height = 600; // --size WxH
};

// Parses the arguments after the program name; nullopt with `error` set for one it can not use.
std::optional<LaunchOptions> parse_launch_options(const std::vector<std::string>& args, std::string& error);

std::string launch_usage();

} // namespace quorvex::desktop
