#include "graph_export.h"

#include <QChart>
#include <QCoreApplication>
#include <QChartView>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <QTextDocumentFragment>

namespace quorvex::gui {

namespace {

// Lays the chart out at `size`, paints it with `painter`, and gives it back as it was. A chart in
// a view follows the view's size, so the view (one of its own, outside any layout) is the one
// resized for the moment of painting.
void paint_at(QChart* chart, QSize size, QPainter& painter) {
    QGraphicsScene* home = chart->scene();
    QChartView* owner = home ? qobject_cast<QChartView*>(home->views().value(0)) : nullptr;
    const QSize old_view = owner ? owner->size() : QSize();
    const QSizeF old_size = chart->size();
    if (owner)
        owner->resize(size);
    else
        chart->resize(size);
    // The chart lays out its titles, axes and legend on the next turn of the event loop.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QCoreApplication::processEvents();
    if (home) home->render(&painter, QRectF(QPointF(0, 0), size), chart->sceneBoundingRect());
    if (owner) {
        owner->resize(old_view);
    } else {
        chart->resize(old_size);
    }
    QCoreApplication::processEvents();
}

} // namespace

bool export_painting(const QString& path, QSize size, const std::function<void(QPainter&)>& paint,
                     const QString& title, QString* error) {
    const auto fail = [error](const QString& why) {
        if (error) *error = why;
        return false;
    };
    if (size.width() < 16 || size.height() < 16 || size.width() > 20000 || size.height() > 20000)
        return fail(QStringLiteral("The size %1x%2 is not one a picture can have (16 to 20000 pixels a side).")
                        .arg(size.width())
                        .arg(size.height()));
    const QString kind = QFileInfo(path).suffix().toLower();
    if (kind == QStringLiteral("png")) {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        paint(painter);
        painter.end();
        if (!image.save(path, "PNG")) return fail(QStringLiteral("The picture could not be written to %1.").arg(path));
        return true;
    }
    if (kind == QStringLiteral("svg")) {
        QSvgGenerator svg;
        svg.setFileName(path);
        svg.setSize(size);
        svg.setViewBox(QRect(QPoint(0, 0), size));
        svg.setTitle(title);
        QPainter painter;
        if (!painter.begin(&svg)) return fail(QStringLiteral("The picture could not be written to %1.").arg(path));
        paint(painter);
        painter.end();
        return QFileInfo(path).size() > 0 || fail(QStringLiteral("The picture could not be written to %1.").arg(path));
    }
    if (kind == QStringLiteral("pdf")) {
        QPdfWriter pdf(path);
        pdf.setResolution(96);
        pdf.setPageSize(QPageSize(QSizeF(size), QPageSize::Point));
        pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
        QPainter painter;
        if (!painter.begin(&pdf)) return fail(QStringLiteral("The picture could not be written to %1.").arg(path));
        const double scale = pdf.width() / static_cast<double>(size.width());
        painter.scale(scale, scale);
        paint(painter);
        painter.end();
        return true;
    }
    return fail(QStringLiteral("%1: the picture's kind is told by its extension, .png, .svg or .pdf.").arg(path));
}

bool export_chart(QChart* chart, const QString& path, QSize size, QString* error) {
    if (!chart || !chart->scene()) {
        if (error) *error = QStringLiteral("There is no graph to export.");
        return false;
    }
    // The header, without markup, names an SVG drawing.
    const QString title = QTextDocumentFragment::fromHtml(chart->title()).toPlainText();
    return export_painting(path, size, [chart, size](QPainter& painter) { paint_at(chart, size, painter); }, title, error);
}

} // namespace quorvex::gui
