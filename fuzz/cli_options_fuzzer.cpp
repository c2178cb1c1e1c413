// Arbitrary command lines for quorvex-cli's option parser: the input, split at NUL bytes, is the
// argument vector. Whatever it holds, the parser gives options or one message, never both and
// never neither, and never crashes.
#include "cli_options.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<std::string> words{"quorvex-cli"};
    std::string word;
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == 0) {
            words.push_back(word);
            word.clear();
        } else {
            word += static_cast<char>(data[i]);
        }
    }
    if (!word.empty()) words.push_back(word);
    std::vector<char*> argv;
    for (std::string& w : words) argv.push_back(w.data());
    argv.push_back(nullptr);
    std::string error;
    const auto options = quorvex::cli::parse_options(static_cast<int>(words.size()), argv.data(), error);
    if (options.has_value() == !error.empty()) __builtin_trap();
    return 0;
}
