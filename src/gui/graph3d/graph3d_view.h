#pragma once
#include "graph/chart_3d.h"
#include "graph/grid_3d.h"
#include "graph/scene_3d.h"
#include "graph/surface_3d.h"
#include "graph/view_3d.h"

#include <QPoint>
#include <QPointF>
#include <QWidget>

namespace quorvex::gui {

// A 3-D graph on screen: draws the scene of a grid and lets the user turn it. Dragging turns the
// floor (left and right) and the eye's elevation (up and down); Shift+drag changes the
// perspective; the wheel scales; Home returns to the default view; a click without a drag picks
// the grid point under the pointer. It is the chart a 3-D graph is built onto.
class Graph3DView : public QWidget, public graph::Chart3D {
    Q_OBJECT

public:
    explicit Graph3DView(QWidget* parent = nullptr);

    void clear() override;
    void set_grid(const graph::Grid3D& grid) override;
    void set_style(const graph::Style3D& style) override;
    void set_view(const graph::View3D& view, const graph::View3D& default_view) override;
    int add_point_label(size_t i, size_t j, const std::string& text) override;
    int add_note(const std::string& text, int x, int y) override;
    void set_view(const graph::View3D& view);
    // The names the pointer's coordinates are given in the status line (the X and Z variables).
    void set_axis_names(const QString& x, const QString& z) { m_x_name = x, m_z_name = z; }
    const std::vector<graph::SceneText3D>& texts() const { return m_texts; }
    // Removes the text at `index` (a label clicked again).
    void remove_text(int index);
    const graph::View3D& view() const { return m_view; }
    const graph::Grid3D& grid() const { return m_grid; }
    const graph::Style3D& style() const { return m_style; }
    // The scene as drawn at the widget's present size.
    graph::Scene3D scene() const;
    // Where grid point (i, j) is drawn in the widget.
    QPointF screen_of(size_t i, size_t j) const;
    // The grid point under a pixel of the widget, if any.
    std::optional<graph::GridPick> pick(const QPoint& at) const;
    // Back to the default view (Home).
    void reset_view();
    // Changes the scale by `step` (0.1 per margin command: a positive step makes it smaller).
    void change_scale(double step);

Q_SIGNALS:
    void viewChanged(const quorvex::graph::View3D& view);
    void pointPicked(const quorvex::graph::GridPick& pick);
    // A click without a drag, wherever it lands (a note is placed there).
    void clicked(const QPoint& at);
    // A double click of the left button (the graph window opens the setup).
    void doubleClicked();
    void pointerText(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    graph::Projection3D projection() const;
    // Where the projection's pixel (0, 0) lies in the widget.
    QPointF origin() const;

    graph::Grid3D m_grid;
    graph::Style3D m_style;
    graph::View3D m_view, m_default_view;
    std::vector<graph::SceneText3D> m_texts;
    QString m_x_name = QStringLiteral("x"), m_z_name = QStringLiteral("z");
    QPoint m_press, m_last;
    bool m_pressed = false, m_dragged = false;
};

} // namespace quorvex::gui
