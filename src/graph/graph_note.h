#pragma once
#include <string>

namespace quorvex::graph {

// A note or a point label pinned to a graph. A note is free text at a pixel position (PosX,
// PosY). A label belongs to a computed point: PosX is the series (data set) index and PosY the
// point index, and its text " (x , y) " or " (x , y , z) " gives the coordinates it shows.
class GraphNote {
public:
    std::string Text;    // line ends as CR LF
    std::string IniText; // the form written to files: each CR LF as "||"
    std::string XStr, YStr, ZStr;
    int PosY = 0;
    int PosX = 0;
    int Index = -1; // position of the item's text object in the window's list; -1 none
    bool IsNote = false;

    GraphNote() = default;
    GraphNote(const char* text, int x, int y, int index, bool is_note);

    // Stores the text with each "||" made a line end; a label then reads its coordinates from
    // it. A null text changes nothing.
    void SetNote(const char* text);
    // The text with each CR LF written as "||", the form saved in files.
    std::string GetIniNote() const;
    // Reads the coordinates of a label text. The coordinates are cleared first in every case;
    // a note, a null text or a text of another form leaves them empty and gives false.
    bool SetValues(const char* text);
    // Makes the item a note or a label; a label reads its coordinates from its text again.
    void SetIsNote(bool is_note);
};

// "||" as a line end, and back: the line-end form of notes kept in files.
std::string note_text_from_ini(const std::string& text);
std::string note_text_to_ini(const std::string& text);

} // namespace quorvex::graph
