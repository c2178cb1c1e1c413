// The stat plot offscreen: values typed in the data points dialog, pasted and loaded, the
// distribution computed as the choices say, the chart, the table's CSV and copy, and the inputs
// and values kept with the document.
#include "gui_test_support.h"

#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/tools/data_points_dialog.h"
#include "gui/tools/stat_plot_dialog.h"
#include "gui/tools/tool_windows.h"

#include "graph/graph_types.h"
#include "store/atomic_write.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableView>
#include <QTimer>
#include <QtTest>

using namespace quorvex::gui;

namespace {

// Types `text` into point `row` (one of the first five) of the data points dialog as a user
// does, then presses OK.
void type_value(StatPlotDialog* plot, int row, const QString& text) {
    QTimer::singleShot(0, plot, [plot, row, text] {
        DataPointsDialog* dialog = plot->data_dialog();
        QLineEdit* box = dialog->x_box(row);
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Return);
        dialog->accept();
    });
    plot->edit_data();
}

const quorvex::graph::StrDataPnts& values_of(DocumentWindow& window) {
    return window.document().Tools.StatPlotting.DataSet;
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

            // A value typed in the data points dialog, shown as its value; then a column pasted
            // below it.
            QTableView* values = plot->values_view();
            QCOMPARE(values->model()->rowCount(), 0);
            type_value(plot, 0, QStringLiteral("2/2"));
            QCOMPARE(values->model()->rowCount(), 1);
            QCOMPARE(values->model()->index(0, 0).data().toString(), QStringLiteral("1"));
            QCOMPARE(*values_of(window).GetXDataPoint(0), std::string("2/2")); // kept as typed
            QVERIFY(!plot->data_dialog()->isVisible());
            QApplication::clipboard()->setText(QStringLiteral("2\t9\n3\n4\n5\n6\n7\n8\n9\n10\n"));
            plot->paste_column();
            QCOMPARE(values->model()->rowCount(), 10);
            QCOMPARE(values->model()->index(1, 0).data().toString(), QStringLiteral("2")); // the first column

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
            type_value(plot, 1, QStringLiteral("3"));
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

            // A value that fails is refused where it is typed, and OK leaves the dialog open
            // until it is mended; Cancel keeps the old value.
            plot->auto_compute()->setChecked(false);
            scratch.messages.clear();
            bool stayed_open = false;
            QTimer::singleShot(0, plot, [plot, &stayed_open] {
                DataPointsDialog* dialog = plot->data_dialog();
                dialog->x_box(2)->setFocus();
                dialog->x_box(2)->setText(QStringLiteral("1/0"));
                dialog->accept();
                stayed_open = dialog->isVisible();
                dialog->reject();
            });
            plot->edit_data();
            QVERIFY(stayed_open);
            QCOMPARE(scratch.messages, QStringList{QStringLiteral("Statistical Plotting: The data point coordinate "
                                                                  "values must be real numbers!")});
            QCOMPARE(*values_of(window).GetXDataPoint(2), std::string("3"));
            // A value of the data set that fails (from a file, say) leaves its row empty, and the
            // distribution names it.
            plot->add_values({"1/0"});
            QVERIFY(values->model()->index(10, 0).data().toString().isEmpty());
            QVERIFY(!plot->compute());
            QCOMPARE(scratch.messages.value(1), QStringLiteral("Statistical Plotting: Data point 11 has no value, "
                                                                 "please correct this before continuing."));
            plot->clear_data();
            plot->add_values({"2/2", "3", "3", "4", "5", "6", "7", "8", "9", "10"});
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
        QCOMPARE(*values_of(again).GetXDataPoint(0), std::string("2/2"));
        QCOMPARE(column(plot->values_view()->model(), 0).mid(0, 3), (QStringList{"1", "3", "3"}));
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
        QCOMPARE(column(plot->values_view()->model(), 0), (QStringList{"4", "8", "15"}));
        QCOMPARE(plot->summary()->text(),
                 QStringLiteral("Solution - Based on 3 points from sample.txt"));
        const QString pairs = scratch.file_path(QStringLiteral("pairs.txt"));
        QVERIFY(quorvex::store::write_file_atomically(pairs.toStdString(), "1\n2 5\n"));
        QVERIFY(!plot->load_data(pairs));
        QVERIFY(scratch.messages.last().contains(QStringLiteral("at point number 2. There were y value coordinates found.")));
        QCOMPARE(plot->values_view()->model()->rowCount(), 3); // the loaded values stay
        // With values there already, a file's values are added on Yes and replace them on No.
        scratch.save_answers = {QMessageBox::Yes};
        QVERIFY(plot->load_data(file));
        QCOMPARE(plot->values_view()->model()->rowCount(), 6);
        scratch.save_answers = {QMessageBox::No};
        QVERIFY(plot->load_data(file));
        QCOMPARE(plot->values_view()->model()->rowCount(), 3);
        // Save writes the values one to a line, which load reads back.
        const QString saved = scratch.file_path(QStringLiteral("saved.txt"));
        QVERIFY(plot->save_data(saved));
        plot->clear_data();
        QVERIFY(plot->load_data(saved));
        QCOMPARE(column(plot->values_view()->model(), 0), (QStringList{"4", "8", "15"}));
    }
};

QTEST_MAIN(StatPlotGuiTest)
#include "stat_plot_gui_test.moc"
