// The calculus tools offscreen: the quick calc's table, its graph, copy and CSV, and its inputs
// kept with the document.
#include "gui_test_support.h"

#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/graph2d/graph_window.h"
#include "gui/tools/quick_calc_dialog.h"
#include "gui/tools/tool_windows.h"

#include "store/atomic_write.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTableView>
#include <QtTest>

using namespace quorvex::gui;
using quorvex::gui::testing::type_line;

class ToolsGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void quickCalcTabulatesGraphsAndKeepsItsInputs() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        QString saved;
        {
            DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
            window.show();
            type_line(window.editor(), QStringLiteral("cube(x) = x^3"));
            QuickCalcDialog* calc = static_cast<QuickCalcDialog*>(window.tools().open(Tool::QuickCalc));
            QCOMPARE(static_cast<QuickCalcDialog*>(window.tools().open(Tool::QuickCalc)), calc); // one per document
            QCOMPARE(calc->expression()->findText(QStringLiteral("cube[x]")), 0);
            // Opened on a function (the lists' menus), the tool takes it as its expression.
            QCOMPARE(window.tools().open(Tool::QuickCalc, QStringLiteral("cube[x]")), calc);
            QCOMPARE(calc->expression()->currentText(), QStringLiteral("cube[x]"));
            calc->variable()->setEditText(QStringLiteral("x"));
            calc->start()->setText(QStringLiteral("0"));
            calc->end()->setText(QStringLiteral("4/2"));
            calc->points()->setText(QStringLiteral("5"));
            QVERIFY(calc->compute());
            QCOMPARE(calc->view()->model()->rowCount(), 5);
            QCOMPARE(calc->view()->model()->index(4, 1).data().toString(), QStringLiteral("8"));
            QCOMPARE(calc->table_text(QLatin1Char(',')).split(QLatin1Char('\n')).at(2), QStringLiteral("0.5,0.125"));
            const QString csv = scratch.file_path(QStringLiteral("cube.csv"));
            QVERIFY(calc->export_csv(csv));
            std::string text;
            QVERIFY(quorvex::store::read_whole_file(csv.toStdString(), text));
            QVERIFY(QString::fromStdString(text).startsWith(QStringLiteral("x,cube[x] (x)\r\n0,0\r\n")));

            // A function is graphed by its own curve over the table's range.
            testing::set_user_graph_defaults(*scratch.services.settings);
            QVERIFY(calc->graph_answer());
            QVERIFY(window.graph_shown());
            const auto& graph = window.document().Graphs.back().Data;
            QVERIFY(testing::has_user_graph_defaults(graph));
            QCOMPARE(graph.Header, std::string("Graph of: cube[x]"));
            QCOMPARE(graph.Functions.size(), size_t(1));
            QVERIFY(window.graph_window()->errors().isEmpty());

            // A refused input says why and computes nothing.
            calc->points()->setText(QStringLiteral("0"));
            QVERIFY(!calc->compute());
            QVERIFY(scratch.messages.last().startsWith(QStringLiteral("Quick Calc Utility: ")));
            calc->points()->setText(QStringLiteral("5"));
            QVERIFY(calc->compute());
            saved = scratch.file_path(QStringLiteral("calc.qvx"));
            QVERIFY(window.save(saved));
        }
        DocumentWindow again(scratch.services, QStringLiteral("Untitled 2"));
        QVERIFY(again.load(saved));
        QuickCalcDialog* calc = static_cast<QuickCalcDialog*>(again.tools().open(Tool::QuickCalc));
        QCOMPARE(calc->expression()->currentText(), QStringLiteral("cube[x]"));
        QCOMPARE(calc->end()->text(), QStringLiteral("4/2"));
        QCOMPARE(calc->points()->text(), QStringLiteral("5"));
    }
};

QTEST_MAIN(ToolsGuiTest)
#include "tools_gui_test.moc"
