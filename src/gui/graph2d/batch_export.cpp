#include "batch_export.h"

#include "graph/sweep_3d.h"
#include "gui/graph3d/graph3d_view.h"
#include "gui/graph3d/picture_3d.h"

#include "graph_export.h"
#include "qt_chart_2d.h"

#include "document/document.h"
#include "functions/builtin_functions.h"
#include "graph/build_2d.h"
#include "gui/common/message_reporter.h"

#include <QChartView>

namespace quorvex::gui {

namespace {

// The graph the user named: a name of the list first, then a number from 1.
document::DocumentGraph* find_graph(document::Document& document, const std::string& wanted) {
    for (document::DocumentGraph& graph : document.Graphs)
        if (graph.Data.Name == wanted) return &graph;
    char* end = nullptr;
    const long number = std::strtol(wanted.c_str(), &end, 10);
    if (end && *end == '\0' && number >= 1 && number <= static_cast<long>(document.Graphs.size()))
        return &document.Graphs[static_cast<size_t>(number - 1)];
    return nullptr;
}

} // namespace

int export_document_graph(const desktop::LaunchOptions& options, const QString& library_dir, const QString& data_dir,
                          QStringList& messages) {
    engine::Parser parser(&functions::builtin_functions(), library_dir.toStdString() + "/", data_dir.toStdString());
    MessageReporter reporter(nullptr, &messages);
    parser.set_reporter(&reporter);
    document::Document document(parser, &reporter);
    if (!document.Read(options.file)) return 1;
    document::DocumentGraph* graph = find_graph(document, options.export_graph);
    if (!graph) {
        QString names;
        for (const document::DocumentGraph& each : document.Graphs)
            names += (names.isEmpty() ? "" : ", ") + QStringLiteral("\"%1\"").arg(QString::fromStdString(each.Data.Name));
        messages << QStringLiteral("The document has no graph \"%1\"; its graphs are %2.")
                        .arg(QString::fromStdString(options.export_graph),
                             names.isEmpty() ? QStringLiteral("none") : names);
        return 1;
    }
    if (graph->Data.GetGraphType() == 0) {
        messages << QStringLiteral("The graph \"%1\" has no function or data set to draw.")
                        .arg(QString::fromStdString(graph->Data.Name));
        return 1;
    }
    const QSize size(options.export_width, options.export_height);
    return draw_graph_picture(parser, *graph, QString::fromStdString(options.export_path), size, messages) ? 0 : 1;
}

namespace {

bool draw_3d_picture(engine::Parser& parser, const document::DocumentGraph& graph, const QString& path, QSize size,
                     QStringList& messages) {
    Graph3DView view;
    view.resize(size);
    graph::SweepReport report;
    const bool drawn = graph::compute_3d(parser, graph.Data, view, report);
    for (const std::string& error : report.errors) messages << QString::fromStdString(error);
    if (!drawn) {
        messages << QStringLiteral("The graph \"%1\" could not be created.").arg(QString::fromStdString(graph.Data.Name));
        return false;
    }
    QString error;
    if (!export_view_3d(view, path, size, &error)) {
        messages << error;
        return false;
    }
    return true;
}

} // namespace

bool draw_graph_picture(engine::Parser& parser, document::DocumentGraph& graph, const QString& path, QSize size,
                        QStringList& messages) {
    if (graph.Data.GetGraphType() == 2) return draw_3d_picture(parser, graph, path, size, messages);
    std::vector<graph::SeriesLook> looks;
    for (size_t f = 0; f < graph.Data.Functions.size(); ++f)
        looks.push_back({graph.StyleOf(f).LineColor, graph.StyleOf(f).LineWidth});
    QChartView view;
    view.setAttribute(Qt::WA_DontShowOnScreen); // laid out as on a screen, seen by nobody
    view.setFrameShape(QFrame::NoFrame);
    view.resize(size);
    view.show();
    QtChart2D chart(&view);
    graph::SweepReport report;
    MessageReporter reporter(nullptr, &messages);
    const bool drawn = graph::build_2d(parser, graph.Data, looks, chart, report, &reporter);
    for (const std::string& error : report.errors) messages << QString::fromStdString(error);
    if (!drawn) {
        messages << QStringLiteral("The graph \"%1\" could not be created.").arg(QString::fromStdString(graph.Data.Name));
        return false;
    }
    QString error;
    if (!export_chart(chart.chart(), path, size, &error)) {
        messages << error;
        return false;
    }
    return true;
}

} // namespace quorvex::gui
