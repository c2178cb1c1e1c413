// Shell services offscreen: a second start hands its file to the first, long work shows a
// progress dialog whose Stop is heard, export to PDF, the options dialog writing Quorvex.ini.
#include "desktop/recent_files.h"
#include "gui/common/progress_host.h"
#include "gui/common/scratch_services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_printer.h"
#include "gui/editor/find_replace_dialog.h"
#include "gui/lists/list_pane.h"
#include "gui/editor/document_window.h"
#include "gui/editor/keypad.h"
#include "gui/graph2d/graph_window.h"
#include "gui/editor/math_editor.h"
#include "gui/shell/main_frame.h"
#include "gui/shell/options_dialog.h"
#include "gui/shell/single_instance.h"
#include "store/ini_file.h"
#include "store/user_library.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QLineEdit>
#include <QSplitter>
#include <QTextBlock>
#include <QComboBox>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QShortcut>
#include <QStatusBar>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <future>

using namespace quorvex;
using namespace quorvex::gui;

class ShellGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aSecondStartHandsItsFileToTheFirst() {
        QTemporaryDir dir;
        SingleInstance first(dir.path());
        QVERIFY(first.become_first());
        QVERIFY(first.listen());
        QSignalSpy requested(&first, &SingleInstance::fileRequested);
        // The second start is another process; a thread stands in for it, since the hand-over
        // waits for the answer that the first gives from its event loop.
        auto taken = std::async(std::launch::async, [&dir] {
            return SingleInstance(dir.path()).hand_over(QStringLiteral("work.qvx"));
        });
        QTRY_COMPARE(requested.count(), 1);
        QVERIFY(taken.get());
        QCOMPARE(requested.at(0).at(0).toString(), QDir::current().absoluteFilePath(QStringLiteral("work.qvx")));
        // Another data folder is another program: nobody takes its request.
        QTemporaryDir other;
        QVERIFY(!SingleInstance(other.path()).hand_over(QString()));
    }

    void aRequestIsActedOnAfterItsSocketIsDoneAndKeepsAnyFileName() {
        QTemporaryDir dir;
        SingleInstance first(dir.path());
        QVERIFY(first.become_first());
        QVERIFY(first.listen());
        QStringList seen;
        int depth = 0;
        connect(&first, &SingleInstance::fileRequested, this, [&](const QString& path) {
            // As a message box would: an event loop of its own, while the sender hangs up.
            QCOMPARE(++depth, 1); // one request at a time
            seen << path;
            QEventLoop loop;
            QTimer::singleShot(150, &loop, &QEventLoop::quit);
            loop.exec();
            --depth;
        });
        const QStringList names{QStringLiteral("two\nlines.qvx"), QStringLiteral("tab\tand\x01bell.qvx"),
                                QStringLiteral("missing folder/"), QString()};
        auto taken = std::async(std::launch::async, [&dir, names] {
            int count = 0;
            for (const QString& name : names) count += SingleInstance(dir.path()).hand_over(name) ? 1 : 0;
            return count;
        });
        QTRY_COMPARE_WITH_TIMEOUT(seen.size(), names.size(), 10000);
        QCOMPARE(taken.get(), static_cast<int>(names.size()));
        for (int i = 0; i < 3; ++i) QCOMPARE(seen[i], QDir::current().absoluteFilePath(names[i]));
        QCOMPARE(seen[3], QString());
    }

    void theLockDecidesTheFirstProgramAndManyStartsAllReachIt() {
        QTemporaryDir dir;
        SingleInstance first(dir.path());
        QVERIFY(first.become_first());
        SingleInstance second(dir.path());
        QVERIFY(!second.become_first()); // the first is alive: no second first
        QVERIFY(!second.listen());       // and its socket is never taken over
        QVERIFY(first.listen());
        QSignalSpy requested(&first, &SingleInstance::fileRequested);
        constexpr int k_starts = 30;
        std::vector<std::future<bool>> starts;
        for (int i = 0; i < k_starts; ++i)
            starts.push_back(std::async(std::launch::async, [&dir, i] {
                return SingleInstance(dir.path()).hand_over(QStringLiteral("f%1.qvx").arg(i));
            }));
        QTRY_COMPARE_WITH_TIMEOUT(requested.count(), k_starts, 20000);
        for (auto& each : starts) QVERIFY(each.get());
        // ...and it still hears a later one.
        auto later = std::async(std::launch::async, [&dir] { return SingleInstance(dir.path()).hand_over(QString()); });
        QTRY_COMPARE_WITH_TIMEOUT(requested.count(), k_starts + 1, 10000);
        QVERIFY(later.get());
    }

    void longWorkShowsProgressAndHearsStop() {
        QWidget parent;
        ProgressHost host(&parent, QStringLiteral("Open File"));
        host.set_progress("Opening File...", 10);
        QVERIFY(!host.dialog_shown()); // quick work shows nothing
        QTest::qWait(120);
        host.set_progress("Opening File...", 40);
        QVERIFY(host.dialog_shown());
        auto* dialog = parent.findChild<QProgressDialog*>(QStringLiteral("progressDialog"));
        QVERIFY(dialog);
        QCOMPARE(dialog->value(), 40);
        QCOMPARE(dialog->labelText(), QStringLiteral("Opening File..."));
        QVERIFY(!host.aborted());
        auto* stop = dialog->findChild<QPushButton*>();
        QVERIFY(stop);
        QCOMPARE(stop->text(), QStringLiteral("Stop"));
        stop->click();
        QVERIFY(host.aborted());
    }

    void exportsTheTextToPdfAndOptionsReachTheSettings() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR), QStringLiteral(QUORVEX_SOURCE_DATA_DIR "/sounds"));
        Services& services = scratch.services;
        scratch.save_answers = {QMessageBox::No};
        MainFrame frame(services);
        frame.choose_save_path = [&scratch](const QString& suggestion) {
            return scratch.file_path(QFileInfo(suggestion).fileName());
        };
        DocumentWindow* window = frame.new_document();
        QTest::keyClicks(window->editor(), QStringLiteral("SIN(30)"));
        QTest::keyClick(window->editor(), Qt::Key_Return);
        // A long document, in a font of 16 pixels: 12 points on a 96 dpi screen, and on paper.
        QFont font = window->editor()->font();
        font.setPixelSize(16);
        window->editor()->setFont(font);
        constexpr int lines = 200;
        for (int i = 1; i < lines; ++i) window->editor()->appendPlainText(QStringLiteral("%1*2").arg(i));
        const DocumentPrinter printer(*window->editor()->document(), font, 96, QStringLiteral("Untitled 1"));
        QCOMPARE(printer.print_font().pointSizeF(), 12.0);
        frame.action(QStringLiteral("fileExportPdf"))->trigger();
        QFile pdf(scratch.file_path(QStringLiteral("Untitled 1.pdf")));
        QVERIFY(pdf.open(QIODevice::ReadOnly));
        const QByteArray bytes = pdf.readAll();
        QVERIFY(bytes.startsWith("%PDF-"));
        // Lines of 12 points or more fill a page of at most 842 points (A4) by 70; lines of
        // less than 18 points, on at least 600 points of paper, need no more than 7 pages.
        const qsizetype pages = bytes.count("/Type /Page\n") + bytes.count("/Type /Page\r") +
                                bytes.count("/Type /Page/") + bytes.count("/Type /Page ");
        QVERIFY2(pages >= (lines + 69) / 70 && pages <= lines * 18 / 600 + 1, qPrintable(QString::number(pages)));

        OptionsDialog options(services, &window->parser());
        options.findChild<QComboBox*>()->setCurrentIndex(2); // Enter or '=' computes
        for (QCheckBox* box : options.findChildren<QCheckBox*>())
            if (box->text().contains(QStringLiteral("sounds"))) box->setChecked(false);
        auto* angles = options.findChildren<QComboBox*>().last();
        angles->setCurrentIndex(1); // radians for this document
        QVERIFY(scratch.sounds().enabled());
        options.accept();
        QCOMPARE(services.options.CalculationMethod, 2);
        QVERIFY(!scratch.sounds().enabled());
        QCOMPARE(window->parser().angle_type(), 1);
        store::IniFile reread(scratch.file_path(QStringLiteral("Quorvex.ini")).toStdString());
        QCOMPARE(reread.GetInt("OPTIONS", "CalculationMethod", 1), 2);
        QCOMPARE(reread.GetInt("OPTIONS", "Sound", 1), 0);
        QCOMPARE(reread.GetString("PARSER OPTIONS", "AngleType"), std::string()); // only when asked
    }

    void everyShortcutIsBoundOnceAndCtrlWClosesTheDocument() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        MainFrame frame(scratch.services);
        frame.show();
        frame.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&frame));
        DocumentWindow* first = frame.new_document();
        DocumentWindow* second = frame.new_document();
        second->toggle_graph(); // the graph window and its commands exist once shown
        second->toggle_graph();
        frame.keypad()->show();
        // Every action and shortcut of the frame, its documents, graph window and keypad.
        QMultiHash<QKeySequence, QString> bound;
        for (QAction* each : frame.findChildren<QAction*>())
            for (const QKeySequence& key : each->shortcuts())
                bound.insert(key, each->objectName().isEmpty() ? each->text() : each->objectName());
        for (QShortcut* each : frame.findChildren<QShortcut*>())
            for (const QKeySequence& key : each->keys()) bound.insert(key, each->objectName());
        QVERIFY(bound.contains(QKeySequence(Qt::CTRL | Qt::Key_W)));
        for (const QKeySequence& key : bound.uniqueKeys())
            QVERIFY2(bound.count(key) == 1,
                     qPrintable(key.toString() + QStringLiteral(": ") + QStringList(bound.values(key)).join(QStringLiteral(", "))));

        QVERIFY(frame.mdi_area()->activeSubWindow());
        QCOMPARE(frame.active_document(), second);
        QTest::keyClick(second->editor(), Qt::Key_W, Qt::ControlModifier);
        QCOMPARE(frame.documents(), QList<DocumentWindow*>{first});
    }

    void theEditorsCommandsFindNextClearTheFontAndTheListsPlaces() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        MainFrame frame(scratch.services);
        frame.show();
        frame.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&frame));
        DocumentWindow* window = frame.new_document();
        MathEditor* editor = window->editor();
        editor->setPlainText(QStringLiteral("ab = 1\nab*2\nab+3"));

        // F3 with nothing sought opens Find; afterwards it finds the next match each time.
        frame.action(QStringLiteral("editFindNext"))->trigger();
        auto* find = frame.findChild<FindReplaceDialog*>();
        QVERIFY(find && find->isVisible());
        find->find_field()->setText(QStringLiteral("ab"));
        editor->moveCursor(QTextCursor::Start);
        frame.action(QStringLiteral("editFindNext"))->trigger();
        frame.action(QStringLiteral("editFindNext"))->trigger();
        QCOMPARE(editor->textCursor().blockNumber(), 1);
        QCOMPARE(editor->textCursor().selectedText(), QStringLiteral("ab"));

        // Ctrl+Delete clears the selection, leaving the clipboard alone.
        QApplication::clipboard()->setText(QStringLiteral("kept"));
        QTest::keyClick(editor, Qt::Key_Delete, Qt::ControlModifier);
        QCOMPARE(editor->document()->findBlockByNumber(1).text(), QStringLiteral("*2"));
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("kept"));

        // The font goes to the editor and both lists, and into the document.
        window->toggle_list(true);
        window->toggle_list(false);
        QFont font(QStringLiteral("DejaVu Sans Mono"));
        font.setPixelSize(20);
        font.setItalic(true);
        window->set_editor_font(font);
        QCOMPARE(editor->font().pixelSize(), 20);
        QCOMPARE(window->variable_list()->font().pixelSize(), 20);
        QVERIFY(window->function_list()->font().italic());
        QCOMPARE(window->document().Font.Italic, 1);
        QVERIFY(window->is_modified());

        // The lists above the editor, and back at its right; a graph hides them, the editor brings them back.
        frame.action(QStringLiteral("viewListsTop"))->trigger();
        QVERIFY(window->lists_at_top());
        QVERIFY(window->splitter()->indexOf(window->variable_list()) < window->splitter()->indexOf(editor));
        frame.action(QStringLiteral("viewListsRight"))->trigger();
        QVERIFY(window->splitter()->indexOf(window->variable_list()) > window->splitter()->indexOf(editor));
        window->toggle_graph();
        QVERIFY(!window->variable_list()->isVisible() && !window->function_list()->isVisible());
        window->toggle_graph();
        QVERIFY(window->variable_list()->isVisible() && window->function_list()->isVisible());
        scratch.save_answers = {QMessageBox::No};
    }

    void theFirstStartShowsTheKeypadAndAWorksheetWhoseLinesAllCompute() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        {
            MainFrame frame(scratch.services);
            QVERIFY(frame.first_start());
            QCOMPARE(scratch.services.settings->GetString("OPTIONS", "ShowCalcBar"), std::string("1"));
            frame.show();
            QVERIFY(frame.keypad()->isVisible());
            DocumentWindow* sheet = frame.open_getting_started();
            QVERIFY(sheet);
            QVERIFY(sheet->file_path().startsWith(scratch.services.data_dir)); // the user's own copy
            // Enter on every line that is not a note computes; the graph it points to draws.
            MathEditor* editor = sheet->editor();
            int computed = 0;
            for (QTextBlock line = editor->document()->firstBlock(); line.isValid(); line = line.next()) {
                if (line.text().trimmed().isEmpty() || line.text().startsWith(QStringLiteral("//"))) continue;
                editor->setTextCursor(QTextCursor(line));
                QVERIFY2(editor->compute_current_line(), qPrintable(line.text() + QStringLiteral(": ") + editor->last_error()));
                ++computed;
            }
            QVERIFY(computed >= 10);
            QVERIFY(sheet->show_graph(0));
            QVERIFY(sheet->graph_window()->errors().isEmpty());
            frame.mdi_area()->closeAllSubWindows();
            scratch.save_answers = {QMessageBox::No, QMessageBox::No};

            // The first start shows it at the left of an empty document, which takes the typing.
            frame.open_first_start_documents();
            QTRY_VERIFY(frame.active_document() && frame.active_document()->file_path().isEmpty());
            const QList<QMdiSubWindow*> shown = frame.mdi_area()->subWindowList();
            QCOMPARE(shown.size(), 2);
            QTRY_VERIFY(shown[0]->geometry().right() < shown[1]->geometry().left());
            QCOMPARE(frame.active_document(), qobject_cast<DocumentWindow*>(shown[1]->widget()));
            scratch.save_answers = {QMessageBox::No, QMessageBox::No};
        }
        MainFrame again(scratch.services);
        QVERIFY(!again.first_start());
    }

    void theStatusLineTheWindowMenuAndTheIconFollowTheDocuments() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        MainFrame frame(scratch.services);
        frame.show();
        frame.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&frame));
        QVERIFY(!frame.windowIcon().isNull()); // the program's own, not the platform's blank
        QVERIFY(!frame.windowIcon().pixmap(32, 32).isNull());

        DocumentWindow* first = frame.new_document();
        DocumentWindow* second = frame.new_document();
        auto* position = frame.findChild<QLabel*>(QStringLiteral("caretPosition"));
        QVERIFY(position);
        QTest::keyClicks(second->editor(), QStringLiteral("12"));
        QCOMPARE(position->text(), QStringLiteral("Line 1, Col 3"));

        // The graph's coordinates go when the editor comes back.
        second->toggle_graph();
        Q_EMIT second->graph_window()->pointerMoved(QStringLiteral("x = 1, y = 2"));
        QCOMPARE(frame.statusBar()->currentMessage(), QStringLiteral("x = 1, y = 2"));
        second->toggle_graph();
        QVERIFY(frame.statusBar()->currentMessage().isEmpty());

        // The Window menu lists the documents, the active one checked; choosing one activates it.
        auto* menu = frame.findChild<QMenu*>(QStringLiteral("windowMenu"));
        QVERIFY(menu);
        const auto listed = [&frame, menu] {
            Q_EMIT menu->aboutToShow();
            QList<QAction*> items;
            for (QAction* each : menu->actions())
                if (each->objectName() == QStringLiteral("windowDocument")) items << each;
            return items;
        };
        QList<QAction*> items = listed();
        QCOMPARE(items.size(), 2);
        QVERIFY(items[0]->text().contains(first->untitled_name()));
        QVERIFY(!items[0]->isChecked());
        QVERIFY(items[1]->isChecked());
        items[0]->trigger();
        QCOMPARE(frame.mdi_area()->activeSubWindow()->widget(), first);
        items = listed();
        QCOMPARE(items.size(), 2);
        QVERIFY(items[0]->isChecked());
        QVERIFY(!items[1]->isChecked());

        // No document, no line number.
        scratch.save_answers = {QMessageBox::No, QMessageBox::No};
        frame.mdi_area()->closeAllSubWindows();
        QVERIFY(frame.documents().isEmpty());
        QVERIFY(position->text().isEmpty());
        QVERIFY(listed().isEmpty());
    }
};

QTEST_MAIN(ShellGuiTest)
#include "shell_gui_test.moc"
