#include "tool_actions.h"

#include "tool_windows.h"

#include "gui/editor/document_window.h"

#include <QAction>
#include <QMenu>

namespace quorvex::gui {

QList<QAction*> add_tool_actions(QWidget* owner, QMenu* menu, const std::function<DocumentWindow*()>& active) {
    struct Entry {
        const char* name;
        const char* text;
        Tool tool;
    };
    static constexpr Entry k_entries[] = {
        {"toolsIntegration", QT_TRANSLATE_NOOP("Tools", "&Integration..."), Tool::Integration},
        {"toolsDifferentiation", QT_TRANSLATE_NOOP("Tools", "&Differentiation..."), Tool::Differentiation},
        {"toolsRootFinder", QT_TRANSLATE_NOOP("Tools", "&Root Finder..."), Tool::RootFinder},
        {"toolsQuickCalc", QT_TRANSLATE_NOOP("Tools", "&Quick Calc..."), Tool::QuickCalc},
        {"toolsQuickGraph", QT_TRANSLATE_NOOP("Tools", "Quick &Graph..."), Tool::QuickGraph},
        {"toolsCurveFitter", QT_TRANSLATE_NOOP("Tools", "&Curve Fitter..."), Tool::CurveFitter},
        {"toolsStatPlot", QT_TRANSLATE_NOOP("Tools", "&Stat Plot..."), Tool::StatPlot},
        {"toolsMatrix", QT_TRANSLATE_NOOP("Tools", "&Matrix Tool..."), Tool::Matrix},
    };
    QList<QAction*> actions;
    for (const Entry& entry : k_entries) {
        auto* action = new QAction(QAction::tr(entry.text), owner);
        action->setObjectName(QLatin1String(entry.name));
        QObject::connect(action, &QAction::triggered, owner, [active, tool = entry.tool] {
            if (DocumentWindow* window = active()) window->tools().open(tool);
        });
        menu->addAction(action);
        actions << action;
    }
    return actions;
}

} // namespace quorvex::gui
