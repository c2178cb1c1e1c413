#pragma once
#include <functional>

class QMenu;
class QWidget;

namespace quorvex::gui {

class GraphWindow;

// The commands on a 3-D graph (default orientation, save it as the default, smooth, the
// margins that scale the picture), which the
// graph family brings to the frame's Graph menu: each a QAction named graph3d..., acting on the
// graph window `shown` returns (null when no graph window is shown). Smoothing is enabled only
// while it shows a surface; orientation and margins also on a 2-D graph.
void add_3d_graph_actions(QWidget* owner, QMenu* menu, const std::function<GraphWindow*()>& shown);

} // namespace quorvex::gui
