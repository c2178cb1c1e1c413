#pragma once
#include "engine/parser.h"
#include "store/ini_file.h"

#include <string_view>

namespace quorvex::document {

// The engine's two number formats (answers and variables: zero tolerance, digits, notation,
// decimal point, leading sign) and its angle type, read from `section` of an ini text under the
// keys a document's [SETUP] uses. A missing or unusable value takes the default.
void ReadNumberSettings(const store::IniFile& ini, std::string_view section, engine::Parser& parser);

} // namespace quorvex::document
