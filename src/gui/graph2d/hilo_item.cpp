#include "hilo_item.h"

#include <QPainter>

namespace quorvex::gui {

HiLoItem::HiLoItem(std::vector<graph::HiLoBar> bars, bool candles, std::function<graph::PlotFrame()> frame,
                   QGraphicsItem* parent)
    : QGraphicsItem(parent), m_bars(std::move(bars)), m_candles(candles), m_frame(std::move(frame)) {
    setZValue(5); // over the plot area and its grid, under the labels and notes
    frame_changed();
}

void HiLoItem::set_pen(const QColor& color, double width, const QColor& hollow) {
    m_color = color;
    m_width = width;
    m_hollow = hollow;
    update();
}

void HiLoItem::frame_changed() {
    // The scene keeps the old bounds until it is told: the new ones are taken after the notice.
    prepareGeometryChange();
    const graph::PlotFrame frame = m_frame();
    m_bounds = QRectF(frame.left, frame.top, frame.width, frame.height).adjusted(-2, -2, 2, 2);
    update();
}

QRectF HiLoItem::boundingRect() const { return m_bounds; }

void HiLoItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) {
    const graph::PlotFrame frame = m_frame();
    // A zoomed chart shows part of the bars: the rest stays outside the plot area.
    painter->setClipRect(QRectF(frame.left, frame.top, frame.width, frame.height));
    // Upright and level lines only: crisp on whole pixels rather than smeared over two.
    painter->setRenderHint(QPainter::Antialiasing, false);
    QPen pen(m_color, m_width);
    pen.setCosmetic(true);
    pen.setCapStyle(Qt::FlatCap);
    painter->setPen(pen);
    for (const graph::PixelSegment& line : graph::hilo_segments(m_bars, frame, !m_candles))
        painter->drawLine(QPointF(line.from.x, line.from.y), QPointF(line.to.x, line.to.y));
    if (!m_candles) return;
    for (const graph::PixelBox& body : graph::candle_bodies(m_bars, frame)) {
        painter->setBrush(body.rising ? m_hollow : m_color);
        painter->drawRect(QRectF(body.left, body.top, body.width, std::max(1.0, body.height)));
    }
}

} // namespace quorvex::gui
