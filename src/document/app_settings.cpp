#include "app_settings.h"

#include "number_settings.h"

namespace quorvex::document {

namespace {

constexpr const char* k_options = "OPTIONS";
constexpr const char* k_parser_options = "PARSER OPTIONS";

} // namespace

std::string settings_path(const std::string& data_dir) {
    if (data_dir.empty()) return "Quorvex.ini";
    return data_dir + (data_dir.back() == '/' ? "" : "/") + "Quorvex.ini";
}

AppSettings ReadAppSettings(const store::IniFile& ini) {
    AppSettings settings;
    settings.Sound = ini.GetInt(k_options, "Sound", 1) != 0;
    settings.IncrementalVariables = ini.GetInt(k_options, "IncrementalVariables", 1) != 0;
    settings.PreciseArithmetic = ini.GetInt(k_options, "PreciseArithmetic", 0) != 0;
    settings.FlatButtons = ini.GetInt(k_options, "FlatButtons", 0) != 0;
    const int method = ini.GetInt(k_options, "CalculationMethod", 1);
    settings.CalculationMethod = method >= 0 && method <= 2 ? method : 1;
    settings.UseSquareFunctionBrackets = ini.GetInt(k_options, "UseSquareFunctionBrackets", 0) != 0;
    settings.RecalcDependentLines = ini.GetInt(k_options, "RecalcDependentLines", 0) != 0;
    settings.PlayedWelcomeTutorial = ini.GetInt(k_options, "PlayedWelcomeTutorial", 0) != 0;
    settings.AutoCheckVersion = ini.GetInt(k_options, "AutoCheckVersion", -1);
    settings.AutoCheckDays = ini.GetInt(k_options, "AutoCheckDays", 7);
    return settings;
}

void ApplyToNewParser(const AppSettings& settings, engine::Parser& parser) {
    parser.set_incremental_display(settings.IncrementalVariables);
    parser.set_use_square_brackets(settings.UseSquareFunctionBrackets);
    parser.set_precise(settings.PreciseArithmetic);
}

void ReadGlobalSettings(const store::IniFile& ini, engine::Parser& parser) {
    ReadNumberSettings(ini, k_parser_options, parser);
}

} // namespace quorvex::document
