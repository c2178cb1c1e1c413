#include "section_writer.h"

#include "store/ini_file.h"


namespace quorvex::document {

std::string as_read_back(std::string_view text) {
    // A line end inside the text reads back as a blank, and blanks at either end are dropped.
    const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    size_t first = 0, last = text.size();
    while (first < last && blank(text[first])) ++first;
    while (last > first && blank(text[last - 1])) --last;
    std::string line(text.substr(first, last - first));
    for (char& c : line)
        if (c == '\r' || c == '\n') c = ' ';
    return line;
}

void SectionWriter::Begin(std::string_view section) {
    flush();
    m_section = as_read_back(section);
    m_open = true;
}

void SectionWriter::Put(std::string_view key, std::string_view value) {
    std::string name = as_read_back(key);
    store::IniFile::ReplaceChar(name, '=');
    bool added = false;
    const size_t at = m_index.insert(name, m_entries.size(), &added);
    if (added)
        m_entries.emplace_back(std::move(name), as_read_back(value));
    else
        m_entries[at].second = as_read_back(value);
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
