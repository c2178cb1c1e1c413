#pragma once
// What the desktop program's tests share: typing a line into the editor as a user would.
#include "graph/graph_colors.h"
#include "graph/graph_data.h"
#include "gui/editor/math_editor.h"
#include "store/ini_file.h"

#include <QtTest>

namespace quorvex::gui::testing {

// Types `text` key by key and presses `end` (Enter unless told).
inline void type_line(MathEditor* editor, const QString& text, Qt::Key end = Qt::Key_Return,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, end, modifiers);
}

// The user's "Graph Default Colors" and default orientation set to values no graph has of its own,
// and whether a graph started from them, as a new graph made by a tool must.
inline void set_user_graph_defaults(store::IniFile& settings) {
    settings.WriteString(graph::k_default_colors_section, "Background", "10,20,30");
    settings.WriteString(graph::k_default_orientation_section, "Depth2D", "33");
}
inline bool has_user_graph_defaults(const graph::GraphData& graph) {
    return graph.BackgroundColor == (10u | 20u << 8 | 30u << 16) && graph.Depth == 33 && graph.DefaultDepth == 33;
}

} // namespace quorvex::gui::testing
