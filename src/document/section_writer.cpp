#include "section_writer.h"

#include "store/ini_file.h"

namespace quorvex::document {

std::string as_read_back(std::string_view text) {
    std::string line(text);
    for (char& c : line)
        if (c == '\r' || c == '\n') c = ' ';
    return std::string(store::trim_blanks(line));
}

void SectionWriter::Begin(std::string_view section) {
    flush();
    m_section = as_read_back(section);
    m_open = true;
}

void SectionWriter::Put(std::string_view key, std::string_view value) {
    std::string name = as_read_back(key);
    store::IniFile::ReplaceChar(name, '=');
    auto [at, added] = m_index.try_emplace(store::lower_case(name), m_entries.size());
    if (added)
        m_entries.emplace_back(std::move(name), as_read_back(value));
    else
        m_entries[at->second].second = as_read_back(value);
}

void SectionWriter::PutInt(std::string_view key, long value) { Put(key, std::to_string(value)); }

void SectionWriter::flush() {
    if (!m_open) return;
    // A section without a key does not appear, as a profile write never creates one.
    if (!m_entries.empty()) {
        m_text.append("[").append(m_section).append("]\r\n");
        for (const auto& [key, value] : m_entries) m_text.append(key).append("=").append(value).append("\r\n");
    }
    m_entries.clear();
    m_index.clear();
    m_open = false;
}

std::string SectionWriter::Finish() {
    flush();
    return std::move(m_text);
}

} // namespace quorvex::document
