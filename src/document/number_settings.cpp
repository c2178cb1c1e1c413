#include "number_settings.h"

#include <cmath>
#include <cstdlib>
#include <string>

namespace quorvex::document {

namespace {

float read_zero_precision(const store::IniFile& ini, std::string_view section, const char* key) {
    const std::string text = ini.GetString(section, key, "1.0e-12");
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    return end != text.c_str() && std::isfinite(value) && value >= 0 && value < 1 ? static_cast<float>(value)
                                                                                    : 1.0e-12f;
}

// An engine setting outside what the engine can show is left at its default.
int read_bounded(const store::IniFile& ini, std::string_view section, const char* key, int fallback, int low,
                 int high) {
    const int value = ini.GetInt(section, key, fallback);
    return value < low || value > high ? fallback : value;
}

} // namespace

void ReadNumberSettings(const store::IniFile& ini, std::string_view section, engine::Parser& parser) {
    engine::PrecformType& answer = parser.answer_format();
    engine::PrecformType& variable = parser.variable_format();
    answer.zero_precision = read_zero_precision(ini, section, "AnsZeroPrecision");
    variable.zero_precision = read_zero_precision(ini, section, "VarZeroPrecision");
    answer.precision = read_bounded(ini, section, "AnsPrecision", 14, 1, 30);
    variable.precision = read_bounded(ini, section, "VarPrecision", 14, 1, 30);
    answer.format = read_bounded(ini, section, "AnsFormat", 0, 0, 1);
    variable.format = read_bounded(ini, section, "VarFormat", 0, 0, 1);
    answer.dec_point = ini.GetInt(section, "AnsDecPoint", 0) != 0;
    variable.dec_point = ini.GetInt(section, "VarDecPoint", 0) != 0;
    answer.lead_sign = ini.GetInt(section, "AnsLeadSign", 0) != 0;
    variable.lead_sign = ini.GetInt(section, "VarLeadSign", 0) != 0;
    parser.set_angle_type(read_bounded(ini, section, "AngleType", 0, 0, 1));
}

} // namespace quorvex::document
