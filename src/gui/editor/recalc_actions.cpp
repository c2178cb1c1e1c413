#include "recalc_actions.h"

#include "document_window.h"
#include "math_editor.h"
#include "recalculation.h"

#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QStyle>

namespace quorvex::gui {

QList<QAction*> add_recalc_actions(QWidget* owner, QMenu* menu, const std::function<DocumentWindow*()>& active) {
    const auto make = [&](const QString& name, const QString& text, const QKeySequence& key, auto run) {
        auto* action = new QAction(text, owner);
        action->setObjectName(name);
        action->setShortcut(key);
        QObject::connect(action, &QAction::triggered, owner, [active, run] {
            if (DocumentWindow* window = active()) run(*window);
        });
        owner->addAction(action);
        menu->addAction(action);
        return action;
    };
    QList<QAction*> actions;
    actions << make(QStringLiteral("computeRecalcStale"), QObject::tr("Recalculate &Stale Lines"),
                    QKeySequence(Qt::SHIFT | Qt::Key_F4),
                    [](DocumentWindow& window) { recalculate_lines(*window.editor(), RecalcScope::StaleLines); });
    actions.back()->setIcon(QIcon::fromTheme(QStringLiteral("view-refresh"), owner->style()->standardIcon(QStyle::SP_BrowserReload)));
    actions << make(QStringLiteral("computeRecalcDocument"), QObject::tr("&Recalculate Document"),
                    QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F4),
                    [](DocumentWindow& window) { recalculate_lines(*window.editor(), RecalcScope::Document); });
    actions << make(QStringLiteral("computeCheckDocument"), QObject::tr("Check &Document"),
                    QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_K), [](DocumentWindow& window) { check_document(window); });
    // The arithmetic of the active document: a choice of its own, saved with it.
    menu->addSeparator();
    auto* precise = new QAction(QObject::tr("&Precise Arithmetic"), owner);
    precise->setObjectName(QStringLiteral("computePreciseArithmetic"));
    precise->setCheckable(true);
    precise->setToolTip(QObject::tr("This document's values carry about 34 digits between steps, so each answer "
                                    "shown is the true value correctly rounded (slower)"));
    QObject::connect(precise, &QAction::triggered, owner, [active](bool on) {
        DocumentWindow* window = active();
        if (!window) return;
        window->document().set_precise_choice(on);
        window->parser().set_vars_saved(false); // the document's settings changed
        window->update_caption();
    });
    // The check mark shows the document active when the menu opens.
    QObject::connect(menu, &QMenu::aboutToShow, precise, [active, precise] {
        DocumentWindow* window = active();
        precise->setChecked(window && window->parser().precise());
    });
    owner->addAction(precise);
    menu->addAction(precise);
    actions << precise;
    return actions;
}

} // namespace quorvex::gui
