#include "line_reader.h"

namespace quorvex::cli {

namespace {

constexpr size_t k_piece = 64 * 1024;
constexpr const char k_byte_order_mark[] = "\xEF\xBB\xBF";

} // namespace

bool LineReader::fill() {
    if (m_pos < m_buffer.size()) return true;
    m_buffer.resize(k_piece);
    m_in.read(m_buffer.data(), static_cast<std::streamsize>(k_piece));
    m_buffer.resize(static_cast<size_t>(m_in.gcount()));
    m_pos = 0;
    return !m_buffer.empty();
}

void LineReader::note_end(const char* end) {
    if (m_first_end.empty()) m_first_end = end;
}

LineReader::Read LineReader::next(std::string& line) {
    line.clear();
    if (m_gave_up || !fill()) return Read::end;
    if (!m_started) {
        m_started = true;
        // Only a whole mark at the very start is skipped; the first piece holds it if it is there.
        if (m_buffer.compare(0, 3, k_byte_order_mark) == 0) m_pos = 3;
    }
    if (m_after_cr) {
        m_after_cr = false;
        if (fill() && m_buffer[m_pos] == '\n') {
            ++m_pos;
            if (m_number == 1) m_first_end = "\r\n"; // the first line end was a CR LF after all
        }
        if (!fill()) return Read::end;
    }
    bool too_long = false;
    size_t length = 0;
    for (;;) {
        if (!fill()) break; // the last line, without a line end
        const size_t end = m_buffer.find_first_of("\r\n", m_pos);
        const size_t stop = end == std::string::npos ? m_buffer.size() : end;
        length += stop - m_pos;
        if (length / 64 > m_limit) {
            m_gave_up = true;
            ++m_number;
            return Read::gave_up;
        }
        if (!too_long) {
            if (line.size() + (stop - m_pos) > m_limit) {
                too_long = true;
                line.clear();
                line.shrink_to_fit();
            } else {
                line.append(m_buffer, m_pos, stop - m_pos);
            }
        }
        m_pos = stop;
        if (end == std::string::npos) continue;
        const char ending = m_buffer[m_pos++];
        if (ending == '\r') {
            m_after_cr = true;
            note_end("\r");
        } else {
            note_end("\n");
        }
        break;
    }
    ++m_number;
    return too_long ? Read::too_long : Read::line;
}

std::string too_long_message(const LineReader& reader, LineReader::Read read) {
    const size_t megabytes = reader.limit() / (1024 * 1024);
    if (read == LineReader::Read::gave_up)
        return "the line goes on for more than " + std::to_string(megabytes * 64) +
               " MB without an end; the input is read no further";
    return "the line is longer than " + std::to_string(megabytes) + " MB and was not read";
}

} // namespace quorvex::cli
