// Writes arbitrary bytes to a data file and reads it with every data-file reader: tokens as
// text (then a column removed), tokens evaluated as numbers, points as text in both forms and
// points as numbers. The readers must give a list or a message, never crash or hang.
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

// Answers every question with Yes, so that the readers go on to the end of the file.
class Quiet : public quorvex::engine::Reporter {
public:
    void report(std::string_view, std::string_view, quorvex::engine::MessageKind) override {}
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path = "/tmp/quorvex-fuzz-data-" + std::to_string(getpid()) + ".txt";
    static Quiet quiet;
    static quorvex::engine::Parser parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
    static bool ready = (parser.set_reporter(&quiet), true);
    (void)ready;
    {
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }
    std::vector<std::string> tokens;
    const int columns = parser.get_file_data(tokens, path.c_str(), -1);
    parser.ClearLastError();
    if (columns > 1) quorvex::engine::Parser::rem_data_column(tokens, columns, 1 + static_cast<int>(size % columns));
    std::vector<long double> numbers;
    parser.get_file_data(numbers, path.c_str(), -1);
    parser.ClearLastError();
    for (const bool single : {true, false}) {
        std::vector<quorvex::engine::StrPoint> points;
        bool abort = false;
        parser.get_file_points(points, path.c_str(), -1, abort, true, single);
        parser.ClearLastError();
    }
    std::vector<quorvex::engine::Point> values;
    parser.get_file_points(values, path.c_str(), -1);
    parser.ClearLastError();
    return 0;
}
