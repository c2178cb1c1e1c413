#include "scene_painter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPolygonF>

namespace quorvex::gui {

namespace {

QColor color_of(graph::TColor c) { return QColor(int(c & 0xFF), int((c >> 8) & 0xFF), int((c >> 16) & 0xFF)); }

Qt::Alignment alignment_of(std::uint8_t align) {
    using P = graph::Primitive3D;
    Qt::Alignment a;
    a |= align & P::Right ? Qt::AlignRight : align & P::HCenter ? Qt::AlignHCenter : Qt::AlignLeft;
    a |= align & P::Bottom ? Qt::AlignBottom : align & P::VCenter ? Qt::AlignVCenter : Qt::AlignTop;
    return a;
}

} // namespace

graph::TextMetrics text_metrics(const QFont& font) {
    const QFontMetricsF metrics(font);
    return {metrics.height(), metrics.averageCharWidth()};
}

void paint_scene_3d(QPainter& painter, const graph::Scene3D& scene, bool fast) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, !fast);
    QPolygonF polygon;
    QPen pen(Qt::black, 0);
    for (const graph::Primitive3D& item : scene.items) {
        switch (item.kind) {
        case graph::Primitive3D::Kind::Polygon: {
            polygon.resize(item.count);
            for (int k = 0; k < item.count; ++k) polygon[k] = QPointF(item.x(k), item.y(k));
            painter.setBrush(item.fill_none ? QBrush(Qt::NoBrush) : QBrush(color_of(item.fill)));
            // A piece outlined in its own colour only hides the seams antialiasing leaves; without
            // it there are none, and the outline is most of the cost of a fast redraw.
            if (item.pen_none || (fast && !item.fill_none && item.pen == item.fill)) {
                painter.setPen(Qt::NoPen);
            } else {
                pen.setColor(color_of(item.pen));
                painter.setPen(pen);
            }
            painter.drawPolygon(polygon);
            break;
        }
        case graph::Primitive3D::Kind::Line:
            pen.setColor(color_of(item.pen));
            painter.setPen(pen);
            painter.drawLine(QPointF(item.x(0), item.y(0)), QPointF(item.x(1), item.y(1)));
            break;
        case graph::Primitive3D::Kind::Text: {
            painter.setPen(color_of(item.pen));
            // A box around the anchor that the alignment places the text in.
            constexpr double k_reach = 4000;
            const Qt::Alignment align = alignment_of(item.align);
            QRectF box(item.x(0) - k_reach, item.y(0) - k_reach, 2 * k_reach, 2 * k_reach);
            if (align & Qt::AlignLeft) box.setLeft(item.x(0));
            if (align & Qt::AlignRight) box.setRight(item.x(0));
            if (align & Qt::AlignTop) box.setTop(item.y(0));
            if (align & Qt::AlignBottom) box.setBottom(item.y(0));
            const QString text = QString::fromStdString(item.text);
            if (!item.fill_none) {
                // A framed box just around the text, as the label's background.
                const QRectF bounds = painter.boundingRect(box, int(align), text).adjusted(-3, -1, 3, 1);
                painter.setBrush(color_of(item.fill));
                pen.setColor(color_of(item.pen));
                painter.setPen(pen);
                painter.drawRect(bounds);
                painter.setPen(color_of(item.pen));
            }
            painter.drawText(box, int(align), text);
            break;
        }
        }
    }
    painter.restore();
}

} // namespace quorvex::gui
