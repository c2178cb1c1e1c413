// 3-D graphs offscreen: a surface drawn where the mathematics puts it, turned with the mouse (the
// turn kept in the graph), labelled by a click, its setup asked for by a double click, saved as
// .g3d and opened again, smoothed.
#include "gui_test_support.h"

#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/graph2d/graph_window.h"
#include "gui/graph3d/graph3d_view.h"
#include "gui/graph3d/picture_3d.h"

#include "graph/scene_3d.h"

#include <QImage>
#include <QSignalSpy>
#include <QtTest>

using namespace quorvex;
using namespace quorvex::gui;
using quorvex::gui::testing::type_line;

namespace {

struct Surface {
    ScratchServices scratch{QStringLiteral(QUORVEX_SOURCE_DATA_DIR)};
    DocumentWindow window{scratch.services, QStringLiteral("Untitled 1")};
    GraphWindow* graphs = nullptr;
    Graph3DView* view = nullptr;

    explicit Surface(unsigned long forms) {
        window.resize(1000, 760);
        window.show();
        type_line(window.editor(), QStringLiteral("bowl(x, y) = x^2 + y^2"));
        QString error;
        if (!window.add_surface_graph("bowl[x,y]", "x", -2, 2, 11, "y", -2, 2, 11, &error)) qWarning() << error;
        window.document().Graphs[0].Data.Type3D = forms;
        window.show_graph(0);
        graphs = window.graph_window();
        view = graphs->view_3d();
        QCoreApplication::processEvents();
    }
    const graph::GraphData& graph() { return window.document().Graphs[0].Data; }
};

// A pixel a little inside the cell that follows grid point (i, j), off its edges.
QPoint inside_cell(const Graph3DView& view, size_t i, size_t j, size_t di, size_t dj) {
    const QPointF corner = view.screen_of(i, j);
    const QPointF middle = (view.screen_of(i, j) + view.screen_of(i + di, j) + view.screen_of(i, j + dj) +
                            view.screen_of(i + di, j + dj)) / 4;
    return (corner + (middle - corner) * 0.3).toPoint();
}

QColor color_of(graph::TColor c) { return QColor(int(c & 0xFF), int((c >> 8) & 0xFF), int((c >> 16) & 0xFF)); }

} // namespace

class Graph3DGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aSurfaceIsDrawnWhereTheMathematicsPutsIt() {
        Surface bowl(1000); // zones alone: each piece in its level's colour
        QVERIFY(bowl.graphs->showing_3d());
        QVERIFY(bowl.graphs->errors().isEmpty());
        QCOMPARE(bowl.view->grid().value(5, 5), 0.0);
        // The rim stands above the bottom.
        for (const auto& [i, j] : {std::pair{0, 0}, std::pair{0, 10}, std::pair{10, 0}, std::pair{10, 10}})
            QVERIFY(bowl.view->screen_of(i, j).y() < bowl.view->screen_of(5, 5).y());

        // Looked at from high above, the bottom shows over the near rim.
        bowl.window.document().Graphs[0].Data.XRotation = 70;
        QVERIFY(bowl.graphs->draw(0));
        const QString path = bowl.scratch.file_path(QStringLiteral("bowl.png"));
        QString error;
        QVERIFY2(export_view_3d(*bowl.view, path, bowl.view->size(), &error), qPrintable(error));
        const QImage picture(path);
        QCOMPARE(picture.size(), bowl.view->size());
        const size_t bands = bowl.view->scene().legend.size(); // levels 1 to 7: eight bands
        QCOMPARE(bands, size_t(8));
        // The bottom in the lowest band's colour, the far rim in the highest's.
        QCOMPARE(picture.pixelColor(inside_cell(*bowl.view, 5, 5, 1, 1)), color_of(graph::zone_color(0, bands)));
        QCOMPARE(picture.pixelColor(inside_cell(*bowl.view, 0, 10, 1, -1)), color_of(graph::zone_color(7, bands)));
    }

    void aDragTurnsTheSurfaceAndTheGraphKeepsTheTurn() {
        Surface bowl(1111);
        const double before = bowl.graph().ZRotation;
        const QPoint from(300, 300);
        QTest::mousePress(bowl.view, Qt::LeftButton, {}, from);
        for (int step = 1; step <= 5; ++step) {
            QMouseEvent move(QEvent::MouseMove, QPointF(from + QPoint(step * 12, 0)), bowl.view->mapToGlobal(QPointF(from + QPoint(step * 12, 0))),
                             Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(bowl.view, &move);
        }
        QTest::mouseRelease(bowl.view, Qt::LeftButton, {}, from + QPoint(60, 0));
        QVERIFY(std::abs(bowl.graph().ZRotation - before) > 20); // half a degree a pixel
        QCOMPARE(bowl.graph().ZRotation, static_cast<float>(bowl.view->view().ZRotation));
        QVERIFY(bowl.window.is_modified());
        // Redrawn, the graph keeps the turn; Home goes back to the default.
        QVERIFY(bowl.graphs->draw(0));
        QCOMPARE(static_cast<float>(bowl.view->view().ZRotation), bowl.graph().ZRotation);
        // A larger margin is a smaller picture, kept in the graph like a turn.
        bowl.graphs->change_margin(true);
        QCOMPARE(bowl.graph().Scale, 0.9f);
        bowl.graphs->save_default_margin();
        QCOMPARE(bowl.graph().DefaultScale, 0.9f);
        QTest::keyClick(bowl.view, Qt::Key_Home);
        QCOMPARE(bowl.view->view().ZRotation, 310.0);
        QCOMPARE(bowl.graph().ZRotation, 310.0f);
    }

    void aClickLabelsTheGridPointAndAGraphFileKeepsTheSurface() {
        Surface bowl(1111);
        const QPoint at = inside_cell(*bowl.view, 6, 3, 1, 1);
        QTest::mouseClick(bowl.view, Qt::LeftButton, {}, at);
        QCOMPARE(bowl.graph().Notes.size(), size_t(1));
        const graph::GraphNote& label = bowl.graph().Notes.front();
        QVERIFY(!label.IsNote);
        QCOMPARE(QString::fromStdString(label.Text), QStringLiteral(" (0.4 , 0.8 , -0.8) ")); // x, value, z
        QCOMPARE(bowl.view->texts().size(), size_t(1));
        QTest::mouseClick(bowl.view, Qt::LeftButton, {}, at); // again: taken away
        QVERIFY(bowl.graph().Notes.empty());
        // A double click asks the frame for the graph's setup.
        QSignalSpy asked(&bowl.window, &DocumentWindow::frameCommand);
        QTest::mouseDClick(bowl.view, Qt::LeftButton, {}, at);
        QCOMPARE(asked.size(), 1);
        QCOMPARE(asked.front().front().toString(), QStringLiteral("graphSetup"));
        if (!bowl.graph().Notes.empty()) QTest::mouseClick(bowl.view, Qt::LeftButton, {}, at); // its clicks labelled
        QVERIFY(bowl.graph().Notes.empty());

        // A note goes where the next click lands, and labels nothing.
        QVERIFY(bowl.graphs->arm_note(QStringLiteral("the bottom")));
        QTest::mouseClick(bowl.view, Qt::LeftButton, {}, at);
        QCOMPARE(bowl.graph().Notes.size(), size_t(1));
        QVERIFY(bowl.graph().Notes.front().IsNote);
        QCOMPARE(bowl.graph().Notes.front().PosX, at.x());
        QCOMPARE(bowl.view->texts().size(), size_t(1));

        const QString file = bowl.scratch.file_path(QStringLiteral("bowl.g3d"));
        QString error;
        QVERIFY2(bowl.graphs->save_graph_file(file, &error), qPrintable(error));
        bowl.graphs->smooth_surface();
        QVERIFY(bowl.view->grid().value(5, 5) > 0); // the bottom rises towards its neighbours
        QVERIFY2(bowl.graphs->open_graph_file(file, &error), qPrintable(error));
        QVERIFY(bowl.graphs->showing_3d());
        QCOMPARE(bowl.view->grid().value(5, 5), 0.0);
        QCOMPARE(bowl.view->grid().value(0, 0), 8.0);
    }
};

QTEST_MAIN(Graph3DGuiTest)
#include "graph3d_gui_test.moc"
