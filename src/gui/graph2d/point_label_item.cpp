#include "point_label_item.h"

#include <QFontMetricsF>
#include <QPainter>

namespace quorvex::gui {

namespace {

constexpr double k_padding = 3;

} // namespace

PointLabelItem::PointLabelItem(const QString& text, QGraphicsItem* parent)
    : QGraphicsItem(parent), m_text(text), m_font(QStringLiteral("Arial"), 12) {
    const QSizeF text_size = QFontMetricsF(m_font).size(Qt::TextSingleLine, m_text);
    m_box = QRectF(QPointF(0, 0), text_size + QSizeF(2 * k_padding, 2 * k_padding));
    setZValue(10); // above the curves
}

void PointLabelItem::set_box_at(QPointF corner) {
    prepareGeometryChange();
    m_box.moveTopLeft(corner);
}

QRectF PointLabelItem::boundingRect() const {
    // The box and the point, with room for the pen.
    return m_box.united(QRectF(-2, -2, 4, 4)).adjusted(-1, -1, 1, 1);
}

void PointLabelItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) {
    painter->setRenderHint(QPainter::Antialiasing);
    const QPen ink(QColor(64, 64, 64), 1);
    painter->setPen(ink);
    // The line runs from the point to the box's nearest corner.
    const QPointF corner(m_box.left() > 0 ? m_box.left() : m_box.right(), m_box.top() > 0 ? m_box.top() : m_box.bottom());
    painter->drawLine(QPointF(0, 0), corner);
    painter->setBrush(QColor(255, 255, 128));
    painter->drawRect(m_box);
    painter->setFont(m_font);
    painter->setPen(Qt::black);
    painter->drawText(m_box, Qt::AlignCenter, m_text);
}

} // namespace quorvex::gui
