#include "graph3d_view.h"

#include "scene_painter.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace quorvex::gui {

namespace {

constexpr int k_drag_threshold = 4;      // pixels before a press becomes a drag
constexpr double k_degrees_per_pixel = 0.5;

double wrap_degrees(double degrees) {
    degrees = std::fmod(degrees, 360.0);
    return degrees < 0 ? degrees + 360 : degrees;
}

} // namespace

Graph3DView::Graph3DView(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("graph3dView"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(200, 150);
}

void Graph3DView::clear() {
    m_grid = {};
    m_texts.clear();
    update();
}

void Graph3DView::set_grid(const graph::Grid3D& grid) {
    m_grid = grid;
    update();
}

void Graph3DView::set_view(const graph::View3D& view, const graph::View3D& default_view) {
    m_default_view = default_view;
    set_view(view);
}

int Graph3DView::add_point_label(size_t i, size_t j, const std::string& text) {
    m_texts.push_back({text, false, i, j, 0, 0});
    update();
    return static_cast<int>(m_texts.size()) - 1;
}

int Graph3DView::add_note(const std::string& text, int x, int y) {
    m_texts.push_back({text, true, 0, 0, static_cast<double>(x), static_cast<double>(y)});
    update();
    return static_cast<int>(m_texts.size()) - 1;
}

void Graph3DView::remove_text(int index) {
    if (index < 0 || index >= static_cast<int>(m_texts.size())) return;
    m_texts.erase(m_texts.begin() + index);
    update();
}

void Graph3DView::set_style(const graph::Style3D& style) {
    m_style = style;
    update();
}

void Graph3DView::set_view(const graph::View3D& view) {
    m_view = view;
    update();
}

graph::Scene3D Graph3DView::scene() const {
    return graph::build_scene_3d(m_grid, m_style, m_view, width(), height(), text_metrics(font()), m_texts);
}

graph::Projection3D Graph3DView::projection() const {
    // The same fitting as the scene's: the box inside the plot area, less the room for the axes.
    const graph::TextMetrics metrics = text_metrics(font());
    const graph::PlotArea area = graph::plot_area_3d(m_grid, m_style, width(), height(), metrics);
    const double room = 4 * metrics.line_height;
    return graph::Projection3D(m_view, graph::box_of_grid(m_grid), std::max(1.0, area.width - room),
                               std::max(1.0, area.height - room));
}

QPointF Graph3DView::origin() const {
    const graph::TextMetrics metrics = text_metrics(font());
    const graph::PlotArea area = graph::plot_area_3d(m_grid, m_style, width(), height(), metrics);
    const double room = 4 * metrics.line_height;
    return {area.left + room / 2, area.top + room / 2};
}

QPointF Graph3DView::screen_of(size_t i, size_t j) const {
    if (i >= m_grid.nx() || j >= m_grid.ny()) return {};
    const graph::ScreenPoint at = projection().project({m_grid.x(i), m_grid.y(j), m_grid.value(i, j)});
    return origin() + QPointF(at.x, at.y);
}

std::optional<graph::GridPick> Graph3DView::pick(const QPoint& at) const {
    if (m_grid.empty() || m_style.bars) return std::nullopt;
    const QPointF offset = origin();
    return graph::pick_grid_point(m_grid, projection(), at.x() - offset.x(), at.y() - offset.y());
}

void Graph3DView::change_scale(double step) {
    m_view.Scale = std::clamp(m_view.Scale - step, 0.1, 10.0);
    update();
    Q_EMIT viewChanged(m_view);
}

void Graph3DView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paint_scene_3d(painter, scene(), m_pressed && m_dragged);
}

void Graph3DView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
    m_pressed = true;
    m_dragged = false;
    m_press = m_last = event->position().toPoint();
}

void Graph3DView::mouseMoveEvent(QMouseEvent* event) {
    const QPoint at = event->position().toPoint();
    if (!m_pressed) {
        if (const auto picked = pick(at))
            Q_EMIT pointerText(QStringLiteral("%1 = %2, %3 = %4, value = %5")
                                   .arg(m_x_name)
                                   .arg(picked->point.x, 0, 'g', 10)
                                   .arg(m_z_name)
                                   .arg(picked->point.y, 0, 'g', 10)
                                   .arg(picked->point.z, 0, 'g', 10));
        else
            Q_EMIT pointerText(QString());
        return;
    }
    if (!m_dragged && (at - m_press).manhattanLength() < k_drag_threshold) return;
    m_dragged = true;
    const QPoint delta = at - m_last;
    m_last = at;
    if (event->modifiers() & Qt::ShiftModifier) {
        m_view.PerspectiveDepth = std::clamp(m_view.PerspectiveDepth + delta.y() * 0.25, 0.0, 100.0);
    } else {
        m_view.ZRotation = wrap_degrees(m_view.ZRotation - delta.x() * k_degrees_per_pixel);
        m_view.XRotation = std::clamp(m_view.XRotation + delta.y() * k_degrees_per_pixel, -90.0, 90.0);
    }
    update();
}

void Graph3DView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !m_pressed) return QWidget::mouseReleaseEvent(event);
    m_pressed = false;
    if (m_dragged) {
        update(); // once more with antialiasing
        Q_EMIT viewChanged(m_view);
    } else {
        // The pick first: a click that places a note labels nothing.
        if (const auto picked = pick(event->position().toPoint())) Q_EMIT pointPicked(*picked);
        Q_EMIT clicked(event->position().toPoint());
    }
}

void Graph3DView::mouseDoubleClickEvent(QMouseEvent* event) {
    // Not a second press: the release after it must neither pick nor turn.
    if (event->button() != Qt::LeftButton) return QWidget::mouseDoubleClickEvent(event);
    Q_EMIT doubleClicked();
}

void Graph3DView::wheelEvent(QWheelEvent* event) {
    const int notches = event->angleDelta().y() / 120;
    if (notches == 0) return;
    m_view.Scale = std::clamp(m_view.Scale * std::pow(1.1, notches), 0.1, 10.0);
    update();
    Q_EMIT viewChanged(m_view);
}

void Graph3DView::reset_view() {
    m_view = m_default_view;
    update();
    Q_EMIT viewChanged(m_view);
}

void Graph3DView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Home) {
        reset_view();
        return;
    }
    QWidget::keyPressEvent(event);
}

} // namespace quorvex::gui
