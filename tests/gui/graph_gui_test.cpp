// The graph window offscreen: a function's graph drawn through Qt Charts, its pixels where the
// mathematics puts them, holes and errors, export to PNG, SVG and PDF.
#include "gui_test_support.h"

#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/graph2d/batch_export.h"
#include "gui/graph2d/graph_export.h"
#include "gui/graph2d/graph_view.h"
#include "gui/graph2d/graph_window.h"
#include "gui/graph2d/new_graph_dialog.h"
#include "gui/graph2d/point_label_item.h"
#include "gui/graph2d/qt_chart_2d.h"
#include "gui/graph3d/graph3d_view.h"

#include "graph/build_2d.h"

#include <QAreaSeries>
#include <QCategoryAxis>
#include <QChart>
#include <QChartView>
#include <QClipboard>
#include <QComboBox>
#include <QGraphicsSimpleTextItem>
#include <QLegend>
#include <QLegendMarker>
#include <QLineSeries>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>
#include <QValueAxis>
#include <QtTest>

#include <optional>

using namespace quorvex::gui;
using quorvex::gui::testing::type_line;

namespace {


// Whether a pixel near `at` has the colour of the first series (red, 0x0000FF as the chart keeps it).
bool reddish_near(const QImage& image, QPoint at) {
    for (int dy = -3; dy <= 3; ++dy)
        for (int dx = -3; dx <= 3; ++dx) {
            const QPoint p = at + QPoint(dx, dy);
            if (!image.rect().contains(p)) continue;
            const QColor c = image.pixelColor(p);
            if (c.red() > 180 && c.green() < 90 && c.blue() < 90) return true;
        }
    return false;
}

// Lets the chart lay itself out, as the event loop does between a change and its painting.
void settle() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QCoreApplication::processEvents();
}

// Where the value (x, y) of the drawn graph is on the screen, in the view's pixels.
QPoint on_screen(GraphWindow& graphs, QPointF value) {
    QChart* chart = graphs.chart().chart();
    return graphs.view()->mapFromScene(chart->mapToScene(chart->mapToPosition(value, chart->series().first())));
}

// The place of the only label of the graph drawn: its box's lower left corner, in the view's
// pixels; none while it is hidden.
std::optional<QPoint> label_corner(GraphWindow& graphs, const quorvex::graph::GraphData& graph) {
    if (graph.Notes.size() != 1) return std::nullopt;
    auto* label = dynamic_cast<PointLabelItem*>(graphs.chart().text_item(graph.Notes.front().Index));
    if (!label || !label->isVisible()) return std::nullopt;
    return graphs.view()->mapFromScene(label->mapToScene(label->box().bottomLeft()));
}

} // namespace

class GraphGuiTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFunctionIsDrawnWhereTheMathematicsPutsIt() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        window.resize(800, 600);
        window.show();
        type_line(window.editor(), QStringLiteral("line(x) = x"));
        QString error;
        QVERIFY2(window.add_function_graph("line[x]", "x", 0, 10, 101, &error), qPrintable(error));
        QVERIFY(window.graph_shown());
        QVERIFY(!window.editor()->isVisible()); // the graph takes the editor's place
        QCOMPARE(window.document().Graphs.size(), size_t(1));
        QVERIFY(window.is_modified());

        GraphWindow* graphs = window.graph_window();
        QTemporaryDir dir;
        const QSize size = graphs->view()->size(); // a picture of the window's graph is its size
        const QString png = dir.filePath(QStringLiteral("line.png"));
        graphs->choose_export_path = [&png](const QString&) { return png; };
        graphs->export_with_dialog();
        // The same graph in a chart of the picture's size tells where y = x must be: on the
        // curve the picture is red, below it not.
        QChartView probe;
        probe.setAttribute(Qt::WA_DontShowOnScreen);
        probe.setFrameShape(QFrame::NoFrame);
        probe.resize(size);
        probe.show();
        QtChart2D same(&probe);
        quorvex::graph::SweepReport report;
        quorvex::graph::build_2d(window.parser(), window.document().Graphs[0].Data, {}, same, report);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCoreApplication::processEvents();
        QChart* chart = same.chart();
        const QPointF on = chart->mapToPosition(QPointF(5, 5), chart->series().first());
        const QPointF off = chart->mapToPosition(QPointF(5, 1), chart->series().first());
        const QImage image(png);
        QCOMPARE(image.size(), size);
        QVERIFY(reddish_near(image, on.toPoint()));
        QVERIFY(!reddish_near(image, off.toPoint()));

        for (const QString& kind : {QStringLiteral("svg"), QStringLiteral("pdf")}) {
            const QString path = dir.filePath(QStringLiteral("line.") + kind);
            QVERIFY(export_chart(chart, path, size));
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray head = file.read(200);
            QVERIFY(kind == QStringLiteral("pdf") ? head.startsWith("%PDF-") : head.contains("<svg"));
        }
        QString why;
        QVERIFY(!export_chart(chart, dir.filePath(QStringLiteral("line.bmp")), size, &why));
        QVERIFY(why.contains(QStringLiteral(".png, .svg or .pdf")));

        QGuiApplication::clipboard()->clear();
        graphs->copy_to_clipboard();
        QCOMPARE(QGuiApplication::clipboard()->image().size(), graphs->view()->size());

        // A click on a point labels it with its coordinates; a second click takes the label away.
        {
            QChart* shown = graphs->chart().chart();
            const QPointF point = shown->mapToPosition(QPointF(2, 2), shown->series().first());
            graphs->toggle_label_near(point + QPointF(3, 2));
            const auto& notes = window.document().Graphs[0].Data.Notes;
            QCOMPARE(notes.size(), size_t(1));
            QCOMPARE(notes.front().Text, std::string(" (2 , 2) "));
            QVERIFY(!notes.front().IsNote);
            graphs->toggle_label_near(graphs->chart().chart()->mapToPosition(QPointF(2, 2),
                                                                              graphs->chart().chart()->series().first()));
            QVERIFY(window.document().Graphs[0].Data.Notes.empty());
            graphs->toggle_label_near(QPointF(-500, -500)); // far from every point: nothing
            QVERIFY(window.document().Graphs[0].Data.Notes.empty());
        }

        // A note goes where the next click is; '|' is refused.
        QVERIFY(!graphs->arm_note(QStringLiteral("a|b")));
        QVERIFY(graphs->arm_note(QStringLiteral("steady\nrise")));
        Q_EMIT graphs->view()->clicked(QPointF(120, 90));
        {
            const auto& notes = window.document().Graphs[0].Data.Notes;
            QCOMPARE(notes.size(), size_t(1));
            QVERIFY(notes.front().IsNote);
            QCOMPARE(notes.front().Text, std::string("steady\r\nrise"));
            QCOMPARE(notes.front().PosX, 120);
        }
        // Grid lines and a logarithmic axis switch on the graph and stay with it.
        graphs->toggle_grid();
        QCOMPARE(window.document().Graphs[0].Data.ShowGridLines, 0);
        graphs->toggle_logarithmic(false);
        QCOMPARE(window.document().Graphs[0].Data.YAxisLogarithmic, 1); // y from 0: drawn linear, flag kept

        // A graph file keeps the numbers drawn; opened, it shows them again.
        const QString g2d = dir.filePath(QStringLiteral("line.g2d"));
        QVERIFY(graphs->save_graph_file(g2d));
        QVERIFY(!graphs->open_graph_file(dir.filePath(QStringLiteral("line.png")), &error));
        QVERIFY(error.contains(QStringLiteral("no Quorvex graph file")));
        QVERIFY2(graphs->open_graph_file(g2d, &error), qPrintable(error));
        QCOMPARE(graphs->graph_file(), QFileInfo(g2d).absoluteFilePath());
        QCOMPARE(graphs->chart().data().points(), size_t(101));
        QCOMPARE(graphs->chart().data().y(0, 50), 5.0);
        QVERIFY(!graphs->save_graph_file(dir.filePath(QStringLiteral("again.g2d")), &error)); // a file is no drawn graph

        window.toggle_graph(); // F9 back to the editor
        QVERIFY(window.editor()->isVisible());
    }

    void aLongCurveHoldsWhatItsPixelsShowAndAZoomBringsTheDetailBack() {
        QChartView view;
        view.setAttribute(Qt::WA_DontShowOnScreen);
        view.resize(800, 600);
        view.show();
        QtChart2D chart(&view);
        constexpr size_t points = 200000;
        quorvex::graph::ChartData data(1, 1, points);
        for (size_t p = 0; p < points; ++p) {
            const double x = static_cast<double>(p) / 1000;
            data.set_x(0, p, x);
            data.set_y(0, p, std::sin(50 * x));
        }
        chart.set_type(1);
        chart.set_data(data);
        chart.set_bounds({0, 200, -1, 1});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCoreApplication::processEvents();
        auto* line = qobject_cast<QLineSeries*>(chart.chart()->series().value(0));
        QVERIFY(line);
        QVERIFY(line->count() > 1000);   // every column of the plot has its points...
        QVERIFY(line->count() < 20000);  // ...and no more than four of them
        QCOMPARE(chart.data().points(), points); // all the data stays at hand
        // Zoomed into 300 points, each has pixels enough: all are drawn.
        auto* x_axis = qobject_cast<QValueAxis*>(chart.chart()->axes(Qt::Horizontal).value(0));
        QVERIFY(x_axis);
        x_axis->setRange(100.0005, 100.3005);
        int inside = 0;
        for (const QPointF& point : line->points()) inside += point.x() > 100.0005 && point.x() < 100.3005;
        QCOMPARE(inside, 300);
        // A click finds the point under it among all 200,000, where the zoomed chart draws it.
        const QPointF place = chart.chart()->mapToPosition(QPointF(data.x(0, 100150), data.y(0, 100150)), line);
        const auto near = chart.point_near(place + QPointF(0.5, 0), 3);
        QVERIFY(near);
        QCOMPARE(near->point, size_t(100150));
        QVERIFY(!chart.point_near(place + QPointF(0, 300), 3));
    }

    void anAreaOfJaggedDataIsASmoothFillUnderItsLine() {
        QChartView view;
        view.setAttribute(Qt::WA_DontShowOnScreen);
        view.resize(800, 600);
        view.show();
        QtChart2D chart(&view);
        constexpr size_t points = 100000;
        quorvex::graph::ChartData data(2, 1, points);
        for (size_t p = 0; p < points; ++p) {
            data.set_x(0, p, static_cast<double>(p));
            data.set_y(0, p, static_cast<double>((p * 7919) % 1000));
        }
        chart.set_type(5);
        chart.set_data(data);
        chart.set_bounds({0, points, 0, 1000});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCoreApplication::processEvents();
        QAreaSeries* fill = nullptr;
        QLineSeries* line = nullptr;
        for (QAbstractSeries* series : chart.chart()->series()) {
            if (auto* area = qobject_cast<QAreaSeries*>(series)) fill = area;
            else if (auto* xy = qobject_cast<QLineSeries*>(series)) line = xy;
        }
        QVERIFY(fill && line);
        // The line still runs up and down the whole height in every column; the fill's edge barely moves.
        const auto travel = [](const QList<QPointF>& edge) {
            double sum = 0;
            for (qsizetype i = 1; i < edge.size(); ++i) sum += std::abs(edge[i].y() - edge[i - 1].y());
            return sum;
        };
        QVERIFY(line->count() > 1000);
        QVERIFY(travel(line->points()) > 1000.0 * 1000);
        QVERIFY(travel(fill->upperSeries()->points()) < 10.0 * 1000);
        // Zoomed in to fewer points than pixels, the fill's edge is the line, drawn by the fill alone.
        auto* x_axis = qobject_cast<QValueAxis*>(chart.chart()->axes(Qt::Horizontal).value(0));
        x_axis->setRange(5000, 5100);
        QCOMPARE(line->count(), 0);
        int inside = 0;
        for (const QPointF& point : fill->upperSeries()->points()) inside += point.x() >= 5000 && point.x() <= 5100;
        QCOMPARE(inside, 101);
        // The legend names the series once.
        int markers = 0;
        for (QLegendMarker* marker : chart.chart()->legend()->markers()) markers += marker->isVisible();
        QCOMPARE(markers, 1);
    }

    void theAxesCarryRoundNumbersAndZeroIsZeroAlsoAfterAZoom() {
        QChartView view;
        view.setAttribute(Qt::WA_DontShowOnScreen);
        view.resize(800, 600);
        view.show();
        QtChart2D chart(&view);
        quorvex::graph::ChartData data(1, 1, 3);
        for (size_t p = 0; p < 3; ++p) {
            data.set_x(0, p, -0.3 + 0.3 * static_cast<double>(p));
            data.set_y(0, p, -0.3 + 0.3 * static_cast<double>(p));
        }
        chart.set_type(1);
        chart.set_data(data);
        chart.set_bounds({-0.33, 0.33, -0.7, 0.5});
        // Labels with their values, as the axis shows them.
        const auto numbers = [&](Qt::Orientation orientation) {
            auto* axis = qobject_cast<QCategoryAxis*>(chart.chart()->axes(orientation).value(0));
            QMap<QString, double> shown;
            if (axis)
                for (const QString& label : axis->categoriesLabels()) shown[label] = axis->endValue(label);
            return shown;
        };
        for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical}) {
            const QMap<QString, double> shown = numbers(orientation);
            QVERIFY(shown.size() >= 4);
            QVERIFY(shown.contains(QStringLiteral("0")));
            QCOMPARE(shown.value(QStringLiteral("0")), 0.0);
            QVERIFY(shown.contains(QStringLiteral("-0.2")));
        }
        // A zoom numbers the new range afresh.
        auto* x_axis = qobject_cast<QValueAxis*>(chart.chart()->axes(Qt::Horizontal).value(0));
        x_axis->setRange(-0.07, 0.05);
        const QMap<QString, double> zoomed = numbers(Qt::Horizontal);
        QVERIFY(zoomed.contains(QStringLiteral("-0.06")));
        QCOMPARE(zoomed.value(QStringLiteral("0"), 1.0), 0.0);
        for (const QString& label : zoomed.keys()) QVERIFY2(!label.contains(QLatin1Char('e')), qPrintable(label));
    }

    void aSavedGraphIsExportedWithoutAWindow() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        const QString path = scratch.file_path(QStringLiteral("report.qvx"));
        {
            DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
            type_line(window.editor(), QStringLiteral("para(t) = t^2"));
            QVERIFY(window.add_function_graph("para[t]", "t", -3, 3, 61));
            QVERIFY(window.save(path));
        }
        quorvex::desktop::LaunchOptions options;
        options.file = path.toStdString();
        options.export_graph = "1"; // by number
        options.export_path = scratch.file_path(QStringLiteral("para.png")).toStdString();
        options.export_width = 400;
        options.export_height = 300;
        QStringList messages;
        QCOMPARE(export_document_graph(options, QStringLiteral(QUORVEX_SOURCE_DATA_DIR), scratch.path(), messages), 0);
        const QImage image(QString::fromStdString(options.export_path));
        QCOMPARE(image.size(), QSize(400, 300));
        int red = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QColor c = image.pixelColor(x, y);
                red += c.red() > 180 && c.green() < 90 && c.blue() < 90;
            }
        QVERIFY(red > 200); // the parabola is drawn

        options.export_graph = "para"; // by name
        QCOMPARE(export_document_graph(options, QStringLiteral(QUORVEX_SOURCE_DATA_DIR), scratch.path(), messages), 0);
        options.export_graph = "nothing";
        QCOMPARE(export_document_graph(options, QStringLiteral(QUORVEX_SOURCE_DATA_DIR), scratch.path(), messages), 1);
        QCOMPARE(messages.last(), QStringLiteral("The document has no graph \"nothing\"; its graphs are \"para\"."));
    }

    void aPointLabelStaysOnItsPoint() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        const QString path = scratch.file_path(QStringLiteral("labelled.qvx"));
        const QPointF value(2, 1); // a point of para: 2^2/4
        // The label's box stands 10 pixels right of and above its point, give or take a pixel
        // of the box's rounding.
        const auto beside = [&value](GraphWindow& graphs, const quorvex::graph::GraphData& graph) {
            settle();
            const std::optional<QPoint> corner = label_corner(graphs, graph);
            if (!corner) return false;
            const QPoint offset = *corner - on_screen(graphs, value);
            return std::abs(offset.x() - 10) <= 2 && std::abs(offset.y() + 10) <= 2;
        };
        {
            DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
            window.resize(800, 600);
            window.show();
            type_line(window.editor(), QStringLiteral("para(x) = x^2/4"));
            QVERIFY(window.add_function_graph("para[x]", "x", -4, 4, 81));
            GraphWindow& graphs = *window.graph_window();
            const auto& graph = window.document().Graphs[0].Data;
            settle();
            QTest::mouseClick(graphs.view()->viewport(), Qt::LeftButton, {}, on_screen(graphs, value) + QPoint(2, -1));
            QCOMPARE(graph.Notes.size(), size_t(1));
            QCOMPARE(graph.Notes.front().Text, std::string(" (2 , 1) "));
            QVERIFY(beside(graphs, graph));

            QTest::keyClick(graphs.view(), Qt::Key_Plus); // zoom
            QVERIFY(beside(graphs, graph));
            QTest::keyClick(graphs.view(), Qt::Key_Left); // pan
            QVERIFY(beside(graphs, graph));
            window.resize(640, 700);
            QVERIFY(beside(graphs, graph));
            for (int step = 0; step < 30; ++step) QTest::keyClick(graphs.view(), Qt::Key_Right);
            settle();
            QVERIFY(!label_corner(graphs, graph)); // its point panned out of sight: so is the label
            window.toggle_graph(); // F9 to the editor and back
            window.toggle_graph();
            QVERIFY(beside(graphs, graph));
            QVERIFY(window.save(path));
        }
        DocumentWindow again(scratch.services, QStringLiteral("Untitled 2"));
        again.resize(700, 500);
        again.show();
        QVERIFY(again.load(path));
        QVERIFY(again.show_graph(0));
        QVERIFY(beside(*again.graph_window(), again.document().Graphs[0].Data));
    }

    void theLegendFollowsTheSetupAndTheFooterStandsAtTheBottom() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        window.resize(800, 600);
        window.show();
        type_line(window.editor(), QStringLiteral("first(x) = x"));
        type_line(window.editor(), QStringLiteral("second(x) = 2*x"));
        type_line(window.editor(), QStringLiteral("third(x) = 3*x"));
        QVERIFY(window.add_function_graph("first[x]", "x", 0, 1, 11));
        quorvex::graph::GraphData& graph = window.document().Graphs[0].Data;
        QCOMPARE(graph.Footer, std::string("Graph of: first[x]")); // a new graph's default footer
        graph.Functions.emplace_back("second[x]", "2*x");
        graph.Functions.emplace_back("third[x]", "3*x");
        graph.SetFooter("the footer", true);
        QVERIFY(window.show_graph(0));
        settle();
        QChart* chart = window.graph_window()->chart().chart();
        QStringList legend;
        for (QLegendMarker* marker : chart->legend()->markers())
            if (marker->isVisible()) legend << marker->label();
        QCOMPARE(legend, QStringList({"first[x]", "second[x]", "third[x]"}));

        // The footer is a text below the plot area and the legend; the chart's title is the header alone.
        QCOMPARE(chart->title(), QStringLiteral("Graph of: first[x]"));
        const QGraphicsSimpleTextItem* footer = nullptr;
        for (QGraphicsItem* item : chart->childItems())
            if (auto* text = dynamic_cast<QGraphicsSimpleTextItem*>(item); text && text->text() == "the footer") footer = text;
        QVERIFY(footer && footer->isVisible());
        const QRectF place = footer->mapRectToItem(chart, footer->boundingRect());
        QVERIFY(place.top() > chart->legend()->geometry().bottom());
        QVERIFY(place.bottom() <= chart->rect().bottom());
    }

    void aPoleIsAGapAndItsErrorIsListed() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        window.show();
        type_line(window.editor(), QStringLiteral("inv(x) = 1/x"));
        QVERIFY(window.add_function_graph("inv[x]", "x", -1, 1, 5));
        // Two pieces of line: the pole at 0 splits the curve.
        QCOMPARE(window.graph_window()->chart().chart()->series().size(), 2);
        const QStringList errors = window.graph_window()->errors();
        QCOMPARE(errors.size(), 1);
        QVERIFY(errors.first().startsWith(QStringLiteral("An error occured at x = 0 : ")));

        QString error;
        QVERIFY(!window.add_function_graph("none[x]", "x", 0, 1, 5, &error));
        QVERIFY(error.contains(QStringLiteral("no function of this document")));
        QVERIFY(!window.add_function_graph("inv[x]", "x", 1, 0, 5, &error));
    }

    void aFunctionOfTwoVariablesIsOfferedAsASurface() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        window.show();
        type_line(window.editor(), QStringLiteral("bowl(u, v) = u^2 + v^2"));
        type_line(window.editor(), QStringLiteral("line(x) = x"));
        // The dialog asks for the second variable of a function that has one, and only then.
        NewGraphDialog dialog(window.parser());
        auto* function = dialog.findChild<QComboBox*>();
        QVERIFY(function);
        function->setCurrentText(QStringLiteral("bowl[u,v]"));
        QVERIFY(!dialog.z_variable().empty());
        QCOMPARE(dialog.variable(), std::string("u"));
        QCOMPARE(dialog.z_variable(), std::string("v"));
        QVERIFY(dialog.points() * dialog.z_points() <= 1000000);
        function->setCurrentText(QStringLiteral("line[x]"));
        QVERIFY(dialog.z_variable().empty());
        QCOMPARE(dialog.variable(), std::string("x"));

        // The surface is drawn in 3-D, with no error: the rim at 8, the bottom at 0.
        QString error;
        QVERIFY2(window.add_surface_graph("bowl[u,v]", "u", -2, 2, 21, "v", -2, 2, 21, &error), qPrintable(error));
        const quorvex::graph::GraphData& made = window.document().Graphs.back().Data;
        QCOMPARE(made.GetGraphType(), 2);
        QCOMPARE(made.ZAxisTitle, std::string("v"));
        QVERIFY(window.graph_window()->errors().isEmpty());
        QVERIFY(window.graph_window()->view_3d()->isVisible());
        // A click on a point labels it and the surface stays in sight.
        Graph3DView* view = window.graph_window()->view_3d();
        const size_t cells = view->grid().nx() * view->grid().ny();
        quorvex::graph::GridPick pick;
        pick.i = 10;
        pick.j = 5;
        pick.point = {view->grid().x(10), view->grid().y(5), view->grid().value(10, 5)};
        Q_EMIT view->pointPicked(pick);
        QCOMPARE(view->grid().nx() * view->grid().ny(), cells);
        QCOMPARE(window.document().Graphs.back().Data.Notes.size(), size_t(1));
        QVERIFY(window.document().Graphs.back().Data.Notes.front().Text.find("(0 , 1 , -1)") != std::string::npos);
        // Refused before anything is added: one variable twice, or past a million points.
        const size_t graphs = window.document().Graphs.size();
        QVERIFY(!window.add_surface_graph("bowl[u,v]", "u", -2, 2, 21, "u", -2, 2, 21, &error));
        QVERIFY(!window.add_surface_graph("bowl[u,v]", "u", -2, 2, 2000, "v", -2, 2, 1000, &error));
        QVERIFY(error.contains(QStringLiteral("2 to 1000 points a side")));
        QCOMPARE(window.document().Graphs.size(), graphs);
    }

    void aPolarCurveGoesRoundWithoutALineAcrossTheCircle() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        window.show();
        type_line(window.editor(), QStringLiteral("spiral(t) = 1 + t/720"));
        QVERIFY(window.add_function_graph("spiral[t]", "t", 0, 700, 701));
        window.document().Graphs.back().Data.Type = 9; // Polar
        QVERIFY(window.show_graph(0));
        // Nearly two turns: two pieces of line, each within the circle's one turn of angles.
        QChart* chart = window.graph_window()->chart().chart();
        QCOMPARE(chart->series().size(), 2);
        for (QAbstractSeries* piece : chart->series()) {
            const QList<QPointF> points = static_cast<QXYSeries*>(piece)->points();
            QVERIFY(!points.isEmpty());
            for (const QPointF& point : points) QVERIFY(point.x() >= 0 && point.x() < 360);
        }
    }

    void escapeOrStopEndsALongBuildAndLeavesTheDocumentAsItWas() {
        ScratchServices scratch(QStringLiteral(QUORVEX_SOURCE_DATA_DIR));
        DocumentWindow window(scratch.services, QStringLiteral("Untitled 1"));
        window.show();
        type_line(window.editor(), QStringLiteral("x = 7"));
        type_line(window.editor(), QStringLiteral("wave(x) = SIN(x)*x"));
        QVERIFY(window.add_function_graph("wave[x]", "x", 0, 10, 11));
        auto& graph = window.document().Graphs.at(0).Data;
        graph.XAxisVar = quorvex::graph::VariableCopy(
            quorvex::engine::Variable("x", quorvex::engine::complex(0, 0), quorvex::engine::complex(1000, 0), 1000000));
        for (const bool escape : {true, false}) {
            // The user answers the progress dialog as soon as it shows.
            bool answered = false;
            QTimer user;
            QObject::connect(&user, &QTimer::timeout, &user, [&] {
                auto* progress = window.findChild<QProgressDialog*>(QStringLiteral("progressDialog"));
                if (!progress || !progress->isVisible() || answered) return;
                answered = true;
                if (escape)
                    QTest::keyClick(progress, Qt::Key_Escape);
                else
                    progress->findChild<QPushButton*>()->click();
            });
            user.start(10);
            const bool drawn = window.graph_window()->draw(0);
            QVERIFY(answered);
            QVERIFY(!drawn);
            QCOMPARE(window.parser().get_var_value("x").real(), 7.0);
            QCOMPARE(window.parser().equation_count(), 0);
            QCOMPARE(window.document().Graphs.size(), size_t(1));
            QCOMPARE(graph.XAxisVar->num_points(), 1000000L);
            QVERIFY(window.graph_window()->chart().chart()->series().isEmpty()); // no part of a graph
        }
    }
};

QTEST_MAIN(GraphGuiTest)
#include "graph_gui_test.moc"
