#include "graph3d_actions.h"

#include "gui/graph2d/graph_window.h"

#include <QAction>
#include <QMenu>
#include <QWidget>

namespace quorvex::gui {

void add_3d_graph_actions(QWidget* owner, QMenu* menu, const std::function<GraphWindow*()>& shown) {
    struct Command {
        const char* name;
        const char* text;
        void (GraphWindow::*call)();
    };
    const Command commands[] = {
        {"graph3dDefaultOrientation", QT_TRANSLATE_NOOP("Graph", "Set &Default Orientation"), &GraphWindow::set_default_orientation},
        {"graph3dSaveOrientation", QT_TRANSLATE_NOOP("Graph", "Save As Default &Orientation"), &GraphWindow::save_default_orientation},
        {"graph3dSmooth", QT_TRANSLATE_NOOP("Graph", "S&mooth Graph"), &GraphWindow::smooth_surface},
        {"graph3dIncreaseMargin", QT_TRANSLATE_NOOP("Graph", "&Increase Margin"), &GraphWindow::increase_margin},
        {"graph3dDecreaseMargin", QT_TRANSLATE_NOOP("Graph", "D&ecrease Margin"), &GraphWindow::decrease_margin},
        {"graph3dDefaultMargin", QT_TRANSLATE_NOOP("Graph", "Set Default &Margin"), &GraphWindow::set_default_margin},
        {"graph3dSaveMargin", QT_TRANSLATE_NOOP("Graph", "Save As Default M&argin"), &GraphWindow::save_default_margin},
    };
    std::vector<QAction*> actions;
    for (const Command& command : commands) {
        auto* action = new QAction(QObject::tr(command.text), owner);
        action->setObjectName(QString::fromLatin1(command.name));
        QObject::connect(action, &QAction::triggered, owner, [shown, call = command.call] {
            if (GraphWindow* window = shown()) (window->*call)();
        });
        owner->addAction(action);
        menu->addAction(action);
        actions.push_back(action);
    }
    // Smoothing is offered only while a surface is shown, the others on a 2-D graph (of the document
    // or from a graph file) too; checked as the menu opens.
    QObject::connect(menu, &QMenu::aboutToShow, owner, [shown, actions] {
        GraphWindow* window = shown();
        for (QAction* action : actions) {
            const bool surface_only = action->objectName() == QLatin1String("graph3dSmooth");
            action->setEnabled(window && (window->showing_3d() ||
                                          (!surface_only && (window->showing_2d() || window->showing_2d_file()))));
        }
    });
}

} // namespace quorvex::gui
