// The function library browser offscreen: a word of a description finds its function, which goes
// into the editor; the user library is read again when it changes.
#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/library/library_dialog.h"

#include <QLineEdit>
#include <QTableView>
#include <QTextBlock>
#include <QtTest>

using namespace quorvex::gui;

class LibraryGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aWordOfADescriptionFindsTheFunctionWhichGoesIntoTheEditor() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        LibraryDialog library(window);
        QCOMPARE(library.windowTitle(), QStringLiteral("Function Library"));
        const int all = library.shown();
        QVERIFY(all > 150); // built-ins, constants and the system library
        QTest::keyClicks(library.search(), QStringLiteral("great-circle"));
        QCOMPARE(library.shown(), 1);
        QCOMPARE(library.name_at(0), QStringLiteral("HAVERSIN"));
        library.search()->setText(QStringLiteral("square root"));
        QVERIFY(library.shown() >= 1);
        library.search()->clear();
        QCOMPARE(library.shown(), all);

        library.search()->setText(QStringLiteral("great-circle"));
        library.view()->setCurrentIndex(library.view()->model()->index(0, 0));
        QVERIFY(library.insert_selection());
        QCOMPARE(window.editor()->textCursor().block().text(), QStringLiteral("HAVERSIN[]"));
        QTest::keyClicks(window.editor(), QStringLiteral("60"));
        QTest::keyClick(window.editor(), Qt::Key_Return);
        QCOMPARE(window.editor()->document()->firstBlock().text(), QStringLiteral("HAVERSIN[60] = 0.25"));

        // A function added to the user library is there after the library is read again.
        QFile user(scratch.file_path(QStringLiteral("QuorvexUser.lib")));
        QVERIFY(user.open(QIODevice::Append));
        user.write("\r\n[MINE]\r\nTRIPLE[X]=3*(X)\r\nTRIPLE=Three times X.\r\n");
        user.close();
        library.reload();
        library.search()->setText(QStringLiteral("three times"));
        QCOMPARE(library.shown(), 1);
        QCOMPARE(library.name_at(0), QStringLiteral("TRIPLE"));
    }
};

QTEST_MAIN(LibraryGuiTest)
#include "library_gui_test.moc"
