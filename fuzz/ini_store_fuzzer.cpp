// Reads arbitrary bytes as an ini text (a document or a library), runs every raw scan and a
// round of profile reads and writes, and checks that text nobody wrote to comes back unchanged.
#include "store/var_fun_ini_file.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    quorvex::store::VarFunIniFile file("fuzz.qvx");
    file.SetText(text);
    if (file.Text() != text) __builtin_trap(); // read and written back, byte for byte

    file.GetStartOfDecs();
    file.SizeOfVarSection();
    file.SizeOfFunSection();
    file.GetNumVariables();
    file.GetNumFunctions();
    file.SizeOfLongestLine();
    for (const std::string& category : file.GetFunctionCatagories()) {
        std::vector<std::string> names;
        file.GetFunctionNames(names, category);
        for (const std::string& name : names) {
            std::string value, full;
            file.GetFunctionValue(name, value);
            file.IsFunction(name.substr(0, name.find('[')));
            file.GetFuncFullName(name.substr(0, name.find('[')), full);
        }
        file.SizeOfLongestFuncValue(category);
    }
    for (const std::string& section : file.GetSectionNames()) {
        for (const std::string& key : file.GetKeyNames(section)) {
            const std::string value = file.GetString(section, key);
            quorvex::store::TColor colour = 0;
            file.GetColor(section, key, 0, colour);
            std::string x, y, z;
            file.GetPoint(section, key, x, y, z);
            // A value written back where it stands reads back the same, but for a lone CR that
            // a file may hold inside a line: a written key or value never breaks its line.
            file.WriteString(section, key, value);
            const bool lone_cr = (key + value).find('\r') != std::string::npos;
            if (!lone_cr && file.GetString(section, key) != value) __builtin_trap();
        }
    }
    file.WriteString("NEW SECTION", "key=with=equals", "value");
    if (file.GetString("new section", "KEY=WITH=EQUALS") != "value") __builtin_trap();
    return 0;
}
