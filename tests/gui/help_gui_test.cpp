// The help window offscreen: F1 on a built-in name in the editor opens its entry, F1 elsewhere the
// contents, one window serves the whole program, and the index finds a typed name.
#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/help/help_actions.h"
#include "gui/help/help_window.h"
#include "gui/shell/main_frame.h"

#include <QAction>
#include <QLineEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QtTest>

using namespace quorvex;
using namespace quorvex::gui;

namespace {

// Puts the caret of the active document's editor at `column` of a one-line text, the editor focused.
MathEditor* caret_in(MainFrame& frame, const QString& text, int column) {
    MathEditor* editor = frame.active_document()->editor();
    editor->setPlainText(text);
    QTextCursor cursor = editor->textCursor();
    cursor.setPosition(column);
    editor->setTextCursor(cursor);
    editor->setFocus();
    return editor;
}

} // namespace

class HelpGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void f1OnANameOpensItsEntryAndElsewhereTheContents() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        MainFrame frame(scratch.services);
        frame.show();
        frame.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&frame));
        frame.new_document();
        QVERIFY(!help_window(&frame)); // made when first asked for

        MathEditor* editor = caret_in(frame, QStringLiteral("r = presist[{100, 100}]"), 7);
        QVERIFY(QTest::qWaitFor([&] { return editor->hasFocus(); }));
        QTest::keyClick(editor, Qt::Key_F1);
        HelpWindow* help = help_window(&frame);
        QVERIFY(help);
        QVERIFY(help->isVisible());
        QCOMPARE(help->current_target(), QStringLiteral("functions.html#PRESIST"));
        // The entry is scrolled to: it stands far down the reference.
        QVERIFY(help->browser()->verticalScrollBar()->value() > 0);
        QVERIFY(help->browser()->toPlainText().contains(QStringLiteral("PRESIST[{list}]")));

        // On a variable, then with the focus away from the editor: the contents, the same window.
        frame.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&frame));
        editor = caret_in(frame, QStringLiteral("r = presist[{100, 100}]"), 0);
        QVERIFY(QTest::qWaitFor([&] { return editor->hasFocus(); }));
        QTest::keyClick(editor, Qt::Key_F1);
        QCOMPARE(help_window(&frame), help);
        QCOMPARE(help->current_target(), QStringLiteral("index.html"));

        caret_in(frame, QStringLiteral("SIN(30)"), 2);
        frame.active_document()->editor()->clearFocus();
        frame.action(QStringLiteral("helpContents"))->trigger();
        QCOMPARE(help->current_target(), QStringLiteral("index.html"));
        QCOMPARE(frame.findChildren<HelpWindow*>().size(), 1);
        QVERIFY(help->browser()->toPlainText().contains(QStringLiteral("Functions and constants")));
    }

    void theIndexFindsATypedNameAndPagesLinkOn() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        MainFrame frame(scratch.services);
        frame.show();
        frame.action(QStringLiteral("helpContents"))->trigger(); // no document at all: the contents
        HelpWindow* help = help_window(&frame);
        QVERIFY(help);
        QCOMPARE(help->current_target(), QStringLiteral("index.html"));

        auto* find = help->findChild<QLineEdit*>(QStringLiteral("helpFind"));
        QVERIFY(find);
        QTest::keyClicks(find, QStringLiteral("cubert"));
        QTest::keyClick(find, Qt::Key_Return);
        QCOMPARE(help->current_target(), QStringLiteral("functions.html#CUBERT"));
        // The example's line as the engine answered it, not a typed answer.
        QVERIFY(help->browser()->toPlainText().contains(QStringLiteral("CUBERT[-27] = -3")));

        help->browser()->setSource(QUrl(QStringLiteral("language.html")));
        QCOMPARE(help->current_target(), QStringLiteral("language.html"));
        QVERIFY(help->browser()->toPlainText().contains(QStringLiteral("5! = 120")));
        help->browser()->backward();
        QCOMPARE(help->current_target(), QStringLiteral("functions.html#CUBERT"));
    }
};

QTEST_MAIN(HelpGuiTest)
#include "help_gui_test.moc"
