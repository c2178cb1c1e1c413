// The curve fitter and its data points dialog offscreen: data pasted and typed, a fit with its
// table, outliers, the polynomial as a function, the graph, CSV, and the inputs kept with the
// document. Expected fits are those of points built on a known line.
#include "gui_test_support.h"

#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/graph2d/graph_window.h"
#include "gui/tools/curve_fitter_dialog.h"
#include "gui/tools/data_points_dialog.h"
#include "gui/tools/tool_windows.h"

#include "store/atomic_write.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QTableView>
#include <QTimer>
#include <QtTest>

#include <cmath>

using namespace quorvex::gui;

class CurveFitterGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void dataPointsDialogEditsScrollsAndPastes() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        auto* fitter = static_cast<CurveFitterDialog*>(window.tools().open(Tool::CurveFitter));
        DataPointsDialog* dialog = fitter->data_dialog();
        dialog->set_points({});
        dialog->show();
        // Typing in the fifth row and pressing Down scrolls one row and keeps the text.
        dialog->x_box(4)->setFocus();
        QTest::keyClicks(dialog->x_box(4), QStringLiteral("2*PI"));
        QTest::keyClick(dialog->x_box(4), Qt::Key_Down);
        QCOMPARE(dialog->top_index(), 1);
        QCOMPARE(*dialog->points().GetXDataPoint(4), std::string("2*PI")); // kept as typed
        QCOMPARE(dialog->x_box(3)->text(), QStringLiteral("2*PI"));
        // A coordinate that is no real number is refused where it is typed.
        dialog->y_box(3)->setText(QStringLiteral("1+2i"));
        QTest::keyClick(dialog->y_box(3), Qt::Key_Return);
        QVERIFY2(!scratch.messages.isEmpty() && scratch.messages.last().endsWith(QStringLiteral("The data point coordinate values must be real numbers!")), qPrintable(scratch.messages.join(QLatin1Char(10))));
        QCOMPARE(dialog->points().GetYDataPoint(4), nullptr);

        // A pasted block with a header adds its rows; the grid shows them all.
        QVERIFY(dialog->paste_text(QStringLiteral("t,volts\n1,2\n2,4\n")));
        QCOMPARE(dialog->points().GetNumXYZPoints(), 3);
        QCOMPARE(*dialog->points().GetYDataPoint(6), std::string("4"));
        QCOMPARE(dialog->grid()->model()->rowCount(), 8); // seven slots and a row for a new point
        QCOMPARE(dialog->count_label()->text(), QStringLiteral("Number Of Points : 3"));
        // Point 5 has X but no Y: OK names it and the dialog stays open.
        QVERIFY(!dialog->check_points());
        QVERIFY(scratch.messages.last().contains(QStringLiteral("Point 1 of")));
        dialog->set_points({});
        dialog->x_box(0)->setFocus();
        dialog->x_box(0)->setText(QStringLiteral("1"));
        QTest::keyClick(dialog->x_box(0), Qt::Key_Return);
        dialog->x_box(0)->setFocus();
        dialog->delete_point();
        QCOMPARE(dialog->count_label()->text(), QStringLiteral("Number Of Points : 0"));
        dialog->hide();
    }

    void fitsRemovesOutliersDefinesGraphsAndKeepsItsInputs() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        QString saved;
        {
            DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
            window.show();
            auto* fitter = static_cast<CurveFitterDialog*>(window.tools().open(Tool::CurveFitter));
            QCOMPARE(fitter->windowTitle(), QStringLiteral("Curve Fitting Utility"));
            // The data come in through the Data Points dialog: a block pasted, then OK.
            QTimer::singleShot(0, fitter, [fitter] {
                fitter->data_dialog()->paste_text(QStringLiteral("x\ty\n1\t2\n2\t4\n3\t6\n"));
                fitter->data_dialog()->accept();
            });
            fitter->edit_data();
            QCOMPARE(fitter->data().GetNumXYZPoints(), 3);
            QVERIFY(fitter->linear()->isChecked());
            QVERIFY(fitter->compute());
            QCOMPARE(fitter->polynomial()->text(), QStringLiteral("2x"));
            QCOMPARE(fitter->determination()->text(), QStringLiteral("1"));
            QCOMPARE(fitter->solution()->text(), QStringLiteral("Solution - Based on 3 points"));
            QCOMPARE(fitter->view()->model()->rowCount(), 3);
            QCOMPARE(fitter->view()->model()->index(2, 2).data().toString(), QStringLiteral("6"));
            const QString csv = scratch.file_path(QStringLiteral("fit.csv"));
            QVERIFY(fitter->export_csv(csv));
            std::string text;
            QVERIFY(quorvex::store::read_whole_file(csv.toStdString(), text));
            QVERIFY(QString::fromStdString(text).startsWith(QStringLiteral("x,y,F(x),F(x)-y\r\n1,2,2,0\r\n")));

            // The polynomial becomes PolyFunc1[x] of the document.
            QVERIFY(fitter->define_function());
            QVERIFY(window.parser().find_function("PolyFunc1[x]") >= 0);
            // The graph holds the data and the fit, 101 smooth points under 100 data points.
            fitter->smooth()->setChecked(true);
            testing::set_user_graph_defaults(*scratch.services.settings);
            QVERIFY(fitter->graph_answer());
            QVERIFY(window.graph_shown());
            const auto& graph = window.document().Graphs.back().Data;
            QVERIFY(testing::has_user_graph_defaults(graph));
            QCOMPARE(graph.Header, std::string("Best Fit Polynomial for: 2dDataSet"));
            QCOMPARE(graph.DataSets.size(), size_t(2));
            QCOMPARE(graph.DataSets.back().GetNumXYZPoints(), 101);

            // A planted outlier among 40 points near a line goes, once.
            quorvex::graph::StrDataPnts line;
            for (int i = 0; i < 40; ++i) {
                line.PutXDataPoint(std::to_string(i).c_str(), i);
                line.PutYDataPoint(std::to_string(0.5 * i + (i == 9 ? 30 : 0) + (i % 2 ? 0.01 : -0.01)).c_str(), i);
            }
            fitter->set_data(line);
            QVERIFY(fitter->compute());
            fitter->choose_sigma = [] { return 3; };
            QVERIFY(fitter->remove_outliers());
            QCOMPARE(fitter->data().GetNumXYZPoints(), 39);
            QVERIFY(!fitter->remove_outliers());
            QVERIFY(scratch.messages.last().endsWith(QStringLiteral(
                "You have already removed the outliers and found a new Polynomial based on the removal of these points.")));
            QVERIFY(fitter->compute());
            QVERIFY(std::fabs(static_cast<double>(fitter->fit()->coefficients[1]) - 0.5) < 1e-3);
            fitter->coefficients()->setValue(4);
            QVERIFY(!fitter->linear()->isChecked());
            fitter->precision()->setValue(9);
            saved = scratch.file_path(QStringLiteral("fit.qvx"));
            QVERIFY(window.save(saved));
        }
        DocumentWindow again(scratch.services, QStringLiteral("Untitled 2"));
        QVERIFY(again.load(saved));
        auto* fitter = static_cast<CurveFitterDialog*>(again.tools().open(Tool::CurveFitter));
        QCOMPARE(fitter->coefficients()->value(), 4);
        QVERIFY(fitter->smooth()->isChecked());
        QCOMPARE(fitter->data().GetNumXYZPoints(), 39);
        QVERIFY(!fitter->polynomial()->text().isEmpty());
    }
};

QTEST_MAIN(CurveFitterGuiTest)
#include "curve_fitter_gui_test.moc"
