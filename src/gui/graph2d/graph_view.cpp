#include "graph_view.h"

#include <QAbstractSeries>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

namespace quorvex::gui {

GraphView::GraphView(QWidget* parent) : QChartView(parent) {
    setObjectName(QStringLiteral("graphView"));
    setRenderHint(QPainter::Antialiasing);
    setRubberBand(QChartView::RectangleRubberBand);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

void GraphView::reset_zoom() { chart()->zoomReset(); }

void GraphView::wheelEvent(QWheelEvent* event) {
    const double steps = event->angleDelta().y() / 120.0;
    if (steps == 0) return;
    const double factor = std::pow(1.25, steps);
    // Zoom about the pointer: the point under it stays under it.
    const QRectF area = chart()->plotArea();
    const QPointF at = chart()->mapFromScene(mapToScene(event->position().toPoint()));
    QRectF next(area);
    next.setWidth(area.width() / factor);
    next.setHeight(area.height() / factor);
    next.moveCenter(at - (at - area.center()) / factor);
    chart()->zoomIn(next);
    event->accept();
}

void GraphView::mouseMoveEvent(QMouseEvent* event) {
    if (m_panning) {
        const QPoint moved = event->pos() - m_pan_from;
        chart()->scroll(-moved.x(), moved.y());
        m_pan_from = event->pos();
        event->accept();
        return;
    }
    const QPointF scene = mapToScene(event->pos());
    const QPointF in_chart = chart()->mapFromScene(scene);
    const bool inside = chart()->plotArea().contains(in_chart) && !chart()->series().isEmpty();
    if (inside) Q_EMIT pointerMoved(chart()->mapToValue(in_chart), true);
    else Q_EMIT pointerMoved({}, false);
    QChartView::mouseMoveEvent(event);
}

void GraphView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) m_pressed_at = event->pos();
    if (event->button() == Qt::MiddleButton) {
        m_panning = true;
        m_pan_from = event->pos();
        setCursor(Qt::ClosedHandCursor);
        event->accept();
        return;
    }
    QChartView::mousePressEvent(event);
}

void GraphView::mouseReleaseEvent(QMouseEvent* event) {
    if (m_panning && event->button() == Qt::MiddleButton) {
        m_panning = false;
        unsetCursor();
        event->accept();
        return;
    }
    if (event->button() == Qt::LeftButton && (event->pos() - m_pressed_at).manhattanLength() < 4)
        Q_EMIT clicked(chart()->mapFromScene(mapToScene(event->pos())));
    // The right button zooms back out one step, as Qt Charts does; keep it.
    QChartView::mouseReleaseEvent(event);
}

void GraphView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) Q_EMIT doubleClicked(chart()->mapFromScene(mapToScene(event->pos())));
    event->accept();
}

void GraphView::keyPressEvent(QKeyEvent* event) {
    const int step = 30;
    switch (event->key()) {
    case Qt::Key_Left: chart()->scroll(-step, 0); break;
    case Qt::Key_Right: chart()->scroll(step, 0); break;
    case Qt::Key_Up: chart()->scroll(0, step); break;
    case Qt::Key_Down: chart()->scroll(0, -step); break;
    case Qt::Key_Plus: case Qt::Key_Equal: chart()->zoom(1.25); break;
    case Qt::Key_Minus: chart()->zoom(0.8); break;
    case Qt::Key_Home: reset_zoom(); break;
    default: QChartView::keyPressEvent(event); return;
    }
    event->accept();
}

} // namespace quorvex::gui
