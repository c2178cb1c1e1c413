#pragma once
#include "ini_file.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex::store {

// Where a file that can not be read is reported: the text and the caption ("File Access").
using ErrorSink = std::function<void(const std::string& text, const std::string& caption)>;

// An ini file with declaration sections (documents) or function categories (libraries). Besides
// the profile calls it scans the raw text line by line, as a document and a library need: to find
// where the declarations begin behind the free editor text, and to list function entries, whose
// keys hold brackets, in file order. The scans compare section headers exactly, case included,
// unlike the profile calls.
class VarFunIniFile : public IniFile {
public:
    // Null or empty flags take the defaults "DECLARED FUNCTIONS" and "DECLARED VARIABLES". An
    // empty path is reported at once and leaves every scan failing.
    VarFunIniFile(std::string path, std::string_view function_flag = {}, std::string_view variable_flag = {},
                  ErrorSink sink = {});

    void SetFunctionFlagStr(std::string_view flag);
    void SetVariableFlagStr(std::string_view flag);
    const std::string& FunctionFlag() const { return m_function_flag; }
    const std::string& VariableFlag() const { return m_variable_flag; }

    bool WriteVariable(std::string_view name, std::string_view value) { return WriteString(m_variable_flag, name, value); }
    bool WriteFunction(std::string_view name, std::string_view value) { return WriteString(m_function_flag, name, value); }
    std::string GetVariable(std::string_view name, std::string_view fallback = {}) const {
        return GetString(m_variable_flag, name, fallback);
    }
    std::vector<std::string> GetVariableNames() const { return GetKeyNames(m_variable_flag); }
    // An empty but present variable section counts one variable (the listing is never tested for
    // being empty); an empty function section counts none.
    int GetNumVariables();
    int GetNumFunctions();

    // The function keys ("NAME[A,B]") of the category, or of the current function section when
    // the category is empty. A category given becomes the current one. The listing ends at the
    // first line that does not begin with a letter; lines without '[', ']' and '=' are skipped.
    bool GetFunctionNames(std::vector<std::string>& names, std::string_view category = {});
    int SizeOfFunctionNames(std::string_view category = {});
    bool IsFunctionCatagory(std::string_view category);
    // Every section name of the file, in order.
    std::vector<std::string> GetFunctionCatagories();
    int SizeOfFunctionCatagories();
    // The value of the key `key`, exactly as written, searched from the category's header to the
    // end of the file.
    bool GetFunctionValue(std::string_view key, std::string& value, std::string_view category = {});
    // The bare name ("COT") or the whole key ("COT[X]"), ignoring case.
    bool IsFunction(std::string_view name, std::string_view category = {});
    // The whole key of a bare name, ignoring case.
    bool GetFuncFullName(std::string_view name, std::string& full_name, std::string_view category = {});

    // Characters of the text ahead of the first declaration section, each CR LF counted as one.
    int GetStartOfDecs();
    int SizeOfFile();
    int SizeOfAsciiFile();
    int SizeOfVarSection();
    int SizeOfFunSection();
    bool FindVariableFlag();
    bool FindFunctionFlag();
    bool FindSetupFlag();
    int SizeOfLongestLine();
    int SizeOfLongestFuncName(std::string_view category = {});
    int SizeOfLongestFuncValue(std::string_view category = {});
    int SizeOfLongestFuncNameAndValue(std::string_view category = {});

private:
    struct RawLine {
        size_t start;
        std::string_view text;
    };
    // False, after reporting, when there is no text to scan.
    bool readable();
    const std::vector<RawLine>& raw_lines() const;
    void find_flags();
    bool select_category(std::string_view category);
    // Index of the line equal to the current function header, or -1.
    long function_header(const std::vector<RawLine>& lines) const;
    void invalidate_scans();
    long section_size(long own, long other, bool other_found, size_t other_flag_length);

    ErrorSink m_sink;
    std::string m_error_text;
    std::string m_function_flag;
    std::string m_variable_flag;
    const std::string m_setup_flag = "SETUP";
    int m_longest_line = -1;
    int m_dec_carriage_returns = -1;
    long m_variable_pos = -1;
    long m_function_pos = -1;
    long m_setup_pos = -1;
    long m_file_size = -1;
    size_t m_scanned_revision = 0;
    mutable std::vector<RawLine> m_lines;
    mutable size_t m_lines_revision = 0; // the text's revision that m_lines was split from
    mutable const char* m_lines_text = nullptr;
};

} // namespace quorvex::store
