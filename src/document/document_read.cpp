// Loading: the text up to the first declaration header, then each section in turn into the
// engine and the document.
#include "document.h"
#include "font_fields.h"
#include "section_writer.h"
#include "number_settings.h"

#include "store/atomic_write.h"
#include "store/ini_file.h"

#include <cmath>
#include <cstdlib>

namespace quorvex::document {

namespace {

constexpr const char* k_setup = "SETUP";
constexpr const char* k_font = "FONT";

// A range saved with leading signs shown ("+1,+10,+25") as the declaration takes it: a '+' in
// front of a limit or the point count says nothing, and the declaration refuses it.
std::string without_plus_signs(std::string_view range) {
    std::string text;
    bool field_start = true;
    for (const char c : range) {
        if (field_start && c == '+') continue;
        text += c;
        if (c == ',') field_start = true;
        else if (c != ' ') field_start = false;
    }
    return text;
}

} // namespace

bool Document::Read(const std::string& path) {
    std::string bytes;
    if (!store::read_whole_file(path, bytes)) {
        report("File \" " + path + " \" Could Not Be Opened!", "File Access");
        return false;
    }
    return ReadText(bytes);
}

bool Document::ReadText(std::string_view bytes) {
    Clear();
    m_parser.delete_all_vars();
    m_parser.delete_all_funcs();
    if (!step("Opening File...", 0)) return false;

    const size_t start = start_of_declarations(bytes);
    // The sections are read from behind the text only, so that text resembling a section
    // can not stand in for one.
    store::IniFile ini(".");
    std::vector<std::string> repeated;
    ini.SetText(store::IniFile::JoinRepeatedSections(bytes.substr(start), repeated));
    for (const std::string& name : repeated)
        report("The section [" + name + "] appears more than once in the file; the entries of all of them were "
               "loaded, and the document is saved with one.",
               "File Open");

    const bool loaded = ReadVariables(ini) && step("Opening File...", 15) && ReadFunctions(ini) &&
                        step("Opening File...", 25);
    if (!loaded) return false;
    ReadSettings(ini);
    if (!step("Opening File...", 35)) return false;
    ReadFont(ini);
    if (!step("Opening File...", 45)) return false;
    ReadCalculusParameters(ini);
    if (!step("Opening File...", 55)) return false;
    ReadMathUtilityParameters(ini);
    if (!step("Opening File...", 65)) return false;
    if (!ReadGraphs(ini) || !step("Opening File...", 75)) return false;

    Lines = split_lines(bytes.substr(0, start));
    // The engine now holds what the file holds, even where a section was absent and only the
    // clearing above touched it: nothing is left to save.
    m_parser.set_vars_saved(true);
    m_parser.set_funcs_saved(true);
    return step("Opening File...", 100);
}

bool Document::ReadVariables(const store::IniFile& ini) {
    constexpr const char* section = "DECLARED VARIABLES";
    const std::vector<std::string> names = ini.GetKeyNames(section);
    if (names.empty()) return true;
    if (!step("Reading And Declaring Variables", 0)) return false;
    // A variable saved without a value is declared by its bare name.
    m_parser.set_auto_declare(true);
    bool completed = true;
    for (const std::string& read : names) {
        // A CR inside a line would be a blank after the next save, so it is one from the start:
        // what loads is what the document will write.
        const std::string name = as_read_back(read);
        if (cancelled()) {
            completed = false;
            break;
        }
        std::string value = as_read_back(ini.GetString(section, read, "?"));
        bool ok = true;
        if (value.find('(') != std::string::npos) {
            // "value (low,high,points,increment)": the range first, then the present value.
            std::string text = value;
            const char* range = engine::Parser::get_var_dec_value(text.data());
            const size_t at = static_cast<size_t>(range - text.data());
            ok = evaluate(name + "=" + without_plus_signs(range));
            value = value.substr(0, at >= 2 ? at - 2 : 0);
        }
        if (ok) ok = evaluate(value == "?" ? name : name + "=" + value);
        if (!ok)
            report("Variable '" + name + "' could not be loaded!", "Variable Manager");
    }
    m_parser.set_auto_declare(m_auto_declare);
    m_parser.set_vars_saved(true);
    return completed;
}

bool Document::ReadFunctions(const store::IniFile& ini) {
    constexpr const char* section = "DECLARED FUNCTIONS";
    const std::vector<std::string> names = ini.GetKeyNames(section);
    if (names.empty()) return true;
    if (!step("Reading And Declaring Functions", 0)) return false;
    for (const std::string& read : names) {
        if (cancelled()) return false;
        const std::string name = as_read_back(read);
        const std::string value = as_read_back(ini.GetString(section, read));
        // A definition is what the user typed: the engine checks it as it would a typed line.
        if (value.empty() || name.find('[') == std::string::npos || !evaluate(name + "=" + value))
            report("Function '" + name + "' could not be loaded!", "Function Manager");
    }
    m_parser.set_funcs_saved(true);
    return true;
}

void Document::ReadSettings(const store::IniFile& ini) {
    step("Reading And Setting Up Predefined Configuration", 0);
    ReadNumberSettings(ini, k_setup, m_parser);
    // Only a document saved with a choice of its own has the key.
    const std::string precise = ini.GetString(k_setup, "PreciseArithmetic", "");
    if (precise.empty()) set_precise_choice(std::nullopt);
    else set_precise_choice(ini.GetInt(k_setup, "PreciseArithmetic", 0) != 0);
}

void Document::ReadFont(const store::IniFile& ini) {
    step("Read The Font Settings", 0);
    Font.FaceName = ini.GetString(k_font, "FaceName", "Arial").substr(0, FontRecord::MaxFaceName);
    get_fields(ini, k_font, Font, k_font_fields);
    ini.GetColor(k_font, "Color", 0, Font.Color);
}

} // namespace quorvex::document
