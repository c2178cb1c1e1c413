#pragma once
#include <QList>

#include <functional>

class QAction;
class QMenu;
class QWidget;

namespace quorvex::gui {

class DocumentWindow;

// The commands that open the math tools (Integration, Differentiation, Root Finder, Quick Calc,
// Quick Graph, Curve Fitter, Stat Plot, Matrix Tool), which the tools family brings to the frame's
// Tools menu: each a QAction named tools..., opening its tool on the document `active` returns.
// The actions, in menu order, for the frame to enable while a document is open and to offer
// elsewhere (the keypad).
QList<QAction*> add_tool_actions(QWidget* owner, QMenu* menu, const std::function<DocumentWindow*()>& active);

} // namespace quorvex::gui
