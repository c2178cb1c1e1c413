// Reads arbitrary bytes as a document and saves and reloads it twice: whatever the input,
// loading reports what it can not take and never crashes or hangs. A first save drops what did
// not load (a variable that no longer evaluates), so from the second save on the text must stay
// the same: a saved document reads back to itself.
#include "document/document.h"
#include "functions/builtin_functions.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

class Quiet : public quorvex::engine::Reporter {
public:
    void report(std::string_view, std::string_view, quorvex::engine::MessageKind) override {}
};

// Loads `text` and saves it again; `warned` tells whether a save would warn of a cut text.
std::string reload(quorvex::engine::Parser& parser, Quiet& quiet, std::string_view text, bool& warned) {
    quorvex::document::Document document(parser, &quiet);
    document.ReadText(text);
    std::string saved;
    document.Compose(saved);
    // What a save would warn about: a text line that ends the text when read back.
    warned = quorvex::document::first_cut_line(document.Lines, saved).has_value();
    return saved;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Quiet quiet;
    static quorvex::engine::Parser parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
    bool warned = false;
    const std::string first = reload(parser, quiet, std::string_view(reinterpret_cast<const char*>(data), size), warned);
    const std::string second = reload(parser, quiet, first, warned);
    // Loading is deterministic: a save that reads back to itself stays so, no third load needed.
    if (second == first) return 0;
    // A text line that reads as a section header ends the text when read back; the save says so,
    // and only then may the next save differ.
    const bool second_warned = warned;
    const std::string third = reload(parser, quiet, second, warned);
    if (!second_warned && third != second) __builtin_trap();
    return 0;
}
