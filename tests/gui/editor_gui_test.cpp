// The desktop program offscreen: worksheets typed key by key in each calculation method, the
// error dialog, saving and reopening, the save question, the recent list, autosave recovery.
#include "desktop/recent_files.h"
#include "gui/common/error_dialog.h"
#include "gui_test_support.h"

#include "gui/common/scratch_services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"
#include "gui/editor/find_replace_dialog.h"
#include "gui/editor/keypad.h"
#include "gui/editor/math_editor.h"
#include "gui/editor/name_completer.h"
#include "gui/shell/main_frame.h"
#include "store/atomic_write.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QLineEdit>
#include <QMdiArea>
#include <QTextLayout>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QLabel>
#include <QScrollBar>
#include <QTreeView>
#include <QtTest>

#include <algorithm>
#include <memory>

using namespace quorvex;
using namespace quorvex::gui;
using quorvex::gui::testing::type_line;

namespace {

// A program over a fresh data folder, with the sounds it would play.
struct Program : ScratchServices {
    // The error dialog outlives the frame, whose editors close it as they lose the focus.
    std::unique_ptr<ErrorDialog> errors;
    std::unique_ptr<MainFrame> frame;

    explicit Program(int method = 1)
        : ScratchServices(QStringLiteral(QUORVEX_SOURCE_DATA_DIR), QStringLiteral(QUORVEX_SOURCE_DATA_DIR "/sounds")) {
        services.options.CalculationMethod = method;
        frame = std::make_unique<MainFrame>(services);
        errors = std::make_unique<ErrorDialog>();
        services.error_dialog = errors.get();
        frame->choose_save_path = [this](const QString& suggestion) { return file_path(QFileInfo(suggestion).fileName()); };
        frame->show();
    }
    const desktop::RecentFiles& recent() const { return *services.recent; }
};


QStringList lines_of(MathEditor* editor) { return editor->toPlainText().split(QLatin1Char('\n')); }

// The autosaved documents in the folder, without the running program's lock.
QStringList slot_files(const QString& dir) {
    return QDir(dir).entryList({QStringLiteral("*.qvx"), QStringLiteral("*.origin")}, QDir::Files);
}

} // namespace

class EditorGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void enterComputesAWorksheetTypedKeyByKey() {
        Program program(1);
        DocumentWindow* window = program.frame->new_document();
        MathEditor* editor = window->editor();
        type_line(editor, QStringLiteral("a = 3"));
        type_line(editor, QStringLiteral("f(x) = x^2 + a"));
        type_line(editor, QStringLiteral("f(2)"));
        type_line(editor, QStringLiteral("// a note; not computed"));
        type_line(editor, QStringLiteral("b = 2; c = 5; b*c"));
        type_line(editor, QStringLiteral("0.1+0.2 // exact"));
        QCOMPARE(lines_of(editor),
                 (QStringList{QStringLiteral("a = 3"), QStringLiteral("f(x) = x^2 + a"), QStringLiteral("f(2) = 7"),
                              QStringLiteral("// a note; not computed"), QStringLiteral("b = 2; c = 5; b*c = 10"),
                              QStringLiteral("0.1+0.2 = 0.3 // exact"), QString()}));
        QCOMPARE(program.sounds().last_played(), QStringLiteral("Command.wav"));

        // An old answer is recognised and replaced when its line is computed again.
        QTextCursor cursor(editor->document()->findBlockByNumber(2));
        cursor.movePosition(QTextCursor::EndOfBlock);
        editor->setTextCursor(cursor);
        QTest::keyClick(editor, Qt::Key_Backspace);
        QTest::keyClick(editor, Qt::Key_F4);
        QCOMPARE(lines_of(editor).at(2), QStringLiteral("f(2) = 7"));
        QVERIFY(window->is_modified());
    }

    void anErrorGoesToTheDialogWhichTheNextKeyCloses() {
        Program program(1);
        MathEditor* editor = program.frame->new_document()->editor();
        type_line(editor, QStringLiteral("1/0"));
        QVERIFY(program.errors->isVisible());
        QCOMPARE(program.errors->windowTitle(), QStringLiteral("Computation Error"));
        QVERIFY(!program.errors->text().isEmpty());
        QCOMPARE(program.sounds().last_played(), QStringLiteral("Error.wav"));
        QCOMPARE(lines_of(editor).at(0), QStringLiteral("1/0")); // the line keeps its text
        QTest::keyClicks(editor, QStringLiteral("2"));
        QVERIFY(!program.errors->isVisible());
        type_line(editor, QStringLiteral("+2"));
        QCOMPARE(lines_of(editor).at(1), QStringLiteral("2+2 = 4"));
    }

    void namesAreOfferedAndRefusedLinesMarked() {
        Program program(1);
        MathEditor* editor = program.frame->new_document()->editor();
        type_line(editor, QStringLiteral("volume(s) = s^3"));
        QTest::keyClicks(editor, QStringLiteral("vol"));
        QCompleter* completer = editor->completer();
        QVERIFY(completer->popup()->isVisible());
        QCOMPARE(completer->currentCompletion(), QStringLiteral("volume")); // the document's own function
        QTest::keyClick(completer->popup(), Qt::Key_Tab);
        QCOMPARE(lines_of(editor).at(1), QStringLiteral("volume[")); // a function comes with its bracket
        QTest::keyClicks(editor, QStringLiteral("2]"));
        QTest::keyClick(editor, Qt::Key_Return);
        QCOMPARE(lines_of(editor).at(1), QStringLiteral("volume[2] = 8"));

        // A library function comes with its prototype and description.
        QTest::keyClicks(editor, QStringLiteral("HAVERS"));
        QVERIFY(completer->popup()->isVisible());
        const QModelIndex first = completer->completionModel()->index(0, 0);
        QCOMPARE(first.data().toString(), QStringLiteral("HAVERSIN"));
        QVERIFY(first.data(Qt::ToolTipRole).toString().startsWith(QStringLiteral("HAVERSIN[X]\nHaversine")));
        QTest::keyClick(completer->popup(), Qt::Key_Escape);

        // A refused line is underlined until it is computed again.
        QTest::keyClick(editor, Qt::Key_Return);
        type_line(editor, QStringLiteral("nosuch(1)"));
        const QTextBlock refused = editor->document()->findBlockByNumber(3);
        QCOMPARE(refused.text(), QStringLiteral("nosuch(1)"));
        const auto underlined = [](const QTextBlock& block) {
            for (const QTextLayout::FormatRange& range : block.layout()->formats())
                if (range.format.underlineStyle() == QTextCharFormat::WaveUnderline) return true;
            return false;
        };
        QVERIFY(underlined(refused));
        QVERIFY(!underlined(editor->document()->findBlockByNumber(1)));
    }

    void enterComputesWhileNamesAreOfferedAndTabOrArrowsTakeOne() {
        Program program(1);
        MathEditor* editor = program.frame->new_document()->editor();
        QAbstractItemView* popup = editor->completer()->popup();
        // A line ending in a name that is offered computes on the first Enter, and what is typed
        // next goes on the next line.
        QTest::keyClicks(editor, QStringLiteral("2*PI"));
        QVERIFY(popup->isVisible());
        QTest::keyClick(popup, Qt::Key_Return);
        QVERIFY(!popup->isVisible());
        type_line(editor, QStringLiteral("2/3*3"));
        QCOMPARE(lines_of(editor).size(), 3);
        QVERIFY(lines_of(editor).at(0).startsWith(QStringLiteral("2*PI = 6.28318")));
        QCOMPARE(lines_of(editor).at(1), QStringLiteral("2/3*3 = 2"));

        // Tab takes the name offered; a library function comes with its bracket, and the
        // prototype stands beside the name in the list.
        QTest::keyClicks(editor, QStringLiteral("HAVERS"));
        QVERIFY(popup->isVisible());
        const QModelIndex offered = editor->completer()->completionModel()->index(0, 1);
        QCOMPARE(offered.data().toString(), QStringLiteral("HAVERSIN[X]"));
        QVERIFY(!static_cast<QTreeView*>(popup)->isColumnHidden(1));
        QTest::keyClick(popup, Qt::Key_Tab);
        QCOMPARE(lines_of(editor).at(2), QStringLiteral("HAVERSIN["));
        type_line(editor, QStringLiteral("0]"));
        QCOMPARE(lines_of(editor).at(2), QStringLiteral("HAVERSIN[0] = 0"));

        // After the arrows went through the list, Enter takes the name chosen.
        type_line(editor, QStringLiteral("qqa[s] = s+1"));
        type_line(editor, QStringLiteral("qqb[s] = s+2"));
        QTest::keyClicks(editor, QStringLiteral("qq"));
        QVERIFY(popup->isVisible());
        QTest::keyClick(popup, Qt::Key_Down);
        QTest::keyClick(popup, Qt::Key_Return);
        QCOMPARE(lines_of(editor).at(5), QStringLiteral("qqb["));
        type_line(editor, QStringLiteral("1]"));
        QCOMPARE(lines_of(editor).at(5), QStringLiteral("qqb[1] = 3"));
    }

    void everyNameOfferedIsReadableWholeHoweverFewTheyAre() {
        Program program(1);
        MathEditor* editor = program.frame->new_document()->editor();
        auto* popup = static_cast<QTreeView*>(editor->completer()->popup());
        // A long list first, then one name alone, then a few: each list fits its popup, with no
        // scroll bar across it taking the place of a row.
        for (const QString& typed : {QStringLiteral("SI"), QStringLiteral("SQ"), QStringLiteral("HAVERS"),
                                     QStringLiteral("PI")}) {
            QTest::keyClicks(editor, typed);
            QVERIFY2(popup->isVisible(), qPrintable(typed));
            QVERIFY(QTest::qWaitForWindowExposed(popup));
            QTest::qWait(50); // the popup laid out as the user sees it
            const int rows = editor->completer()->completionCount();
            QVERIFY2(!popup->horizontalScrollBar()->isVisible(), qPrintable(typed));
            const int shown_rows = std::min(rows, editor->completer()->maxVisibleItems());
            QVERIFY2(popup->viewport()->height() >= shown_rows * popup->sizeHintForRow(0), qPrintable(typed));
            for (int column = 0; column < 2; ++column)
                QVERIFY2(popup->columnWidth(column) >= static_cast<QAbstractItemView*>(popup)->sizeHintForColumn(column),
                         qPrintable(typed));
            QTest::keyClick(popup, Qt::Key_Escape);
            QTest::keyClick(editor, Qt::Key_Return);
        }
    }

    void enterOnAnAnsweredLineComputesItInPlaceAndMovesOn() {
        Program program(1);
        MathEditor* editor = program.frame->new_document()->editor();
        type_line(editor, QStringLiteral("a = 3"));
        type_line(editor, QStringLiteral("a*2"));
        type_line(editor, QStringLiteral("a+1"));
        const auto caret_to_end_of = [editor](int line) {
            QTextCursor cursor(editor->document()->findBlockByNumber(line));
            cursor.movePosition(QTextCursor::EndOfBlock);
            editor->setTextCursor(cursor);
        };
        // A new value, then Enter down the answers below it: no line is added.
        caret_to_end_of(0);
        QTest::keyClick(editor, Qt::Key_Backspace);
        QTest::keyClicks(editor, QStringLiteral("5"));
        QTest::keyClick(editor, Qt::Key_F4);
        caret_to_end_of(1);
        QTest::keyClick(editor, Qt::Key_Return);
        QCOMPARE(editor->textCursor().blockNumber(), 2);
        QTest::keyClick(editor, Qt::Key_Return);
        QCOMPARE(lines_of(editor), (QStringList{QStringLiteral("a = 5"), QStringLiteral("a*2 = 10"),
                                                QStringLiteral("a+1 = 6"), QString()}));
        QCOMPARE(editor->textCursor().blockNumber(), 3);
        caret_to_end_of(1);
        for (int i = 0; i < 3; ++i) {
            caret_to_end_of(1);
            QTest::keyClick(editor, Qt::Key_Return);
        }
        QCOMPARE(lines_of(editor).size(), 4);
        // A refusal there keeps the caret on its line, without its old answer.
        editor->setTextCursor(QTextCursor(editor->document()->findBlockByNumber(1)));
        QTest::keyClicks(editor, QStringLiteral("1/0+"));
        QTest::keyClick(editor, Qt::Key_Return);
        QCOMPARE(lines_of(editor).at(1), QStringLiteral("1/0+a*2"));
        QCOMPARE(editor->textCursor().blockNumber(), 1);
        QCOMPARE(lines_of(editor).size(), 4);
    }

    void theErrorWindowStaysInsideTheMainWindow() {
        Program program(1);
        program.frame->keypad()->hide(); // shown at a first start; the editor takes the window here
        program.frame->setGeometry(40, 40, 600, 420);
        MathEditor* editor = program.frame->new_document()->editor();
        // Enough lines that the caret stands at the bottom of the window.
        for (int i = 0; i < 40; ++i) type_line(editor, QStringLiteral("%1").arg(i));
        type_line(editor, QStringLiteral("1/0"), Qt::Key_F4);
        QVERIFY(program.errors->isVisible());
        const QRect caret(editor->viewport()->mapToGlobal(editor->cursorRect().topLeft()), editor->cursorRect().size());
        QVERIFY(caret.bottom() > program.frame->frameGeometry().bottom() - program.errors->height());
        QVERIFY2(program.frame->frameGeometry().contains(program.errors->frameGeometry()),
                 qPrintable(QStringLiteral("error window at y %1..%2, main window to %3")
                                .arg(program.errors->frameGeometry().top())
                                .arg(program.errors->frameGeometry().bottom())
                                .arg(program.frame->frameGeometry().bottom())));
        QVERIFY(!program.errors->frameGeometry().intersects(caret)); // the line stays in view
    }

    void aPlainTextFileOpensUnmodified() {
        Program program(1);
        const QString path = program.file_path(QStringLiteral("notes.txt"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("1+2 = 3\r\nx*4\r\n");
        file.close();
        DocumentWindow* window = program.frame->open_document(path);
        QVERIFY(window);
        QVERIFY(!window->is_modified());
        QVERIFY(!window->isWindowModified());
        QCOMPARE(window->windowTitle(), QStringLiteral("MATH EDITOR - ") + QFileInfo(path).absoluteFilePath() + QStringLiteral("[*]"));
    }

    void shiftEnterAndEqualsComputeInTheirMethods() {
        {
            Program program(0);
            MathEditor* editor = program.frame->new_document()->editor();
            type_line(editor, QStringLiteral("2*3")); // Enter alone: a new line, nothing computed
            type_line(editor, QStringLiteral("4*5"), Qt::Key_Return, Qt::ShiftModifier);
            QCOMPARE(lines_of(editor), (QStringList{QStringLiteral("2*3"), QStringLiteral("4*5 = 20")}));
        }
        {
            Program program(2);
            MathEditor* editor = program.frame->new_document()->editor();
            QTest::keyClicks(editor, QStringLiteral("y := 4"));
            QTest::keyClick(editor, Qt::Key_Return);
            QTest::keyClicks(editor, QStringLiteral("y*2="));
            QCOMPARE(lines_of(editor), (QStringList{QStringLiteral("y := 4"), QStringLiteral("y*2 = 8")}));
        }
    }

    void savesClosesAndReopensTheSameDocument() {
        Program program(1);
        DocumentWindow* window = program.frame->new_document();
        type_line(window->editor(), QStringLiteral("r = 2"));
        type_line(window->editor(), QStringLiteral("g(t) = r*t"));
        type_line(window->editor(), QStringLiteral("g(4)"));
        const QString text = window->editor()->toPlainText();
        QVERIFY(program.frame->save_document(window, false)); // never saved: asks for a name
        const QString path = window->file_path();
        QVERIFY(path.endsWith(QStringLiteral("Untitled 1.qvx")));
        QVERIFY(!window->is_modified());
        QCOMPARE(window->windowTitle(), QStringLiteral("MATH EDITOR - ") + path + QStringLiteral("[*]"));
        QCOMPARE(QString::fromStdString(program.recent().files().front()), path);

        program.frame->mdi_area()->closeAllSubWindows();
        QVERIFY(program.frame->documents().isEmpty());
        QVERIFY(program.messages.filter(QStringLiteral("Save File")).isEmpty()); // nothing to ask

        DocumentWindow* reopened = program.frame->open_document(path);
        QVERIFY(reopened);
        QCOMPARE(reopened->editor()->toPlainText(), text);
        // The engine came back too: the function computes with the saved variable.
        QTextCursor end(reopened->editor()->document());
        end.movePosition(QTextCursor::End);
        reopened->editor()->setTextCursor(end);
        type_line(reopened->editor(), QStringLiteral("g(10)"));
        QVERIFY(reopened->editor()->toPlainText().contains(QStringLiteral("g(10) = 20")));
    }

    void theSaveQuestionCanCancelRefuseOrSave() {
        Program program(1);
        DocumentWindow* window = program.frame->new_document();
        type_line(window->editor(), QStringLiteral("q = 1"));
        program.save_answers = {QMessageBox::Cancel};
        QVERIFY(!program.frame->close());
        QCOMPARE(program.frame->documents().size(), 1);
        QVERIFY(program.messages.last().startsWith(
            QStringLiteral("Save File: Attributes in the file have changed!\n\n Do you wish to save the changes?")));
        program.save_answers = {QMessageBox::Yes};
        QVERIFY(program.frame->close());
        QVERIFY(QFileInfo::exists(program.file_path(QStringLiteral("Untitled 1.qvx"))));
    }

    void aMissingFileIsToldAndANewDocumentOpens() {
        Program program(1);
        program.frame->open_missing(QStringLiteral("/no/such.qvx"));
        QCOMPARE(program.messages.last(), QStringLiteral("Find File: The file \"/no/such.qvx\" could not be found!"));
        QCOMPARE(program.frame->documents().size(), 1);
    }

    void findWrapsAroundAndReplaceAllIsOneUndo() {
        QPlainTextEdit editor;
        editor.setPlainText(QStringLiteral("rate = 2\nArea = rate*3\nrated = 1"));
        FindReplaceDialog find;
        find.open_for(&editor, true);
        find.find_field()->setText(QStringLiteral("rate"));
        find.set_whole_words(true);
        QVERIFY(find.find_next());
        QCOMPARE(editor.textCursor().selectionStart(), 0);
        QVERIFY(find.find_next());
        QCOMPARE(editor.textCursor().block().blockNumber(), 1);
        QVERIFY(find.find_next()); // "rated" is no whole word: around to the first again
        QCOMPARE(editor.textCursor().selectionStart(), 0);
        find.find_field()->setText(QStringLiteral("AREA"));
        find.set_match_case(true);
        QVERIFY(!find.find_next());
        find.set_match_case(false);
        QVERIFY(find.find_next());

        find.find_field()->setText(QStringLiteral("rate"));
        find.replace_field()->setText(QStringLiteral("rate2"));
        QCOMPARE(find.replace_all(), 2);
        QCOMPARE(editor.toPlainText(), QStringLiteral("rate2 = 2\nArea = rate2*3\nrated = 1"));
        editor.undo();
        QCOMPARE(editor.toPlainText(), QStringLiteral("rate = 2\nArea = rate*3\nrated = 1"));
    }

    void anAutosaveNewerThanItsFileIsOfferedBack() {
        QString path;
        QString autosave_dir;
        {
            Program program(1);
            DocumentWindow* window = program.frame->new_document();
            type_line(window->editor(), QStringLiteral("k = 7"));
            QVERIFY(program.frame->save_document(window, false));
            path = window->file_path();
            type_line(window->editor(), QStringLiteral("k*2"));
            program.frame->autosave_now();
            autosave_dir = program.file_path(QStringLiteral("autosave"));
            QCOMPARE(slot_files(autosave_dir).size(), 2);
            // A crash: the slot stays behind, under a process that no longer runs.
            const QString slot = QString::fromStdString(window->autosave_slot());
            const QString dead = QStringLiteral("document-999999999-1");
            for (const QString& extension : {QStringLiteral(".qvx"), QStringLiteral(".origin")})
                QVERIFY(QFile::copy(autosave_dir + QLatin1Char('/') + slot + extension,
                                    program.file_path(QStringLiteral("kept") + extension)));
            program.save_answers = {QMessageBox::No};
            QVERIFY(program.frame->close());
            for (const QString& extension : {QStringLiteral(".qvx"), QStringLiteral(".origin")})
                QVERIFY(QFile::rename(program.file_path(QStringLiteral("kept") + extension),
                                      autosave_dir + QLatin1Char('/') + dead + extension));

            // The next start offers it back, with the file to save to.
            program.frame = std::make_unique<MainFrame>(program.services);
            program.frame->offer_recovery();
            QCOMPARE(program.frame->documents().size(), 1);
            DocumentWindow* recovered = program.frame->documents().first();
            QCOMPARE(recovered->file_path(), path);
            QVERIFY(recovered->is_modified());
            QVERIFY(recovered->editor()->toPlainText().contains(QStringLiteral("k*2 = 14")));
            QVERIFY(slot_files(autosave_dir).isEmpty());
            program.save_answers = {QMessageBox::No};
            QVERIFY(program.frame->close());
        }
    }

    void aFileChangedOrRemovedByAnotherProgramIsNeverOverwrittenWithoutAWord() {
        Program program(1);
        DocumentWindow* window = program.frame->new_document();
        type_line(window->editor(), QStringLiteral("v = 1"));
        QVERIFY(program.frame->save_document(window, false));
        const QString path = window->file_path();
        std::string saved;
        QVERIFY(store::read_whole_file(path.toStdString(), saved));
        QVERIFY(saved.rfind("v = 1\r\n", 0) == 0);
        // The saved document with its first line replaced, written as an editor saves: a new file.
        const auto write_outside = [&path, &saved](const char* first_line) {
            QVERIFY(store::write_file_atomically(path.toStdString(), first_line + saved.substr(5)));
        };
        const auto asked = [&program](const QString& what) {
            return std::count_if(program.messages.cbegin(), program.messages.cend(),
                                 [&what](const QString& m) { return m.contains(what); });
        };

        // Changed while open and unchanged here: reloaded on Yes.
        write_outside("v = 5");
        QTRY_COMPARE(asked(QStringLiteral("was changed by another program.")), 1);
        QCOMPARE(lines_of(window->editor()).first(), QStringLiteral("v = 5"));
        QVERIFY(!window->is_modified());

        // Declined: the text stays, the next save asks, and No leaves the other program's file.
        program.save_answers = {QMessageBox::No, QMessageBox::No};
        write_outside("w = 9");
        QTRY_COMPARE(asked(QStringLiteral("was changed by another program.")), 2);
        QCOMPARE(lines_of(window->editor()).first(), QStringLiteral("v = 5"));
        QVERIFY(!program.frame->save_document(window, false));
        QCOMPARE(asked(QStringLiteral("Do you want to overwrite it?")), 1);
        std::string on_disk;
        QVERIFY(store::read_whole_file(path.toStdString(), on_disk));
        QVERIFY(QString::fromStdString(on_disk).startsWith(QStringLiteral("w = 9\r\n")));
        QVERIFY(program.frame->save_document(window, false)); // Yes this time
        QVERIFY(store::read_whole_file(path.toStdString(), on_disk));
        QVERIFY(QString::fromStdString(on_disk).startsWith(QStringLiteral("v = 5")));

        // The same bytes written again are no change; a removed file is said and counts as unsaved.
        QVERIFY(store::write_file_atomically(path.toStdString(), on_disk));
        QTest::qWait(400);
        QCOMPARE(asked(QStringLiteral("was changed by another program.")), 2);
        QVERIFY(QFile::remove(path));
        QTRY_COMPARE(asked(QStringLiteral("was deleted or moved by another program")), 1);
        QVERIFY(window->is_modified());
        QVERIFY(program.frame->save_document(window, false));
        QVERIFY(QFile::exists(path));
    }

    void aFailedAutosaveStaysInSightUntilOneWorks() {
        Program program(1);
        DocumentWindow* window = program.frame->new_document();
        type_line(window->editor(), QStringLiteral("w = 1"));
        auto* warning = program.frame->findChild<QLabel*>(QStringLiteral("autosaveWarning"));
        QVERIFY(warning);
        // A file where the autosave folder should be: nothing can be written there.
        const QString folder = program.file_path(QStringLiteral("autosave"));
        QVERIFY(QDir(folder).removeRecursively());
        QFile blocker(folder);
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        program.frame->autosave_now();
        QVERIFY(warning->isVisible());
        QVERIFY(warning->toolTip().contains(window->untitled_name()));
        QTest::qWait(50); // no timed note: it is still there
        QVERIFY(warning->isVisible());

        QVERIFY(QFile::remove(folder));
        program.frame->autosave_now();
        QVERIFY(!warning->isVisible());
        QCOMPARE(slot_files(folder).size(), 2);
        program.save_answers = {QMessageBox::No};
        QVERIFY(program.frame->close());
    }
};

QTEST_MAIN(EditorGuiTest)
#include "editor_gui_test.moc"
