#include "ini_file.h"

#include "atomic_write.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace quorvex::store {

namespace {

constexpr const char* k_new_line = "\r\n";

bool is_blank(char c) { return c == ' ' || c == '\t'; }

// Splits text into lines, each with the end it had; a CR alone is part of its line.
std::vector<IniLine> split_lines(std::string_view text) {
    std::vector<IniLine> lines;
    size_t start = 0;
    while (start < text.size()) {
        const size_t feed = text.find('\n', start);
        if (feed == std::string_view::npos) {
            lines.push_back({std::string(text.substr(start)), ""});
            break;
        }
        const bool carriage = feed > start && text[feed - 1] == '\r';
        const size_t end = carriage ? feed - 1 : feed;
        lines.push_back({std::string(text.substr(start, end - start)), carriage ? "\r\n" : "\n"});
        start = feed + 1;
    }
    return lines;
}

void append_line(std::string& out, const IniLine& line) {
    out += line.text;
    out += line.end;
}

bool is_blank_line(const IniLine& line) { return trim_blanks(line.text).empty(); }

std::string profile_key(std::string_view key) {
    std::string mapped(trim_blanks(key));
    IniFile::ReplaceChar(mapped, '=');
    return mapped;
}

// The line of `keys` for `key` as written in a call: only a key holding '=' needs a copy.
size_t find_key(const NoCaseIndex& keys, std::string_view key) {
    const std::string_view trimmed = trim_blanks(key);
    if (trimmed.find('=') == std::string_view::npos) return keys.find(trimmed);
    return keys.find(profile_key(trimmed));
}

} // namespace

std::string_view trim_blanks(std::string_view text) {
    size_t first = 0, last = text.size();
    while (first < last && is_blank(text[first])) ++first;
    while (last > first && (is_blank(text[last - 1]) || text[last - 1] == '\r')) --last;
    return text.substr(first, last - first);
}

bool split_header_line(std::string_view line, std::string_view& name) {
    const std::string_view trimmed = trim_blanks(line);
    if (trimmed.empty() || trimmed[0] != '[') return false;
    const size_t close = trimmed.find(']');
    name = trim_blanks(trimmed.substr(1, close == std::string_view::npos ? std::string_view::npos : close - 1));
    return true;
}

bool split_key_line(std::string_view line, std::string_view& key, std::string_view& value) {
    const size_t equal = line.find('=');
    if (equal == std::string_view::npos) return false;
    key = trim_blanks(line.substr(0, equal));
    value = trim_blanks(line.substr(equal + 1));
    return true;
}

IniFile::IniFile(std::string path) : m_path(std::move(path)) {
    std::string bytes;
    if (!m_path.empty() && read_whole_file(m_path, bytes)) {
        m_exists = true;
        parse(bytes);
    }
}

IniFile::~IniFile() = default;

void IniFile::SetText(std::string_view text) {
    parse(text);
    m_modified = false;
    m_has_content = true;
}

void IniFile::parse(std::string_view text) {
    m_preamble.clear();
    m_sections.clear();
    m_section_index.clear();
    for (IniLine& line : split_lines(text)) {
        std::string_view name;
        if (split_header_line(line.text, name)) {
            Section section;
            section.name = std::string(name);
            section.header = std::move(line);
            m_section_index.insert(section.name, m_sections.size());
            m_sections.push_back(std::move(section));
        } else if (m_sections.empty()) {
            append_line(m_preamble, line);
        } else {
            m_sections.back().lines.push_back(std::move(line));
        }
    }
    for (Section& section : m_sections) index_section(section);
    m_text_valid = false;
    ++m_revision;
}

void IniFile::index_section(Section& section) const {
    section.keys.clear();
    for (size_t i = 0; i < section.lines.size(); ++i) {
        std::string_view key, value;
        if (split_key_line(section.lines[i].text, key, value)) section.keys.insert(key, i);
    }
}

const IniFile::Section* IniFile::find_section(std::string_view name) const {
    const size_t found = m_section_index.find(trim_blanks(name));
    return found == NoCaseIndex::npos ? nullptr : &m_sections[found];
}

IniFile::Section* IniFile::find_section(std::string_view name) {
    return const_cast<Section*>(static_cast<const IniFile*>(this)->find_section(name));
}

const IniLine* IniFile::find_line(std::string_view section_name, std::string_view key) const {
    const Section* section = find_section(section_name);
    if (!section) return nullptr;
    const size_t found = find_key(section->keys, key);
    return found == NoCaseIndex::npos ? nullptr : &section->lines[found];
}

std::string IniFile::GetString(std::string_view section, std::string_view key, std::string_view fallback) const {
    const IniLine* line = find_line(section, key);
    if (!line) return std::string(fallback);
    std::string_view name, value;
    split_key_line(line->text, name, value);
    return std::string(value);
}

std::vector<std::string> IniFile::GetKeyNames(std::string_view section_name) const {
    std::vector<std::string> names;
    const Section* section = find_section(section_name);
    if (!section) return names;
    for (const IniLine& line : section->lines) {
        std::string_view key, value;
        if (split_key_line(line.text, key, value)) names.emplace_back(key);
    }
    return names;
}

size_t IniFile::CountKeys(std::string_view section_name) const {
    const Section* section = find_section(section_name);
    return section ? section->keys.size() : 0;
}

std::vector<std::string> IniFile::GetSectionNames() const {
    std::vector<std::string> names;
    for (const Section& section : m_sections) names.push_back(section.name);
    return names;
}

bool IniFile::HasSection(std::string_view section) const { return find_section(section) != nullptr; }

int IniFile::GetInt(std::string_view section, std::string_view key, int fallback) const {
    const IniLine* line = find_line(section, key);
    if (!line) return fallback;
    std::string_view name, value;
    split_key_line(line->text, name, value);
    size_t i = 0;
    const bool negative = !value.empty() && value[0] == '-';
    if (negative) ++i;
    long long number = 0;
    for (; i < value.size() && std::isdigit(static_cast<unsigned char>(value[i])); ++i) {
        number = number * 10 + (value[i] - '0');
        if (number > 2147483648LL) number = 2147483648LL; // an absurd value saturates
    }
    if (negative) number = -number;
    if (number > 2147483647LL) number = 2147483647LL;
    return static_cast<int>(number);
}

bool IniFile::WriteString(std::string_view section_name, std::string_view key, std::string_view value) {
    const std::string mapped = profile_key(key);
    if (mapped.empty() || trim_blanks(section_name).empty()) return false;
    std::string text = mapped + "=" + std::string(value);
    // A line end inside a value would split it into lines that read back as something else.
    for (char& c : text)
        if (c == '\r' || c == '\n') c = ' ';

    Section* section = find_section(section_name);
    if (!section) {
        // A new section goes at the end of the file, on a line of its own.
        if (!m_sections.empty()) {
            Section& last = m_sections.back();
            IniLine& tail = last.lines.empty() ? last.header : last.lines.back();
            if (tail.end.empty()) tail.end = k_new_line;
        } else if (!m_preamble.empty() && m_preamble.back() != '\n') {
            m_preamble += k_new_line;
        }
        Section created;
        created.name = std::string(trim_blanks(section_name));
        created.header = {"[" + created.name + "]", k_new_line};
        m_section_index.insert(created.name, m_sections.size());
        m_sections.push_back(std::move(created));
        section = &m_sections.back();
    }

    const size_t found = section->keys.find(mapped);
    if (found != NoCaseIndex::npos) {
        section->lines[found].text = std::move(text);
        // A key that held a lone CR is written with a blank in its place: it is another key now.
        if (mapped.find('\r') != std::string::npos) index_section(*section);
    } else {
        // A new key follows the last line of the section that is not blank.
        size_t at = section->lines.size();
        while (at > 0 && is_blank_line(section->lines[at - 1])) --at;
        IniLine& before = at == 0 ? section->header : section->lines[at - 1];
        if (before.end.empty()) before.end = k_new_line;
        section->lines.insert(section->lines.begin() + static_cast<long>(at), IniLine{std::move(text), k_new_line});
        if (at + 1 == section->lines.size())
            section->keys.insert(mapped, at);
        else
            index_section(*section);
    }
    changed();
    return true;
}

bool IniFile::DeleteKey(std::string_view section_name, std::string_view key) {
    Section* section = find_section(section_name);
    if (!section) return false;
    const size_t found = find_key(section->keys, key);
    if (found == NoCaseIndex::npos) return false;
    section->lines.erase(section->lines.begin() + static_cast<long>(found));
    index_section(*section);
    changed();
    return true;
}

bool IniFile::DeleteSection(std::string_view section_name) {
    const size_t found = m_section_index.find(trim_blanks(section_name));
    if (found == NoCaseIndex::npos) return false;
    m_sections.erase(m_sections.begin() + static_cast<long>(found));
    m_section_index.clear();
    for (size_t i = 0; i < m_sections.size(); ++i) m_section_index.insert(m_sections[i].name, i);
    changed();
    return true;
}

bool IniFile::GetColor(std::string_view section, std::string_view key, TColor fallback, TColor& out) const {
    std::string value = GetString(section, key);
    if (value.size() > 27) value.resize(27); // the value is read into a small buffer
    out = fallback;
    if (value.empty()) return false;
    const size_t first = value.find(',');
    const size_t second = first == std::string::npos ? first : value.find(',', first + 1);
    if (second == std::string::npos) return false;
    const long red = std::strtol(value.c_str(), nullptr, 10);
    const long green = std::strtol(value.c_str() + first + 1, nullptr, 10);
    const long blue = std::strtol(value.c_str() + second + 1, nullptr, 10);
    out = static_cast<TColor>(red & 255) | static_cast<TColor>(green & 255) << 8 |
          static_cast<TColor>(blue & 255) << 16;
    return true;
}

bool IniFile::GetPoint(std::string_view section, std::string_view key, std::string& x, std::string& y,
                       std::string& z) const {
    x.clear();
    y.clear();
    z.clear();
    const std::string value = GetString(section, key);
    if (value.empty()) return false;
    std::string* fields[] = {&x, &y, &z};
    bool any = false;
    size_t start = 0;
    for (int i = 0; i < 3; ++i) {
        const size_t comma = i < 2 ? value.find(',', start) : std::string::npos;
        std::string_view field = std::string_view(value).substr(start, comma == std::string::npos ? std::string::npos
                                                                                                : comma - start);
        while (!field.empty() && std::isspace(static_cast<unsigned char>(field.front()))) field.remove_prefix(1);
        if (!field.empty()) {
            *fields[i] = std::string(field);
            any = true;
        }
        if (comma == std::string::npos) break;
        start = comma + 1;
    }
    return any;
}

void IniFile::ReplaceChar(std::string& text, char c) {
    for (char& each : text)
        if (each == c) each = '|';
}

const std::string& IniFile::Text() const {
    if (!m_text_valid) {
        m_text = m_preamble;
        for (const Section& section : m_sections) {
            append_line(m_text, section.header);
            for (const IniLine& line : section.lines) append_line(m_text, line);
        }
        m_text_valid = true;
    }
    return m_text;
}

void IniFile::changed() {
    m_modified = true;
    m_has_content = true;
    m_text_valid = false;
    ++m_revision;
}

bool IniFile::Save(std::string* error) {
    if (!m_modified && m_exists) return true;
    if (!write_file_atomically(m_path, Text(), error)) return false;
    m_exists = true;
    m_modified = false;
    return true;
}

std::string IniFile::JoinRepeatedSections(std::string_view text, std::vector<std::string>& repeated) {
    struct Block {
        std::string_view name;
        std::vector<std::string_view> pieces; // header and lines, each with its line end
    };
    std::vector<Block> blocks;
    NoCaseIndex first_of;
    std::string_view leading;
    bool any_repeated = false;
    Block* current = nullptr;
    for (size_t start = 0; start < text.size();) {
        size_t end = text.find('\n', start);
        end = end == std::string_view::npos ? text.size() : end + 1;
        const std::string_view line = text.substr(start, end - start);
        std::string_view name;
        if (split_header_line(line, name)) {
            bool added = false;
            const size_t found = first_of.insert(name, blocks.size(), &added);
            if (added) {
                blocks.push_back({name, {}});
            } else if (std::find(repeated.begin(), repeated.end(), std::string(name)) == repeated.end()) {
                repeated.emplace_back(name);
                any_repeated = true;
            }
            current = &blocks[found];
            if (added) current->pieces.push_back(line);
        } else if (current) {
            current->pieces.push_back(line);
        } else {
            leading = text.substr(0, end);
        }
        start = end;
    }
    if (!any_repeated) return std::string(text);
    std::string joined(leading);
    joined.reserve(text.size() + 2 * blocks.size());
    for (const Block& block : blocks)
        for (const std::string_view piece : block.pieces) {
            joined += piece;
            // The last line of the text may have no end; inside the joined text it needs one.
            if (!piece.empty() && piece.back() != '\n') joined += "\r\n";
        }
    return joined;
}

} // namespace quorvex::store
