#pragma once
// What the desktop program's tests share: typing a line into the editor as a user would.
#include "gui/editor/math_editor.h"

#include <QtTest>

namespace quorvex::gui::testing {

// Types `text` key by key and presses `end` (Enter unless told).
inline void type_line(MathEditor* editor, const QString& text, Qt::Key end = Qt::Key_Return,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, end, modifiers);
}

} // namespace quorvex::gui::testing
