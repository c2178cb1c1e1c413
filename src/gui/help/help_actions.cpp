#include "help_actions.h"

#include "help_window.h"

#include "gui/common/services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QTextBlock>

namespace quorvex::gui {

namespace {

// The entry of the built-in name the editor's caret touches, or empty.
QString target_at_caret(const MathEditor& editor, const desktop::Manual& manual) {
    const QTextCursor cursor = editor.textCursor();
    const QString line = cursor.block().text();
    // The column counted in bytes of the text the lookup sees, whatever the characters before it.
    const std::string before = line.left(cursor.positionInBlock()).toStdString();
    const std::string whole = before + line.mid(cursor.positionInBlock()).toStdString();
    return QString::fromStdString(desktop::help_target(whole, before.size(), manual.builtins()));
}

} // namespace

HelpWindow* help_window(QMainWindow* frame) { return frame->findChild<HelpWindow*>(QString(), Qt::FindDirectChildrenOnly); }

void add_help_actions(QMainWindow* frame, QMenu* menu, const Services& services,
                      const std::function<DocumentWindow*()>& active) {
    auto* contents = new QAction(QObject::tr("Quorvex &Help"), frame);
    contents->setObjectName(QStringLiteral("helpContents"));
    contents->setShortcut(QKeySequence(Qt::Key_F1));
    contents->setIcon(QIcon::fromTheme(QStringLiteral("help-contents")));
    const QString library_dir = services.library_dir;
    QObject::connect(contents, &QAction::triggered, frame, [frame, library_dir, active] {
        HelpWindow* window = help_window(frame);
        if (!window) window = new HelpWindow(library_dir, frame);
        QString target;
        if (DocumentWindow* document = active(); document && document->editor()->hasFocus())
            target = target_at_caret(*document->editor(), window->manual());
        window->show_page(target);
    });
    frame->addAction(contents);
    menu->addAction(contents);
}

} // namespace quorvex::gui
