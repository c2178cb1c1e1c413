// Feeds arbitrary bytes to the evaluator, one line at a time, through one long-lived Parser, so
// that state left behind by earlier lines (variables, error flags) is exercised as well.
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static quorvex::engine::Parser parser(&quorvex::functions::builtin_functions());
    std::string input(reinterpret_cast<const char*>(data), size);
    std::size_t start = 0;
    while (start <= input.size()) {
        std::size_t end = input.find('\n', start);
        if (end == std::string::npos) end = input.size();
        const std::string line = input.substr(start, end - start);
        quorvex::engine::complex answer;
        // Both angle modes, both answer forms, chosen by the input itself.
        parser.set_angle_type(static_cast<int>(size & 2));
        const char* text = parser.eval_exp(line.c_str(), answer, true, true, (size & 1) != 0);
        if (!text || (parser.IsAnError() && !parser.GetLastError())) __builtin_trap();
        start = end + 1;
    }
    // Keep the variable table from growing without bound over millions of inputs.
    if (parser.variable_count() > 1000) parser.delete_all_vars();
    return 0;
}
