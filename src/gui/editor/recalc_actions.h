#pragma once
#include <QList>

#include <functional>

class QAction;
class QMenu;
class QWidget;

namespace quorvex::gui {

class DocumentWindow;

// The commands that keep answers current, for the Compute menu: "Recalculate Stale Lines"
// (computeRecalcStale), "Recalculate Document" (computeRecalcDocument) and "Check Document"
// (computeCheckDocument), each acting on the document `active` returns, and the check mark
// "Precise Arithmetic" (computePreciseArithmetic), the active document's own choice of
// arithmetic, saved with it. The actions, in menu order, for the frame to enable while a
// document is open and to put on its toolbar.
QList<QAction*> add_recalc_actions(QWidget* owner, QMenu* menu, const std::function<DocumentWindow*()>& active);

} // namespace quorvex::gui
