#pragma once
#include <QString>

class QWidget;

namespace quorvex::gui {

class DocumentWindow;

// Declares a surface in `window`'s document, draws it in each form of a 3-D graph in the graph
// window and writes the frame as graph3d-FORM SUFFIX.png into `out`; false when one failed.
bool shoot_3d(QWidget& frame, DocumentWindow& window, const QString& out, const QString& suffix);

} // namespace quorvex::gui
