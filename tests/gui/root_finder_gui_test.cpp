// The root finder's window offscreen: both modes with their own results, the questions it asks,
// copy and CSV, the plot, and the inputs kept with the document and the settings.
#include "gui_test_support.h"

#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/graph2d/graph_window.h"
#include "gui/lists/manager_dialog.h"
#include "gui/tools/root_finder_dialog.h"
#include "gui/tools/tool_windows.h"

#include "store/atomic_write.h"
#include "store/ini_file.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableView>
#include <QtTest>

using namespace quorvex::gui;
using quorvex::gui::testing::type_line;

class RootFinderGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void realRootsAskAboutFewStepsAndAreCopiedExportedAndPlotted() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        window.show();
        auto* roots = static_cast<RootFinderDialog*>(window.tools().open(Tool::RootFinder));
        QVERIFY(roots);
        QCOMPARE(roots->windowTitle(), QStringLiteral("Root Finder Utility"));
        QCOMPARE(roots->precision()->value(), 6);
        roots->real_mode()->setChecked(true);
        roots->expression()->setEditText(QStringLiteral("x^2-1"));
        roots->variable()->setEditText(QStringLiteral("x"));
        roots->start()->setText(QStringLiteral("-2"));
        roots->end()->setText(QStringLiteral("2"));

        // Fewer than 101 steps: No ends the run before it starts.
        roots->steps()->setText(QStringLiteral("50"));
        scratch.save_answers = {QMessageBox::No};
        QVERIFY(!roots->compute());
        QVERIFY(scratch.messages.last().contains(QStringLiteral("a minimum of 101 steps")));
        QVERIFY(!roots->table());

        roots->steps()->setText(QStringLiteral("101"));
        QVERIFY(roots->compute());
        QCOMPARE(roots->summary()->text(), QStringLiteral("Solution - 2 roots found"));
        QCOMPARE(roots->view()->model()->headerData(1, Qt::Horizontal).toString(),
                 QStringLiteral("x^2-1 (x)"));
        QVERIFY(!window.parser().is_variable("x"));
        const QString copied = roots->table_text(QLatin1Char('\t'));
        QCOMPARE(copied, QStringLiteral("x\tx^2-1 (x)\n-1\t0\n1\t0\n"));
        const QString csv = scratch.file_path(QStringLiteral("roots.csv"));
        QVERIFY(roots->export_csv(csv));
        std::string text;
        QVERIFY(quorvex::store::read_whole_file(csv.toStdString(), text));
        QCOMPARE(QString::fromStdString(text), QStringLiteral("x,x^2-1 (x)\r\n-1,0\r\n1,0\r\n"));

        testing::set_user_graph_defaults(*scratch.services.settings);
        QVERIFY(roots->graph_answer());
        QVERIFY(window.graph_shown());
        const auto& plot = window.document().Graphs.back().Data;
        QVERIFY(testing::has_user_graph_defaults(plot));
        QCOMPARE(plot.Header, std::string("Root Plot for: x^2-1"));
        QCOMPARE(plot.Notes.size(), size_t(2));
        QVERIFY(window.graph_window()->errors().isEmpty());

        // No sign change: no rows, and the label says so.
        roots->expression()->setEditText(QStringLiteral("x^2+1"));
        QVERIFY(roots->compute());
        QCOMPARE(roots->summary()->text(), QStringLiteral("Solution - 0 roots found"));

        // An unknown name offers the variable editor on it.
        roots->expression()->setEditText(QStringLiteral("x+rate"));
        scratch.save_answers = {QMessageBox::Ok};
        QVERIFY(!roots->compute());
        QVERIFY(scratch.messages.last().contains(QStringLiteral("' rate ' can not be identified")));
        ManagerDialog* editor = window.open_manager(true);
        QCOMPARE(editor->name()->text(), QStringLiteral("rate"));
    }

    void complexRootsKeepTheirOwnResultsAndTheInputsAreSaved() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        QString saved;
        {
            DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
            window.show();
            auto* roots = static_cast<RootFinderDialog*>(window.tools().open(Tool::RootFinder));
            roots->real_mode()->setChecked(true);
            roots->expression()->setEditText(QStringLiteral("x-3"));
            roots->start()->setText(QStringLiteral("0"));
            roots->end()->setText(QStringLiteral("5"));
            roots->steps()->setText(QStringLiteral("101"));
            QVERIFY(roots->compute());
            QCOMPARE(roots->view()->model()->rowCount(), 1);

            roots->complex_mode()->setChecked(true);
            QCOMPARE(scratch.services.settings->GetInt("OPTIONS", "RootFinderRealRoots", 1), 0);
            QVERIFY(!roots->table()); // each mode shows its own results
            roots->set_coefficient(2, QStringLiteral("1"));
            roots->set_coefficient(0, QStringLiteral("1"));
            QVERIFY(roots->compute());
            QCOMPARE(roots->view()->model()->rowCount(), 2);
            QStringList found{roots->view()->model()->index(0, 0).data().toString(),
                              roots->view()->model()->index(1, 0).data().toString()};
            found.sort();
            QCOMPARE(found, (QStringList{QStringLiteral("-i"), QStringLiteral("i")}));

            // A coefficient the engine can not evaluate is reported under "Parser Error".
            roots->set_coefficient(1, QStringLiteral("3+"));
            QVERIFY(!roots->compute());
            QVERIFY(scratch.messages.last().startsWith(QStringLiteral("Parser Error: ")));
            QCOMPARE(roots->coefficient_view()->currentIndex().row(), 99 - 1);
            roots->set_coefficient(1, QString());

            roots->real_mode()->setChecked(true);
            QCOMPARE(roots->view()->model()->rowCount(), 1); // the real results come back
            roots->precision()->setValue(9);
            QVERIFY(roots->compute());
            saved = scratch.file_path(QStringLiteral("roots.qvx"));
            QVERIFY(window.save(saved));
        }
        DocumentWindow again(scratch.services, QStringLiteral("Untitled 2"));
        QVERIFY(again.load(saved));
        const auto& kept = again.document().Tools.RootFinder;
        QCOMPARE(kept.RootFinderXp[2], std::string("1"));
        QCOMPARE(kept.RootFinderPrecision, 9);
        auto* roots = static_cast<RootFinderDialog*>(again.tools().open(Tool::RootFinder));
        QCOMPARE(roots->expression()->currentText(), QStringLiteral("x-3"));
        QCOMPARE(roots->end()->text(), QStringLiteral("5"));
        QCOMPARE(roots->coefficient(0), QStringLiteral("1"));
        QCOMPARE(roots->precision()->value(), 9); // the settings' precision
    }
};

QTEST_MAIN(RootFinderGuiTest)
#include "root_finder_gui_test.moc"
