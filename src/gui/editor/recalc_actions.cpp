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
    return actions;
}

} // namespace quorvex::gui
