#include "editor_actions.h"

#include "document_window.h"
#include "find_replace_dialog.h"
#include "math_editor.h"

#include <QAction>
#include <QActionGroup>
#include <QFontDialog>
#include <QLineEdit>
#include <QMenu>

namespace quorvex::gui {

void add_editor_actions(QWidget* owner, QMenu* edit, QMenu* view, const std::function<DocumentWindow*()>& active,
                        const std::function<FindReplaceDialog*()>& find) {
    const auto make = [owner](const char* name, const QString& text, const QKeySequence& key, auto slot) {
        auto* action = new QAction(text, owner);
        action->setObjectName(QLatin1String(name));
        action->setShortcut(key);
        QObject::connect(action, &QAction::triggered, owner, slot);
        return action;
    };
    edit->addAction(make("editFindNext", QAction::tr("Find &Next"), QKeySequence(Qt::Key_F3), [owner, active, find] {
        DocumentWindow* window = active();
        if (!window) return;
        FindReplaceDialog* dialog = find();
        if (!dialog || dialog->find_field()->text().isEmpty()) {
            // Nothing sought yet: F3 asks what to find.
            if (auto* open = owner->findChild<QAction*>(QStringLiteral("editFind"))) open->trigger();
            return;
        }
        dialog->set_editor(window->editor());
        dialog->find_next();
    }));
    QAction* clear = make("editClear", QAction::tr("Cl&ear"), QKeySequence(Qt::CTRL | Qt::Key_Delete), [active] {
        if (DocumentWindow* window = active()) window->editor()->clear_selection();
    });
    clear->setShortcutContext(Qt::WidgetShortcut); // the editor takes Ctrl+Delete itself
    edit->addAction(clear);

    view->addSeparator();
    view->addAction(make("viewFont", QAction::tr("&Font..."), {}, [owner, active] {
        DocumentWindow* window = active();
        if (!window) return;
        bool chosen = false;
        const QFont font = QFontDialog::getFont(&chosen, window->editor()->font(), owner, QAction::tr("Choose Font"));
        if (chosen) window->set_editor_font(font);
    }));
    auto* places = new QActionGroup(owner);
    for (const bool top : {false, true}) {
        QAction* place = make(top ? "viewListsTop" : "viewListsRight",
                              top ? QAction::tr("Lists at the &Top") : QAction::tr("Lists at the &Right"), {},
                              [active, top] {
                                  if (DocumentWindow* window = active()) window->set_lists_at_top(top);
                              });
        place->setCheckable(true);
        place->setChecked(!top);
        places->addAction(place);
        view->addAction(place);
    }
    // The choice shown is the document's.
    QObject::connect(view, &QMenu::aboutToShow, owner, [active, owner] {
        if (DocumentWindow* window = active())
            if (auto* top = owner->findChild<QAction*>(QStringLiteral("viewListsTop"))) {
                top->setChecked(window->lists_at_top());
                owner->findChild<QAction*>(QStringLiteral("viewListsRight"))->setChecked(!window->lists_at_top());
            }
    });
}

} // namespace quorvex::gui
