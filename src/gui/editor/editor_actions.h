#pragma once
#include <functional>

class QMenu;
class QWidget;

namespace quorvex::gui {

class DocumentWindow;
class FindReplaceDialog;

// The editor's further commands, which the editor family brings to the frame's menus: Find Next
// (F3) and Clear (Ctrl+Delete) in `edit`; the font of the editor and its lists, and the lists at
// the right or at the top, in `view`. Each acts on the document `active` returns; Find Next
// uses the frame's find dialog (`find`, null before the first Find: then it opens Find).
void add_editor_actions(QWidget* owner, QMenu* edit, QMenu* view, const std::function<DocumentWindow*()>& active,
                        const std::function<FindReplaceDialog*()>& find);

} // namespace quorvex::gui
