#pragma once
#include "store/no_case_index.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvex::document {

// A name or value as a save writes it: a line break inside would split its line, so it becomes a
// blank, and blanks at either end are not read, so they are not written.
std::string as_read_back(std::string_view text);

// Builds the sections of a document as text, one section after the other, with the rules of the
// profile writes the format is defined by: a key written twice in one section keeps its first
// place and takes the last value, keys are matched ignoring case, '=' in a key becomes '|', and
// every line ends in CR LF. Building the whole text first lets a save write the file once.
class SectionWriter {
public:
    explicit SectionWriter(std::string text = {}) : m_text(std::move(text)) {}

    void Begin(std::string_view section);
    void Put(std::string_view key, std::string_view value);
    void PutInt(std::string_view key, long value);
    // Ends the open section and gives the whole text.
    std::string Finish();

private:
    void flush();

    std::string m_text;
    std::string m_section;
    bool m_open = false;
    std::vector<std::pair<std::string, std::string>> m_entries;
    store::NoCaseIndex m_index; // key -> entry, ignoring case
};

} // namespace quorvex::document
