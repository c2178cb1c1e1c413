// The keypad offscreen: buttons type into the editor, functions wrap, Enter computes, the memory
// holds text.
#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/keypad.h"
#include "gui/editor/math_editor.h"

#include <QTextBlock>
#include <QtTest>

using namespace quorvex::gui;

class KeypadGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void buttonsTypeComputeAndRemember() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        window.show();
        Keypad keypad(scratch.services, [&window] { return &window; });
        MathEditor* editor = window.editor();
        QVERIFY(keypad.press(QStringLiteral("SQRT")));
        QVERIFY(keypad.press(QStringLiteral("2")));
        QCOMPARE(editor->textCursor().block().text(), QStringLiteral("SQRT[2]"));
        QVERIFY(keypad.press(QStringLiteral("Enter")));
        QCOMPARE(editor->document()->firstBlock().text(), QStringLiteral("SQRT[2] = 1.4142135623731 : -1.4142135623731"));

        // x² around a selected sum takes parentheses.
        QTest::keyClicks(editor, QStringLiteral("a+b"));
        QTextCursor cursor = editor->textCursor();
        cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
        editor->setTextCursor(cursor);
        QVERIFY(keypad.press(QString::fromUtf8("x²")));
        QCOMPARE(editor->textCursor().block().text(), QStringLiteral("(a+b)^2"));

        // MS keeps the line as text; MR types it again.
        QVERIFY(keypad.press(QStringLiteral("MS")));
        QVERIFY(scratch.messages.last().contains(QStringLiteral("\"(a+b)^2\" has been saved into memory")));
        QTest::keyClick(editor, Qt::Key_Return);
        QVERIFY(keypad.press(QStringLiteral("MR")));
        QCOMPARE(editor->textCursor().block().text(), QStringLiteral("(a+b)^2"));
        QVERIFY(keypad.press(QStringLiteral("MC")));
        QVERIFY(keypad.press(QStringLiteral("MR")));
        QVERIFY(scratch.messages.last().contains(QStringLiteral("You must first save the text")));

        // Enter on an empty line says so; RAD changes the document's angle unit.
        QTest::keyClick(editor, Qt::Key_Return);
        QVERIFY(keypad.press(QStringLiteral("Enter")));
        QCOMPARE(scratch.messages.last(), QStringLiteral("Calculator: There is no expression to compute!"));
        QVERIFY(keypad.press(QStringLiteral("RAD")));
        QCOMPARE(window.parser().angle_type(), 1);

        // M+ on an empty line says what it needs; Del there leaves the line ends alone.
        const int lines = editor->document()->blockCount();
        QVERIFY(keypad.press(QStringLiteral("M+")));
        QVERIFY(scratch.messages.last().contains(QStringLiteral("You must select the text or place the cursor")));
        QTest::keyClick(editor, Qt::Key_Up);
        QTest::keyClick(editor, Qt::Key_End);
        QTest::keyClick(editor, Qt::Key_Return); // an empty line between two
        QVERIFY(keypad.press(QStringLiteral("Del")));
        QCOMPARE(editor->document()->blockCount(), lines + 1);

        // A failing line keeps the caret, at its end; only at the end of the text is a line added.
        editor->insertPlainText(QStringLiteral("1/"));
        QVERIFY(keypad.press(QStringLiteral("Enter")));
        QCOMPARE(editor->document()->blockCount(), lines + 1);
        QCOMPARE(editor->textCursor().block().text(), QStringLiteral("1/"));
        QTextCursor end = editor->textCursor();
        end.movePosition(QTextCursor::End);
        editor->setTextCursor(end);
        editor->insertPlainText(QStringLiteral("2*"));
        QVERIFY(keypad.press(QStringLiteral("Enter")));
        QCOMPARE(editor->document()->blockCount(), lines + 2);
        QCOMPARE(editor->textCursor().block().text(), QStringLiteral("2*"));
        QVERIFY(editor->textCursor().atBlockEnd());

        // MS from the middle of a line leaves the caret at its end.
        QTextCursor middle = editor->textCursor();
        middle.movePosition(QTextCursor::StartOfBlock);
        editor->setTextCursor(middle);
        QVERIFY(keypad.press(QStringLiteral("MS")));
        QVERIFY(editor->textCursor().atBlockEnd());
        QVERIFY(!keypad.press(QStringLiteral("no such button")));
    }

    void operandKeysCaretKeysAndLineDeletion() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        window.show();
        Keypad keypad(scratch.services, [&window] { return &window; });
        MathEditor* editor = window.editor();
        const auto line = [editor] { return editor->textCursor().block().text(); };

        // The y-th root: the caret waits inside "^(1/)" for the degree.
        for (const char* key : {"2", "7", "ʸ√x", "3"}) QVERIFY(keypad.press(QString::fromUtf8(key)));
        QCOMPARE(line(), QStringLiteral("27^(1/3)"));
        QVERIFY(keypad.press(QStringLiteral("Enter")));
        QCOMPARE(editor->document()->firstBlock().text(), QStringLiteral("27^(1/3) = 3"));

        // ± twice gives the line back; (x) wraps from the caret to the line's end.
        QTest::keyClicks(editor, QStringLiteral("4+5"));
        QVERIFY(keypad.press(QString::fromUtf8("⇤")));
        QVERIFY(keypad.press(QString::fromUtf8("±")));
        QCOMPARE(line(), QStringLiteral("-(4+5)"));
        QVERIFY(keypad.press(QString::fromUtf8("±")));
        QCOMPARE(line(), QStringLiteral("4+5"));
        // The caret keys slide a selection along the line.
        QTextCursor pick = editor->textCursor();
        const int start = pick.block().position();
        pick.setPosition(start);
        pick.setPosition(start + 1, QTextCursor::KeepAnchor);
        editor->setTextCursor(pick);
        QVERIFY(keypad.press(QString::fromUtf8("▶")));
        QCOMPARE(editor->textCursor().selectedText(), QStringLiteral("+"));
        pick.setPosition(start);
        editor->setTextCursor(pick);
        QVERIFY(keypad.press(QString::fromUtf8("▶")));
        QVERIFY(keypad.press(QString::fromUtf8("▶")));
        QVERIFY(keypad.press(QStringLiteral("(x)")));
        QCOMPARE(line(), QStringLiteral("4+(5)"));

        // A character of more than one byte before the caret does not move it.
        QTextCursor below = editor->textCursor();
        below.movePosition(QTextCursor::EndOfBlock);
        below.insertBlock();
        editor->setTextCursor(below);
        editor->insertPlainText(QString::fromUtf8("2*π*"));
        QVERIFY(keypad.press(QString::fromUtf8("±")));
        QCOMPARE(line(), QString::fromUtf8("2*π*-"));
        QCOMPARE(editor->textCursor().positionInBlock(), 5);
        QVERIFY(keypad.press(QStringLiteral("Del line")));

        // Two-argument and list functions leave the caret on the first argument.
        QVERIFY(keypad.press(QString::fromUtf8("▼"))); // below the last line: a new one
        QCOMPARE(editor->document()->blockCount(), 3);
        QVERIFY(keypad.press(QStringLiteral("MEDIAN")));
        for (const char* key : {"1", ",", "9", ",", "4"}) QVERIFY(keypad.press(QString::fromLatin1(key)));
        QCOMPARE(line(), QStringLiteral("MEDIAN[{1,9,4,}]"));
        QVERIFY(keypad.press(QStringLiteral("Del"))); // the comma left for a second value
        QVERIFY(keypad.press(QStringLiteral("Enter")));
        QCOMPARE(editor->document()->findBlockByNumber(2).text(), QStringLiteral("MEDIAN[{1,9,4}] = 4"));

        // Del line takes the caret's line away with its line end.
        for (int up = 0; up < 4; ++up) QVERIFY(keypad.press(QString::fromUtf8("▲"))); // the first line stops it
        QVERIFY(keypad.press(QStringLiteral("Del line")));
        QCOMPARE(editor->document()->firstBlock().text(), QStringLiteral("4+(5)"));
        QCOMPARE(editor->document()->blockCount(), 3);
    }
};

QTEST_MAIN(KeypadGuiTest)
#include "keypad_gui_test.moc"
