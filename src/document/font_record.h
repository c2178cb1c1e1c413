#pragma once
#include "store/ini_file.h"

#include <string>

namespace quorvex::document {

// The editor's font as a document keeps it: the fields of a platform font description, in the
// order they are saved, with the values a document without a font section gets.
struct FontRecord {
    static constexpr size_t MaxFaceName = 31;

    std::string FaceName = "Arial";
    int Height = 13;
    int Width = 0;
    int Escapement = 0;
    int Orientation = 0;
    int Weight = 700;
    int Italic = 0;
    int Underline = 0;
    int StrikeOut = 0;
    int CharSet = 0;
    int OutPrecision = 3;
    int ClipPrecision = 2;
    int Quality = 1;
    int PitchAndFamily = 34;
    store::TColor Color = 0; // black

    bool operator==(const FontRecord&) const = default;
};

} // namespace quorvex::document
