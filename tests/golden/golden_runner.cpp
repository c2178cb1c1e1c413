// Runs one golden file through quorvex-cli --answers and compares every answer.
//
// Format of a golden file:
//   # comment            ignored, as are blank lines between cases
//   %options ARGS        extra command-line options for the whole file (space-separated)
//   @FIXTURES@           anywhere in options, inputs and answers: the fixtures folder (the
//                        runner's third argument)
//   > EXPRESSION         one input line; \t, \xNN and \\ are escapes
//   EXPECTED             the line right after an input: its expected --answers line (may be
//                        empty), with the same escapes
// All inputs of one file run in one call, in order, so they share variables.
#include <cstdio>
#include <filesystem>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

struct Case {
    int line_number;
    std::string input;
    std::string expected;
};

std::string unescape(const std::string& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size()) {
            const char next = text[i + 1];
            if (next == 't') {
                out += '\t', ++i;
                continue;
            }
            if (next == '\\') {
                out += '\\', ++i;
                continue;
            }
            if (next == 'x' && i + 3 < text.size()) {
                out += static_cast<char>(std::stoi(text.substr(i + 2, 2), nullptr, 16));
                i += 3;
                continue;
            }
        }
        out += text[i];
    }
    return out;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3 && argc != 4) {
        std::cerr << "usage: golden_runner QUORVEX_CLI GOLDEN_FILE [FIXTURES_DIR]\n";
        return 2;
    }
    const std::string fixtures = argc == 4 ? argv[3] : "";
    auto with_fixtures = [&](std::string text) {
        for (size_t at; (at = text.find("@FIXTURES@")) != std::string::npos;) text.replace(at, 10, fixtures);
        return text;
    };
    std::ifstream golden(argv[2], std::ios::binary);
    if (!golden) {
        std::cerr << "cannot open " << argv[2] << '\n';
        return 2;
    }
    std::vector<Case> cases;
    std::string options;
    std::string line;
    int number = 0;
    while (std::getline(golden, line)) {
        ++number;
        if (line.rfind("%options ", 0) == 0) {
            options += " " + with_fixtures(line.substr(9));
        } else if (line.rfind("> ", 0) == 0 || line == ">") {
            Case c{number, with_fixtures(unescape(line.size() > 2 ? line.substr(2) : "")), ""};
            if (std::getline(golden, line)) ++number, c.expected = with_fixtures(unescape(line));
            cases.push_back(c);
        }
    }

    std::string path_template = (std::filesystem::temp_directory_path() / "quorvex-golden-XXXXXX").string();
    char* input_path = path_template.data();
    const int fd = mkstemp(input_path);
    if (fd < 0) return 2;
    {
        std::ofstream input(input_path, std::ios::binary);
        for (const auto& c : cases) input << c.input << '\n';
    }
    close(fd);
    const std::string command = std::string("'") + argv[1] + "' --answers" + options + " '" + input_path + "'";
    FILE* pipe = popen(command.c_str(), "r");
    std::vector<std::string> actual;
    if (pipe) {
        std::string current;
        for (int ch; (ch = std::fgetc(pipe)) != EOF;) {
            if (ch == '\n')
                actual.push_back(current), current.clear();
            else
                current += static_cast<char>(ch);
        }
        if (!current.empty()) actual.push_back(current);
        pclose(pipe);
    }
    std::remove(input_path);

    int failures = 0;
    for (size_t i = 0; i < cases.size(); ++i) {
        const std::string got = i < actual.size() ? actual[i] : "<no output>";
        if (got != cases[i].expected) {
            ++failures;
            std::cerr << argv[2] << ":" << cases[i].line_number << ": " << cases[i].input << "\n  expected: "
                      << cases[i].expected << "\n  actual:   " << got << '\n';
        }
    }
    if (actual.size() > cases.size()) {
        ++failures;
        std::cerr << "more output lines than cases: " << actual.size() << " against " << cases.size() << '\n';
    }
    std::cout << cases.size() - static_cast<size_t>(failures) << " of " << cases.size() << " cases pass\n";
    return failures == 0 ? 0 : 1;
}
