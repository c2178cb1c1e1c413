#pragma once
#include <cstddef>
#include <istream>
#include <string>

namespace quorvex::cli {

// The lines of a text stream, read in bounded pieces whatever the stream holds. LF, CR LF and a
// lone CR each end a line; a UTF-8 byte-order mark at the very start is no text. A line longer
// than the limit is not kept: its bytes are passed over to its end, so that memory stays bounded
// even on an endless stream without line ends.
class LineReader {
public:
    static constexpr size_t k_default_limit = 16u * 1024u * 1024u;

    explicit LineReader(std::istream& in, size_t limit = k_default_limit) : m_in(in), m_limit(limit) {}

    enum class Read { line, too_long, gave_up, end };
    // The next line into `line` (without its end); `too_long` leaves `line` empty. `gave_up`: a
    // line went on for 64 times the limit without an end (an endless stream such as a device);
    // nothing more is read.
    Read next(std::string& line);
    // The number of the line `next` returned last, from 1.
    long number() const { return m_number; }
    // The line-end bytes of the first line that had one: "\n", "\r\n" or "\r"; empty before.
    const std::string& first_line_end() const { return m_first_end; }
    size_t limit() const { return m_limit; }

private:
    bool fill();           // false at the end of the stream
    void note_end(const char* end);

    std::istream& m_in;
    size_t m_limit;
    std::string m_buffer;
    size_t m_pos = 0;
    long m_number = 0;
    bool m_started = false;
    bool m_gave_up = false;
    bool m_after_cr = false; // a CR ended the last line: an LF right behind it belongs to it
    std::string m_first_end;
};

// The message for a line that was too long, or that never ended, in the program's words.
std::string too_long_message(const LineReader& reader, LineReader::Read read);

} // namespace quorvex::cli
