#include "graph2d_actions.h"

#include "graph_window.h"

#include <QAction>
#include <QMenu>
#include <QWidget>

namespace quorvex::gui {

void add_2d_graph_actions(QWidget* owner, QMenu* menu, const std::function<GraphWindow*()>& shown) {
    auto* labels = new QAction(QObject::tr("Point &Labels"), owner);
    labels->setObjectName(QStringLiteral("graph2dPointLabels"));
    labels->setCheckable(true);
    labels->setChecked(true);
    QObject::connect(labels, &QAction::toggled, owner, [shown](bool on) {
        if (GraphWindow* window = shown()) window->set_point_labels(on);
    });
    auto* notes = new QAction(QObject::tr("&Remove All Notes"), owner);
    notes->setObjectName(QStringLiteral("graph2dRemoveNotes"));
    QObject::connect(notes, &QAction::triggered, owner, [shown] {
        if (GraphWindow* window = shown()) window->remove_all_notes();
    });
    auto* texts = new QAction(QObject::tr("Remove All Text O&bjects"), owner);
    texts->setObjectName(QStringLiteral("graph2dRemoveTexts"));
    QObject::connect(texts, &QAction::triggered, owner, [shown] {
        if (GraphWindow* window = shown()) window->remove_all_texts();
    });
    // The keyboard's way to the editors a double click on the header or footer opens.
    auto* header = new QAction(QObject::tr("Edit &Header"), owner);
    header->setObjectName(QStringLiteral("graph2dEditHeader"));
    QObject::connect(header, &QAction::triggered, owner, [shown] {
        if (GraphWindow* window = shown()) window->edit_title(false);
    });
    auto* footer = new QAction(QObject::tr("Edit Foo&ter"), owner);
    footer->setObjectName(QStringLiteral("graph2dEditFooter"));
    QObject::connect(footer, &QAction::triggered, owner, [shown] {
        if (GraphWindow* window = shown()) window->edit_title(true);
    });
    const QList<QAction*> actions{labels, notes, texts, header, footer};
    for (QAction* action : actions) {
        owner->addAction(action);
        menu->addAction(action);
    }
    // Each document's graph window keeps its own mode: the check shows the one of the window shown.
    QObject::connect(menu, &QMenu::aboutToShow, owner, [shown, actions, labels] {
        GraphWindow* window = shown();
        for (QAction* action : actions) action->setEnabled(window && window->showing_2d());
        const QSignalBlocker quiet(labels);
        labels->setChecked(!window || window->point_labels());
    });
}

} // namespace quorvex::gui
