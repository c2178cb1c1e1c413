// Shell services offscreen: a second start hands its file to the first, long work shows a
// progress dialog whose Stop is heard, export to PDF, the options dialog writing Quorvex.ini.
#include "desktop/recent_files.h"
#include "gui/common/progress_host.h"
#include "gui/common/scratch_services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/shell/main_frame.h"
#include "gui/shell/options_dialog.h"
#include "gui/shell/single_instance.h"
#include "store/ini_file.h"
#include "store/user_library.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
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
        frame.action(QStringLiteral("fileExportPdf"))->trigger();
        QFile pdf(scratch.file_path(QStringLiteral("Untitled 1.pdf")));
        QVERIFY(pdf.open(QIODevice::ReadOnly));
        QVERIFY(pdf.read(5) == "%PDF-");
        QVERIFY(pdf.size() > 500);

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
};

QTEST_MAIN(ShellGuiTest)
#include "shell_gui_test.moc"
