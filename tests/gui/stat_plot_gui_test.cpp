// The stat plot offscreen: values typed and pasted, the distribution computed as the choices
// say, the chart, the table's CSV and copy, and the inputs and values kept with the document.
#include "gui_test_support.h"

#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/tools/stat_plot_dialog.h"
#include "gui/tools/tool_windows.h"

#include "graph/graph_types.h"
#include "store/atomic_write.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableView>
#include <QtTest>

using namespace quorvex::gui;

namespace {

// The editor the view opened: closed editors linger until the event loop deletes them.
QLineEdit* open_editor(QTableView* view) {
    for (QLineEdit* editor : view->findChildren<QLineEdit*>())
        if (editor->isVisible()) return editor;
    return nullptr;
}

QStringList column(QAbstractItemModel* model, int column) {
    QStringList cells;
    for (int r = 0; r < model->rowCount(); ++r) cells << model->index(r, column).data().toString();
    return cells;
}

} // namespace

class StatPlotGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void valuesBecomeADistributionAChartAndAreKept() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        QString saved;
        {
            DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
            window.show();
            auto* plot = static_cast<StatPlotDialog*>(window.tools().open(Tool::StatPlot));
            QVERIFY(plot);
            QCOMPARE(plot->windowTitle(), QStringLiteral("Statistical Plotting"));

            // A value typed into the table's empty last row, then a column pasted below it.
            QTableView* values = plot->values_view();
            QCOMPARE(values->model()->rowCount(), 1);
            values->edit(values->model()->index(0, 0));
            QLineEdit* cell = open_editor(values);
            QVERIFY(cell);
            QTest::keyClicks(cell, QStringLiteral("2/2"));
            QTest::keyClick(cell, Qt::Key_Return);
            QCoreApplication::processEvents(); // the delegate commits on its next turn of the event loop
            QCOMPARE(values->model()->index(0, 1).data().toString(), QStringLiteral("1"));
            QApplication::clipboard()->setText(QStringLiteral("2\t9\n3\n4\n5\n6\n7\n8\n9\n10\n"));
            plot->paste_column();
            QCOMPARE(values->model()->rowCount(), 11); // ten values and the row for a new one

            // Three classes of width 3 from 1 to 10.
            plot->set_intervals()->click();
            plot->interval_count()->setValue(3);
            QVERIFY(plot->compute());
            QAbstractItemModel* table = plot->distribution_view()->model();
            QCOMPARE(column(table, 0), (QStringList{"1 to 4", "4+ to 7", "7+ to 10"}));
            QCOMPARE(column(table, 1), (QStringList{"4", "3", "3"}));

            // Without Auto Compute a new choice leaves the table; with it the table follows.
            plot->interval_count()->setValue(2);
            QCOMPARE(table->rowCount(), 3);
            plot->auto_compute()->setChecked(true);
            plot->interval_count()->setValue(5);
            QCOMPARE(column(table, 1), (QStringList{"2", "2", "2", "2", "2"}));

            // Pareto puts the fullest class first; the chart is of that type.
            values->model()->setData(values->model()->index(1, 0), QStringLiteral("3"));
            plot->pareto()->click();
            QCOMPARE(column(table, 1), (QStringList{"3", "2", "2", "2", "1"}));
            QVERIFY(plot->graph_answer());
            QVERIFY(window.graph_shown());
            const auto& graph = window.document().Graphs.back().Data;
            QCOMPARE(graph.Name, std::string("Frequency Plot for Data Set"));
            QCOMPARE(graph.Type, quorvex::graph::graph_type::Pareto);
            QCOMPARE(graph.DataSets.front().GetNumXDataPoints(), 5);

            const QString csv = scratch.file_path(QStringLiteral("freq.csv"));
            QVERIFY(plot->export_csv(csv));
            std::string text;
            QVERIFY(quorvex::store::read_whole_file(csv.toStdString(), text));
            QVERIFY(QString::fromStdString(text).startsWith(QStringLiteral("Interval,Frequency\r\n2.8+ to 4.6,3\r\n")));
            QVERIFY(plot->copy_text(true).startsWith(QStringLiteral("1\n3\n3\n")));

            // A value that fails leaves its row empty, and the distribution names it.
            plot->auto_compute()->setChecked(false);
            values->model()->setData(values->model()->index(2, 0), QStringLiteral("1/0"));
            QVERIFY(values->model()->index(2, 1).data().toString().isEmpty());
            scratch.messages.clear();
            QVERIFY(!plot->compute());
            QCOMPARE(scratch.messages.value(0), QStringLiteral("Statistical Plotting: Data point 3 has no value, "
                                                                 "please correct this before continuing."));
            values->model()->setData(values->model()->index(2, 0), QStringLiteral("3"));
            plot->precision()->setValue(6);
            plot->data_name()->setText(QStringLiteral("Scores"));
            plot->data_name()->editingFinished();
            saved = scratch.file_path(QStringLiteral("stat.qvx"));
            QVERIFY(window.save(saved));
        }
        DocumentWindow again(scratch.services, QStringLiteral("Untitled 2"));
        QVERIFY(again.load(saved));
        auto* plot = static_cast<StatPlotDialog*>(again.tools().open(Tool::StatPlot));
        QVERIFY(plot->pareto()->isChecked());
        QVERIFY(plot->set_intervals()->isChecked());
        QCOMPARE(plot->interval_count()->value(), 5);
        QCOMPARE(plot->precision()->value(), 6);
        QCOMPARE(plot->data_name()->text(), QStringLiteral("Scores"));
        QCOMPARE(column(plot->values_view()->model(), 0).mid(0, 3), (QStringList{"2/2", "3", "3"}));
        QVERIFY(plot->compute());
        QCOMPARE(column(plot->distribution_view()->model(), 1), (QStringList{"3", "2", "2", "2", "1"}));
    }

    void aDataFileLoadsAndOneOfPairsIsRefused() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        auto* plot = static_cast<StatPlotDialog*>(window.tools().open(Tool::StatPlot));
        const QString file = scratch.file_path(QStringLiteral("sample.txt"));
        QVERIFY(quorvex::store::write_file_atomically(file.toStdString(), "1) 4\n2) 8\n3) 15\n"));
        QVERIFY(plot->load_data(file));
        QCOMPARE(plot->data_name()->text(), QStringLiteral("sample"));
        QCOMPARE(column(plot->values_view()->model(), 1).mid(0, 3), (QStringList{"4", "8", "15"}));
        const QString pairs = scratch.file_path(QStringLiteral("pairs.txt"));
        QVERIFY(quorvex::store::write_file_atomically(pairs.toStdString(), "1 2\n"));
        QVERIFY(!plot->load_data(pairs));
        QVERIFY(scratch.messages.last().contains(QStringLiteral("single values")));
        QCOMPARE(plot->values_view()->model()->rowCount(), 4); // the loaded values stay
    }
};

QTEST_MAIN(StatPlotGuiTest)
#include "stat_plot_gui_test.moc"
