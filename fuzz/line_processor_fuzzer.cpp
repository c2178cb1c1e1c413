// Feeds arbitrary bytes to the editor's line processing, one line at a time, through one
// long-lived Parser with the system library loaded; the first byte picks the settings. Every line
// must come back with a consistent outcome: an error has a message, the caret lies in the line.
#include "document/line_processor.h"
#include "functions/builtin_functions.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static quorvex::engine::Parser parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
    static bool libraries = (parser.set_library_dirs(QUORVEX_DATA_DIR, ""), true);
    (void)libraries;
    const int settings = size > 0 ? data[0] : 0;
    quorvex::document::LineProcessor lines(parser, {settings % 3, (settings & 4) != 0});
    parser.set_angle_type((settings >> 3) & 1);
    const std::string input(reinterpret_cast<const char*>(data), size);
    for (std::size_t start = size > 0 ? 1 : 0; start <= input.size();) {
        std::size_t end = input.find('\n', start);
        if (end == std::string::npos) end = input.size();
        const auto outcome = lines.process(std::string_view(input).substr(start, end - start));
        if ((outcome.error && outcome.message.empty()) || outcome.caret > outcome.text.size() ||
            parser.IsAnError())
            __builtin_trap();
        start = end + 1;
    }
    if (parser.variable_count() > 1000) parser.delete_all_vars();
    if (parser.function_count() > 1000) parser.delete_all_funcs();
    return 0;
}
