// The function solver offscreen: opened from the library on a function of two parameters and
// solved from the keyboard; a list loaded from a data file, saved, and refused when imaginary; a
// function with a fixed and a list form; constants refused.
#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/library/library_dialog.h"
#include "gui/tools/function_solver_dialog.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QSpinBox>
#include <QTextBlock>
#include <QtTest>

using namespace quorvex::gui;

class SolverGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aLibraryFunctionOfTwoParametersIsSolvedFromTheKeyboard() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        LibraryDialog library(window);
        QVERIFY(library.select_name(QStringLiteral("NTHROOT")));
        FunctionSolverDialog* solver = library.open_solver();
        QVERIFY(solver);
        QCOMPARE(solver->windowTitle(), QStringLiteral("Function Solver"));
        QVERIFY(!solver->list_form());

        // Tab accepts a value and goes on; '=' solves instead of being typed.
        solver->parameter_field(0)->setFocus();
        QTest::keyClicks(solver->parameter_field(0), QStringLiteral("27"));
        QTest::keyClick(solver->parameter_field(0), Qt::Key_Tab);
        QTest::keyClicks(solver->parameter_field(1), QStringLiteral("3"));
        QTest::keyClick(solver->parameter_field(1), Qt::Key_Equal);
        QCOMPARE(solver->parameter_field(1)->text(), QStringLiteral("3"));
        QCOMPARE(solver->call(), QStringLiteral("NTHROOT[27,3]"));
        QCOMPARE(solver->solution(), QStringLiteral("3"));
        QCOMPARE(scratch.messages, QStringList());
        // Six digits until the user asks for others, at most fourteen.
        QCOMPARE(solver->precision()->value(), 6);
        QCOMPARE(solver->precision()->maximum(), 14);
        solver->parameter_field(0)->setText(QStringLiteral("2"));
        QVERIFY(solver->solve());
        QCOMPARE(solver->solution(), QStringLiteral("1.25992"));

        // A missing value is refused; a bad one is refused with the engine's reason.
        solver->parameter_field(1)->clear();
        QVERIFY(!solver->solve());
        solver->parameter_field(1)->setText(QStringLiteral("3*"));
        QVERIFY(!solver->solve());
        QCOMPARE(scratch.messages.size(), 2);
        QVERIFY(scratch.messages[0].contains(QStringLiteral("needs a value")));
        QVERIFY(scratch.messages[1].contains(QStringLiteral("is in error")));

        // Choosing another function in the library sets the open solver up for it.
        QVERIFY(library.select_name(QStringLiteral("QUADROOT1")));
        QCOMPARE(solver->parameter_field(2)->isVisible(), true);
        QVERIFY(library.select_name(QStringLiteral("PI")));
        QCOMPARE(solver->solution(), QStringLiteral("Constants can not be evaluated in the Function Solver."));
    }

    void aListIsLoadedFromAFileSolvedAndSaved() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        FunctionSolverDialog solver(window);
        QVERIFY(solver.configure(QStringLiteral("PRCTLE[{list}, p]"), QStringLiteral("The p-th percentile")));
        QVERIFY(solver.list_form());

        QFile data(scratch.file_path(QStringLiteral("points.txt")));
        QVERIFY(data.open(QIODevice::WriteOnly));
        data.write("1\t100\r\n5\t500\r\n3\t300\r\n"); // the first column is taken
        data.close();
        QVERIFY(solver.load_list(data.fileName()));
        QCOMPARE(solver.list_values(), (QStringList{"1", "5", "3"}));
        // Tab in the list's entry adds the value; an imaginary one is refused.
        QTest::keyClicks(solver.list_entry(), QStringLiteral("1+2i"));
        QTest::keyClick(solver.list_entry(), Qt::Key_Tab);
        QCOMPARE(scratch.messages.size(), 1);
        QVERIFY(scratch.messages[0].contains(
            QStringLiteral("Imaginary numbers or expressions that evaluate to imaginary numbers are not allowed.")));
        solver.list_entry()->setText(QStringLiteral("4"));
        QTest::keyClick(solver.list_entry(), Qt::Key_Tab);
        QCOMPARE(solver.list_values(), (QStringList{"1", "5", "3", "4"}));
        QVERIFY(solver.list_entry()->text().isEmpty());

        solver.parameter_field(0)->setText(QStringLiteral("50"));
        QVERIFY(solver.solve());
        QCOMPARE(solver.call(), QStringLiteral("PRCTLE[{1,5,3,4},50]"));
        QCOMPARE(solver.solution(), QStringLiteral("3.5"));

        const QString saved = scratch.file_path(QStringLiteral("points.prn"));
        QVERIFY(solver.save_list(saved));
        QFile back(saved);
        QVERIFY(back.open(QIODevice::ReadOnly));
        QCOMPARE(back.readAll(), QByteArray("1      5      3      4\r\n"));

        // A file that can not be read replaces nothing, even after the user chose to replace.
        scratch.save_answers = {QMessageBox::No};
        QVERIFY(!solver.load_list(scratch.file_path(QStringLiteral("missing.txt"))));
        QCOMPARE(solver.list_values().size(), 4);
        // Loading again asks whether to add (Yes) or replace (No).
        scratch.save_answers = {QMessageBox::No};
        QVERIFY(solver.load_list(saved));
        QCOMPARE(solver.list_values(), (QStringList{"1", "5", "3", "4"}));
        // A changed list is offered for saving before the form changes; Cancel keeps it.
        scratch.save_answers = {QMessageBox::Cancel};
        QVERIFY(!solver.configure(QStringLiteral("MEAN[{list}]"), {}));
        QCOMPARE(solver.list_values().size(), 4);
        scratch.save_answers = {QMessageBox::No};
        QVERIFY(solver.configure(QStringLiteral("MEAN[{list}]"), {}));
        QVERIFY(solver.list_values().isEmpty());

        // A refused value stops a Shift+Tab from solving without it; closing the document asks
        // for the unsaved list, and Cancel keeps the document open.
        QVERIFY(solver.add_list_value(QStringLiteral("2")));
        const int said = scratch.messages.size();
        solver.list_entry()->setText(QStringLiteral("2*"));
        QTest::keyClick(solver.list_entry(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(scratch.messages.size(), said + 1);
        QVERIFY(solver.solution().isEmpty());
    }

    void closingTheDocumentAsksForAnUnsavedList() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        FunctionSolverDialog* solver = window.open_solver(QStringLiteral("MEAN[{list}]"), {});
        QVERIFY(solver->add_list_value(QStringLiteral("3")));
        scratch.save_answers = {QMessageBox::Cancel};
        QVERIFY(!window.may_close([] { return QString(); }));
        QVERIFY(scratch.messages.last().contains(QStringLiteral("modified or created a list of data points")));
        scratch.save_answers = {QMessageBox::No};
        QVERIFY(window.may_close([] { return QString(); }));
    }

    void aFunctionWithBothFormsComposesBracesOnlyInTheListForm() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        FunctionSolverDialog solver(window);
        QVERIFY(solver.configure(QStringLiteral("ZSCORE[x, mean, sd] or ZSCORE[{list}, x]"), {}));
        QVERIFY(!solver.list_form());
        solver.parameter_field(0)->setText(QStringLiteral("12"));
        solver.parameter_field(1)->setText(QStringLiteral("10"));
        solver.parameter_field(2)->setText(QStringLiteral("2"));
        QVERIFY(solver.solve());
        QCOMPARE(solver.call(), QStringLiteral("ZSCORE[12,10,2]"));
        QCOMPARE(solver.solution(), QStringLiteral("1"));

        solver.set_list_form(true);
        QVERIFY(solver.list_form());
        for (const char* value : {"2", "4", "6"}) QVERIFY(solver.add_list_value(QString::fromLatin1(value)));
        solver.parameter_field(0)->setText(QStringLiteral("4"));
        QVERIFY(solver.solve());
        QCOMPARE(solver.call(), QStringLiteral("ZSCORE[{2,4,6},4]"));
        QCOMPARE(solver.solution(), QStringLiteral("0"));

        // Parameters that may all be left out; a condition field takes '=' as typed.
        scratch.save_answers = {QMessageBox::No}; // the list of the form before is not kept
        QVERIFY(solver.configure(QStringLiteral("RAND[] or RAND[low, high]"), {}));
        QVERIFY(solver.solve());
        QCOMPARE(solver.call(), QStringLiteral("RAND[]"));
        QVERIFY(solver.configure(QStringLiteral("IF[condition, a, b]"), {}));
        QTest::keyClicks(solver.parameter_field(0), QStringLiteral("2==3"));
        QCOMPARE(solver.parameter_field(0)->text(), QStringLiteral("2==3"));
        solver.parameter_field(1)->setText(QStringLiteral("7"));
        solver.parameter_field(2)->setText(QStringLiteral("8"));
        QTest::keyClick(solver.parameter_field(2), Qt::Key_Equal); // elsewhere '=' solves
        QCOMPARE(solver.solution(), QStringLiteral("8"));

        // Conditions take '=' as typed: "==" stays in the entry.
        QVERIFY(solver.configure(QStringLiteral("AND[c1, c2, ...]"), {}));
        QTest::keyClicks(solver.list_entry(), QStringLiteral("2==2"));
        QCOMPARE(solver.list_entry()->text(), QStringLiteral("2==2"));
        QTest::keyClick(solver.list_entry(), Qt::Key_Tab);
        QVERIFY(solver.add_list_value(QStringLiteral("3>1")));
        QVERIFY(solver.solve());
        QCOMPARE(solver.call(), QStringLiteral("AND[2==2,3>1]"));
        QCOMPARE(solver.solution(), QStringLiteral("1"));
    }
};

QTEST_MAIN(SolverGuiTest)
#include "solver_gui_test.moc"
