#pragma once
#include <QDockWidget>

#include <functional>

class QGridLayout;

namespace quorvex::gui {

class DocumentWindow;
struct Services;

// The calculator bar (F5): a keypad that types into the active document's editor. Digits and
// operators are typed at the caret; a function goes around the selection or the rest of the line;
// x², 1/x and the like apply to the operand; Enter computes the line; MS, M+, M-, MR, MC and ANS
// work on the editor's text memory; DEG and RAD set the document's angle unit. It holds no value
// of its own. Whether it is shown is remembered (ShowCalcBar).
class Keypad : public QDockWidget {
    Q_OBJECT

public:
    Keypad(Services& services, std::function<DocumentWindow*()> active, QWidget* parent = nullptr);

    // Presses the button of that caption (for tests and keyboard users alike).
    bool press(const QString& caption);

private:
    void add(QGridLayout* grid, int row, int column, const QString& caption, std::function<void()> action,
             const QString& tip = {});
    void tell(const std::string& text);

    Services& m_services;
    std::function<DocumentWindow*()> m_active;
    QHash<QString, std::function<void()>> m_actions;
};

} // namespace quorvex::gui
