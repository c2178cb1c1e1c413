// Data sets and notes, kept in the section of their owner (a graph or a tool) under numbered keys;
// a set's points are keyed by the set's name.
#include "document.h"
#include "section_writer.h"

#include "graph/graph_colors.h"
#include "store/ini_file.h"

#include <algorithm>
#include <climits>

namespace quorvex::document {

namespace {

constexpr const char* k_open_caption = "File Open";
// A data-set Y of this text is no point: a missing Y.
constexpr const char* k_missing_y = "1E+308";

std::string numbered(const char* key, int n) { return key + std::to_string(n); }

} // namespace

void Document::WriteDataSet(SectionWriter& out, const graph::StrDataPnts& set, int index) {
    if (set.Name.empty()) return;
    out.Put(numbered("DataSet", index), set.Name);
    if (!set.Label.empty()) out.Put(numbered("DataLabel", index), set.Label);
    if (set.HasLineColor) out.Put(numbered("DataLineColor", index), graph::color_text(set.LineColor));
    out.PutInt(numbered("DataLineWidth", index), set.LineWidth);
    const int count = set.GetMaxXYZPoint() + 1;
    if (count <= 0) return;
    out.PutInt(set.Name + "NumPts", count);
    std::string value;
    for (int i = 0; i < count; ++i) {
        const std::string* x = set.GetXDataPoint(i);
        const std::string* y = set.GetYDataPoint(i);
        // The set's one Z goes with its first point.
        const std::string* z = i == 0 ? set.GetZDataPoint() : nullptr;
        value.clear();
        if (x) value += *x;
        value += ',';
        if (y) value += *y;
        value += ',';
        if (z) value += *z;
        out.Put(set.Name + "Pt" + std::to_string(i), value);
    }
}

bool Document::ReadDataSet(graph::StrDataPnts& set, const store::IniFile& ini, const std::string& section,
                           const std::string& title, int index) {
    const std::string name = ini.GetString(section, numbered("DataSet", index));
    if (name.empty()) {
        report("File data for data set " + std::to_string(index) + " of graph \"" + title +
                   "\" does not have a name and could not be loaded. Your file may be corrupt!",
               k_open_caption);
        return false;
    }
    set.SetName(name.c_str());
    set.SetLabel(ini.GetString(section, numbered("DataLabel", index)).c_str());
    const std::string color_key = numbered("DataLineColor", index);
    if (!ini.GetString(section, color_key).empty()) {
        ini.GetColor(section, color_key, 0x0000FF, set.LineColor);
        set.HasLineColor = true;
    }
    set.LineWidth = ini.GetInt(section, numbered("DataLineWidth", index), 1);

    // A damaged count is bounded by the keys there are: every point has one. Points the count
    // names but the file does not hold are not made up: the set ends with its last point there.
    const int keys = static_cast<int>(std::min<size_t>(ini.CountKeys(section), INT_MAX));
    const int declared = ini.GetInt(section, name + "NumPts", 0);
    int count = std::min(declared, keys);
    const auto point_key = [&](int i) { return name + "Pt" + std::to_string(i); };
    constexpr const char* k_absent = "\x01";
    while (count > 0 && ini.GetString(section, point_key(count - 1), k_absent) == k_absent) --count;
    if (count < declared)
        report("Data set \"" + name + "\" of graph \"" + title + "\" is saved with " + std::to_string(declared) +
                   " points but the file holds " + std::to_string(count) + "; only those were loaded.",
               k_open_caption);
    std::string x, y, z;
    const auto bad_point = [&](const char* axis, int point) {
        report("File data for data set \"" + name + "\" (" + axis + " Data Point #" + std::to_string(point) +
                   ") in graph \"" + title + "\" could not be completely loaded. Your file may be corrupt!",
               k_open_caption);
    };
    for (int i = 0; i < count; ++i) {
        ini.GetPoint(section, point_key(i), x, y, z);
        // The texts are kept as typed; the engine only confirms that each one is an expression.
        if (!x.empty() && !is_valid_value(x)) {
            bad_point("X", i + 1);
            x.clear();
        }
        if (!y.empty() && y != k_missing_y && !is_valid_value(y)) {
            bad_point("Y", i + 1);
            y.clear();
        }
        if (!z.empty() && !is_valid_value(z)) {
            bad_point("Z", i + 1);
            z.clear();
        }
        if (!x.empty()) set.PutXDataPoint(x.c_str(), i);
        set.PutYDataPoint(y.empty() ? k_missing_y : y.c_str(), i);
        if (!z.empty()) set.PutZDataPoint(z.c_str());
    }
    return true;
}

bool Document::ReadNote(graph::GraphNote& note, const store::IniFile& ini, const std::string& section,
                        const std::string& title, int index) {
    const std::string text = ini.GetString(section, numbered("NoteText", index));
    const int x = ini.GetInt(section, numbered("NoteXPoint", index), -1);
    const int y = ini.GetInt(section, numbered("NoteYPoint", index), -1);
    const int is_note = ini.GetInt(section, numbered("NoteIsNote", index), -1);
    // One message for the first field that is missing; the note is then left out.
    const std::string head = "File data for note " + std::to_string(index) + " of graph \"" + title + "\" ";
    const char* missing = text.empty()  ? "does not have any text and could not be loaded. Your file may be corrupt!"
                          : x == -1     ? "does not have any x coordinate value and could not be loaded. Your file may "
                                          "be corrupt!"
                          : y == -1     ? "does not have any y coordinate value and could not be loaded. Your file may "
                                          "be corrupt!"
                          : is_note == -1 ? "does not have any information regarding to if it is a note or label and "
                                            "therefore, it could not be loaded. Your file may be corrupt!"
                                          : nullptr;
    if (missing) {
        report(head + missing, k_open_caption);
        return false;
    }
    note.PosX = x;
    note.PosY = y;
    note.SetNote(text.c_str());
    note.SetIsNote(is_note != 0);
    note.Index = index - 1;
    return true;
}

} // namespace quorvex::document
