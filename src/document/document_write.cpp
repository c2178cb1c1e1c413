// Saving: the text, then the sections in their fixed order, written to the file in one step.
#include "document.h"
#include "font_fields.h"
#include "section_writer.h"

#include "graph/graph_colors.h"
#include "store/atomic_write.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace quorvex::document {

namespace {

constexpr const char* k_save_caption = "Save File";

std::string zero_precision_text(float value) {
    char text[32];
    std::snprintf(text, sizeof text, "%1.1e", static_cast<double>(value));
    return text;
}

} // namespace

bool Document::Write(const std::string& path) {
    m_last_error.clear();
    // A target that can not take the save is refused before anything is composed.
    if (!store::can_save_to(path, &m_last_error)) {
        report(m_last_error, k_save_caption);
        return false;
    }
    std::string text;
    if (!Compose(text)) {
        m_last_error = "The save was cancelled.";
        return false;
    }
    if (const auto line = first_cut_line(Lines, text))
        report("The line \"" + Lines[*line] + "\" (line " + std::to_string(*line + 1) +
                   ") of the text reads as the start of the document's sections. When the document is opened "
                   "again, the text will end ahead of it. Change the line to keep the text after it.",
               k_save_caption);
    if (!store::write_file_atomically(path, text, &m_last_error)) {
        report("File was not saved! " + m_last_error, k_save_caption);
        return false;
    }
    m_parser.set_vars_saved(true);
    m_parser.set_funcs_saved(true);
    return true;
}

bool Document::Compose(std::string& text) {
    std::string head;
    for (const std::string& line : Lines) head.append(line).append("\r\n");
    SectionWriter out(std::move(head));
    if (!step("Saving File...", 0)) return false;
    if (!WriteVariables(out) || !step("Saving File...", 10)) return false;
    if (!WriteFunctions(out) || !step("Saving File...", 25)) return false;
    WriteSettings(out);
    if (!step("Saving File...", 40)) return false;
    WriteFont(out);
    if (!step("Saving File...", 55)) return false;
    WriteCalculusParameters(out);
    if (!step("Saving File...", 70)) return false;
    WriteMathUtilityParameters(out);
    if (!step("Saving File...", 85)) return false;
    if (!WriteGraphs(out) || !step("Saving File...", 100)) return false;
    text = out.Finish();
    return true;
}

bool Document::WriteVariables(SectionWriter& out) {
    const int count = m_parser.variable_count();
    if (count == 0) return true;
    if (!step("Writing and Saving Variables", 0)) return false;
    out.Begin("DECLARED VARIABLES");
    const int share = 100 / count;
    for (int i = 0; i < count; ++i) {
        const char* name = m_parser.get_var_name(i);
        const char* value = m_parser.get_var_str_value(i, 14, false);
        out.Put(name ? name : "", value && *value ? value : "?");
        if (!step("Writing and Saving Variables", (i + 1) * share)) return false;
    }
    return true;
}

bool Document::WriteFunctions(SectionWriter& out) {
    const int count = m_parser.function_count();
    if (count == 0) return true;
    if (!step("Writing And Saving Functions", 0)) return false;
    out.Begin("DECLARED FUNCTIONS");
    const int share = 100 / count;
    for (int i = 0; i < count; ++i) {
        const engine::Function* function = m_parser.function_at(i);
        out.Put(function->full_name(), function->value());
        if (!step("Writing And Saving Functions", (i + 1) * share)) return false;
    }
    return true;
}

void Document::WriteSettings(SectionWriter& out) {
    step("Writing And Saving The Predefined Configuration", 0);
    const engine::PrecformType& answer = m_parser.answer_format();
    const engine::PrecformType& variable = m_parser.variable_format();
    out.Begin("SETUP");
    out.Put("AnsZeroPrecision", zero_precision_text(answer.zero_precision));
    out.Put("VarZeroPrecision", zero_precision_text(variable.zero_precision));
    out.PutInt("AnsPrecision", answer.precision);
    out.PutInt("VarPrecision", variable.precision);
    out.PutInt("AnsFormat", answer.format);
    out.PutInt("VarFormat", variable.format);
    out.PutInt("AnsDecPoint", answer.dec_point);
    out.PutInt("VarDecPoint", variable.dec_point);
    out.PutInt("AnsLeadSign", answer.lead_sign);
    out.PutInt("VarLeadSign", variable.lead_sign);
    out.PutInt("AngleType", m_parser.angle_type());
    if (m_precise_choice) out.PutInt("PreciseArithmetic", *m_precise_choice);
}

void Document::WriteFont(SectionWriter& out) {
    step("Writing The Font Settings", 0);
    out.Begin("FONT");
    out.Put("FaceName", Font.FaceName.substr(0, FontRecord::MaxFaceName));
    put_fields(out, Font, k_font_fields);
    out.Put("Color", graph::color_text(Font.Color));
}

} // namespace quorvex::document
