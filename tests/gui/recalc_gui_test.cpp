// Answers that stay current, offscreen: stale marks after a change, as lines move and as undo
// restores them, the recalculation commands on a chain of lines and at an error, the option that
// recalculates after Enter, a deletion in a manager, and the document check; the arithmetic of
// the program and of a document.
#include "gui_test_support.h"

#include "gui/common/error_dialog.h"
#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/line_marks.h"
#include "gui/editor/math_editor.h"
#include "gui/shell/main_frame.h"
#include "gui/shell/options_dialog.h"
#include "store/ini_file.h"

#include <QApplication>
#include <QCheckBox>
#include <QMenu>
#include <QStatusBar>
#include <QTextBlock>
#include <QTextLayout>
#include <QTimer>
#include <QtTest>

#include <memory>

using namespace quorvex;
using namespace quorvex::gui;
using quorvex::gui::testing::type_line;

namespace {

struct Program : ScratchServices {
    std::unique_ptr<ErrorDialog> errors;
    std::unique_ptr<MainFrame> frame;

    Program() : ScratchServices(QStringLiteral(QUORVEX_SOURCE_DATA_DIR)) {
        frame = std::make_unique<MainFrame>(services);
        errors = std::make_unique<ErrorDialog>();
        services.error_dialog = errors.get();
        frame->show();
    }
    void run(const char* command) { frame->action(QLatin1String(command))->trigger(); }
};

QStringList lines_of(MathEditor* editor) { return editor->toPlainText().split(QLatin1Char('\n')); }

QTextBlock line(MathEditor* editor, int number) { return editor->document()->findBlockByNumber(number); }

bool stale(MathEditor* editor, int number) {
    const QTextBlock block = line(editor, number);
    const LineMarks* marks = LineMarks::of(block);
    return marks && marks->is_stale(block.text());
}

QList<int> stale_lines(MathEditor* editor) {
    QList<int> found;
    for (int i = 0; i < editor->document()->blockCount(); ++i)
        if (stale(editor, i)) found << i;
    return found;
}

// Whether the colouring draws character `column` of a line in the stale style (slanted).
bool drawn_stale(MathEditor* editor, int number, int column) {
    for (const QTextLayout::FormatRange& range : line(editor, number).layout()->formats())
        if (column >= range.start && column < range.start + range.length && range.format.fontItalic() &&
            range.format.underlineStyle() == QTextCharFormat::DotLine)
            return true;
    return false;
}

// Puts `text` in place of line `number` and computes it with F4, as a user editing it would.
void retype(MathEditor* editor, int number, const QString& text) {
    const QTextBlock block = line(editor, number);
    QTextCursor cursor(block);
    cursor.setPosition(block.position() + static_cast<int>(block.text().length()), QTextCursor::KeepAnchor);
    cursor.insertText(text);
    editor->setTextCursor(cursor);
    QTest::keyClick(editor, Qt::Key_F4);
}

} // namespace

class RecalcGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aChangeMarksTheLinesThatReadItAndTheMarksFollowTheirLines() {
        Program program;
        MathEditor* editor = program.frame->new_document()->editor();
        type_line(editor, QStringLiteral("r = 2"));
        type_line(editor, QStringLiteral("area = 3*r^2"));
        type_line(editor, QStringLiteral("k = 5"));
        type_line(editor, QStringLiteral("k+1 // k only"));
        type_line(editor, QStringLiteral("area/2"));
        QVERIFY(stale_lines(editor).isEmpty());

        retype(editor, 0, QStringLiteral("r = 3"));
        QCOMPARE(stale_lines(editor), (QList<int>{1, 4})); // area/2 through area, whose line is stale
        QCOMPARE(editor->stale_count(), 2);
        QVERIFY(editor->mark_tooltip(line(editor, 1)).contains(QLatin1String("before r changed")));
        const int answer = static_cast<int>(line(editor, 1).text().indexOf(QLatin1Char('='), 6)) + 2;
        QVERIFY(drawn_stale(editor, 1, answer));
        QVERIFY(!drawn_stale(editor, 1, 0)); // the answer only
        QVERIFY(!drawn_stale(editor, 3, 8));

        // A line inserted above, even at the very start of a marked line: the marks move down
        // with their lines.
        QTextCursor above(line(editor, 1));
        above.insertText(QStringLiteral("// inputs\n"));
        QCOMPARE(stale_lines(editor), (QList<int>{2, 5}));

        // Computed by hand, a stale line loses its mark.
        QTextCursor at(line(editor, 2));
        at.movePosition(QTextCursor::EndOfBlock);
        editor->setTextCursor(at);
        QTest::keyClick(editor, Qt::Key_F4);
        QCOMPARE(line(editor, 2).text(), QStringLiteral("area = 3*r^2 = 27"));
        QCOMPARE(stale_lines(editor), QList<int>{5});

        // Undo brings the old answer back, and with it its mark: it was computed with r = 2.
        editor->undo();
        QCOMPARE(line(editor, 2).text(), QStringLiteral("area = 3*r^2 = 12"));
        QTRY_VERIFY(stale(editor, 2));
        QVERIFY(drawn_stale(editor, 2, 15));
        QCOMPARE(stale_lines(editor), (QList<int>{2, 5}));
        editor->redo();
        QCOMPARE(line(editor, 2).text(), QStringLiteral("area = 3*r^2 = 27"));
        QTRY_COMPARE(stale_lines(editor), QList<int>{5});
        // A line edited by hand claims nothing: its answer is the user's.
        QTextCursor edit(line(editor, 5));
        edit.movePosition(QTextCursor::EndOfBlock);
        edit.insertText(QStringLiteral("1"));
        QVERIFY(!stale(editor, 5));
        QVERIFY(editor->mark_tooltip(line(editor, 5)).isEmpty());
        edit.deletePreviousChar();
        QTRY_VERIFY(stale(editor, 5));

        // Deleting a variable in its manager is a change of it too.
        DocumentWindow* window = program.frame->active_document();
        QVERIFY(window->hub().DeleteVariable(window->parser().find_variable("k"), true, false));
        QVERIFY(stale(editor, 4));
        QVERIFY(editor->mark_tooltip(line(editor, 4)).contains(QLatin1String("before k changed")));
    }

    void recalculationBringsAChainOf100LinesUpToDateInOneUndoStep() {
        Program program;
        MathEditor* editor = program.frame->new_document()->editor();
        QStringList text{QStringLiteral("x0 = 1")};
        for (int i = 1; i <= 100; ++i) text << QStringLiteral("x%1 = x%2+1").arg(i).arg(i - 1);
        editor->setPlainText(text.join(QLatin1Char('\n')));
        program.run("computeRecalcDocument");
        QCOMPARE(lines_of(editor).at(100), QStringLiteral("x100 = x99+1 = 101"));
        QVERIFY(stale_lines(editor).isEmpty());

        retype(editor, 0, QStringLiteral("x0 = 11"));
        QCOMPARE(stale_lines(editor).size(), 100);
        QVERIFY(editor->mark_tooltip(line(editor, 100)).contains(QLatin1String("before x0 changed")));
        program.run("computeRecalcStale");
        QCOMPARE(lines_of(editor).at(1), QStringLiteral("x1 = x0+1 = 12"));
        QCOMPARE(lines_of(editor).at(100), QStringLiteral("x100 = x99+1 = 111"));
        QVERIFY(stale_lines(editor).isEmpty());
        QCOMPARE(editor->stale_count(), 0);
        QVERIFY(!program.errors->isVisible());

        // One undo step takes every recomputed answer back, stale again; redo brings them current.
        editor->undo();
        QCOMPARE(lines_of(editor).at(1), QStringLiteral("x1 = x0+1 = 2"));
        QCOMPARE(lines_of(editor).at(100), QStringLiteral("x100 = x99+1 = 101"));
        QCOMPARE(lines_of(editor).at(0), QStringLiteral("x0 = 11"));
        QTRY_COMPARE(stale_lines(editor).size(), 100);
        editor->redo();
        QCOMPARE(lines_of(editor).at(100), QStringLiteral("x100 = x99+1 = 111"));
        QTRY_COMPARE(editor->stale_count(), 0);
    }

    void recalculationStopsAtTheFirstRefusedLineAndSelectsIt() {
        Program program;
        MathEditor* editor = program.frame->new_document()->editor();
        editor->setPlainText(QStringLiteral("a = 2\nb = a*3 = 0\nc = 1/(a-2) = 0\nd = b+1 = 0\n\n// end"));
        program.run("computeRecalcDocument");
        QCOMPARE(lines_of(editor), (QStringList{QStringLiteral("a = 2"), QStringLiteral("b = a*3 = 6"),
                                                QStringLiteral("c = 1/(a-2)"), QStringLiteral("d = b+1 = 0"),
                                                QString(), QStringLiteral("// end")}));
        QVERIFY(program.errors->isVisible());
        QVERIFY(!editor->last_error().isEmpty());
        QCOMPARE(editor->textCursor().block().blockNumber(), 2);
        QCOMPARE(editor->textCursor().selectedText(), QStringLiteral("c = 1/(a-2)"));
    }

    void theOptionRecalculatesDependentLinesAfterEnterAndIsKept() {
        Program program;
        OptionsDialog options(program.services, nullptr);
        auto* box = options.findChild<QCheckBox*>(QStringLiteral("recalcDependentLines"));
        QVERIFY(box && !box->isChecked());
        box->setChecked(true);
        options.accept();
        QVERIFY(program.services.options.RecalcDependentLines);
        QCOMPARE(program.services.settings->GetInt("OPTIONS", "RecalcDependentLines", 0), 1);

        MathEditor* editor = program.frame->new_document()->editor();
        type_line(editor, QStringLiteral("w = 2"));
        type_line(editor, QStringLiteral("v = w*10"));
        type_line(editor, QStringLiteral("v+w"));
        retype(editor, 0, QStringLiteral("w = 4"));
        QCOMPARE(lines_of(editor).mid(0, 3), (QStringList{QStringLiteral("w = 4"), QStringLiteral("v = w*10 = 40"),
                                                          QStringLiteral("v+w = 44")}));
        QVERIFY(stale_lines(editor).isEmpty());
        QCOMPARE(editor->textCursor().block().blockNumber(), 0); // the caret stays where Enter left it

        // A dependent line that fails is shown and marked, and Enter still moves on from its
        // own line, leaving the failing one as it is.
        QTextCursor last(line(editor, 3));
        editor->setTextCursor(last);
        type_line(editor, QStringLiteral("1/(w-5)"));
        QCOMPARE(lines_of(editor).at(3), QStringLiteral("1/(w-5) = -1"));
        QTextCursor first(line(editor, 0));
        first.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        first.insertText(QStringLiteral("w = 5"));
        editor->setTextCursor(first);
        QTest::keyClick(editor, Qt::Key_Return);
        QVERIFY(program.errors->isVisible());
        QCOMPARE(lines_of(editor), (QStringList{QStringLiteral("w = 5"), QString(), QStringLiteral("v = w*10 = 50"),
                                                QStringLiteral("v+w = 55"), QStringLiteral("1/(w-5)"), QString()}));
        QCOMPARE(editor->textCursor().block().blockNumber(), 1);
    }

    void theCheckMarksDifferingAnswersAndChangesNothing() {
        Program program;
        DocumentWindow* window = program.frame->new_document();
        MathEditor* editor = window->editor();
        // As if edited in another program: r was 2 when the answers were written.
        const QString text = QStringLiteral("r = 3\nd = 2*r = 4\n2+2 = 4\nd*r = 8\n// r = 9");
        editor->setPlainText(text);
        program.run("computeCheckDocument");
        QCOMPARE(editor->toPlainText(), text);
        QCOMPARE(window->parser().find_variable("r"), -1); // the document's engine was not used
        QCOMPARE(program.frame->statusBar()->currentMessage(), QStringLiteral("2 answers differ"));
        const auto differs = [&](int number) {
            const LineMarks* marks = LineMarks::of(line(editor, number));
            return marks && marks->differs(line(editor, number).text());
        };
        QVERIFY(differs(1) && differs(3));
        QVERIFY(!differs(0) && !differs(2) && !differs(4));
        QVERIFY(editor->mark_tooltip(line(editor, 3)).contains(QLatin1String("18")));
        QVERIFY(drawn_stale(editor, 3, 6) && drawn_stale(editor, 1, 10));

        // Once the answers are right, a second check clears the marks.
        program.run("computeRecalcDocument");
        program.run("computeCheckDocument");
        QCOMPARE(program.frame->statusBar()->currentMessage(), QStringLiteral("All answers agree"));
        QVERIFY(!differs(1) && !differs(3));
    }

    void thePreciseOptionSwitchesOpenDocumentsAndADocumentMayKeepItsOwnChoice() {
        Program program;
        DocumentWindow* own = program.frame->new_document();
        QAction* toggle = program.frame->action(QStringLiteral("computePreciseArithmetic"));
        QVERIFY(toggle && toggle->isCheckable());
        toggle->setChecked(true);
        toggle->trigger(); // off, as this document's own choice
        QCOMPARE(own->document().precise_choice(), std::optional<bool>(false));
        QVERIFY(own->is_modified());
        DocumentWindow* follows = program.frame->new_document();

        QTimer::singleShot(0, [] {
            auto* dialog = qobject_cast<OptionsDialog*>(QApplication::activeModalWidget());
            if (!dialog) return;
            if (auto* box = dialog->findChild<QCheckBox*>(QStringLiteral("preciseArithmetic"))) box->setChecked(true);
            dialog->accept();
        });
        program.run("toolsOptions");
        QVERIFY(program.services.options.PreciseArithmetic);
        QCOMPARE(program.services.settings->GetInt("OPTIONS", "PreciseArithmetic", 0), 1);
        QVERIFY(follows->parser().precise());
        QVERIFY(!own->parser().precise());
        QVERIFY(program.frame->new_document()->parser().precise());
        OptionsDialog shown(program.services, nullptr);
        QVERIFY(shown.findChild<QCheckBox*>(QStringLiteral("preciseArithmetic"))->isChecked());

        // The menu's check mark shows the active document as the menu opens.
        QMenu* compute = nullptr;
        for (QMenu* menu : program.frame->findChildren<QMenu*>())
            if (menu->actions().contains(toggle)) compute = menu;
        QVERIFY(compute);
        toggle->setChecked(false);
        Q_EMIT compute->aboutToShow();
        QVERIFY(toggle->isChecked());

        // The document's choice goes with its text and wins over the program's option there.
        std::string saved;
        QVERIFY(own->compose(saved));
        QVERIFY(saved.find("PreciseArithmetic=0") != std::string::npos);
        DocumentWindow* reopened = program.frame->new_document();
        QVERIFY(reopened->load_recovered(saved, QString()));
        QVERIFY(!reopened->parser().precise());
        QCOMPARE(reopened->document().precise_choice(), std::optional<bool>(false));
    }
};

QTEST_MAIN(RecalcGuiTest)
#include "recalc_gui_test.moc"
