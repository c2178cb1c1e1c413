#pragma once
#include <functional>

class QMainWindow;
class QMenu;

namespace quorvex::gui {

class DocumentWindow;
class HelpWindow;
struct Services;

// The help family's command for the frame's Help menu: "helpContents" (F1) opens the program's one
// help window, at the entry of the built-in name under the caret when the active document's
// editor has the focus, else at the contents.
void add_help_actions(QMainWindow* frame, QMenu* menu, const Services& services,
                      const std::function<DocumentWindow*()>& active);

// The frame's help window, null until it was first opened.
HelpWindow* help_window(QMainWindow* frame);

} // namespace quorvex::gui
