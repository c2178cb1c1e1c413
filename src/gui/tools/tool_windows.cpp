#include "tool_windows.h"

#include "tool_dialog.h"

#include "gui/common/message_reporter.h"
#include "gui/editor/document_window.h"
#include "gui/tools/curve_fitter_dialog.h"
#include "gui/tools/differentiation_dialog.h"
#include "gui/tools/integration_dialog.h"
#include "gui/tools/matrix_dialog.h"
#include "gui/tools/quick_calc_dialog.h"
#include "gui/tools/quick_graph_dialog.h"
#include "gui/tools/root_finder_dialog.h"
#include "gui/tools/stat_plot_dialog.h"

namespace quorvex::gui {

ToolWindows::ToolWindows(DocumentWindow& document) : m_document(document) {}

ToolWindows::~ToolWindows() {
    for (QPointer<ToolDialog>& window : m_windows) delete window.data();
}

ToolDialog* ToolWindows::make(Tool tool) {
    switch (tool) {
    case Tool::QuickCalc: return new QuickCalcDialog(m_document, &m_document);
    case Tool::QuickGraph: return new QuickGraphDialog(m_document, &m_document);
    case Tool::Differentiation: return new DifferentiationDialog(m_document, &m_document);
    case Tool::Integration: return new IntegrationDialog(m_document, &m_document);
    case Tool::RootFinder: return new RootFinderDialog(m_document, &m_document);
    case Tool::CurveFitter: return new CurveFitterDialog(m_document, &m_document);
    case Tool::StatPlot: return new StatPlotDialog(m_document, &m_document);
    case Tool::Matrix: return new MatrixDialog(m_document, &m_document);
    case Tool::Count: break;
    }
    return nullptr;
}

ToolDialog* ToolWindows::find(Tool tool) const { return m_windows[static_cast<size_t>(tool)].data(); }

ToolDialog* ToolWindows::open(Tool tool, const QString& function) {
    QPointer<ToolDialog>& window = m_windows[static_cast<size_t>(tool)];
    if (!window) window = make(tool);
    if (!window) return nullptr;
    window->refresh_functions();
    if (!function.isEmpty() && !window->busy()) window->take_function(function);
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

bool ToolWindows::may_close(MessageReporter& reporter) const {
    for (const QPointer<ToolDialog>& window : m_windows)
        if (window && window->busy()) {
            reporter.report(window->busy_message().toStdString(), window->caption().toStdString(),
                            engine::MessageKind::Warning);
            return false;
        }
    return true;
}

void ToolWindows::refresh_functions() {
    for (const QPointer<ToolDialog>& window : m_windows)
        if (window) window->refresh_functions();
}

} // namespace quorvex::gui
