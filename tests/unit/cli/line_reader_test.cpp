// Lines of any input, read in bounded pieces: every kind of line end, a byte-order mark, lines
// too long to keep and streams that never end a line.
#include "line_reader.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

using quorvex::cli::LineReader;

namespace {

struct Outcome {
    std::vector<std::string> lines; // "!" for a line too long, "?" for giving up
    std::string first_end;
};

Outcome read_all(const std::string& text, size_t limit = LineReader::k_default_limit) {
    std::istringstream in(text);
    LineReader reader(in, limit);
    Outcome outcome;
    std::string line;
    for (LineReader::Read read; (read = reader.next(line)) != LineReader::Read::end;) {
        outcome.lines.push_back(read == LineReader::Read::line ? line : read == LineReader::Read::too_long ? "!" : "?");
        EXPECT_EQ(reader.number(), static_cast<long>(outcome.lines.size()));
    }
    outcome.first_end = reader.first_line_end();
    return outcome;
}

using Lines = std::vector<std::string>;

} // namespace

TEST(LineReader, EveryKindOfLineEndEndsALineAndTheFirstIsRemembered) {
    EXPECT_EQ(read_all("a\nb\n").lines, (Lines{"a", "b"}));
    EXPECT_EQ(read_all("a\r\nb").lines, (Lines{"a", "b"}));
    EXPECT_EQ(read_all("a\rb\r\rc").lines, (Lines{"a", "b", "", "c"}));
    EXPECT_EQ(read_all("a\n\nb\r\n").lines, (Lines{"a", "", "b"}));
    EXPECT_EQ(read_all("").lines, Lines{});
    EXPECT_EQ(read_all("a\r\nb\n").first_end, "\r\n");
    EXPECT_EQ(read_all("a\rb\r\n").first_end, "\r");
    EXPECT_EQ(read_all("a\nb\r").first_end, "\n");
    // A CR LF split across the reader's pieces is still one line end.
    const std::string long_line(64 * 1024 - 1, 'x');
    EXPECT_EQ(read_all(long_line + "\r\nz").lines, (Lines{long_line, "z"}));
    EXPECT_EQ(read_all(long_line + "\r\nz").first_end, "\r\n");
    // A byte-order mark at the start is no text; elsewhere it is.
    EXPECT_EQ(read_all("\xEF\xBB\xBF" "1+1\n\xEF\xBB\xBF").lines, (Lines{"1+1", "\xEF\xBB\xBF"}));
}

TEST(LineReader, LongLinesArePassedOverAndEndlessOnesStopTheReading) {
    EXPECT_EQ(read_all("12345\n123456\n1\n", 5).lines, (Lines{"12345", "!", "1"}));
    EXPECT_EQ(read_all(std::string(200, 'x') + "\n1", 100).lines, (Lines{"!", "1"}));
    // 64 times the limit without a line end: nothing more is read.
    EXPECT_EQ(read_all("ok\n" + std::string(100 * 65, '\0') + "\n1+1\n", 100).lines, (Lines{"ok", "?"}));
}
