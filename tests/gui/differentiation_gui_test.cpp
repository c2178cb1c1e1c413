// The differentiation window offscreen: its table and columns, the refusal in degrees mode, the
// graph, copy, CSV and insertion into the editor, and its inputs kept with the document.
#include "gui_test_support.h"

#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/graph2d/graph_window.h"
#include "gui/tools/differentiation_dialog.h"
#include "gui/tools/tool_windows.h"

#include "engine/parser.h"
#include "store/atomic_write.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTableView>
#include <QtTest>

using namespace quorvex::gui;
using quorvex::desktop::FirstDerivative;
using quorvex::desktop::FunctionColumn;
using quorvex::gui::testing::type_line;

namespace {

QString cell(const DifferentiationDialog* tool, int row, int column) {
    return tool->view()->model()->index(row, column).data().toString();
}

QString heading(const DifferentiationDialog* tool, int column) {
    return tool->view()->model()->headerData(column, Qt::Horizontal).toString();
}

} // namespace

class DifferentiationGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tabulatesShowsColumnsGraphsAndKeepsItsInputs() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        QString saved;
        {
            DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
            window.show();
            type_line(window.editor(), QStringLiteral("cube(x) = x^3"));
            auto* tool =
                static_cast<DifferentiationDialog*>(window.tools().open(Tool::Differentiation, "cube[x]"));
            QVERIFY(tool);
            QCOMPARE(tool->windowTitle(), QStringLiteral("Differentiation Utility"));
            QCOMPARE(tool->expression()->currentText(), QStringLiteral("cube[x]"));
            tool->variable()->setEditText(QStringLiteral("x"));
            tool->start()->setText(QStringLiteral("3"));
            tool->end()->setText(QStringLiteral("2/2")); // reversed: the table runs from 1 to 3
            tool->steps()->setText(QStringLiteral("3"));
            tool->column_box(FunctionColumn)->setChecked(false);
            QVERIFY(tool->differentiate());
            QCOMPARE(tool->view()->model()->columnCount(), 4);
            QCOMPARE(heading(tool, 1), QStringLiteral("cube '(x)"));
            QCOMPARE(heading(tool, 3), QStringLiteral("cube '''(x)"));
            // 3x^2, 6x and 6 at 1, 2, 3, shown at the default six digits.
            QCOMPARE(cell(tool, 0, 0), QStringLiteral("1"));
            QCOMPARE(cell(tool, 2, 1), QStringLiteral("27"));
            QCOMPARE(cell(tool, 1, 2), QStringLiteral("12"));
            QCOMPARE(cell(tool, 0, 3), QStringLiteral("6"));

            // Turning the function's column on fills it and keeps the derivatives.
            QVERIFY(!tool->table()->filled(FunctionColumn));
            const std::vector<double> first = tool->table()->columns[FirstDerivative];
            tool->column_box(FunctionColumn)->setChecked(true);
            QVERIFY(tool->table()->filled(FunctionColumn));
            QVERIFY(tool->table()->columns[FirstDerivative] == first);
            QCOMPARE(heading(tool, 1), QStringLiteral("cube (x)"));
            QCOMPARE(cell(tool, 1, 1), QStringLiteral("8"));
            // Turning a column off hides it and computes nothing.
            tool->column_box(FirstDerivative)->setChecked(false);
            QCOMPARE(tool->view()->model()->columnCount(), 4);
            QCOMPARE(heading(tool, 2), QStringLiteral("cube ''(x)"));

            const QString csv = scratch.file_path(QStringLiteral("cube.csv"));
            QVERIFY(tool->export_csv(csv));
            std::string text;
            QVERIFY(quorvex::store::read_whole_file(csv.toStdString(), text));
            QVERIFY(QString::fromStdString(text).startsWith(
                QStringLiteral("x,cube (x),cube ''(x),cube '''(x)\r\n1,1,6,6\r\n2,8,12,6\r\n")));

            testing::set_user_graph_defaults(*scratch.services.settings);
            QVERIFY(tool->graph_answer());
            QVERIFY(window.graph_shown());
            const size_t graphs = window.document().Graphs.size();
            const auto& graph = window.document().Graphs.back().Data;
            QVERIFY(testing::has_user_graph_defaults(graph));
            QCOMPARE(graph.Name, std::string("Differentials of cube[x]"));
            QCOMPARE(graph.Header, std::string("Differentiation Plot"));
            QCOMPARE(graph.Footer, std::string("Differentials of cube[x]"));
            QCOMPARE(graph.XAxisTitle, std::string("x"));
            QCOMPARE(graph.YAxisTitle, std::string("cube (x) , cube ''(x) , cube '''(x)"));
            QCOMPARE(graph.DataSets.size(), size_t(3));
            QCOMPARE(std::next(graph.DataSets.begin())->Name, std::string("cube ''(x)"));
            QVERIFY(window.graph_window()->errors().isEmpty());
            QVERIFY(tool->graph_answer()); // the same table's graph is replaced, not added
            QCOMPARE(window.document().Graphs.size(), graphs);

            QVERIFY(tool->insert_answer());
            QVERIFY(window.editor()->toPlainText().contains(
                QStringLiteral("x\tcube (x)\tcube ''(x)\tcube '''(x)\n")));

            // One step: the derivatives at the start value.
            tool->steps()->setText(QStringLiteral("1"));
            QVERIFY(tool->differentiate());
            QCOMPARE(tool->view()->model()->rowCount(), 1);
            QCOMPARE(cell(tool, 0, 0), QStringLiteral("3"));
            QCOMPARE(cell(tool, 0, 1), QStringLiteral("27"));

            // In degrees mode a trigonometric function is refused, under the tool's caption.
            window.parser().set_angle_type(0);
            tool->expression()->setEditText(QStringLiteral("SIN(x)"));
            QVERIFY(!tool->differentiate());
            QVERIFY(scratch.messages.last().startsWith(QStringLiteral(
                "Differentiation Utility: You can not differentiate the trigonometric function SIN")));
            QVERIFY(!tool->table());
            tool->expression()->setEditText(QStringLiteral("cube[x]"));
            saved = scratch.file_path(QStringLiteral("diff.qvx"));
            QVERIFY(window.save(saved));
        }
        DocumentWindow again(scratch.services, QStringLiteral("Untitled 2"));
        QVERIFY(again.load(saved));
        auto* tool = static_cast<DifferentiationDialog*>(again.tools().open(Tool::Differentiation));
        QCOMPARE(tool->expression()->currentText(), QStringLiteral("cube[x]"));
        QCOMPARE(tool->start()->text(), QStringLiteral("3"));
        QCOMPARE(tool->end()->text(), QStringLiteral("2/2"));
        QCOMPARE(tool->steps()->text(), QStringLiteral("1"));
        QVERIFY(tool->column_box(FunctionColumn)->isChecked());
        QVERIFY(!tool->column_box(FirstDerivative)->isChecked());
    }
};

QTEST_MAIN(DifferentiationGuiTest)
#include "differentiation_gui_test.moc"
