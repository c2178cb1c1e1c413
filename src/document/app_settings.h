#pragma once
#include "engine/parser.h"
#include "store/ini_file.h"

#include <string>

namespace quorvex::document {

// The program's options from the [OPTIONS] section of Quorvex.ini in the user's data folder. A
// missing key takes the default shown.
struct AppSettings {
    bool Sound = true;
    bool IncrementalVariables = true;
    // Values carry about 34 digits between steps, so each shown answer is correctly rounded;
    // off, every step is rounded through 15 digits. A document may keep its own choice.
    bool PreciseArithmetic = false;
    bool FlatButtons = false;
    int CalculationMethod = 1; // 0 Shift+Enter computes, 1 Enter, 2 Enter or the '=' key
    bool UseSquareFunctionBrackets = false;
    bool RecalcDependentLines = false; // after Enter, the lines it made stale are computed too
    bool PlayedWelcomeTutorial = false;
    int AutoCheckVersion = -1; // -1 ask once, 1 check, 0 never
    int AutoCheckDays = 7;
};

// The settings file of a data folder.
std::string settings_path(const std::string& data_dir);

AppSettings ReadAppSettings(const store::IniFile& ini);

// A new document's engine: the options every editor copies from the program, then the
// number formats and angle type of [PARSER OPTIONS]. A document's [SETUP] overrides the latter
// when it is read.
void ApplyToNewParser(const AppSettings& settings, engine::Parser& parser);
void ReadGlobalSettings(const store::IniFile& ini, engine::Parser& parser);

} // namespace quorvex::document
