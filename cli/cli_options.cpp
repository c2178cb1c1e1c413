#include "cli_options.h"

#include "commands.h"
#include "document_files.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace quorvex::cli {

const char* usage_text() {
    return "Usage: quorvex-cli [OPTIONS] [FILE...]\n"
           "       quorvex-cli [OPTIONS] COMMAND ARGUMENTS...\n"
           "Evaluates lines of Quorvex expressions: the -e lines, then the files, then standard input\n"
           "when there is neither (a terminal gets the interactive mode, :help tells more). A FILE\n"
           "ending in .qvx is a document: its settings, variables and functions are loaded, each\n"
           "line of its text is processed, and the whole document is printed (or saved). All\n"
           "lines of one call share their variables. Each line is printed as the math editor leaves\n"
           "it when Enter is pressed: \"2+3\" as \"2+3 = 5\", an old answer replaced, statements cut\n"
           "at ';' with the last one answered, a \"//\" comment kept behind the answer. A line that\n"
           "fails is printed unchanged and its message goes to standard error as\n"
           "\"SOURCE:LINE: error: MESSAGE\" (SOURCE is the file, \"-\" for standard input, -e).\n"
           "\n"
           "  -e, --eval TEXT     evaluate TEXT as one line (repeatable)\n"
           "      --answers       print one line per input line, evaluated as one expression: the\n"
           "                      answer, an empty line when it shows none, or \"error: MESSAGE\"\n"
           "      --method 0|1|2  the editor's calculation method (default 1); with 2, \":=\" is an\n"
           "                      assignment, as '=' then computes in the editor\n"
           "  -i, --interactive   the prompt with its : commands, even when input is no terminal\n"
           "  -o, --output OUT    save the processed document (a .qvx FILE) as OUT\n"
           "      --dump FILE.qvx print a summary of a document: text, variables, functions,\n"
           "                      settings, graphs with their functions and data sets, matrices,\n"
           "                      the math tools' fields; nothing is computed\n"
           "      --in-place      write each FILE back as it stands after its lines are processed\n"
           "                      (through a temporary file), printing nothing\n"
           "      --check         compute the lines of each FILE as Enter would, on an engine of\n"
           "                      its own, changing nothing, and print each line whose stored\n"
           "                      answer differs from the answer its lines give now as\n"
           "                        FILE:LINE: stored ANSWER, now ANSWER\n"
           "                      (now \"error: MESSAGE\" when the line fails); exit status 1\n"
           "                      when any differs, 0 when all agree\n"
           "      --angle deg|rad angle unit of the trigonometric functions (default deg)\n"
           "      --precision N   significant digits of answers, 1 to 14 (default 14)\n"
           "      --format dec|sci  decimal or scientific notation (default dec)\n"
           "      --fraction      show answers as fractions where possible\n"
           "      --zero TOL      answer parts smaller than TOL show as 0 (default 1e-12)\n"
           "      --point         always show the decimal point\n"
           "      --sign          write + in front of positive answers\n"
           "      --precise       precise arithmetic: values carry about 34 digits from step to\n"
           "                      step, so each answer shown is the true value correctly rounded\n"
           "                      (slower); without it every step is rounded through 15 digits\n"
           "                      (also PreciseArithmetic=1 in [OPTIONS]; a document saved with\n"
           "                      a choice of its own keeps it)\n"
           "      --data-dir DIR  the user's folder: user function library, settings in Quorvex.ini\n"
           "                      ([PARSER OPTIONS] number formats and AngleType, [OPTIONS]) (default\n"
           "                      $XDG_DATA_HOME/Quorvex, else ~/.local/share/Quorvex)\n"
           "      --library-dir DIR  the folder of the system function library Quorvex.lib\n"
           "                      (default: the installed one)\n"
           "  -h, --help          show this text\n"
           "      --version       show the version\n"
           "\n"
           "Commands. The -e lines run first, quietly, so they can define the functions and\n"
           "variables a command uses. EXPR is mapped once and then run at each point; VAR is its\n"
           "variable, made for the run when it does not exist and put back afterwards. LOW, HIGH,\n"
           "X, POINTS, STEPS, A, H, N and every coefficient or matrix cell are expressions. Numbers\n"
           "are written as answers are, so --precision, --format and the like apply; integrate and\n"
           "derive show 6 digits unless --precision is given, as their tolerance allows no more.\n"
           "  map EXPR VAR LOW HIGH POINTS\n"
           "                      one line \"x<TAB>value\" for each of POINTS points spread evenly\n"
           "                      from LOW to HIGH, both included (POINTS 1: LOW only); a point\n"
           "                      where EXPR fails shows \"error: MESSAGE\" as its value\n"
           "  integrate EXPR VAR LOW HIGH [--accuracy A]\n"
           "                      Romberg integral from LOW to HIGH (HIGH below LOW negates it);\n"
           "                      A is the relative accuracy, default 1e-4\n"
           "  derive EXPR VAR X [--order 1|2|3] [--step H]\n"
           "                      derivative at X by Ridders' extrapolation of central differences\n"
           "                      whose step starts at H and shrinks by 1.4; without --step the\n"
           "                      step is chosen for the order and the point; default order 1\n"
           "  roots EXPR VAR LOW HIGH STEPS\n"
           "                      real roots of EXPR = 0, one line \"root<TAB>value\" each: STEPS\n"
           "                      grid points from LOW to HIGH (at least 101 recommended), each\n"
           "                      interval between neighbours searched to 1e-14 in at most 500\n"
           "                      iterations; roots that print alike count once, and an expression\n"
           "                      with an even root (x^0.5) is searched on its negative branch too;\n"
           "                      when none is found, standard error says so\n"
           "  polyroots C_n ... C_0\n"
           "                      all roots of C_n x^n + ... + C_0, one a line, in the order they\n"
           "                      are found: Jenkins-Traub for real coefficients, Laguerre when any\n"
           "                      is complex; degree 1 to 99\n"
           "  fit FILE [--degree N] [--columns X,Y]\n"
           "                      least-squares polynomial of degree N (default 1, up to 98)\n"
           "                      through the points of a data file: values separated by blanks,\n"
           "                      commas or tabs, a line a point, each value a number or an\n"
           "                      expression; lines above the data that hold no values (a header)\n"
           "                      are skipped; X and Y are the columns counted from 1 (default\n"
           "                      1,2). Prints \"x^K<TAB>coefficient\" for each power (no zero\n"
           "                      threshold: a small coefficient shows in full), then\n"
           "                      \"correlation<TAB>R\" and \"determination<TAB>R^2\"\n"
           "  matrix OP A [B]     matrices written [[1,2],[3,4]], up to 10 by 10; OP is det, inv,\n"
           "                      rank, trace, transpose, adjugate, cofactor, lu (L, U and P with\n"
           "                      P A = L U), add, sub, mul (A B), solve (A x = B for the column\n"
           "                      B) or scale (B a number)\n"
           "  freq FILE [--intervals N]\n"
           "                      the frequency distribution of the values of FILE (one to a line,\n"
           "                      each an expression; labels such as \"1)\" and a header skipped;\n"
           "                      a second value on a line is refused), one line\n"
           "                      \"low to high<TAB>count\" a class: the square root of the count\n"
           "                      of classes of equal width, or N (2 to 99); the first class holds\n"
           "                      its low bound, the others are marked \"+\" as they do not. The\n"
           "                      values are binned as written at the precision (default 14)\n"
           "The first argument that is no option and names a command starts it; write ./map to\n"
           "read a file of that name. Behind the command an argument starting with '-' is its own\n"
           "(\"-1\", \"-x^2\") unless it is a long option.\n"
           "\n"
           "Exit status: 0 every line or the command done, 1 a line or a calculation failed,\n"
           "2 usage, file or input error.\n";
}

namespace {

// The long options; behind a command only these are read as options.
constexpr std::array<std::string_view, 26> k_long_options{
    "--eval",    "--answers",  "--angle",  "--precision", "--format",      "--fraction",
    "--zero",    "--point",    "--sign",   "--data-dir",  "--library-dir", "--help",
    "--version", "--accuracy", "--order",  "--step",      "--method",      "--in-place", "--interactive",
    "--output",  "--dump",     "--degree", "--columns",   "--intervals",   "--check",
    "--precise"};

bool is_long_option(std::string_view arg) {
    return std::find(k_long_options.begin(), k_long_options.end(), arg) != k_long_options.end();
}

} // namespace

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
    bool only_arguments = false;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (!options.command.empty() && !only_arguments && arg == "--") {
            only_arguments = true;
        } else if (!options.command.empty() && (only_arguments || !is_long_option(arg))) {
            options.command_args.push_back(arg);
        } else if (only_files || arg.empty() || arg[0] != '-' || arg == "-") {
            if (!only_files && options.files.empty() && is_command(arg))
                options.command = arg;
            else
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
        } else if (arg == "--method") {
            const char* text = value_of(i, "--method");
            if (!text) return std::nullopt;
            if (std::strlen(text) != 1 || text[0] < '0' || text[0] > '2') {
                error = "--method takes 0, 1 or 2";
                return std::nullopt;
            }
            options.method = text[0] - '0';
        } else if (arg == "--check") {
            options.check = true;
        } else if (arg == "--in-place") {
            options.in_place = true;
        } else if (arg == "-o" || arg == "--output" || arg == "--dump") {
            const char* text = value_of(i, arg.c_str());
            if (!text) return std::nullopt;
            if (!*text) {
                error = arg + " needs a file";
                return std::nullopt;
            }
            (arg == "--dump" ? options.dump : options.output) = text;
        } else if (arg == "-i" || arg == "--interactive") {
            options.interactive = true;
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
        } else if (arg == "--precise") {
            options.precise = true;
        } else if (arg == "--data-dir" || arg == "--library-dir") {
            const char* text = value_of(i, arg.c_str());
            if (!text) return std::nullopt;
            if (!*text) {
                error = arg + " needs a folder";
                return std::nullopt;
            }
            (arg == "--data-dir" ? options.data_dir : options.library_dir) = text;
        } else if (arg == "--degree" || arg == "--columns") {
            const char* text = value_of(i, arg.c_str());
            if (!text) return std::nullopt;
            (arg == "--degree" ? options.degree : options.columns) = text;
        } else if (arg == "--intervals") {
            const char* text = value_of(i, "--intervals");
            if (!text) return std::nullopt;
            options.intervals = text;
        } else if (arg == "--accuracy" || arg == "--step") {
            const char* text = value_of(i, arg.c_str());
            if (!text) return std::nullopt;
            (arg == "--accuracy" ? options.accuracy : options.step) = text;
        } else if (arg == "--order") {
            const char* text = value_of(i, "--order");
            if (!text) return std::nullopt;
            if (std::strlen(text) != 1 || text[0] < '1' || text[0] > '3') {
                error = "--order takes 1, 2 or 3";
                return std::nullopt;
            }
            options.order = text[0] - '0';
        } else if (arg == "-h" || arg == "--help") {
            options.help = true;
        } else if (arg == "--version") {
            options.version = true;
        } else {
            error = "unknown option " + arg;
            return std::nullopt;
        }
    }
    if (options.in_place && (options.files.empty() || options.answers || !options.command.empty() ||
                             std::find(options.files.begin(), options.files.end(), "-") != options.files.end())) {
        error = "--in-place needs files to write back, and no --answers or command";
        return std::nullopt;
    }
    if (options.check && (options.files.empty() || !options.eval_lines.empty() || options.answers ||
                          options.in_place || !options.output.empty() || !options.dump.empty() ||
                          !options.command.empty() || options.interactive)) {
        error = "--check takes the files to check, and no -e, --answers, --in-place, --output, --dump, -i or command";
        return std::nullopt;
    }
    if (!options.output.empty()) {
        if (options.in_place)
            error = "--output and --in-place both say where to save: give one of them";
        else if (options.files.size() != 1)
            error = "--output saves one processed .qvx document: give exactly one FILE";
        else if (!is_document_path(options.files.front()))
            error = "--output saves a processed .qvx document, and " + options.files.front() +
                    " is none (--in-place writes a text file back)";
        if (!error.empty()) return std::nullopt;
    }
    if (options.command.empty() && (options.accuracy || options.order || options.step)) {
        error = options.accuracy ? "--accuracy belongs to the integrate command"
                                 : "--order and --step belong to the derive command";
        return std::nullopt;
    }
    if (options.command != "fit" && (options.degree || options.columns)) {
        error = "--degree and --columns belong to the fit command";
        return std::nullopt;
    }
    if (options.intervals && options.command != "freq") {
        error = "--intervals belongs to the freq command";
        return std::nullopt;
    }
    return options;
}

} // namespace quorvex::cli
