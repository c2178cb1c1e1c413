#include "picture_3d.h"

#include "graph3d_view.h"
#include "scene_painter.h"

#include "gui/graph2d/graph_export.h"

#include <QPainter>

namespace quorvex::gui {

bool export_view_3d(const Graph3DView& view, const QString& path, QSize size, QString* error) {
    if (view.grid().empty()) {
        if (error) *error = QStringLiteral("There is no graph to export.");
        return false;
    }
    const auto paint = [&view, size](QPainter& painter) {
        const graph::Scene3D scene = graph::build_scene_3d(view.grid(), view.style(), view.view(), size.width(),
                                                           size.height(), text_metrics(view.font()), view.texts());
        painter.setFont(view.font());
        paint_scene_3d(painter, scene);
    };
    return export_painting(path, size, paint, QString::fromStdString(view.style().header), error);
}

} // namespace quorvex::gui
