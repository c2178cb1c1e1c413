#pragma once
#include <QChartView>

namespace quorvex::gui {

// The drawn graph: the mouse wheel zooms about the pointer, a dragged rectangle zooms into it,
// the arrow keys (or a drag with the middle button) pan, Home restores the whole graph, and the
// pointer's coordinates are told as it moves. A double click is the owner's to answer.
class GraphView : public QChartView {
    Q_OBJECT

public:
    explicit GraphView(QWidget* parent = nullptr);

    void reset_zoom();

Q_SIGNALS:
    // The pointer's place in the graph's coordinates; `inside` false when it left the data area.
    void pointerMoved(QPointF value, bool inside);
    // A click of the left button that did not drag, at a place in the chart's coordinates.
    void clicked(QPointF at);
    // A double click of the left button, at a place in the chart's coordinates.
    void doubleClicked(QPointF at);

protected:
    void wheelEvent(QWheelEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPoint m_pan_from;
    QPoint m_pressed_at;
    bool m_panning = false;
};

} // namespace quorvex::gui
