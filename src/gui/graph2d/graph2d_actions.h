#pragma once
#include <functional>

class QMenu;
class QWidget;

namespace quorvex::gui {

class GraphWindow;

// The commands on a 2-D graph's texts, which the graph family brings to the frame's Graph menu:
// Point Labels (checked while clicks add labels), Remove All Notes, Remove All Text Objects, and
// Edit Header and Edit Footer (the editors a double click opens), each a QAction named graph2d..., acting on the graph window `shown` returns (null when no graph
// window is shown) and enabled while it shows a 2-D graph of the document.
void add_2d_graph_actions(QWidget* owner, QMenu* menu, const std::function<GraphWindow*()>& shown);

} // namespace quorvex::gui
