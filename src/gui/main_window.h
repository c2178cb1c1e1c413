#pragma once
#include <QMainWindow>

class QPlainTextEdit;

namespace quorvex::gui {

// The frame of the desktop program: for now one editor pane and a File menu.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);

    QPlainTextEdit* editor() const { return m_editor; }
    QAction* quitAction() const { return m_quit_action; }

private:
    QPlainTextEdit* m_editor;
    QAction* m_quit_action;
};

} // namespace quorvex::gui
