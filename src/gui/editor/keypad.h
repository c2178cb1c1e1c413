#pragma once
#include <QDockWidget>

#include <functional>

class QAction;
class QGridLayout;
class QHBoxLayout;

namespace quorvex::gui {

class DocumentWindow;
struct Services;

// The calculator bar (F5): a keypad that types into the active document's editor. Digits and
// operators are typed at the caret; a function goes around the selection or the rest of the line;
// x², 1/x, ±, (x) and the like apply to the operand; arrows move the caret; Enter computes the
// line; MS, M+, M-, MR, MC and ANS work on the editor's text memory; DEG and RAD set the
// document's angle unit. It holds no value of its own. Whether it is shown is remembered (ShowCalcBar).
class Keypad : public QDockWidget {
    Q_OBJECT

public:
    Keypad(Services& services, std::function<DocumentWindow*()> active, QWidget* parent = nullptr);

    // Presses the button of that caption (for tests and keyboard users alike).
    bool press(const QString& caption);
    // Buttons over the frame's own commands (options, find, save, managers, library), in a row
    // above the keys.
    void add_tools(const QList<QAction*>& actions);

private:
    void add(QGridLayout* grid, int row, int column, const QString& caption, std::function<void()> action,
             const QString& tip = {});
    void tell(const std::string& text);
    void set_angle_unit(int type);

    Services& m_services;
    std::function<DocumentWindow*()> m_active;
    QHash<QString, std::function<void()>> m_actions;
    QHBoxLayout* m_tools = nullptr;
};

} // namespace quorvex::gui
