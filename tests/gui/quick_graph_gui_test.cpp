// The quick graph offscreen: a family of curves drawn and played as a simulation, a surface, the
// unique names of its graphs, and its inputs kept with the document.
#include "gui_test_support.h"

#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/graph2d/graph_window.h"
#include "gui/graph2d/qt_chart_2d.h"
#include "gui/graph2d/simulation_player.h"
#include "gui/tools/quick_graph_dialog.h"
#include "gui/tools/tool_windows.h"

#include <QComboBox>
#include <QLineEdit>
#include <QtTest>

using namespace quorvex::gui;
using quorvex::gui::testing::type_line;

namespace {

void set_range(QComboBox* variable, QLineEdit* start, QLineEdit* end, QLineEdit* points, const char* name,
               const char* from, const char* to, const char* count) {
    variable->setEditText(QString::fromLatin1(name));
    start->setText(QString::fromLatin1(from));
    end->setText(QString::fromLatin1(to));
    points->setText(QString::fromLatin1(count));
}

} // namespace

class QuickGraphGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFamilyOfCurvesPlaysAndStopsAndTheInputsAreKept() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        QString saved;
        {
            DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
            window.show();
            type_line(window.editor(), QStringLiteral("tilt(x,a) = a*x"));
            // A graph of the name the quick graph would take is already there.
            window.document().Graphs.emplace_back();
            window.document().Graphs.back().Data.Name = "Quick 2D Graph: tilt[x,a]";
            auto* graph = static_cast<QuickGraphDialog*>(window.tools().open(Tool::QuickGraph, QStringLiteral("tilt[x,a]")));
            const QuickGraphFields& in = graph->fields_2d();
            QCOMPARE(in.variable2->currentText(), QStringLiteral("a")); // the function's second variable
            set_range(in.variable, in.start, in.end, in.points, "x", "0", "2", "3");
            set_range(in.variable2, in.start2, in.end2, in.points2, "a", "1", "3", "3");
            testing::set_user_graph_defaults(*scratch.services.settings);
            QVERIFY(graph->graph_2d());
            QCOMPARE(graph->graph_2d_name(), std::string("Quick 2D Graph: tilt[x,a]:2"));
            QVERIFY(testing::has_user_graph_defaults(window.document().Graphs.back().Data));
            GraphWindow* shown = window.graph_window();
            QCOMPARE(shown->chart().data().series(), size_t(3));
            QCOMPARE(shown->chart().data().label(2), std::string("tilt[x,a] (a=3)"));

            // Played: the curves take the first one's place in turn; stopped, all three are back.
            QVERIFY(graph->toggle_simulation());
            QVERIFY(shown->simulation().running());
            QVERIFY(graph->busy());
            shown->simulation().step();
            shown->simulation().step();
            QCOMPARE(shown->chart().data().y(0, 2), 6.0); // 3*x at x = 2
            graph->slower();
            QCOMPARE(shown->simulation().simulation()->delay(), 150);
            QVERIFY(graph->toggle_simulation());
            QVERIFY(!shown->simulation().running());
            QCOMPARE(shown->chart().data().series(), size_t(3));
            QCOMPARE(shown->chart().data().y(0, 2), 2.0);
            QVERIFY(graph->toggle_simulation()); // Esc in the graph window stops it too
            window.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&window));
            QTest::keyClick(shown, Qt::Key_Escape);
            QVERIFY(!shown->simulation().running());

            // A run of the same function replaces its curves in the same graph.
            in.points2->setText(QStringLiteral("2"));
            QVERIFY(graph->graph_2d());
            QCOMPARE(shown->chart().data().series(), size_t(2));

            // One curve is no family: nothing to play. (Another function asks for a new graph: Yes.)
            in.function->setEditText(QStringLiteral("x^2"));
            in.variable2->setEditText(QString());
            QVERIFY(graph->graph_2d());
            QCOMPARE(graph->graph_2d_name(), std::string("Quick 2D Graph: x^2"));
            QVERIFY(!graph->toggle_simulation());
            QVERIFY(scratch.messages.last().contains(QStringLiteral("family of curves")));

            // The 3-D page makes a surface.
            graph->pages()->setCurrentIndex(1);
            const QuickGraphFields& surface = graph->fields_3d();
            surface.function->setEditText(QStringLiteral("x*y"));
            set_range(surface.variable, surface.start, surface.end, surface.points, "x", "-1", "1", "5");
            set_range(surface.variable2, surface.start2, surface.end2, surface.points2, "y", "-1", "1", "5");
            QVERIFY(graph->graph_3d());
            QVERIFY(shown->showing_3d());
            QCOMPARE(graph->graph_3d_name(), std::string("Quick 3D Graph: x*y"));
            QVERIFY(!window.parser().is_variable("y")); // made for the run, gone again

            saved = scratch.file_path(QStringLiteral("quick.qvx"));
            QVERIFY(window.save(saved));
        }
        DocumentWindow again(scratch.services, QStringLiteral("Untitled 2"));
        QVERIFY(again.load(saved));
        auto* graph = static_cast<QuickGraphDialog*>(again.tools().open(Tool::QuickGraph));
        QCOMPARE(graph->fields_2d().function->currentText(), QStringLiteral("x^2"));
        QCOMPARE(graph->fields_2d().points2->text(), QStringLiteral("2"));
        QCOMPARE(graph->fields_3d().function->currentText(), QStringLiteral("x*y"));
        QCOMPARE(graph->fields_3d().points2->text(), QStringLiteral("5"));
    }
};

QTEST_MAIN(QuickGraphGuiTest)
#include "quick_graph_gui_test.moc"
