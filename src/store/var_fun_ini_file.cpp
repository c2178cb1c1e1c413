#include "var_fun_ini_file.h"

#include <algorithm>
#include <cctype>

namespace quorvex::store {

namespace {

const char* const k_caption = "File Access";

bool holds(std::string_view text, char c) { return text.find(c) != std::string_view::npos; }

bool equal_ignoring_case(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

std::string_view bare_name(std::string_view key) { return key.substr(0, key.find('[')); }

} // namespace

VarFunIniFile::VarFunIniFile(std::string path, std::string_view function_flag, std::string_view variable_flag,
                             ErrorSink sink)
    : IniFile(std::move(path)), m_sink(std::move(sink)),
      m_function_flag(function_flag.empty() ? "DECLARED FUNCTIONS" : std::string(function_flag)),
      m_variable_flag(variable_flag.empty() ? "DECLARED VARIABLES" : std::string(variable_flag)) {
    if (FileName().empty()) {
        if (m_sink) m_sink("File Name Not Provided, File Could Not Be Opened!", k_caption);
    } else {
        m_error_text = "File \" " + FileName() + " \" Could Not Be Opened!";
    }
}

void VarFunIniFile::SetFunctionFlagStr(std::string_view flag) {
    if (flag.empty()) return;
    m_function_flag = std::string(flag);
    m_function_pos = -1;
}

void VarFunIniFile::SetVariableFlagStr(std::string_view flag) {
    if (flag.empty()) return;
    m_variable_flag = std::string(flag);
    m_variable_pos = -1;
}

bool VarFunIniFile::readable() {
    if (Revision() != m_scanned_revision) invalidate_scans();
    if (HasContent() && !FileName().empty()) return true;
    if (m_sink && !m_error_text.empty()) m_sink(m_error_text, k_caption);
    return false;
}

void VarFunIniFile::invalidate_scans() {
    m_longest_line = m_dec_carriage_returns = -1;
    m_variable_pos = m_function_pos = m_setup_pos = m_file_size = -1;
    m_scanned_revision = Revision();
}

// Every scan walks the lines of the text; they are split once per revision of it, as the raw
// scans run on each name an evaluation checks against a library.
const std::vector<VarFunIniFile::RawLine>& VarFunIniFile::raw_lines() const {
    // A copy of the store shares the revision but not the text the views point into.
    const std::string& text = Text();
    if (m_lines_revision == Revision() && m_lines_text == text.data()) return m_lines;
    m_lines.clear();
    size_t start = 0;
    while (start < text.size()) {
        size_t end = start;
        while (end < text.size() && text[end] != '\r' && text[end] != '\n') ++end;
        m_lines.push_back({start, std::string_view(text).substr(start, end - start)});
        start = end;
        if (start < text.size() && text[start] == '\r') ++start;
        if (start < text.size() && text[start] == '\n') ++start;
    }
    m_lines_revision = Revision();
    m_lines_text = text.data();
    return m_lines;
}

void VarFunIniFile::find_flags() {
    m_variable_pos = m_function_pos = m_setup_pos = 0;
    const size_t longest = std::max({m_variable_flag.size(), m_function_flag.size(), m_setup_flag.size()});
    const std::string headers[] = {"[" + m_variable_flag + "]", "[" + m_function_flag + "]", "[" + m_setup_flag + "]"};
    long* positions[] = {&m_variable_pos, &m_function_pos, &m_setup_pos};
    for (const RawLine& line : raw_lines()) {
        for (int i = 0; i < 3; ++i) {
            // The first declaration header marks its section: the text ends there, and a repeated
            // one further down is no new boundary. Of the setup headers the last counts, as a
            // document without declarations may hold "[SETUP]" as a line of its text.
            if (line.text != headers[i] || (i < 2 && *positions[i] > 0)) continue;
            // The header is read with a limit of the longest flag plus its brackets: a header of
            // that length stops ahead of its line end, a shorter one reads its line end too.
            const size_t read = line.text.size() == longest + 2 ? longest + 2 : line.text.size() + 1;
            *positions[i] = static_cast<long>(line.start + read);
        }
    }
    m_file_size = static_cast<long>(Text().size());
}

bool VarFunIniFile::FindVariableFlag() {
    if (!readable()) return false;
    if (m_variable_pos < 0) find_flags();
    return m_variable_pos > 0;
}

bool VarFunIniFile::FindFunctionFlag() {
    if (!readable()) return false;
    if (m_function_pos < 0) find_flags();
    return m_function_pos > 0;
}

bool VarFunIniFile::FindSetupFlag() {
    if (!readable()) return false;
    if (m_setup_pos < 0) find_flags();
    return m_setup_pos > 0;
}

int VarFunIniFile::SizeOfFile() {
    if (!readable()) return 0;
    if (m_file_size < 0) find_flags();
    return static_cast<int>(m_file_size);
}

int VarFunIniFile::SizeOfAsciiFile() {
    if (!readable()) return 0;
    const std::string& text = Text();
    return static_cast<int>(text.size() - static_cast<size_t>(std::count(text.begin(), text.end(), '\r')));
}

int VarFunIniFile::GetStartOfDecs() {
    long start = SizeOfFile();
    if (start == 0) return 0;
    const bool variables = FindVariableFlag(), functions = FindFunctionFlag();
    const long variable_start = m_variable_pos - static_cast<long>(m_variable_flag.size() + 2);
    const long function_start = m_function_pos - static_cast<long>(m_function_flag.size() + 2);
    if (variables && functions)
        start = std::min(variable_start, function_start);
    else if (variables)
        start = variable_start;
    else if (functions)
        start = function_start;
    else if (FindSetupFlag())
        start = m_setup_pos - static_cast<long>(m_setup_flag.size() + 3);
    start = std::max(0L, start);
    if (m_dec_carriage_returns < 0) {
        const std::string& text = Text();
        m_dec_carriage_returns = static_cast<int>(std::count(text.begin(), text.begin() + start, '\r'));
    }
    return static_cast<int>(start - m_dec_carriage_returns);
}

// The size of one declaration section at `own` given the other at `other`; the two sizes are
// mirror images. The last case (this section behind the other with a SETUP present) gives 0: the
// order of the tests makes it so, and it is kept.
long VarFunIniFile::section_size(long own, long other, bool other_found, size_t other_flag_length) {
    const bool setup = FindSetupFlag();
    if (other_found && own < other) return other - own - static_cast<long>(other_flag_length);
    if (!other_found && setup) return m_setup_pos - own;
    if (!other_found || !setup) return m_file_size - own;
    return 0;
}

int VarFunIniFile::SizeOfVarSection() {
    if (!FindVariableFlag()) return 0;
    const bool functions = FindFunctionFlag();
    return static_cast<int>(section_size(m_variable_pos, m_function_pos, functions, m_function_flag.size()));
}

int VarFunIniFile::SizeOfFunSection() {
    if (!FindFunctionFlag()) return 0;
    const bool variables = FindVariableFlag();
    return static_cast<int>(section_size(m_function_pos, m_variable_pos, variables, m_variable_flag.size()));
}

int VarFunIniFile::GetNumVariables() {
    if (SizeOfVarSection() == 0) return 0;
    return std::max<int>(1, static_cast<int>(GetVariableNames().size()));
}

int VarFunIniFile::GetNumFunctions() {
    if (SizeOfFunSection() == 0) return 0;
    return static_cast<int>(GetKeyNames(m_function_flag).size());
}

std::vector<std::string> VarFunIniFile::GetFunctionCatagories() {
    std::vector<std::string> categories;
    if (!readable()) return categories;
    for (const RawLine& line : raw_lines()) {
        if (!holds(line.text, '[') || !holds(line.text, ']') || holds(line.text, '=')) continue;
        const size_t first = line.text.find_first_not_of(" \t");
        if (line.text[first] != '[') continue;
        const size_t close = line.text.find(']', first);
        if (close == std::string_view::npos) continue;
        categories.emplace_back(line.text.substr(first + 1, close - first - 1));
    }
    return categories;
}

int VarFunIniFile::SizeOfFunctionCatagories() {
    int size = 0;
    for (const std::string& category : GetFunctionCatagories()) size += static_cast<int>(category.size()) + 1;
    return size > 0 ? size + 1 : 0;
}

bool VarFunIniFile::IsFunctionCatagory(std::string_view category) {
    const std::vector<std::string> categories = GetFunctionCatagories();
    return std::find(categories.begin(), categories.end(), category) != categories.end();
}

bool VarFunIniFile::select_category(std::string_view category) {
    if (category.empty()) return true;
    if (!IsFunctionCatagory(category)) return false;
    SetFunctionFlagStr(category);
    return true;
}

long VarFunIniFile::function_header(const std::vector<RawLine>& lines) const {
    const std::string header = "[" + m_function_flag + "]";
    for (size_t i = 0; i < lines.size(); ++i)
        if (lines[i].text == header) return static_cast<long>(i);
    return -1;
}

bool VarFunIniFile::GetFunctionNames(std::vector<std::string>& names, std::string_view category) {
    names.clear();
    if (!select_category(category) || !readable()) return false;
    const std::vector<RawLine>& lines = raw_lines();
    const long header = function_header(lines);
    if (header < 0) return false;
    for (size_t i = static_cast<size_t>(header) + 1; i < lines.size(); ++i) {
        const std::string_view text = lines[i].text;
        if (text.empty() || !std::isalpha(static_cast<unsigned char>(text[0]))) break;
        if (holds(text, '[') && holds(text, ']') && holds(text, '=')) names.emplace_back(text.substr(0, text.find('=')));
    }
    return !names.empty();
}

int VarFunIniFile::SizeOfFunctionNames(std::string_view category) {
    std::vector<std::string> names;
    GetFunctionNames(names, category);
    int size = 1;
    for (const std::string& name : names) size += static_cast<int>(name.size()) + 1;
    return size;
}

bool VarFunIniFile::GetFunctionValue(std::string_view key, std::string& value, std::string_view category) {
    value.clear();
    if (!select_category(category) || !readable()) return false;
    const std::vector<RawLine>& lines = raw_lines();
    const long header = function_header(lines);
    if (header < 0) return false;
    // The search runs on to the end of the file, past the end of the section.
    for (size_t i = static_cast<size_t>(header) + 1; i < lines.size(); ++i) {
        const std::string_view text = lines[i].text;
        const size_t equal = text.find('=');
        if (equal == std::string_view::npos || text.substr(0, equal) != key) continue;
        std::string_view rest = text.substr(equal + 1);
        while (!rest.empty() && std::isspace(static_cast<unsigned char>(rest.front()))) rest.remove_prefix(1);
        value = std::string(rest);
        return !value.empty();
    }
    return false;
}

bool VarFunIniFile::IsFunction(std::string_view name, std::string_view category) {
    if (!select_category(category)) return false;
    if (SizeOfFunSection() == 0) return false;
    std::vector<std::string> keys;
    GetFunctionNames(keys);
    for (const std::string& key : keys)
        if (equal_ignoring_case(key, name) || equal_ignoring_case(bare_name(key), name)) return true;
    return false;
}

bool VarFunIniFile::GetFuncFullName(std::string_view name, std::string& full_name, std::string_view category) {
    full_name.clear();
    if (!select_category(category)) return false;
    std::vector<std::string> keys;
    GetFunctionNames(keys);
    for (const std::string& key : keys) {
        if (equal_ignoring_case(bare_name(key), name)) {
            full_name = key;
            return true;
        }
    }
    return false;
}

int VarFunIniFile::SizeOfLongestLine() {
    if (!readable()) return 0;
    if (m_longest_line < 0) {
        int longest = 0;
        for (const RawLine& line : raw_lines()) longest = std::max(longest, static_cast<int>(line.text.size()) + 1);
        m_longest_line = longest + 1;
    }
    return m_longest_line;
}

int VarFunIniFile::SizeOfLongestFuncName(std::string_view category) {
    std::vector<std::string> keys;
    if (!GetFunctionNames(keys, category)) return 0;
    size_t longest = 0;
    for (const std::string& key : keys) longest = std::max(longest, key.size());
    return static_cast<int>(longest) + 1;
}

int VarFunIniFile::SizeOfLongestFuncValue(std::string_view category) {
    std::vector<std::string> keys;
    if (!GetFunctionNames(keys, category)) return 0;
    // Each read is limited by the length of the last value read, so a later, longer value is
    // measured cut short: the result can understate the longest value.
    size_t limit = static_cast<size_t>(SizeOfLongestLine());
    size_t longest = 0;
    for (const std::string& key : keys) {
        std::string value;
        if (!GetFunctionValue(key, value) || value.empty()) continue;
        const size_t seen = std::min(value.size(), limit);
        longest = std::max(longest, seen);
        limit = seen;
    }
    return static_cast<int>(longest) + 1;
}

int VarFunIniFile::SizeOfLongestFuncNameAndValue(std::string_view category) {
    return SizeOfLongestFuncName(category) + SizeOfLongestFuncValue(category) + 3;
}

} // namespace quorvex::store
