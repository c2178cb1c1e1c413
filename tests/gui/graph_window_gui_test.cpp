// The graph window's commands offscreen: notes deleted, moved or kept by a click, the point-label
// switch, HiLo and candle charts with their legend, a histogram's intervals, the chart's colours,
// margins and orientation (also of a graph file), the header edited in place, a double click
// elsewhere opening the setup, what a build tells, and a graph file kept from the setup.
#include "gui_test_support.h"

#include "gui/common/scratch_services.h"
#include "gui/common/color_picker.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"
#include "gui/graph2d/graph_setup_dialog.h"
#include "gui/graph2d/graph_view.h"
#include "gui/graph2d/graph_window.h"
#include "gui/graph2d/hilo_item.h"
#include "gui/graph2d/qt_chart_2d.h"
#include "gui/shell/main_frame.h"

#include "graph/graph_file.h"
#include "graph/graph_types.h"
#include "graph/view_2d.h"

#include <QChart>
#include <QLegend>
#include <QLegendMarker>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>
#include <QMessageBox>
#include <QtTest>

using namespace quorvex::gui;
using quorvex::gui::testing::type_line;
namespace graph = quorvex::graph;

namespace {

void settle() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QCoreApplication::processEvents();
}

// A data set of `values` at X = 1, 2, 3, ...
graph::StrDataPnts data_set(const char* name, const std::vector<std::string>& values) {
    graph::StrDataPnts set;
    set.SetName(name);
    for (size_t i = 0; i < values.size(); ++i) {
        set.PutXDataPoint(std::to_string(i + 1), static_cast<int>(i));
        set.PutYDataPoint(values[i], static_cast<int>(i));
    }
    return set;
}

// A document window with one graph of the data sets, drawn.
struct Drawn {
    ScratchServices scratch{QStringLiteral(QUORVEX_SOURCE_DATA_DIR)};
    DocumentWindow window{scratch.services, QStringLiteral("Untitled 1")};

    Drawn(int type, const std::vector<graph::StrDataPnts>& sets) {
        window.resize(800, 600);
        window.show();
        quorvex::document::DocumentGraph shown;
        shown.Data = graph::GraphData("Prices");
        shown.Data.Type = type;
        shown.Data.DataSets.assign(sets.begin(), sets.end());
        window.document().Graphs.push_back(shown);
        window.toggle_graph();
        settle();
    }
    GraphWindow& graphs() { return *window.graph_window(); }
    graph::GraphData& data() { return window.document().Graphs.front().Data; }
    // Whether `colour` is drawn at a value of the chart, or a pixel beside it (a thin line falls
    // between two pixels).
    bool drawn_at(double x, double y, const QColor& colour) {
        settle();
        QChart* chart = graphs().chart().chart();
        const QImage image = graphs().view()->grab().toImage();
        const QPoint at =
            graphs().view()->mapFromScene(chart->mapToScene(chart->mapToPosition({x, y}, chart->series().first())));
        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -1; dy <= 1; ++dy)
                if (image.pixelColor(at + QPoint(dx, dy)) == colour) return true;
        return false;
    }
};

std::vector<graph::StrDataPnts> prices() {
    return {data_set("High", {"12", "15", "14"}), data_set("Low", {"8", "11", "9"}), data_set("Open", {"9", "14", "13"}),
            data_set("Close", {"11", "12", "10"})};
}

// A new document of the frame showing a graph of one data set, "Counts".
DocumentWindow* show_counts_graph(MainFrame& frame) {
    DocumentWindow* window = frame.new_document();
    quorvex::document::DocumentGraph shown;
    shown.Data = graph::GraphData("Counts");
    shown.Data.DataSets.push_back(data_set("Counts", {"1", "4", "9"}));
    window->document().Graphs.push_back(shown);
    window->toggle_graph();
    return window;
}

} // namespace

class GraphWindowGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aNoteIsDeletedMovedOrKeptByAClickNearIt() {
        Drawn drawn(graph::graph_type::Plot, {data_set("Counts", {"1", "4", "9", "16"})});
        GraphWindow& graphs = drawn.graphs();
        QVERIFY(graphs.arm_note(QStringLiteral("peak")));
        graphs.click_at(QPointF(200, 150));
        QCOMPARE(drawn.data().GetNumNotes(), 1);
        QCOMPARE(drawn.data().Notes.front().PosX, 200);

        // Cancel keeps it; the question is the note's own.
        drawn.scratch.save_answers = {QMessageBox::Cancel};
        graphs.click_at(QPointF(215, 165));
        QCOMPARE(drawn.data().GetNumNotes(), 1);
        // No takes it up: the next click puts it down elsewhere.
        drawn.scratch.save_answers = {QMessageBox::No};
        graphs.click_at(QPointF(190, 140));
        QCOMPARE(drawn.data().GetNumNotes(), 0);
        QCOMPARE(graphs.pending_note(), QStringLiteral("peak"));
        graphs.click_at(QPointF(400, 120));
        QCOMPARE(drawn.data().GetNumNotes(), 1);
        QCOMPARE(drawn.data().Notes.front().PosX, 400);
        QVERIFY(graphs.pending_note().isEmpty());
        // 21 pixels away is no longer near it: the click is no question.
        graphs.click_at(QPointF(421, 120));
        QCOMPARE(drawn.data().GetNumNotes(), 1);
        // Yes deletes it.
        drawn.scratch.save_answers = {QMessageBox::Yes};
        graphs.click_at(QPointF(405, 125));
        QCOMPARE(drawn.data().GetNumNotes(), 0);
        QVERIFY(graphs.pending_note().isEmpty());
    }

    void removeAllNotesKeepsTheLabelsAndRemoveAllTextsTakesBoth() {
        Drawn drawn(graph::graph_type::Plot, {data_set("Counts", {"1", "4", "9", "16"})});
        GraphWindow& graphs = drawn.graphs();
        // Each change draws the graph again, on a chart of its own.
        const auto point = [&graphs] {
            QChart* chart = graphs.chart().chart();
            return chart->mapToPosition({2, 4}, chart->series().first());
        };
        // Point labels off: a click on a point adds nothing.
        graphs.set_point_labels(false);
        graphs.click_at(point());
        QCOMPARE(drawn.data().GetNumLabels(0), 0);
        graphs.set_point_labels(true);
        graphs.click_at(point());
        QCOMPARE(drawn.data().GetNumLabels(0), 1);
        // Off again, a click still takes the label away.
        graphs.set_point_labels(false);
        graphs.click_at(point());
        QCOMPARE(drawn.data().GetNumLabels(0), 0);
        graphs.set_point_labels(true);
        graphs.click_at(point());
        QVERIFY(graphs.arm_note(QStringLiteral("a note")));
        graphs.click_at(QPointF(120, 100));
        QCOMPARE(drawn.data().GetNumNotes(), 1);
        graphs.remove_all_notes();
        QCOMPARE(drawn.data().GetNumNotes(), 0);
        QCOMPARE(drawn.data().GetNumLabels(0), 1);
        graphs.remove_all_texts();
        QVERIFY(drawn.data().Notes.empty());
    }

    void hiLoAndCandleChartsDrawTheirBarsInTheSeriesColour() {
        Drawn drawn(graph::graph_type::HiLoOpenClose, prices());
        HiLoItem* bars = drawn.graphs().chart().hilo_item();
        QVERIFY(bars);
        QVERIFY(!bars->candles());
        // The first bar's line between its low (8) and high (12) is the series' colour; beside
        // the bars the data area shows.
        const QColor series = to_qcolor(graph::default_series_color(0));
        QVERIFY(drawn.drawn_at(1, 10, series));
        QVERIFY(!drawn.drawn_at(1.5, 10.3, series));
        // The legend names each series, in the bars' colour, clear of the bars.
        QChart* chart = drawn.graphs().chart().chart();
        QVERIFY(chart->legend()->isVisible());
        QStringList names;
        for (QLegendMarker* marker : chart->legend()->markers()) {
            if (!marker->isVisible()) continue;
            names << marker->label();
            QCOMPARE(marker->brush().color(), series);
        }
        QCOMPARE(names, QStringList({QStringLiteral("High"), QStringLiteral("Low"), QStringLiteral("Open"), QStringLiteral("Close")}));
        QVERIFY(!chart->legend()->geometry().intersects(chart->plotArea()));

        drawn.data().Type = graph::graph_type::Candle;
        QVERIFY(drawn.graphs().draw(0));
        QVERIFY(drawn.graphs().chart().hilo_item()->candles());
        // The third day fell (13 to 10): its body is filled; the first rose: hollow.
        QVERIFY(drawn.drawn_at(2.97, 11.5, series));
        QVERIFY(!drawn.drawn_at(1.03, 10, series));

        drawn.data().Type = graph::graph_type::Plot;
        QVERIFY(drawn.graphs().draw(0));
        QVERIFY(!drawn.graphs().chart().hilo_item());
    }

    void aHistogramNamesItsIntervalsAndAPieWarnsOfWhatItCanNotShow() {
        Drawn drawn(graph::graph_type::Hystogram, {data_set("Counts", {"3", "7", "2"})});
        const QStringList labels = drawn.graphs().chart().category_labels();
        QCOMPARE(labels.size(), 3);
        QVERIFY2(labels[0].contains(QStringLiteral(" to ")), qPrintable(labels[0]));
        QVERIFY(drawn.scratch.messages.isEmpty());
        // A click on the top of the second bar (at X 2, the category 1) labels that bar with its
        // interval and height.
        QChart* chart = drawn.graphs().chart().chart();
        drawn.graphs().click_at(chart->mapToPosition({1, 7}, chart->series().first()));
        QCOMPARE(drawn.data().Notes.size(), size_t(1));
        QCOMPARE(drawn.data().Notes.front().PosY, 1);
        QCOMPARE(QString::fromStdString(drawn.data().Notes.front().Text), QStringLiteral(" (%1 , 7) ").arg(labels[1]));
        drawn.data().Type = graph::graph_type::Pie;
        drawn.data().DataSets = {data_set("Counts", {"3", "-7", "2"})};
        QVERIFY(drawn.graphs().draw(0));
        QCOMPARE(drawn.scratch.messages.size(), 1);
        QVERIFY(drawn.scratch.messages[0].startsWith(QStringLiteral("Graphing Utility: ")));
        QVERIFY(drawn.scratch.messages[0].contains(QStringLiteral("negative or zero")));
    }

    void theChartShowsTheGraphsColours() {
        Drawn drawn(graph::graph_type::Plot, {data_set("Counts", {"1", "4", "9"})});
        drawn.data().LegendBackgroundColor = 0x00FF00;
        drawn.data().HeaderForegroundColor = 0x0000FF;
        drawn.data().DataAreaBackgroundColor = 0xC0C0C0;
        drawn.data().Header = "Counts";
        QVERIFY(drawn.graphs().draw(0));
        QChart* chart = drawn.graphs().chart().chart();
        QCOMPARE(chart->legend()->brush().color(), QColor(0, 255, 0));
        QCOMPARE(chart->titleBrush().color(), QColor(255, 0, 0));
        QVERIFY(drawn.drawn_at(1.3, 7.3, QColor(192, 192, 192)));
    }

    void aBuildTellsItsErrorsWithTheErrorSoundAndNamesItselfInTheCaption() {
        Drawn drawn(graph::graph_type::Plot, {data_set("Counts", {"1", "1/0", "9"})});
        drawn.scratch.sounds().set_enabled(true);
        drawn.scratch.messages.clear();
        QVERIFY(drawn.graphs().draw(0));
        // The failing text's message is in the list, with the error sound after the draw's click.
        QCOMPARE(drawn.graphs().errors().size(), 1);
        QCOMPARE(drawn.scratch.sounds().last_played(), QStringLiteral("Error.wav"));
        QCOMPARE(drawn.scratch.messages.size(), 1);
        QVERIFY(drawn.scratch.messages[0].contains(QStringLiteral("\"Graph Errors\" list")));
        QVERIFY(drawn.window.windowTitle().startsWith(QStringLiteral("MATH EDITOR - UNTITLED 1 : PRICES")));
        drawn.data().DataSets = {data_set("Counts", {"1", "2", "9"})};
        QVERIFY(drawn.graphs().draw(0));
        QCOMPARE(drawn.scratch.sounds().last_played(), QStringLiteral("QClick.wav"));
        QVERIFY(drawn.graphs().errors().isEmpty());
        // A graph that can not be drawn at all sounds the error too.
        drawn.data().Functions.emplace_back("nowhere[x]", "x");
        drawn.data().XAxisVar = graph::VariableCopy(quorvex::engine::Variable("x", {0, 0}, {1, 0}, 3));
        QVERIFY(!drawn.graphs().draw(0));
        QCOMPARE(drawn.scratch.sounds().last_played(), QStringLiteral("Error.wav"));
        drawn.window.toggle_graph(); // the editor's caption again
        QVERIFY(!drawn.window.windowTitle().contains(QStringLiteral("PRICES")));
    }

    void theMarginsMoveByTwentyFivePixelsAndTheOrientationIsKept() {
        Drawn drawn(graph::graph_type::Plot, {data_set("Counts", {"1", "4", "9"})});
        GraphWindow& graphs = drawn.graphs();
        QChart* chart = graphs.chart().chart();
        const QMargins before = chart->margins();
        graphs.increase_margin();
        QCOMPARE(drawn.data().MarginLeft2D, drawn.data().DefaultMarginLeft2D + 25);
        QCOMPARE(chart->margins().left(), before.left() + 25);
        QCOMPARE(chart->margins().top(), before.top() + 25);
        graphs.decrease_margin();
        graphs.decrease_margin();
        const QMargins saved = chart->margins();
        QVERIFY(saved.left() < before.left());
        graphs.save_default_margin();
        QCOMPARE(drawn.data().DefaultMarginLeft2D, drawn.data().MarginLeft2D);
        graphs.increase_margin();
        QVERIFY(chart->margins() != saved);
        // The saved margins come back, not the chart's usual ones, also through a rebuild.
        graphs.set_default_margin();
        QCOMPARE(chart->margins(), saved);
        QVERIFY(graphs.draw(0));
        QCOMPARE(graphs.chart().chart()->margins(), saved);

        drawn.data().Depth = 44;
        graphs.save_default_orientation();
        QCOMPARE(drawn.data().DefaultDepth, 44);
        drawn.data().Depth = 3;
        graphs.set_default_orientation();
        QCOMPARE(drawn.data().Depth, 44);
        QCOMPARE(drawn.scratch.messages.size(), 2); // the two "saved as default" messages
    }

    void aDoubleClickOnTheHeaderEditsItInPlace() {
        Drawn drawn(graph::graph_type::Plot, {data_set("Counts", {"1", "4", "9"})});
        drawn.data().Header = "Old header";
        QVERIFY(drawn.graphs().draw(0));
        settle();
        GraphWindow& graphs = drawn.graphs();
        const QRectF header = graphs.chart().title_rect(QtChart2D::Region::Header);
        QChart* chart = graphs.chart().chart();
        const QPoint at = graphs.view()->mapFromScene(chart->mapToScene(header.center()));
        QTest::mouseDClick(graphs.view()->viewport(), Qt::LeftButton, {}, at);
        QLineEdit* editor = graphs.title_editor();
        QVERIFY(editor);
        QCOMPARE(editor->text(), QStringLiteral("Old header"));
        editor->setText(QStringLiteral("New header"));
        QTest::keyClick(editor, Qt::Key_Return);
        QCOMPARE(drawn.data().Header, std::string("New header"));
        QCOMPARE(chart->title(), QStringLiteral("New header"));
        QVERIFY(!graphs.title_editor());
        // Escape leaves the footer as it was.
        QVERIFY(graphs.edit_title(true));
        graphs.title_editor()->setText(QStringLiteral("dropped"));
        QTest::keyClick(graphs.title_editor(), Qt::Key_Escape);
        QVERIFY(drawn.data().Footer != "dropped");
    }

    void aGraphFileTakesTheMarginAndOrientationCommandsIntoTheFile() {
        Drawn drawn(graph::graph_type::Plot, {data_set("Counts", {"1", "4", "9"})});
        GraphWindow& graphs = drawn.graphs();
        const QString path = drawn.scratch.file_path(QStringLiteral("counts.g2d"));
        QVERIFY(graphs.save_graph_file(path));
        QVERIFY(graphs.open_graph_file(path));
        QVERIFY(graphs.showing_2d_file());
        const graph::GraphData before = drawn.data();
        QChart* chart = graphs.chart().chart();
        const QMargins was = chart->margins();
        graphs.increase_margin();
        QCOMPARE(chart->margins().left(), was.left() + 25);
        graphs.save_default_margin();
        graphs.save_default_orientation();
        std::string why;
        const auto read = graph::read_graph_file(path.toStdString(), &why);
        QVERIFY2(read, why.c_str());
        QCOMPARE(read->graph.MarginLeft2D, graph::margins_of(before).left + 25);
        QCOMPARE(read->graph.DefaultMarginLeft2D, read->graph.MarginLeft2D);
        QCOMPARE(read->graph.Name, before.Name);
        QCOMPARE(read->data.series(), size_t(1));
        graphs.set_default_margin();
        QCOMPARE(chart->margins(), QMargins(was.left() + 25, was.top() + 25, was.right() + 25, was.bottom() + 25));
        // The document's graph is not the file's.
        QCOMPARE(drawn.data().MarginLeft2D, before.MarginLeft2D);
        QCOMPARE(drawn.data().DefaultMarginLeft2D, before.DefaultMarginLeft2D);
        QVERIFY(graphs.draw(0));
        QVERIFY(!graphs.showing_2d_file());
    }

    void aDoubleClickInTheGraphOpensItsSetupAndHomeShowsTheWholeGraph() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        MainFrame frame(scratch.services);
        frame.show();
        DocumentWindow* window = show_counts_graph(frame);
        settle();
        GraphWindow* graphs = window->graph_window();
        QChart* chart = graphs->chart().chart();
        chart->zoom(2);
        QVERIFY(chart->isZoomed());
        const QPoint at = graphs->view()->mapFromScene(chart->mapToScene(chart->plotArea().center()));
        QTest::mouseDClick(graphs->view()->viewport(), Qt::LeftButton, {}, at);
        QVERIFY(window->findChild<GraphSetupDialog*>(QStringLiteral("graphSetup"), Qt::FindDirectChildrenOnly));
        QVERIFY(!graphs->title_editor());
        QVERIFY(chart->isZoomed()); // the double click is the setup's
        QTest::keyClick(graphs->view(), Qt::Key_Home);
        QVERIFY(!chart->isZoomed());
    }

    void aGraphFileShownIsNotForTheSetup() {
        Drawn drawn(graph::graph_type::Plot, {data_set("Counts", {"1", "4", "9"})});
        GraphWindow& graphs = drawn.graphs();
        QVERIFY(!graphs.refuse_setup());
        const QString path = drawn.scratch.file_path(QStringLiteral("counts.g2d"));
        QString error;
        QVERIFY2(graphs.save_graph_file(path, &error), qPrintable(error));
        QVERIFY2(graphs.open_graph_file(path, &error), qPrintable(error));
        drawn.scratch.messages.clear();
        QVERIFY(graphs.refuse_setup());
        QCOMPARE(drawn.scratch.messages.size(), 1);
        QVERIFY(drawn.window.windowTitle().contains(QStringLiteral("counts.g2d")));
    }

    void theGraphMenuReachesTheCommandsOfA2DGraph() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        MainFrame frame(scratch.services);
        frame.show();
        DocumentWindow* window = show_counts_graph(frame);
        GraphWindow* graphs = window->graph_window();
        QMenu* menu = nullptr;
        for (QAction* each : frame.menuBar()->actions())
            if (each->menu() && each->menu()->actions().contains(frame.findChild<QAction*>(QStringLiteral("graph2dPointLabels"))))
                menu = each->menu();
        QVERIFY(menu);
        Q_EMIT menu->aboutToShow();
        const auto command = [&frame](const char* name) { return frame.findChild<QAction*>(QLatin1String(name)); };
        QVERIFY(command("graph3dIncreaseMargin")->isEnabled()); // margins on a 2-D graph too
        QVERIFY(!command("graph3dSmooth")->isEnabled());
        command("graph2dPointLabels")->trigger();
        QVERIFY(!graphs->point_labels());
        command("graph3dIncreaseMargin")->trigger();
        QCOMPARE(window->document().Graphs.front().Data.MarginTop2D, window->document().Graphs.front().Data.DefaultMarginTop2D + 25);
        QVERIFY(graphs->arm_note(QStringLiteral("n")));
        graphs->click_at(QPointF(100, 100));
        command("graph2dRemoveTexts")->trigger();
        QVERIFY(window->document().Graphs.front().Data.Notes.empty());
        command("graph2dEditFooter")->trigger();
        QVERIFY(graphs->title_editor());

        // A graph file shown: the setup says why it does not open (a dialog left open would be
        // closed by the guard, and the test would fail on the missing message).
        const QString path = scratch.file_path(QStringLiteral("counts.g2d"));
        QVERIFY(graphs->save_graph_file(path));
        QVERIFY(graphs->open_graph_file(path));
        Q_EMIT menu->aboutToShow(); // its margins are the file's to change; its labels are not
        QVERIFY(command("graph3dIncreaseMargin")->isEnabled());
        QVERIFY(!command("graph2dPointLabels")->isEnabled());
        scratch.messages.clear();
        QTimer::singleShot(2000, &frame, [] {
            if (QWidget* modal = QApplication::activeModalWidget()) modal->close();
        });
        command("graphSetup")->trigger();
        QCOMPARE(scratch.messages.size(), 1);
    }
};

QTEST_MAIN(GraphWindowGuiTest)
#include "graph_window_gui_test.moc"
