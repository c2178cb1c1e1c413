#pragma once
#include "graph/scene_3d.h"

class QPainter;
class QFont;

namespace quorvex::gui {

// The text sizes of a font, as the scene needs them to leave room for its texts.
graph::TextMetrics text_metrics(const QFont& font);

// Draws a 3-D scene as it was built, in order: the same calls serve the screen, images, SVG,
// PDF and the printer. `fast` leaves antialiasing off, for redraws while the user turns the view.
void paint_scene_3d(QPainter& painter, const graph::Scene3D& scene, bool fast = false);

} // namespace quorvex::gui
