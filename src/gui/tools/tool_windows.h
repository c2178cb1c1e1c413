#pragma once
#include <QPointer>
#include <QString>

#include <array>

namespace quorvex::gui {

class DocumentWindow;
class MessageReporter;
class ToolDialog;

// The math tools a document can open; each is one window per document.
enum class Tool { Integration, Differentiation, RootFinder, QuickCalc, QuickGraph, CurveFitter, StatPlot, Matrix, Count };

// The tool windows of one document, made on first use and kept until the document closes.
class ToolWindows {
public:
    explicit ToolWindows(DocumentWindow& document);
    ~ToolWindows();
    ToolWindows(const ToolWindows&) = delete;
    ToolWindows& operator=(const ToolWindows&) = delete;

    // Shows the tool (made now if it was never opened), on `function` when one is given.
    ToolDialog* open(Tool tool, const QString& function = {});
    // The tool's window; null until it is first opened.
    ToolDialog* find(Tool tool) const;
    // False, after telling why, while a tool runs on the document.
    bool may_close(MessageReporter& reporter) const;
    // Every open tool offers the document's functions again.
    void refresh_functions();

private:
    ToolDialog* make(Tool tool);

    DocumentWindow& m_document;
    std::array<QPointer<ToolDialog>, static_cast<size_t>(Tool::Count)> m_windows;
};

} // namespace quorvex::gui
