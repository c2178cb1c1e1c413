#pragma once
#include <optional>
#include <string>
#include <vector>

namespace quorvex::cli {

struct CliOptions {
    std::vector<std::string> eval_lines; // -e TEXT, in order
    std::vector<std::string> files;
    std::string command;                   // a command such as "map"; empty when lines are evaluated
    std::vector<std::string> command_args; // the command's own arguments, in order
    std::optional<std::string> accuracy;   // --accuracy A of integrate, an expression
    std::optional<int> order;              // --order of derive: 1, 2 or 3
    std::optional<std::string> step;       // --step H of derive, an expression
    std::optional<std::string> degree;     // --degree N of fit
    std::optional<std::string> columns;    // --columns X,Y of fit
    std::optional<std::string> intervals;  // --intervals N of freq, an expression
    bool answers = false;
    int method = 1;          // --method: 0 Enter never computes, 1 it does, 2 ':=' assigns too
    bool in_place = false;
    bool check = false;      // --check: each FILE's stored answers against its lines now
    bool interactive = false;
    std::string output;      // -o OUT.qvx: where a processed document is saved
    std::string dump;        // --dump FILE.qvx: a summary of the document, nothing computed // -i: the prompt even when standard input is no terminal   // --in-place: each FILE is written back as it stands afterwards
    std::optional<int> angle_type; // 0 degrees, 1 radians; none: the settings decide
    std::optional<int> precision;
    std::optional<int> format; // 0 decimal, 1 scientific; none: the settings decide
    bool fraction = false;
    std::optional<float> zero_tolerance; // answer parts below it show as 0
    bool point = false;                  // always show the decimal point
    bool sign = false;                   // write + on positive answers
    bool precise = false;                // --precise: about 34 digits between steps
    std::string data_dir;    // the user's folder (user library, settings); empty: the default
    std::string library_dir; // the folder of the system library; empty: the default
    bool help = false;
    bool version = false;
};

// Reads the command line; on a usage error returns nothing and fills `error`. The first argument
// that is no option and names a command starts the command: the arguments behind it are its own,
// except the long options, so that "-1" or "-x^2" need no quoting.
std::optional<CliOptions> parse_options(int argc, char** argv, std::string& error);

const char* usage_text();

} // namespace quorvex::cli
