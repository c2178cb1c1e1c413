#pragma once
#include "no_case_index.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex::store {

// A colour reference: red in the low byte, then green, then blue (0x00BBGGRR).
using TColor = std::uint32_t;

// One line of a profile text with the line end it had: "\r\n", "\n", or "" for a last line
// without one. Lines are written back with the end they came with, so text nobody touched keeps
// its bytes.
struct IniLine {
    std::string text;
    std::string end;
};

// A sectioned key=value text file, read once into memory, changed there, and written once by
// Save(). Sections and keys are looked up ignoring case; the text ahead of the first section is
// kept byte for byte; a key written into a new section appends the section at the end of the
// file; a key written again is replaced where it stands. New lines end in CR LF; CR LF and LF
// are both read.
class IniFile {
public:
    // Reads the file if it exists; a missing file is an empty one, created by the first Save().
    explicit IniFile(std::string path);
    virtual ~IniFile();
    IniFile(const IniFile&) = delete;
    IniFile& operator=(const IniFile&) = delete;

    const std::string& FileName() const { return m_path; }
    // True when the file was there and could be read.
    bool Exists() const { return m_exists; }
    // True when there is text to scan: the file was read, or text was set or written.
    bool HasContent() const { return m_exists || m_has_content; }

    // The value of a key, or `fallback` when the key is missing. Leading and trailing blanks of
    // the value are dropped.
    std::string GetString(std::string_view section, std::string_view key, std::string_view fallback = {}) const;
    // The key names of a section in file order (what a read with no key lists).
    std::vector<std::string> GetKeyNames(std::string_view section) const;
    // How many different keys a section holds (0 for a missing one), without listing them: a
    // bound that readers of counted items ask for again and again.
    size_t CountKeys(std::string_view section) const;
    std::vector<std::string> GetSectionNames() const;
    bool HasSection(std::string_view section) const;
    // A leading minus and the digits that follow; the fallback for a missing key, 0 for a value
    // that does not begin with a number.
    int GetInt(std::string_view section, std::string_view key, int fallback) const;
    // Changes the text in memory; true unless the key is empty.
    bool WriteString(std::string_view section, std::string_view key, std::string_view value);
    bool DeleteKey(std::string_view section, std::string_view key);
    bool DeleteSection(std::string_view section);

    // "r,g,b" as a colour; false (and `out` = `fallback`) for an empty value or fewer than three
    // parts.
    bool GetColor(std::string_view section, std::string_view key, TColor fallback, TColor& out) const;
    // "x,y,z", each an expression text and any of them empty; true when one of them is not blank.
    bool GetPoint(std::string_view section, std::string_view key, std::string& x, std::string& y,
                  std::string& z) const;

    // Every '=' of `text` becomes '|': a key holding '=' could not be told from its value
    // otherwise. Every key read or written passes through this first.
    static void ReplaceChar(std::string& text, char c);

    // The whole text as it would be written.
    const std::string& Text() const;
    bool Modified() const { return m_modified; }
    // Counts every change of the text, so that caches built on it know when they are stale.
    size_t Revision() const { return m_revision; }
    // Writes the text to a temporary file in the same folder and renames it over the file, so
    // that a failed save leaves the old file whole. Writes nothing when nothing changed and the
    // file exists. False with `error` set on failure.
    bool Save(std::string* error = nullptr);

    // Replaces the whole content, as if the file had held `text` (for tests and for texts that do
    // not come from a file).
    void SetText(std::string_view text);

    // `text` with every section that appears more than once read as one: the lines of each
    // repetition are moved behind those of the first, in file order (lookups see only the first
    // section of a name). The names joined go to `repeated`, as the file writes them; a text
    // without repetitions comes back as it is.
    static std::string JoinRepeatedSections(std::string_view text, std::vector<std::string>& repeated);

private:
    struct Section {
        std::string name;
        IniLine header;
        std::vector<IniLine> lines;                     // the lines below the header
        NoCaseIndex keys;                               // key -> first line holding it
    };

    void parse(std::string_view text);
    void index_section(Section& section) const;
    const Section* find_section(std::string_view name) const;
    Section* find_section(std::string_view name);
    const IniLine* find_line(std::string_view section, std::string_view key) const;
    void changed();

    std::string m_path;
    bool m_exists = false;
    bool m_modified = false;
    bool m_has_content = false;
    size_t m_revision = 1;
    std::string m_preamble;                               // bytes ahead of the first section
    std::vector<Section> m_sections;
    NoCaseIndex m_section_index;                          // name -> first section
    mutable std::string m_text;
    mutable bool m_text_valid = false;
};

// The key and value of a profile line, or false for a line that holds no '='.
bool split_key_line(std::string_view line, std::string_view& key, std::string_view& value);
// The name of a section header line ("[name]" after blanks), or false for another line.
bool split_header_line(std::string_view line, std::string_view& name);
std::string_view trim_blanks(std::string_view text);

} // namespace quorvex::store
