#pragma once
#include "font_record.h"
#include "section_fields.h"

namespace quorvex::document {

// The font's whole-number fields under their keys, in the order a save writes them (between the
// face name and the colour).
inline constexpr SectionField<FontRecord> k_font_fields[] = {
    number("Height", &FontRecord::Height),
    number("Width", &FontRecord::Width),
    number("Escapement", &FontRecord::Escapement),
    number("Orientation", &FontRecord::Orientation),
    number("Weight", &FontRecord::Weight),
    number("Italic", &FontRecord::Italic),
    number("Underline", &FontRecord::Underline),
    number("StrikeOut", &FontRecord::StrikeOut),
    number("CharSet", &FontRecord::CharSet),
    number("OutPrecision", &FontRecord::OutPrecision),
    number("ClipPrecision", &FontRecord::ClipPrecision),
    number("Quality", &FontRecord::Quality),
    number("PitchAndFamily", &FontRecord::PitchAndFamily),
};

} // namespace quorvex::document
